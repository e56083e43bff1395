#include "VXDicomFileReader.h"

#include "VXDisplayRange.h"
#include "VXImageProvenance.h"
#include "VXPixelSize.h"

#include <dcmtk/dcmdata/dcdeftag.h>
#include <dcmtk/dcmdata/dcfilefo.h>
#include <dcmtk/dcmdata/dcrledrg.h>
#include <dcmtk/dcmdata/dcxfer.h>
#include <dcmtk/dcmimage/diregist.h> // colour images
#include <dcmtk/dcmimgle/dcmimage.h>
#include <dcmtk/dcmimgle/dipixel.h>
#include <dcmtk/dcmjpeg/djdecode.h>
#include <dcmtk/dcmjpls/djdecode.h>

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

constexpr qint64 kPreambleLength = 128;
const QByteArray kMagic("DICM");
// Display images take 4 bytes per pixel at most.
constexpr int kDisplayBytesPerPixel = 4;
// Headers can announce frames whose bytes overflow 64 bits; such files are refused anyway,
// so the product stops growing here.
constexpr qint64 kBytesCap = qint64(1) << 61;

QString conditionText(const OFCondition& condition)
{
    return QString::fromLocal8Bit(condition.text());
}

// Rows of the 8-bit output of DicomImage, packed without padding, into an image.
QImage imageFromOutput(const void* pData, const QSize& size, bool bColour)
{
    const QImage::Format format = bColour ? QImage::Format_RGB888 : QImage::Format_Grayscale8;
    const int nRowBytes = size.width() * (bColour ? 3 : 1);
    QImage image(size, format);
    if (image.isNull())
        return image;
    const auto* pBytes = static_cast<const uchar*>(pData);
    for (int y = 0; y < size.height(); ++y)
        memcpy(image.scanLine(y), pBytes + qint64(y) * nRowBytes, size_t(nRowBytes));
    return image;
}

// A string attribute's value (one of several where nPosition says), decoded as the file's
// character set says: UTF-8 where it names ISO_IR 192, otherwise Latin-1 (ASCII included).
QString attributeText(DcmDataset& data, const DcmTagKey& key, bool bUtf8, unsigned long nPosition = 0)
{
    OFString value;
    if (data.findAndGetOFString(key, value, nPosition).bad())
        return QString();
    const QByteArray bytes(value.c_str(), int(value.length()));
    return (bUtf8 ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes)).trimmed();
}

bool allDigits(const QString& strText)
{
    return std::all_of(strText.cbegin(), strText.cend(), [](QChar c) { return c.isDigit(); });
}

// DA "20240502" as "2024-05-02"; anything else as it is.
QString readableDate(const QString& strDate)
{
    if (strDate.size() != 8 || !allDigits(strDate))
        return strDate;
    return QStringLiteral("%1-%2-%3").arg(strDate.left(4), strDate.mid(4, 2), strDate.mid(6, 2));
}

// TM "101530.25" as "10:15:30.25"; anything else as it is.
QString readableTime(const QString& strTime)
{
    if (strTime.size() < 6 || !allDigits(strTime.left(6)))
        return strTime;
    return QStringLiteral("%1:%2:%3").arg(strTime.left(2), strTime.mid(2, 2), strTime.mid(4));
}

// Pixel Spacing holds the distance between rows, then between columns, in mm.
QString readableSpacing(DcmDataset& data)
{
    const QString strRows = attributeText(data, DCM_PixelSpacing, false, 0);
    const QString strColumns = attributeText(data, DCM_PixelSpacing, false, 1);
    if (strRows.isEmpty() || strColumns.isEmpty())
        return strRows;
    return QStringLiteral("%1 mm x %2 mm (row x column)").arg(strRows, strColumns);
}

// The width of a pixel (the distance between columns) in mm: from Pixel Spacing, else from
// Imager Pixel Spacing (projection images measured at the detector); 0 without either.
double pixelWidthMm(DcmDataset& data)
{
    for (const DcmTagKey& key : {DCM_PixelSpacing, DCM_ImagerPixelSpacing}) {
        Float64 dWidth = 0.0;
        if (data.findAndGetFloat64(key, dWidth, 1).good() && CVXPixelSize::isUsable(dWidth))
            return dWidth;
    }
    return 0.0;
}

