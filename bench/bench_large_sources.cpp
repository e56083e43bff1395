// Measures vxlayout on large sources against the programs people would otherwise use.
//
// Two sets of 16 zone plates (grey, 8-bit RGB PNG), made once and kept in the cache folder
// ($XDG_CACHE_HOME/vx-bench, or ~/.cache/vx-bench): 8192 x 8192 and 2048 x 2048. In one run:
// 1. "Layout 4x4" of the 8192 set to PNG by vxlayout, against libvips: `vips thumbnail` of
//    each source to 1001 x 801 and `vips arrayjoin --across 4` of the thumbnails to PNG;
//    the time of vxlayout and its peak resident memory;
// 2. the same page of the 2048 set, against ImageMagick's `montage`, with vxlayout's peak
//    memory, and its pixels against the page the layout window exports of the same
//    sources read whole (identical, or a PSNR of at least 50 dB).
// Times are medians of --runs runs (1 by default); peaks the largest of them. Every figure
// is printed with its target; the exit status is 1 when a target is missed.
//
// Run offscreen:  QT_QPA_PLATFORM=offscreen build/bin/bench_large_sources [--runs N]
// Needs vips (Debian package libvips-tools) and montage (imagemagick) on the PATH.

#include "BenchLayoutPage.h"
#include "BenchProcess.h"
#include "BenchTargets.h"
#include "TestPictures.h"

#include <VXImageFileReader.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QImageReader>
#include <QImageWriter>
#include <QLoggingCategory>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtConcurrent>

#include <cmath>
#include <cstdio>
#include <functional>
#include <numeric>
#include <vector>

