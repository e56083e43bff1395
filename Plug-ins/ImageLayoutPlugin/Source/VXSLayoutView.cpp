#include "VXSLayoutView.h"

#include "figure/VXSStyleDefaults.h"
#include "scene/VXSImageFit.h"
#include "undo/VXSLayoutChange.h"
#include "VXSLayoutItemArrow.h"
#include "VXSLayoutItemEllipse.h"
#include "scene/VXSLayoutItemGeometry.h"
#include "VXSLayoutItemGrid.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutItemRectangle.h"
#include "VXSLayoutItemText.h"
#include "VXSLayoutManager.h"
#include "scene/VXSLayoutPens.h"
#include "scene/VXSLayoutStyles.h"
#include "VXSLayoutWindow.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QResizeEvent>

using namespace VXSLayout;
using namespace VXSLayoutItemGeometry;

CVXSLayoutView::CVXSLayoutView(QGraphicsScene* pScene, QWidget* pParent)
    : QGraphicsView(pScene, pParent)
    , m_handles(pScene)
{
    // Lets the selection signal travel through queued connections and signal spies.
    qRegisterMetaType<QGraphicsItem*>();
    viewport()->setMouseTracking(false);
    setCacheMode(QGraphicsView::CacheBackground);
    // Pointer positions are taken as scene points as they are; pinning the page to the
    // viewport's top-left corner keeps what is drawn exactly under the pointer.
    setAlignment(Qt::AlignLeft | Qt::AlignTop);

    for (int i = 0; i < MaxCellCount; ++i) {
        m_cells[i] = new CVXSLayoutItemGrid();
        m_cells[i]->setZValue(i);
        // Frames are shown by the layout style, none before one is chosen.
        m_cells[i]->hide();
        pScene->addItem(m_cells[i]);
    }
    hideHandles();
}

CVXSLayoutView::~CVXSLayoutView()
{
    for (CVXSLayoutItemGrid*& pCell : m_cells) {
        delete pCell;
        pCell = nullptr;
    }
}

void CVXSLayoutView::setLayoutManager(CVXSLayoutManager* pManager)
{
    m_pManager = pManager;
}

CVXSLayoutManager* CVXSLayoutView::layoutManager() const
{
    return m_pManager;
}

QGraphicsItem* CVXSLayoutView::currentItem() const
{
    return m_pSelectedItem;
}

void CVXSLayoutView::setCurrentItem(QGraphicsItem* pItem)
{
    m_pSelectedItem = pItem;
}

void CVXSLayoutView::setSelectedItem(QGraphicsItem* pItem)
{
    emit selectionChanged(pItem);
}

void CVXSLayoutView::selectItem(QGraphicsItem* pItem)
{
    hideHandles();
    m_pSelectedItem = pItem;
    if (pItem)
        showHandles(pItem);
    emit selectionChanged(pItem);
}

void CVXSLayoutView::clearSelection()
{
    selectItem(nullptr);
}

void CVXSLayoutView::deleteItem(QGraphicsItem* pItem)
{
    if (pItem == m_pSelectedItem)
        m_pSelectedItem = nullptr;
    if (m_pManager)
        m_pManager->removeLayoutItem(pItem);
    else
        delete pItem;
}

void CVXSLayoutView::deleteSelected()
{
    if (!m_pSelectedItem)
        return;
    // An arrow draws its heads beyond its line's bounds.
    const QRectF dirty = m_pSelectedItem->boundingRect().adjusted(-ArrowMargin, -ArrowMargin, ArrowMargin, ArrowMargin);
    CVXSLayoutChange change(m_pManager, tr("Delete"));
    deleteItem(m_pSelectedItem);
    updateScene(dirty);
    // The empty selection is announced before the handles go, as the Delete key always did.
    emit selectionChanged(nullptr);
    hideHandles();
}

void CVXSLayoutView::presentNewItem(QGraphicsItem* pItem)
{
    m_pSelectedItem = pItem;
    showHandles(pItem);
    updateWholeScene();
    emit selectionChanged(pItem);
}

bool CVXSLayoutView::isGestureOpen() const
{
    return m_gesture.isOpen();
}

