#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QImage>
#include <QString>

// The images of a layout file: lossless PNG with the image's text keys, tuned for speed,
// and a decoder that refuses what is no PNG or would not fit the memory budget before
// decoding anything.
class CVXSLayoutImageCodec
{
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutImageCodec)
public:
    // Qt's PNG writer, which takes the formats CVXSPngEncoder leaves, turns quality q into
    // zlib level (100 - q) * 9 / 91: 85 is level 1. Recovery copies of large layouts are
    // written every half minute, so speed comes first.
    static constexpr int PngQuality = 85;

    // The PNG data; empty when the image could not be encoded.
    static QByteArray encode(const QImage& image);
    static QByteArray encodeWithQt(const QImage& image);
    // The image with its text keys as PNG can hold them (see CVXSPngEncoder::keyword); a
    // copy only when a key has to change, which is rare.
    static QImage withPngKeywords(const QImage& image);
    // The memory the decoded image takes, from its PNG header; -1 with strError set when the
    // data is no PNG or its header cannot be read.
    static qint64 decodedBytes(const QByteArray& png, QString& strError);
    // The memory an image of this size and format takes once decoded.
    static qint64 decodedBytes(const QSize& size, QImage::Format format);
    // The image; null with strError set when the data cannot be decoded.
    static QImage decode(const QByteArray& png, QString& strError);
};
