#include "figure/VXSFigureController.h"

#include "figure/VXSFigureMarks.h"
#include "figure/VXSItemFigure.h"
#include "figure/export/VXSFigureExportCommand.h"
#include "figure/VXSStyleDefaults.h"
#include "figure/properties/VXSFigureProperties.h"
#include "output/VXSLayoutRenderer.h"
#include "scene/VXSLayoutItemGeometry.h"
#include "undo/VXSLayoutChange.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemArrow.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"

#include <QAction>
#include <QGraphicsScene>
#include <QUndoStack>

using namespace VXSLayout;

namespace {

QRectF arrowBox(const CVXSLayoutItemArrow& arrow)
{
    QPoint start;
    QPoint end;
    arrow.getStartPoint(start.rx(), start.ry());
    arrow.getEndPoint(end.rx(), end.ry());
    return QRectF(start, end).normalized();
}

// The point's place in from, carried over to to.
QPoint mapped(const QPoint& point, const QRectF& from, const QRectF& to)
{
    const double fx = from.width() > 0 ? (point.x() - from.left()) / from.width() : 0.0;
    const double fy = from.height() > 0 ? (point.y() - from.top()) / from.height() : 0.0;
    return QPointF(to.left() + fx * to.width(), to.top() + fy * to.height()).toPoint();
}

bool isInCell(const QGraphicsItem& item)
{
    return item.type() == ImageItemType && static_cast<const CVXSLayoutItemImage&>(item).getCellIndex() != -1;
}

} // namespace

CVXSFigureController::CVXSFigureController(QObject* pParent)
    : QObject(pParent)
{
    new CVXSFigureExportCommand(*this);
    m_pMarks = new CVXSFigureMarks(*this);
}

CVXSFigureController::~CVXSFigureController()
{
    delete m_pPanel;
}

void CVXSFigureController::setManager(CVXSLayoutManager* pManager)
{
    for (const QMetaObject::Connection& connection : qAsConst(m_connections))
        disconnect(connection);
    m_connections.clear();
    m_pManager = pManager;
    if (pManager && pManager->getLayoutView()) {
        m_connections << connect(pManager->getLayoutView(), &CVXSLayoutView::selectionChanged, this,
                                 &CVXSFigureController::changed)
                      << connect(pManager->undoStack(), &QUndoStack::indexChanged, this, &CVXSFigureController::changed)
                      << connect(pManager->getScene(), &QGraphicsScene::sceneRectChanged, this,
                                 &CVXSFigureController::changed);
    }
    emit changed();
}

CVXSLayoutManager* CVXSFigureController::manager() const
{
    return m_pManager;
}

QWidget* CVXSFigureController::panel()
{
    if (!m_pPanel)
        m_pPanel = new CVXSFigureProperties(*this);
    return m_pPanel;
}

QList<QAction*> CVXSFigureController::menuActions(const QString& strMenu) const
{
    QList<QAction*> actions;
    for (const auto& command : m_commands) {
        if (command.first == strMenu)
            actions << command.second;
    }
    return actions;
}

void CVXSFigureController::addCommand(QAction* pAction, const QString& strMenu)
{
    m_commands.append({strMenu, pAction});
}

CVXSFigureMarks* CVXSFigureController::marks() const
{
    return m_pMarks;
}

QGraphicsItem* CVXSFigureController::selectedItem() const
{
    return m_pManager && m_pManager->getLayoutView() ? m_pManager->getLayoutView()->currentItem() : nullptr;
}

CVXSFigurePage CVXSFigureController::page() const
{
    return m_pManager ? CVXSFigurePage::of(*m_pManager->getScene()) : CVXSFigurePage();
}

QSizeF CVXSFigureController::pageUnits() const
{
    if (!m_pManager)
        return QSizeF();
    return CVXSLayoutRenderer(*m_pManager->getScene(), m_pManager->getLayoutView()).pageSize();
}

double CVXSFigureController::mmPerUnit() const
{
    return page().mmPerUnit(pageUnits().width());
}

