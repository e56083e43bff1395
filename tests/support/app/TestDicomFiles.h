#pragma once

#include <dcmtk/dcmdata/dctagkey.h>
#include <dcmtk/dcmdata/dcxfer.h>

#include <QSize>
#include <QString>
#include <QVector>

#include <utility>
#include <vector>

// DICOM files written with the DICOM toolkit, as the host tests need them.
class CTestDicomFiles
{
public:
    // What the header announces; the pixel data is given on its own, so a header may
    // claim more than is there.
    struct SHeader
    {
        int nSamples = 1;
        int nBits = 8;
        QString strPhotometric = QStringLiteral("MONOCHROME2");
        // Written as it is when not 1, so any count the header can hold can be claimed.
        qint64 nFrames = 1;
        QSize size;
        QString strWindowCentre;
        QString strWindowWidth;
        // Further string attributes, written as given (after the ones above, so they may
        // replace them, such as the SOP Instance UID).
        std::vector<std::pair<DcmTagKey, QByteArray>> attributes;
    };

    // A secondary capture image whose pixel data holds these samples in file order
    // (frame, row, column, sample), 8 or 16 bits each as the header says; without
    // samples it has no pixel data. Compressed transfer syntaxes (JPEG baseline for
    // 8 bits, RLE) go through the toolkit's own encoders.
    static bool write(const QString& strPath, const SHeader& header, const QVector<quint16>& samples,
                      E_TransferSyntax transfer = EXS_LittleEndianExplicit);
    // The frame size the file's header announces; invalid when it cannot be read.
    static QSize announcedSize(const QString& strPath);
    static E_TransferSyntax transferSyntaxOf(const QString& strPath);
};
