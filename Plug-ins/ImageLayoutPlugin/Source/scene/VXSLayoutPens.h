#pragma once

#include <QPen>

// Pens used by several parts of the layout.
namespace VXSLayoutPens {

// Solid black, one device pixel wide whatever the scale (cosmetic).
inline QPen thinBlack()
{
    return QPen(QBrush(QColor(0, 0, 0, 255)), 0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

} // namespace VXSLayoutPens
