#include "FileDialogAnswer.h"
#include "LayoutFixture.h"
#include "LayoutRecord.h"
#include "MessageBoxAnswer.h"
#include "ModalDialogAnswer.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <VXSLayoutConstants.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutWindow.h>
#include <file/VXSLayoutFileCommands.h>
#include <progress/VXSLayoutProgress.h>

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <QUndoStack>
#include <QtTest>

namespace {

const QString kLayoutFilter = QStringLiteral("Layouts (*.vxlayout)");
const QString kPngFilter = QStringLiteral("PNG Image (*.png)");
constexpr int kLayout4x4 = 8;

QByteArray contentOf(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& strPath, const QByteArray& content)
{
    QFile file(strPath);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

// What the folder holds: no temporary file may be left beside the target.
QStringList entriesOf(const QString& strFolder)
{
    return QDir(strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

// Presses the progress dialog's Cancel button once it shows.
void cancelNextProgress(bool* pSeen)
{
    answerNextModalDialog(
        QProgressDialog::staticMetaObject,
        [](QDialog* pDialog) {
            auto* pCancel = pDialog->findChild<QPushButton*>();
            QVERIFY(pCancel);
            QTest::mouseClick(pCancel, Qt::LeftButton);
        },
        pSeen);
}

} // namespace

// Long work of the window behind its progress dialog: the window keeps painting, and Cancel
// leaves files and layout as they were.
class TestLayoutProgress : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void windowPaintsWhileTheWorkRuns();
    void cancelledSaveWritesNothing();
    void cancelledOpenKeepsTheLayout();
    void cancelledExportWritesNothing();

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

void TestLayoutProgress::cancelledSaveWritesNothing()
{
    LayoutFixture layout;
    fillWithNoise(layout);
    const QString strPath = m_dir.filePath(QStringLiteral("kept.vxlayout"));
    QVERIFY(writeFile(strPath, "the user's earlier layout"));
    const LayoutRecord before = LayoutRecord::take(*layout.manager());
    const QString strTitle = layout.window()->windowTitle();

    bool bSeen = false;
    cancelNextProgress(&bSeen);
    CSeenMessageBox message;
    answerNextMessageBox(&message, clickStandardButton(QMessageBox::Ok));
    QVERIFY(!layout.manager()->fileCommands()->saveTo(strPath));
    QVERIFY(bSeen);
    // No message: the user stopped it.
    QVERIFY(!message.m_bShown);
    QCOMPARE(contentOf(strPath), QByteArray("the user's earlier layout"));
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
    QVERIFY(writeFile(strPath, "the user's earlier figure"));
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
    QCOMPARE(contentOf(strPath), QByteArray("the user's earlier figure"));
    QCOMPARE(entriesOf(m_dir.path()), QStringList {QStringLiteral("figure.png")});
    QVERIFY(LayoutRecord::take(*layout.manager()).differenceFrom(before).isEmpty());
    QVERIFY(QFile::remove(strPath));
}

QTEST_MAIN(TestLayoutProgress)
#include "tst_layout_progress.moc"
