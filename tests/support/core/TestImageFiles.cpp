#include "TestImageFiles.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QImageWriter>

namespace {

enum TiffType : quint16 { kShort = 3, kLong = 4 };
constexpr int kTiffHeaderBytes = 8;
constexpr int kTiffEntries = 9;
constexpr int kTiffIfdBytes = 2 + kTiffEntries * 12 + 4;

void writeTiffEntry(QDataStream& stream, quint16 nTag, TiffType type, quint32 nValue)
{
    stream << nTag << quint16(type) << quint32(1);
    // Values shorter than four bytes sit at the start of the value field.
    if (type == kShort)
        stream << quint16(nValue) << quint16(0);
    else
        stream << nValue;
}

// Directory entries must come in ascending tag order.
void writeTiffDirectory(QDataStream& stream, const QSize& size, quint32 nDataOffset, quint32 nNextOffset)
{
    stream << quint16(kTiffEntries);
    writeTiffEntry(stream, 256, kLong, quint32(size.width()));
    writeTiffEntry(stream, 257, kLong, quint32(size.height()));
    writeTiffEntry(stream, 258, kShort, 8); // bits per sample
    writeTiffEntry(stream, 259, kShort, 1); // no compression
    writeTiffEntry(stream, 262, kShort, 1); // black is zero
    writeTiffEntry(stream, 273, kLong, nDataOffset);
    writeTiffEntry(stream, 277, kShort, 1); // samples per pixel
    writeTiffEntry(stream, 278, kLong, quint32(size.height()));
    writeTiffEntry(stream, 279, kLong, quint32(qint64(size.width()) * size.height()));
    stream << nNextOffset;
}

// Directories start on a word boundary, so odd pixel counts get a pad byte.
qint64 paddedPixelBytes(const QSize& size)
{
    const qint64 nBytes = qint64(size.width()) * size.height();
    return nBytes + nBytes % 2;
}

void writeTiffPixels(QDataStream& stream, const QImage& page)
{
    for (int y = 0; y < page.height(); ++y)
        stream.writeRawData(reinterpret_cast<const char*>(page.constScanLine(y)), page.width());
    if (paddedPixelBytes(page.size()) > qint64(page.width()) * page.height())
        stream << quint8(0);
}

// Each page's pixels followed by its directory. Without pixel pages only the directories
// are written, announcing the sizes given.
QByteArray tiffFile(const QVector<QSize>& sizes, const QVector<QImage>& pixelPages)
{
    auto storedBytes = [&pixelPages, &sizes](int i) { return pixelPages.isEmpty() ? 0 : paddedPixelBytes(sizes[i]); };
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QDataStream stream(&buffer);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("II", 2);
    stream << quint16(42) << quint32(kTiffHeaderBytes + (sizes.isEmpty() ? 0 : storedBytes(0)));
    for (int i = 0; i < sizes.size(); ++i) {
        const quint32 nDataOffset = quint32(buffer.pos());
        if (!pixelPages.isEmpty())
            writeTiffPixels(stream, pixelPages[i]);
        const bool bLast = i + 1 == sizes.size();
        const quint32 nNext = bLast ? 0 : quint32(buffer.pos() + kTiffIfdBytes + storedBytes(i + 1));
        writeTiffDirectory(stream, sizes[i], nDataOffset, nNext);
    }
    return bytes;
}

} // namespace

bool CTestImageFiles::writeMultiPageTiff(const QString& strPath, const QVector<QImage>& pages)
{
    QVector<QImage> greyPages;
    QVector<QSize> sizes;
    for (const QImage& page : pages) {
        greyPages << page.convertToFormat(QImage::Format_Grayscale8);
        sizes << page.size();
    }
    return writeBytes(strPath, tiffFile(sizes, greyPages));
}

bool CTestImageFiles::writeTiffWithoutPixels(const QString& strPath, const QVector<QSize>& pageSizes)
{
    return writeBytes(strPath, tiffFile(pageSizes, {}));
}

bool CTestImageFiles::writeBmpHeader(const QString& strPath, const QSize& size)
{
    constexpr quint32 kHeaderBytes = 54;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream.writeRawData("BM", 2);
    stream << quint32(kHeaderBytes) << quint32(0) << kHeaderBytes;
    stream << quint32(40) << qint32(size.width()) << qint32(size.height()) << quint16(1) << quint16(24);
    stream << quint32(0) << quint32(0) << qint32(2835) << qint32(2835) << quint32(0) << quint32(0);
    return writeBytes(strPath, bytes);
}

bool CTestImageFiles::writeTruncatedCopy(const QString& strSourcePath, const QString& strPath)
{
    QFile source(strSourcePath);
    if (!source.open(QIODevice::ReadOnly))
        return false;
    const QByteArray bytes = source.readAll();
    return writeBytes(strPath, bytes.left(bytes.size() / 2));
}

bool CTestImageFiles::writeBytes(const QString& strPath, const QByteArray& bytes)
{
    QFile file(strPath);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QByteArray CTestImageFiles::readBytes(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray CTestImageFiles::qtPng(const QImage& image)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter(&buffer, "png").write(image);
    return png;
}

QImage CTestImageFiles::twoHalves(const QSize& size, QImage::Format format, const QColor& left, const QColor& right)
{
    QImage image(size, format);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QColor& colour = x < size.width() / 2 ? left : right;
            // QImage keeps only 8 bits of a colour set on a 16-bit grey image.
            if (format == QImage::Format_Grayscale16)
                reinterpret_cast<quint16*>(image.scanLine(y))[x] = colour.rgba64().red();
            else
                image.setPixelColor(x, y, colour);
        }
    }
    return image;
}

QColor CTestImageFiles::deepGrey(quint16 nLevel)
{
    return QColor::fromRgba64(nLevel, nLevel, nLevel);
}

bool CTestImageFiles::isNear(const QColor& actual, const QColor& expected, int nTolerance)
{
    return qAbs(actual.red() - expected.red()) <= nTolerance && qAbs(actual.green() - expected.green()) <= nTolerance
        && qAbs(actual.blue() - expected.blue()) <= nTolerance;
}
