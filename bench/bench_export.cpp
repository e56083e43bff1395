// Measures how fast and how well a full page of large, detailed images is exported.
//
// "Layout 4x4" on a 1000 x 800 page is filled with 16 generated 2048 x 2048 colour images
// (a zone plate, sharp-edged checks and bars, colour gradients and noise, one quadrant
// each, different in every image), and in one run:
// 1. our PNG export, from the filled layout to the file on disk (the 4004 x 3204 page),
//    is timed against the encode floor: vips pngsave of the same page, saved losslessly
//    first, at the same zlib level;
// 2. vxlayout, from the 16 PNG files to the PNG on disk, is timed against ImageMagick's
//    montage of the same files into the same page size, and the files are compared by size;
// 3. the peak resident memory of vxlayout is compared with the memory the 16 decoded
//    sources and the page take;
// 4. every exported cell is compared (PSNR) with a Lanczos-3 reduction of its source.
// Times are medians of several runs. Every figure is printed with its target; the exit
// status is 1 when a target is missed or a figure could not be measured.
//
// Run offscreen:  QT_QPA_PLATFORM=offscreen build/bin/bench_export [--runs N] [--no-area-reduction]
// --no-area-reduction reduces the sources by picking pixels instead (before they are put
// into the layout), to show that the quality check fails on aliasing.
// Needs vips (Debian package libvips-tools) and montage (imagemagick) on the PATH.

#include "BenchProcess.h"
#include "BenchLayoutPage.h"
#include "BenchTargets.h"
#include "LanczosReference.h"
#include "TestPictures.h"

#include <VXSImageExporter.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QImageReader>
#include <QLoggingCategory>
#include <QPainter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtConcurrent>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <functional>
#include <numeric>
#include <vector>

namespace {

constexpr int SourceCount = 16;
constexpr int SourceSide = 2048;
const QSize SceneSize(1000, 800);
// Qt's PNG writer leaves zlib at its default level.
constexpr int ZlibLevel = 6;

constexpr double FloorTarget = 1.5;
constexpr double MontageTimeTarget = 0.35;
constexpr double MontageSizeTarget = 1.25;
constexpr double MemoryTarget = 2.0;
constexpr double PsnrTarget = 30.0;

CBenchTargets g_targets;

// Quadrants: a zone plate reaching the sampling limit at its edges, checks and bars with
// sharp edges, smooth colour gradients, and colour noise around mid grey.
QImage detailedSource(int variant)
{
    QImage image(SourceSide, SourceSide, QImage::Format_RGB32);
    const int half = SourceSide / 2;
    const int check = 5 + variant;
    QRandomGenerator random(quint32(1000 + variant));
    // The top-left quadrant, the zone plate, is drawn at the end.
    for (int y = 0; y < SourceSide; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = y < half ? half : 0; x < SourceSide; ++x) {
            const bool bRight = x >= half;
            const bool bBottom = y >= half;
            if (bRight && !bBottom) {
                const bool bDark = ((x / check) + (y / check)) % 2 == 0;
                const bool bBar = (x + 2 * y) % 61 < 3;
                line[x] = bBar ? qRgb(220, 30, 30) : bDark ? qRgb(20, 20, 60) : qRgb(240, 240, 200);
            } else if (!bRight) {
                line[x] = qRgb(x * 255 / half, (y - half) * 255 / half, (variant * 16 + x / 8) & 255);
            } else {
                const quint32 bits = random.generate();
                line[x] = qRgb(104 + int(bits & 47), 104 + int((bits >> 8) & 47), 104 + int((bits >> 16) & 47));
            }
        }
    }
    QPainter(&image).drawImage(0, 0, zonePlate(half, QPointF(half / 2.0 + variant * 9, half / 2.0 - variant * 7)));
    return image;
}

// ---- Other programs ----

// The runs of one program. The runs of the two programs compared alternate, so that both
// meet the same load on a shared machine.
struct Timings
{
    std::vector<double> seconds;
    long nMaxRssKiB = 0;
    bool bOk = true;

    void run(const QStringList& command)
    {
        if (!bOk)
            return;
        const ProcessRun run = runProcess(command);
        if (!run.bOk) {
            std::printf("  failed: %s\n", qPrintable(command.join(QLatin1Char(' '))));
            bOk = false;
            return;
        }
        seconds.push_back(run.dSeconds);
        nMaxRssKiB = std::max(nMaxRssKiB, run.nMaxRssKiB);
    }
    double median() const { return CBenchTargets::median(seconds); }
};

