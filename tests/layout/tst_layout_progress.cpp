#include "FileDialogAnswer.h"
#include "LayoutFixture.h"
#include "LayoutRecord.h"
#include "MessageBoxAnswer.h"
#include "ModalDialogAnswer.h"
#include "TestImageFiles.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutWindow.h>
#include <VXSLayoutView.h>
#include <file/VXSLayoutFileCommands.h>
#include <progress/VXSLayoutProgress.h>

#include <QClipboard>
#include <QElapsedTimer>
#include <QProgressDialog>
#include <QPushButton>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QTimer>
#include <QUndoStack>
#include <QtConcurrent>
#include <QtTest>

namespace {

const QString kLayoutFilter = QStringLiteral("Layouts (*.vxlayout)");
const QString kPngFilter = QStringLiteral("PNG Image (*.png)");
constexpr int kLayout4x4 = 8;

// What the folder holds: no temporary file may be left beside the target.
QStringList entriesOf(const QString& strFolder)
{
    return QDir(strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

// How the user stops the work: the dialog's Cancel button, or Escape.
enum class CancelBy { Button, Escape };

// Stops the work once the progress dialog shows.
void cancelNextProgress(bool* pSeen, CancelBy how = CancelBy::Button)
{
    answerNextModalDialog(
        QProgressDialog::staticMetaObject,
        [how](QDialog* pDialog) {
            auto* pCancel = pDialog->findChild<QPushButton*>();
            QVERIFY(pCancel);
            if (how == CancelBy::Button)
                QTest::mouseClick(pCancel, Qt::LeftButton);
            else
                QTest::keyClick(pDialog, Qt::Key_Escape);
        },
        pSeen);
}

} // namespace

Q_DECLARE_METATYPE(CancelBy)

// Long work of the window behind its progress dialog: the window keeps painting, and Cancel
// leaves files and layout as they were.
class TestLayoutProgress : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void windowPaintsWhileTheWorkRuns();
    void workSharedOutStillRunsWithOneSharedThread();
    void cancelledSaveWritesNothing_data();
    void cancelledSaveWritesNothing();
    void cancelledOpenKeepsTheLayout();
    void cancelledExportWritesNothing();
    void pastedLargeImageIsPreparedBehindProgress();

protected:
    void endTest() override;

private:
    // "Layout 4x4" full of noise images, large enough that packing or reducing them takes a
    // while.
    void fillWithNoise(LayoutFixture& layout) const;

    QTemporaryDir m_dir;
};

void TestLayoutProgress::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

void TestLayoutProgress::init()
{
    // The dialog at once, so that Cancel comes while the work still has far to go.
    CVXSLayoutProgress::setShowAfter(0);
}

void TestLayoutProgress::endTest()
{
    CVXSLayoutProgress::setShowAfter(CVXSLayoutProgress::DefaultShowAfterMs);
}

void TestLayoutProgress::fillWithNoise(LayoutFixture& layout) const
{
    layout.chooseStyle(kLayout4x4);
    const QImage noise = noiseImage(QSize(1500, 1500), 17);
    for (int i = 0; i < 16; ++i) {
        // Each its own image, so that the file keeps all.
        QImage image = noise.copy();
        image.setPixel(i, 0, qRgb(i, 0, 0));
        layout.pasteImage(image);
    }
}

void TestLayoutProgress::windowPaintsWhileTheWorkRuns()
{
    LayoutFixture layout;
    CVXSLayoutProgress::setShowAfter(CVXSLayoutProgress::DefaultShowAfterMs);
    int nTicks = 0;
    QTimer ticker;
    QObject::connect(&ticker, &QTimer::timeout, [&nTicks] { ++nTicks; });
    ticker.start(10);
    QElapsedTimer clock;
    clock.start();
    QThread* pWorker = nullptr;
    const bool bDone = CVXSLayoutProgress::run(layout.window(), QStringLiteral("Working"), false,
                                               [&pWorker](const CVXSLayoutProgress::CancelFlag&) {
                                                   pWorker = QThread::currentThread();
                                                   QThread::msleep(300);
                                               });
    QVERIFY(bDone);
    QVERIFY(pWorker && pWorker != QThread::currentThread());
    QVERIFY(clock.elapsed() >= 300);
    // The GUI thread went on with its events: the timer ticked meanwhile.
    QVERIFY2(nTicks >= 5, qPrintable(QString::number(nTicks)));
}

// Saving, exporting and recovery copies share their work out on Qt's global pool and wait for
// it. Run on that pool themselves, two at once held both threads of a two-core machine and
// waited for ever; with the pool down to one thread, one job did.
void TestLayoutProgress::workSharedOutStillRunsWithOneSharedThread()
{
    LayoutFixture layout;
    QThreadPool* pShared = QThreadPool::globalInstance();
    const int nThreads = pShared->maxThreadCount();
    pShared->setMaxThreadCount(1);
    const auto restore = qScopeGuard([pShared, nThreads] { pShared->setMaxThreadCount(nThreads); });
    QVector<int> doubled;
    const bool bDone = CVXSLayoutProgress::run(layout.window(), QStringLiteral("Working"), false,
                                               [&doubled](const CVXSLayoutProgress::CancelFlag&) {
                                                   const std::function<int(const int&)> twice = [](const int& n) {
                                                       return 2 * n;
                                                   };
                                                   doubled = QtConcurrent::blockingMapped<QVector<int>>(
                                                       QVector<int> {1, 2, 3}, twice);
                                               });
    QVERIFY(bDone);
    QCOMPARE(doubled, QVector<int>({2, 4, 6}));
}

void TestLayoutProgress::cancelledSaveWritesNothing_data()
{
    QTest::addColumn<CancelBy>("how");
    QTest::newRow("Cancel button") << CancelBy::Button;
    QTest::newRow("Escape key") << CancelBy::Escape;
}

void TestLayoutProgress::cancelledSaveWritesNothing()
{
    QFETCH(CancelBy, how);
    LayoutFixture layout;
    fillWithNoise(layout);
    const QString strPath = m_dir.filePath(QStringLiteral("kept.vxlayout"));
    QVERIFY(CTestImageFiles::writeBytes(strPath, "the user's earlier layout"));
    const LayoutRecord before = LayoutRecord::take(*layout.manager());
    const QString strTitle = layout.window()->windowTitle();

    bool bSeen = false;
    cancelNextProgress(&bSeen, how);
    CSeenMessageBox message;
    answerNextMessageBox(&message, clickStandardButton(QMessageBox::Ok));
    QVERIFY(!layout.manager()->fileCommands()->saveTo(strPath));
    QVERIFY(bSeen);
    // No message: the user stopped it.
    QVERIFY(!message.m_bShown);
    QCOMPARE(CTestImageFiles::readBytes(strPath), QByteArray("the user's earlier layout"));
    QCOMPARE(entriesOf(m_dir.path()), QStringList {QStringLiteral("kept.vxlayout")});
    QVERIFY(!layout.manager()->undoStack()->isClean());
    QCOMPARE(layout.window()->windowTitle(), strTitle);
    QVERIFY(layout.manager()->fileCommands()->filePath().isEmpty());
    QVERIFY(LayoutRecord::take(*layout.manager()).differenceFrom(before).isEmpty());
    QVERIFY(QFile::remove(strPath));
}

void TestLayoutProgress::cancelledOpenKeepsTheLayout()
{
    const QString strPath = m_dir.filePath(QStringLiteral("noise.vxlayout"));
    {
        // Plain colours pack fast and take as long as any picture to unpack.
        LayoutFixture saved;
        saved.chooseStyle(kLayout4x4);
        for (int i = 0; i < 16; ++i)
            saved.pasteImage(QSize(2000, 2000), QColor::fromHsv(i * 20, 200, 200));
        CVXSLayoutProgress::setShowAfter(CVXSLayoutProgress::DefaultShowAfterMs);
        QVERIFY(saved.manager()->fileCommands()->saveTo(strPath));
        CVXSLayoutProgress::setShowAfter(0);
    }
    LayoutFixture layout;
    layout.pasteImage(QSize(50, 40), Qt::red);
    layout.enterAnnotation(QStringLiteral("mine"));
    const LayoutRecord before = LayoutRecord::take(*layout.manager());
    const int nSteps = layout.manager()->undoStack()->count();

    bool bSeen = false;
    cancelNextProgress(&bSeen);
    CSeenMessageBox message;
    answerNextMessageBox(&message, clickStandardButton(QMessageBox::Ok));
    QVERIFY(!layout.manager()->fileCommands()->openFile(strPath));
    QVERIFY(bSeen);
    QVERIFY(!message.m_bShown);
    QVERIFY2(LayoutRecord::take(*layout.manager()).differenceFrom(before).isEmpty(), "the layout changed");
    QCOMPARE(layout.manager()->undoStack()->count(), nSteps);
    QVERIFY(layout.manager()->fileCommands()->filePath().isEmpty());
    QVERIFY(QFile::remove(strPath));
}

void TestLayoutProgress::cancelledExportWritesNothing()
{
    LayoutFixture layout;
    fillWithNoise(layout);
    const QString strPath = m_dir.filePath(QStringLiteral("figure.png"));
    QVERIFY(CTestImageFiles::writeBytes(strPath, "the user's earlier figure"));
    const LayoutRecord before = LayoutRecord::take(*layout.manager());

    // The order of the export's steps stays: the file dialog, the question about the
    // existing file, then the work, which the user stops.
    CFileDialogAnswers dialogs({chooseFile(kPngFilter, strPath)});
    CSeenMessageBox overwrite;
    answerNextMessageBox(&overwrite, clickStandardButton(QMessageBox::Yes));
    bool bSeen = false;
    cancelNextProgress(&bSeen);
    layout.triggerAction("m_pExportAction");
    QCOMPARE(dialogs.seen().size(), 1);
    QVERIFY(overwrite.m_bShown);
    QVERIFY(bSeen);
    QCOMPARE(CTestImageFiles::readBytes(strPath), QByteArray("the user's earlier figure"));
    QCOMPARE(entriesOf(m_dir.path()), QStringList {QStringLiteral("figure.png")});
    QVERIFY(LayoutRecord::take(*layout.manager()).differenceFrom(before).isEmpty());
    QVERIFY(QFile::remove(strPath));
}

void TestLayoutProgress::pastedLargeImageIsPreparedBehindProgress()
{
    LayoutFixture layout;
    QGuiApplication::clipboard()->setImage(noiseImage(QSize(2400, 1800), 5));
    // Reducing it for the screen cannot be stopped half-way, nor needs to be: no Cancel, and
    // Escape leaves the dialog up.
    bool bSeen = false;
    QString strLabel;
    bool bCancelButton = true;
    bool bShownAfterEscape = false;
    answerNextModalDialog(
        QProgressDialog::staticMetaObject,
        [&](QDialog* pDialog) {
            strLabel = qobject_cast<QProgressDialog*>(pDialog)->labelText();
            bCancelButton = pDialog->findChild<QPushButton*>() != nullptr;
            QTest::keyClick(pDialog, Qt::Key_Escape);
            bShownAfterEscape = pDialog->isVisible();
        },
        &bSeen);
    layout.triggerAction("m_pPasteAction");
    QVERIFY(bSeen);
    QCOMPARE(strLabel, QStringLiteral("Pasting the image..."));
    QVERIFY(!bCancelButton);
    QVERIFY(bShownAfterEscape);
    QGraphicsItem* pPasted = layout.view()->currentItem();
    QVERIFY(pPasted && pPasted->type() == VXSLayout::ImageItemType);

    // The view shows the image as it would have reduced it itself when painting.
    const QImage prepared = layout.grabViewport();
    static_cast<CVXSLayoutItemImage*>(pPasted)->setDisplayCache(CVXSImageDisplayCache());
    QCOMPARE(layout.grabViewport(), prepared);
}

QTEST_MAIN(TestLayoutProgress)
#include "tst_layout_progress.moc"
