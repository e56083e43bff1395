#pragma once

#include <QPointF>
#include <QRectF>

class QGraphicsItem;

// Geometry helpers shared by the layout items and the view that edits them.
namespace VXSLayoutItemGeometry {

// The item's bounding rectangle with left/right and top/bottom swapped where a drag
// turned it inside out, so that content is always drawn upright.
QRectF normalizedBoundingRect(const QGraphicsItem& item);

// The bounding rectangle moved 1.0 inwards on every side (a rectangle narrower than 2
// comes out inverted, as the arithmetic gives).
QRectF insetBoundingRect(const QGraphicsItem& item);

// The geometry of a rectangle- or ellipse-based layout item (its rect(), not its
// bounding rectangle), and setting it.
QRectF geometryRect(const QGraphicsItem& item);
void setGeometryRect(QGraphicsItem& item, const QRectF& rect);

// The rectangle with the corner of the handle (1 top-left, 2 top-right, 3 bottom-right,
// 4 bottom-left) moved to the point.
QRectF withCornerAt(QRectF rect, int nHandle, const QPointF& point);

// The rectangle with the handle's corner pulled back, where needed, to one unit from the
// opposite corner: an image must never shrink to nothing, or it could no longer be seen,
// picked or deleted.
QRectF withVisibleSize(QRectF rect, int nHandle);

// The rectangle spanned by the press point and the pointer (taken as a whole-number
// point), with positive size and its top-left corner cut to whole numbers.
QRectF spannedRect(const QPointF& press, const QPointF& pointer);

QRectF widened(const QRectF& rect, int nMargin);

} // namespace VXSLayoutItemGeometry
