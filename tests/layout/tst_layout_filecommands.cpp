#include "FileDialogAnswer.h"
#include "LayoutFixture.h"
#include "LayoutRecord.h"
#include "MessageBoxAnswer.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <VXSLayoutConstants.h>
#include <file/VXSLayoutDocument.h>
#include <file/VXSLayoutFile.h>
#include <file/VXSLayoutFileCommands.h>
#include <VXSLayoutManager.h>
#include <file/VXSLayoutRecovery.h>
#include <file/VXSOrphanedRecoveryCopy.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QGraphicsItem>
#include <QLineEdit>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QUndoStack>
#include <QtTest>

#include <csignal>

using namespace VXSLayout;

namespace {

const QString kLayoutFilter = QStringLiteral("Layouts (*.vxlayout)");
// Argument with which this program, started again, opens a layout file and describes it.
const QString kDescribeArgument = QStringLiteral("--describe-layout");
// Argument with which this program, started again, keeps a layout with unsaved changes and
// its recovery copy until it is killed.
const QString kKeepCopyArgument = QStringLiteral("--keep-recovery-copy");

void enterAnnotation(LayoutFixture& layout, const QString& strText)
{
    auto* pEdit = layout.window()->findChild<QLineEdit*>(QStringLiteral("m_pAnnotationEdit"));
    // Set rather than typed: the key simulation knows only ASCII.
    pEdit->setText(strText);
    QTest::keyClick(pEdit, Qt::Key_Return);
}

void pasteFromClipboard(LayoutFixture& layout, const QImage& image)
{
    QGuiApplication::clipboard()->setImage(image);
    layout.triggerAction("m_pPasteAction");
}

// A gradient, so that a misplaced or resampled pixel shows.
QImage gradient(QSize size, int nSeed)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, qRgb((x * 255) / size.width(), (y * 255) / size.height(), (nSeed * 70) % 256));
    }
    return image;
}

// Every item kind: images (as many as the style has cells, at most three), a text, a
// rectangle, an ellipse, a line and both arrows.
void fillLayout(LayoutFixture& layout, int nStyle)
{
    layout.chooseStyle(nStyle);
    const int nImages = nStyle == 0 ? 3 : qMin(3, layout.manager()->getCellCount(nStyle));
    for (int i = 0; i < nImages; ++i)
        pasteFromClipboard(layout, gradient(QSize(160 + 40 * i, 120), i));
    enterAnnotation(layout, QStringLiteral("Maus 3 – Tag 14"));
    layout.triggerAction("m_pDrawRectAction");
    layout.drag(QPoint(40, 380), QPoint(140, 460));
    layout.triggerAction("m_pDrawEllipseAction");
    layout.drag(QPoint(160, 380), QPoint(260, 460));
    for (int nKind : {LineTool, SingleArrowTool, DoubleArrowTool}) {
        layout.chooseArrowTool(nKind);
        layout.drag(QPoint(300 + 60 * nKind, 390), QPoint(340 + 60 * nKind, 470));
    }
    layout.triggerAction("m_pArrowAction");
    // Nothing selected, as after opening.
    const QPoint corner(990, 490);
    layout.press(corner);
    layout.release(corner);
}

bool saveAs(LayoutFixture& layout, const QString& strPath)
{
    CFileDialogAnswers answers({chooseFile(kLayoutFilter, strPath)});
    return layout.manager()->fileCommands()->save(true);
}

// The recovery copies in the recovery folder, by file name.
QStringList recoveryCopies()
{
    return QDir(CVXSLayoutRecovery::folder()).entryList({QStringLiteral("*.vxlayout")}, QDir::Files, QDir::Name);
}

// Ten changes, after which the recovery copy is written at once.
void makeTenChanges(LayoutFixture& layout)
{
    for (int i = 0; i < CVXSLayoutRecovery::ChangesPerCopy; ++i)
        pasteFromClipboard(layout, gradient(QSize(40, 30), i));
}

