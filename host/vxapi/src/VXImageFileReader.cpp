#include "VXImageFileReader.h"

#include "VXDicomFileReader.h"
#include "VXImageProvenance.h"
#include "VXImageWindowing.h"
#include "VXPixelSize.h"
#include "VXPngCheck.h"
#include "VXTiffPixelSize.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <dcmtk/oflog/oflog.h>
#include <tiffio.h>

namespace {

constexpr qint64 kMiB = 1024 * 1024;
// What an image of unknown pixel format is assumed to take per pixel.
constexpr int kDefaultBytesPerPixel = 4;
// Headers can announce sizes whose bytes overflow 64 bits; such files are refused anyway,
// so the sums stop growing here.
constexpr qint64 kBytesCap = qint64(1) << 61;

// The TIFF and DICOM libraries print what they find wrong in a file straight on the terminal,
// next to the reason the reader gives; for the whole process, once.
void quietenDecoderLibraries()
{
    static const bool s_bQuiet = [] {
        TIFFSetErrorHandler(nullptr);
        TIFFSetWarningHandler(nullptr);
        OFLog::configure(OFLogger::FATAL_LOG_LEVEL);
        return true;
    }();
    Q_UNUSED(s_bQuiet)
}

// Single-image formats report no count or 1; a reader that cannot start reports 0.
int pageCount(const QImageReader& reader)
{
    return qMax(1, reader.imageCount());
}

} // namespace

QVector<QImage> CVXImageFileReader::read(const QString& strPath, QString& strError)
{
    QVector<QImage> pictures;
    QVector<CVXImagePage> pages = readFile(strPath, strError, false);
    labelPages(pages, QFileInfo(strPath).fileName());
    for (const CVXImagePage& page : pages)
        pictures.append(page.picture);
    return pictures;
}

QVector<CVXImagePage> CVXImageFileReader::readWithLevels(const QString& strPath, QString& strError)
{
    QVector<CVXImagePage> pages = readFile(strPath, strError, true);
    labelPages(pages, QFileInfo(strPath).fileName());
    return pages;
}

QVector<CVXImagePage> CVXImageFileReader::readFile(const QString& strPath, QString& strError, bool bLevels)
{
    strError.clear();
    quietenDecoderLibraries();
    const QFileInfo info(strPath);
    // The reader would call an empty file an unsupported format, which misleads.
    if (info.isFile() && info.size() == 0) {
        strError = tr("The file is empty.");
        return {};
    }
    if (CVXDicomFileReader::isDicomFile(strPath))
        return readDicom(strPath, strError, bLevels);
    // A damaged PNG is found before Qt's decoder meets it: its header before the size is
    // read from it, its data once that size is known to fit.
    QFile file(strPath);
    const bool bPng = file.open(QIODevice::ReadOnly) && CVXPngCheck::isPng(file);
    if (bPng && !CVXPngCheck::headerIsIntact(file))
        return refuseDamaged(strError);
    if (!fitsInMemory(strPath, strError))
        return {};
    if (bPng && (!file.seek(0) || !CVXPngCheck::dataIsIntact(file)))
        return refuseDamaged(strError);
    QImageReader reader(strPath);
    QVector<CVXImagePage> pages = readPages(reader, strError, bLevels);
    if (reader.format() == "tiff")
        labelPixelSizes(pages, CVXTiffPixelSize::ofPages(strPath));
    return pages;
}

void CVXImageFileReader::labelPixelSizes(QVector<CVXImagePage>& pages, const QVector<double>& sizes)
{
    for (int i = 0; i < pages.size() && i < sizes.size(); ++i) {
        if (sizes[i] > 0.0)
            CVXPixelSize::set(pages[i].picture, sizes[i]);
    }
}

bool CVXImageFileReader::fitsInMemory(const QString& strPath, QString& strError)
{
    // The headers tell the sizes, so a file too large for memory is refused before any
    // of it is decoded.
    QImageReader sizer(strPath);
    // Counting first: the TIFF reader loses its page count once asked for anything else.
    const int nPages = pageCount(sizer);
    const QSize firstSize = sizer.size();
    const qint64 nBytes = decodedBytes(sizer, nPages);
    if (nBytes > kMaxDecodedBytes) {
        strError = tooLargeError(firstSize, nBytes);
        return false;
    }
    return true;
}

