#pragma once

#include <QImage>
#include <QSize>

#include <cstdint>
#include <vector>

// Scales images for output. Reductions go through a separable Lanczos-3 filter that widens
// with the reduction, so that fine detail neither aliases nor blurs more than it must;
// enlargements keep Qt's smooth scaling. A solid colour stays exactly that colour.
class CVXSImageResampler
{
public:
    // The image scaled to the size, aspect ratio ignored. An empty size or a null image gives
    // a null image; the image itself is returned when it already has the size.
    static QImage scaled(const QImage& image, const QSize& size);

private:
    // The filter along one axis: for each output pixel the first source pixel it reads and
    // its fixed-point weights, which sum exactly to one. Each pixel's weights start at
    // offset and are padded with a zero to an even number, as the filter reads them in pairs.
    struct Axis
    {
        std::vector<int> first;
        std::vector<int> count;
        std::vector<int> offset;
        std::vector<int16_t> weights;
    };

    static Axis lanczosAxis(int nSource, int nTarget);
    static QImage halved(const QImage& image);
    static QImage reduce(const QImage& image, const QSize& size);
};
