#include "file/VXSLayoutItemCodec.h"

#include "file/VXSFigureCodec.h"
#include "file/VXSJsonReader.h"
#include "VXSLayoutConstants.h"

#include <QJsonArray>

#include <utility>

using namespace VXSLayout;

namespace {

const std::pair<int, QLatin1String> kKinds[] = {
    {ImageItemType, QLatin1String("image")},         {TextItemType, QLatin1String("text")},
    {RectangleItemType, QLatin1String("rectangle")}, {EllipseItemType, QLatin1String("ellipse")},
    {ArrowItemType, QLatin1String("arrow")},
};

QString kindName(int nType)
{
    for (const auto& kind : kKinds) {
        if (kind.first == nType)
            return kind.second;
    }
    return QString();
}

QString colorName(const QColor& color)
{
    return color.name(QColor::HexArgb);
}

QJsonArray pointArray(const QPoint& point)
{
    return QJsonArray{point.x(), point.y()};
}

// Pen styles up to DashDotDotLine: a custom dash pattern is not stored.
const QVector<int> kPenStyles = {Qt::NoPen, Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine,
                                 Qt::DashDotDotLine};
const QVector<int> kCapStyles = {Qt::FlatCap, Qt::SquareCap, Qt::RoundCap};
const QVector<int> kJoinStyles = {Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin, Qt::SvgMiterJoin};
// Plain colour and pattern brushes; gradients and textures would need more than a colour.
constexpr int kLastBrushStyle = Qt::DiagCrossPattern;
// Every combination of alignment flags lies at or below the highest flag's mask.
constexpr int kAlignmentMask = Qt::AlignHorizontal_Mask | Qt::AlignVertical_Mask;

} // namespace

QJsonObject CVXSLayoutItemCodec::encode(const CVXSLayoutItemState& state, const QString& strImageEntry)
{
    QJsonObject object{
        {QStringLiteral("kind"), kindName(state.nType)},
        {QStringLiteral("rect"), QJsonArray{state.rect.x(), state.rect.y(), state.rect.width(), state.rect.height()}},
        {QStringLiteral("z"), state.z},
        {QStringLiteral("pen"), encodePen(state.pen)},
        {QStringLiteral("brush"), encodeBrush(state.brush)},
    };
    if (state.nType == ImageItemType)
        object.insert(QStringLiteral("image"), strImageEntry);
    encodeKind(state, object);
    CVXSFigureCodec::encodeItem(state.figure, object);
    return object;
}

bool CVXSLayoutItemCodec::decode(const QJsonObject& object, CVXSJsonReader& reader, CVXSLayoutItemState& state,
                                 QString& strImageEntry)
{
    CVXSLayoutItemState decoded;
    if (!decodeKind(object, reader, decoded.nType) || !decodeCommon(object, reader, decoded))
        return false;
    bool bDecoded = true;
    if (decoded.nType == TextItemType)
        bDecoded = decodeText(object, reader, decoded);
    else if (decoded.nType == ArrowItemType)
        bDecoded = decodeArrow(object, reader, decoded);
    else if (decoded.nType == ImageItemType)
        bDecoded = decodeImage(object, reader, decoded, strImageEntry);
    bDecoded = bDecoded && CVXSFigureCodec::decodeItem(object, reader, decoded.figure);
    if (bDecoded)
        state = decoded;
    return bDecoded;
}

void CVXSLayoutItemCodec::encodeKind(const CVXSLayoutItemState& state, QJsonObject& object)
{
    switch (state.nType) {
    case TextItemType:
        object.insert(QStringLiteral("text"), state.strText);
        object.insert(QStringLiteral("font"), state.font.toString());
        object.insert(QStringLiteral("color"), colorName(state.color));
        object.insert(QStringLiteral("alignment"), state.nTextFlags);
        break;
    case ArrowItemType:
        object.insert(QStringLiteral("start"), pointArray(state.startPoint));
        object.insert(QStringLiteral("end"), pointArray(state.endPoint));
        object.insert(QStringLiteral("startHead"), state.bStartHead);
        object.insert(QStringLiteral("endHead"), state.bEndHead);
        object.insert(QStringLiteral("headLength"), state.dHeadLength);
        object.insert(QStringLiteral("headWidthRatio"), state.dHeadWidthRatio);
        break;
    case ImageItemType:
        object.insert(QStringLiteral("cell"), state.nCellIndex);
        break;
    default:
        break;
    }
}

QJsonObject CVXSLayoutItemCodec::encodePen(const QPen& pen)
{
    return QJsonObject{
        {QStringLiteral("color"), colorName(pen.color())},
        {QStringLiteral("width"), pen.widthF()},
        {QStringLiteral("style"), int(pen.style())},
        {QStringLiteral("cap"), int(pen.capStyle())},
        {QStringLiteral("join"), int(pen.joinStyle())},
    };
}

QJsonObject CVXSLayoutItemCodec::encodeBrush(const QBrush& brush)
{
    return QJsonObject{
        {QStringLiteral("color"), colorName(brush.color())},
        {QStringLiteral("style"), int(brush.style())},
    };
}

bool CVXSLayoutItemCodec::decodeKind(const QJsonObject& object, CVXSJsonReader& reader, int& nType)
{
    QString strKind;
    if (!reader.string(object, QStringLiteral("kind"), MaxEntryNameLength, strKind))
        return false;
    for (const auto& kind : kKinds) {
        if (kind.second == strKind) {
            nType = kind.first;
            return true;
        }
    }
    return reader.fail(tr("unknown kind \"%1\"").arg(strKind));
}

