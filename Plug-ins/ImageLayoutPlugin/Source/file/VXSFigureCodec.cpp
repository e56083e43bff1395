#include "file/VXSFigureCodec.h"

#include "file/VXSJsonReader.h"

namespace {

const QString kFigure = QStringLiteral("figure");

QString colourName(const QColor& colour)
{
    return colour.isValid() ? colour.name(QColor::HexArgb) : QStringLiteral("#00000000");
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
    item.insert(kFigure, object);
}

bool CVXSFigureCodec::decodeItem(const QJsonObject& item, CVXSJsonReader& reader, CVXSItemFigure& figure)
{
    figure = CVXSItemFigure();
    if (!item.contains(kFigure))
        return true;
    QJsonObject object;
    if (!reader.object(item, kFigure, object))
        return false;
    if (!object.contains(QStringLiteral("style")))
        return true;
    QJsonObject style;
    figure.bStyled = true;
    return reader.object(object, QStringLiteral("style"), style)
        && reader.color(style, QStringLiteral("line"), figure.lineColour)
        && reader.number(style, QStringLiteral("lineWidth"), 0.0, MaxLineWidth, figure.dLineWidth)
        && reader.color(style, QStringLiteral("fill"), figure.fillColour);
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
