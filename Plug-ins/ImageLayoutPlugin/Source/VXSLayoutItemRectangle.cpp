#include "VXSLayoutItemRectangle.h"

#include "figure/VXSFigurePainter.h"
#include "scene/VXSLayoutItemGeometry.h"

#include <QPainter>

CVXSLayoutItemRectangle::CVXSLayoutItemRectangle(QGraphicsItem* parent)
    : QGraphicsRectItem(parent)
{
}

CVXSLayoutItemRectangle::CVXSLayoutItemRectangle(const QRectF& rect, QGraphicsItem* parent)
    : QGraphicsRectItem(rect, parent)
{
}

CVXSLayoutItemRectangle::CVXSLayoutItemRectangle(int x, int y, int width, int height)
    : QGraphicsRectItem(x, y, width, height, nullptr)
{
}

CVXSLayoutItemRectangle::~CVXSLayoutItemRectangle() = default;

void CVXSLayoutItemRectangle::paint(QPainter* pPainter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (CVXSFigurePainter().drawShape(*pPainter, *this))
        return;
    pPainter->setBrush(brush());
    pPainter->setPen(pen());
    pPainter->drawRect(VXSLayoutItemGeometry::insetBoundingRect(*this));
}

int CVXSLayoutItemRectangle::type() const
{
    return Type;
}
