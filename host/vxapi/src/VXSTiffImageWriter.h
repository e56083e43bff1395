#pragma once

#include "VXSImageExporter.h"
#include "VXSImageWriter.h"

// TIFF through libtiff: 8-bit grey when every pixel is grey, RGB otherwise (RGBA when the
// image has alpha), compressed losslessly with a horizontal predictor. Real tags say the
// resolution in inches, the software and the date; the image's text keys go into the
// ImageDescription, one line per key, and as an XMP packet into tag 700.
class CVXSTiffImageWriter : public CVXSImageWriter
{
public:
    explicit CVXSTiffImageWriter(CVXSImageExporter::TiffCompression eCompression);

    tag_estatus encode(const QImage& image, QByteArray& data) const override;

private:
    CVXSImageExporter::TiffCompression m_eCompression = CVXSImageExporter::TiffCompression::Deflate;
};
