#pragma once

#include <QImage>
#include <QSize>

// Scales images for output. Reductions go through a separable Lanczos-3 filter that widens
// with the reduction, so that fine detail neither aliases nor blurs more than it must;
// enlargements keep Qt's smooth scaling. A solid colour stays exactly that colour.
class CVXSImageResampler
{
public:
    // The image scaled to the size, aspect ratio ignored. An empty size or a null image gives
    // a null image; the image itself is returned when it already has the size.
    static QImage scaled(const QImage& image, const QSize& size);
};
