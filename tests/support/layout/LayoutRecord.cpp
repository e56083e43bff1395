#include "LayoutRecord.h"

#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QComboBox>
#include <QCoreApplication>
#include <QGraphicsItem>
#include <QStringList>

#include <algorithm>

namespace {

QString rectText(const QRectF& rect)
{
    return QStringLiteral("(%1,%2 %3x%4)").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

QString describeMarks(const CVXSItemFigure& figure)
{
    QString strMarks;
    const CVXSPanelLabel& label = figure.panelLabel;
    if (label.isShown())
        strMarks += QStringLiteral(" letter %1 bold %2 %3 pt corner %4")
                        .arg(label.strText).arg(label.bBold).arg(label.dPoints).arg(label.nCorner);
    const CVXSScaleBar& bar = figure.scaleBar;
    if (bar.bShown)
        strMarks += QStringLiteral(" scale bar %1 mm corner %2 %3 %4 label %5")
                        .arg(bar.dLengthMm).arg(bar.nCorner).arg(bar.colour.name(QColor::HexArgb))
                        .arg(bar.dThickness).arg(bar.bLabel);
    if (figure.dPixelSizeMm > 0.0)
        strMarks += QStringLiteral(" pixel %1 mm").arg(figure.dPixelSizeMm);
    return strMarks;
}

QString describeFigure(const CVXSItemFigure& figure)
{
    if (!figure.bStyled)
        return QStringLiteral("standard") + describeMarks(figure);
    return QStringLiteral("styled %1/%2 fill %3")
               .arg(figure.lineColour.name(QColor::HexArgb))
               .arg(figure.dLineWidth)
               .arg(figure.fillColour.name(QColor::HexArgb))
        + describeMarks(figure);
}

QString describeState(const CVXSLayoutItemState& state)
{
    return QStringLiteral("type %1 rect %2 z %3 pen %4/%5 brush %6 text \"%7\" font %8 colour %9 flags %10 "
                          "line (%11,%12)-(%13,%14) heads %15%16 %17/%18 cell %19 image %20x%21 figure %22")
        .arg(state.nType)
        .arg(rectText(state.rect))
        .arg(state.z)
        .arg(state.pen.color().name(QColor::HexArgb))
        .arg(state.pen.widthF())
        .arg(state.brush.color().name(QColor::HexArgb))
        .arg(state.strText, state.font.toString(), state.color.name(QColor::HexArgb))
        .arg(state.nTextFlags)
        .arg(state.startPoint.x())
        .arg(state.startPoint.y())
        .arg(state.endPoint.x())
        .arg(state.endPoint.y())
        .arg(int(state.bStartHead))
        .arg(int(state.bEndHead))
        .arg(state.dHeadLength)
        .arg(state.dHeadWidthRatio)
        .arg(state.nCellIndex)
        .arg(state.image.width())
        .arg(state.image.height())
        .arg(describeFigure(state.figure));
}

// The images as pixels: a file read back holds equal pixels in another object.
bool samePixels(const QImage& a, const QImage& b)
{
    return a.cacheKey() == b.cacheKey()
        || a.convertToFormat(QImage::Format_ARGB32) == b.convertToFormat(QImage::Format_ARGB32);
}

bool sameState(const CVXSLayoutItemState& a, const CVXSLayoutItemState& b)
{
    CVXSLayoutItemState withoutImage = a;
    withoutImage.image = b.image;
    return withoutImage == b && samePixels(a.image, b.image);
}

} // namespace

LayoutRecord LayoutRecord::take(CVXSLayoutManager& manager)
{
    // Pending repaints first: a text item takes the top alignment when it is first painted.
    QCoreApplication::processEvents();
    LayoutRecord record;
    QList<QGraphicsItem*> items = manager.layoutItems();
    std::sort(items.begin(), items.end(),
              [](const QGraphicsItem* a, const QGraphicsItem* b) { return a->zValue() < b->zValue(); });
    for (QGraphicsItem* pItem : items) {
        record.items.push_back(CVXSLayoutItemState::capture(*pItem));
        record.identities.push_back(pItem);
    }
    record.nStyle = manager.getLayoutWindow()->layoutStyle();
    record.nShownStyle = manager.getLayoutWindow()->layoutStyleCombo()->currentIndex();
    record.nTopZ = manager.getLayoutView()->topZ();
    record.cellCounters = manager.cellUseCounts();
    record.nSelected = record.identities.indexOf(manager.getLayoutView()->currentItem());
    record.figurePage = CVXSFigurePage::of(*manager.getScene());
    record.rendered = manager.renderLayoutImage(1.0);
    return record;
}

QString LayoutRecord::describe() const
{
    QStringList lines;
    for (const CVXSLayoutItemState& state : items)
        lines << describeState(state);
    lines << QStringLiteral("style %1 shown %2 top z %3 selected %4").arg(nStyle).arg(nShownStyle).arg(nTopZ).arg(nSelected);
    lines << QStringLiteral("figure %1 mm at %2 dpi").arg(figurePage.dWidthMm).arg(figurePage.nDpi);
    QStringList counters;
    for (std::uint8_t counter : cellCounters)
        counters << QString::number(counter);
    lines << counters.join(QLatin1Char(' '));
    return lines.join(QLatin1Char('\n'));
}

QString LayoutRecord::differenceFrom(const LayoutRecord& other, Identity identity) const
{
    QStringList differences;
    if (items.size() != other.items.size())
        differences << QStringLiteral("%1 items, expected %2").arg(items.size()).arg(other.items.size());
    for (int i = 0; i < qMin(items.size(), other.items.size()); ++i) {
        if (!sameState(items[i], other.items[i]))
            differences << QStringLiteral("item %1: %2\n   expected %3").arg(i).arg(describeState(items[i]), describeState(other.items[i]));
        else if (identity == Identity::Same && identities[i] != other.identities[i])
            differences << QStringLiteral("item %1 is another object").arg(i);
    }
    if (nStyle != other.nStyle || nShownStyle != other.nShownStyle)
        differences << QStringLiteral("style %1 shown %2, expected %3 shown %4")
                           .arg(nStyle).arg(nShownStyle).arg(other.nStyle).arg(other.nShownStyle);
    if (nTopZ != other.nTopZ)
        differences << QStringLiteral("top z %1, expected %2").arg(nTopZ).arg(other.nTopZ);
    for (int cell = 0; cell < int(cellCounters.size()); ++cell) {
        if (cellCounters[cell] != other.cellCounters[cell])
            differences << QStringLiteral("cell %1 counter %2, expected %3")
                               .arg(cell).arg(cellCounters[cell]).arg(other.cellCounters[cell]);
    }
    if (figurePage != other.figurePage)
        differences << QStringLiteral("figure %1 mm at %2 dpi, expected %3 mm at %4 dpi")
                           .arg(figurePage.dWidthMm).arg(figurePage.nDpi).arg(other.figurePage.dWidthMm).arg(other.figurePage.nDpi);
    if (nSelected != other.nSelected)
        differences << QStringLiteral("selected item %1, expected %2").arg(nSelected).arg(other.nSelected);
    if (rendered.size() != other.rendered.size() || !samePixels(rendered, other.rendered))
        differences << QStringLiteral("the rendered page differs");
    return differences.join(QLatin1Char('\n'));
}