int CVXSLayoutView::targetCell() const
{
    return m_targetCell;
}

// ---- auxiliary items -------------------------------------------------------------

void CVXSLayoutView::updateScene(const QRectF& rect)
{
    if (scene())
        scene()->update(rect);
}

void CVXSLayoutView::updateWholeScene()
{
    if (scene())
        scene()->update();
}

void CVXSLayoutView::hideHandles()
{
    m_handles.hide();
    updateWholeScene();
}

int CVXSLayoutView::handleIndex(QGraphicsItem* pItem) const
{
    return m_handles.indexOf(pItem);
}

bool CVXSLayoutView::isCellHighlight(QGraphicsItem* pItem) const
{
    return m_handles.isHighlight(pItem);
}

bool CVXSLayoutView::isAuxiliaryItem(QGraphicsItem* pItem) const
{
    return pItem && (pItem->type() == GridItemType || handleIndex(pItem) != 0 || isCellHighlight(pItem));
}

void CVXSLayoutView::showHandles(QGraphicsItem* pItem)
{
    m_handles.show(pItem, m_zOrder.topZ());
}

void CVXSLayoutView::showCells(int nStyle)
{
    hideCells();
    const int cells = VXSLayoutStyles::cellCount(nStyle);
    if (cells > 0) {
        for (int i = 0; i < cells; ++i)
            showCell(i);
    } else {
        m_targetCell = -1;
    }
    updateWholeScene();
}

void CVXSLayoutView::showCell(int nIndex)
{
    QRect rect;
    if (!m_pManager || nIndex < 0 || nIndex >= MaxCellCount || m_pManager->getCellRect(nIndex, rect, false) == -1)
        return;
    CVXSLayoutItemGrid* pCell = m_cells[nIndex];
    updateScene(pCell->boundingRect());
    pCell->setRect(QRectF(rect));
    if (!pCell->isVisible())
        pCell->show();
    updateScene(pCell->boundingRect());
}

void CVXSLayoutView::hideCells()
{
    for (CVXSLayoutItemGrid* pCell : m_cells) {
        if (pCell->isVisible())
            pCell->hide();
    }
    updateWholeScene();
}

// ---- z values --------------------------------------------------------------------

int CVXSLayoutView::nextZ() const
{
    return m_zOrder.nextZ();
}

int CVXSLayoutView::topZ() const
{
    return m_zOrder.topZ();
}

void CVXSLayoutView::setTopZ(int nZ)
{
    m_zOrder.setTopZ(nZ);
}

void CVXSLayoutView::resetTopZ()
{
    m_zOrder.reset();
}

int CVXSLayoutView::maxZ() const
{
    return HighlightZ;
}

QList<QGraphicsItem*> CVXSLayoutView::zOrderList() const
{
    return CVXSLayoutZOrder::list(scene());
}

int CVXSLayoutView::reorderZ(QGraphicsItem* pItem, int nCommand)
{
    const int result = m_zOrder.reorder(scene(), pItem, nCommand,
                                        [this](QGraphicsItem* pEntry) { return isAuxiliaryItem(pEntry); });
    if (result == 0) {
        // Past the marks' usual band a raised item may pass the handles: show them anew.
        if (m_zOrder.topZ() >= HighlightZ - 1 && currentItem())
            showHandles(currentItem());
        updateWholeScene();
        updateWholeScene();
    }
    return result;
}

// ---- mouse and keys --------------------------------------------------------------

QPointF CVXSLayoutView::scenePoint(const QMouseEvent* pEvent) const
{
    return transform().inverted().map(QPointF(pEvent->pos()));
}

CVXSLayoutWindow* CVXSLayoutView::layoutWindow() const
{
    return m_pManager ? m_pManager->getLayoutWindow() : nullptr;
}

bool CVXSLayoutView::isDrawingToolOn() const
{
    CVXSLayoutWindow* pWindow = layoutWindow();
    return pWindow
        && (pWindow->isDrawRectOn() || pWindow->isDrawEllipseOn() || pWindow->isDrawArrowOn() != NoArrowTool);
}

