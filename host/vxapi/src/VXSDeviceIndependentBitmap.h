#pragma once

#include <QImage>

class QDataStream;

// A 24-bit device-independent bitmap as metafiles embed it: a BITMAPINFOHEADER, no colour
// table, then the rows bottom-up in blue, green, red order, each padded to 4 bytes.
class CVXSDeviceIndependentBitmap
{
public:
    // Keeps a shallow copy of the image converted to RGB32.
    explicit CVXSDeviceIndependentBitmap(const QImage& image);

    static constexpr quint32 kHeaderSize = 40;

    qint64 bitsSize() const;
    qint64 size() const { return kHeaderSize + bitsSize(); }

    // Header and bits; out must be little-endian.
    void write(QDataStream& out) const;

private:
    int rowStride() const;

    QImage m_oRgb32;
};
