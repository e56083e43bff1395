#include "VXSDeviceIndependentBitmap.h"

#include "VXSPixelPacking.h"

#include <QDataStream>

namespace {

constexpr quint16 kPlanes = 1;
constexpr quint16 kBitsPerPixel = 24;
constexpr quint32 kUncompressed = 0; // BI_RGB
// 96 dots per inch, the resolution the layout is drawn for.
constexpr qint32 kPixelsPerMeter = 3780;

} // namespace

CVXSDeviceIndependentBitmap::CVXSDeviceIndependentBitmap(const QImage& image)
    : m_oRgb32(image.convertToFormat(QImage::Format_RGB32))
{
}

qint64 CVXSDeviceIndependentBitmap::bitsSize() const
{
    return qint64(rowStride()) * m_oRgb32.height();
}

void CVXSDeviceIndependentBitmap::write(QDataStream& out) const
{
    // A positive height means bottom-up rows.
    out << kHeaderSize << qint32(m_oRgb32.width()) << qint32(m_oRgb32.height()) << kPlanes
        << kBitsPerPixel << kUncompressed << quint32(bitsSize()) << kPixelsPerMeter
        << kPixelsPerMeter << quint32(0) << quint32(0);
    QByteArray row(rowStride(), '\0');
    uchar* pRow = reinterpret_cast<uchar*>(row.data());
    for (int y = m_oRgb32.height() - 1; y >= 0; --y) {
        vxsPackBgrRow(m_oRgb32, y, pRow);
        out.writeRawData(row.constData(), row.size());
    }
}

int CVXSDeviceIndependentBitmap::rowStride() const
{
    return (m_oRgb32.width() * 3 + 3) & ~3;
}
