#include "VXTiffPixelSize.h"

#include "VXPixelSize.h"

#include <QFile>

#include <tiffio.h>

namespace {

double pagePixelSize(TIFF* pTiff)
{
    uint16_t nUnit = RESUNIT_NONE;
    float fResolution = 0.0f;
    // Without the unit tag the resolution is only an aspect ratio.
    if (!TIFFGetField(pTiff, TIFFTAG_RESOLUTIONUNIT, &nUnit) || !TIFFGetField(pTiff, TIFFTAG_XRESOLUTION, &fResolution)
        || fResolution <= 0.0f)
        return 0.0;
    double dMmPerUnit = 0.0;
    if (nUnit == RESUNIT_INCH)
        dMmPerUnit = 25.4;
    else if (nUnit == RESUNIT_CENTIMETER)
        dMmPerUnit = 10.0;
    const double dMm = dMmPerUnit / double(fResolution);
    return CVXPixelSize::isUsable(dMm) ? dMm : 0.0;
}

} // namespace

QVector<double> CVXTiffPixelSize::ofPages(const QString& strPath)
{
    QVector<double> sizes;
    TIFF* pTiff = TIFFOpen(QFile::encodeName(strPath).constData(), "r");
    if (!pTiff)
        return sizes;
    do {
        sizes.append(pagePixelSize(pTiff));
    } while (TIFFReadDirectory(pTiff));
    TIFFClose(pTiff);
    return sizes;
}
