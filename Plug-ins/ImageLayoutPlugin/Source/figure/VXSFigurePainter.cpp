#include "figure/VXSFigurePainter.h"

#include "colourbar/VXSColourBarPainter.h"
#include "figure/VXSItemFigure.h"
#include "scene/VXSLayoutItemGeometry.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemArrow.h"

#include <QPainter>

using namespace VXSLayout;

namespace {
// The standard hairline of output pages larger than the screen's, in device pixels.
constexpr double OutputHairline = 2.0;

bool isVisible(const QColor& colour)
{
    return colour.isValid() && colour.alpha() > 0;
}
} // namespace

CVXSFigurePainter::CVXSFigurePainter(double dScale)
    : m_dScale(dScale)
{
}

bool CVXSFigurePainter::drawShape(QPainter& painter, QGraphicsItem& item) const
{
    const CVXSItemFigure figure = CVXSItemFigure::of(item);
    const bool bColourBar = item.type() == RectangleItemType && figure.colourBar.isShown();
    if (!figure.bStyled && !bColourBar)
        return false;
    if (bColourBar) {
        CVXSColourBarPainter(figure.colourBar, VXSLayoutItemGeometry::geometryRect(item)).draw(painter);
        return true;
    }
    painter.save();
    painter.setPen(isVisible(figure.lineColour) ? linePen(figure.lineColour, figure.dLineWidth) : QPen(Qt::NoPen));
    painter.setBrush(isVisible(figure.fillColour) ? QBrush(figure.fillColour) : QBrush());
    const QRectF rect = strokeInside(VXSLayoutItemGeometry::geometryRect(item).normalized(), figure.dLineWidth);
    switch (item.type()) {
    case RectangleItemType:
        painter.drawRect(rect);
        break;
    case EllipseItemType:
        painter.drawEllipse(rect);
        break;
    case ArrowItemType:
        static_cast<CVXSLayoutItemArrow&>(item).drawArrow(&painter);
        break;
    default:
        break;
    }
    painter.restore();
    return true;
}

void CVXSFigurePainter::drawUnder(QPainter& painter, const QGraphicsItem& item) const
{
    const CVXSItemFigure figure = CVXSItemFigure::of(item);
    if (figure.bStyled && isVisible(figure.fillColour))
        painter.fillRect(VXSLayoutItemGeometry::geometryRect(item).normalized(), figure.fillColour);
}

void CVXSFigurePainter::drawOver(QPainter& painter, const QGraphicsItem& item, const QRectF& imageRect) const
{
    const CVXSItemFigure figure = CVXSItemFigure::of(item);
    if (!figure.bStyled || !isVisible(figure.lineColour))
        return;
    painter.save();
    painter.setPen(linePen(figure.lineColour, figure.dLineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(strokeInside(imageRect.normalized(), figure.dLineWidth));
    painter.restore();
}

QPen CVXSFigurePainter::linePen(const QColor& colour, double dWidth) const
{
    // Width 0 is the standard hairline: one pixel on screen, two on the larger output pages.
    if (dWidth <= 0.0)
        dWidth = m_dScale <= 1.0 ? 0.0 : OutputHairline / m_dScale;
    // Sharp corners, as drawn figures have them; a flat end keeps a line to its length.
    return QPen(QBrush(colour), dWidth, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
}

QRectF CVXSFigurePainter::strokeInside(const QRectF& rect, double dWidth)
{
    const double dHalf = dWidth / 2.0;
    return rect.adjusted(dHalf, dHalf, -dHalf, -dHalf);
}
