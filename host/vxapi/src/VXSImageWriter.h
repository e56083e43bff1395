#pragma once

#include "VXStatus.h"

#include <QByteArray>
#include <QImage>

// Encodes a raster image into the bytes of one file format. Writers check their format's
// limits themselves; the exporter decides where the bytes go.
class CVXSImageWriter
{
public:
    CVXSImageWriter() = default;
    virtual ~CVXSImageWriter();
    CVXSImageWriter(const CVXSImageWriter&) = delete;
    CVXSImageWriter& operator=(const CVXSImageWriter&) = delete;

    // Replaces data with the encoded file, or returns why the image cannot be written.
    virtual tag_estatus encode(const QImage& image, QByteArray& data) const = 0;
};