QRectF CVXSFigureController::geometryMm(const QGraphicsItem& item) const
{
    const QRectF rect = item.type() == ArrowItemType ? arrowBox(static_cast<const CVXSLayoutItemArrow&>(item))
                                                     : VXSLayoutItemGeometry::geometryRect(item).normalized();
    const double dScale = mmPerUnit();
    return QRectF(rect.topLeft() * dScale, rect.size() * dScale);
}

bool CVXSFigureController::canChange() const
{
    return m_pManager && m_pManager->getLayoutView() && !m_pManager->getLayoutView()->isGestureOpen();
}

bool CVXSFigureController::applyStyle(const CVXSItemStyle& style, const QString& strText)
{
    QGraphicsItem* pItem = selectedItem();
    if (!pItem || !canChange()) {
        emit changed();
        return false;
    }
    {
        CVXSLayoutChange change(m_pManager, strText);
        style.applyTo(*pItem);
        repaint(pItem);
    }
    return true;
}

bool CVXSFigureController::setGeometryMm(const QRectF& rectMm)
{
    QGraphicsItem* pItem = selectedItem();
    const double dScale = mmPerUnit();
    if (!pItem || !canChange() || isInCell(*pItem) || dScale <= 0) {
        emit changed();
        return false;
    }
    {
        CVXSLayoutChange change(m_pManager, tr("Move or Resize"));
        placeItem(*pItem, QRectF(rectMm.topLeft() / dScale, rectMm.size() / dScale));
        repaint(pItem);
    }
    return true;
}

void CVXSFigureController::placeItem(QGraphicsItem& item, const QRectF& rect) const
{
    if (item.type() != ArrowItemType) {
        VXSLayoutItemGeometry::setGeometryRect(item, rect);
        return;
    }
    auto& arrow = static_cast<CVXSLayoutItemArrow&>(item);
    const QRectF from = arrowBox(arrow);
    QPoint start;
    QPoint end;
    arrow.getStartPoint(start.rx(), start.ry());
    arrow.getEndPoint(end.rx(), end.ry());
    start = mapped(start, from, rect);
    end = mapped(end, from, rect);
    arrow.setStartPoint(start.x(), start.y());
    arrow.setEndPoint(end.x(), end.y());
    arrow.fitRectToPoints();
}

bool CVXSFigureController::setPage(const CVXSFigurePage& page, const QString& strText)
{
    if (!canChange()) {
        emit changed();
        return false;
    }
    {
        CVXSLayoutChange change(m_pManager, strText);
        page.applyTo(*m_pManager->getScene());
    }
    emit changed();
    return true;
}

bool CVXSFigureController::setColourBarOrientation(Qt::Orientation orientation)
{
    QGraphicsItem* pItem = selectedItem();
    CVXSItemFigure figure = pItem ? CVXSItemFigure::of(*pItem) : CVXSItemFigure();
    if (!figure.colourBar.isShown() || figure.colourBar.orientation == orientation || !canChange()) {
        emit changed();
        return false;
    }
    {
        CVXSLayoutChange change(m_pManager, tr("Change Colour Bar"));
        const QRectF rect = VXSLayoutItemGeometry::geometryRect(*pItem).normalized();
        figure.colourBar.orientation = orientation;
        figure.applyTo(*pItem);
        VXSLayoutItemGeometry::setGeometryRect(*pItem, QRectF(rect.topLeft(), rect.size().transposed()));
        repaint(pItem);
    }
    return true;
}

void CVXSFigureController::useAsDefault()
{
    if (const QGraphicsItem* pItem = selectedItem())
        CVXSStyleDefaults::store(*pItem);
}

void CVXSFigureController::resetDefaults()
{
    CVXSStyleDefaults::resetAll();
}

void CVXSFigureController::repaint(QGraphicsItem* pItem) const
{
    CVXSLayoutView* pView = m_pManager->getLayoutView();
    pView->showHandles(pItem);
    m_pManager->getScene()->update();
}
