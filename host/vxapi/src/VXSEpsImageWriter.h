#pragma once

#include "VXSImageWriter.h"

// Encapsulated PostScript (DSC 3.0, EPSF-3.0) holding the raster as one RGB image,
// Flate-compressed and ASCII85-encoded. One pixel is one point. The image's text keys go
// into the header as "%%VXProvenance: Key: value" comments, escaped to printable ASCII.
class CVXSEpsImageWriter : public CVXSImageWriter
{
public:
    tag_estatus encode(const QImage& image, QByteArray& data) const override;
};
