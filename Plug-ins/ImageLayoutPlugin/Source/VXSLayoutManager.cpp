#include "VXSLayoutManager.h"

#include "figure/VXSFigurePage.h"
#include "scene/VXSImageFit.h"
#include "undo/VXSLayoutChange.h"
#include "file/VXSLayoutDocument.h"
#include "file/VXSLayoutFileCommands.h"
#include "VXSLayoutItemArrow.h"
#include "scene/VXSLayoutItemGeometry.h"
#include "VXSLayoutItemImage.h"
#include "scene/VXSLayoutStyles.h"
#include "host/VXSLayoutTranslator.h"
#include "VXSLayoutView.h"
#include "VXSLayoutWindow.h"
#include "scene/VXSLayoutZOrder.h"

#include <VXSMdiSubWindow.h>
#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QComboBox>
#include <QGuiApplication>
#include <QMessageBox>
#include <QScreen>

#include <algorithm>

using namespace VXSLayout;
using VXSImageFit::Centring;

CVXSLayoutManager::CVXSLayoutManager(QWidget* pParentWidget)
    : QObject(nullptr)
    , m_scene(0, 0, 300, 300)
    , m_printer(QPrinter::ScreenResolution)
{
    // Before any text is made: the window and its dialogs read their texts through tr().
    CVXSLayoutTranslator::install();
    m_pLayoutWindow = new CVXSLayoutWindow(pParentWidget, "Layout Window");
    m_pLayoutView = new CVXSLayoutView(&m_scene, m_pLayoutWindow->viewContainer());
    m_pLayoutWindow->setFocusPolicy(Qt::ClickFocus);
    m_pLayoutWindow->setLayoutManager(this);
    m_pLayoutView->setLayoutManager(this);
    m_pLayoutWindow->setLayoutView(m_pLayoutView);
    m_pLayoutWindow->initialize();
    centreWindow();
    m_cellUseCount.fill(0);
    m_pFileCommands = std::make_unique<CVXSLayoutFileCommands>(*this);
}

CVXSLayoutManager::~CVXSLayoutManager()
{
    // The window lives in the host's sub-window; deleting that takes window and view.
    // A window that was never put into a workspace is deleted on its own.
    if (m_pLayoutWindow) {
        QWidget* pParent = m_pLayoutWindow->parentWidget();
        if (pParent)
            delete pParent;
        else
            delete m_pLayoutWindow.data();
    }
}

void CVXSLayoutManager::centreWindow()
{
    int screenWidth = 500;
    int screenHeight = 400;
    if (const QScreen* pScreen = QGuiApplication::primaryScreen()) {
        const QRect available = pScreen->availableGeometry();
        if (available.width() > 0 && available.height() > 0) {
            screenWidth = available.width();
            screenHeight = available.height();
        }
    }
    const int width = qMin(m_pLayoutWindow->width(), screenWidth);
    const int height = qMin(m_pLayoutWindow->height(), screenHeight);
    m_pLayoutWindow->move((screenWidth - width) / 2, (screenHeight - height) / 2);
}

CVXSLayoutWindow* CVXSLayoutManager::getLayoutWindow() const
{
    return m_pLayoutWindow;
}

CVXSLayoutView* CVXSLayoutManager::getLayoutView() const
{
    return m_pLayoutView;
}

QGraphicsScene* CVXSLayoutManager::getScene()
{
    return &m_scene;
}

bool CVXSLayoutManager::isWindowVisible() const
{
    if (!m_pLayoutWindow)
        return false;
    const QWidget* pParent = m_pLayoutWindow->parentWidget();
    return pParent && !pParent->isHidden();
}

void CVXSLayoutManager::showLayoutWindow(bool bShow)
{
    if (!m_pLayoutWindow)
        return;
    auto* pSubWindow = qobject_cast<CVXSMdiSubWindow*>(m_pLayoutWindow->parentWidget());
    if (!pSubWindow)
        return;
    if (bShow)
        pSubWindow->showWindow();
    else
        pSubWindow->hideWindow();
}

