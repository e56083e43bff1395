#include "output/VXSBandResampler.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#ifdef __SSE2__
#include <emmintrin.h>
#endif
#if defined(__SSE2__) && defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>
#endif

namespace {

// Weights are fixed-point with this many fraction bits; between the two passes the values
// keep IntermediateBits of fraction, so that rounding happens once, at the end.
constexpr int WeightBits = 14;
constexpr int IntermediateBits = 6;
constexpr int FirstShift = WeightBits - IntermediateBits;
constexpr int SecondShift = WeightBits + IntermediateBits;
constexpr int Lobes = 3;
// While the source is more than this many times the target on both axes, it is first
// halved by averaging 2 x 2 blocks: a quarter of the filter's work each time. The filter
// still reduces by at least half this factor, which keeps the blocks' aliasing out of
// sight; halving down to three times the target cost a zone plate some 27 dB.
constexpr int HalvingFactor = 6;

// The filter along one axis: for each output pixel the first source pixel it reads and
// its fixed-point weights, which sum exactly to one. Each pixel's weights start at offset
// and are padded with a zero to an even number, as the filter reads them in pairs.
struct Axis
{
    std::vector<int> first;
    std::vector<int> count;
    std::vector<int> offset;
    std::vector<int16_t> weights;
};

double lanczos(double x)
{
    if (x == 0.0)
        return 1.0;
    if (std::abs(x) >= Lobes)
        return 0.0;
    // sin(3t) from sin(t): one sine instead of two, as the weights cost noticeable time.
    static_assert(Lobes == 3, "the kernel is written for three lobes");
    const double px = M_PI * x;
    const double sine = std::sin(px / Lobes);
    return Lobes * (3.0 - 4.0 * sine * sine) * sine * sine / (px * px);
}

// The second pass, down the columns: output pixel i of the rows, premultiplied, its
// colours no higher than its alpha.
void filterDownScalar(const int16_t* const* rows, const int16_t* w, int count, size_t i, uchar* pOut)
{
    constexpr int AlphaByte = Q_BYTE_ORDER == Q_LITTLE_ENDIAN ? 3 : 0;
    int sums[4] = {};
    for (int k = 0; k < count; ++k) {
        for (int c = 0; c < 4; ++c)
            sums[c] += w[k] * rows[k][4 * i + size_t(c)];
    }
    const auto toByte = [](int sum, int maximum) {
        return uchar(std::clamp((sum + (1 << (SecondShift - 1))) >> SecondShift, 0, maximum));
    };
    const int alpha = toByte(sums[AlphaByte], 255);
    for (int c = 0; c < 4; ++c)
        pOut[4 * i + size_t(c)] = c == AlphaByte ? uchar(alpha) : toByte(sums[c], alpha);
}

// The average of a 2 x 2 block of source pixels, the top pair at pTop, the bottom at pBottom.
void averageBlockScalar(const uchar* pTop, const uchar* pBottom, uchar* pOut)
{
    for (int c = 0; c < 4; ++c)
        pOut[c] = uchar((pTop[c] + pTop[c + 4] + pBottom[c] + pBottom[c + 4] + 2) >> 2);
}

#ifdef __SSE2__

// Two neighbouring 16-bit weights as one word, the first in the low half (x86 is little
// endian), as _mm_madd_epi16 multiplies them with neighbouring values: a single load.
int weightWord(const int16_t* w)
{
    int word = 0;
    std::memcpy(&word, w, sizeof(word));
    return word;
}

__m128i weightPair(const int16_t* w)
{
    return _mm_set1_epi32(weightWord(w));
}

// Two pixels of 8-bit channels (in the low half) as 16-bit values, channel by channel each
// pixel next to the other: c0 of the first, c0 of the second, c1 of the first, ...
__m128i interleavedPair(__m128i pixels)
{
    const __m128i wide = _mm_unpacklo_epi8(pixels, _mm_setzero_si128());
    return _mm_unpacklo_epi16(wide, _mm_unpackhi_epi64(wide, wide));
}

void filterAcross(const uchar* p, const int16_t* w, int count, int16_t* pOut)
{
    __m128i sum = _mm_setzero_si128();
    int k = 0;
    for (; k + 3 < count; k += 4, p += 16) {
        const __m128i pixels = _mm_loadu_si128(reinterpret_cast<const __m128i*>(p));
        sum = _mm_add_epi32(sum, _mm_madd_epi16(interleavedPair(pixels), weightPair(w + k)));
        sum = _mm_add_epi32(sum, _mm_madd_epi16(interleavedPair(_mm_unpackhi_epi64(pixels, pixels)),
                                                weightPair(w + k + 2)));
    }
    if (k + 1 < count) {
        const __m128i pixels = _mm_loadl_epi64(reinterpret_cast<const __m128i*>(p));
        sum = _mm_add_epi32(sum, _mm_madd_epi16(interleavedPair(pixels), weightPair(w + k)));
        k += 2;
        p += 8;
    }
    if (k < count) {
        int bits = 0;
        std::memcpy(&bits, p, 4);
        sum = _mm_add_epi32(sum, _mm_madd_epi16(interleavedPair(_mm_cvtsi32_si128(bits)), weightPair(w + k)));
    }
    sum = _mm_srai_epi32(_mm_add_epi32(sum, _mm_set1_epi32(1 << (FirstShift - 1))), FirstShift);
    _mm_storel_epi64(reinterpret_cast<__m128i*>(pOut), _mm_packs_epi32(sum, sum));
}

// Premultiplied pixels with no colour above its alpha: ringing may push it there.
__m128i clampedToAlpha(__m128i pixels)
{
    __m128i alpha = _mm_srli_epi32(pixels, 24);
    alpha = _mm_or_si128(alpha, _mm_slli_epi32(alpha, 8));
    alpha = _mm_or_si128(alpha, _mm_slli_epi32(alpha, 16));
    return _mm_min_epu8(pixels, alpha);
}

// Eight bytes of premultiplied pixels from 32-bit sums.
__m128i toPixels(__m128i low, __m128i high)
{
    const __m128i round = _mm_set1_epi32(1 << (SecondShift - 1));
    low = _mm_srai_epi32(_mm_add_epi32(low, round), SecondShift);
    high = _mm_srai_epi32(_mm_add_epi32(high, round), SecondShift);
    const __m128i words = _mm_packs_epi32(low, high);
    return clampedToAlpha(_mm_packus_epi16(words, words));
}

// Output pixels x to nPixels of a row from the rows, an even number of them, paired with
// the weights.
void filterDown(const int16_t* const* rows, const int16_t* w, int count, int x, int nPixels, uchar* pOut)
{
    for (; x + 2 <= nPixels; x += 2) {
        __m128i low = _mm_setzero_si128();
        __m128i high = _mm_setzero_si128();
        for (int k = 0; k < count; k += 2) {
            const __m128i a = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rows[k] + 4 * x));
            const __m128i b = _mm_loadu_si128(reinterpret_cast<const __m128i*>(rows[k + 1] + 4 * x));
            const __m128i pair = weightPair(w + k);
            low = _mm_add_epi32(low, _mm_madd_epi16(_mm_unpacklo_epi16(a, b), pair));
            high = _mm_add_epi32(high, _mm_madd_epi16(_mm_unpackhi_epi16(a, b), pair));
        }
        _mm_storel_epi64(reinterpret_cast<__m128i*>(pOut + 4 * x), toPixels(low, high));
    }
    if (x < nPixels)
        filterDownScalar(rows, w, count, size_t(x), pOut);
}

