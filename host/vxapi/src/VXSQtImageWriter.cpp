#include "VXSQtImageWriter.h"

#include "VXSExportText.h"
#include "VXSPngEncoder.h"
#include "VXSXmpInserter.h"
#include "VXSXmpPacket.h"

#include <QBuffer>
#include <QImageWriter>

#include <climits>

namespace {

// libjpeg refuses larger images (JPEG_MAX_DIMENSION).
constexpr int kJpegMaxSide = 65500;
// libpng's default limit for width and height (PNG_USER_WIDTH_MAX, PNG_USER_HEIGHT_MAX).
constexpr int kPngMaxSide = 1000000;
// A JPEG comment segment holds at most this many bytes; Qt writes one "Key: value" comment
// per text key and would cut a longer one anywhere, even inside a character.
constexpr int kJpegCommentMaxBytes = 65533;

// The image with every value short enough for its JPEG comment; a copy only when one is not.
QImage withCommentsThatFit(const QImage& image)
{
    QImage fitting = image;
    for (const QString& strKey : image.textKeys()) {
        const int nRoom = kJpegCommentMaxBytes - (strKey + QStringLiteral(": ")).toUtf8().size();
        const QString strValue = image.text(strKey);
        if (strValue.toUtf8().size() > nRoom)
            fitting.setText(strKey, QString::fromUtf8(CVXSExportText::fitted(strValue, nRoom)));
    }
    return fitting;
}

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
    if (m_oFormat == "png" && CVXSPngEncoder::canEncode(image)) {
        if (!CVXSPngEncoder::encode(image, data))
            return eSTATUS_WRITE_FAILED;
        addXmp(image, data);
        return eSTATUS_SUCCESS;
    }
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, m_oFormat);
    // PNG keeps the text keys as text chunks by itself.
    if (writer.write(m_oFormat == "jpeg" ? withCommentsThatFit(image) : image)) {
        buffer.close();
        addXmp(image, data);
        return eSTATUS_SUCCESS;
    }
    return writer.error() == QImageWriter::UnsupportedFormatError ? eSTATUS_UNSUPPORTED_FORMAT
                                                                   : eSTATUS_WRITE_FAILED;
}

void CVXSQtImageWriter::addXmp(const QImage& image, QByteArray& data) const
{
    if (m_oFormat == "png")
        CVXSXmpInserter::intoPng(data, CVXSXmpPacket::of(image));
    else if (m_oFormat == "jpeg")
        CVXSXmpInserter::intoJpeg(data, CVXSXmpPacket::of(image, CVXSXmpInserter::JpegMaxPacket));
}

bool CVXSQtImageWriter::canWrite(const QByteArray& format)
{
    return QImageWriter::supportedImageFormats().contains(format);
}

// BMP holds whatever fits into a QImage.
int CVXSQtImageWriter::maxSide() const
{
    if (m_oFormat == "jpeg")
        return kJpegMaxSide;
    if (m_oFormat == "png")
        return kPngMaxSide;
    return INT_MAX;
}