// DCMTK's intermediate pixel data, frame after frame, as grey levels moved up by nOffset:
// Grayscale8 for samples of 8 bits, Grayscale16 for 16.
template <typename Sample, typename Level>
QVector<QImage> levelsOfFrames(const void* pData, const QSize& size, int nFrames, int nOffset)
{
    const QImage::Format format = sizeof(Level) == 1 ? QImage::Format_Grayscale8 : QImage::Format_Grayscale16;
    const auto* pSamples = static_cast<const Sample*>(pData);
    QVector<QImage> frames;
    for (int nFrame = 0; nFrame < nFrames; ++nFrame) {
        QImage levels(size, format);
        if (levels.isNull())
            return {};
        for (int y = 0; y < size.height(); ++y) {
            auto* pLine = reinterpret_cast<Level*>(levels.scanLine(y));
            for (int x = 0; x < size.width(); ++x)
                pLine[x] = Level(int(*pSamples++) + nOffset);
        }
        frames.append(levels);
    }
    return frames;
}

// A decimal string attribute's value, or dDefault where it has none.
double decimalAttribute(DcmDataset& data, const DcmTagKey& key, double dDefault)
{
    Float64 dValue = 0.0;
    return data.findAndGetFloat64(key, dValue).good() ? double(dValue) : dDefault;
}

} // namespace

CVXDicomFileReader::CVXDicomFileReader(const QString& strPath)
    : m_strPath(strPath)
    , m_pFile(std::make_unique<DcmFileFormat>())
{
    readHeader();
}

CVXDicomFileReader::~CVXDicomFileReader() = default;

bool CVXDicomFileReader::isDicomFile(const QString& strPath)
{
    if (QFileInfo(strPath).suffix().compare(QStringLiteral("dcm"), Qt::CaseInsensitive) == 0)
        return true;
    QFile file(strPath);
    if (!file.open(QIODevice::ReadOnly) || !file.seek(kPreambleLength))
        return false;
    return file.read(kMagic.size()) == kMagic;
}

bool CVXDicomFileReader::isReadable() const
{
    return m_strError.isEmpty();
}

QString CVXDicomFileReader::errorString() const
{
    return m_strError;
}

QSize CVXDicomFileReader::frameSize() const
{
    return m_frameSize;
}

qint64 CVXDicomFileReader::decodedBytes() const
{
    const qint64 nBytesPerPixel = qMax(kDisplayBytesPerPixel, m_nSamplesPerPixel * ((m_nBitsAllocated + 7) / 8));
    // At most 2^32 pixels a frame and 2^31 frames: the pixels alone still fit.
    const qint64 nPixels = qint64(m_frameSize.width()) * m_frameSize.height() * m_nFrames;
    return qMin(nPixels, kBytesCap / nBytesPerPixel) * nBytesPerPixel;
}

void CVXDicomFileReader::readHeader()
{
    // Large values such as the pixel data stay on disk until they are asked for.
    const OFCondition loaded = m_pFile->loadFile(QFile::encodeName(m_strPath).constData());
    if (loaded.bad()) {
        m_strError = tr("The file is not a readable DICOM file (%1).").arg(conditionText(loaded));
        return;
    }
    DcmDataset* pData = m_pFile->getDataset();
    Uint16 nRows = 0;
    Uint16 nColumns = 0;
    Uint16 nSamples = 1;
    Uint16 nBitsAllocated = 0;
    Sint32 nFrames = 1;
    if (!pData->tagExists(DCM_PixelData) || pData->findAndGetUint16(DCM_Rows, nRows).bad()
        || pData->findAndGetUint16(DCM_Columns, nColumns).bad()) {
        m_strError = tr("The DICOM file holds no image (it has no pixel data).");
        return;
    }
    pData->findAndGetUint16(DCM_SamplesPerPixel, nSamples);
    pData->findAndGetUint16(DCM_BitsAllocated, nBitsAllocated);
    if (pData->findAndGetSint32(DCM_NumberOfFrames, nFrames).bad())
        nFrames = 1;
    // Grey images have one sample per pixel, colour ones three (four in retired colour
    // models). Any other count is damage; compressed data has no length to betray it, and
    // the decoders would make room for that many samples of every pixel.
    if (nSamples != 1 && nSamples != 3 && nSamples != 4) {
        m_strError = tr("The DICOM file's image has %1 samples per pixel.").arg(nSamples);
        return;
    }
    if (nRows == 0 || nColumns == 0 || nFrames < 1) {
        m_strError = tr("The DICOM file's image has no pixels (%1 x %2 pixels, %3 frames).")
                         .arg(nColumns)
                         .arg(nRows)
                         .arg(nFrames);
        return;
    }
    m_frameSize = QSize(nColumns, nRows);
    m_nFrames = nFrames;
    m_nSamplesPerPixel = nSamples;
    m_nBitsAllocated = nBitsAllocated;
}

