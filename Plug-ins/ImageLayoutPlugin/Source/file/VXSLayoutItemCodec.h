#pragma once

#include "undo/VXSLayoutItemState.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QString>

class CVXSJsonReader;

// One layout item as a JSON object of a layout file, and back. Decoding trusts nothing: every
// value is checked for its type and range, so a damaged or hostile file gives a message,
// never an item the layout cannot handle.
class CVXSLayoutItemCodec
{
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutItemCodec)
public:
    static constexpr double MaxZ = 1e9;
    static constexpr double MaxPenWidth = 1000.0;
    static constexpr double MaxHeadWidthRatio = 100.0;
    static constexpr int MaxTextLength = 1024 * 1024;
    static constexpr int MaxFontLength = 1024;
    static constexpr int MaxEntryNameLength = 255;

    // The item's object; an image item refers to its image by the entry name strImageEntry.
    static QJsonObject encode(const CVXSLayoutItemState& state, const QString& strImageEntry);
    // Fills state and, for image items, the entry name of the image (the image itself stays
    // null); false with reader.errorText() when the object is no valid item.
    static bool decode(const QJsonObject& object, CVXSJsonReader& reader, CVXSLayoutItemState& state,
                       QString& strImageEntry);

private:
    static void encodeKind(const CVXSLayoutItemState& state, QJsonObject& object);
    static QJsonObject encodePen(const QPen& pen);
    static QJsonObject encodeBrush(const QBrush& brush);
    static bool decodeKind(const QJsonObject& object, CVXSJsonReader& reader, int& nType);
    static bool decodeCommon(const QJsonObject& object, CVXSJsonReader& reader, CVXSLayoutItemState& state);
    static bool decodePen(const QJsonObject& object, CVXSJsonReader& reader, QPen& pen);
    static bool decodeBrush(const QJsonObject& object, CVXSJsonReader& reader, QBrush& brush);
    static bool decodeText(const QJsonObject& object, CVXSJsonReader& reader, CVXSLayoutItemState& state);
    static bool decodeArrow(const QJsonObject& object, CVXSJsonReader& reader, CVXSLayoutItemState& state);
    static bool decodeImage(const QJsonObject& object, CVXSJsonReader& reader, CVXSLayoutItemState& state,
                            QString& strImageEntry);
    static bool decodePoint(const QJsonObject& object, const QString& strKey, CVXSJsonReader& reader, QPoint& point);
    static bool decodeOneOf(const QJsonObject& object, const QString& strKey, const QVector<int>& allowed,
                            CVXSJsonReader& reader, int& nValue);
};
