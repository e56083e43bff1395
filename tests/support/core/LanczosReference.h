#pragma once

#include <QImage>
#include <QPoint>
#include <QSize>

#include <vector>

// An image reduced by a plain Lanczos-3 filter in double precision: the reference that the
// output's reduction is measured against, by the tests and the export benchmark alike. The
// kernel widens with the reduction; taps beyond the edges are dropped and the rest
// renormalised. Each channel is filtered across the rows first, then down the columns.
class CLanczosReference
{
public:
    using Channel = int (*)(QRgb);

    CLanczosReference(const QImage& source, QSize size, const std::vector<Channel>& channels = {qRed, qGreen, qBlue});

    // The level of the channel (an index into the channels given) at x, y; unrounded and
    // unclamped.
    double level(std::size_t nChannel, int x, int y) const;

    // Peak signal-to-noise ratio in dB of the image's channels against the part of the
    // reference at offset, clamped to the levels 0 to 255; 99 where they are equal.
    double psnr(const QImage& image, QPoint offset = QPoint()) const;

private:
    QSize m_size;
    std::vector<Channel> m_channels;
    std::vector<std::vector<double>> m_planes; // one per channel, row after row
};
