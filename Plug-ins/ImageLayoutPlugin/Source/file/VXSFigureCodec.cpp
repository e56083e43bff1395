#include "file/VXSFigureCodec.h"

#include "file/VXSJsonReader.h"

#include <VXPixelSize.h>
#include <VXColourTable.h>

namespace {

const QString kFigure = QStringLiteral("figure");
const QString kColourBar = QStringLiteral("colourBar");
// Longer titles than this are taken for a damaged file.
constexpr int MaxTitleLength = 1000;
// The bar's range is a quantity's: any finite number a layout file can hold.
constexpr double MaxRangeMagnitude = 1e300;

QJsonObject encodeColourBar(const CVXSColourBar& bar)
{
    return QJsonObject {
        {QStringLiteral("minimum"), bar.dMinimum},
        {QStringLiteral("maximum"), bar.dMaximum},
        {QStringLiteral("table"), bar.strTable},
        {QStringLiteral("title"), bar.strTitle},
        {QStringLiteral("horizontal"), bar.orientation == Qt::Horizontal},
    };
}

QString colourName(const QColor& colour)
{
    return colour.isValid() ? colour.name(QColor::HexArgb) : QStringLiteral("#00000000");
}

const QString kPanelLabel = QStringLiteral("panelLabel");
const QString kScaleBar = QStringLiteral("scaleBar");
const QString kPixelSize = QStringLiteral("pixelSizeMm");
// Letters for more panels than a figure ever has.
constexpr int MaxPanelLetters = 8;

QJsonObject panelLabelObject(const CVXSPanelLabel& label)
{
    return QJsonObject {
        {QStringLiteral("text"), label.strText},
        {QStringLiteral("bold"), label.bBold},
        {QStringLiteral("points"), label.dPoints},
        {QStringLiteral("corner"), label.nCorner},
    };
}

QJsonObject scaleBarObject(const CVXSScaleBar& bar)
{
    return QJsonObject {
        {QStringLiteral("lengthMm"), bar.dLengthMm},
        {QStringLiteral("corner"), bar.nCorner},
        {QStringLiteral("colour"), colourName(bar.colour)},
        {QStringLiteral("thickness"), bar.dThickness},
        {QStringLiteral("label"), bar.bLabel},
    };
}

bool decodePanelLabel(const QJsonObject& object, CVXSJsonReader& reader, CVXSPanelLabel& label)
{
    return reader.string(object, QStringLiteral("text"), MaxPanelLetters, label.strText)
        && reader.boolean(object, QStringLiteral("bold"), label.bBold)
        && reader.number(object, QStringLiteral("points"), CVXSPanelLabel::MinPoints, CVXSPanelLabel::MaxPoints,
                         label.dPoints)
        && reader.integer(object, QStringLiteral("corner"), CVXSPanelLabel::InsideTopLeft,
                          CVXSPanelLabel::OutsideTopLeft, label.nCorner);
}

bool decodeScaleBar(const QJsonObject& object, CVXSJsonReader& reader, CVXSScaleBar& bar)
{
    bar.bShown = true;
    return reader.number(object, QStringLiteral("lengthMm"), 0.0, CVXPixelSize::MaxMm, bar.dLengthMm)
        && reader.integer(object, QStringLiteral("corner"), CVXSScaleBar::BottomRight, CVXSScaleBar::TopLeft,
                          bar.nCorner)
        && reader.color(object, QStringLiteral("colour"), bar.colour)
        && reader.number(object, QStringLiteral("thickness"), 0.0, CVXSScaleBar::MaxThickness, bar.dThickness)
        && reader.boolean(object, QStringLiteral("label"), bar.bLabel);
}

// The optional object under strKey, read by decode.
template <typename Value, typename Decode>
bool decodeOptional(const QJsonObject& figure, const QString& strKey, CVXSJsonReader& reader, Value& value,
                    Decode decode)
{
    if (!figure.contains(strKey))
        return true;
    QJsonObject object;
    return reader.object(figure, strKey, object) && decode(object, reader, value);
}

} // namespace