// A layout whose recovery copy is written and waits for the next write as long as a test
// needs.
struct RecoveringLayout
{
    RecoveringLayout()
    {
        layout.manager()->fileCommands()->enableRecovery();
        recovery()->setInterval(3600000);
    }
    CVXSLayoutRecovery* recovery() const { return layout.manager()->fileCommands()->recovery(); }
    bool makeCopy()
    {
        makeTenChanges(layout);
        return QTest::qWaitFor([this] { return QFileInfo::exists(recovery()->filePath()); }, 30000);
    }

    LayoutFixture layout;
};

// Started as a program of its own: a layout with unsaved changes; tells the parent where its
// recovery copy is once the copy is on disk, then waits to be killed.
int keepRecoveryCopy()
{
    RecoveringLayout recovering;
    if (!recovering.makeCopy())
        return 2;
    QTextStream(stdout) << recovering.recovery()->filePath() << Qt::endl;
    // Should the test be gone before it could kill this process, it ends by itself.
    QTimer::singleShot(120000, qApp, [] { QCoreApplication::exit(5); });
    return QApplication::exec();
}

// Started as a program of its own: opens the file in a new layout and writes the record's
// description and the rendered page next to it.
int describeLayout(const QString& strPath, const QString& strOut)
{
    LayoutFixture layout;
    if (!layout.manager()->fileCommands()->openFile(strPath))
        return 2;
    const LayoutRecord record = LayoutRecord::take(*layout.manager());
    QFile text(strOut + QStringLiteral(".txt"));
    if (!text.open(QIODevice::WriteOnly) || text.write(record.describe().toUtf8()) < 0)
        return 3;
    return record.rendered.save(strOut + QStringLiteral(".png")) ? 0 : 4;
}

} // namespace

class TestLayoutFileCommands : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void saveAndOpenInAFreshProcess_data();
    void saveAndOpenInAFreshProcess();
    void openedLayoutHasNothingToUndoAndIsClean();
    void openAsksTheNewQuestionFirst_data();
    void openAsksTheNewQuestionFirst();
    void unreadableFileLeavesTheLayoutAlone_data();
    void unreadableFileLeavesTheLayoutAlone();
    void saveAddsTheSuffixAndRemembersTheFile();
    void failedSaveKeepsTheOldFileAndStaysUnsaved();
    void titleFollowsSavedState();
    void quitQuestion_data();
    void quitQuestion();
    void openedIntoSmallerPageIsFitted();
    void openedItemsKeepTheZRules_data();
    void openedItemsKeepTheZRules();
    void tinyPageInALargeViewKeepsItsItemsInRange();
    void fileOfFormatVersion1Opens();
    void recoveryCopyFollowsUnsavedChanges();
    void twoLayoutsOfOneProgramKeepTheirOwnCopies();
    void copyOfAProgramThatEndedIsClaimedOnce();
    void copyLeftWithoutItsLockIsClaimed();

private:
    QTemporaryDir m_dir;
};

void TestLayoutFileCommands::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    QVERIFY(m_dir.isValid());
}

void TestLayoutFileCommands::init()
{
    QGuiApplication::clipboard()->clear();
}

void TestLayoutFileCommands::saveAndOpenInAFreshProcess_data()
{
    QTest::addColumn<int>("style");
    const char* const names[] = {"Free style", "Layout 1x1", "Layout 2x1", "Layout 2x2", "Layout 3x2",
                                 "Layout 3x3", "Layout 4x2", "Layout 4x3", "Layout 4x4"};
    for (int nStyle = 0; nStyle < StyleCount; ++nStyle)
        QTest::newRow(names[nStyle]) << nStyle;
}

void TestLayoutFileCommands::saveAndOpenInAFreshProcess()
{
    QFETCH(int, style);
    LayoutFixture layout;
    fillLayout(layout, style);
    const QString strPath = m_dir.filePath(QStringLiteral("style %1.vxlayout").arg(style));
    QVERIFY(saveAs(layout, strPath));
    const LayoutRecord saved = LayoutRecord::take(*layout.manager());
    QCOMPARE(saved.items.size(), (style == 0 ? 3 : qMin(3, layout.manager()->getCellCount(style))) + 6);

    const QString strOut = m_dir.filePath(QStringLiteral("described %1").arg(style));
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {kDescribeArgument, strPath, strOut});
    QVERIFY(process.waitForFinished(60000));
    QVERIFY2(process.exitCode() == 0, process.readAllStandardError().constData());
    QFile text(strOut + QStringLiteral(".txt"));
    QVERIFY(text.open(QIODevice::ReadOnly));
    QCOMPARE(QString::fromUtf8(text.readAll()), saved.describe());
    const QImage rendered(strOut + QStringLiteral(".png"));
    QCOMPARE(rendered.convertToFormat(QImage::Format_RGB32), saved.rendered.convertToFormat(QImage::Format_RGB32));
}

