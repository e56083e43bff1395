#include "file/VXSLayoutFile.h"

#include "VXSLayoutConstants.h"
#include "file/VXSLayoutImageCodec.h"
#include "file/archive/VXSZipReader.h"
#include "file/archive/VXSZipWriter.h"

#include <VXImageFileReader.h>

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QJsonDocument>
#include <QPair>
#include <QtConcurrent>

#include <functional>

namespace {

constexpr qint64 kMiB = 1024 * 1024;
const QString kJsonEntry = QStringLiteral("layout.json");

QString imageEntry(int nIndex)
{
    return QStringLiteral("images/%1.png").arg(nIndex);
}

// Every image once, in the order the items first show it (images shared by several items
// have the same cache key), and for every item the entry its image goes to.
void collectImages(const CVXSLayoutDocument& document, QVector<QImage>& images, QVector<QString>& entries)
{
    QHash<qint64, int> indexOfImage;
    for (const CVXSLayoutItemState& item : document.items) {
        QString strEntry;
        if (item.nType == VXSLayout::ImageItemType) {
            auto found = indexOfImage.constFind(item.image.cacheKey());
            if (found == indexOfImage.constEnd()) {
                found = indexOfImage.insert(item.image.cacheKey(), images.size());
                images.append(item.image);
            }
            strEntry = imageEntry(found.value());
        }
        entries.append(strEntry);
    }
}

// The entries the items refer to, each once, in the order they first appear.
QStringList distinctEntries(const QVector<QString>& entries)
{
    QStringList names;
    for (const QString& strEntry : entries) {
        if (!strEntry.isEmpty() && !names.contains(strEntry))
            names.append(strEntry);
    }
    return names;
}

using DecodedImage = QPair<QImage, QString>;

DecodedImage decodeImage(const QByteArray& png)
{
    QString strError;
    const QImage image = CVXSLayoutImageCodec::decode(png, strError);
    return {image, strError};
}

} // namespace

bool CVXSLayoutFile::write(const QString& strPath, const CVXSLayoutDocument& document)
{
    m_strError.clear();
    if (writeTo(strPath, document))
        return true;
    m_strError = tr("Cannot save \"%1\": %2.").arg(QDir::toNativeSeparators(strPath), m_strError);
    return false;
}

bool CVXSLayoutFile::read(const QString& strPath, CVXSLayoutDocument& document)
{
    m_strError.clear();
    if (readFrom(strPath, document))
        return true;
    m_strError = tr("Cannot open \"%1\": %2.").arg(QDir::toNativeSeparators(strPath), m_strError);
    return false;
}

bool CVXSLayoutFile::writeTo(const QString& strPath, const CVXSLayoutDocument& document)
{
    if (!checkTarget(strPath))
        return false;
    QVector<QImage> images;
    QVector<QString> entries;
    collectImages(document, images, entries);
    const QJsonObject json = CVXSLayoutDocumentCodec::encode(document, entries);
    // What is written must read back: the checks that guard reading run on it first.
    CVXSLayoutDocument decoded;
    QVector<QString> decodedEntries;
    QString strError;
    if (!CVXSLayoutDocumentCodec::decode(json, decoded, decodedEntries, strError))
        return fail(tr("the layout holds a value a layout file cannot keep (%1)").arg(strError));
    const std::function<QByteArray(const QImage&)> encode = [this](const QImage& image) {
        return isCancelled() ? QByteArray() : CVXSLayoutImageCodec::encode(image);
    };
    const QVector<QByteArray> pngs = QtConcurrent::blockingMapped<QVector<QByteArray>>(images, encode);
    if (isCancelled())
        return fail(tr("it was cancelled"));
    qint64 nTotalBytes = 0;
    for (int i = 0; i < pngs.size(); ++i) {
        if (pngs.at(i).isEmpty())
            return fail(tr("the image \"%1\" cannot be stored as PNG").arg(imageEntry(i)));
        if (!checkImageBytes(CVXSLayoutImageCodec::decodedBytes(pngs.at(i), strError), nTotalBytes, imageEntry(i)))
            return false;
    }
    const QByteArray jsonText = QJsonDocument(json).toJson();
    CVXSZipWriter archive(strPath);
    bool bAdded = archive.add(kJsonEntry, jsonText, true);
    for (int i = 0; i < pngs.size(); ++i)
        bAdded = bAdded && archive.add(imageEntry(i), pngs.at(i), false);
    if (isCancelled())
        return fail(tr("it was cancelled"));
    if (!bAdded || !archive.commit())
        return fail(archive.errorText());
    return true;
}