void CVXDicomFileReader::checkPixelDataLength()
{
    // Uncompressed pixels must all be there; the toolkit would fill missing ones with black.
    DcmDataset* pData = m_pFile->getDataset();
    DcmElement* pPixels = nullptr;
    if (DcmXfer(pData->getOriginalXfer()).isEncapsulated() || pData->findAndGetElement(DCM_PixelData, pPixels).bad())
        return;
    const qint64 nNeeded = qint64(m_frameSize.width()) * m_frameSize.height() * m_nFrames * m_nSamplesPerPixel
                           * m_nBitsAllocated / 8;
    if (pPixels->getLength() < nNeeded) {
        m_strError = tr("The DICOM file's pixel data is incomplete (%1 of %2 bytes).")
                         .arg(pPixels->getLength())
                         .arg(nNeeded);
    }
}

QVector<CVXImagePage> CVXDicomFileReader::readFrames(bool bLevels)
{
    if (!isReadable())
        return {};
    checkPixelDataLength();
    if (!isReadable())
        return {};
    registerDecoders();
    int nOffset = 0;
    // Read while the pixel data is still there: the display image may let go of it.
    const QVector<QImage> levels = bLevels ? readLevels(nOffset) : QVector<QImage>();
    DcmDataset* pData = m_pFile->getDataset();
    DicomImage image(m_pFile.get(), pData->getOriginalXfer(), CIF_MayDetachPixelData);
    if (image.getStatus() != EIS_Normal) {
        m_strError = tr("The DICOM image cannot be decoded (%1).")
                         .arg(QString::fromLatin1(DicomImage::getString(image.getStatus())));
        return {};
    }
    const bool bColour = !image.isMonochrome();
    if (!bColour) {
        // The window the file was made with; its whole range where it names none.
        if (image.getWindowCount() > 0)
            image.setWindow(0);
        else
            image.setMinMaxWindow();
    }
    const QSize size(int(image.getWidth()), int(image.getHeight()));
    QVector<CVXImagePage> frames;
    for (unsigned long nFrame = 0; nFrame < image.getFrameCount(); ++nFrame) {
        const void* pOutput = image.getOutputData(8, nFrame, 0);
        const QImage frame = pOutput ? imageFromOutput(pOutput, size, bColour) : QImage();
        if (frame.isNull()) {
            m_strError = tr("Frame %1 of the DICOM image cannot be decoded.").arg(nFrame + 1);
            return {};
        }
        frames.append({frame, levels.value(int(nFrame))});
    }
    labelFrames(frames);
    if (!levels.isEmpty())
        labelCalibration(frames, nOffset, image);
    return frames;
}

QVector<QImage> CVXDicomFileReader::readLevels(int& nOffset)
{
    DcmDataset* pData = m_pFile->getDataset();
    DicomImage stored(m_pFile.get(), pData->getOriginalXfer(), CIF_IgnoreModalityTransformation);
    const DiPixel* pPixels = stored.getStatus() == EIS_Normal && stored.isMonochrome() ? stored.getInterData() : nullptr;
    if (!pPixels)
        return {};
    const QSize size(int(stored.getWidth()), int(stored.getHeight()));
    const int nFrames = int(stored.getFrameCount());
    // Every frame's every pixel must be there before any is read.
    if (pPixels->getCount() < (unsigned long)(nFrames) * size.width() * size.height())
        return {};
    const void* pSamples = pPixels->getData();
    switch (pPixels->getRepresentation()) {
    case EPR_Uint8:
        return levelsOfFrames<Uint8, uchar>(pSamples, size, nFrames, nOffset = 0);
    case EPR_Sint8:
        return levelsOfFrames<Sint8, uchar>(pSamples, size, nFrames, nOffset = 128);
    case EPR_Uint16:
        return levelsOfFrames<Uint16, quint16>(pSamples, size, nFrames, nOffset = 0);
    case EPR_Sint16:
        return levelsOfFrames<Sint16, quint16>(pSamples, size, nFrames, nOffset = 32768);
    default:
        // Wider values have no grey format to live in; the pictures are shown as they are.
        return {};
    }
}