void CVXSLayoutManager::editSelectedText()
{
    if (m_pLayoutWindow)
        m_pLayoutWindow->onClickMultiLineEditText();
}

int CVXSLayoutManager::currentStyle() const
{
    if (!m_pLayoutWindow)
        return FreeStyle;
    return qMax(FreeStyle, m_pLayoutWindow->layoutStyleCombo()->currentIndex());
}

int CVXSLayoutManager::addImageItem(CVXSLayoutItemImage* pItem, bool bUpdate)
{
    if (!pItem || !m_pLayoutView)
        return 0;

    const QRectF natural = pItem->rect();
    const int cell = getFirstEmptyCell(true);
    if (cell == -1) {
        // Free placement: half the size of the lower-right three quarters of the view,
        // in the upper-left part of that area.
        const int viewWidth = m_pLayoutView->width();
        const int viewHeight = m_pLayoutView->height();
        const int left = viewWidth / 4;
        const int top = viewHeight / 4;
        const int areaWidth = viewWidth - left;
        const int areaHeight = viewHeight - top;
        pItem->setRect(VXSImageFit::fitRect(natural.size(), QRect(left, top, areaWidth / 2, areaHeight / 2),
                                            Centring::HalfBoxLessHalfImage, Centring::HalfBoxLessHalfImage));
    } else {
        QRect cellRect;
        if (getCellRect(cell, cellRect, false) != -1) {
            pItem->setRect(VXSImageFit::fitRect(natural.size(), cellRect, Centring::HalveTheRoom,
                                                Centring::HalfBoxLessHalfImage));
            pItem->setCellIndex(cell);
            setCellUsed(cell, true);
        }
    }

    const int z = m_pLayoutView->topZ() + 1;
    pItem->setZValue(z);
    m_pLayoutView->setTopZ(z);
    pItem->show();

    if (bUpdate && m_pLayoutView->scene()) {
        m_pLayoutView->scene()->update(QRectF(QPointF(pItem->x(), pItem->y()), pItem->rect().size()));
        m_pLayoutView->scene()->update();
    }
    return 0;
}

int CVXSLayoutManager::getCellCount(int nStyle) const
{
    return VXSLayoutStyles::cellCount(nStyle);
}

int CVXSLayoutManager::getFirstEmptyCell(bool bGridOnly) const
{
    const int style = currentStyle();
    if (bGridOnly && style == FreeStyle)
        return -1;
    const int places = bGridOnly ? getCellCount(style) : CellCounterCount;
    for (int cell = 0; cell < places; ++cell) {
        if (m_cellUseCount[cell] == 0)
            return cell;
    }
    return -1;
}

int CVXSLayoutManager::getCellRect(int nCell, QRect& rect, bool bInPercent) const
{
    const int style = currentStyle();
    if (nCell == -1 || style == FreeStyle || (!m_pLayoutView && !bInPercent))
        return -1;

    int result = -1;
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;
    if (nCell >= 0 && nCell < getCellCount(style)) {
        const VXSLayoutStyles::CellPercent percent = VXSLayoutStyles::cellPercent(style, nCell);
        left = percent.left;
        top = percent.top;
        right = percent.right;
        bottom = percent.bottom;
        result = 4 * nCell;
    }
    if (!bInPercent) {
        const int viewWidth = m_pLayoutView->width();
        const int viewHeight = m_pLayoutView->height();
        left = int((left * viewWidth) / 100.0);
        right = int((right * viewWidth) / 100.0);
        top = int((top * viewHeight) / 100.0);
        bottom = int((bottom * viewHeight) / 100.0);
    }
    rect.setTopLeft(QPoint(left, top));
    rect.setBottomRight(QPoint(right, bottom));
    return result;
}

