#include "VXSQtImageWriter.h"

#include <QBuffer>
#include <QImageWriter>

#include <climits>

namespace {

// libjpeg refuses larger images (JPEG_MAX_DIMENSION).
constexpr int kJpegMaxSide = 65500;
// libpng's default limit for width and height (PNG_USER_WIDTH_MAX, PNG_USER_HEIGHT_MAX).
constexpr int kPngMaxSide = 1000000;

} // namespace

CVXSQtImageWriter::CVXSQtImageWriter(const QByteArray& format)
    : m_oFormat(format)
{
}

tag_estatus CVXSQtImageWriter::encode(const QImage& image, QByteArray& data) const
{
    if (qMax(image.width(), image.height()) > maxSide())
        return eSTATUS_IMAGE_TOO_LARGE;
    data.clear();
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, m_oFormat);
    if (writer.write(image))
        return eSTATUS_SUCCESS;
    return writer.error() == QImageWriter::UnsupportedFormatError ? eSTATUS_UNSUPPORTED_FORMAT
                                                                   : eSTATUS_WRITE_FAILED;
}

bool CVXSQtImageWriter::canWrite(const QByteArray& format)
{
    return QImageWriter::supportedImageFormats().contains(format);
}

// BMP and TIFF hold whatever fits into a QImage.
int CVXSQtImageWriter::maxSide() const
{
    if (m_oFormat == "jpeg")
        return kJpegMaxSide;
    if (m_oFormat == "png")
        return kPngMaxSide;
    return INT_MAX;
}
