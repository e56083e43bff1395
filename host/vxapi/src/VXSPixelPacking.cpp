#include "VXSPixelPacking.h"

namespace {

template <int nFirst, int nLast>
void packRow(const QImage& rgb32, int y, uchar* pOut)
{
    Q_ASSERT(rgb32.format() == QImage::Format_RGB32);
    const QRgb* pPixel = reinterpret_cast<const QRgb*>(rgb32.constScanLine(y));
    const QRgb* const pEnd = pPixel + rgb32.width();
    for (; pPixel != pEnd; ++pPixel) {
        *pOut++ = uchar(*pPixel >> nFirst);
        *pOut++ = uchar(*pPixel >> 8);
        *pOut++ = uchar(*pPixel >> nLast);
    }
}

} // namespace

void vxsPackRgbRow(const QImage& rgb32, int y, uchar* pOut)
{
    packRow<16, 0>(rgb32, y, pOut);
}

void vxsPackBgrRow(const QImage& rgb32, int y, uchar* pOut)
{
    packRow<0, 16>(rgb32, y, pOut);
}