int CVXSLayoutManager::getCellAtPoint(QPointF& point, bool bInPercent) const
{
    const int style = currentStyle();
    if (style == FreeStyle || !m_pLayoutView)
        return -1;
    if (!bInPercent) {
        // A view of one pixel or less has no percent scale.
        const int viewWidth = m_pLayoutView->width();
        const int viewHeight = m_pLayoutView->height();
        if (viewWidth < 2 || viewHeight < 2)
            return -1;
        point.setX(int(point.x() / (viewWidth - 1) * 100 + 0.5));
        point.setY(int(point.y() / (viewHeight - 1) * 100 + 0.5));
    }
    const int count = getCellCount(style);
    for (int cell = 0; cell < count; ++cell) {
        const VXSLayoutStyles::CellPercent c = VXSLayoutStyles::cellPercent(style, cell);
        if (c.left <= point.x() && point.x() <= c.right && c.top <= point.y() && point.y() <= c.bottom)
            return cell;
    }
    return count;
}

void CVXSLayoutManager::setCellUsed(int nCell, bool bUsed)
{
    // The index wraps to its low eight bits, the counter wraps around too: -1 lands on
    // counter 255, which no style uses.
    std::uint8_t& counter = m_cellUseCount[std::uint8_t(nCell)];
    counter = std::uint8_t(bUsed ? counter + 1 : counter - 1);
}

int CVXSLayoutManager::cellUseCount(int nCell) const
{
    return m_cellUseCount[std::uint8_t(nCell)];
}

void CVXSLayoutManager::relayoutItems(bool bKeepCells)
{
    if (!m_pLayoutView)
        return;
    const int style = currentStyle();
    m_pLayoutView->showCells(style);

    // Shared by every manager on purpose: the first call ever sees factors of 1.0.
    static double previousWidth = m_pLayoutView->width();
    static double previousHeight = m_pLayoutView->height();
    const double sx = m_pLayoutView->width() / previousWidth;
    const double sy = m_pLayoutView->height() / previousHeight;

    QGraphicsItem* pSelected = m_pLayoutView->currentItem();
    if (pSelected)
        m_pLayoutView->hideHandles();

    const QList<QGraphicsItem*> items = m_scene.items(QRectF(0, 0, previousWidth, previousHeight),
                                                      Qt::IntersectsItemShape, Qt::DescendingOrder);
    for (QGraphicsItem* pItem : items) {
        if (m_pLayoutView->isAuxiliaryItem(pItem))
            continue;
        if (pItem->type() == CVXSLayoutItemImage::Type)
            relayoutImage(static_cast<CVXSLayoutItemImage*>(pItem), bKeepCells, style, sx, sy);
        else
            scaleItem(pItem, sx, sy);
        if (pItem == pSelected)
            m_pLayoutView->showHandles(pItem);
    }

    previousWidth = int(m_pLayoutView->width());
    previousHeight = int(m_pLayoutView->height());
    if (style != FreeStyle)
        m_scene.update();
}

void CVXSLayoutManager::relayoutImage(CVXSLayoutItemImage* pImage, bool bKeepCells, int nStyle, double sx, double sy)
{
    const int oldCell = pImage->getCellIndex();
    if (oldCell != -1) {
        setCellUsed(oldCell, false);
        pImage->setCellIndex(-1);
    }
    if (nStyle == FreeStyle) {
        // Free style: the image stretches with the view and may lose its aspect ratio.
        pImage->setRect(scaledRect(pImage->rect(), sx, sy));
        return;
    }
    fitImageIntoCell(pImage, bKeepCells ? oldCell : getFirstEmptyCell(true));
}

void CVXSLayoutManager::fitImageIntoCell(CVXSLayoutItemImage* pImage, int nCell)
{
    QRect cellRect;
    if (getCellRect(nCell, cellRect, false) == -1)
        return;
    pImage->setRect(VXSImageFit::fitRect(pImage->rect().size(), cellRect, Centring::HalfBoxLessHalfImage,
                                         Centring::HalfBoxLessHalfImage));
    pImage->setCellIndex(nCell);
    setCellUsed(nCell, true);
}

QRectF CVXSLayoutManager::scaledRect(const QRectF& rect, double sx, double sy)
{
    return QRectF(scaled(rect.x(), sx), scaled(rect.y(), sy), scaled(rect.width(), sx), scaled(rect.height(), sy));
}

