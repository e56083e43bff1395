#pragma once

#include "VXSImageWriter.h"

// Windows Metafile with a placeable header: one MFCOMMENT escape per text key of the image
// ("Key: value", UTF-8, cut at 65534 bytes), window origin and extent, the raster as one
// META_STRETCHDIB record with a 24-bit bitmap, and the end record. Coordinates are 16-bit,
// so images with a side above 32767 pixels are refused.
class CVXSWmfImageWriter : public CVXSImageWriter
{
public:
    tag_estatus encode(const QImage& image, QByteArray& data) const override;

    static constexpr int kMaxSide = 32767;
};
