// Measures whether the layout window keeps responding while long work runs: "Layout 4x4"
// of 16 images of 4096 x 4096 (1 GiB) is saved, opened into a new window and exported as
// PNG through the window's own commands, while a timer of 10 ms ticks on the GUI thread. The
// longest gap between two ticks during each is printed with its target (100 ms), "met" or
// "MISSED"; the exit status is 1 when a target is missed.
//
// Run offscreen:  QT_QPA_PLATFORM=offscreen build/bin/bench_window_responsiveness

#include "BenchTargets.h"
#include "FileDialogAnswer.h"
#include "LayoutFixture.h"
#include "TestPictures.h"

#include <VXSLayoutManager.h>
#include <file/VXSLayoutFileCommands.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

constexpr int Layout4x4 = 8;
constexpr int SourceSide = 4096;
constexpr double GapTargetMs = 100;
const QSize ViewSize(1000, 800);

CBenchTargets g_targets;

// The longest time between two ticks of a 10 ms timer while the work runs, and the work's
// own time.
void measure(const char* pWhat, const std::function<bool()>& work)
{
    QElapsedTimer clock;
    qint64 nLastTick = 0;
    qint64 nLongestGap = 0;
    qint64 nGapStart = 0;
    const auto tick = [&] {
        const qint64 nNow = clock.elapsed();
        if (nNow - nLastTick > nLongestGap) {
            nLongestGap = nNow - nLastTick;
            nGapStart = nLastTick;
        }
        nLastTick = nNow;
    };
    QTimer ticker;
    ticker.setTimerType(Qt::PreciseTimer);
    QObject::connect(&ticker, &QTimer::timeout, tick);
    ticker.start(10);
    clock.start();
    const bool bOk = work();
    // The gap up to the end of the work counts too.
    tick();
    ticker.stop();
    // Where the longest gap began tells which step held the GUI thread.
    std::printf("  %s: %.2f s%s, the longest gap from %.2f s\n", pWhat, clock.elapsed() / 1000.0, bOk ? "" : " (FAILED)",
                nGapStart / 1000.0);
    if (!bOk)
        g_targets.notMeasured(pWhat, "the command failed");
    else
        g_targets.report(qPrintable(QStringLiteral("longest gap between ticks while %1").arg(QLatin1String(pWhat))),
                         double(nLongestGap), GapTargetMs, true, " ms");
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QTemporaryDir dir;
    if (!dir.isValid())
        qFatal("no temporary folder");
    std::printf("Layout 4x4 of 16 images of %d x %d, a 10 ms timer on the GUI thread\n", SourceSide, SourceSide);
    const QImage plate = zonePlate(SourceSide, QPointF(SourceSide / 2.0, SourceSide / 2.0));
    const QString strLayout = dir.filePath(QStringLiteral("large.vxlayout"));
    {
        LayoutFixture layout(ViewSize);
        layout.chooseStyle(Layout4x4);
        for (int i = 0; i < 16; ++i) {
            // Each its own image, as from different sources.
            QImage image = plate.copy();
            image.setPixel(i, 0, qRgb(255, 0, 0));
            layout.pasteImage(image);
        }
        QApplication::processEvents();
        measure("saving", [&] { return layout.manager()->fileCommands()->saveTo(strLayout); });
    }
    LayoutFixture opened(ViewSize);
    measure("opening", [&] {
        const bool bOpened = opened.manager()->fileCommands()->openFile(strLayout);
        // Until the opened layout has been painted.
        QApplication::processEvents();
        return bOpened;
    });
    const QString strPage = dir.filePath(QStringLiteral("page.png"));
    measure("exporting", [&] {
        CFileDialogAnswers answers({chooseFile(QStringLiteral("PNG Image (*.png)"), strPage)});
        opened.manager()->exportLayout();
        return QFileInfo::exists(strPage);
    });
    return g_targets.finish();
}
