#pragma once

#include <QRect>
#include <QRgb>

class QPainter;

// The "hot" pseudo-colour scale of optical imaging: black, red, yellow, white.
class CVXColorMap
{
public:
    // The colour of a normalised signal; values outside 0..1 are clamped.
    static QRgb hot(double dValue);
    // A vertical scale bar, strongest signal at the top, framed and ticked in white.
    static void drawHotScale(QPainter& painter, const QRect& rect, int nTicks);
};
