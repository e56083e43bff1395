#include "figure/VXSItemStyle.h"

#include "figure/VXSItemFigure.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemArrow.h"
#include "VXSLayoutItemText.h"

using namespace VXSLayout;

namespace {
const QColor None(0, 0, 0, 0);
} // namespace

CVXSItemStyle CVXSItemStyle::standard(int nType)
{
    CVXSItemStyle style;
    switch (nType) {
    case TextItemType:
        style.fillColour = None;
        break;
    case ImageItemType:
        style.lineColour = None;
        style.fillColour = None;
        break;
    case ArrowItemType:
        style.fillColour = None;
        style.dHeadSize = ArrowHeadLength;
        break;
    default:
        break;
    }
    return style;
}

CVXSItemStyle CVXSItemStyle::of(const QGraphicsItem& item)
{
    CVXSItemStyle style = standard(item.type());
    if (item.type() == TextItemType) {
        const auto& text = static_cast<const CVXSLayoutItemText&>(item);
        style.textColour = text.getColor();
        style.font = text.getFont();
    }
    if (item.type() == ArrowItemType)
        style.dHeadSize = static_cast<const CVXSLayoutItemArrow&>(item).headLength();
    const CVXSItemFigure figure = CVXSItemFigure::of(item);
    if (figure.bStyled) {
        style.lineColour = figure.lineColour;
        style.dLineWidth = figure.dLineWidth;
        style.fillColour = figure.fillColour;
    }
    return style;
}

void CVXSItemStyle::applyTo(QGraphicsItem& item) const
{
    if (item.type() == ArrowItemType)
        static_cast<CVXSLayoutItemArrow&>(item).setHeadLength(dHeadSize);
    if (item.type() == TextItemType) {
        auto& text = static_cast<CVXSLayoutItemText&>(item);
        text.setColor(textColour);
        text.setFont(font);
    }
    CVXSItemFigure figure = CVXSItemFigure::of(item);
    figure.bStyled = true;
    figure.lineColour = lineColour;
    figure.dLineWidth = dLineWidth;
    figure.fillColour = fillColour;
    figure.applyTo(item);
}

bool CVXSItemStyle::operator==(const CVXSItemStyle& other) const
{
    return lineColour == other.lineColour && dLineWidth == other.dLineWidth && fillColour == other.fillColour
        && dHeadSize == other.dHeadSize && textColour == other.textColour && font == other.font;
}