void CVXSFigureCodec::encodeItem(const CVXSItemFigure& figure, QJsonObject& item)
{
    if (figure == CVXSItemFigure())
        return;
    QJsonObject object;
    if (figure.bStyled) {
        object.insert(QStringLiteral("style"), QJsonObject {
                                                   {QStringLiteral("line"), colourName(figure.lineColour)},
                                                   {QStringLiteral("lineWidth"), figure.dLineWidth},
                                                   {QStringLiteral("fill"), colourName(figure.fillColour)},
                                               });
    }
    if (figure.panelLabel.isShown())
        object.insert(kPanelLabel, panelLabelObject(figure.panelLabel));
    if (figure.scaleBar.bShown)
        object.insert(kScaleBar, scaleBarObject(figure.scaleBar));
    if (figure.dPixelSizeMm > 0.0)
        object.insert(kPixelSize, figure.dPixelSizeMm);
    if (figure.colourBar.isShown())
        object.insert(kColourBar, encodeColourBar(figure.colourBar));
    item.insert(kFigure, object);
}

bool CVXSFigureCodec::decodeItem(const QJsonObject& item, CVXSJsonReader& reader, CVXSItemFigure& figure)
{
    figure = CVXSItemFigure();
    if (!item.contains(kFigure))
        return true;
    QJsonObject object;
    if (!reader.object(item, kFigure, object)
        || !decodeOptional(object, kPanelLabel, reader, figure.panelLabel, decodePanelLabel)
        || !decodeOptional(object, kScaleBar, reader, figure.scaleBar, decodeScaleBar))
        return false;
    if (object.contains(kPixelSize) && !reader.number(object, kPixelSize, 0.0, CVXPixelSize::MaxMm, figure.dPixelSizeMm))
        return false;
    return decodeStyle(object, reader, figure) && decodeColourBar(object, reader, figure.colourBar);
}

bool CVXSFigureCodec::decodeStyle(const QJsonObject& object, CVXSJsonReader& reader, CVXSItemFigure& figure)
{
    if (!object.contains(QStringLiteral("style")))
        return true;
    QJsonObject style;
    figure.bStyled = true;
    return reader.object(object, QStringLiteral("style"), style)
        && reader.color(style, QStringLiteral("line"), figure.lineColour)
        && reader.number(style, QStringLiteral("lineWidth"), 0.0, MaxLineWidth, figure.dLineWidth)
        && reader.color(style, QStringLiteral("fill"), figure.fillColour);
}

bool CVXSFigureCodec::decodeColourBar(const QJsonObject& object, CVXSJsonReader& reader, CVXSColourBar& bar)
{
    if (!object.contains(kColourBar))
        return true;
    QJsonObject values;
    bool bHorizontal = false;
    if (!reader.object(object, kColourBar, values)
        || !reader.number(values, QStringLiteral("minimum"), -MaxRangeMagnitude, MaxRangeMagnitude, bar.dMinimum)
        || !reader.number(values, QStringLiteral("maximum"), -MaxRangeMagnitude, MaxRangeMagnitude, bar.dMaximum)
        || !reader.string(values, QStringLiteral("table"), MaxTitleLength, bar.strTable)
        || !reader.string(values, QStringLiteral("title"), MaxTitleLength, bar.strTitle)
        || !reader.boolean(values, QStringLiteral("horizontal"), bHorizontal))
        return false;
    bar.orientation = bHorizontal ? Qt::Horizontal : Qt::Vertical;
    if (!(bar.dMinimum < bar.dMaximum))
        return reader.fail(tr("the colour bar's \"minimum\" %1 is not below its \"maximum\" %2").arg(bar.dMinimum).arg(bar.dMaximum));
    if (!CVXColourTable::isKnown(bar.strTable))
        return reader.fail(tr("the colour bar's \"table\" \"%1\" is not a known colour table").arg(bar.strTable));
    return true;
}

void CVXSFigureCodec::encodePage(const CVXSFigurePage& page, QJsonObject& document)
{
    if (page == CVXSFigurePage())
        return;
    document.insert(kFigure, QJsonObject {
                                 {QStringLiteral("widthMm"), page.dWidthMm},
                                 {QStringLiteral("dpi"), page.nDpi},
                             });
}

bool CVXSFigureCodec::decodePage(const QJsonObject& document, CVXSJsonReader& reader, CVXSFigurePage& page)
{
    page = CVXSFigurePage();
    if (!document.contains(kFigure))
        return true;
    QJsonObject object;
    return reader.object(document, kFigure, object)
        && reader.number(object, QStringLiteral("widthMm"), CVXSFigurePage::MinWidthMm, CVXSFigurePage::MaxWidthMm,
                         page.dWidthMm)
        && reader.integer(object, QStringLiteral("dpi"), CVXSFigurePage::MinDpi, CVXSFigurePage::MaxDpi, page.nDpi);
}