double CVXSLayoutManager::scaled(double dCoordinate, double dScale)
{
    // A page from a file may be far smaller than the view it is fitted to.
    return qBound(-MaxCoordinate, dCoordinate * dScale, MaxCoordinate);
}

void CVXSLayoutManager::scaleItem(QGraphicsItem* pItem, double sx, double sy)
{
    switch (pItem->type()) {
    case RectangleItemType:
    case EllipseItemType:
        VXSLayoutItemGeometry::setGeometryRect(
            *pItem, scaledRect(VXSLayoutItemGeometry::geometryRect(*pItem), sx, sy));
        break;
    case ArrowItemType: {
        auto* pArrow = static_cast<CVXSLayoutItemArrow*>(pItem);
        int x = 0;
        int y = 0;
        pArrow->getStartPoint(x, y);
        pArrow->setStartPoint(int(scaled(x, sx)), int(scaled(y, sy)));
        pArrow->getEndPoint(x, y);
        pArrow->setEndPoint(int(scaled(x, sx)), int(scaled(y, sy)));
        pArrow->fitRectToPoints();
        break;
    }
    case TextItemType: {
        auto* pText = static_cast<QGraphicsRectItem*>(pItem);
        const QRectF r = pText->rect();
        pText->setRect(scaled(r.x(), sx), scaled(r.y(), sy), r.width(), r.height());
        break;
    }
    default:
        break;
    }
}

void CVXSLayoutManager::clearLayout()
{
    if (!m_pLayoutView)
        return;
    const QList<QGraphicsItem*> items = m_scene.items(Qt::DescendingOrder);
    if (items.count() <= AuxiliaryItemCount || !confirmClear())
        return;

    CVXSLayoutChange change(this, tr("New Layout"));
    for (QGraphicsItem* pItem : items) {
        if (!m_pLayoutView->isAuxiliaryItem(pItem))
            m_pLayoutView->deleteItem(pItem);
    }

    m_pLayoutView->clearSelection();
    m_scene.update(m_scene.sceneRect());
    m_scene.update();
}

bool CVXSLayoutManager::confirmClear()
{
    const int answer = CVXSMessageBox::question(m_pLayoutView, CVXUtilityFns::getAppName(),
                                                tr("Are you sure you want to clear the layout?\n"),
                                                QMessageBox::Yes,
                                                QMessageBox::No | QMessageBox::Default | QMessageBox::Escape);
    return answer == 0;
}

bool CVXSLayoutManager::isEmpty() const
{
    return layoutItems().isEmpty();
}

CVXSLayoutDocument CVXSLayoutManager::document() const
{
    CVXSLayoutDocument document;
    document.nStyle = m_pLayoutWindow ? m_pLayoutWindow->layoutStyle() : FreeStyle;
    document.pageSize = m_scene.sceneRect().size().toSize();
    QList<QGraphicsItem*> items = layoutItems();
    std::sort(items.begin(), items.end(),
              [](const QGraphicsItem* a, const QGraphicsItem* b) { return a->zValue() < b->zValue(); });
    for (const QGraphicsItem* pItem : items)
        document.items.push_back(CVXSLayoutItemState::capture(*pItem));
    document.figurePage = CVXSFigurePage::of(m_scene);
    return document;
}

void CVXSLayoutManager::replaceLayout(const CVXSLayoutDocument& document)
{
    if (!m_pLayoutView || !m_pLayoutWindow)
        return;
    removeAllItems();
    m_pLayoutWindow->restoreLayoutStyle(document.nStyle);
    m_pLayoutView->showCells(document.nStyle);
    placeDocumentItems(document);
    document.figurePage.applyTo(m_scene);
    fitToPage(document.pageSize);
    m_pLayoutView->clearSelection();
    m_scene.update();
}