QVector<int> cellNumbers()
{
    QVector<int> numbers(SourceCount);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

double mebibytes(double bytes)
{
    return bytes / (1024.0 * 1024.0);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const QStringList arguments = QApplication::arguments();
    const bool bPickPixels = arguments.contains(QStringLiteral("--no-area-reduction"));
    const int runs = CBenchTargets::runs(arguments, 3);
    QTemporaryDir dir;
    if (!dir.isValid())
        qFatal("no temporary folder");

    std::printf("Layout 4x4, page %d x %d, %d sources of %d x %d, medians of %d runs%s\n", SceneSize.width(),
                SceneSize.height(), SourceCount, SourceSide, SourceSide, runs,
                bPickPixels ? ", sources reduced by picking pixels" : "");
    QElapsedTimer timer;
    timer.start();
    QStringList sourcePaths;
    for (int i = 0; i < SourceCount; ++i)
        sourcePaths << dir.filePath(QStringLiteral("source%1.png").arg(i, 2, 10, QLatin1Char('0')));
    const std::function<QImage(int)> makeSource = [&sourcePaths](int i) {
        QImage image = detailedSource(i);
        if (!image.save(sourcePaths[i], "png"))
            qFatal("could not write %s", qPrintable(sourcePaths[i]));
        return image;
    };
    const std::vector<QImage> sources = QtConcurrent::blockingMapped<std::vector<QImage>>(cellNumbers(), makeSource);
    std::printf("  (sources generated and written as PNG in %.1f s)\n", timer.nsecsElapsed() / 1e9);

    // 1. Our PNG export against the encode floor. A first export gives the page that vips
    // encodes.
    CBenchLayoutPage page(sources);
    if (bPickPixels)
        page.pickPixels();
    const QString strOurs = dir.filePath(QStringLiteral("ours.png"));
    QImage rendered;
    page.exportPng(strOurs, &rendered);
    const QString strVips = findTool("vips", "libvips-tools");
    const QString strPpm = dir.filePath(QStringLiteral("page.ppm"));
    const QString strV = dir.filePath(QStringLiteral("page.v"));
    const QString strFloor = dir.filePath(QStringLiteral("floor.png"));
    Timings floor;
    floor.bOk = !strVips.isEmpty();
    if (floor.bOk && (!rendered.save(strPpm, "ppm") || !runProcess({strVips, "copy", strPpm, strV}).bOk))
        qFatal("could not save the page losslessly");
    std::vector<double> exportTimes;
    std::vector<double> renderTimes;
    for (int i = 0; i < runs; ++i) {
        exportTimes.push_back(page.exportPng(strOurs, nullptr));
        renderTimes.push_back(page.lastRenderSeconds());
        floor.run({strVips, "pngsave", strV, strFloor, "--compression", QString::number(ZlibLevel)});
    }
    const double dOurs = CBenchTargets::median(exportTimes);
    std::printf("PNG export of the filled layout (%d x %d, zlib level %d)\n", rendered.width(), rendered.height(),
                ZlibLevel);
    std::printf("  ours: %.3f s (rendering %.3f s, encoding and writing %.3f s), %.1f MiB\n", dOurs,
                CBenchTargets::median(renderTimes), dOurs - CBenchTargets::median(renderTimes), mebibytes(QFileInfo(strOurs).size()));
    if (!floor.bOk) {
        g_targets.notMeasured("ours / vips pngsave", strVips.isEmpty() ? "vips missing" : "vips failed");
    } else {
        std::printf("  vips pngsave: %.3f s, %.1f MiB\n", floor.median(), mebibytes(QFileInfo(strFloor).size()));
        g_targets.report("ours / vips pngsave", dOurs / floor.median(), FloorTarget, true);
    }

    // 2. and 3. vxlayout against montage, and vxlayout's peak memory.
    const QString strVxLayout = QApplication::applicationDirPath() + QStringLiteral("/vxlayout");
    const QString strBatch = dir.filePath(QStringLiteral("vxlayout.png"));
    const QString strMontage = findTool("montage", "imagemagick");
    const QString strTheirs = dir.filePath(QStringLiteral("montage.png"));
    Timings batch;
    Timings montage;
    montage.bOk = !strMontage.isEmpty();
    for (int i = 0; i < runs; ++i) {
        batch.run(QStringList {strVxLayout, "--layout", "Layout 4x4", "--export", strBatch} + sourcePaths);
        montage.run(QStringList {strMontage, "-tile", "4x4", "-geometry", "1001x801+0+0"} + sourcePaths
                    + QStringList {strTheirs});
    }
    if (!batch.bOk)
        qFatal("vxlayout failed");
    std::printf("From %d PNG files to the PNG page\n", SourceCount);
    const qint64 nBatchBytes = QFileInfo(strBatch).size();
    std::printf("  vxlayout: %.3f s, %.1f MiB, peak resident memory %.1f MiB\n", batch.median(),
                mebibytes(nBatchBytes), batch.nMaxRssKiB / 1024.0);
    if (!bPickPixels) {
        const bool bSame = QImage(strBatch).convertToFormat(QImage::Format_RGB32)
                           == QImage(strOurs).convertToFormat(QImage::Format_RGB32);
        std::printf("  vxlayout's page equals the layout's own export: %s\n", bSame ? "yes" : "NO");
        if (!bSame)
            g_targets.notMeasured("vxlayout's page against the layout's own export", "the pixels differ");
    }
    if (!montage.bOk) {
        g_targets.notMeasured("vxlayout / montage time", strMontage.isEmpty() ? "montage missing" : "montage failed");
    } else {
        const qint64 nTheirBytes = QFileInfo(strTheirs).size();
        const QSize theirSize = QImageReader(strTheirs).size();
        std::printf("  montage: %.3f s, %.1f MiB (%d x %d)\n", montage.median(), mebibytes(nTheirBytes),
                    theirSize.width(), theirSize.height());
        g_targets.report("vxlayout / montage time", batch.median() / montage.median(), MontageTimeTarget, true);
        g_targets.report("vxlayout / montage file size", double(nBatchBytes) / nTheirBytes, MontageSizeTarget, true);
    }
    const double dDecodedBytes = double(SourceCount) * SourceSide * SourceSide * 4
                                 + double(rendered.width()) * rendered.height() * 4;
    std::printf("  16 decoded sources and the page take %.1f MiB\n", mebibytes(dDecodedBytes));
    g_targets.report("vxlayout peak memory / (sources + page)", batch.nMaxRssKiB * 1024.0 / dDecodedBytes, MemoryTarget, true);

    // 4. Each exported cell against a Lanczos-3 reduction of its source.
    const QImage exported = QImage(strOurs).convertToFormat(QImage::Format_RGB32);
    const std::function<double(int)> cellPsnr = [&](int cell) {
        const QRect target = page.cellTarget(cell);
        return CLanczosReference(sources[size_t(cell)], target.size()).psnr(exported.copy(target));
    };
    const std::vector<double> psnrs = QtConcurrent::blockingMapped<std::vector<double>>(cellNumbers(), cellPsnr);
    std::printf("Cells (%d x %d) against a Lanczos-3 reduction of their sources, PSNR in dB:\n ",
                page.cellTarget(0).width(), page.cellTarget(0).height());
    for (double d : psnrs)
        std::printf(" %.1f", d);
    std::printf("\n");
    g_targets.report("lowest cell PSNR", *std::min_element(psnrs.begin(), psnrs.end()), PsnrTarget, false, " dB");
    // Where the differences lie: the quadrants of the worst cell.
    const int worst = int(std::min_element(psnrs.begin(), psnrs.end()) - psnrs.begin());
    const QRect worstTarget = page.cellTarget(worst);
    const CLanczosReference worstReference(sources[size_t(worst)], worstTarget.size());
    const QImage worstShown = exported.copy(worstTarget);
    const int halfWidth = worstTarget.width() / 2;
    const int halfHeight = worstTarget.height() / 2;
    std::printf("  cell %d by quadrant (zone plate, checks, gradients, noise):", worst);
    for (const QPoint& corner : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)}) {
        const QRect quadrant(corner.x() * halfWidth, corner.y() * halfHeight, halfWidth, halfHeight);
        std::printf(" %.1f", worstReference.psnr(worstShown.copy(quadrant), quadrant.topLeft()));
    }
    std::printf(" dB\n");

    return g_targets.finish();
}
