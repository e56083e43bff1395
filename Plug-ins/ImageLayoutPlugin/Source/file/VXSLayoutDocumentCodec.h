#pragma once

#include "file/VXSLayoutDocument.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QString>
#include <QVector>

// The content of layout.json in a layout file: format name and version, style, page size and
// the items. Images are not part of it: items name the archive entries holding them.
class CVXSLayoutDocumentCodec
{
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutDocumentCodec)
public:
    // 2 added the figure's look, panel letters, scale bars and size; 1 is read as it was.
    static constexpr int FormatVersion = 2;
    static constexpr int MaxPageSide = 100000;
    // The window counts the images of a cell in eight bits.
    static constexpr int MaxImagesPerCell = 255;
    // Far beyond any layout made by hand; every item is drawn on each repaint, so a file of
    // a hundred thousand would keep the window busy for many seconds at each.
    static constexpr int MaxItems = 10000;

    // The document's object; imageEntries holds, for every item, the entry of its image
    // (ignored for items of other kinds).
    static QJsonObject encode(const CVXSLayoutDocument& document, const QVector<QString>& imageEntries);
    // Fills document (images stay null) and the image entry of every item; false with
    // strError when the object is no layout this version can read.
    static bool decode(const QJsonObject& object, CVXSLayoutDocument& document, QVector<QString>& imageEntries,
                       QString& strError);

private:
    static bool decodeHeader(const QJsonObject& object, CVXSLayoutDocument& document, QString& strError);
    static bool decodeItems(const QJsonArray& items, CVXSLayoutDocument& document, QVector<QString>& imageEntries,
                            QString& strError);
    static bool checkCells(const CVXSLayoutDocument& document, QString& strError);
};
