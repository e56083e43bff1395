#include "figure/VXSFigurePainter.h"

#include "figure/VXSFigurePage.h"
#include "colourbar/VXSColourBarPainter.h"
#include "figure/VXSItemFigure.h"
#include "output/VXSLayoutRenderer.h"
#include "scene/VXSLayoutItemGeometry.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemArrow.h"
#include "VXSLayoutItemImage.h"

#include <VXPixelSize.h>

#include <QGraphicsScene>
#include <QPainter>

using namespace VXSLayout;

namespace {
// The standard hairline of output pages larger than the screen's, in device pixels.
constexpr double OutputHairline = 2.0;
constexpr double PointsPerMm = 72.0 / 25.4;
// Room between a letter or a bar's label and what it stands next to, in parts of its height.
constexpr double LabelGap = 0.3;
// A scale bar's distance from the image's edges and its label's height, in parts of the
// image's shorter side.
constexpr double BarMargin = 0.05;
constexpr double BarTextHeight = 0.06;

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
    drawBorder(painter, figure, imageRect);
    if (item.type() != ImageItemType)
        return;
    drawScaleBar(painter, figure, static_cast<const CVXSLayoutItemImage&>(item).image(), imageRect.normalized());
    drawPanelLabel(painter, item, figure.panelLabel, imageRect.normalized());
}

void CVXSFigurePainter::drawBorder(QPainter& painter, const CVXSItemFigure& figure, const QRectF& imageRect) const
{
    if (!figure.bStyled || !isVisible(figure.lineColour))
        return;
    painter.save();
    painter.setPen(linePen(figure.lineColour, figure.dLineWidth));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(strokeInside(imageRect.normalized(), figure.dLineWidth));
    painter.restore();
}

void CVXSFigurePainter::drawPanelLabel(QPainter& painter, const QGraphicsItem& item, const CVXSPanelLabel& label,
                                       const QRectF& imageRect)
{
    if (!label.isShown())
        return;
    // The size is in points of the finished figure, whose width the page sets.
    double dUnitsPerPoint = 1.0;
    if (QGraphicsScene* pScene = item.scene()) {
        const double dMmPerUnit =
            CVXSFigurePage::of(*pScene).mmPerUnit(CVXSLayoutRenderer(*pScene, nullptr).pageSize().width());
        if (dMmPerUnit > 0.0)
            dUnitsPerPoint = 1.0 / (PointsPerMm * dMmPerUnit);
    }
    const double dHeight = label.dPoints * dUnitsPerPoint;
    QFont font = pageFont(painter, dHeight);
    font.setBold(label.bBold);
    const double dGap = dHeight * LabelGap;
    const bool bInside = label.nCorner == CVXSPanelLabel::InsideTopLeft;
    // Inside, white on the picture; outside, black on the page just above the image.
    const QRectF box = bInside ? QRectF(imageRect.left() + dGap, imageRect.top() + dGap, imageRect.width(), dHeight * 2)
                               : QRectF(imageRect.left(), imageRect.top() - dGap - dHeight * 2, imageRect.width(),
                                        dHeight * 2);
    painter.save();
    painter.setFont(font);
    painter.setPen(bInside ? Qt::white : Qt::black);
    painter.drawText(box, Qt::AlignLeft | (bInside ? Qt::AlignTop : Qt::AlignBottom) | Qt::TextDontClip, label.strText);
    painter.restore();
}

void CVXSFigurePainter::drawScaleBar(QPainter& painter, const CVXSItemFigure& figure, const QImage& source,
                                     const QRectF& imageRect)
{
    const CVXSScaleBar& bar = figure.scaleBar;
    const double dPixelMm = figure.pixelSizeMm(source);
    if (!bar.bShown || dPixelMm <= 0.0 || source.width() <= 0 || imageRect.isEmpty())
        return;
    // The item shows the whole source, so its width is the source's width on the object.
    const double dShownMm = dPixelMm * source.width();
    const double dLengthMm = bar.lengthMm(dShownMm);
    const double dLength = imageRect.width() * dLengthMm / dShownMm;
    const double dSide = qMin(imageRect.width(), imageRect.height());
    const double dMargin = dSide * BarMargin;
    const double dTextHeight = dSide * BarTextHeight;
    const bool bLeft = bar.nCorner == CVXSScaleBar::BottomLeft || bar.nCorner == CVXSScaleBar::TopLeft;
    const bool bTop = bar.nCorner == CVXSScaleBar::TopLeft || bar.nCorner == CVXSScaleBar::TopRight;
    const double dX = bLeft ? imageRect.left() + dMargin : imageRect.right() - dMargin - dLength;
    const double dY = bTop ? imageRect.top() + dMargin : imageRect.bottom() - dMargin - bar.dThickness;
    painter.save();
    painter.setClipRect(imageRect, Qt::IntersectClip);
    painter.setPen(Qt::NoPen);
    painter.setBrush(bar.colour);
    painter.drawRect(QRectF(dX, dY, dLength, bar.dThickness));
    if (bar.bLabel) {
        // Centred on the bar: above it in the bottom corners, below it in the top ones.
        const double dTextBox = dTextHeight * 2;
        const QRectF box(dX + dLength / 2 - imageRect.width() / 2,
                         bTop ? dY + bar.dThickness + dTextHeight * LabelGap : dY - dTextHeight * LabelGap - dTextBox,
                         imageRect.width(), dTextBox);
        painter.setFont(pageFont(painter, dTextHeight));
        painter.setPen(bar.colour);
        painter.drawText(box, Qt::AlignHCenter | (bTop ? Qt::AlignTop : Qt::AlignBottom), CVXPixelSize::text(dLengthMm));
    }
    painter.restore();
}

QFont CVXSFigurePainter::pageFont(const QPainter& painter, double dHeight)
{
    // A point size the device turns into dHeight of the painter's units.
    QFont font;
    const int nDpi = painter.device() ? painter.device()->logicalDpiY() : CVXSLayoutRenderer::rasterDpi();
    font.setPointSizeF(qMax(dHeight, 0.5) * 72.0 / nDpi);
    return font;
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
