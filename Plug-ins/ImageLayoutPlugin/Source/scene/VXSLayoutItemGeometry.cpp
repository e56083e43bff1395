#include "scene/VXSLayoutItemGeometry.h"

#include "VXSLayoutConstants.h"

#include <QGraphicsItem>

namespace VXSLayoutItemGeometry {

QRectF normalizedBoundingRect(const QGraphicsItem& item)
{
    const QRectF b = item.boundingRect();
    QRectF r = b;
    if (r.left() > r.right()) {
        r.setLeft(b.right());
        r.setRight(b.left());
    }
    if (r.top() > r.bottom()) {
        r.setTop(b.bottom());
        r.setBottom(b.top());
    }
    return r;
}

QRectF insetBoundingRect(const QGraphicsItem& item)
{
    const QRectF b = item.boundingRect();
    return QRectF(QPointF(b.left() + 1.0, b.top() + 1.0), QPointF(b.right() - 1.0, b.bottom() - 1.0));
}

QRectF geometryRect(const QGraphicsItem& item)
{
    if (item.type() == VXSLayout::EllipseItemType)
        return static_cast<const QGraphicsEllipseItem&>(item).rect();
    return static_cast<const QGraphicsRectItem&>(item).rect();
}

void setGeometryRect(QGraphicsItem& item, const QRectF& rect)
{
    if (item.type() == VXSLayout::EllipseItemType)
        static_cast<QGraphicsEllipseItem&>(item).setRect(rect);
    else
        static_cast<QGraphicsRectItem&>(item).setRect(rect);
}

} // namespace VXSLayoutItemGeometry