void CVXDicomFileReader::labelCalibration(QVector<CVXImagePage>& pages, int nOffset, DicomImage& image) const
{
    DcmDataset& data = *m_pFile->getDataset();
    CVXDisplayRange range;
    range.setRescale(decimalAttribute(data, DCM_RescaleSlope, 1.0), decimalAttribute(data, DCM_RescaleIntercept, 0.0));
    // The levels start nOffset above the stored values.
    const QString strNote = range.rescaleNote();
    range.setRescale(range.slope(), range.intercept() - nOffset * range.slope());
    const QString strUnits = attributeText(data, DCM_Units, false);
    const QString strRescaleType = attributeText(data, DCM_RescaleType, false);
    // "US" is DICOM's unspecified rescale type.
    range.setUnit(!strUnits.isEmpty() || strRescaleType == QLatin1String("US") ? strUnits : strRescaleType);
    // The window the pictures show, in the rescaled values as the file gives it; DICOM's
    // linear window reaches black and white half a level inside its width.
    double dCentre = 0.0;
    double dWidth = 0.0;
    if (image.getWindowCount() > 0 && image.getWindow(dCentre, dWidth))
        range.setRange(dCentre - 0.5 - (dWidth - 1.0) / 2.0, dCentre - 0.5 + (dWidth - 1.0) / 2.0);
    for (CVXImagePage& page : pages) {
        range.writeTo(page.picture);
        CVXImageProvenance::setKey(page.picture, QString::fromLatin1(CVXDisplayRange::RescaleNote), strNote);
    }
}

void CVXDicomFileReader::labelFrames(QVector<CVXImagePage>& frames) const
{
    DcmDataset& data = *m_pFile->getDataset();
    const bool bUtf8 = attributeText(data, DCM_SpecificCharacterSet, false).contains(QLatin1String("ISO_IR 192"));
    const QVector<QPair<const char*, QString>> attributes = {
        {CVXImageProvenance::PatientId, attributeText(data, DCM_PatientID, bUtf8)},
        {CVXImageProvenance::AcquisitionDate, readableDate(attributeText(data, DCM_AcquisitionDate, false))},
        {CVXImageProvenance::AcquisitionTime, readableTime(attributeText(data, DCM_AcquisitionTime, false))},
        {CVXImageProvenance::Modality, attributeText(data, DCM_Modality, false)},
        {CVXImageProvenance::PixelSpacing, readableSpacing(data)},
        {CVXImageProvenance::StudyInstanceUid, attributeText(data, DCM_StudyInstanceUID, false)},
        {CVXImageProvenance::SeriesInstanceUid, attributeText(data, DCM_SeriesInstanceUID, false)},
        {CVXImageProvenance::SopInstanceUid, attributeText(data, DCM_SOPInstanceUID, false)},
        {CVXImageProvenance::SopClassUid, attributeText(data, DCM_SOPClassUID, false)},
    };
    const double dPixelWidth = pixelWidthMm(data);
    for (CVXImagePage& frame : frames) {
        for (const auto& attribute : attributes)
            CVXImageProvenance::setKey(frame.picture, QString::fromLatin1(attribute.first), attribute.second);
        if (dPixelWidth > 0.0)
            CVXPixelSize::set(frame.picture, dPixelWidth);
    }
}

namespace {

// DCMTK keeps registered decoders until they are cleaned up; doing that at exit keeps
// leak checkers quiet about them.
struct DecoderRegistration
{
    DecoderRegistration()
    {
        DJDecoderRegistration::registerCodecs();
        DJLSDecoderRegistration::registerCodecs();
        DcmRLEDecoderRegistration::registerCodecs();
    }
    ~DecoderRegistration()
    {
        DcmRLEDecoderRegistration::cleanup();
        DJLSDecoderRegistration::cleanup();
        DJDecoderRegistration::cleanup();
    }
};

} // namespace

void CVXDicomFileReader::registerDecoders()
{
    static const DecoderRegistration s_registration;
}
