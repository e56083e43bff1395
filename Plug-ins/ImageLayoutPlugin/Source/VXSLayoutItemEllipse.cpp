#include "VXSLayoutItemEllipse.h"

#include "figure/VXSFigurePainter.h"
#include "scene/VXSLayoutItemGeometry.h"
#include "scene/VXSLayoutPens.h"

#include <QPainter>

CVXSLayoutItemEllipse::CVXSLayoutItemEllipse(QGraphicsItem* parent)
    : QGraphicsEllipseItem(parent)
{
}

CVXSLayoutItemEllipse::CVXSLayoutItemEllipse(const QRectF& rect, QGraphicsItem* parent)
    : QGraphicsEllipseItem(rect, parent)
{
}

CVXSLayoutItemEllipse::CVXSLayoutItemEllipse(double x, double y, double width, double height)
    : QGraphicsEllipseItem(x, y, width, height, nullptr)
{
}

CVXSLayoutItemEllipse::~CVXSLayoutItemEllipse() = default;

void CVXSLayoutItemEllipse::paint(QPainter* pPainter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (CVXSFigurePainter().drawShape(*pPainter, *this))
        return;
    pPainter->setBrush(QBrush(QColor(255, 255, 255, 255), Qt::SolidPattern));
    pPainter->setPen(VXSLayoutPens::thinBlack());
    pPainter->drawEllipse(VXSLayoutItemGeometry::insetBoundingRect(*this));
}

int CVXSLayoutItemEllipse::type() const
{
    return Type;
}
