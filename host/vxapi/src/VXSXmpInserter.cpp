#include "VXSXmpInserter.h"

#include "VXSPngChunks.h"

#include <QtEndian>

namespace {

// Signature, then the header chunk: length, type, 13 bytes of data, CRC.
constexpr int kPngHeaderEnd = 8 + 4 + 4 + 13 + 4;
constexpr int kPngMaxChunk = 0x7fffffff;
// The keyword, then no compression, no language and no translated keyword.
const QByteArray kPngXmpKeyword("XML:com.adobe.xmp\0\0\0\0\0", 22);
const QByteArray kJpegXmpNamespace("http://ns.adobe.com/xap/1.0/\0", 29);

QByteArray bigEndian16(quint16 nValue)
{
    QByteArray bytes(2, '\0');
    qToBigEndian(nValue, bytes.data());
    return bytes;
}

} // namespace

bool CVXSXmpInserter::intoPng(QByteArray& png, const QByteArray& packet)
{
    if (packet.isEmpty() || !png.startsWith(VXSPngChunks::Signature) || png.size() < kPngHeaderEnd || png.mid(12, 4) != "IHDR")
        return false;
    const QByteArray data = kPngXmpKeyword + packet;
    if (data.size() > kPngMaxChunk - 4)
        return false;
    png.insert(kPngHeaderEnd, VXSPngChunks::chunk(QByteArrayLiteral("iTXt"), data));
    return true;
}

bool CVXSXmpInserter::intoJpeg(QByteArray& jpeg, const QByteArray& packet)
{
    if (packet.isEmpty() || !jpeg.startsWith("\xff\xd8") || packet.size() > JpegMaxPacket)
        return false;
    int nAt = 2;
    // The JFIF header stays first.
    if (jpeg.size() >= 6 && jpeg.mid(2, 2) == "\xff\xe0")
        nAt = 4 + qFromBigEndian<quint16>(reinterpret_cast<const uchar*>(jpeg.constData()) + 4);
    if (nAt > jpeg.size())
        return false;
    const QByteArray segment = kJpegXmpNamespace + packet;
    jpeg.insert(nAt, QByteArrayLiteral("\xff\xe1") + bigEndian16(quint16(segment.size() + 2)) + segment);
    return true;
}