void TestLayoutFileCommands::openedLayoutHasNothingToUndoAndIsClean()
{
    const QString strPath = m_dir.filePath(QStringLiteral("clean.vxlayout"));
    {
        LayoutFixture layout;
        fillLayout(layout, 3);
        QVERIFY(saveAs(layout, strPath));
    }
    LayoutFixture layout;
    QVERIFY(layout.manager()->fileCommands()->openFile(strPath));
    QCOMPARE(layout.manager()->undoStack()->count(), 0);
    QVERIFY(layout.manager()->undoStack()->isClean());
    QCOMPARE(layout.window()->layoutStyle(), 3);
    QCOMPARE(layout.window()->layoutStyleCombo()->currentIndex(), 3);
    QCOMPARE(layout.manager()->cellUseCount(0), 1);
    QCOMPARE(layout.manager()->cellUseCount(2), 1);
    QCOMPARE(layout.manager()->cellUseCount(3), 0);
    QCOMPARE(layout.view()->topZ(), int(LayoutRecord::take(*layout.manager()).items.last().z));
    QVERIFY(layout.action("m_pExportAction")->isEnabled());
    // New items go on top of the opened ones.
    layout.triggerAction("m_pDrawRectAction");
    layout.drag(QPoint(600, 40), QPoint(700, 110));
    QCOMPARE(int(layout.view()->currentItem()->zValue()), layout.view()->topZ());
    QCOMPARE(LayoutRecord::take(*layout.manager()).items.last().nType, RectangleItemType);
}

void TestLayoutFileCommands::openAsksTheNewQuestionFirst_data()
{
    QTest::addColumn<bool>("agree");
    QTest::newRow("yes replaces the layout") << true;
    QTest::newRow("no keeps it") << false;
}

void TestLayoutFileCommands::openAsksTheNewQuestionFirst()
{
    QFETCH(bool, agree);
    const QString strPath = m_dir.filePath(QStringLiteral("asked %1.vxlayout").arg(int(agree)));
    {
        LayoutFixture layout;
        fillLayout(layout, 0);
        QVERIFY(saveAs(layout, strPath));
    }
    LayoutFixture layout;
    pasteFromClipboard(layout, solidImage(QSize(50, 50), Qt::red));
    const LayoutRecord before = LayoutRecord::take(*layout.manager());
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(agree ? QMessageBox::Yes : QMessageBox::No));
    CFileDialogAnswers answers({chooseFile(kLayoutFilter, strPath)});
    QCOMPARE(layout.manager()->fileCommands()->open(), agree);
    QVERIFY(seen.m_bShown);
    QCOMPARE(seen.m_strText, QStringLiteral("Are you sure you want to clear the layout?\n"));
    QCOMPARE(answers.seen().size(), 1);
    QCOMPARE(answers.seen().first().m_nameFilters, QStringList{kLayoutFilter});
    const LayoutRecord after = LayoutRecord::take(*layout.manager());
    if (agree) {
        QCOMPARE(after.items.size(), 9);
        QCOMPARE(layout.window()->windowTitle(), QStringLiteral("Image Layout Window - asked 1.vxlayout"));
    } else {
        QVERIFY2(after.differenceFrom(before).isEmpty(), qPrintable(after.differenceFrom(before)));
        QCOMPARE(layout.manager()->undoStack()->count(), 1);
    }
}

void TestLayoutFileCommands::unreadableFileLeavesTheLayoutAlone_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::newRow("random bytes") << QByteArray("not a layout at all, only text");
    QTest::newRow("empty file") << QByteArray();
    QTest::newRow("PNG renamed") << QByteArray::fromHex("89504e470d0a1a0a0000000d49484452");
}

