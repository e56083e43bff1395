#pragma once

#include <QPointF>
#include <QRect>
#include <QSize>
#include <QSizeF>

#include <algorithm>
#include <cmath>

// Fitting an image into a box (a grid cell or the free placement area) with its aspect
// ratio kept, and centring it there. All of the layout's image fitting goes through here.
namespace VXSImageFit {

// How the room left beside an image is split. The two differ by one pixel when the box
// and the image differ in parity; each caller keeps the one it has always used, so that
// images land on exactly the same pixels as before.
enum class Centring {
    HalveTheRoom,         // (box - image) / 2
    HalfBoxLessHalfImage, // box / 2 - image / 2
};

// Offset of an image side within a box side, whole-number divisions rounding toward zero.
inline int centredOffset(int nBox, int nImage, Centring centring)
{
    return centring == Centring::HalveTheRoom ? (nBox - nImage) / 2 : nBox / 2 - nImage / 2;
}

// A side truncated to whole pixels, but never to nothing: an image without width or
// height could neither be seen nor picked, and no re-layout would ever find it again.
inline int visibleSide(double side)
{
    const int truncated = int(side);
    return truncated != 0 ? truncated : 1;
}

// The size of a w x h image scaled to fit a boxWidth x boxHeight box with its aspect
// ratio kept, each side truncated to whole pixels and at least one pixel. A zero side has
// no aspect to keep: the image then becomes a single pixel rather than dividing by zero.
inline QSize fitSize(double w, double h, double boxWidth, double boxHeight)
{
    if (w == 0.0 || h == 0.0)
        return QSize(1, 1);
    const double scale = std::min(boxWidth / std::abs(w), boxHeight / std::abs(h));
    return QSize(visibleSide(w * scale), visibleSide(h * scale));
}

// The rectangle of an image of the given size fitted into the box and centred there.
inline QRect fitRect(const QSizeF& image, const QRect& box, Centring horizontal, Centring vertical)
{
    const QSize size = fitSize(image.width(), image.height(), box.width(), box.height());
    return QRect(box.left() + centredOffset(box.width(), size.width(), horizontal),
                 box.top() + centredOffset(box.height(), size.height(), vertical), size.width(), size.height());
}

// The top-left corner that centres an image of the given size in the box without scaling
// it (the image's sides truncated to whole pixels for the halving).
inline QPointF centredCorner(const QSizeF& image, const QRect& box)
{
    return QPointF(box.left() + centredOffset(box.width(), int(image.width()), Centring::HalfBoxLessHalfImage),
                   box.top() + centredOffset(box.height(), int(image.height()), Centring::HalfBoxLessHalfImage));
}

} // namespace VXSImageFit
