#include "VXSPngChunks.h"

#include <QtEndian>

#include <zlib.h>

QByteArray VXSPngChunks::chunk(const QByteArray& type, const QByteArray& data)
{
    const QByteArray typeAndData = type + data;
    const uLong nCrc = crc32(crc32(0L, Z_NULL, 0), reinterpret_cast<const Bytef*>(typeAndData.constData()),
                             uInt(typeAndData.size()));
    return bigEndian32(quint32(data.size())) + typeAndData + bigEndian32(quint32(nCrc));
}

bool VXSPngChunks::split(const QByteArray& png, QVector<Chunk>& chunks)
{
    if (!png.startsWith(Signature))
        return false;
    int nAt = Signature.size();
    while (nAt + 12 <= png.size()) {
        const quint32 nLength = qFromBigEndian<quint32>(png.constData() + nAt);
        if (nLength > quint32(png.size() - nAt - 12))
            return false;
        chunks.push_back({png.mid(nAt + 4, 4), png.mid(nAt + 8, int(nLength))});
        nAt += 12 + int(nLength);
    }
    return nAt == png.size();
}

QByteArray VXSPngChunks::bigEndian32(quint32 nValue)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(nValue, bytes.data());
    return bytes;
}
