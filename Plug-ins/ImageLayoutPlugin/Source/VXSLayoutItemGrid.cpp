#include "VXSLayoutItemGrid.h"

#include <QPainter>

CVXSLayoutItemGrid::CVXSLayoutItemGrid()
    : QGraphicsRectItem(nullptr)
{
}

CVXSLayoutItemGrid::CVXSLayoutItemGrid(QGraphicsItem* /*parent*/, QGraphicsScene* /*scene*/)
    : QGraphicsRectItem(nullptr)
{
}

CVXSLayoutItemGrid::~CVXSLayoutItemGrid() = default;

void CVXSLayoutItemGrid::paint(QPainter* pPainter, const QStyleOptionGraphicsItem*, QWidget*)
{
    pPainter->setPen(QPen(QBrush(QColor(192, 192, 192, 255)), 2.0, Qt::DashLine, Qt::SquareCap, Qt::BevelJoin));
    pPainter->drawRect(boundingRect());
}

int CVXSLayoutItemGrid::type() const
{
    return Type;
}
