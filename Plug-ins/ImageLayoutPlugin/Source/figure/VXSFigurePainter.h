#pragma once

#include "figure/VXSItemFigure.h"

#include <QFont>
#include <QPen>
#include <QRectF>

class QGraphicsItem;
class QPainter;

// Draws what the figure features add to items, in page units, on screen and in every output
// alike: the look of styled items (CVXSItemStyle) and what lies over an image. The painter's
// transform maps page units to the device; dScale is the device's pixels per page unit (1 on
// screen), which only the standard hairline needs.
class CVXSFigurePainter
{
public:
    explicit CVXSFigurePainter(double dScale = 1.0);

    // A styled rectangle, ellipse, line or arrow; false, and nothing drawn, for an item of
    // the standard look, which its own paint draws.
    bool drawShape(QPainter& painter, QGraphicsItem& item) const;
    // What lies under a text: its background.
    void drawUnder(QPainter& painter, const QGraphicsItem& item) const;
    // What lies over an image drawn into imageRect: its border, panel letter and scale bar.
    void drawOver(QPainter& painter, const QGraphicsItem& item, const QRectF& imageRect) const;

private:
    void drawBorder(QPainter& painter, const CVXSItemFigure& figure, const QRectF& imageRect) const;
    static void drawPanelLabel(QPainter& painter, const QGraphicsItem& item, const CVXSPanelLabel& label,
                               const QRectF& imageRect);
    static void drawScaleBar(QPainter& painter, const CVXSItemFigure& figure, const QImage& source,
                             const QRectF& imageRect);
    // A font whose characters are dHeight page units high on the painter's device.
    static QFont pageFont(const QPainter& painter, double dHeight);
    QPen linePen(const QColor& colour, double dWidth) const;
    // The rectangle within which a line of the width lies wholly inside rect.
    static QRectF strokeInside(const QRectF& rect, double dWidth);

    double m_dScale = 1.0;
};
