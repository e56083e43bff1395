#pragma once

#include "VxApiGlobal.h"

#include <QImage>

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

private:
    static QImage windowGrey(const QImage& image);
    static QImage windowColour(const QImage& image);
};
