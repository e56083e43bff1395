#pragma once

#include <QByteArray>
#include <QVector>

// The chunks of PNG data, as the file holds them: length, type, data, CRC.
namespace VXSPngChunks {

const QByteArray Signature("\x89PNG\r\n\x1a\n", 8);

struct Chunk
{
    QByteArray type;
    QByteArray data;
};

// A chunk with its length and CRC.
QByteArray chunk(const QByteArray& type, const QByteArray& data);
// The chunks after the signature; false when the data is no intact sequence of them.
bool split(const QByteArray& png, QVector<Chunk>& chunks);
QByteArray bigEndian32(quint32 nValue);

} // namespace VXSPngChunks
