#pragma once

#include "VXStatus.h"
#include "VxApiGlobal.h"

#include <QImage>
#include <QString>

// Writes raster images to files. The format follows the file name's suffix: bmp, jpg
// (or jpeg), png, tif (or tiff), eps, emf, wmf and dcm, all from the same raster.
// Writes are atomic: the file appears whole or not at all, and a failed write
// leaves an existing file untouched.
class VXAPI_EXPORT CVXSImageExporter
{
public:
    CVXSImageExporter();
    virtual ~CVXSImageExporter();

    tag_estatus saveImage(QImage& image, QString& strFilePath);
    // Writes bytes already encoded (a page drawn by a vector writer, say) the same way.
    static tag_estatus saveData(const QByteArray& data, const QString& strFilePath);

    // Whether saveImage can write files with this suffix (lower case, no dot).
    static bool isWritableSuffix(const QString& strSuffix);
};
