#include "VXSEmfImageWriter.h"

#include "VXSDeviceIndependentBitmap.h"
#include "VXSExportText.h"

#include <QDataStream>

#include <limits>

namespace {

constexpr quint32 kEmrHeader = 1;
constexpr quint32 kEmrEof = 14;
constexpr quint32 kEmrStretchDiBits = 81;
constexpr quint32 kEmrComment = 70;

// EMR_HEADER with both header extensions (pixel format and micrometres).
constexpr quint32 kHeaderSize = 108;
// EMR_STRETCHDIBITS up to the bitmap it carries.
constexpr quint32 kStretchDiBitsFixedSize = 80;
constexpr quint32 kEofSize = 20;
// Header, bitmap and end, besides the comments.
constexpr quint32 kDrawingRecordCount = 3;
// EMR_COMMENT up to its data.
constexpr quint32 kCommentFixedSize = 12;

constexpr quint32 kSignature = 0x464D4520; // " EMF"
constexpr quint32 kVersion = 0x00010000;
constexpr quint32 kDibRgbColors = 0;
constexpr quint32 kSrcCopy = 0x00CC0020;

// The reference device: 96 dots per inch, like the screen the layout is drawn for.
constexpr qint32 kReferencePixels = 960;
constexpr qint32 kReferenceMillimeters = 254;
constexpr double kHundredthsMillimeterPerPixel = 2540.0 / 96.0;

void writeRect(QDataStream& out, qint32 nLeft, qint32 nTop, qint32 nRight, qint32 nBottom)
{
    out << nLeft << nTop << nRight << nBottom;
}

void writeHeader(QDataStream& out, const QSize& size, quint32 nFileSize, quint32 nRecordCount)
{
    out << kEmrHeader << kHeaderSize;
    // Bounds in device pixels and frame in 0.01 mm, both inclusive.
    writeRect(out, 0, 0, size.width() - 1, size.height() - 1);
    writeRect(out, 0, 0, qRound(size.width() * kHundredthsMillimeterPerPixel) - 1,
              qRound(size.height() * kHundredthsMillimeterPerPixel) - 1);
    out << kSignature << kVersion << nFileSize << nRecordCount;
    // One handle slot (index 0 is reserved), no description, no palette.
    out << quint16(1) << quint16(0) << quint32(0) << quint32(0) << quint32(0);
    out << kReferencePixels << kReferencePixels << kReferenceMillimeters << kReferenceMillimeters;
    // No pixel format, no OpenGL records.
    out << quint32(0) << quint32(0) << quint32(0);
    out << kReferenceMillimeters * 1000 << kReferenceMillimeters * 1000;
}

void writeStretchDiBits(QDataStream& out, const QSize& size, const CVXSDeviceIndependentBitmap& bitmap)
{
    out << kEmrStretchDiBits << quint32(kStretchDiBitsFixedSize + bitmap.size());
    writeRect(out, 0, 0, size.width() - 1, size.height() - 1);
    // Destination origin, then the source rectangle: the whole bitmap.
    out << qint32(0) << qint32(0) << qint32(0) << qint32(0) << qint32(size.width()) << qint32(size.height());
    out << kStretchDiBitsFixedSize << CVXSDeviceIndependentBitmap::kHeaderSize
        << quint32(kStretchDiBitsFixedSize + CVXSDeviceIndependentBitmap::kHeaderSize)
        << quint32(bitmap.bitsSize());
    out << kDibRgbColors << kSrcCopy << qint32(size.width()) << qint32(size.height());
    bitmap.write(out);
}

// Records are padded to 4 bytes.
qint64 paddedSize(qint64 nSize)
{
    return (nSize + 3) & ~qint64(3);
}

// One EMR_COMMENT per text key of the image, "Key: value" in UTF-8 as private data. A key
// starting like the identifier of a public or an EMF+ comment gets a space in front, so
// that readers never take the text for records.
QVector<QByteArray> commentData(const QImage& image)
{
    QVector<QByteArray> comments;
    for (const QString& strLine : CVXSExportText::lines(image)) {
        const QByteArray data = strLine.toUtf8();
        comments << (data.startsWith("GDIC") || data.startsWith("EMF+") ? ' ' + data : data);
    }
    return comments;
}

void writeComment(QDataStream& out, const QByteArray& data)
{
    const qint64 nPadded = paddedSize(data.size());
    out << kEmrComment << quint32(kCommentFixedSize + nPadded) << quint32(data.size());
    out.writeRawData(data.constData(), data.size());
    out.writeRawData("\0\0\0", int(nPadded - data.size()));
}

void writeEof(QDataStream& out)
{
    // No palette; the palette offset points just past the fixed fields.
    out << kEmrEof << kEofSize << quint32(0) << quint32(16) << kEofSize;
}

} // namespace

tag_estatus CVXSEmfImageWriter::encode(const QImage& image, QByteArray& data) const
{
    const CVXSDeviceIndependentBitmap bitmap(image);
    const QVector<QByteArray> comments = commentData(image);
    qint64 nFileSize = kHeaderSize + kStretchDiBitsFixedSize + bitmap.size() + kEofSize;
    for (const QByteArray& comment : comments)
        nFileSize += kCommentFixedSize + paddedSize(comment.size());
    // Record and file sizes are 32-bit.
    if (nFileSize > std::numeric_limits<quint32>::max())
        return eSTATUS_IMAGE_TOO_LARGE;
    data.clear();
    data.reserve(int(qMin<qint64>(nFileSize, std::numeric_limits<int>::max())));
    QDataStream out(&data, QIODevice::WriteOnly);
    out.setByteOrder(QDataStream::LittleEndian);
    writeHeader(out, image.size(), quint32(nFileSize), kDrawingRecordCount + quint32(comments.size()));
    for (const QByteArray& comment : comments)
        writeComment(out, comment);
    writeStretchDiBits(out, image.size(), bitmap);
    writeEof(out);
    return out.status() == QDataStream::Ok ? eSTATUS_SUCCESS : eSTATUS_WRITE_FAILED;
}
