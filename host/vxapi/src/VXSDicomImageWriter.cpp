#include "VXSDicomImageWriter.h"

#include "VXSPixelPacking.h"

#include <QDateTime>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcdeftag.h>
#include <dcmtk/dcmdata/dcfilefo.h>
#include <dcmtk/dcmdata/dcostrmb.h>
#include <dcmtk/dcmdata/dcpixel.h>
#include <dcmtk/dcmdata/dcuid.h>

#include <limits>
#include <memory>

namespace {

// Rows and Columns are unsigned 16-bit.
constexpr int kMaxSide = 65535;
constexpr int kStreamChunk = 1 << 20;

struct Attribute {
    DcmTagKey key;
    QByteArray value; // empty for type 2 attributes the layout has no value for
};

QByteArray newUid(const char* pRoot)
{
    char uid[100];
    return QByteArray(dcmGenerateUniqueIdentifier(uid, pRoot));
}

QVector<Attribute> describingAttributes()
{
    const QDateTime now = QDateTime::currentDateTime();
    const QByteArray date = now.toString(QStringLiteral("yyyyMMdd")).toLatin1();
    const QByteArray time = now.toString(QStringLiteral("HHmmss")).toLatin1();
    return {
        // SOP Common
        {DCM_SpecificCharacterSet, "ISO_IR 100"},
        {DCM_SOPClassUID, UID_SecondaryCaptureImageStorage},
        {DCM_SOPInstanceUID, newUid(SITE_INSTANCE_UID_ROOT)},
        {DCM_InstanceCreationDate, date},
        {DCM_InstanceCreationTime, time},
        // Patient
        {DCM_PatientName, {}},
        {DCM_PatientID, {}},
        {DCM_PatientBirthDate, {}},
        {DCM_PatientSex, {}},
        // General Study
        {DCM_StudyInstanceUID, newUid(SITE_STUDY_UID_ROOT)},
        {DCM_StudyDate, date},
        {DCM_StudyTime, time},
        {DCM_ReferringPhysicianName, {}},
        {DCM_StudyID, {}},
        {DCM_AccessionNumber, {}},
        // General Series
        {DCM_Modality, "OT"},
        {DCM_SeriesInstanceUID, newUid(SITE_SERIES_UID_ROOT)},
        {DCM_SeriesNumber, "1"},
        {DCM_Laterality, {}},
        // SC Equipment
        {DCM_ConversionType, "WSD"},
        // General Image
        {DCM_InstanceNumber, "1"},
        {DCM_PatientOrientation, {}},
        {DCM_ContentDate, date},
        {DCM_ContentTime, time},
        {DCM_ImageType, "DERIVED\\SECONDARY"},
        // SC Image
        {DCM_DateOfSecondaryCapture, date},
        {DCM_TimeOfSecondaryCapture, time},
        // Image Pixel
        {DCM_PhotometricInterpretation, "RGB"},
    };
}

OFCondition putPixelModule(DcmDataset& dataset, const QImage& rgb32)
{
    const Uint16 nBits = 8;
    OFCondition result = dataset.putAndInsertUint16(DCM_SamplesPerPixel, 3);
    if (result.good())
        result = dataset.putAndInsertUint16(DCM_PlanarConfiguration, 0);
    if (result.good())
        result = dataset.putAndInsertUint16(DCM_Rows, Uint16(rgb32.height()));
    if (result.good())
        result = dataset.putAndInsertUint16(DCM_Columns, Uint16(rgb32.width()));
    if (result.good())
        result = dataset.putAndInsertUint16(DCM_BitsAllocated, nBits);
    if (result.good())
        result = dataset.putAndInsertUint16(DCM_BitsStored, nBits);
    if (result.good())
        result = dataset.putAndInsertUint16(DCM_HighBit, nBits - 1);
    if (result.good())
        result = dataset.putAndInsertUint16(DCM_PixelRepresentation, 0);
    if (result.bad())
        return result;

    // The pixels are packed straight into the element's own buffer; an odd length gets
    // the zero byte that DICOM pads values with.
    const Uint32 nRowBytes = Uint32(rgb32.width()) * 3;
    const Uint32 nPixelBytes = nRowBytes * Uint32(rgb32.height());
    auto pPixelData = std::make_unique<DcmPixelData>(DcmTag(DCM_PixelData, EVR_OB));
    Uint8* pBytes = nullptr;
    result = pPixelData->createUint8Array(nPixelBytes + (nPixelBytes & 1), pBytes);
    if (result.bad())
        return result;
    for (int y = 0; y < rgb32.height(); ++y)
        vxsPackRgbRow(rgb32, y, pBytes + Uint32(y) * nRowBytes);
    if (nPixelBytes & 1)
        pBytes[nPixelBytes] = 0;
    result = dataset.insert(pPixelData.get());
    if (result.good())
        pPixelData.release(); // the dataset owns it now
    return result;
}

OFCondition fillDataset(DcmDataset& dataset, const QImage& rgb32)
{
    for (const Attribute& attribute : describingAttributes()) {
        const OFCondition result = dataset.putAndInsertString(attribute.key, attribute.value.constData());
        if (result.bad())
            return result;
    }
    return putPixelModule(dataset, rgb32);
}

// DCMTK writes in chunks and asks for the filled buffer to be taken whenever it is full.
OFCondition writeToMemory(DcmFileFormat& fileFormat, qint64 nExpectedSize, QByteArray& data)
{
    QByteArray chunk(kStreamChunk, '\0');
    DcmOutputBufferStream stream(chunk.data(), chunk.size());
    const auto takeBuffer = [&] {
        void* pBuffer = nullptr;
        offile_off_t nLength = 0;
        stream.flushBuffer(pBuffer, nLength);
        data.append(static_cast<const char*>(pBuffer), int(nLength));
    };
    data.clear();
    data.reserve(int(qMin<qint64>(nExpectedSize, std::numeric_limits<int>::max())));
    fileFormat.transferInit();
    OFCondition result = EC_StreamNotifyClient;
    while (result == EC_StreamNotifyClient) {
        result = fileFormat.write(stream, EXS_LittleEndianExplicit, EET_ExplicitLength, nullptr,
                                  EGL_recalcGL, EPD_noChange, 0, 0, 0, EWM_fileformat);
        takeBuffer();
    }
    fileFormat.transferEnd();
    stream.flush();
    takeBuffer();
    return result;
}

tag_estatus statusFromCondition(const OFCondition& condition)
{
    if (condition.good())
        return eSTATUS_SUCCESS;
    return condition == EC_MemoryExhausted ? eSTATUS_OUT_OF_MEMORY : eSTATUS_WRITE_FAILED;
}

} // namespace

tag_estatus CVXSDicomImageWriter::encode(const QImage& image, QByteArray& data) const
{
    // The pixel data's length is an even 32-bit number.
    const qint64 nPixelBytes = qint64(image.width()) * image.height() * 3;
    if (qMax(image.width(), image.height()) > kMaxSide || nPixelBytes >= std::numeric_limits<quint32>::max())
        return eSTATUS_IMAGE_TOO_LARGE;
    DcmFileFormat fileFormat;
    OFCondition result = fillDataset(*fileFormat.getDataset(), image.convertToFormat(QImage::Format_RGB32));
    if (result.good())
        result = writeToMemory(fileFormat, nPixelBytes + kStreamChunk, data);
    return statusFromCondition(result);
}
