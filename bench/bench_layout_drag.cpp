// Measures how smoothly a page of images drags, and how faithfully a large image is shown.
//
// 1. "Layout 4x4" in a 1100 x 800 view is filled with 16 images; one image is dragged
//    across the page and each drag step (a mouse move on the viewport plus the repaint it
//    causes) is timed. The median step with 4096 x 4096 sources is compared with the
//    median with 256 x 256 sources, both measured in this process.
// 2. A 4096 x 4096 zone plate shown in a cell is grabbed from the screen and compared
//    (PSNR) with an exact area-averaged reduction of the source to the shown size.
//
// Run offscreen:  QT_QPA_PLATFORM=offscreen build/bin/bench_layout_drag [steps]

#include "TestPictures.h"

#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

constexpr int Layout4x4 = 8;
const QSize ViewSize(1100, 800);

// A zone plate whose centre shifts with the variant, so that every source is different.
QImage shiftedZonePlate(int side, int variant)
{
    return zonePlate(side, QPointF(side / 2.0 + variant * 7, side / 2.0 - variant * 5), QImage::Format_ARGB32);
}

// Exact area average: every output pixel is the mean of the source area it covers,
// partly covered source pixels weighted by the covered fraction.
std::vector<double> areaAverageAxisWeights(int source, int target, int index, int* pFirst)
{
    const double scale = double(source) / target;
    const double from = index * scale;
    const double to = from + scale;
    *pFirst = int(std::floor(from));
    std::vector<double> weights;
    for (int s = *pFirst; s < source && s < to; ++s)
        weights.push_back((std::min<double>(s + 1, to) - std::max<double>(s, from)) / scale);
    return weights;
}

std::vector<double> areaAverage(const QImage& source, QSize target)
{
    const int sw = source.width();
    const int sh = source.height();
    std::vector<double> rows(size_t(target.width()) * sh);
    for (int x = 0; x < target.width(); ++x) {
        int first = 0;
        const std::vector<double> w = areaAverageAxisWeights(sw, target.width(), x, &first);
        for (int y = 0; y < sh; ++y) {
            const auto* line = reinterpret_cast<const QRgb*>(source.constScanLine(y));
            double sum = 0;
            for (size_t i = 0; i < w.size(); ++i)
                sum += w[i] * qGray(line[first + int(i)]);
            rows[size_t(y) * target.width() + x] = sum;
        }
    }
    std::vector<double> result(size_t(target.width()) * target.height());
    for (int y = 0; y < target.height(); ++y) {
        int first = 0;
        const std::vector<double> w = areaAverageAxisWeights(sh, target.height(), y, &first);
        for (int x = 0; x < target.width(); ++x) {
            double sum = 0;
            for (size_t i = 0; i < w.size(); ++i)
                sum += w[i] * rows[size_t(first + int(i)) * target.width() + x];
            result[size_t(y) * target.width() + x] = sum;
        }
    }
    return result;
}

