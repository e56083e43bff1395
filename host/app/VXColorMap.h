#pragma once

#include <QRect>

class QPainter;

// The scale bar printed into the luminescence sample, as an imaging system's software
// prints one into its pictures.
class CVXColorMap
{
public:
    // A vertical bar of the "hot" colour table (CVXColourTable), strongest signal at the
    // top, framed and ticked in white.
    static void drawHotScale(QPainter& painter, const QRect& rect, int nTicks);
};