void TestLayoutFileCommands::unreadableFileLeavesTheLayoutAlone()
{
    QFETCH(QByteArray, content);
    const QString strPath = m_dir.filePath(QStringLiteral("bad.vxlayout"));
    QFile file(strPath);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(content);
    file.close();

    LayoutFixture layout;
    fillLayout(layout, 0);
    const LayoutRecord before = LayoutRecord::take(*layout.manager());
    const int nSteps = layout.manager()->undoStack()->count();
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    QVERIFY(!layout.manager()->fileCommands()->openFile(strPath));
    QVERIFY(seen.m_bShown);
    QVERIFY2(seen.m_strText.startsWith(QStringLiteral("The layout could not be opened.\n")), qPrintable(seen.m_strText));
    QVERIFY2(seen.m_strText.length() > 40, qPrintable(seen.m_strText));
    QVERIFY2(LayoutRecord::take(*layout.manager()).differenceFrom(before).isEmpty(), "the layout changed");
    QCOMPARE(layout.manager()->undoStack()->count(), nSteps);
    QVERIFY(layout.manager()->fileCommands()->filePath().isEmpty());
}

void TestLayoutFileCommands::saveAddsTheSuffixAndRemembersTheFile()
{
    LayoutFixture layout;
    fillLayout(layout, 2);
    QVERIFY(saveAs(layout, m_dir.filePath(QStringLiteral("no suffix"))));
    const QString strExpected = m_dir.filePath(QStringLiteral("no suffix.vxlayout"));
    QVERIFY(QFileInfo::exists(strExpected));
    QCOMPARE(layout.manager()->fileCommands()->filePath(), QFileInfo(strExpected).absoluteFilePath());
    // Save again goes to the same file without a dialog.
    enterAnnotation(layout, QStringLiteral("second"));
    CFileDialogAnswers none({});
    QVERIFY(layout.manager()->fileCommands()->save(false));
    QVERIFY(none.seen().isEmpty());
    LayoutFixture reopened;
    QVERIFY(reopened.manager()->fileCommands()->openFile(strExpected));
    QCOMPARE(LayoutRecord::take(*reopened.manager()).items.size(), 2 + 7);
}

void TestLayoutFileCommands::failedSaveKeepsTheOldFileAndStaysUnsaved()
{
    const QString strPath = m_dir.filePath(QStringLiteral("kept.vxlayout"));
    LayoutFixture layout;
    fillLayout(layout, 0);
    QVERIFY(saveAs(layout, strPath));
    QFile old(strPath);
    QVERIFY(old.open(QIODevice::ReadOnly));
    const QByteArray oldBytes = old.readAll();
    old.close();

    enterAnnotation(layout, QStringLiteral("more"));
    // A folder where the file's folder should be: nothing can be written there.
    const QString strBlocked = m_dir.filePath(QStringLiteral("blocker"));
    QFile blocker(strBlocked);
    QVERIFY(blocker.open(QIODevice::WriteOnly));
    blocker.close();
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    QVERIFY(!layout.manager()->fileCommands()->saveTo(strBlocked + QStringLiteral("/inside.vxlayout")));
    QVERIFY(seen.m_bShown);
    QVERIFY2(seen.m_strText.startsWith(QStringLiteral("The layout could not be saved.\n")), qPrintable(seen.m_strText));
    QVERIFY(!layout.manager()->undoStack()->isClean());
    QCOMPARE(layout.manager()->fileCommands()->filePath(), QFileInfo(strPath).absoluteFilePath());
    QVERIFY(old.open(QIODevice::ReadOnly));
    QCOMPARE(old.readAll(), oldBytes);
    QCOMPARE(QDir(m_dir.path()).entryList({QStringLiteral("kept.vxlayout*")}, QDir::Files | QDir::Hidden).size(), 1);
}

