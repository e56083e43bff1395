#include "VXSPngEncoder.h"

#include "VXSPngChunks.h"

#include <QBuffer>
#include <QImageWriter>
#include <QtConcurrent>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <vector>

#include <zlib.h>

namespace {

// Raw bytes per band: enough for zlib to find its matches, small enough to share the work.
constexpr int kBandBytes = 1 << 20;
constexpr int kWindowBytes = 32768;
constexpr int kIdatBytes = 1 << 18;
enum Filter : uchar { None, Sub, Up, Average, Paeth };

// One row in PNG's byte order: red, green, blue and, with alpha, alpha.
void packRow(const QImage& image, int y, bool bAlpha, uchar* pOut)
{
    const auto* pLine = reinterpret_cast<const QRgb*>(image.constScanLine(y));
    for (int x = 0; x < image.width(); ++x) {
        *pOut++ = uchar(qRed(pLine[x]));
        *pOut++ = uchar(qGreen(pLine[x]));
        *pOut++ = uchar(qBlue(pLine[x]));
        if (bAlpha)
            *pOut++ = uchar(qAlpha(pLine[x]));
    }
}

int paethPredictor(int a, int b, int c)
{
    const int p = a + b - c;
    const int pa = std::abs(p - a);
    const int pb = std::abs(p - b);
    const int pc = std::abs(p - c);
    return pa <= pb && pa <= pc ? a : pb <= pc ? b : c;
}

// A filtered byte's size, taken as signed, by which libpng too picks the filter of a row.
int magnitude(int nDifference)
{
    const int nByte = nDifference & 0xff;
    return nByte < 128 ? nByte : 256 - nByte;
}

// The filter whose bytes for the row have the smallest sum, all five measured in one pass.
Filter bestFilter(const uchar* pRow, const uchar* pAbove, int nBytes, int nBpp)
{
    int sums[5] = {};
    for (int i = 0; i < nBytes; ++i) {
        const int x = pRow[i];
        const int a = i >= nBpp ? pRow[i - nBpp] : 0;
        const int b = pAbove[i];
        const int c = i >= nBpp ? pAbove[i - nBpp] : 0;
        sums[None] += magnitude(x);
        sums[Sub] += magnitude(x - a);
        sums[Up] += magnitude(x - b);
        sums[Average] += magnitude(x - (a + b) / 2);
        sums[Paeth] += magnitude(x - paethPredictor(a, b, c));
    }
    return Filter(std::min_element(sums, sums + 5) - sums);
}

void filterRow(Filter kind, const uchar* pRow, const uchar* pAbove, int nBytes, int nBpp, uchar* pOut)
{
    for (int i = 0; i < nBytes; ++i) {
        const int a = i >= nBpp ? pRow[i - nBpp] : 0;
        const int b = pAbove[i];
        const int c = i >= nBpp ? pAbove[i - nBpp] : 0;
        const int predicted = kind == Sub       ? a
                              : kind == Up      ? b
                              : kind == Average ? (a + b) / 2
                              : kind == Paeth   ? paethPredictor(a, b, c)
                                                : 0;
        pOut[i] = uchar(pRow[i] - predicted);
    }
}

// Rows first to end (exclusive) filtered, each with its filter byte in front.
std::vector<uchar> filteredRows(const QImage& image, bool bAlpha, int nFirst, int nEnd)
{
    const int nBpp = bAlpha ? 4 : 3;
    const int nBytes = image.width() * nBpp;
    std::vector<uchar> above(static_cast<size_t>(nBytes), 0);
    std::vector<uchar> row(static_cast<size_t>(nBytes));
    std::vector<uchar> filtered(size_t(nEnd - nFirst) * size_t(nBytes + 1));
    if (nFirst > 0)
        packRow(image, nFirst - 1, bAlpha, above.data());
    uchar* pOut = filtered.data();
    for (int y = nFirst; y < nEnd; ++y, pOut += nBytes + 1) {
        packRow(image, y, bAlpha, row.data());
        const Filter kind = bestFilter(row.data(), above.data(), nBytes, nBpp);
        pOut[0] = kind;
        filterRow(kind, row.data(), above.data(), nBytes, nBpp, pOut + 1);
        above.swap(row);
    }
    return filtered;
}

struct Band
{
    QByteArray deflated;
    uLong nAdler = 0;
    size_t nLength = 0;
    bool bOk = false;
};

// Rows first to end deflated as the continuation of the rows before them: the last 32 KiB
// of those prime the compressor, so that matches reach back across the band's start. All
// but the last band end with an empty stored block, on a byte boundary and not final.
Band deflateBand(const QImage& image, bool bAlpha, int nFirst, int nEnd, bool bLast, int nLevel)
{
    const int nRowBytes = image.width() * (bAlpha ? 4 : 3) + 1;
    const int nPrimingRows = qMin(nFirst, (kWindowBytes + nRowBytes - 1) / nRowBytes);
    const std::vector<uchar> filtered = filteredRows(image, bAlpha, nFirst - nPrimingRows, nEnd);
    const size_t nPriming = size_t(nPrimingRows) * size_t(nRowBytes);
    Band band;
    band.nLength = filtered.size() - nPriming;
    band.nAdler = adler32_z(adler32(0L, Z_NULL, 0), filtered.data() + nPriming, band.nLength);
    z_stream stream = {};
    if (deflateInit2(&stream, nLevel, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY) != Z_OK)
        return band;
    const size_t nWindow = qMin(nPriming, size_t(kWindowBytes));
    bool bOk = nWindow == 0
               || deflateSetDictionary(&stream, filtered.data() + nPriming - nWindow, uInt(nWindow)) == Z_OK;
    band.deflated.resize(int(deflateBound(&stream, uLong(band.nLength)) + 16));
    stream.next_in = const_cast<Bytef*>(filtered.data() + nPriming);
    stream.avail_in = uInt(band.nLength);
    stream.next_out = reinterpret_cast<Bytef*>(band.deflated.data());
    stream.avail_out = uInt(band.deflated.size());
    bOk = bOk && deflate(&stream, bLast ? Z_FINISH : Z_SYNC_FLUSH) == (bLast ? Z_STREAM_END : Z_OK)
          && stream.avail_in == 0;
    band.deflated.resize(int(stream.total_out));
    deflateEnd(&stream);
    band.bOk = bOk;
    return band;
}

// The zlib stream of the image's rows, its bands deflated on every core.
bool zlibStream(const QImage& image, int nLevel, QByteArray& stream)
{
    const bool bAlpha = image.hasAlphaChannel();
    const int nRowBytes = image.width() * (bAlpha ? 4 : 3) + 1;
    const int nRowsPerBand = qMax(1, kBandBytes / nRowBytes);
    QVector<int> firstRows;
    for (int y = 0; y < image.height(); y += nRowsPerBand)
        firstRows << y;
    const std::function<Band(int)> deflateOne = [&](int nFirst) {
        const int nEnd = qMin(image.height(), nFirst + nRowsPerBand);
        return deflateBand(image, bAlpha, nFirst, nEnd, nEnd == image.height(), nLevel);
    };
    const QVector<Band> bands = QtConcurrent::blockingMapped<QVector<Band>>(firstRows, deflateOne);
    // The zlib header: deflate with a 32 KiB window, no preset dictionary, the level told in
    // its two bits, and the check bits that make it a multiple of 31.
    const int nLevelBits = nLevel <= 1 ? 0 : nLevel <= 5 ? 1 : nLevel == 6 ? 2 : 3;
    const int nHeader = 0x7800 | (nLevelBits << 6);
    stream = QByteArray(1, char(0x78)) + char((nHeader + 31 - nHeader % 31) & 0xff);
    uLong nAdler = adler32(0L, Z_NULL, 0);
    for (const Band& band : bands) {
        if (!band.bOk)
            return false;
        stream += band.deflated;
        nAdler = adler32_combine(nAdler, band.nAdler, z_off_t(band.nLength));
    }
    stream += VXSPngChunks::bigEndian32(quint32(nAdler));
    return true;
}

// The file Qt's writer writes for the image's first row alone: every chunk of the image but
// its size and pixels.
bool qtSkeleton(const QImage& image, QVector<VXSPngChunks::Chunk>& chunks)
{
    QImage row = image.copy(0, 0, image.width(), 1);
    for (const QString& strKey : image.textKeys())
        row.setText(strKey, image.text(strKey));
    QByteArray png;
    QBuffer buffer(&png);
    return buffer.open(QIODevice::WriteOnly) && QImageWriter(&buffer, "png").write(row)
           && VXSPngChunks::split(png, chunks) && !chunks.isEmpty() && chunks.first().type == "IHDR"
           && chunks.first().data.size() == 13;
}

} // namespace

bool CVXSPngEncoder::canEncode(const QImage& image)
{
    return image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32;
}

bool CVXSPngEncoder::encode(const QImage& image, QByteArray& png, int nLevel)
{
    QVector<VXSPngChunks::Chunk> chunks;
    QByteArray stream;
    if (!canEncode(image) || !qtSkeleton(image, chunks) || !zlibStream(image, nLevel, stream))
        return false;
    chunks.first().data.replace(4, 4, VXSPngChunks::bigEndian32(quint32(image.height())));
    png = VXSPngChunks::Signature;
    bool bDataWritten = false;
    for (const VXSPngChunks::Chunk& chunk : qAsConst(chunks)) {
        if (chunk.type != "IDAT") {
            png += VXSPngChunks::chunk(chunk.type, chunk.data);
            continue;
        }
        // The image data goes where Qt's was, in chunks of a size decoders read well.
        for (int nAt = 0; !bDataWritten && nAt < stream.size(); nAt += kIdatBytes)
            png += VXSPngChunks::chunk(chunk.type, stream.mid(nAt, kIdatBytes));
        bDataWritten = true;
    }
    return bDataWritten;
}