QGraphicsItem* CVXSLayoutView::pickItem(const QList<QGraphicsItem*>& items, const QPointF& point) const
{
    for (QGraphicsItem* pItem : items) {
        if (isAuxiliaryItem(pItem))
            continue;
        if (pItem->type() == ArrowItemType
            && !static_cast<CVXSLayoutItemArrow*>(pItem)->containsPoint(point.toPoint()))
            continue;
        return pItem;
    }
    return nullptr;
}

void CVXSLayoutView::mousePressEvent(QMouseEvent* pEvent)
{
    if (!scene())
        return;
    qDebug("No.of Canvas Items;%d", scene()->items().count());
    m_gesture.begin(m_pManager, tr("Move"));
    m_activeHandle = 0;
    m_pressPoint = scenePoint(pEvent);

    if (isDrawingToolOn()) {
        m_bDrawing = false;
        return;
    }

    const QList<QGraphicsItem*> items = scene()->items(m_pressPoint, Qt::IntersectsItemShape,
                                                        Qt::DescendingOrder, transform());
    for (QGraphicsItem* pItem : items) {
        if (const int handle = handleIndex(pItem)) {
            m_activeHandle = handle;
            m_gesture.setText(tr("Resize"));
            m_bImageResized = false;
            m_dragPoint = m_pressPoint;
            return;
        }
    }

    QGraphicsItem* pHit = pickItem(items, m_pressPoint);
    if (!pHit) {
        m_targetCell = -1;
        clearSelection();
        return;
    }
    if (pHit != m_pSelectedItem)
        hideHandles();
    m_pSelectedItem = pHit;
    m_dragPoint = m_pressPoint;
    m_targetCell = -1;
    emit selectionChanged(pHit);
    showHandles(pHit);
}

void CVXSLayoutView::mouseMoveEvent(QMouseEvent* pEvent)
{
    if (!scene())
        return;
    const QPointF point = scenePoint(pEvent);
    CVXSLayoutWindow* pWindow = layoutWindow();
    if (pWindow && pWindow->isDrawRectOn())
        drawRectangle(point);
    else if (pWindow && pWindow->isDrawEllipseOn())
        drawEllipse(point);
    else if (pWindow && pWindow->isDrawArrowOn() != NoArrowTool)
        drawArrow(point, pWindow->isDrawArrowOn());
    else if (m_pSelectedItem && m_activeHandle == 0)
        moveSelected(point);
    else if (m_pSelectedItem)
        resizeSelected(point);
}

void CVXSLayoutView::startDrawing(QGraphicsItem* pItem)
{
    // The look the user made the default of its kind, if any.
    CVXSStyleDefaults::applyStored(*pItem);
    hideHandles();
    scene()->addItem(pItem);
    const int z = nextZ();
    pItem->setZValue(z);
    setTopZ(z);
    pItem->show();
    m_pSelectedItem = pItem;
    m_targetCell = -1;
    m_bDrawing = true;
    m_gesture.setText(drawingText(pItem));
    updateWholeScene();
}

void CVXSLayoutView::drawRectangle(const QPointF& point)
{
    if (!m_bDrawing) {
        const QPoint press = m_pressPoint.toPoint();
        auto* pRectangle = new CVXSLayoutItemRectangle(press.x(), press.y(), 0, 0);
        pRectangle->setBrush(QBrush(QColor(255, 255, 255, 255)));
        pRectangle->setPen(VXSLayoutPens::thinBlack());
        startDrawing(pRectangle);
    } else {
        growDrawnItem(RectangleItemType, point);
    }
}

void CVXSLayoutView::drawEllipse(const QPointF& point)
{
    if (!m_bDrawing) {
        auto* pEllipse = new CVXSLayoutItemEllipse(m_pressPoint.x(), m_pressPoint.y(), 0, 0);
        startDrawing(pEllipse);
        m_ellipseOrigin[0] = int(pEllipse->boundingRect().x());
        m_ellipseOrigin[1] = int(pEllipse->boundingRect().y());
    } else {
        growDrawnItem(EllipseItemType, point);
    }
}

void CVXSLayoutView::growDrawnItem(int nType, const QPointF& point)
{
    if (!m_pSelectedItem || m_pSelectedItem->type() != nType)
        return;
    updateScene(m_pSelectedItem->boundingRect());
    setGeometryRect(*m_pSelectedItem, spannedRect(m_pressPoint, point));
    updateScene(m_pSelectedItem->boundingRect());
    updateWholeScene();
}