void averageBlocks(const uchar* pTop, const uchar* pBottom, int nPixels, uchar* pOut)
{
    const __m128i zero = _mm_setzero_si128();
    const __m128i two = _mm_set1_epi16(2);
    int x = 0;
    for (; x + 2 <= nPixels; x += 2, pTop += 16, pBottom += 16, pOut += 8) {
        const __m128i top = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pTop));
        const __m128i bottom = _mm_loadu_si128(reinterpret_cast<const __m128i*>(pBottom));
        const __m128i left = _mm_add_epi16(_mm_unpacklo_epi8(top, zero), _mm_unpacklo_epi8(bottom, zero));
        const __m128i right = _mm_add_epi16(_mm_unpackhi_epi8(top, zero), _mm_unpackhi_epi8(bottom, zero));
        __m128i sums = _mm_add_epi16(_mm_unpacklo_epi64(left, right), _mm_unpackhi_epi64(left, right));
        sums = _mm_srli_epi16(_mm_add_epi16(sums, two), 2);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(pOut), _mm_packus_epi16(sums, sums));
    }
    if (x < nPixels)
        averageBlockScalar(pTop, pBottom, pOut);
}

#else

// Without SSE2 the same arithmetic runs one value at a time.

// The first pass, across a row: one output pixel from count source pixels at p, its four
// channels with IntermediateBits of fraction.
void filterAcross(const uchar* p, const int16_t* w, int count, int16_t* pOut)
{
    for (int c = 0; c < 4; ++c) {
        int sum = 0;
        for (int k = 0; k < count; ++k)
            sum += w[k] * p[4 * k + c];
        pOut[c] = int16_t(std::clamp((sum + (1 << (FirstShift - 1))) >> FirstShift, int(INT16_MIN), int(INT16_MAX)));
    }
}

