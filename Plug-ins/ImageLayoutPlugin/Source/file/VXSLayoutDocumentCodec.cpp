#include "file/VXSLayoutDocumentCodec.h"

#include "file/VXSFigureCodec.h"
#include "file/VXSJsonReader.h"
#include "VXSLayoutConstants.h"
#include "file/VXSLayoutItemCodec.h"

#include <QJsonArray>

#include <array>
#include <limits>

namespace {

const QString kFormatName = QStringLiteral("vxlayout");

} // namespace

QJsonObject CVXSLayoutDocumentCodec::encode(const CVXSLayoutDocument& document, const QVector<QString>& imageEntries)
{
    QJsonArray items;
    for (int i = 0; i < document.items.size(); ++i)
        items.append(CVXSLayoutItemCodec::encode(document.items.at(i), imageEntries.value(i)));
    QJsonObject object{
        {QStringLiteral("format"), kFormatName},
        {QStringLiteral("version"), FormatVersion},
        {QStringLiteral("style"), document.nStyle},
        {QStringLiteral("page"),
         QJsonObject{{QStringLiteral("width"), document.pageSize.width()},
                     {QStringLiteral("height"), document.pageSize.height()}}},
        {QStringLiteral("items"), items},
    };
    CVXSFigureCodec::encodePage(document.figurePage, object);
    return object;
}

bool CVXSLayoutDocumentCodec::decode(const QJsonObject& object, CVXSLayoutDocument& document,
                                     QVector<QString>& imageEntries, QString& strError)
{
    CVXSLayoutDocument decoded;
    QVector<QString> entries;
    CVXSJsonReader reader(QStringLiteral("layout.json"));
    QJsonArray items;
    if (!decodeHeader(object, decoded, strError))
        return false;
    if (!reader.array(object, QStringLiteral("items"), items)) {
        strError = reader.errorText();
        return false;
    }
    if (items.size() > MaxItems) {
        strError = tr("layout.json: it holds %1 items; a layout file keeps at most %2").arg(items.size()).arg(MaxItems);
        return false;
    }
    if (!decodeItems(items, decoded, entries, strError) || !checkCells(decoded, strError))
        return false;
    document = decoded;
    imageEntries = entries;
    return true;
}

bool CVXSLayoutDocumentCodec::decodeHeader(const QJsonObject& object, CVXSLayoutDocument& document,
                                           QString& strError)
{
    if (object.value(QStringLiteral("format")).toString() != kFormatName) {
        strError = tr("it is not a layout file (layout.json does not name the format \"%1\")").arg(kFormatName);
        return false;
    }
    CVXSJsonReader reader(QStringLiteral("layout.json"));
    int nVersion = 0;
    // Any later version may have changed what the fields mean, so it is refused whole.
    if (!reader.integer(object, QStringLiteral("version"), 1, std::numeric_limits<int>::max(), nVersion)) {
        strError = reader.errorText();
        return false;
    }
    if (nVersion > FormatVersion) {
        strError = tr("it was saved by a newer version of the program (layout format %1; this version reads "
                      "format %2 and older)")
                       .arg(nVersion)
                       .arg(FormatVersion);
        return false;
    }
    QJsonObject page;
    int nWidth = 0;
    int nHeight = 0;
    const bool bRead = reader.integer(object, QStringLiteral("style"), VXSLayout::FreeStyle, VXSLayout::StyleCount - 1, document.nStyle)
                    && reader.object(object, QStringLiteral("page"), page)
                    && reader.integer(page, QStringLiteral("width"), 1, MaxPageSide, nWidth)
                    && reader.integer(page, QStringLiteral("height"), 1, MaxPageSide, nHeight);
    if (!bRead) {
        strError = reader.errorText();
        return false;
    }
    document.pageSize = QSize(nWidth, nHeight);
    if (!CVXSFigureCodec::decodePage(object, reader, document.figurePage)) {
        strError = reader.errorText();
        return false;
    }
    return true;
}

bool CVXSLayoutDocumentCodec::decodeItems(const QJsonArray& items, CVXSLayoutDocument& document,
                                          QVector<QString>& imageEntries, QString& strError)
{
    CVXSJsonReader reader{QString()};
    for (int i = 0; i < items.size(); ++i) {
        reader.setContext(tr("item %1").arg(i + 1));
        CVXSLayoutItemState state;
        QString strEntry;
        const bool bDecoded = items.at(i).isObject()
                                  ? CVXSLayoutItemCodec::decode(items.at(i).toObject(), reader, state, strEntry)
                                  : reader.fail(tr("it is not an object"));
        if (!bDecoded) {
            strError = reader.errorText();
            return false;
        }
        document.items.append(state);
        imageEntries.append(strEntry);
    }
    return true;
}

bool CVXSLayoutDocumentCodec::checkCells(const CVXSLayoutDocument& document, QString& strError)
{
    std::array<int, VXSLayout::MaxCellCount> images {};
    for (const CVXSLayoutItemState& item : document.items) {
        if (item.nType == VXSLayout::ImageItemType && item.nCellIndex >= 0)
            ++images[size_t(item.nCellIndex)];
    }
    for (int nCell = 0; nCell < VXSLayout::MaxCellCount; ++nCell) {
        if (images[size_t(nCell)] > MaxImagesPerCell) {
            strError = tr("layout.json: %1 images are in cell %2; a cell holds at most %3")
                           .arg(images[size_t(nCell)])
                           .arg(nCell)
                           .arg(MaxImagesPerCell);
            return false;
        }
    }
    return true;
}
