#pragma once

#include "figure/VXSFigurePage.h"
#include "figure/VXSItemFigure.h"

#include <QCoreApplication>
#include <QJsonObject>

class CVXSJsonReader;

// What the figure features add to a layout file (format version 2): an item's "figure"
// object and the document's. Both are left out while they hold nothing but defaults, so a
// layout that uses none of them is written as before.
class CVXSFigureCodec
{
    Q_DECLARE_TR_FUNCTIONS(CVXSFigureCodec)
public:
    static constexpr double MaxLineWidth = 1000.0;

    // Adds the item's "figure" object unless it is the default.
    static void encodeItem(const CVXSItemFigure& figure, QJsonObject& item);
    // Reads the item's "figure" object; a missing one gives the default.
    static bool decodeItem(const QJsonObject& item, CVXSJsonReader& reader, CVXSItemFigure& figure);
    static void encodePage(const CVXSFigurePage& page, QJsonObject& document);
    static bool decodePage(const QJsonObject& document, CVXSJsonReader& reader, CVXSFigurePage& page);

private:
    static bool decodeStyle(const QJsonObject& object, CVXSJsonReader& reader, CVXSItemFigure& figure);
    static bool decodeColourBar(const QJsonObject& object, CVXSJsonReader& reader, CVXSColourBar& bar);
};
