#include "VXSTiffImageWriter.h"

#include "VXSExportMetadata.h"
#include "VXSExportText.h"
#include "VXSXmpPacket.h"

#include <tiffio.h>

#include <cstring>
#include <limits>
#include <memory>
#include <new>

namespace {

// QByteArray's limit; the file is classic TIFF, which would allow 4 GiB.
constexpr qint64 kMaxFileBytes = std::numeric_limits<int>::max() - 64;
// Rows converted at a time, so that the whole image is never copied at once.
constexpr int kRowsPerChunk = 64;
// Each strip is compressed on its own: large enough that this costs little, small enough
// for readers that take a strip at a time.
constexpr tmsize_t kStripBytes = 256 * 1024;

// The file libtiff writes, in memory; it records why a write failed.
struct MemoryFile {
    QByteArray& data;
    qint64 nPosition = 0;
    tag_estatus eFailure = eSTATUS_WRITE_FAILED;
};

MemoryFile& fileOf(thandle_t handle)
{
    return *static_cast<MemoryFile*>(handle);
}

tmsize_t readFile(thandle_t handle, void* pBuffer, tmsize_t nBytes)
{
    MemoryFile& file = fileOf(handle);
    const qint64 nRead = qBound<qint64>(0, file.data.size() - file.nPosition, nBytes);
    std::memcpy(pBuffer, file.data.constData() + file.nPosition, size_t(nRead));
    file.nPosition += nRead;
    return tmsize_t(nRead);
}

// No exception may cross libtiff's C frames: running out of memory is recorded instead.
tmsize_t writeFile(thandle_t handle, void* pBuffer, tmsize_t nBytes)
{
    MemoryFile& file = fileOf(handle);
    const qint64 nEnd = file.nPosition + nBytes;
    if (nEnd > kMaxFileBytes) {
        file.eFailure = eSTATUS_IMAGE_TOO_LARGE;
        return -1;
    }
    try {
        if (nEnd > file.data.size())
            file.data.resize(int(nEnd));
    } catch (const std::bad_alloc&) {
        file.eFailure = eSTATUS_OUT_OF_MEMORY;
        return -1;
    }
    std::memcpy(file.data.data() + file.nPosition, pBuffer, size_t(nBytes));
    file.nPosition = nEnd;
    return nBytes;
}

toff_t seekFile(thandle_t handle, toff_t nOffset, int nWhence)
{
    MemoryFile& file = fileOf(handle);
    const qint64 nBase = nWhence == SEEK_CUR ? file.nPosition : nWhence == SEEK_END ? file.data.size() : 0;
    const qint64 nPosition = nBase + qint64(nOffset);
    if (nPosition < 0 || nPosition > kMaxFileBytes)
        return toff_t(-1);
    file.nPosition = nPosition;
    return toff_t(nPosition);
}

int closeFile(thandle_t)
{
    return 0;
}

toff_t sizeOfFile(thandle_t handle)
{
    return toff_t(fileOf(handle).data.size());
}

int mapFile(thandle_t, void**, toff_t*)
{
    return 0;
}

void unmapFile(thandle_t, void*, toff_t) {}

// libtiff's messages, which would otherwise go to standard error.
int reportProblem(TIFF*, void*, const char* pModule, const char* pFormat, va_list arguments)
{
    qWarning("libtiff %s: %s", pModule, qPrintable(QString::vasprintf(pFormat, arguments)));
    return 1;
}

struct TiffCloser {
    void operator()(TIFF* pTiff) const { TIFFClose(pTiff); }
};
using TiffFile = std::unique_ptr<TIFF, TiffCloser>;

TiffFile openInMemory(MemoryFile& file)
{
    TIFFOpenOptions* pOptions = TIFFOpenOptionsAlloc();
    TIFFOpenOptionsSetErrorHandlerExtR(pOptions, reportProblem, nullptr);
    TIFFOpenOptionsSetWarningHandlerExtR(pOptions, reportProblem, nullptr);
    TiffFile tiff(TIFFClientOpenExt("export", "w", &file, readFile, writeFile, seekFile, closeFile, sizeOfFile,
                                    mapFile, unmapFile, pOptions));
    TIFFOpenOptionsFree(pOptions);
    return tiff;
}

// How the pixels are stored: the QImage format rows are converted to, and the samples.
struct Layout {
    QImage::Format format = QImage::Format_RGB888;
    uint16_t nSamples = 3;
};

Layout layoutFor(const QImage& image)
{
    if (image.hasAlphaChannel())
        return {QImage::Format_RGBA8888, 4};
    if (image.isGrayscale())
        return {QImage::Format_Grayscale8, 1};
    return {QImage::Format_RGB888, 3};
}

bool setPixelTags(TIFF* pTiff, const QImage& image, const Layout& layout, uint16_t nCompression)
{
    static const uint16_t kUnassociatedAlpha = EXTRASAMPLE_UNASSALPHA;
    return TIFFSetField(pTiff, TIFFTAG_IMAGEWIDTH, uint32_t(image.width()))
           && TIFFSetField(pTiff, TIFFTAG_IMAGELENGTH, uint32_t(image.height()))
           && TIFFSetField(pTiff, TIFFTAG_BITSPERSAMPLE, uint16_t(8))
           && TIFFSetField(pTiff, TIFFTAG_SAMPLESPERPIXEL, layout.nSamples)
           && TIFFSetField(pTiff, TIFFTAG_PHOTOMETRIC, layout.nSamples == 1 ? PHOTOMETRIC_MINISBLACK : PHOTOMETRIC_RGB)
           && (layout.nSamples != 4 || TIFFSetField(pTiff, TIFFTAG_EXTRASAMPLES, uint16_t(1), &kUnassociatedAlpha))
           && TIFFSetField(pTiff, TIFFTAG_PLANARCONFIG, PLANARCONFIG_CONTIG)
           && TIFFSetField(pTiff, TIFFTAG_ORIENTATION, ORIENTATION_TOPLEFT)
           && TIFFSetField(pTiff, TIFFTAG_COMPRESSION, nCompression)
           && TIFFSetField(pTiff, TIFFTAG_PREDICTOR, PREDICTOR_HORIZONTAL)
           && TIFFSetField(pTiff, TIFFTAG_ROWSPERSTRIP, uint32_t(qMax<tmsize_t>(1, kStripBytes / TIFFScanlineSize(pTiff))));
}

bool setDescribingTags(TIFF* pTiff, const QImage& image)
{
    const QByteArray software = CVXSExportMetadata::software(image).toUtf8();
    const QByteArray date = CVXSExportMetadata::created(image).toString(QStringLiteral("yyyy:MM:dd HH:mm:ss")).toLatin1();
    const QByteArray description = CVXSExportText::lines(image).join(QLatin1Char('\n')).toUtf8();
    const QByteArray xmp = CVXSXmpPacket::of(image);
    return TIFFSetField(pTiff, TIFFTAG_XRESOLUTION, double(image.logicalDpiX()))
           && TIFFSetField(pTiff, TIFFTAG_YRESOLUTION, double(image.logicalDpiY()))
           && TIFFSetField(pTiff, TIFFTAG_RESOLUTIONUNIT, RESUNIT_INCH)
           && (software.isEmpty() || TIFFSetField(pTiff, TIFFTAG_SOFTWARE, software.constData()))
           && TIFFSetField(pTiff, TIFFTAG_DATETIME, date.constData())
           && (description.isEmpty() || TIFFSetField(pTiff, TIFFTAG_IMAGEDESCRIPTION, description.constData()))
           && (xmp.isEmpty() || TIFFSetField(pTiff, TIFFTAG_XMLPACKET, uint32_t(xmp.size()), xmp.constData()));
}

// Converts a few rows at a time; libtiff's predictor changes the rows it is given, so they
// are always a copy.
bool writeRows(TIFF* pTiff, const QImage& image, const Layout& layout)
{
    for (int nTop = 0; nTop < image.height(); nTop += kRowsPerChunk) {
        const int nRows = qMin(kRowsPerChunk, image.height() - nTop);
        QImage rows = image.copy(0, nTop, image.width(), nRows).convertToFormat(layout.format);
        if (rows.isNull())
            throw std::bad_alloc();
        for (int y = 0; y < nRows; ++y) {
            if (TIFFWriteScanline(pTiff, rows.scanLine(y), uint32_t(nTop + y), 0) < 0)
                return false;
        }
    }
    return true;
}

} // namespace

CVXSTiffImageWriter::CVXSTiffImageWriter(CVXSImageExporter::TiffCompression eCompression)
    : m_eCompression(eCompression)
{
}

tag_estatus CVXSTiffImageWriter::encode(const QImage& image, QByteArray& data) const
{
    data.clear();
    MemoryFile file {data};
    TiffFile tiff = openInMemory(file);
    if (!tiff)
        return eSTATUS_WRITE_FAILED;
    const Layout layout = layoutFor(image);
    const uint16_t nCompression =
        m_eCompression == CVXSImageExporter::TiffCompression::Lzw ? COMPRESSION_LZW : COMPRESSION_ADOBE_DEFLATE;
    const bool bWritten = setPixelTags(tiff.get(), image, layout, nCompression) && setDescribingTags(tiff.get(), image)
                          && writeRows(tiff.get(), image, layout) && TIFFWriteDirectory(tiff.get());
    tiff.reset();
    if (!bWritten) {
        data.clear();
        return file.eFailure;
    }
    return eSTATUS_SUCCESS;
}