void TestLayoutFileCommands::titleFollowsSavedState()
{
    LayoutFixture layout;
    pasteFromClipboard(layout, solidImage(QSize(50, 50), Qt::red));
    QCOMPARE(layout.window()->windowTitle(), QStringLiteral("Image Layout Window*"));
    QVERIFY(saveAs(layout, m_dir.filePath(QStringLiteral("titled.vxlayout"))));
    QCOMPARE(layout.window()->windowTitle(), QStringLiteral("Image Layout Window - titled.vxlayout"));
    enterAnnotation(layout, QStringLiteral("changed"));
    QCOMPARE(layout.window()->windowTitle(), QStringLiteral("Image Layout Window - titled.vxlayout*"));
    layout.triggerAction("m_pUndoAction");
    QCOMPARE(layout.window()->windowTitle(), QStringLiteral("Image Layout Window - titled.vxlayout"));
}

void TestLayoutFileCommands::quitQuestion_data()
{
    QTest::addColumn<bool>("changed");
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("mayQuit");
    QTest::addColumn<bool>("saved");
    QTest::newRow("no changes, no question") << false << QString() << true << false;
    QTest::newRow("save") << true << "Save" << true << true;
    QTest::newRow("discard") << true << "Discard" << true << false;
    QTest::newRow("cancel") << true << "Cancel" << false << false;
}

void TestLayoutFileCommands::quitQuestion()
{
    QFETCH(bool, changed);
    QFETCH(QString, button);
    QFETCH(bool, mayQuit);
    QFETCH(bool, saved);

    const QString strPath = m_dir.filePath(QStringLiteral("quit %1.vxlayout").arg(QTest::currentDataTag()));
    LayoutFixture layout;
    if (changed)
        pasteFromClipboard(layout, solidImage(QSize(50, 50), Qt::red));
    CSeenMessageBox seen;
    if (changed)
        answerNextMessageBox(&seen, clickButtonWithText(button));
    CFileDialogAnswers answers({chooseFile(kLayoutFilter, strPath)});
    QCOMPARE(layout.manager()->fileCommands()->queryClose(), mayQuit);
    QCOMPARE(seen.m_bShown, changed);
    if (changed) {
        QCOMPARE(seen.m_strText, QStringLiteral("The layout has unsaved changes.\nDo you want to save them?"));
        QCOMPARE(seen.m_buttonTexts, (QStringList{"Save", "Discard", "Cancel"}));
    }
    QCOMPARE(QFileInfo::exists(strPath), saved);
    QCOMPARE(layout.manager()->undoStack()->isClean(), !changed || saved);
}

void TestLayoutFileCommands::openedIntoSmallerPageIsFitted()
{
    const QString strPath = m_dir.filePath(QStringLiteral("smaller.vxlayout"));
    {
        LayoutFixture layout;
        fillLayout(layout, 3);
        QVERIFY(saveAs(layout, strPath));
    }
    LayoutFixture layout(QSize(700, 350));
    QVERIFY(layout.manager()->fileCommands()->openFile(strPath));
    const QRectF page = layout.scene()->sceneRect();
    for (QGraphicsItem* pItem : layout.manager()->layoutItems()) {
        const CVXSLayoutItemState state = CVXSLayoutItemState::capture(*pItem);
        if (state.nType == ImageItemType) {
            QRect cell;
            QVERIFY(layout.manager()->getCellRect(state.nCellIndex, cell, false) != -1);
            QVERIFY2(QRectF(cell).adjusted(-1, -1, 1, 1).contains(state.rect), qPrintable(QString::number(state.nCellIndex)));
        } else if (state.nType != TextItemType && state.nType != ArrowItemType) {
            QVERIFY2(page.contains(state.rect), "an item stayed outside the smaller page");
        }
    }
}

void TestLayoutFileCommands::openedItemsKeepTheZRules_data()
{
    QTest::addColumn<QVector<qreal>>("fileZ");
    QTest::addColumn<QVector<int>>("expectedZ");
    QTest::newRow("as this program writes them") << QVector<qreal>{26, 33, 29, 40} << QVector<int>{26, 33, 29, 40};
    QTest::newRow("below the cell frames") << QVector<qreal>{5, 30, -3, 40} << QVector<int>{27, 28, 26, 29};
    QTest::newRow("at the lowest layout z") << QVector<qreal>{25, 30, 31, 32} << QVector<int>{26, 27, 28, 29};
    QTest::newRow("fractional") << QVector<qreal>{26.5, 26.25, 30, 31} << QVector<int>{27, 26, 28, 29};
    QTest::newRow("equal, kept in the file's order") << QVector<qreal>{30, 30, 30, 29} << QVector<int>{27, 28, 29, 26};
    QTest::newRow("far apart") << QVector<qreal>{-1e9, 1e9, 0, 26} << QVector<int>{26, 29, 27, 28};
}

