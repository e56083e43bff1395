#include "LanczosReference.h"

#include <algorithm>
#include <cmath>

namespace {

double lanczos3(double x)
{
    if (x == 0.0)
        return 1.0;
    if (std::abs(x) >= 3.0)
        return 0.0;
    const double px = M_PI * x;
    return 3.0 * std::sin(px) * std::sin(px / 3.0) / (px * px);
}

// The source pixels and weights of one target pixel along an axis.
struct Taps
{
    int first = 0;
    std::vector<double> weights;
};

std::vector<Taps> lanczosTaps(int nSource, int nTarget)
{
    const double scale = double(nSource) / nTarget;
    const double stretch = std::max(1.0, scale);
    std::vector<Taps> taps(static_cast<size_t>(nTarget));
    for (int i = 0; i < nTarget; ++i) {
        const double centre = (i + 0.5) * scale;
        Taps& t = taps[size_t(i)];
        t.first = std::max(0, int(std::floor(centre - 3.0 * stretch)));
        const int last = std::min(nSource - 1, int(std::ceil(centre + 3.0 * stretch)));
        double sum = 0.0;
        for (int s = t.first; s <= last; ++s) {
            t.weights.push_back(lanczos3((s + 0.5 - centre) / stretch));
            sum += t.weights.back();
        }
        for (double& w : t.weights)
            w /= sum;
    }
    return taps;
}

std::vector<double> reduced(const QImage& image, QSize size, CLanczosReference::Channel pChannel,
                            const std::vector<Taps>& across, const std::vector<Taps>& down)
{
    const size_t width = size_t(size.width());
    std::vector<double> rows(size_t(image.height()) * width, 0.0);
    for (int y = 0; y < image.height(); ++y) {
        const auto* pLine = reinterpret_cast<const QRgb*>(image.constScanLine(y));
        for (size_t x = 0; x < width; ++x) {
            for (size_t k = 0; k < across[x].weights.size(); ++k)
                rows[size_t(y) * width + x] += across[x].weights[k] * pChannel(pLine[size_t(across[x].first) + k]);
        }
    }
    std::vector<double> result(width * size_t(size.height()), 0.0);
    for (size_t y = 0; y < size_t(size.height()); ++y) {
        for (size_t k = 0; k < down[y].weights.size(); ++k) {
            const double* pRow = &rows[(size_t(down[y].first) + k) * width];
            for (size_t x = 0; x < width; ++x)
                result[y * width + x] += down[y].weights[k] * pRow[x];
        }
    }
    return result;
}

} // namespace

CLanczosReference::CLanczosReference(const QImage& source, QSize size, const std::vector<Channel>& channels)
    : m_size(size)
    , m_channels(channels)
{
    const QImage image = source.convertToFormat(QImage::Format_RGB32);
    const std::vector<Taps> across = lanczosTaps(image.width(), size.width());
    const std::vector<Taps> down = lanczosTaps(image.height(), size.height());
    for (const Channel pChannel : m_channels)
        m_planes.push_back(reduced(image, size, pChannel, across, down));
}

double CLanczosReference::level(std::size_t nChannel, int x, int y) const
{
    return m_planes[nChannel][size_t(y) * size_t(m_size.width()) + size_t(x)];
}

double CLanczosReference::psnr(const QImage& image, QPoint offset) const
{
    double squared = 0.0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            for (std::size_t c = 0; c < m_channels.size(); ++c) {
                const double expected = std::clamp(level(c, x + offset.x(), y + offset.y()), 0.0, 255.0);
                const double difference = m_channels[c](pixel) - expected;
                squared += difference * difference;
            }
        }
    }
    const double mse = squared / (double(m_channels.size()) * image.width() * image.height());
    return mse == 0.0 ? 99.0 : 10.0 * std::log10(255.0 * 255.0 / mse);
}
