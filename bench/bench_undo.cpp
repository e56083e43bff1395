// Measures how fast the layout's changes with large images are undone and redone, and what
// the undo history costs in memory.
//
// "Layout 4x4" in an 1100 x 800 view gets 16 distinct images of 4096 x 4096 pasted from the
// clipboard with the window's paste action, one undo step each (1 GiB of images). Then:
// 1. the window's Undo and Redo actions are timed on a paste, a move (an image dragged with
//    the mouse into another cell), a delete (an image clicked and Delete pressed) and New
//    (the whole layout cleared, the question answered Yes), each several times. Every time
//    includes processing events until the view has painted the result.
// 2. the resident memory (VmRSS) of the layout with its history cleared is compared with
//    the memory after many more steps: moves, 16 deletes undone, New undone and redone.
//    What the history adds is set against the layout's own image memory.
//
// Run offscreen:  QT_QPA_PLATFORM=offscreen build/bin/bench_undo [--pairs N] [--moves N] [--copy-images]
// --copy-images keeps, in this program, a deep copy of the images of every recorded step, as a
// history that copied its images would; the memory check must then fail.

#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <undo/VXSLayoutSnapshot.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFile>
#include <QLoggingCategory>
#include <QMessageBox>
#include <QTimer>
#include <QUndoStack>
#include <QtTest>

#include <malloc.h>

#include <algorithm>
#include <cstdio>
#include <vector>

namespace {

constexpr int ImageCount = 16;
constexpr int ImageSide = 4096;
const QSize ViewSize(1100, 800);
constexpr double UndoTargetMs = 50.0;
constexpr double MemoryTargetPercent = 10.0;
constexpr double MiB = 1024.0 * 1024.0;

// A colour gradient, different for every variant; fast to make.
QImage gradientImage(int variant)
{
    QImage image(ImageSide, ImageSide, QImage::Format_ARGB32);
    for (int y = 0; y < ImageSide; ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < ImageSide; ++x)
            line[x] = qRgb((x >> 4) & 255, (y >> 4) & 255, (variant * 16 + ((x + y) >> 6)) & 255);
    }
    return image;
}

// Resident memory in bytes, after giving freed heap back to the system so that only what
// is still held counts.
double residentBytes()
{
    malloc_trim(0);
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        qFatal("cannot read /proc/self/status");
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toDouble() * 1024.0;
    }
    qFatal("no VmRSS in /proc/self/status");
}

struct Times
{
    std::vector<double> undo;
    std::vector<double> redo;
};

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double maximum(const std::vector<double>& values)
{
    return *std::max_element(values.begin(), values.end());
}

// Clicks Yes in the next message box, once it is shown; polls so that it also works when
// the box is still being set up.
void answerNextQuestionYes()
{
    auto* pTimer = new QTimer;
    pTimer->setInterval(5);
    QObject::connect(pTimer, &QTimer::timeout, pTimer, [pTimer] {
        auto* pBox = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!pBox || !pBox->isVisible())
            return;
        pTimer->stop();
        pTimer->deleteLater();
        QTest::mouseClick(pBox->button(QMessageBox::Yes), Qt::LeftButton);
    });
    pTimer->start();
}

class UndoBench : public QObject
{
public:
    UndoBench()
    {
        window()->show();
        if (!QTest::qWaitForWindowExposed(window()))
            qFatal("the layout window was not shown");
        fitView();
        QComboBox* pStyle = window()->layoutStyleCombo();
        const int nStyle = pStyle->findText(QStringLiteral("Layout 4x4"));
        pStyle->setCurrentIndex(nStyle);
        emit pStyle->activated(nStyle);
        view()->viewport()->installEventFilter(this);
    }

    CVXSLayoutWindow* window() const { return m_manager.getLayoutWindow(); }
    CVXSLayoutView* view() const { return m_manager.getLayoutView(); }
    QUndoStack* stack() { return m_manager.undoStack(); }
    int copiedImages() const
    {
        int nCount = 0;
        for (const QList<QImage>& copies : m_copies)
            nCount += copies.size();
        return nCount;
    }
    // From now on, keep a copy of the images of every recorded step.
    void copyImagesOfSteps() { m_bCopyImages = true; }

    // Copies the image to the clipboard and pastes it with the window's paste action.
    void paste(const QImage& image)
    {
        userStep([this, &image] {
            QGuiApplication::clipboard()->setImage(image);
            action("m_pPasteAction")->trigger();
        });
    }

