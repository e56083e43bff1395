#include "TestDicomFiles.h"

#include <dcmtk/dcmdata/dcdeftag.h>
#include <dcmtk/dcmdata/dcfilefo.h>
#include <dcmtk/dcmdata/dcrleerg.h>
#include <dcmtk/dcmdata/dcuid.h>
#include <dcmtk/dcmjpeg/djencode.h>
#include <dcmtk/dcmjpeg/djrploss.h>

#include <QFile>

namespace {

// The toolkit keeps registered encoders until they are cleaned up; doing that at exit
// keeps leak checkers quiet about them.
struct EncoderRegistration
{
    EncoderRegistration()
    {
        // No new instance UID for lossy compression: the same description gives the same bytes.
        DJEncoderRegistration::registerCodecs(ECC_lossyYCbCr, EUC_never);
        DcmRLEEncoderRegistration::registerCodecs();
    }
    ~EncoderRegistration()
    {
        DcmRLEEncoderRegistration::cleanup();
        DJEncoderRegistration::cleanup();
    }
};

void registerEncoders()
{
    static const EncoderRegistration s_registration;
}

void insertHeader(DcmDataset* pData, const CTestDicomFiles::SHeader& header)
{
    pData->putAndInsertString(DCM_SOPClassUID, UID_SecondaryCaptureImageStorage);
    // The same for every file, so the same description always gives the same bytes.
    pData->putAndInsertString(DCM_SOPInstanceUID, SITE_INSTANCE_UID_ROOT ".1");
    pData->putAndInsertString(DCM_Modality, "OT");
    pData->putAndInsertUint16(DCM_Rows, Uint16(header.size.height()));
    pData->putAndInsertUint16(DCM_Columns, Uint16(header.size.width()));
    pData->putAndInsertUint16(DCM_SamplesPerPixel, Uint16(header.nSamples));
    pData->putAndInsertString(DCM_PhotometricInterpretation, header.strPhotometric.toLatin1().constData());
    pData->putAndInsertUint16(DCM_BitsAllocated, Uint16(header.nBits));
    pData->putAndInsertUint16(DCM_BitsStored, Uint16(header.nBits));
    pData->putAndInsertUint16(DCM_HighBit, Uint16(header.nBits - 1));
    pData->putAndInsertUint16(DCM_PixelRepresentation, 0);
    if (header.nSamples > 1)
        pData->putAndInsertUint16(DCM_PlanarConfiguration, 0);
    if (header.nFrames != 1)
        pData->putAndInsertString(DCM_NumberOfFrames, QByteArray::number(header.nFrames).constData());
    if (!header.strWindowCentre.isEmpty()) {
        pData->putAndInsertString(DCM_WindowCenter, header.strWindowCentre.toLatin1().constData());
        pData->putAndInsertString(DCM_WindowWidth, header.strWindowWidth.toLatin1().constData());
    }
    for (const auto& attribute : header.attributes)
        pData->putAndInsertString(attribute.first, attribute.second.constData());
}

void insertPixelData(DcmDataset* pData, int nBits, const QVector<quint16>& samples)
{
    if (nBits != 8) {
        pData->putAndInsertUint16Array(DCM_PixelData, samples.constData(), unsigned(samples.size()));
        return;
    }
    QVector<Uint8> bytes;
    bytes.reserve(samples.size());
    for (const quint16 nValue : samples)
        bytes << Uint8(nValue);
    pData->putAndInsertUint8Array(DCM_PixelData, bytes.constData(), unsigned(bytes.size()));
}

} // namespace

bool CTestDicomFiles::write(const QString& strPath, const SHeader& header, const QVector<quint16>& samples,
                            E_TransferSyntax transfer)
{
    DcmFileFormat file;
    DcmDataset* pData = file.getDataset();
    insertHeader(pData, header);
    if (!samples.isEmpty())
        insertPixelData(pData, header.nBits, samples);
    if (DcmXfer(transfer).isEncapsulated()) {
        registerEncoders();
        const DJ_RPLossy lossy;
        if (pData->chooseRepresentation(transfer, &lossy).bad() || !pData->canWriteXfer(transfer))
            return false;
    }
    return file.saveFile(QFile::encodeName(strPath).constData(), transfer).good();
}

QSize CTestDicomFiles::announcedSize(const QString& strPath)
{
    DcmFileFormat file;
    Uint16 nRows = 0;
    Uint16 nColumns = 0;
    if (file.loadFile(QFile::encodeName(strPath).constData()).bad()
        || file.getDataset()->findAndGetUint16(DCM_Rows, nRows).bad()
        || file.getDataset()->findAndGetUint16(DCM_Columns, nColumns).bad())
        return {};
    return QSize(nColumns, nRows);
}

E_TransferSyntax CTestDicomFiles::transferSyntaxOf(const QString& strPath)
{
    DcmFileFormat file;
    if (file.loadFile(QFile::encodeName(strPath).constData()).bad())
        return EXS_Unknown;
    return file.getDataset()->getOriginalXfer();
}