bool CVXSLayoutItemCodec::decodeCommon(const QJsonObject& object, CVXSJsonReader& reader, CVXSLayoutItemState& state)
{
    QVector<double> rect(4);
    if (!reader.numbers(object, QStringLiteral("rect"), -MaxCoordinate, MaxCoordinate, rect))
        return false;
    if (rect[2] < 0 || rect[3] < 0)
        return reader.fail(tr("\"rect\" has a negative width or height"));
    state.rect = QRectF(rect[0], rect[1], rect[2], rect[3]);
    QJsonObject pen;
    QJsonObject brush;
    return reader.number(object, QStringLiteral("z"), -MaxZ, MaxZ, state.z)
        && reader.object(object, QStringLiteral("pen"), pen) && decodePen(pen, reader, state.pen)
        && reader.object(object, QStringLiteral("brush"), brush) && decodeBrush(brush, reader, state.brush);
}

bool CVXSLayoutItemCodec::decodePen(const QJsonObject& object, CVXSJsonReader& reader, QPen& pen)
{
    QColor color;
    double dWidth = 0;
    int nStyle = 0;
    int nCap = 0;
    int nJoin = 0;
    if (!reader.color(object, QStringLiteral("color"), color)
        || !reader.number(object, QStringLiteral("width"), 0, MaxPenWidth, dWidth)
        || !decodeOneOf(object, QStringLiteral("style"), kPenStyles, reader, nStyle)
        || !decodeOneOf(object, QStringLiteral("cap"), kCapStyles, reader, nCap)
        || !decodeOneOf(object, QStringLiteral("join"), kJoinStyles, reader, nJoin))
        return false;
    pen = QPen(QBrush(color), dWidth, Qt::PenStyle(nStyle), Qt::PenCapStyle(nCap), Qt::PenJoinStyle(nJoin));
    return true;
}

bool CVXSLayoutItemCodec::decodeBrush(const QJsonObject& object, CVXSJsonReader& reader, QBrush& brush)
{
    QColor color;
    int nStyle = 0;
    if (!reader.color(object, QStringLiteral("color"), color)
        || !reader.integer(object, QStringLiteral("style"), Qt::NoBrush, kLastBrushStyle, nStyle))
        return false;
    brush = QBrush(color, Qt::BrushStyle(nStyle));
    return true;
}

bool CVXSLayoutItemCodec::decodeText(const QJsonObject& object, CVXSJsonReader& reader, CVXSLayoutItemState& state)
{
    QString strFont;
    if (!reader.string(object, QStringLiteral("text"), MaxTextLength, state.strText)
        || !reader.string(object, QStringLiteral("font"), MaxFontLength, strFont)
        || !reader.color(object, QStringLiteral("color"), state.color)
        || !reader.integer(object, QStringLiteral("alignment"), 0, kAlignmentMask, state.nTextFlags))
        return false;
    if (!state.font.fromString(strFont))
        return reader.fail(tr("\"font\" does not describe a font"));
    return true;
}

bool CVXSLayoutItemCodec::decodeArrow(const QJsonObject& object, CVXSJsonReader& reader, CVXSLayoutItemState& state)
{
    return decodePoint(object, QStringLiteral("start"), reader, state.startPoint)
        && decodePoint(object, QStringLiteral("end"), reader, state.endPoint)
        && reader.boolean(object, QStringLiteral("startHead"), state.bStartHead)
        && reader.boolean(object, QStringLiteral("endHead"), state.bEndHead)
        && reader.number(object, QStringLiteral("headLength"), 0, MaxCoordinate, state.dHeadLength)
        && reader.number(object, QStringLiteral("headWidthRatio"), 0, MaxHeadWidthRatio, state.dHeadWidthRatio);
}

bool CVXSLayoutItemCodec::decodeImage(const QJsonObject& object, CVXSJsonReader& reader, CVXSLayoutItemState& state,
                                      QString& strImageEntry)
{
    if (!reader.string(object, QStringLiteral("image"), MaxEntryNameLength, strImageEntry))
        return false;
    // An image item without its image would be an empty frame nothing can fill.
    if (strImageEntry.isEmpty())
        return reader.fail(tr("\"image\" names no entry"));
    return reader.integer(object, QStringLiteral("cell"), -1, MaxCellCount - 1, state.nCellIndex);
}

bool CVXSLayoutItemCodec::decodePoint(const QJsonObject& object, const QString& strKey, CVXSJsonReader& reader,
                                      QPoint& point)
{
    QVector<int> values(2);
    const int nMax = int(MaxCoordinate);
    if (!reader.integers(object, strKey, -nMax, nMax, values))
        return false;
    point = QPoint(values[0], values[1]);
    return true;
}

bool CVXSLayoutItemCodec::decodeOneOf(const QJsonObject& object, const QString& strKey, const QVector<int>& allowed,
                                      CVXSJsonReader& reader, int& nValue)
{
    if (!reader.integer(object, strKey, 0, allowed.last(), nValue))
        return false;
    if (!allowed.contains(nValue))
        return reader.fail(tr("\"%1\" is %2, which is no such style").arg(strKey).arg(nValue));
    return true;
}
