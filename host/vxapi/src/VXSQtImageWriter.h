#pragma once

#include "VXSImageWriter.h"

// Formats that Qt's own image writers produce (bmp, jpeg, png; 32-bit PNG with its pixels
// compressed on every core, CVXSPngEncoder). The image's text keys go along: PNG text chunks
// and one JPEG comment per key for readers that know these, and all of them in one XMP
// packet; BMP has no place for them.
class CVXSQtImageWriter : public CVXSImageWriter
{
public:
    // format is a name QImageWriter knows, such as "png".
    explicit CVXSQtImageWriter(const QByteArray& format);

    tag_estatus encode(const QImage& image, QByteArray& data) const override;

    // Whether this build's Qt can write the format.
    static bool canWrite(const QByteArray& format);

private:
    int maxSide() const;
    // The XMP packet in its place in the file.
    void addXmp(const QImage& image, QByteArray& data) const;

    QByteArray m_oFormat;
};
