#include "undo/VXSLayoutItemState.h"

#include "VXSLayoutConstants.h"
#include "VXSLayoutItemArrow.h"
#include "VXSLayoutItemEllipse.h"
#include "scene/VXSLayoutItemGeometry.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutItemRectangle.h"
#include "VXSLayoutItemText.h"

using namespace VXSLayout;

namespace {

bool isLayoutKind(int nType)
{
    return nType == ImageItemType || nType == TextItemType || nType == EllipseItemType
        || nType == RectangleItemType || nType == ArrowItemType;
}

} // namespace

CVXSLayoutItemState CVXSLayoutItemState::capture(const QGraphicsItem& item)
{
    CVXSLayoutItemState state;
    if (!isLayoutKind(item.type()))
        return state;
    state.nType = item.type();
    state.rect = VXSLayoutItemGeometry::geometryRect(item);
    state.z = item.zValue();
    // Every layout kind is a shape item; the cast cannot fail for them.
    const auto& shape = static_cast<const QAbstractGraphicsShapeItem&>(item);
    state.pen = shape.pen();
    state.brush = shape.brush();
    state.figure = CVXSItemFigure::of(item);
    switch (state.nType) {
    case TextItemType: {
        const auto& text = static_cast<const CVXSLayoutItemText&>(item);
        state.strText = text.getText();
        state.font = text.getFont();
        state.color = text.getColor();
        state.nTextFlags = int(text.getTextFlags());
        break;
    }
    case ArrowItemType: {
        const auto& arrow = static_cast<const CVXSLayoutItemArrow&>(item);
        arrow.getStartPoint(state.startPoint.rx(), state.startPoint.ry());
        arrow.getEndPoint(state.endPoint.rx(), state.endPoint.ry());
        state.bStartHead = arrow.hasStartHead();
        state.bEndHead = arrow.hasEndHead();
        state.dHeadLength = arrow.headLength();
        state.dHeadWidthRatio = arrow.headWidthRatio();
        break;
    }
    case ImageItemType: {
        const auto& image = static_cast<const CVXSLayoutItemImage&>(item);
        state.image = image.image();
        state.nCellIndex = image.getCellIndex();
        break;
    }
    default:
        break;
    }
    return state;
}

QGraphicsItem* CVXSLayoutItemState::createItem() const
{
    QGraphicsItem* pItem = nullptr;
    switch (nType) {
    case ImageItemType: pItem = new CVXSLayoutItemImage(image); break;
    case TextItemType: pItem = new CVXSLayoutItemText(strText); break;
    case EllipseItemType: pItem = new CVXSLayoutItemEllipse(); break;
    case RectangleItemType: pItem = new CVXSLayoutItemRectangle(); break;
    case ArrowItemType: pItem = new CVXSLayoutItemArrow(0, 0, 0, 0); break;
    default: return nullptr;
    }
    applyTo(*pItem);
    return pItem;
}

void CVXSLayoutItemState::applyTo(QGraphicsItem& item) const
{
    if (item.type() != nType)
        return;
    VXSLayoutItemGeometry::setGeometryRect(item, rect);
    item.setZValue(z);
    auto& shape = static_cast<QAbstractGraphicsShapeItem&>(item);
    shape.setPen(pen);
    shape.setBrush(brush);
    figure.applyTo(item);
    switch (nType) {
    case TextItemType: {
        auto& text = static_cast<CVXSLayoutItemText&>(item);
        text.setText(strText);
        text.setFont(font);
        text.setColor(color);
        text.setTextFlags(Qt::Alignment(nTextFlags));
        break;
    }
    case ArrowItemType: {
        auto& arrow = static_cast<CVXSLayoutItemArrow&>(item);
        arrow.setStartPoint(startPoint.x(), startPoint.y());
        arrow.setEndPoint(endPoint.x(), endPoint.y());
        arrow.setStartHead(bStartHead);
        arrow.setEndHead(bEndHead);
        arrow.setHeadLength(dHeadLength);
        arrow.setHeadWidthRatio(dHeadWidthRatio);
        break;
    }
    case ImageItemType:
        static_cast<CVXSLayoutItemImage&>(item).setCellIndex(nCellIndex);
        break;
    default:
        break;
    }
}

bool CVXSLayoutItemState::operator==(const CVXSLayoutItemState& other) const
{
    // Images are compared by identity: an item's image never changes once placed.
    return nType == other.nType && rect == other.rect && z == other.z && pen == other.pen
        && brush == other.brush && strText == other.strText && font == other.font && color == other.color
        && nTextFlags == other.nTextFlags && startPoint == other.startPoint && endPoint == other.endPoint
        && bStartHead == other.bStartHead && bEndHead == other.bEndHead && dHeadLength == other.dHeadLength
        && dHeadWidthRatio == other.dHeadWidthRatio && image.cacheKey() == other.image.cacheKey()
        && nCellIndex == other.nCellIndex && figure == other.figure;
}