    // Drags the topmost image with the mouse from its cell to the next cell.
    void moveTopImage()
    {
        CVXSLayoutItemImage* pImage = topImage();
        QRect cell;
        m_manager.getCellRect((pImage->getCellIndex() + 1) % ImageCount, cell, false);
        const QPoint from = view()->mapFromScene(pImage->rect().center());
        const QPoint to = view()->mapFromScene(QRectF(cell).center());
        userStep([this, from, to] {
            QTest::mousePress(view()->viewport(), Qt::LeftButton, Qt::NoModifier, from);
            for (int step = 1; step <= 8; ++step)
                QTest::mouseMove(view()->viewport(), from + (to - from) * step / 8);
            QTest::mouseRelease(view()->viewport(), Qt::LeftButton, Qt::NoModifier, to);
        });
    }

    // Clicks the topmost image and presses Delete.
    void deleteTopImage()
    {
        const QPoint centre = view()->mapFromScene(topImage()->rect().center());
        userStep([this, centre] {
            QTest::mouseClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, centre);
            view()->setFocus();
            QTest::keyClick(view(), Qt::Key_Delete);
        });
    }

    // New, answering the question whether to clear the layout with Yes.
    void newLayout()
    {
        userStep([this] {
            answerNextQuestionYes();
            action("m_pNewAction")->trigger();
        });
    }

    // Undo or Redo through the window's action, until the view has painted; in ms.
    double undo() { return triggerAndRepaint("m_pUndoAction"); }
    double redo() { return triggerAndRepaint("m_pRedoAction"); }

    Times undoRedoPairs(int nPairs)
    {
        Times times;
        for (int i = 0; i < nPairs; ++i) {
            times.undo.push_back(undo());
            times.redo.push_back(redo());
        }
        return times;
    }

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override
    {
        if (pEvent->type() == QEvent::Paint)
            ++m_nPaints;
        return QObject::eventFilter(pWatched, pEvent);
    }

private:
    void fitView()
    {
        // The view follows the window; a window squeezed by its contents may need more rounds.
        bool bFitted = view()->size() == ViewSize;
        for (int attempt = 0; attempt < 3 && !bFitted; ++attempt) {
            window()->resize(window()->size() + ViewSize - view()->size());
            bFitted = QTest::qWaitFor([this] { return view()->size() == ViewSize; }, 500);
        }
        if (!bFitted)
            qWarning("the view is %dx%d, not %dx%d", view()->width(), view()->height(), ViewSize.width(),
                     ViewSize.height());
    }

    QAction* action(const char* pName) const
    {
        auto* pAction = window()->findChild<QAction*>(QString::fromLatin1(pName));
        if (!pAction)
            qFatal("no action %s", pName);
        return pAction;
    }

    CVXSLayoutItemImage* topImage() const
    {
        CVXSLayoutItemImage* pTop = nullptr;
        for (QGraphicsItem* pItem : m_manager.layoutItems()) {
            if (pItem->type() == CVXSLayoutItemImage::Type && (!pTop || pItem->zValue() > pTop->zValue()))
                pTop = static_cast<CVXSLayoutItemImage*>(pItem);
        }
        if (!pTop)
            qFatal("no image left in the layout");
        return pTop;
    }

    // Runs what the user does and checks that it became exactly one undo step. With
    // --copy-images the images of the items the step changed are copied and kept as long as
    // the step's command would live: a new step drops the steps that were undone.
    template <typename UserAction>
    void userStep(UserAction act)
    {
        const CVXSLayoutSnapshot before = CVXSLayoutSnapshot::take(m_manager);
        const int nIndex = stack()->index();
        act();
        QCoreApplication::processEvents();
        if (stack()->index() != nIndex + 1)
            qFatal("a step did not become one undo step");
        if (m_bCopyImages) {
            m_copies.resize(nIndex);
            m_copies.append(changedImageCopies(before, CVXSLayoutSnapshot::take(m_manager)));
        }
    }

    static QList<QImage> changedImageCopies(const CVXSLayoutSnapshot& before, const CVXSLayoutSnapshot& after)
    {
        QList<QImage> copies;
        for (auto it = before.items.cbegin(); it != before.items.cend(); ++it) {
            if (after.items.value(it.key()) != it.value() && !it.value().image.isNull())
                copies.append(it.value().image.copy());
        }
        for (auto it = after.items.cbegin(); it != after.items.cend(); ++it) {
            if (!before.items.contains(it.key()) && !it.value().image.isNull())
                copies.append(it.value().image.copy());
        }
        return copies;
    }

    double triggerAndRepaint(const char* pName)
    {
        const int nPaints = m_nPaints;
        QElapsedTimer timer;
        timer.start();
        action(pName)->trigger();
        while (m_nPaints == nPaints && !timer.hasExpired(5000))
            QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        const double ms = timer.nsecsElapsed() / 1e6;
        if (m_nPaints == nPaints)
            qWarning("%s: the view did not repaint", pName);
        return ms;
    }

    CVXSLayoutManager m_manager;
    bool m_bCopyImages = false;
    QVector<QList<QImage>> m_copies; // by the index of the step on the undo stack
    int m_nPaints = 0;
};

bool g_bAllMet = true;

