#pragma once

#include "VXImagePage.h"
#include "VxApiGlobal.h"

#include <QCoreApplication>
#include <QImage>
#include <QString>
#include <QVector>

class QImageReader;

// Reads image files for the image windows. Anything that cannot be shown (missing,
// empty, corrupt, truncated or unsupported files, images too large for memory) is
// refused with the reason, never half-opened.
class VXAPI_EXPORT CVXImageFileReader
{
    Q_DECLARE_TR_FUNCTIONS(CVXImageFileReader)
public:
    // Images whose pixels would take more memory than this are refused before decoding.
    static constexpr qint64 kMaxDecodedBytes = qint64(512) * 1024 * 1024;

    // Every page of the file (one for most formats; all of a multi-page TIFF, all frames
    // of a DICOM file), ready for display. Empty when the file cannot be read; strError then says why.
    // Each page names its source (CVXImageProvenance): the file name, the frame number in
    // a multi-page file and, for DICOM, the study, series, instance and animal.
    static QVector<QImage> read(const QString& strPath, QString& strError);
    // The same pages with the grey levels behind their pictures, where there are any, for
    // the image windows to set display ranges on. The pictures also carry the rescale and
    // unit the file gives (CVXDisplayRange).
    static QVector<CVXImagePage> readWithLevels(const QString& strPath, QString& strError);
    // The filter offered by the open dialogs.
    static QString dialogFilter();
    // Whether the file is of a kind the reader knows, by its suffix or, for files without
    // one it knows, by its content; says nothing about whether it reads cleanly.
    static bool isImageKind(const QString& strPath);
    // Whether the file's images, as far as its headers tell, fit within kMaxDecodedBytes;
    // strError says why not.
    static bool fitsInMemory(const QString& strPath, QString& strError);
    // The size of the file's first image as its header tells, before any pixel is decoded;
    // invalid when the header tells none.
    static QSize headerSize(const QString& strPath);

private:
    static QVector<CVXImagePage> readFile(const QString& strPath, QString& strError, bool bLevels);
    static QVector<CVXImagePage> refuseDamaged(QString& strError);
    static void labelPages(QVector<CVXImagePage>& pages, const QString& strFileName);
    // The pixel sizes a file states, one per page, as the pages' "Pixel Size" keys.
    static void labelPixelSizes(QVector<CVXImagePage>& pages, const QVector<double>& sizes);
    static QVector<CVXImagePage> readDicom(const QString& strPath, QString& strError, bool bLevels);
    static QVector<CVXImagePage> readPages(QImageReader& reader, QString& strError, bool bLevels);
    // The memory the pages take once decoded, as far as the headers tell.
    static qint64 decodedBytes(QImageReader& reader, int nPages);
    static qint64 pageBytes(const QImageReader& reader);
    static QString tooLargeError(const QSize& size, qint64 nBytes);
};