void filterDown(const int16_t* const* rows, const int16_t* w, int count, int x, int nPixels, uchar* pOut)
{
    for (; x < nPixels; ++x)
        filterDownScalar(rows, w, count, size_t(x), pOut);
}

void averageBlocks(const uchar* pTop, const uchar* pBottom, int nPixels, uchar* pOut)
{
    for (int x = 0; x < nPixels; ++x, pTop += 8, pBottom += 8, pOut += 4)
        averageBlockScalar(pTop, pBottom, pOut);
}

#endif

// One source row filtered across into a row of the target's width.
void filterRowAcross(const uchar* pLine, const Axis& across, int16_t* pOut)
{
    for (size_t x = 0; x < across.first.size(); ++x)
        filterAcross(pLine + 4 * across.first[x], &across.weights[size_t(across.offset[x])], across.count[x],
                     pOut + 4 * x);
}

#if defined(__SSE2__) && defined(__GNUC__) && defined(__x86_64__)

// interleavedPair for the two pixels in the low half of each lane.
__attribute__((target("avx2"))) inline __m256i interleaved(__m256i pixels)
{
    const __m256i wide = _mm256_unpacklo_epi8(pixels, _mm256_setzero_si256());
    return _mm256_unpacklo_epi16(wide, _mm256_unpackhi_epi64(wide, wide));
}

// Pixels of the first row in the low lane, of the second in the high one.
__attribute__((target("avx2"))) inline __m256i bothRows(__m128i a, __m128i b)
{
    return _mm256_inserti128_si256(_mm256_castsi128_si256(a), b, 1);
}

// Two source rows at once, one in each lane of the AVX2 registers: the same weights and
// the same sums as filterAcross, in about half the instructions.
__attribute__((target("avx2"))) void filterTwoRowsAcrossAvx2(const uchar* pLineA, const uchar* pLineB,
                                                              const Axis& across, int16_t* pOutA, int16_t* pOutB)
{
    const __m256i zero = _mm256_setzero_si256();
    for (size_t x = 0; x < across.first.size(); ++x) {
        const uchar* a = pLineA + 4 * across.first[x];
        const uchar* b = pLineB + 4 * across.first[x];
        const int16_t* w = &across.weights[size_t(across.offset[x])];
        const int count = across.count[x];
        __m256i sum = zero;
        int k = 0;
        for (; k + 3 < count; k += 4, a += 16, b += 16) {
            const __m256i pixels = bothRows(_mm_loadu_si128(reinterpret_cast<const __m128i*>(a)),
                                            _mm_loadu_si128(reinterpret_cast<const __m128i*>(b)));
            sum = _mm256_add_epi32(sum, _mm256_madd_epi16(interleaved(pixels), _mm256_set1_epi32(weightWord(w + k))));
            sum = _mm256_add_epi32(sum, _mm256_madd_epi16(interleaved(_mm256_unpackhi_epi64(pixels, pixels)),
                                                          _mm256_set1_epi32(weightWord(w + k + 2))));
        }
        if (k + 1 < count) {
            const __m256i pixels = bothRows(_mm_loadl_epi64(reinterpret_cast<const __m128i*>(a)),
                                            _mm_loadl_epi64(reinterpret_cast<const __m128i*>(b)));
            sum = _mm256_add_epi32(sum, _mm256_madd_epi16(interleaved(pixels), _mm256_set1_epi32(weightWord(w + k))));
            k += 2;
            a += 8;
            b += 8;
        }
        if (k < count) {
            int bitsA = 0;
            int bitsB = 0;
            std::memcpy(&bitsA, a, 4);
            std::memcpy(&bitsB, b, 4);
            const __m256i pixels = bothRows(_mm_cvtsi32_si128(bitsA), _mm_cvtsi32_si128(bitsB));
            sum = _mm256_add_epi32(sum, _mm256_madd_epi16(interleaved(pixels), _mm256_set1_epi32(weightWord(w + k))));
        }
        sum = _mm256_srai_epi32(_mm256_add_epi32(sum, _mm256_set1_epi32(1 << (FirstShift - 1))), FirstShift);
        const __m256i words = _mm256_packs_epi32(sum, sum);
        _mm_storel_epi64(reinterpret_cast<__m128i*>(pOutA + 4 * x), _mm256_castsi256_si128(words));
        _mm_storel_epi64(reinterpret_cast<__m128i*>(pOutB + 4 * x), _mm256_extracti128_si256(words, 1));
    }
}

