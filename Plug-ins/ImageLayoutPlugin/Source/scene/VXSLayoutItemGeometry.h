#pragma once

#include <QRectF>

class QGraphicsItem;

// Geometry helpers shared by the layout items.
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

} // namespace VXSLayoutItemGeometry