void CVXSLayoutManager::removeAllItems()
{
    // The history goes first: its commands own the items that are out of the scene.
    m_undoBook.stack()->clear();
    const QList<QGraphicsItem*> items = layoutItems();
    if (m_pLayoutView)
        m_pLayoutView->setCurrentItem(nullptr);
    qDeleteAll(items);
    m_cellUseCount.fill(0);
}

void CVXSLayoutManager::placeDocumentItems(const CVXSLayoutDocument& document)
{
    QVector<qreal> fileZ;
    for (const CVXSLayoutItemState& state : document.items)
        fileZ.append(state.z);
    const QVector<int> placedZ = CVXSLayoutZOrder::placedValues(fileZ);
    int topZ = BaseZ;
    for (int i = 0; i < document.items.size(); ++i) {
        const CVXSLayoutItemState& state = document.items.at(i);
        QGraphicsItem* pItem = state.createItem();
        if (!pItem)
            continue;
        pItem->setZValue(placedZ.at(i));
        m_scene.addItem(pItem);
        if (state.nType == ImageItemType && state.nCellIndex != -1)
            setCellUsed(state.nCellIndex, true);
        topZ = qMax(topZ, placedZ.at(i));
    }
    m_pLayoutView->setTopZ(topZ);
}

void CVXSLayoutManager::fitToPage(const QSizeF& documentPage)
{
    const QSizeF page = m_scene.sceneRect().size();
    if (documentPage.isEmpty() || page.isEmpty() || documentPage == page)
        return;
    const double sx = page.width() / documentPage.width();
    const double sy = page.height() / documentPage.height();
    const int style = currentStyle();
    for (QGraphicsItem* pItem : layoutItems()) {
        if (pItem->type() == ImageItemType)
            relayoutImage(static_cast<CVXSLayoutItemImage*>(pItem), true, style, sx, sy);
        else
            scaleItem(pItem, sx, sy);
    }
}

CVXSLayoutFileCommands* CVXSLayoutManager::fileCommands() const
{
    return m_pFileCommands.get();
}

QList<QGraphicsItem*> CVXSLayoutManager::layoutItems() const
{
    QList<QGraphicsItem*> items;
    for (QGraphicsItem* pItem : m_scene.items()) {
        if (!m_pLayoutView || !m_pLayoutView->isAuxiliaryItem(pItem))
            items.append(pItem);
    }
    return items;
}

CVXSLayoutSnapshot::CellCounters CVXSLayoutManager::cellUseCounts() const
{
    return m_cellUseCount;
}

void CVXSLayoutManager::setCellUseCounts(const CVXSLayoutSnapshot::CellCounters& counters)
{
    m_cellUseCount = counters;
}

QUndoStack* CVXSLayoutManager::undoStack()
{
    return m_undoBook.stack();
}

void CVXSLayoutManager::beginChange()
{
    m_undoBook.begin();
}

void CVXSLayoutManager::endChange(const QString& strText)
{
    m_undoBook.end(strText);
}

void CVXSLayoutManager::removeLayoutItem(QGraphicsItem* pItem)
{
    if (!pItem)
        return;
    // The cell is freed as before, a free image's -1 included (it lands on counter 255).
    if (pItem->type() == ImageItemType)
        setCellUsed(static_cast<CVXSLayoutItemImage*>(pItem)->getCellIndex(), false);
    m_undoBook.discard(pItem);
}

QImage CVXSLayoutManager::renderLayoutImage(double dScale)
{
    return m_output.renderLayoutImage(dScale);
}

void CVXSLayoutManager::exportLayout()
{
    m_output.exportLayout();
}

void CVXSLayoutManager::printLayout(QWidget* /*pParent*/, int nPrintMode)
{
    m_output.printLayout(nPrintMode);
}

void CVXSLayoutManager::copyToClipboard()
{
    m_output.copyToClipboard();
}

bool CVXSLayoutManager::isSupportedExtension(QString strSuffix)
{
    return CVXSLayoutOutputCommands::isSupportedExtension(strSuffix);
}

QString CVXSLayoutManager::getExtensionForFilter(QString strFilter)
{
    return CVXSLayoutOutputCommands::getExtensionForFilter(strFilter);
}