// filterDown for four pixels at a time; returns how many it did.
__attribute__((target("avx2"))) int filterDownAvx2(const int16_t* const* rows, const int16_t* w, int count,
                                                    int nPixels, uchar* pOut)
{
    const __m256i round = _mm256_set1_epi32(1 << (SecondShift - 1));
    int x = 0;
    for (; x + 4 <= nPixels; x += 4) {
        __m256i low = _mm256_setzero_si256();
        __m256i high = _mm256_setzero_si256();
        for (int k = 0; k < count; k += 2) {
            const __m256i a = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(rows[k] + 4 * x));
            const __m256i b = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(rows[k + 1] + 4 * x));
            const __m256i pair = _mm256_set1_epi32(weightWord(w + k));
            low = _mm256_add_epi32(low, _mm256_madd_epi16(_mm256_unpacklo_epi16(a, b), pair));
            high = _mm256_add_epi32(high, _mm256_madd_epi16(_mm256_unpackhi_epi16(a, b), pair));
        }
        low = _mm256_srai_epi32(_mm256_add_epi32(low, round), SecondShift);
        high = _mm256_srai_epi32(_mm256_add_epi32(high, round), SecondShift);
        // Each lane packs its own pixels; the first quarter of each then goes together.
        const __m256i words = _mm256_packs_epi32(low, high);
        const __m256i bytes = _mm256_permute4x64_epi64(_mm256_packus_epi16(words, words), 0x08);
        _mm_storeu_si128(reinterpret_cast<__m128i*>(pOut + 4 * x), clampedToAlpha(_mm256_castsi256_si128(bytes)));
    }
    return x;
}

bool hasAvx2()
{
    static const bool bAvx2 = __builtin_cpu_supports("avx2");
    return bAvx2;
}

// Filters two rows at once where the processor can; false where it cannot.
bool filterTwoRowsAcross(const uchar* pLineA, const uchar* pLineB, const Axis& across, int16_t* pOutA, int16_t* pOutB)
{
    if (hasAvx2())
        filterTwoRowsAcrossAvx2(pLineA, pLineB, across, pOutA, pOutB);
    return hasAvx2();
}

// One output row from the rows, an even number of them, paired with the weights.
void filterRowDown(const int16_t* const* rows, const int16_t* w, int count, int nPixels, uchar* pOut)
{
    filterDown(rows, w, count, hasAvx2() ? filterDownAvx2(rows, w, count, nPixels, pOut) : 0, nPixels, pOut);
}

#else

bool filterTwoRowsAcross(const uchar*, const uchar*, const Axis&, int16_t*, int16_t*)
{
    return false;
}

void filterRowDown(const int16_t* const* rows, const int16_t* w, int count, int nPixels, uchar* pOut)
{
    filterDown(rows, w, count, 0, nPixels, pOut);
}

#endif