void printTimes(const char* pKind, const Times& times)
{
    const bool bMet = maximum(times.undo) < UndoTargetMs;
    g_bAllMet = g_bAllMet && bMet;
    std::printf("  %-8s %8.2f %8.2f %8.2f %8.2f   %s\n", pKind, median(times.undo), maximum(times.undo),
                median(times.redo), maximum(times.redo), bMet ? "met" : "MISSED");
}

void printResident(const QString& strWhen, double bytes, int nSteps)
{
    std::printf("  %-40s %8.1f MiB, %3d steps on the stack\n", qPrintable(strWhen), bytes / MiB, nSteps);
}

int optionValue(const QStringList& arguments, const QString& strName, int nDefault)
{
    const int index = arguments.indexOf(strName);
    return index > 0 && index + 1 < arguments.size() ? std::max(1, arguments[index + 1].toInt()) : nDefault;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    const QStringList arguments = QApplication::arguments();
    const bool bCopyImages = arguments.contains(QStringLiteral("--copy-images"));
    const int nPairs = optionValue(arguments, QStringLiteral("--pairs"), 20);
    // Every copied move holds another 64 MiB; a few are enough to show the check failing.
    const int nMoves = optionValue(arguments, QStringLiteral("--moves"), bCopyImages ? 8 : 200);

    UndoBench bench;
    std::printf("Layout 4x4, view %d x %d, %d pasted images of %d x %d ARGB32%s\n", ViewSize.width(),
                ViewSize.height(), ImageCount, ImageSide, ImageSide,
                bCopyImages ? ", images of every recorded step copied" : "");
    std::vector<double> pasteTimes;
    QElapsedTimer timer;
    for (int i = 0; i < ImageCount; ++i) {
        const QImage image = gradientImage(i);
        timer.start();
        bench.paste(image);
        pasteTimes.push_back(timer.nsecsElapsed() / 1e6);
    }
    std::printf("  pasting an image: median %.0f ms, max %.0f ms (no target); %d undo steps\n", median(pasteTimes),
                maximum(pasteTimes), bench.stack()->count());

    // 1. Undo and Redo, each followed by the repaint of the view.
    std::printf("Undo and redo, %d pairs each, ms including the repaint (target: every undo < %.0f ms)\n", nPairs,
                UndoTargetMs);
    std::printf("  %-8s %8s %8s %8s %8s\n", "step", "undo med", "undo max", "redo med", "redo max");
    printTimes("paste", bench.undoRedoPairs(nPairs));
    bench.moveTopImage();
    printTimes("move", bench.undoRedoPairs(nPairs));
    bench.deleteTopImage();
    printTimes("delete", bench.undoRedoPairs(nPairs));
    bench.undo();
    bench.newLayout();
    printTimes("new", bench.undoRedoPairs(nPairs));
    bench.undo();

    // 2. Memory: the layout with its history cleared, then after many steps.
    bench.stack()->clear();
    if (bCopyImages)
        bench.copyImagesOfSteps();
    const double baseline = residentBytes();
    for (int i = 0; i < nMoves; ++i)
        bench.moveTopImage();
    for (int i = 0; i < ImageCount; ++i)
        bench.deleteTopImage();
    for (int i = 0; i < ImageCount; ++i)
        bench.undo();
    const double afterDeletes = residentBytes();
    const int nStepsAfterDeletes = bench.stack()->count();
    bench.newLayout();
    bench.undo();
    bench.redo();
    const double afterNew = residentBytes();

    const double imageBytes = double(ImageCount) * ImageSide * ImageSide * 4;
    const double overhead = std::max(afterDeletes, afterNew) - baseline;
    const double percent = 100.0 * overhead / imageBytes;
    const bool bMemoryMet = percent < MemoryTargetPercent;
    g_bAllMet = g_bAllMet && bMemoryMet;
    std::printf("Resident memory (the layout's images: %.0f MiB)\n", imageBytes / MiB);
    printResident(QStringLiteral("the layout, history cleared"), baseline, 0);
    printResident(QStringLiteral("after %1 moves, %2 deletes undone").arg(nMoves).arg(ImageCount), afterDeletes,
                  nStepsAfterDeletes);
    printResident(QStringLiteral("then New, undone and redone"), afterNew, bench.stack()->count());
    if (bCopyImages)
        std::printf("  (this program holds %d image copies, %.0f MiB)\n", bench.copiedImages(),
                    bench.copiedImages() * ImageSide * double(ImageSide) * 4 / MiB);
    std::printf("  history overhead: %.1f MiB = %.2f %% of the images (target < %.0f %%): %s\n", overhead / MiB,
                percent, MemoryTargetPercent, bMemoryMet ? "met" : "MISSED");
    std::printf("%s\n", g_bAllMet ? "All targets met." : "Some targets MISSED.");
    return g_bAllMet ? 0 : 1;
}
