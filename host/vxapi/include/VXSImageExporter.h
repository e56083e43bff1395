#pragma once

#include "VXStatus.h"
#include "VxApiGlobal.h"

#include <QCoreApplication>
#include <QImage>
#include <QString>

// Writes raster images to files. The format follows the file name's suffix: bmp, jpg
// (or jpeg), png, tif (or tiff), eps, emf, wmf and dcm, all from the same raster.
// Writes are atomic: the file appears whole or not at all, and a failed write
// leaves an existing file untouched.
class VXAPI_EXPORT CVXSImageExporter
{
    Q_DECLARE_TR_FUNCTIONS(CVXSImageExporter)
public:
    // How TIFF files are compressed; both are lossless.
    enum class TiffCompression { Deflate, Lzw };

    CVXSImageExporter();
    virtual ~CVXSImageExporter();

    tag_estatus saveImage(QImage& image, QString& strFilePath);
    // Writes bytes already encoded (a page drawn by a vector writer, say) the same way.
    tag_estatus saveData(const QByteArray& data, const QString& strFilePath);

    // After a failed saveImage or saveData: the file and what went wrong, in the system's
    // words where a system call failed ("Could not write /data/fig.png: No such file or
    // directory"); empty after a success. It adds to the status's own text.
    QString errorText() const;

    // Deflate unless set otherwise.
    void setTiffCompression(TiffCompression eCompression);
    TiffCompression tiffCompression() const;
    // The resolution written into the file, in dots per inch; 0, the default, keeps the
    // image's own.
    void setResolution(int nDpi);
    int resolution() const;

    // Whether saveImage can write files with this suffix (lower case, no dot).
    static bool isWritableSuffix(const QString& strSuffix);

private:
    // The image with the resolution set, if one is.
    QImage withResolution(const QImage& image) const;
    // Keeps the text for errorText(); strReason says why, after the file's name.
    tag_estatus fail(tag_estatus status, const QString& strFilePath, const QString& strReason);

    QString m_strErrorText;
    TiffCompression m_eTiffCompression = TiffCompression::Deflate;
    int m_nDpi = 0;
};