Axis lanczosAxis(int nSource, int nTarget)
{
    // The kernel widens with the reduction; taps beyond the edge are dropped and the rest
    // renormalised.
    const double scale = double(nSource) / nTarget;
    const double stretch = std::max(1.0, scale);
    const double support = Lobes * stretch;
    const int one = 1 << WeightBits;
    Axis axis;
    std::vector<double> exact;
    std::vector<int> fixed;
    for (int i = 0; i < nTarget; ++i) {
        const double centre = (i + 0.5) * scale;
        const int from = std::max(0, int(std::floor(centre - support)));
        const int to = std::min(nSource - 1, int(std::ceil(centre + support)));
        exact.clear();
        double sum = 0.0;
        for (int s = from; s <= to; ++s) {
            exact.push_back(lanczos((s + 0.5 - centre) / stretch));
            sum += exact.back();
        }
        fixed.clear();
        int fixedSum = 0;
        for (double w : exact) {
            fixed.push_back(int(std::lround(w / sum * one)));
            fixedSum += fixed.back();
        }
        // The rounding remainder goes to the largest weight, so that a solid colour stays exact.
        *std::max_element(fixed.begin(), fixed.end()) += one - fixedSum;
        // Taps that rounded to nothing at either end cost time and give nothing.
        const auto firstUsed = std::find_if(fixed.begin(), fixed.end(), [](int w) { return w != 0; });
        const auto lastUsed = std::find_if(fixed.rbegin(), fixed.rend(), [](int w) { return w != 0; }).base();
        axis.first.push_back(from + int(firstUsed - fixed.begin()));
        axis.count.push_back(int(lastUsed - firstUsed));
        axis.offset.push_back(int(axis.weights.size()));
        axis.weights.insert(axis.weights.end(), firstUsed, lastUsed);
        if (axis.count.back() % 2 != 0)
            axis.weights.push_back(0);
    }
    return axis;
}

// One row of rows already filtered across, at the ring's slot for source row y.
int16_t* ringRow(std::vector<int16_t>& ring, size_t nValues, int depth, int y)
{
    return &ring[nValues * size_t(y % depth)];
}

} // namespace

// A 2 x 2 averaging step: rows arrive in bands, and a band of odd height leaves its last
// row waiting for the first of the next band.
struct CVXSBandResampler::Halving
{
    int width = 0; // of the averaged rows
    std::vector<uchar> waiting;
    bool bWaiting = false;
    std::vector<uchar> averaged;
};

// The Lanczos filter: each row filtered across once, when it arrives, into a ring of rows
// that stays in the cache, deep enough for the widest column filter and the row after it
// (two rows go in at once where the processor can); each output row is filtered down as
// soon as its last row is in.
struct CVXSBandResampler::Reduction
{
    Axis across;
    Axis down;
    size_t nValues = 0;
    int depth = 0;
    std::vector<int16_t> ring;
    std::vector<const int16_t*> taps;
    int nRowsIn = 0;
    int nRowsOut = 0;
};

CVXSBandResampler::CVXSBandResampler(const QSize& sourceSize, const QSize& size)
    : m_sourceSize(sourceSize)
    , m_size(size)
{
    if (sourceSize.isEmpty() || size.isEmpty())
        return;
    m_bCollect = sourceSize == size || size.width() > sourceSize.width() || size.height() > sourceSize.height();
    if (m_bCollect)
        return;
    QSize source = sourceSize;
    while (source.width() > HalvingFactor * size.width() && source.height() > HalvingFactor * size.height()) {
        source = QSize(source.width() / 2, source.height() / 2);
        m_halvings.push_back({source.width(), {}, false, {}});
    }
    m_pReduction = std::make_unique<Reduction>();
    Reduction& r = *m_pReduction;
    r.across = lanczosAxis(source.width(), size.width());
    // Square images into square places, as in the grid layouts, share one filter.
    r.down = source.height() == source.width() && size.height() == size.width()
                 ? r.across
                 : lanczosAxis(source.height(), size.height());
    r.nValues = size_t(size.width()) * 4;
    r.depth = *std::max_element(r.down.count.begin(), r.down.count.end()) + 1;
    r.ring.resize(r.nValues * size_t(r.depth));
}

CVXSBandResampler::~CVXSBandResampler() = default;

void CVXSBandResampler::addRows(const QImage& band)
{
    if (band.isNull() || m_nRowsIn >= m_sourceSize.height() || band.width() != m_sourceSize.width())
        return;
    const int nRows = qMin(band.height(), m_sourceSize.height() - m_nRowsIn);
    m_nRowsIn += nRows;
    if (m_bCollect) {
        collect(band, nRows);
        return;
    }
    if (m_result.isNull()) {
        // Opaque images keep 0xff in the alpha byte, so the premultiplied arithmetic serves both.
        m_format = band.hasAlphaChannel() ? QImage::Format_ARGB32_Premultiplied : QImage::Format_RGB32;
        m_result = QImage(m_size, m_format);
        if (m_result.isNull())
            return;
    }
    const QImage rows = band.format() == m_format ? band : band.convertToFormat(m_format);
    if (!rows.isNull())
        halve(0, rows.constBits(), rows.bytesPerLine(), nRows);
}

