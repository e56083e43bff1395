#include "VXSEpsImageWriter.h"

#include "VXSExportText.h"
#include "VXSPixelPacking.h"
#include "VXUtilityFns.h"

#include <QDateTime>
#include <QScopeGuard>

#include <zlib.h>

#include <limits>

namespace {

// DSC wants lines of at most 255 characters.
constexpr int kAscii85LineLength = 76;
constexpr int kDscLineLength = 255;
const QByteArray kProvenanceComment("%%VXProvenance: ");
const QByteArray kContinuationComment("%%+ ");
constexpr int kDeflateChunk = 1 << 16;

// Deflates the image's rows, packed as RGB, into one zlib stream.
tag_estatus deflateRows(const QImage& rgb32, QByteArray& compressed)
{
    z_stream stream = {};
    const int nInit = deflateInit(&stream, Z_DEFAULT_COMPRESSION);
    if (nInit != Z_OK)
        return nInit == Z_MEM_ERROR ? eSTATUS_OUT_OF_MEMORY : eSTATUS_WRITE_FAILED;
    const auto end = qScopeGuard([&stream] { deflateEnd(&stream); });
    QByteArray row(rgb32.width() * 3, '\0');
    QByteArray chunk(kDeflateChunk, '\0');
    int nResult = Z_OK;
    for (int y = 0; y <= rgb32.height(); ++y) {
        // One more round without input finishes the stream.
        const bool bFinish = y == rgb32.height();
        if (!bFinish)
            vxsPackRgbRow(rgb32, y, reinterpret_cast<uchar*>(row.data()));
        stream.next_in = reinterpret_cast<Bytef*>(row.data());
        stream.avail_in = bFinish ? 0 : uInt(row.size());
        // Until deflate leaves room in the chunk, it has more output for the row.
        do {
            stream.next_out = reinterpret_cast<Bytef*>(chunk.data());
            stream.avail_out = uInt(chunk.size());
            nResult = deflate(&stream, bFinish ? Z_FINISH : Z_NO_FLUSH);
            if (nResult == Z_STREAM_ERROR)
                return eSTATUS_WRITE_FAILED;
            compressed.append(chunk.constData(), chunk.size() - int(stream.avail_out));
        } while (stream.avail_out == 0);
    }
    return nResult == Z_STREAM_END ? eSTATUS_SUCCESS : eSTATUS_WRITE_FAILED;
}

// ASCII85 with "z" for zero groups and the "~>" end marker, in short lines. A line never
// starts with "%", so that no data line reads like a DSC comment.
void appendAscii85(const QByteArray& bytes, QByteArray& out)
{
    int nColumn = 0;
    const auto put = [&](char c) {
        if (nColumn >= kAscii85LineLength) {
            out.append('\n');
            nColumn = 0;
        }
        if (nColumn == 0 && c == '%') {
            out.append(' ');
            ++nColumn;
        }
        out.append(c);
        ++nColumn;
    };
    const uchar* pBytes = reinterpret_cast<const uchar*>(bytes.constData());
    const int nSize = bytes.size();
    for (int i = 0; i < nSize; i += 4) {
        const int nCount = qMin(4, nSize - i);
        quint32 nValue = 0;
        for (int j = 0; j < 4; ++j)
            nValue = (nValue << 8) | (j < nCount ? pBytes[i + j] : 0);
        if (nValue == 0 && nCount == 4) {
            put('z');
            continue;
        }
        char digits[5];
        for (int j = 4; j >= 0; --j) {
            digits[j] = char('!' + nValue % 85);
            nValue /= 85;
        }
        // A group of n bytes keeps n + 1 digits.
        for (int j = 0; j <= nCount; ++j)
            put(digits[j]);
    }
    out.append("~>\n");
}

// The pieces of a comment value: printable ASCII as it is; the backslash, control
// characters and the UTF-8 bytes of anything else as \ooo escapes, so that no value can end
// its comment line and reach the PostScript.
QVector<QByteArray> escapedPieces(const QString& strText)
{
    QVector<QByteArray> pieces;
    for (const char c : strText.toUtf8()) {
        const auto byte = uchar(c);
        if (byte >= 0x20 && byte < 0x7F && byte != '\\')
            pieces << QByteArray(1, c);
        else
            pieces << '\\' + QByteArray::number(byte, 8).rightJustified(3, '0');
    }
    return pieces;
}

// One "%%VXProvenance: Key: value" comment per text key of the image, going on in "%%+"
// lines where it is longer than a DSC line; an escape is never split.
QByteArray provenanceComments(const QImage& image)
{
    QByteArray comments;
    for (const QString& strLine : CVXSExportText::lines(image)) {
        QByteArray line = kProvenanceComment;
        for (const QByteArray& piece : escapedPieces(strLine)) {
            if (line.size() + piece.size() > kDscLineLength) {
                comments += line + '\n';
                line = kContinuationComment;
            }
            line += piece;
        }
        comments += line + '\n';
    }
    return comments;
}

QByteArray header(const QImage& image)
{
    const QSize size = image.size();
    const QByteArray width = QByteArray::number(size.width());
    const QByteArray height = QByteArray::number(size.height());
    const QByteArray creator = CVXUtilityFns::getAppName().toUtf8().replace('\n', ' ');
    const QByteArray created = QDateTime::currentDateTime().toString(Qt::ISODate).toLatin1();
    return "%!PS-Adobe-3.0 EPSF-3.0\n"
           "%%BoundingBox: 0 0 " + width + ' ' + height + "\n"
           "%%Creator: " + creator + "\n"
           "%%CreationDate: " + created + "\n"
           + provenanceComments(image) +
           "%%LanguageLevel: 2\n"
           "%%Pages: 1\n"
           "%%EndComments\n"
           "%%Page: 1 1\n"
           "save\n"
           "10 dict begin\n"
           "/DeviceRGB setcolorspace\n"
           + width + ' ' + height + " scale\n"
           "/vxA85 currentfile /ASCII85Decode filter def\n"
           "/vxPixels vxA85 /FlateDecode filter def\n"
           // The image reads its data from the lines that follow; both filters are then read
           // to their ends so that PostScript goes on after the data.
           "<< /ImageType 1 /Width " + width + " /Height " + height + " /BitsPerComponent 8\n"
           "   /Decode [0 1 0 1 0 1] /ImageMatrix [" + width + " 0 0 -" + height + " 0 " + height + "]\n"
           "   /DataSource vxPixels >>\n"
           "{ image vxPixels flushfile vxA85 flushfile } exec\n";
}

const char* const kTrailer = "end\n"
                             "restore\n"
                             "showpage\n"
                             "%%Trailer\n"
                             "%%EOF\n";

} // namespace

tag_estatus CVXSEpsImageWriter::encode(const QImage& image, QByteArray& data) const
{
    const QImage rgb32 = image.convertToFormat(QImage::Format_RGB32);
    QByteArray compressed;
    const tag_estatus deflated = deflateRows(rgb32, compressed);
    if (deflated != eSTATUS_SUCCESS)
        return deflated;
    // ASCII85 makes 5 characters of 4 bytes; each line adds a break and may add a space.
    const qint64 nCharacters = (qint64(compressed.size()) + 3) / 4 * 5;
    const qint64 nEncodedSize = nCharacters + 2 * (nCharacters / kAscii85LineLength + 1) + 3;
    const QByteArray head = header(image);
    const qint64 nFileSize = head.size() + nEncodedSize + qint64(qstrlen(kTrailer));
    if (nFileSize > std::numeric_limits<int>::max())
        return eSTATUS_IMAGE_TOO_LARGE;
    data = head;
    data.reserve(int(nFileSize));
    appendAscii85(compressed, data);
    data.append(kTrailer);
    return eSTATUS_SUCCESS;
}
