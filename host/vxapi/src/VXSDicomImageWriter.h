#pragma once

#include "VXSImageWriter.h"

// DICOM Secondary Capture Image Storage: the raster as 8-bit RGB pixels (planar
// configuration 0) in Explicit VR Little Endian, with fresh study, series and instance
// UIDs for every file. Patient and study attributes the layout does not know stay empty.
// Where the image came from (its text keys) goes into Derivation Description, Image
// Comments and a Source Image Sequence referencing each DICOM source.
class CVXSDicomImageWriter : public CVXSImageWriter
{
public:
    tag_estatus encode(const QImage& image, QByteArray& data) const override;
};
