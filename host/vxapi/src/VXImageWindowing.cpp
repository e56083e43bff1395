#include "VXImageWindowing.h"

#include "VXImageProvenance.h"

#include <QRgba64>

#include <limits>
#include <utility>

namespace {

// The data range that is mapped onto the 256 display levels: darkest, brightest.
using Range = std::pair<quint16, quint16>;

Range emptyRange()
{
    return {std::numeric_limits<quint16>::max(), 0};
}

void include(Range& range, quint16 nValue)
{
    range.first = qMin(range.first, nValue);
    range.second = qMax(range.second, nValue);
}

// A flat image has no range to stretch.
bool isFlat(const Range& range)
{
    return range.second <= range.first;
}

int toByte(quint16 nValue, const Range& range)
{
    return (int(nValue) - range.first) * 255 / (range.second - range.first);
}

const quint16* greyLine(const QImage& image, int y)
{
    return reinterpret_cast<const quint16*>(image.constScanLine(y));
}

const QRgba64* colourLine(const QImage& image, int y)
{
    return reinterpret_cast<const QRgba64*>(image.constScanLine(y));
}

} // namespace

bool CVXImageWindowing::hasDeepChannels(const QImage& image)
{
    switch (image.format()) {
    case QImage::Format_Grayscale16:
    case QImage::Format_RGBX64:
    case QImage::Format_RGBA64:
    case QImage::Format_RGBA64_Premultiplied:
        return true;
    default:
        return false;
    }
}

QImage CVXImageWindowing::toDisplay(const QImage& image)
{
    if (!hasDeepChannels(image))
        return image;
    QImage display = image.format() == QImage::Format_Grayscale16 ? windowGrey(image) : windowColour(image);
    // A new image made pixel by pixel; where the source came from still holds.
    CVXImageProvenance::copyKeys(image, display);
    return display;
}

QImage CVXImageWindowing::windowGrey(const QImage& image)
{
    Range range = emptyRange();
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            include(range, greyLine(image, y)[x]);
    }
    if (isFlat(range))
        return image.convertToFormat(QImage::Format_Grayscale8);
    QImage display(image.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < image.height(); ++y) {
        uchar* pOut = display.scanLine(y);
        for (int x = 0; x < image.width(); ++x)
            pOut[x] = uchar(toByte(greyLine(image, y)[x], range));
    }
    return display;
}

QImage CVXImageWindowing::windowColour(const QImage& image)
{
    const QImage source = image.convertToFormat(QImage::Format_RGBA64);
    Range range = emptyRange();
    for (int y = 0; y < source.height(); ++y) {
        for (int x = 0; x < source.width(); ++x) {
            const QRgba64 pixel = colourLine(source, y)[x];
            include(range, pixel.red());
            include(range, pixel.green());
            include(range, pixel.blue());
        }
    }
    if (isFlat(range))
        return source.convertToFormat(QImage::Format_ARGB32);
    QImage display(source.size(), QImage::Format_ARGB32);
    for (int y = 0; y < source.height(); ++y) {
        auto* pOut = reinterpret_cast<QRgb*>(display.scanLine(y));
        for (int x = 0; x < source.width(); ++x) {
            const QRgba64 pixel = colourLine(source, y)[x];
            pOut[x] = qRgba(toByte(pixel.red(), range), toByte(pixel.green(), range), toByte(pixel.blue(), range),
                            pixel.alpha8());
        }
    }
    return display;
}
