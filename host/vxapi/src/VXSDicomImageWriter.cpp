#include "VXSDicomImageWriter.h"

#include "VXImageProvenance.h"
#include "VXSExportMetadata.h"
#include "VXSExportText.h"
#include "VXSPixelPacking.h"

#include <QDateTime>
#include <QRegularExpression>

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcdeftag.h>
#include <dcmtk/dcmdata/dcfilefo.h>
#include <dcmtk/dcmdata/dcostrmb.h>
#include <dcmtk/dcmdata/dcpixel.h>
#include <dcmtk/dcmdata/dcuid.h>

#include <algorithm>
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

// Value lengths of the text attributes that say where the image came from: Derivation
// Description is ST, Image Comments LT. Longer texts are cut and end in a note saying so.
constexpr int kDerivationDescriptionMax = 1024;
constexpr int kImageCommentsMax = 10240;
constexpr int kUidMax = 64;

// A DICOM image the exported one was made from.
struct SourceReference {
    QString strClassUid;
    QString strInstanceUid;
};

QString key(const char* pKey)
{
    return QString::fromLatin1(pKey);
}

bool isUid(const QString& strUid)
{
    static const QRegularExpression uidPattern(QStringLiteral("^(0|[1-9][0-9]*)(\\.(0|[1-9][0-9]*))*$"));
    return strUid.size() <= kUidMax && uidPattern.match(strUid).hasMatch();
}

// Every DICOM source with a valid SOP Class and Instance UID, each once.
QVector<SourceReference> sourceReferences(const QImage& image)
{
    QVector<SourceReference> references;
    QStringList instances;
    for (const QString& strPrefix : CVXSExportMetadata::sourcePrefixes(image)) {
        const SourceReference reference {image.text(strPrefix + key(CVXImageProvenance::SopClassUid)),
                                         image.text(strPrefix + key(CVXImageProvenance::SopInstanceUid))};
        if (isUid(reference.strClassUid) && isUid(reference.strInstanceUid)
            && !instances.contains(reference.strInstanceUid)) {
            references << reference;
            instances << reference.strInstanceUid;
        }
    }
    return references;
}

bool fitsLatin1(const QString& strText)
{
    return std::all_of(strText.cbegin(), strText.cend(), [](QChar c) { return c.unicode() <= 0xFF; });
}

// The text in the data set's character set: Latin-1 where it suffices, otherwise UTF-8.
QByteArray encoded(const QByteArray& utf8, bool bUtf8)
{
    return bUtf8 ? utf8 : QString::fromUtf8(utf8).toLatin1();
}

OFCondition putSourceReferences(DcmDataset& dataset, const QVector<SourceReference>& references)
{
    OFCondition result = EC_Normal;
    for (const SourceReference& reference : references) {
        DcmItem* pItem = nullptr;
        // -2 appends a new item.
        result = dataset.findOrCreateSequenceItem(DCM_SourceImageSequence, pItem, -2);
        if (result.good())
            result = pItem->putAndInsertString(DCM_ReferencedSOPClassUID, reference.strClassUid.toLatin1().constData());
        if (result.good())
            result = pItem->putAndInsertString(DCM_ReferencedSOPInstanceUID,
                                               reference.strInstanceUid.toLatin1().constData());
        if (result.bad())
            return result;
    }
    return result;
}

// Where the image came from: Derivation Description, Image Comments with every key, and
// the Source Image Sequence referencing each DICOM source.
OFCondition putProvenance(DcmDataset& dataset, const QImage& image)
{
    const QStringList lines = CVXSExportText::lines(image);
    if (lines.isEmpty())
        return EC_Normal;
    const QString strDescription = CVXSExportMetadata::description(image);
    const QString strComments = lines.join(QStringLiteral("\r\n"));
    const bool bUtf8 = !fitsLatin1(strDescription + strComments);
    OFCondition result = dataset.putAndInsertString(DCM_SpecificCharacterSet, bUtf8 ? "ISO_IR 192" : "ISO_IR 100");
    if (result.good() && !strDescription.isEmpty()) {
        result = dataset.putAndInsertString(
            DCM_DerivationDescription,
            encoded(CVXSExportText::fitted(CVXSExportText::singleLine(strDescription), kDerivationDescriptionMax), bUtf8)
                .constData());
    }
    if (result.good()) {
        result = dataset.putAndInsertString(DCM_ImageComments,
                                            encoded(CVXSExportText::fitted(strComments, kImageCommentsMax), bUtf8).constData());
    }
    if (result.good())
        result = putSourceReferences(dataset, sourceReferences(image));
    return result;
}

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
    const OFCondition result = putProvenance(dataset, rgb32);
    return result.good() ? putPixelModule(dataset, rgb32) : result;
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