void CVXSLayoutView::drawArrow(const QPointF& point, int nKind)
{
    if (!m_bDrawing) {
        auto* pArrow = new CVXSLayoutItemArrow(m_pressPoint.x(), m_pressPoint.y(), 0, 0);
        pArrow->setStartHead(nKind == DoubleArrowTool);
        pArrow->setEndHead(nKind == SingleArrowTool || nKind == DoubleArrowTool);
        pArrow->setHeadWidthRatio(ArrowHeadWidthRatio);
        pArrow->setHeadLength(ArrowHeadLength);
        startDrawing(pArrow);
    } else if (m_pSelectedItem && m_pSelectedItem->type() == ArrowItemType) {
        auto* pArrow = static_cast<CVXSLayoutItemArrow*>(m_pSelectedItem);
        const QPoint end = point.toPoint();
        pArrow->setStartPoint(int(m_pressPoint.x()), int(m_pressPoint.y()));
        pArrow->setEndPoint(end.x(), end.y());
        pArrow->fitRectToPoints();
        updateScene(pArrow->boundingRect());
        updateWholeScene();
    }
}

void CVXSLayoutView::moveSelected(QPointF point)
{
    QGraphicsItem* pItem = m_pSelectedItem;
    const int type = pItem->type();
    QRect cellRect;
    QPointF cellPoint = point;
    int cell = -1;
    if (type == ImageItemType && m_pManager)
        cell = m_pManager->getCellAtPoint(cellPoint, false);

    if (cell != -1 && m_pManager->getCellRect(cell, cellRect, false) != -1) {
        // Over a cell an image snaps to the cell's centre at its own size.
        auto* pImage = static_cast<CVXSLayoutItemImage*>(pItem);
        point = cellRect.center();
        m_targetCell = cell;
        pImage->setRect(QRectF(VXSImageFit::centredCorner(pImage->rect().size(), cellRect), pImage->rect().size()));
    } else if (type == ArrowItemType) {
        auto* pArrow = static_cast<CVXSLayoutItemArrow*>(pItem);
        const int dx = int(point.x() - m_dragPoint.x());
        const int dy = int(point.y() - m_dragPoint.y());
        int x = 0;
        int y = 0;
        pArrow->getStartPoint(x, y);
        pArrow->setStartPoint(x + dx, y + dy);
        pArrow->getEndPoint(x, y);
        pArrow->setEndPoint(x + dx, y + dy);
        updateScene(widened(pArrow->boundingRect(), ArrowMargin));
        pArrow->fitRectToPoints();
    } else {
        // The bounding rectangle carries half the pen on every side; rounding its corner
        // back and taking one off its size keeps the item exactly under the pointer.
        const QRectF b = pItem->boundingRect();
        const QPointF delta = point - m_dragPoint;
        const int sizeLoss = type == RectangleItemType ? 0 : 1;
        const QPoint corner = b.toRect().topLeft();
        setGeometryRect(*pItem, QRectF(corner.x() + delta.x(), corner.y() + delta.y(), int(b.width()) - sizeLoss,
                                  int(b.height()) - sizeLoss));
    }
    m_dragPoint = point;
    showHandles(pItem);
    updateWholeScene();
}

void CVXSLayoutView::resizeSelected(const QPointF& point)
{
    QGraphicsItem* pItem = m_pSelectedItem;
    switch (pItem->type()) {
    case ArrowItemType: {
        auto* pArrow = static_cast<CVXSLayoutItemArrow*>(pItem);
        const QPoint p = point.toPoint();
        if (m_activeHandle == 1)
            pArrow->setStartPoint(p.x(), p.y());
        else if (m_activeHandle == 2)
            pArrow->setEndPoint(p.x(), p.y());
        pArrow->fitRectToPoints();
        updateScene(pArrow->boundingRect());
        break;
    }
    case ImageItemType:
        if (static_cast<CVXSLayoutItemImage*>(pItem)->getCellIndex() != -1)
            return;
        m_bImageResized = true;
        Q_FALLTHROUGH();
    case RectangleItemType:
    case EllipseItemType:
    case TextItemType: {
        QRectF rect = withCornerAt(geometryRect(*pItem), m_activeHandle, point);
        if (pItem->type() == ImageItemType)
            rect = withVisibleSize(rect, m_activeHandle);
        updateScene(rect);
        setGeometryRect(*pItem, rect);
        updateScene(rect);
        break;
    }
    default:
        return;
    }
    showHandles(pItem);
    updateWholeScene();
}

