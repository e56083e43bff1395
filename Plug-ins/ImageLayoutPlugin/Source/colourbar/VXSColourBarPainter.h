#pragma once

#include "colourbar/VXSColourBar.h"

#include <QFont>
#include <QRectF>

class QPainter;

// Draws a colour bar into a rectangle of the page, in page units: the title on top, the
// colour table as a strip (lowest value at the bottom or on the left) and the ticks with
// their values beside or under it, all in black and sized from the rectangle so that the
// bar looks the same at any scale.
class CVXSColourBarPainter
{
public:
    CVXSColourBarPainter(const CVXSColourBar& bar, const QRectF& rect);

    void draw(QPainter& painter) const;
    // The strip the colours fill; the ticks are measured along it.
    QRectF stripRect() const;

private:
    QFont font() const;
    double titleHeight() const;
    // Where a value lies along the strip, in page units.
    QPointF placeOf(double dValue) const;
    void drawStrip(QPainter& painter) const;
    void drawTicks(QPainter& painter) const;

    CVXSColourBar m_bar;
    QRectF m_rect;
    double m_dFontSize = 1.0;
};
