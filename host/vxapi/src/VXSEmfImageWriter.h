#pragma once

#include "VXSImageWriter.h"

// Enhanced Metafile: a header, one EMR_COMMENT per text key of the image ("Key: value",
// UTF-8), the raster as one EMR_STRETCHDIBITS record with a 24-bit
// bitmap, and the end-of-file record. STRETCHDIBITS rather than SETDIBITSTODEVICE because
// more readers draw it.
class CVXSEmfImageWriter : public CVXSImageWriter
{
public:
    tag_estatus encode(const QImage& image, QByteArray& data) const override;
};