namespace {

constexpr int SourceCount = 16;
constexpr double VipsTimeTarget = 0.5;
constexpr double LargeMemoryTargetMiB = 256;
constexpr double MontageTimeTarget = 0.25;
constexpr double SmallMemoryTargetMiB = 200;
constexpr double PsnrTarget = 50;

CBenchTargets g_targets;

QString cacheFolder()
{
    QString strBase = qEnvironmentVariable("XDG_CACHE_HOME");
    if (strBase.isEmpty())
        strBase = QDir::home().filePath(QStringLiteral(".cache"));
    return QDir(strBase).filePath(QStringLiteral("vx-bench"));
}

QVector<int> sourceNumbers()
{
    QVector<int> numbers(SourceCount);
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

// The set's files, written once: each zone plate around another centre.
QStringList zonePlates(int nSide)
{
    const QString strFolder = QDir(cacheFolder()).filePath(QStringLiteral("zoneplates-%1").arg(nSide));
    if (!QDir().mkpath(strFolder))
        qFatal("cannot make %s", qPrintable(strFolder));
    QStringList paths;
    for (int i = 0; i < SourceCount; ++i)
        paths << QDir(strFolder).filePath(QStringLiteral("zoneplate-%1.png").arg(i, 2, 10, QLatin1Char('0')));
    QElapsedTimer timer;
    timer.start();
    const std::function<void(const int&)> make = [&](const int& i) {
        if (QImageReader(paths[i]).size() == QSize(nSide, nSide))
            return;
        const QPointF centre(nSide / 2.0 + (i % 4 - 2) * nSide / 37.0, nSide / 2.0 + (i / 4 - 2) * nSide / 41.0);
        QImageWriter writer(paths[i] + QStringLiteral(".part"), "png");
        if (!writer.write(zonePlate(nSide, centre)) || !QFile::rename(paths[i] + QStringLiteral(".part"), paths[i]))
            qFatal("cannot write %s", qPrintable(paths[i]));
    };
    QVector<int> numbers = sourceNumbers();
    QtConcurrent::blockingMap(numbers, make);
    std::printf("  (%d zone plates of %d x %d in %s, %.1f s to check or make)\n", SourceCount, nSide, nSide,
                qPrintable(strFolder), timer.nsecsElapsed() / 1e9);
    return paths;
}

double mebibytes(long nKiB)
{
    return nKiB / 1024.0;
}

// Time (median) and peak memory (largest) of a program's runs; not ok once a run failed.
struct Measured
{
    std::vector<double> seconds;
    long nMaxRssKiB = 0;
    bool bOk = true;

    void add(const ProcessRun& run)
    {
        bOk = bOk && run.bOk;
        seconds.push_back(run.dSeconds);
        nMaxRssKiB = std::max(nMaxRssKiB, run.nMaxRssKiB);
    }
    double median() const { return CBenchTargets::median(seconds); }
};

ProcessRun runVxLayout(const QStringList& sources, const QString& strPage)
{
    const QString strVxLayout = QApplication::applicationDirPath() + QStringLiteral("/vxlayout");
    return runProcess(QStringList {strVxLayout, "--layout", "Layout 4x4", "--export", strPage} + sources);
}

// Each source reduced to fit 1001 x 801 into vips' own format, then joined four across;
// the time is that of all the runs, the peak the largest.
ProcessRun runVips(const QString& strVips, const QStringList& sources, const QDir& work, const QString& strPage)
{
    ProcessRun total;
    total.bOk = true;
    QStringList thumbnails;
    for (int i = 0; i < sources.size(); ++i) {
        thumbnails << work.filePath(QStringLiteral("thumbnail-%1.v").arg(i));
        const ProcessRun run = runProcess({strVips, "thumbnail", sources[i], thumbnails.last(), "1001", "--height", "801"});
        total.dSeconds += run.dSeconds;
        total.nMaxRssKiB = std::max(total.nMaxRssKiB, run.nMaxRssKiB);
        total.bOk = total.bOk && run.bOk;
    }
    const ProcessRun join = runProcess({strVips, "arrayjoin", thumbnails.join(QLatin1Char(' ')), strPage, "--across", "4"});
    total.dSeconds += join.dSeconds;
    total.nMaxRssKiB = std::max(total.nMaxRssKiB, join.nMaxRssKiB);
    total.bOk = total.bOk && join.bOk;
    return total;
}

double psnr(const QImage& a, const QImage& b)
{
    double dSquares = 0;
    for (int y = 0; y < a.height(); ++y) {
        const auto* pA = reinterpret_cast<const QRgb*>(a.constScanLine(y));
        const auto* pB = reinterpret_cast<const QRgb*>(b.constScanLine(y));
        for (int x = 0; x < a.width(); ++x) {
            for (int shift : {0, 8, 16}) {
                const int d = int((pA[x] >> shift) & 0xff) - int((pB[x] >> shift) & 0xff);
                dSquares += d * d;
            }
        }
    }
    const double dMean = dSquares / (3.0 * a.width() * a.height());
    return dMean == 0 ? INFINITY : 10 * std::log10(255.0 * 255.0 / dMean);
}

// The page the layout window exports of the sources, read whole as the window reads them.
QImage windowPage(const QStringList& sources)
{
    const std::function<QImage(const QString&)> read = [](const QString& strPath) {
        QString strError;
        const QVector<QImage> pages = CVXImageFileReader::read(strPath, strError);
        if (pages.isEmpty())
            qFatal("cannot read %s: %s", qPrintable(strPath), qPrintable(strError));
        return pages.first();
    };
    CBenchLayoutPage page(QtConcurrent::blockingMapped<std::vector<QImage>>(sources, read));
    return page.render().convertToFormat(QImage::Format_RGB32);
}

void compareLarge(const QStringList& sources, const QDir& work, int nRuns)
{
    std::printf("Layout 4x4 of %d sources of 8192 x 8192 to PNG, %d run(s)\n", SourceCount, nRuns);
    const QString strVips = findTool("vips", "libvips-tools");
    Measured ours;
    Measured vips;
    for (int i = 0; i < nRuns; ++i) {
        ours.add(runVxLayout(sources, work.filePath(QStringLiteral("large.png"))));
        if (!strVips.isEmpty())
            vips.add(runVips(strVips, sources, work, work.filePath(QStringLiteral("large-vips.png"))));
    }
    if (!ours.bOk)
        qFatal("vxlayout failed");
    std::printf("  vxlayout: %.2f s, peak %.0f MiB\n", ours.median(), mebibytes(ours.nMaxRssKiB));
    if (strVips.isEmpty() || !vips.bOk) {
        g_targets.notMeasured("vxlayout / libvips time", strVips.isEmpty() ? "vips missing" : "vips failed");
    } else {
        std::printf("  vips thumbnail + arrayjoin: %.2f s, peak %.0f MiB\n", vips.median(), mebibytes(vips.nMaxRssKiB));
        g_targets.report("vxlayout / libvips time", ours.median() / vips.median(), VipsTimeTarget, true);
    }
    g_targets.report("vxlayout peak memory", mebibytes(ours.nMaxRssKiB), LargeMemoryTargetMiB, true, " MiB");
}

void compareSmall(const QStringList& sources, const QDir& work, int nRuns)
{
    std::printf("Layout 4x4 of %d sources of 2048 x 2048 to PNG, %d run(s)\n", SourceCount, nRuns);
    const QString strMontage = findTool("montage", "imagemagick");
    const QString strPage = work.filePath(QStringLiteral("small.png"));
    Measured ours;
    Measured montage;
    for (int i = 0; i < nRuns; ++i) {
        ours.add(runVxLayout(sources, strPage));
        if (!strMontage.isEmpty())
            montage.add(runProcess(QStringList {strMontage, "-tile", "4x4", "-geometry", "1001x801+0+0"} + sources
                                   + QStringList {work.filePath(QStringLiteral("small-montage.png"))}));
    }
    if (!ours.bOk)
        qFatal("vxlayout failed");
    std::printf("  vxlayout: %.2f s, peak %.0f MiB\n", ours.median(), mebibytes(ours.nMaxRssKiB));
    if (strMontage.isEmpty() || !montage.bOk) {
        g_targets.notMeasured("vxlayout / montage time", strMontage.isEmpty() ? "montage missing" : "montage failed");
    } else {
        std::printf("  montage: %.2f s, peak %.0f MiB\n", montage.median(), mebibytes(montage.nMaxRssKiB));
        g_targets.report("vxlayout / montage time", ours.median() / montage.median(), MontageTimeTarget, true);
    }
    g_targets.report("vxlayout peak memory", mebibytes(ours.nMaxRssKiB), SmallMemoryTargetMiB, true, " MiB");
    const QImage written = QImage(strPage).convertToFormat(QImage::Format_RGB32);
    const QImage expected = windowPage(sources);
    if (written.size() != expected.size()) {
        g_targets.notMeasured("page against the window's export (PSNR)", "the sizes differ");
        return;
    }
    const double dPsnr = psnr(written, expected);
    std::printf("  pixels identical to the window's export of the same sources: %s\n", std::isinf(dPsnr) ? "yes" : "no");
    g_targets.report("page against the window's export (PSNR)", std::min(dPsnr, 999.0), PsnrTarget, false, " dB");
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const int nRuns = CBenchTargets::runs(QApplication::arguments(), 1);
    QTemporaryDir work;
    if (!work.isValid())
        qFatal("no temporary folder");
    std::printf("Sources\n");
    const QStringList large = zonePlates(8192);
    const QStringList small = zonePlates(2048);
    compareLarge(large, QDir(work.path()), nRuns);
    compareSmall(small, QDir(work.path()), nRuns);
    return g_targets.finish();
}
