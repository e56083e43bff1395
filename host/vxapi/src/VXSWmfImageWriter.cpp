#include "VXSWmfImageWriter.h"

#include "VXSDeviceIndependentBitmap.h"
#include "VXSExportText.h"

#include <QDataStream>

#include <limits>

namespace {

constexpr quint32 kPlaceableKey = 0x9AC6CDD7;
constexpr int kPlaceableSize = 22;
// Logical units per inch: one unit is one pixel at 96 dots per inch.
constexpr quint16 kUnitsPerInch = 96;

constexpr quint16 kMemoryMetafile = 1;
constexpr quint16 kHeaderWords = 9;
constexpr quint16 kVersion = 0x0300;

constexpr quint16 kMetaEof = 0x0000;
constexpr quint16 kMetaSetMapMode = 0x0103;
constexpr quint16 kMetaSetWindowOrg = 0x020B;
constexpr quint16 kMetaSetWindowExt = 0x020C;
constexpr quint16 kMetaStretchDib = 0x0F43;
constexpr quint16 kMetaEscape = 0x0626;
constexpr quint16 kMfComment = 0x000F;
// An escape's byte count is 16-bit; longer comments are cut and say so.
constexpr int kCommentMaxBytes = 65534;

constexpr qint16 kMapModeAnisotropic = 8;
constexpr quint32 kSrcCopy = 0x00CC0020;
constexpr quint16 kDibRgbColors = 0;

// Record sizes in 16-bit words: size and function, then the parameters.
constexpr quint32 kSetMapModeWords = 4;
constexpr quint32 kPointRecordWords = 5;
constexpr quint32 kStretchDibFixedWords = 14;
constexpr quint32 kEofWords = 3;
// META_ESCAPE up to its data: size, function, escape function, byte count.
constexpr quint32 kEscapeFixedWords = 5;

void writePlaceableHeader(QDataStream& out, const QSize& size)
{
    const quint16 words[] = {
        quint16(kPlaceableKey & 0xFFFF), quint16(kPlaceableKey >> 16), 0, // key, handle
        0, 0, quint16(size.width()), quint16(size.height()),              // bounding box
        kUnitsPerInch, 0, 0,                                              // reserved
    };
    // The checksum is the XOR of the ten words before it.
    quint16 nChecksum = 0;
    for (quint16 nWord : words) {
        out << nWord;
        nChecksum ^= nWord;
    }
    out << nChecksum;
}

void writePointRecord(QDataStream& out, quint16 nFunction, const QSize& value)
{
    // Points are stored y first.
    out << kPointRecordWords << nFunction << qint16(value.height()) << qint16(value.width());
}

void writeStretchDib(QDataStream& out, const QSize& size, const CVXSDeviceIndependentBitmap& bitmap,
                     quint32 nWords)
{
    const qint16 nWidth = qint16(size.width());
    const qint16 nHeight = qint16(size.height());
    out << nWords << kMetaStretchDib << kSrcCopy << kDibRgbColors;
    // Source height, width, y, x; then destination height, width, y, x.
    out << nHeight << nWidth << qint16(0) << qint16(0) << nHeight << nWidth << qint16(0) << qint16(0);
    bitmap.write(out);
}

// One MFCOMMENT escape per text key of the image, "Key: value" in UTF-8.
QVector<QByteArray> commentData(const QImage& image)
{
    QVector<QByteArray> comments;
    for (const QString& strLine : CVXSExportText::lines(image))
        comments << CVXSExportText::fitted(strLine, kCommentMaxBytes);
    return comments;
}

quint32 commentWords(const QByteArray& comment)
{
    return kEscapeFixedWords + quint32(comment.size() + 1) / 2;
}

void writeComment(QDataStream& out, const QByteArray& comment)
{
    out << commentWords(comment) << kMetaEscape << kMfComment << quint16(comment.size());
    out.writeRawData(comment.constData(), comment.size());
    if (comment.size() & 1)
        out << quint8(0);
}

} // namespace

tag_estatus CVXSWmfImageWriter::encode(const QImage& image, QByteArray& data) const
{
    if (qMax(image.width(), image.height()) > kMaxSide)
        return eSTATUS_IMAGE_TOO_LARGE;
    const CVXSDeviceIndependentBitmap bitmap(image);
    // The bitmap's rows are padded to 4 bytes, so its size is a whole number of words.
    const qint64 nStretchDibWords = kStretchDibFixedWords + bitmap.size() / 2;
    const QVector<QByteArray> comments = commentData(image);
    qint64 nMetafileWords = kHeaderWords + kSetMapModeWords + 2 * kPointRecordWords + nStretchDibWords + kEofWords;
    qint64 nLargestWords = nStretchDibWords;
    for (const QByteArray& comment : comments) {
        nMetafileWords += commentWords(comment);
        nLargestWords = qMax<qint64>(nLargestWords, commentWords(comment));
    }
    if (nMetafileWords > std::numeric_limits<quint32>::max())
        return eSTATUS_IMAGE_TOO_LARGE;

    data.clear();
    data.reserve(int(qMin<qint64>(kPlaceableSize + 2 * nMetafileWords, std::numeric_limits<int>::max())));
    QDataStream out(&data, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    writePlaceableHeader(out, image.size());
    // No objects.
    out << kMemoryMetafile << kHeaderWords << kVersion << quint32(nMetafileWords) << quint16(0)
        << quint32(nLargestWords) << quint16(0);
    for (const QByteArray& comment : comments)
        writeComment(out, comment);
    out << kSetMapModeWords << kMetaSetMapMode << kMapModeAnisotropic;
    writePointRecord(out, kMetaSetWindowOrg, QSize(0, 0));
    writePointRecord(out, kMetaSetWindowExt, image.size());
    writeStretchDib(out, image.size(), bitmap, quint32(nStretchDibWords));
    out << kEofWords << kMetaEof;
    return out.status() == QDataStream::Ok ? eSTATUS_SUCCESS : eSTATUS_WRITE_FAILED;
}
