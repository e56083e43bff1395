#include "VXImageWindowing.h"

#include "VXColourTable.h"
#include "VXDisplayRange.h"
#include "VXImageProvenance.h"

#include <QRgba64>

#include <cmath>
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

// A place in the range just below an entry's edge still reaches that entry: the default
// stretch divides whole numbers, where 3 * 255 / 3 is 255 and never 254.99.
constexpr double kEdgeTolerance = 1e-9;

// The table entry of every grey level of a Grayscale8 or Grayscale16 image.
QVector<QRgb> levelColours(int nLevels, const CVXDisplayRange& range)
{
    const QVector<QRgb>& entries = CVXColourTable(range.tableName()).entries();
    const int nLast = entries.size() - 1;
    const double dSpan = range.maximum() - range.minimum();
    QVector<QRgb> colours(nLevels);
    for (int nLevel = 0; nLevel < nLevels; ++nLevel) {
        const double dPlace = (range.valueOf(nLevel) - range.minimum()) / dSpan;
        colours[nLevel] = entries.at(qBound(0, int(std::floor(dPlace * nLast + kEdgeTolerance)), nLast));
    }
    return colours;
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

bool CVXImageWindowing::isGreyLevels(const QImage& image)
{
    return image.format() == QImage::Format_Grayscale8 || image.format() == QImage::Format_Grayscale16;
}

QPair<int, int> CVXImageWindowing::levelExtent(const QImage& levels)
{
    if (levels.isNull())
        return qMakePair(0, -1);
    Range range = emptyRange();
    const bool bDeep = levels.format() == QImage::Format_Grayscale16;
    for (int y = 0; y < levels.height(); ++y) {
        for (int x = 0; x < levels.width(); ++x)
            include(range, bDeep ? greyLine(levels, y)[x] : levels.constScanLine(y)[x]);
    }
    return qMakePair(int(range.first), int(range.second));
}

QImage CVXImageWindowing::applyRange(const QImage& levels, const CVXDisplayRange& range)
{
    if (!range.hasRange() || !isGreyLevels(levels))
        return QImage();
    const bool bDeep = levels.format() == QImage::Format_Grayscale16;
    const QVector<QRgb> colours = levelColours(bDeep ? 65536 : 256, range);
    QImage shown(levels.size(), QImage::Format_RGB32);
    for (int y = 0; y < levels.height(); ++y) {
        auto* pOut = reinterpret_cast<QRgb*>(shown.scanLine(y));
        for (int x = 0; x < levels.width(); ++x)
            pOut[x] = colours.at(bDeep ? greyLine(levels, y)[x] : levels.constScanLine(y)[x]);
    }
    return shown;
}

QImage CVXImageWindowing::windowGrey(const QImage& image)
{
    const QPair<int, int> extent = levelExtent(image);
    const Range range(quint16(extent.first), quint16(extent.second));
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
