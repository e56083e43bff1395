#pragma once

#include "VXImagePage.h"

#include <QCoreApplication>
#include <QImage>
#include <QSize>
#include <QString>
#include <QVector>

#include <memory>

class DcmFileFormat;
class DicomImage;

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
    // With bLevels, the frames of grey images of up to 16 bits also bring their stored
    // values as levels, and the pictures carry the rescale to the file's unit and the
    // window they are shown through (CVXDisplayRange).
    QVector<CVXImagePage> readFrames(bool bLevels);

private:
    // The stored values of every frame, unsigned: signed ones are moved up by half their
    // range (nOffset). Empty for colour images and values wider than 16 bits.
    QVector<QImage> readLevels(int& nOffset);
    // The rescale, unit and display window, as CVXDisplayRange keys on the pictures.
    void labelCalibration(QVector<CVXImagePage>& pages, int nOffset, DicomImage& image) const;
    void readHeader();
    void checkPixelDataLength();
    void labelFrames(QVector<CVXImagePage>& frames) const;
    static void registerDecoders();

    QString m_strPath;
    std::unique_ptr<DcmFileFormat> m_pFile;
    QString m_strError;
    QSize m_frameSize;
    int m_nFrames = 0;
    int m_nSamplesPerPixel = 0;
    int m_nBitsAllocated = 0;
};