// Layout items keep distinct whole z values above the cell frames, which the z steps and new
// items rely on; a file from elsewhere may hold any numbers.
void TestLayoutFileCommands::openedItemsKeepTheZRules()
{
    QFETCH(QVector<qreal>, fileZ);
    QFETCH(QVector<int>, expectedZ);
    CVXSLayoutDocument document;
    document.pageSize = QSize(996, 496);
    for (int i = 0; i < fileZ.size(); ++i) {
        CVXSLayoutItemState state;
        state.nType = i % 2 ? EllipseItemType : RectangleItemType;
        state.rect = QRectF(40 + 100 * i, 50, 80, 60);
        state.z = fileZ.at(i);
        state.brush = QBrush(QColor::fromHsv(70 * i, 200, 200));
        document.items.append(state);
    }
    const QString strPath = m_dir.filePath(QStringLiteral("z %1.vxlayout").arg(QTest::currentDataTag()));
    CVXSLayoutFile file;
    QVERIFY2(file.write(strPath, document), qPrintable(file.errorText()));

    LayoutFixture layout;
    QVERIFY(layout.manager()->fileCommands()->openFile(strPath));
    QList<QGraphicsItem*> items = layout.manager()->layoutItems();
    std::sort(items.begin(), items.end(), [](const QGraphicsItem* a, const QGraphicsItem* b) {
        return a->sceneBoundingRect().left() < b->sceneBoundingRect().left();
    });
    QVector<int> openedZ;
    for (const QGraphicsItem* pItem : items)
        openedZ.append(int(pItem->zValue()));
    QCOMPARE(openedZ, expectedZ);
    QCOMPARE(layout.view()->topZ(), *std::max_element(expectedZ.cbegin(), expectedZ.cend()));
    // A new item goes on top of them all.
    layout.triggerAction("m_pDrawRectAction");
    layout.drag(QPoint(600, 300), QPoint(700, 380));
    QCOMPARE(int(layout.view()->currentItem()->zValue()), layout.view()->topZ());
    QVERIFY(layout.view()->topZ() > openedZ.last());
}

// A file may give a page of 1 x 1 with items a million units out; fitted to a view of 2600
// they would lie billions out, beyond what ints hold. They stop at the largest coordinate a
// file may hold.
void TestLayoutFileCommands::tinyPageInALargeViewKeepsItsItemsInRange()
{
    CVXSLayoutDocument document;
    document.pageSize = QSize(1, 1);
    CVXSLayoutItemState arrow;
    arrow.nType = ArrowItemType;
    arrow.rect = QRectF(-40, -999040, 999080, 999080);
    arrow.z = 26;
    arrow.endPoint = QPoint(999000, -999000);
    arrow.bEndHead = true;
    arrow.dHeadLength = 10;
    arrow.dHeadWidthRatio = 0.75;
    CVXSLayoutItemState rectangle;
    rectangle.nType = RectangleItemType;
    rectangle.rect = QRectF(-1000000, 1, 1000000, 1000000);
    rectangle.z = 27;
    CVXSLayoutItemState text;
    text.nType = TextItemType;
    text.rect = QRectF(900000, -900000, 50, 20);
    text.z = 28;
    text.strText = QStringLiteral("far out");
    document.items = {arrow, rectangle, text};
    const QString strPath = m_dir.filePath(QStringLiteral("tiny page.vxlayout"));
    CVXSLayoutFile file;
    QVERIFY2(file.write(strPath, document), qPrintable(file.errorText()));

    LayoutFixture layout(QSize(2600, 1000));
    QVERIFY(layout.manager()->fileCommands()->openFile(strPath));
    const LayoutRecord opened = LayoutRecord::take(*layout.manager());
    QCOMPARE(opened.items.size(), 3);
    QCOMPARE(opened.items[0].startPoint, QPoint(0, 0));
    QCOMPARE(opened.items[0].endPoint, QPoint(1000000, -1000000));
    QCOMPARE(opened.items[1].rect, QRectF(-1000000, 996, 1000000, 1000000));
    QCOMPARE(opened.items[2].rect, QRectF(1000000, -1000000, 50, 20));
    QVERIFY(!opened.rendered.isNull());
}

