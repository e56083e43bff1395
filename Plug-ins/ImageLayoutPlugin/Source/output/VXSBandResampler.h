#pragma once

#include <QImage>
#include <QSize>

#include <memory>
#include <vector>

// Scales an image that arrives a band of rows at a time, top to bottom, to the pixels
// CVXSImageResampler::scaled gives for the whole image. A reduction holds only the rows its
// filter still needs, so that a source far larger than memory allows passes through; an
// enlargement, or a copy at the same size, gathers the whole image first.
class CVXSBandResampler
{
public:
    // The source's size as its bands will add up, and the size to scale it to.
    CVXSBandResampler(const QSize& sourceSize, const QSize& size);
    ~CVXSBandResampler();
    CVXSBandResampler(const CVXSBandResampler&) = delete;
    CVXSBandResampler& operator=(const CVXSBandResampler&) = delete;

    // The next rows of the source, of its width, in one format throughout; rows beyond the
    // source's height are ignored.
    void addRows(const QImage& band);
    // Whether every row of the source has been added.
    bool isComplete() const;
    // The scaled image once complete; null before, or when the size is empty or memory ran out.
    QImage result() const;

private:
    struct Halving;
    struct Reduction;

    void collect(const QImage& band, int nRows);
    // Rows into halving step nLevel; past the last step they go to the filter.
    void halve(size_t nLevel, const uchar* pRows, qsizetype nStride, int nRows);
    void filter(const uchar* pRows, qsizetype nStride, int nRows);
    void filterDownReadyRows();

    QSize m_sourceSize;
    QSize m_size;
    int m_nRowsIn = 0;
    bool m_bCollect = false;
    QImage::Format m_format = QImage::Format_Invalid;
    std::vector<Halving> m_halvings;
    std::unique_ptr<Reduction> m_pReduction;
    // The gathered source, or the reduced image as its rows are filtered.
    QImage m_result;
};
