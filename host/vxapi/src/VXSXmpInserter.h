#pragma once

#include <QByteArray>

// Puts an XMP packet into PNG and JPEG files that Qt has written, where XMP readers look for
// it: a PNG iTXt chunk "XML:com.adobe.xmp" right after the header, ahead of the text chunks
// (some readers take only the first few dozen of those), and a JPEG APP1 segment after the
// JFIF header.
class CVXSXmpInserter
{
public:
    // The largest packet one JPEG segment holds.
    static constexpr int JpegMaxPacket = 65535 - 2 - 29;

    // False, with the file unchanged, when it is not the format or the packet is empty or
    // too large.
    static bool intoPng(QByteArray& png, const QByteArray& packet);
    static bool intoJpeg(QByteArray& jpeg, const QByteArray& packet);
};
