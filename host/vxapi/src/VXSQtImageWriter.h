#pragma once

#include "VXSImageWriter.h"

// Formats that Qt's own image writers produce (bmp, jpeg, png, tiff).
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

    QByteArray m_oFormat;
};
