#include "output/VXSImageResampler.h"

#include "output/VXSBandResampler.h"

QImage CVXSImageResampler::scaled(const QImage& image, const QSize& size)
{
    if (image.isNull() || size.isEmpty())
        return QImage();
    if (image.size() == size)
        return image;
    // The whole image as one band.
    CVXSBandResampler resampler(image.size(), size);
    resampler.addRows(image);
    return resampler.result();
}
