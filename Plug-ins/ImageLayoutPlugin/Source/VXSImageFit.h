#pragma once

#include <QSize>

#include <algorithm>
#include <cmath>

namespace VXSImageFit {

// The size of a w x h image scaled to fit a boxWidth x boxHeight box with its aspect
// ratio kept, each side truncated to whole pixels. A zero side has no aspect to keep:
// the image then shrinks to nothing rather than dividing by zero.
inline QSize fitSize(double w, double h, double boxWidth, double boxHeight)
{
    if (w == 0.0 || h == 0.0)
        return QSize(0, 0);
    const double scale = std::min(boxWidth / std::abs(w), boxHeight / std::abs(h));
    return QSize(int(w * scale), int(h * scale));
}

} // namespace VXSImageFit