bool CVXSLayoutFile::readFrom(const QString& strPath, CVXSLayoutDocument& document)
{
    if (!checkSource(strPath))
        return false;
    CVXSZipReader archive(strPath);
    if (!archive.isOpen())
        return fail(archive.errorText());
    QJsonObject json;
    if (!readJson(archive, json))
        return false;
    CVXSLayoutDocument loaded;
    QVector<QString> entries;
    QString strError;
    if (!CVXSLayoutDocumentCodec::decode(json, loaded, entries, strError))
        return fail(strError);
    if (!readImages(archive, entries, loaded))
        return false;
    document = loaded;
    return true;
}

bool CVXSLayoutFile::checkTarget(const QString& strPath)
{
    const QFileInfo target(strPath);
    if (strPath.isEmpty())
        return fail(tr("no file name was given"));
    if (target.isDir())
        return fail(tr("it is a folder"));
    // Devices and pipes cannot be replaced by a finished file.
    if (target.exists() && !target.isFile())
        return fail(tr("it is not a regular file"));
    return true;
}

bool CVXSLayoutFile::checkSource(const QString& strPath)
{
    const QFileInfo source(strPath);
    if (strPath.isEmpty())
        return fail(tr("no file name was given"));
    if (!source.exists())
        return fail(tr("it does not exist"));
    if (source.isDir())
        return fail(tr("it is a folder"));
    if (!source.isFile())
        return fail(tr("it is not a regular file"));
    if (source.size() == 0)
        return fail(tr("it is empty"));
    return true;
}

bool CVXSLayoutFile::checkImageBytes(qint64 nBytes, qint64& nTotal, const QString& strWhat)
{
    if (nBytes > CVXImageFileReader::kMaxDecodedBytes) {
        return fail(tr("the image \"%1\" would take %2 MiB of memory; a layout file keeps images of at most %3 MiB")
                        .arg(strWhat)
                        .arg((nBytes + kMiB - 1) / kMiB)
                        .arg(CVXImageFileReader::kMaxDecodedBytes / kMiB));
    }
    nTotal += nBytes;
    if (nTotal > MaxTotalImageBytes)
        return fail(tr("its images would take more than %1 MiB of memory together").arg(MaxTotalImageBytes / kMiB));
    return true;
}

bool CVXSLayoutFile::readJson(CVXSZipReader& archive, QJsonObject& object)
{
    QByteArray json;
    if (!archive.read(kJsonEntry, MaxJsonBytes, json))
        return fail(archive.errorText());
    QJsonParseError error;
    const QJsonDocument parsed = QJsonDocument::fromJson(json, &error);
    if (parsed.isNull())
        return fail(tr("layout.json is not valid JSON (%1 at byte %2)").arg(error.errorString()).arg(error.offset));
    if (!parsed.isObject())
        return fail(tr("layout.json does not hold a JSON object"));
    object = parsed.object();
    return true;
}

bool CVXSLayoutFile::readImages(CVXSZipReader& archive, const QVector<QString>& entries,
                                CVXSLayoutDocument& document)
{
    const QStringList names = distinctEntries(entries);
    QVector<QByteArray> pngs;
    qint64 nTotalBytes = 0;
    for (const QString& strName : names) {
        QByteArray png;
        QString strError;
        if (!archive.read(strName, CVXImageFileReader::kMaxDecodedBytes, png))
            return fail(archive.errorText());
        const qint64 nBytes = CVXSLayoutImageCodec::decodedBytes(png, strError);
        if (nBytes < 0)
            return fail(tr("the image \"%1\" cannot be used: %2").arg(strName, strError));
        if (!checkImageBytes(nBytes, nTotalBytes, strName))
            return false;
        pngs.append(png);
    }
    const std::function<DecodedImage(const QByteArray&)> decode = [this](const QByteArray& png) {
        return isCancelled() ? DecodedImage() : decodeImage(png);
    };
    const QVector<DecodedImage> decoded = QtConcurrent::blockingMapped<QVector<DecodedImage>>(pngs, decode);
    if (isCancelled())
        return fail(tr("it was cancelled"));
    for (int i = 0; i < decoded.size(); ++i) {
        if (decoded.at(i).first.isNull())
            return fail(tr("the image \"%1\" cannot be used: %2").arg(names.at(i), decoded.at(i).second));
    }
    for (int i = 0; i < document.items.size(); ++i) {
        if (!entries.at(i).isEmpty())
            document.items[i].image = decoded.at(names.indexOf(entries.at(i))).first;
    }
    return true;
}

bool CVXSLayoutFile::isCancelled() const
{
    return m_pCancelled && *m_pCancelled;
}

bool CVXSLayoutFile::fail(const QString& strReason)
{
    m_strError = strReason;
    return false;
}