void TestLayoutFileCommands::fileOfFormatVersion1Opens()
{
    LayoutFixture layout;
    QVERIFY(layout.manager()->fileCommands()->openFile(QStringLiteral(VX_LAYOUT_TEST_DATA "/layout-v1.vxlayout")));
    const LayoutRecord record = LayoutRecord::take(*layout.manager());
    QVERIFY(record.items.size() >= 8);
    QList<int> kinds;
    for (const CVXSLayoutItemState& state : record.items)
        kinds << state.nType;
    for (int nType : {ImageItemType, TextItemType, RectangleItemType, EllipseItemType, ArrowItemType})
        QVERIFY2(kinds.contains(nType), qPrintable(QString::number(nType)));
    QVERIFY(!record.rendered.isNull());
}

void TestLayoutFileCommands::recoveryCopyFollowsUnsavedChanges()
{
    QVERIFY(QDir(CVXSLayoutRecovery::folder()).removeRecursively());
    LayoutFixture layout;
    layout.manager()->fileCommands()->enableRecovery();
    CVXSLayoutRecovery* pRecovery = layout.manager()->fileCommands()->recovery();
    pRecovery->setInterval(3600000);
    for (int i = 0; i < 9; ++i)
        pasteFromClipboard(layout, gradient(QSize(40, 30), i));
    QCOMPARE(recoveryCopies(), QStringList());
    // The tenth change writes the copy, in the background. It is this program's, by its
    // process id, and locked while it exists.
    layout.enterAnnotation(QStringLiteral("tenth"));
    const QString strCopy = pRecovery->filePath();
    QCOMPARE(QFileInfo(strCopy).fileName(), QStringLiteral("layout-%1.vxlayout").arg(QCoreApplication::applicationPid()));
    QTRY_VERIFY(QFileInfo::exists(strCopy));
    QVERIFY(QFileInfo::exists(CVXSLayoutRecovery::lockFilePath(strCopy)));
    CVXSLayoutDocument copy;
    CVXSLayoutFile file;
    QTRY_VERIFY2(file.read(strCopy, copy) && copy.items.size() == 10, qPrintable(file.errorText()));

    // Saved: no copy is needed any more, nor its lock.
    QVERIFY(saveAs(layout, m_dir.filePath(QStringLiteral("recovered.vxlayout"))));
    QTRY_VERIFY(!QFileInfo::exists(strCopy));
    QTRY_VERIFY(!QFileInfo::exists(CVXSLayoutRecovery::lockFilePath(strCopy)));

    // Unsaved again: the timer writes it.
    pRecovery->setInterval(50);
    layout.enterAnnotation(QStringLiteral("after saving"));
    QTRY_VERIFY(QFileInfo::exists(strCopy));
    // Undone back to the saved state: clean again, the copy goes.
    layout.triggerAction("m_pUndoAction");
    QTRY_VERIFY(!QFileInfo::exists(strCopy));
}

void TestLayoutFileCommands::twoLayoutsOfOneProgramKeepTheirOwnCopies()
{
    QVERIFY(QDir(CVXSLayoutRecovery::folder()).removeRecursively());
    auto pFirst = std::make_unique<RecoveringLayout>();
    RecoveringLayout second;
    QVERIFY(pFirst->makeCopy());
    QVERIFY(second.makeCopy());
    const QString strFirst = pFirst->recovery()->filePath();
    const QString strSecond = second.recovery()->filePath();
    QVERIFY(strFirst != strSecond);
    QCOMPARE(recoveryCopies().size(), 2);
    // Both belong to a running program, this one.
    QVERIFY(!CVXSOrphanedRecoveryCopy::claimNewest(CVXSLayoutRecovery::folder()));

    // The first ends normally and takes only its own copy along.
    pFirst.reset();
    QVERIFY(!QFileInfo::exists(strFirst));
    QVERIFY(!QFileInfo::exists(CVXSLayoutRecovery::lockFilePath(strFirst)));
    QCOMPARE(recoveryCopies(), QStringList{QFileInfo(strSecond).fileName()});
}