void CVXSLayoutView::mouseReleaseEvent(QMouseEvent*)
{
    releaseSelected();
    m_gesture.end();
}

QString CVXSLayoutView::drawingText(const QGraphicsItem* pItem)
{
    switch (pItem->type()) {
    case RectangleItemType:
        return tr("Draw Rectangle");
    case EllipseItemType:
        return tr("Draw Ellipse");
    default: {
        const auto* pArrow = static_cast<const CVXSLayoutItemArrow*>(pItem);
        if (pArrow->hasStartHead())
            return tr("Draw Double Arrow");
        return pArrow->hasEndHead() ? tr("Draw Arrow") : tr("Draw Line");
    }
    }
}

void CVXSLayoutView::releaseSelected()
{
    if (!m_pSelectedItem || !m_pManager)
        return;
    if (m_targetCell != -1 && m_pSelectedItem->type() == ImageItemType)
        dropImage();
    if (m_activeHandle != 0 && m_pSelectedItem->type() != ArrowItemType)
        normalizeSelected();
    m_bImageResized = false;
    showHandles(m_pSelectedItem);
    emit selectionChanged(m_pSelectedItem);
    updateWholeScene();
}

void CVXSLayoutView::dropImage()
{
    auto* pImage = static_cast<CVXSLayoutItemImage*>(m_pSelectedItem);
    if (pImage->getCellIndex() != -1)
        m_pManager->setCellUsed(pImage->getCellIndex(), false);
    m_pManager->setCellUsed(m_targetCell, true);
    pImage->setCellIndex(m_targetCell);

    QRect cellRect;
    if (m_pManager->getCellRect(m_targetCell, cellRect, false) == -1)
        return;
    pImage->setRect(VXSImageFit::fitRect(pImage->rect().size(), cellRect, VXSImageFit::Centring::HalfBoxLessHalfImage,
                                         VXSImageFit::Centring::HalfBoxLessHalfImage));
}

void CVXSLayoutView::normalizeSelected()
{
    setGeometryRect(*m_pSelectedItem, geometryRect(*m_pSelectedItem).normalized());
}

void CVXSLayoutView::mouseDoubleClickEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() == Qt::LeftButton && m_pSelectedItem && m_pSelectedItem->type() == TextItemType
        && m_pManager) {
        m_pManager->editSelectedText();
        pEvent->accept();
        return;
    }
    pEvent->ignore();
}

bool CVXSLayoutView::event(QEvent* pEvent)
{
    // Undo or redo in the middle of a press and release would leave what the gesture did so
    // far out of the history, against a page put back under it: their keys are taken here,
    // and do nothing, until the button is released.
    if (pEvent->type() == QEvent::ShortcutOverride && m_gesture.isOpen()) {
        const auto* pKey = static_cast<const QKeyEvent*>(pEvent);
        const QKeySequence keys(int(pKey->modifiers()) | pKey->key());
        if (CVXSLayoutWindow::undoShortcuts().contains(keys) || CVXSLayoutWindow::redoShortcuts().contains(keys)) {
            pEvent->accept();
            return true;
        }
    }
    return QGraphicsView::event(pEvent);
}

void CVXSLayoutView::keyPressEvent(QKeyEvent* pEvent)
{
    if (pEvent->key() == Qt::Key_Delete)
        deleteSelected();
}

void CVXSLayoutView::resizeEvent(QResizeEvent* pEvent)
{
    QGraphicsView::resizeEvent(pEvent);
    if (!scene())
        return;
    scene()->setSceneRect(0, 0, width() - 4, height() - 4);
    if (m_pManager)
        m_pManager->relayoutItems(true);
    updateWholeScene();
}
