#pragma once

#include "VXSImageWriter.h"

// DICOM Secondary Capture Image Storage: the raster as 8-bit RGB pixels (planar
// configuration 0) in Explicit VR Little Endian, with fresh study, series and instance
// UIDs for every file. Patient and study attributes the layout does not know stay empty.
class CVXSDicomImageWriter : public CVXSImageWriter
{
public:
    tag_estatus encode(const QImage& image, QByteArray& data) const override;
};
