#pragma once

#include <QByteArray>
#include <QImage>

#include <limits>

// An image's text keys (see CVXImageProvenance) as one XMP packet, the metadata that
// picture tools read whatever the file format: Dublin Core's source (every source file, in
// order), date and description, the creating program, and every key in our own namespace.
// A layout figure's "Image n <key>" keys become one structure per image, in order.
class CVXSXmpPacket
{
public:
    // Our namespace; keys become its properties, named after them without spaces.
    static constexpr const char* Namespace = "http://ns.vexor.example/provenance/1.0/";

    // The packet, UTF-8 in its xpacket wrapper, at most nMaxBytes long: longer values are cut
    // evenly until it fits. Empty when the image has no keys, or they cannot be made to fit.
    static QByteArray of(const QImage& image, int nMaxBytes = std::numeric_limits<int>::max());

private:
    // Every value cut to at most nValueMax bytes of UTF-8.
    static QByteArray build(const QImage& image, int nValueMax);
};
