#include "file/VXSLayoutImageCodec.h"

#include "file/archive/VXSPngEncoder.h"

#include <VXPngCheck.h>

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>

#include <algorithm>
#include <cstring>

namespace {

const QByteArray kPngSignature("\x89PNG\r\n\x1a\n", 8);
// What an image of a pixel format the header does not tell is assumed to take per pixel.
constexpr int kDefaultBytesPerPixel = 4;
// PNG headers can announce sizes whose bytes overflow 64 bits; such images are refused
// anyway, so the product stops growing here.
constexpr qint64 kBytesCap = qint64(1) << 61;

} // namespace

QByteArray CVXSLayoutImageCodec::encode(const QImage& image)
{
    // PNG holds straight alpha; Qt's writer would convert the same way.
    const QImage straight = withPngKeywords(image.format() == QImage::Format_ARGB32_Premultiplied
                                                ? image.convertToFormat(QImage::Format_ARGB32)
                                                : image);
    if (CVXSPngEncoder::handles(straight.format())) {
        const QByteArray png = CVXSPngEncoder::encode(straight);
        if (!png.isEmpty())
            return png;
    }
    return encodeWithQt(straight);
}

QImage CVXSLayoutImageCodec::withPngKeywords(const QImage& image)
{
    const QStringList keys = image.textKeys();
    const bool bAllKept = std::all_of(keys.cbegin(), keys.cend(),
                                      [](const QString& strKey) { return CVXSPngEncoder::keyword(strKey) == strKey; });
    if (bAllKept)
        return image;
    // A fresh image has no text keys to drop; the pixels are the same bytes.
    QImage keyed(image.size(), image.format());
    std::memcpy(keyed.bits(), image.constBits(), size_t(image.sizeInBytes()));
    keyed.setColorTable(image.colorTable());
    keyed.setDotsPerMeterX(image.dotsPerMeterX());
    keyed.setDotsPerMeterY(image.dotsPerMeterY());
    for (const QString& strKey : keys) {
        const QString strKeyword = CVXSPngEncoder::keyword(strKey);
        if (!strKeyword.isEmpty())
            keyed.setText(strKeyword, image.text(strKey));
    }
    return keyed;
}

QByteArray CVXSLayoutImageCodec::encodeWithQt(const QImage& image)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, "png");
    writer.setQuality(PngQuality);
    if (!writer.write(image))
        return QByteArray();
    return png;
}

qint64 CVXSLayoutImageCodec::decodedBytes(const QByteArray& png, QString& strError)
{
    if (!png.startsWith(kPngSignature)) {
        strError = tr("it is not a PNG image");
        return -1;
    }
    QBuffer buffer;
    buffer.setData(png);
    buffer.open(QIODevice::ReadOnly);
    if (!CVXPngCheck::headerIsIntact(buffer)) {
        strError = tr("its PNG header is damaged");
        return -1;
    }
    buffer.seek(0);
    QImageReader reader(&buffer, "png");
    return decodedBytes(reader.size(), reader.imageFormat());
}

qint64 CVXSLayoutImageCodec::decodedBytes(const QSize& size, QImage::Format format)
{
    const int nBytesPerPixel = format == QImage::Format_Invalid
                                   ? kDefaultBytesPerPixel
                                   : qMax(1, QImage::toPixelFormat(format).bitsPerPixel() / 8);
    const qint64 nPixels = qint64(size.width()) * size.height();
    return qMin(nPixels, kBytesCap / nBytesPerPixel) * nBytesPerPixel;
}

QImage CVXSLayoutImageCodec::decode(const QByteArray& png, QString& strError)
{
    QBuffer buffer;
    buffer.setData(png);
    buffer.open(QIODevice::ReadOnly);
    // Damaged data is found quietly before Qt's decoder meets it.
    QImage image;
    QString strWhy = CVXPngCheck::damagedText();
    if (CVXPngCheck::dataIsIntact(buffer)) {
        buffer.seek(0);
        QImageReader reader(&buffer, "png");
        image = reader.read();
        strWhy = reader.errorString();
    }
    if (image.isNull())
        strError = tr("its PNG data cannot be decoded (%1)").arg(strWhy);
    return image;
}