bool CVXSBandResampler::isComplete() const
{
    return m_nRowsIn == m_sourceSize.height() && !m_sourceSize.isEmpty();
}

QImage CVXSBandResampler::result() const
{
    if (!isComplete() || m_size.isEmpty())
        return QImage();
    if (!m_bCollect)
        return m_pReduction && m_pReduction->nRowsOut == m_size.height() ? m_result : QImage();
    if (m_result.size() == m_size)
        return m_result;
    return m_result.scaled(m_size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

void CVXSBandResampler::collect(const QImage& band, int nRows)
{
    // A whole image in one band is kept as it is.
    if (nRows == m_sourceSize.height()) {
        m_result = band.height() == nRows ? band : band.copy(0, 0, band.width(), nRows);
        return;
    }
    if (m_result.isNull())
        m_result = QImage(m_sourceSize, band.format());
    if (m_result.isNull() || band.format() != m_result.format())
        return;
    const int nFirst = m_nRowsIn - nRows;
    const size_t nBytes = size_t(qMin(band.bytesPerLine(), m_result.bytesPerLine()));
    for (int y = 0; y < nRows; ++y)
        std::memcpy(m_result.scanLine(nFirst + y), band.constScanLine(y), nBytes);
    m_result.setColorTable(band.colorTable());
}

void CVXSBandResampler::halve(size_t nLevel, const uchar* pRows, qsizetype nStride, int nRows)
{
    if (nLevel == m_halvings.size()) {
        filter(pRows, nStride, nRows);
        return;
    }
    Halving& level = m_halvings[nLevel];
    const size_t nInBytes = size_t(level.width) * 8;
    const qsizetype nOutStride = qsizetype(level.width) * 4;
    level.averaged.resize(size_t(nOutStride) * size_t(nRows / 2 + 1));
    int nOut = 0;
    int y = 0;
    if (level.bWaiting && nRows > 0) {
        averageBlocks(level.waiting.data(), pRows, level.width, level.averaged.data());
        level.bWaiting = false;
        nOut = 1;
        y = 1;
    }
    for (; y + 1 < nRows; y += 2, ++nOut)
        averageBlocks(pRows + y * nStride, pRows + (y + 1) * nStride, level.width,
                      level.averaged.data() + nOut * nOutStride);
    // The last row of an image of odd height never gets its pair and is left out.
    if (y < nRows) {
        level.waiting.assign(pRows + y * nStride, pRows + y * nStride + nInBytes);
        level.bWaiting = true;
    }
    halve(nLevel + 1, level.averaged.data(), nOutStride, nOut);
}

void CVXSBandResampler::filter(const uchar* pRows, qsizetype nStride, int nRows)
{
    Reduction& r = *m_pReduction;
    for (int i = 0; i < nRows && r.nRowsOut < m_size.height();) {
        const int y = r.nRowsIn;
        const uchar* pLine = pRows + i * nStride;
        const bool bTwo = i + 1 < nRows
                          && filterTwoRowsAcross(pLine, pLine + nStride, r.across, ringRow(r.ring, r.nValues, r.depth, y),
                                                 ringRow(r.ring, r.nValues, r.depth, y + 1));
        if (!bTwo)
            filterRowAcross(pLine, r.across, ringRow(r.ring, r.nValues, r.depth, y));
        const int nTaken = bTwo ? 2 : 1;
        i += nTaken;
        r.nRowsIn += nTaken;
        filterDownReadyRows();
    }
}

void CVXSBandResampler::filterDownReadyRows()
{
    Reduction& r = *m_pReduction;
    while (r.nRowsOut < m_size.height()) {
        const size_t y = size_t(r.nRowsOut);
        const int first = r.down.first[y];
        const int count = r.down.count[y];
        if (first + count > r.nRowsIn)
            return;
        r.taps.clear();
        for (int k = 0; k < count; ++k)
            r.taps.push_back(ringRow(r.ring, r.nValues, r.depth, first + k));
        // An odd last tap pairs with its own row, at the padded zero weight.
        if (count % 2 != 0)
            r.taps.push_back(r.taps.back());
        filterRowDown(r.taps.data(), &r.down.weights[size_t(r.down.offset[y])], int(r.taps.size()), m_size.width(),
                      m_result.scanLine(r.nRowsOut));
        ++r.nRowsOut;
    }
}