QSize CVXImageFileReader::headerSize(const QString& strPath)
{
    quietenDecoderLibraries();
    if (!CVXDicomFileReader::isDicomFile(strPath))
        return QImageReader(strPath).size();
    const CVXDicomFileReader dicom(strPath);
    return dicom.isReadable() ? dicom.frameSize() : QSize();
}

QVector<CVXImagePage> CVXImageFileReader::refuseDamaged(QString& strError)
{
    strError = CVXPngCheck::damagedText();
    return {};
}

void CVXImageFileReader::labelPages(QVector<CVXImagePage>& pages, const QString& strFileName)
{
    for (int i = 0; i < pages.size(); ++i) {
        QImage& page = pages[i].picture;
        page.setText(QString::fromLatin1(CVXImageProvenance::Source), strFileName);
        // A single image needs no number; the pages of a multi-page file do.
        if (pages.size() > 1) {
            page.setText(QString::fromLatin1(CVXImageProvenance::Frame), QString::number(i + 1));
            page.setText(QString::fromLatin1(CVXImageProvenance::FrameCount), QString::number(pages.size()));
        }
    }
}

QString CVXImageFileReader::dialogFilter()
{
    return tr("Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.dcm);;All files (*)");
}

bool CVXImageFileReader::isImageKind(const QString& strPath)
{
    static const QStringList suffixes {QStringLiteral("png"), QStringLiteral("jpg"), QStringLiteral("jpeg"),
                                       QStringLiteral("bmp"), QStringLiteral("tif"), QStringLiteral("tiff")};
    return suffixes.contains(QFileInfo(strPath).suffix().toLower()) || CVXDicomFileReader::isDicomFile(strPath)
           || !QImageReader::imageFormat(strPath).isEmpty();
}

QVector<CVXImagePage> CVXImageFileReader::readDicom(const QString& strPath, QString& strError, bool bLevels)
{
    CVXDicomFileReader reader(strPath);
    if (!reader.isReadable()) {
        strError = reader.errorString();
        return {};
    }
    if (reader.decodedBytes() > kMaxDecodedBytes) {
        strError = tooLargeError(reader.frameSize(), reader.decodedBytes());
        return {};
    }
    const QVector<CVXImagePage> frames = reader.readFrames(bLevels);
    strError = reader.errorString();
    return frames;
}

QVector<CVXImagePage> CVXImageFileReader::readPages(QImageReader& reader, QString& strError, bool bLevels)
{
    const int nPages = pageCount(reader);
    QVector<CVXImagePage> pages;
    for (int i = 0; i < nPages; ++i) {
        // Paged formats move on when told to; animations move on with every read.
        if (i > 0)
            reader.jumpToNextImage();
        const QImage page = reader.read();
        if (page.isNull()) {
            strError = reader.errorString();
            return {};
        }
        // 16-bit grey is stretched for the screen; its levels stay for a display range.
        const bool bDeepGrey = bLevels && page.format() == QImage::Format_Grayscale16;
        pages.append({CVXImageWindowing::toDisplay(page), bDeepGrey ? page : QImage()});
    }
    return pages;
}

qint64 CVXImageFileReader::decodedBytes(QImageReader& reader, int nPages)
{
    qint64 nBytes = 0;
    for (int i = 0; i < nPages; ++i) {
        // A format that cannot jump keeps answering for its first frame; animations
        // share one frame size, so the sum still holds.
        if (i > 0)
            reader.jumpToNextImage();
        nBytes = qMin(nBytes + pageBytes(reader), kBytesCap);
    }
    return nBytes;
}

qint64 CVXImageFileReader::pageBytes(const QImageReader& reader)
{
    const QSize size = reader.size();
    if (!size.isValid())
        return 0;
    const QImage::Format format = reader.imageFormat();
    const int nBytesPerPixel = format == QImage::Format_Invalid
                                   ? kDefaultBytesPerPixel
                                   : qMax(1, QImage::toPixelFormat(format).bitsPerPixel() / 8);
    const qint64 nPixels = qint64(size.width()) * size.height();
    return qMin(nPixels, kBytesCap / nBytesPerPixel) * nBytesPerPixel;
}

QString CVXImageFileReader::tooLargeError(const QSize& size, qint64 nBytes)
{
    return tr("The image data (%1 x %2 pixels per image) would need %3 MiB of memory; "
              "files needing more than %4 MiB are not opened.")
        .arg(size.width())
        .arg(size.height())
        .arg((nBytes + kMiB - 1) / kMiB)
        .arg(kMaxDecodedBytes / kMiB);
}