double psnr(const QImage& shown, const std::vector<double>& reference)
{
    double squared = 0;
    for (int y = 0; y < shown.height(); ++y)
        for (int x = 0; x < shown.width(); ++x) {
            const double d = qGray(shown.pixel(x, y)) - reference[size_t(y) * shown.width() + x];
            squared += d * d;
        }
    const double mse = squared / (double(shown.width()) * shown.height());
    return mse == 0 ? 99.0 : 10.0 * std::log10(255.0 * 255.0 / mse);
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

class Page
{
public:
    explicit Page(int sourceSide)
    {
        m_manager.getLayoutWindow()->show();
        if (!QTest::qWaitForWindowExposed(m_manager.getLayoutWindow()))
            qFatal("the layout window was not shown");
        CVXSLayoutView* pView = m_manager.getLayoutView();
        for (int attempt = 0; attempt < 3 && pView->size() != ViewSize; ++attempt) {
            m_manager.getLayoutWindow()->resize(m_manager.getLayoutWindow()->size() + ViewSize - pView->size());
            if (!QTest::qWaitFor([pView] { return pView->size() == ViewSize; }, 500))
                qWarning("the view did not reach %dx%d", ViewSize.width(), ViewSize.height());
        }
        QComboBox* pStyle = m_manager.getLayoutWindow()->layoutStyleCombo();
        pStyle->setCurrentIndex(Layout4x4);
        m_manager.getLayoutWindow()->selChngLayoutStyle();
        for (int i = 0; i < 16; ++i) {
            auto* pItem = new CVXSLayoutItemImage(shiftedZonePlate(sourceSide, i));
            m_manager.getScene()->addItem(pItem);
            m_manager.addImageItem(pItem, true);
            m_images.push_back(pItem);
        }
        viewport()->repaint();
    }

    QWidget* viewport() const { return m_manager.getLayoutView()->viewport(); }
    CVXSLayoutView* view() const { return m_manager.getLayoutView(); }
    CVXSLayoutItemImage* image(int i) const { return m_images[size_t(i)]; }

    // Drags the first image around the page; returns the time of each step in ms.
    std::vector<double> dragSteps(int steps)
    {
        const QPoint start = image(0)->rect().center().toPoint();
        QTest::mousePress(viewport(), Qt::LeftButton, Qt::NoModifier, start);
        std::vector<double> times;
        QElapsedTimer timer;
        for (int step = 0; step < steps; ++step) {
            // A closed tour over the page: the image snaps through many cells.
            const double t = 2 * M_PI * step / 50.0;
            const QPoint p(550 + int(420 * std::cos(t)), 400 + int(300 * std::sin(1.3 * t)));
            timer.start();
            QTest::mouseMove(viewport(), p);
            viewport()->repaint();
            times.push_back(timer.nsecsElapsed() / 1e6);
        }
        QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, start);
        return times;
    }

private:
    CVXSLayoutManager m_manager;
    std::vector<CVXSLayoutItemImage*> m_images; // owned by the manager's scene
};

double shownPsnr(Page& page, int index)
{
    CVXSLayoutItemImage* pItem = page.image(index);
    page.viewport()->repaint();
    const QImage screen = page.viewport()->grab().toImage().convertToFormat(QImage::Format_ARGB32);
    // The device pixels the item covers, edges rounded as the item rounds them.
    const QRectF exact = page.view()->viewportTransform().mapRect(pItem->boundingRect());
    const int left = qRound(exact.left());
    const int top = qRound(exact.top());
    const QRect shownRect(left, top, qRound(exact.right()) - left, qRound(exact.bottom()) - top);
    const QImage shown = screen.copy(shownRect);
    return psnr(shown, areaAverage(pItem->getImage(), shownRect.size()));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const int steps = argc > 1 ? std::max(200, atoi(argv[1])) : 300;

    std::printf("Layout 4x4, view %d x %d, %d drag steps per run\n", ViewSize.width(), ViewSize.height(), steps);
    double medians[2] = {0, 0};
    double psnrLarge = 0;
    const int sides[2] = {256, 4096};
    for (int run = 0; run < 2; ++run) {
        auto page = std::make_unique<Page>(sides[run]);
        page->dragSteps(20); // warm-up: first paints build the screen-sized copies
        const std::vector<double> times = page->dragSteps(steps);
        medians[run] = median(times);
        std::printf("  sources %4d x %-4d: median drag step %.3f ms (min %.3f, max %.3f)\n", sides[run], sides[run],
                    medians[run], *std::min_element(times.begin(), times.end()),
                    *std::max_element(times.begin(), times.end()));
        if (sides[run] == 4096)
            psnrLarge = shownPsnr(*page, 5);
    }
    const double ratio = medians[1] / medians[0];
    std::printf("Ratio large / small median: %.2f (target <= 1.50): %s\n", ratio, ratio <= 1.5 ? "met" : "MISSED");
    std::printf("PSNR of a 4096 x 4096 zone plate as shown in a cell vs area average: %.1f dB (target >= 30): %s\n",
                psnrLarge, psnrLarge >= 30 ? "met" : "MISSED");
    return 0;
}
