#include "scene/VXSLayoutItemGeometry.h"

#include "VXSLayoutConstants.h"

#include <QGraphicsItem>

#include <cmath>

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

QRectF withCornerAt(QRectF rect, int nHandle, const QPointF& point)
{
    switch (nHandle) {
    case 1: rect.setTopLeft(point); break;
    case 2: rect.setTopRight(point); break;
    case 3: rect.setBottomRight(point); break;
    case 4: rect.setBottomLeft(point); break;
    default: break;
    }
    return rect;
}

QRectF withVisibleSize(QRectF rect, int nHandle)
{
    const bool bLeftMoves = nHandle == 1 || nHandle == 4;
    const bool bTopMoves = nHandle == 1 || nHandle == 2;
    if (std::abs(rect.width()) < 1) {
        if (bLeftMoves)
            rect.setLeft(rect.right() - 1);
        else
            rect.setRight(rect.left() + 1);
    }
    if (std::abs(rect.height()) < 1) {
        if (bTopMoves)
            rect.setTop(rect.bottom() - 1);
        else
            rect.setBottom(rect.top() + 1);
    }
    return rect;
}

QRectF spannedRect(const QPointF& press, const QPointF& pointer)
{
    const QPoint q = pointer.toPoint();
    const qreal left = q.x() <= press.x() ? q.x() : press.x();
    const qreal top = q.y() <= press.y() ? q.y() : press.y();
    return QRectF(int(left), int(top), std::abs(q.x() - press.x()), std::abs(q.y() - press.y()));
}

QRectF widened(const QRectF& rect, int nMargin)
{
    return rect.adjusted(-nMargin, -nMargin, nMargin, nMargin);
}

} // namespace VXSLayoutItemGeometry
