#pragma once

#include <QByteArray>
#include <QImage>

// Lossless PNG for the pixel formats images mostly have, written straight through libpng with
// settings chosen for speed: the "up" filter and zlib's run-length strategy at level 1. Qt's
// writer tries every filter on every row; this encodes a 4096 x 4096 image about three times
// faster, still shrinking smooth images many times over. Text keys go into iTXt chunks.
class CVXSPngEncoder
{
public:
    // Whether encode() takes images of this format; the others are left to Qt's writer.
    static bool handles(QImage::Format format);
    // The PNG data; empty when the format is not handled or libpng failed.
    static QByteArray encode(const QImage& image);
    // The text key as a PNG keyword (Latin-1, no leading, trailing or double spaces, at most
    // 79 characters; others become '?'); empty when nothing of it is left.
    static QString keyword(const QString& strKey);
};