// Another program with a recovery copy runs beside this one: its copy is neither offered nor
// removed until it has ended, and then only one program gets it.
void TestLayoutFileCommands::copyOfAProgramThatEndedIsClaimedOnce()
{
    QVERIFY(QDir(CVXSLayoutRecovery::folder()).removeRecursively());
    QProcess other;
    other.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    other.start(QCoreApplication::applicationFilePath(), {kKeepCopyArgument});
    QVERIFY(other.waitForStarted());
    QByteArray output;
    QTRY_VERIFY_WITH_TIMEOUT((output += other.readAllStandardOutput()).contains('\n') || other.state() != QProcess::Running,
                             60000);
    QCOMPARE(other.state(), QProcess::Running);
    const QString strCopy = QString::fromLocal8Bit(output).trimmed();
    QCOMPARE(QFileInfo(strCopy).fileName(), QStringLiteral("layout-%1.vxlayout").arg(other.processId()));
    // However long the other program has been running.
    QFile lock(CVXSLayoutRecovery::lockFilePath(strCopy));
    QVERIFY(lock.open(QIODevice::ReadWrite));
    QVERIFY(lock.setFileTime(QDateTime::currentDateTime().addDays(-1), QFileDevice::FileModificationTime));
    lock.close();
    QVERIFY(!CVXSOrphanedRecoveryCopy::claimNewest(CVXSLayoutRecovery::folder()));
    QVERIFY(QFileInfo::exists(strCopy));

    ::kill(pid_t(other.processId()), SIGKILL);
    QVERIFY(other.waitForFinished());
    QCOMPARE(other.exitStatus(), QProcess::CrashExit);
    std::unique_ptr<CVXSOrphanedRecoveryCopy> pClaimed = CVXSOrphanedRecoveryCopy::claimNewest(CVXSLayoutRecovery::folder());
    QVERIFY(pClaimed);
    QCOMPARE(pClaimed->filePath(), strCopy);
    CVXSLayoutDocument copy;
    CVXSLayoutFile file;
    QVERIFY2(file.read(strCopy, copy), qPrintable(file.errorText()));
    QCOMPARE(copy.items.size(), CVXSLayoutRecovery::ChangesPerCopy);
    // Claimed: nobody else is offered it meanwhile.
    QVERIFY(!CVXSOrphanedRecoveryCopy::claimNewest(CVXSLayoutRecovery::folder()));
    pClaimed->remove();
    pClaimed.reset();
    QCOMPARE(QDir(CVXSLayoutRecovery::folder()).entryList(QDir::Files), QStringList());
}

// As a program that kept one copy for every user left it.
void TestLayoutFileCommands::copyLeftWithoutItsLockIsClaimed()
{
    QVERIFY(QDir(CVXSLayoutRecovery::folder()).removeRecursively());
    QVERIFY(QDir().mkpath(CVXSLayoutRecovery::folder()));
    const QString strCopy = CVXSLayoutRecovery::folder() + QStringLiteral("/layout.vxlayout");
    QVERIFY(QFile::copy(QStringLiteral(VX_LAYOUT_TEST_DATA "/layout-v1.vxlayout"), strCopy));
    const std::unique_ptr<CVXSOrphanedRecoveryCopy> pClaimed = CVXSOrphanedRecoveryCopy::claimNewest(CVXSLayoutRecovery::folder());
    QVERIFY(pClaimed);
    QCOMPARE(pClaimed->filePath(), strCopy);
}

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 4 && arguments.at(1) == kDescribeArgument)
        return describeLayout(arguments.at(2), arguments.at(3));
    if (arguments.size() == 2 && arguments.at(1) == kKeepCopyArgument)
        return keepRecoveryCopy();
    TestLayoutFileCommands test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_layout_filecommands.moc"
