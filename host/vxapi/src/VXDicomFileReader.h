#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QSize>
#include <QString>
#include <QVector>

#include <memory>

class DcmFileFormat;

// Reads DICOM files: 8 to 16 bit grey shown through the file's window (or its whole
// range when it names none), RGB and YBR colour, uncompressed or compressed with the
// JPEG, JPEG-LS and RLE transfer syntaxes, every frame of a multi-frame file. The
// header is read first, so the size can be checked before any pixel is decoded.
class CVXDicomFileReader
{
    Q_DECLARE_TR_FUNCTIONS(CVXDicomFileReader)
public:
    explicit CVXDicomFileReader(const QString& strPath);
    ~CVXDicomFileReader();

    // Whether the file starts like a DICOM file ("DICM" after the 128-byte preamble) or
    // is named like one.
    static bool isDicomFile(const QString& strPath);

    // False when the header could not be read or holds no image; errorString() says why.
    bool isReadable() const;
    QString errorString() const;
    QSize frameSize() const;
    // The memory the frames take once decoded, as the header tells.
    qint64 decodedBytes() const;
    // Every frame ready for display, carrying the file's study, series and instance UIDs,
    // animal, acquisition date and time, modality and pixel spacing as text keys
    // (CVXImageProvenance); empty when decoding fails, errorString() then says why.
    QVector<QImage> readFrames();

private:
    void readHeader();
    void checkPixelDataLength();
    void labelFrames(QVector<QImage>& frames) const;
    static void registerDecoders();

    QString m_strPath;
    std::unique_ptr<DcmFileFormat> m_pFile;
    QString m_strError;
    QSize m_frameSize;
    int m_nFrames = 0;
    int m_nSamplesPerPixel = 0;
    int m_nBitsAllocated = 0;
};
