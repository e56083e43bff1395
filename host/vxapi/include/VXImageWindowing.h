#pragma once

#include "VxApiGlobal.h"

#include <QImage>
#include <QPair>

class CVXDisplayRange;

// Prepares image data for the screen. Images with 16 bits per channel are stretched
// from their own darkest to their brightest value onto 0..255: detectors fill only part
// of the 16-bit range, so a plain conversion would show an X-ray nearly black.
class VXAPI_EXPORT CVXImageWindowing
{
public:
    static bool hasDeepChannels(const QImage& image);
    // 8-bit images come back unchanged; Grayscale16 becomes Grayscale8 and the 64-bit
    // colour formats become ARGB32, each windowed as described above. Text keys are kept.
    static QImage toDisplay(const QImage& image);

    // Grey levels a display range can be set for: Grayscale8 and Grayscale16.
    static bool isGreyLevels(const QImage& image);
    // The darkest and brightest grey level of such an image; (0, -1) for an empty one.
    static QPair<int, int> levelExtent(const QImage& levels);
    // The levels shown through the range and its colour table, as RGB32: each level becomes
    // its value of the quantity (CVXDisplayRange::valueOf), the range's minimum and below take
    // the table's first entry, its maximum and above the last, and between them the entry
    // the value's place in the range falls on (rounded down, as the default stretch is).
    // A range without minimum and maximum gives a null image. Text keys are not copied.
    static QImage applyRange(const QImage& levels, const CVXDisplayRange& range);

private:
    static QImage windowGrey(const QImage& image);
    static QImage windowColour(const QImage& image);
};
