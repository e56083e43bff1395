#include "VXSLayoutItemGeometry.h"

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

} // namespace VXSLayoutItemGeometry
