#include "figure/VXSItemFigure.h"

#include <VXPixelSize.h>

#include <QGraphicsItem>
#include <QVariant>

namespace {
// The slot of QGraphicsItem::data() that holds the figure part.
constexpr int FigureDataKey = 0x5846;
} // namespace

CVXSItemFigure CVXSItemFigure::of(const QGraphicsItem& item)
{
    return item.data(FigureDataKey).value<CVXSItemFigure>();
}

void CVXSItemFigure::applyTo(QGraphicsItem& item) const
{
    item.setData(FigureDataKey, QVariant::fromValue(*this));
}

double CVXSItemFigure::pixelSizeMm(const QImage& source) const
{
    return dPixelSizeMm > 0.0 ? dPixelSizeMm : CVXPixelSize::of(source);
}

bool CVXSItemFigure::operator==(const CVXSItemFigure& other) const
{
    return bStyled == other.bStyled && lineColour == other.lineColour && dLineWidth == other.dLineWidth
        && fillColour == other.fillColour && panelLabel == other.panelLabel && scaleBar == other.scaleBar
        && dPixelSizeMm == other.dPixelSizeMm && colourBar == other.colourBar;
}
