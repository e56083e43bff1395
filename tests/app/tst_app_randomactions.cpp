#include "HostFixture.h"
#include "HostTestCase.h"

#include "FileDialogTyping.h"
#include "ModalWatch.h"

#include <VXHostMainWindow.h>
#include <VXSChildWindow.h>
#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>
#include <VXSSequenceWindow.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPushButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>
#include <QUndoStack>
#include <QtTest>

#include <memory>
#include <random>

namespace {

const QString kEntry = QStringLiteral("Image Layout Window");
constexpr int kDefaultActions = 5000;
constexpr int kActionsShownOnFailure = 20;
constexpr int kProgressEvery = 10000;
// The modal boxes the layout window and the host may raise during the run, each answered.
const QStringList kExpectedBoxTexts {
    QStringLiteral("There is no cell currently empty! Delete one or more images to continue."),
    QStringLiteral("No. of images are more than the no. of expected cells!\n"
                   "Delete few images before changing the layout style."),
    QStringLiteral("Are you sure you want to clear the layout?\n")};
const char* const kArrowKinds[] = {"m_pDrawLineAction", "m_pDrawSingleArrowAction", "m_pDrawDoubleArrowAction"};
const char* const kMoveZChoices[] = {"m_pBringToFrontAction", "m_pBringForwardAction", "m_pSendBackwardAction",
                                     "m_pSendToBackAction"};
const char* const kExportSuffixes[] = {"png", "bmp", "jpg"};
constexpr int kModalTimeoutMs = 5000;
// Undo comes in runs, as when a user steps back through several changes, now and then
// followed by a run of redos over part of them.
constexpr int kLongestUndoRun = 6;
constexpr int kLongestRedoRun = 3;

// Thousands of actions: the view's note on every press and the offscreen platform's
// remark on every sub-window resize would bury the report.
const QStringList kQuietMessages {QStringLiteral("No.of Canvas Items;"),
                                  QStringLiteral("This plugin does not support propagateSizeHints()")};
QtMessageHandler g_previousHandler = nullptr;

void quietHandler(QtMsgType type, const QMessageLogContext& context, const QString& strMessage)
{
    for (const QString& strQuiet : kQuietMessages) {
        if (type <= QtWarningMsg && strMessage.startsWith(strQuiet))
            return;
    }
    g_previousHandler(type, context, strMessage);
}

int environmentNumber(const char* pName, int nDefault)
{
    bool bOk = false;
    const int nValue = qEnvironmentVariableIntValue(pName, &bOk);
    return bOk ? nValue : nDefault;
}

bool isLayoutItemType(int nType)
{
    using namespace VXSLayout;
    return nType == ImageItemType || nType == TextItemType || nType == EllipseItemType
        || nType == RectangleItemType || nType == ArrowItemType;
}

QString describeValues(const QList<qreal>& values)
{
    QStringList texts;
    for (qreal value : values)
        texts << QString::number(value);
    return texts.join(QLatin1Char(' '));
}

QString enabledText(bool bEnabled)
{
    return bEnabled ? QStringLiteral("enabled") : QStringLiteral("disabled");
}

QString pointText(QPoint point)
{
    return QStringLiteral("(%1,%2)").arg(point.x()).arg(point.y());
}

} // namespace

// A long, seeded series of random user actions on the host with the layout window:
// toolbar, annotation box, style box, mouse on the page, Delete, the Edit Text dialog,
// the host's image windows, the clipboard, New, Export, and Undo and Redo from the window,
// its shortcuts (also in the middle of drags) and the host's Edit menu. After every action the cell book, the stacking
// order, the window's enabled states, the undo history and the set of windows must still
// agree with what the scene holds; at the end undoing everything must give back the empty
// page and redoing everything the last one. VX_RANDOM_SEED repeats a run, VX_RANDOM_ACTIONS
// sets its length.
class TestAppRandomActions : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();

    void randomActionsKeepLayoutConsistent();

private:
    void endTest() override;

    // Where an undo or redo step comes from.
    enum class EUndoWay { WindowAction, Shortcut, EditMenu };
    // What the answer does with the next modal dialog of each kind.
    struct CAnswerPlan
    {
        bool m_bYes = false;
        bool m_bEditTextOk = true;
        QString m_strEditText;
        QString m_strFileName; // empty: the file dialog is cancelled
    };
    struct CAction
    {
        int m_nWeight;
        const char* m_pName;
        void (TestAppRandomActions::*m_pRun)();
    };

    // Random numbers, all drawn from the seeded generator so that a seed repeats a run.
    int randomInt(int nLow, int nHigh);
    bool chance(int nPercent);
    QPoint randomViewportPoint(int nOutside = 0);
    QString randomText();
    QImage randomImage();

    void log(const QString& strAction);
    QString failureReport(int nAction, const QString& strProblem) const;

    // The user's tools.
    QWidget* layoutWindow() const;
    // The window and the manager come from the plugin module; see where m_pView is set.
    CVXSLayoutWindow* layoutWindowClass() const;
    QUndoStack* undoStack() const;
    QAction* layoutAction(const char* pObjectName) const;
    QWidget* toolbarButton(QAction* pAction) const;
    bool clickAction(const char* pObjectName);
    QWidget* viewport() const;
    QList<QGraphicsItem*> layoutItems() const;
    void bringLayoutWindowToFront();
    void press(QPoint point);
    void dragThrough(QPoint from, QPoint to, int nSteps);
    void answerModal(QWidget* pModal);
    void waitForModalToClose();

    // The actions.
    void pasteActiveDataset();
    void pasteClipboardImage();
    void pasteClipboardText();
    void copyPage();
    void typeAnnotation();
    void chooseStyle();
    void drawShape();
    void choosePointer();
    void clickPage();
    void dragItem();
    void dragHandle();
    void doubleClickItem();
    void pressDelete();
    void clickDelete();
    void clickMoveZ();
    void chooseMoveZ();
    void clickNew();
    void editText();
    void activateHostWindow();
    void minimizeHostWindow();
    void closeHostWindow();
    void chooseSequenceTab();
    void openSamples();
    void openImageFile();
    void exportPage();
    void undoRun();
    void redoRun();
    void stepUndo(bool bUndo);
    void sendUndoShortcut(bool bUndo, bool bCtrlY);
    void undoWhileDragging();

    // Undoing everything, then redoing everything; a failure ends the test.
    void undoAndRedoEverything();
    QString runChecks();

    // The checks; each gives a description of what is wrong, or an empty string.
    QString checkCells();
    QString checkZValues();
    QString checkEnabledStates();
    QString checkWindows();
    QString checkUndo();
    QString checkEmptyPage();

    QTemporaryDir m_dir;
    CVXSLayoutView* m_pView = nullptr; // the plugin module's, owned by its window
    quint32 m_nSeed = 0;
    std::mt19937 m_random;
    QStringList m_recentActions;
    CAnswerPlan m_plan;
    // Answers every modal dialog and box of the run by the plan.
    std::unique_ptr<CModalWatch> m_pModals;
    QStringList m_unexpectedModals;
    // The windows there before the first action, for comparison only.
    QSet<const QWidget*> m_startTopLevels;
    // Handles and the highlight have z 0 until they are first shown.
    int m_nExports = 0;
    int m_nImageFiles = 0;
    qint64 m_nChecks = 0;
    int m_nBoxesAnswered = 0;
    // The undo and redo steps still to come of the current run, true for undo.
    QVector<bool> m_pendingSteps;
    int m_nUndos = 0;
    int m_nRedos = 0;
    QString m_strUndoProblem; // from the last step, for checkUndo
    int m_nStartStyle = 0;
    int m_nStartStyleIndex = 0;
};

void TestAppRandomActions::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
    g_previousHandler = qInstallMessageHandler(quietHandler);
}

void TestAppRandomActions::endTest()
{
    m_pModals.reset();
    endHost();
}

void TestAppRandomActions::cleanupTestCase()
{
    qInstallMessageHandler(g_previousHandler);
}

int TestAppRandomActions::randomInt(int nLow, int nHigh)
{
    return std::uniform_int_distribution<int>(nLow, nHigh)(m_random);
}

bool TestAppRandomActions::chance(int nPercent)
{
    return randomInt(0, 99) < nPercent;
}

QPoint TestAppRandomActions::randomViewportPoint(int nOutside)
{
    const QSize size = viewport()->size();
    return QPoint(randomInt(-nOutside, size.width() - 1 + nOutside), randomInt(-nOutside, size.height() - 1 + nOutside));
}

QString TestAppRandomActions::randomText()
{
    static const QStringList words {QStringLiteral("Mouse 3"), QStringLiteral("day 7"), QStringLiteral("ROI"),
                                    QStringLiteral("  "), QStringLiteral("x"), QStringLiteral("Fluorescence"),
                                    QStringLiteral("50 um"), QStringLiteral("A long label for a whole row")};
    QString strText;
    const int nWords = randomInt(0, 3);
    for (int i = 0; i < nWords; ++i)
        strText += (i ? QStringLiteral(" ") : QString()) + words.at(randomInt(0, words.size() - 1));
    return strText;
}

QImage TestAppRandomActions::randomImage()
{
    QImage image(randomInt(1, 400), randomInt(1, 400), QImage::Format_RGB32);
    image.fill(QColor::fromHsv(randomInt(0, 359), 200, 220));
    return image;
}

void TestAppRandomActions::log(const QString& strAction)
{
    m_recentActions << QString(strAction).replace(QLatin1Char('\n'), QLatin1String("\\n"));
    if (m_recentActions.size() > kActionsShownOnFailure)
        m_recentActions.removeFirst();
}

QString TestAppRandomActions::failureReport(int nAction, const QString& strProblem) const
{
    return QStringLiteral("%1\nseed %2 (VX_RANDOM_SEED=%2), action %3; the last actions:\n  %4")
        .arg(strProblem)
        .arg(m_nSeed)
        .arg(nAction)
        .arg(m_recentActions.join(QStringLiteral("\n  ")));
}

QWidget* TestAppRandomActions::layoutWindow() const
{
    return host()->layoutSubWindow()->widget();
}

CVXSLayoutWindow* TestAppRandomActions::layoutWindowClass() const
{
    return static_cast<CVXSLayoutWindow*>(layoutWindow());
}

QUndoStack* TestAppRandomActions::undoStack() const
{
    return m_pView->layoutManager()->undoStack();
}

QAction* TestAppRandomActions::layoutAction(const char* pObjectName) const
{
    return layoutWindow()->findChild<QAction*>(QString::fromLatin1(pObjectName));
}

QWidget* TestAppRandomActions::toolbarButton(QAction* pAction) const
{
    const QList<QToolBar*> toolbars = layoutWindow()->findChildren<QToolBar*>();
    for (QToolBar* pToolbar : toolbars) {
        if (QWidget* pButton = pToolbar->widgetForAction(pAction))
            return pButton;
    }
    return nullptr;
}

bool TestAppRandomActions::clickAction(const char* pObjectName)
{
    QWidget* pButton = toolbarButton(layoutAction(pObjectName));
    if (!pButton || !pButton->isEnabled())
        return false;
    bringLayoutWindowToFront();
    QTest::mouseClick(pButton, Qt::LeftButton);
    return true;
}

QWidget* TestAppRandomActions::viewport() const
{
    return m_pView->viewport();
}

QList<QGraphicsItem*> TestAppRandomActions::layoutItems() const
{
    QList<QGraphicsItem*> items;
    const QList<QGraphicsItem*> all = m_pView->scene()->items(Qt::AscendingOrder);
    for (QGraphicsItem* pItem : all) {
        if (isLayoutItemType(pItem->type()) && !m_pView->isAuxiliaryItem(pItem))
            items << pItem;
    }
    return items;
}

void TestAppRandomActions::bringLayoutWindowToFront()
{
    // Mouse events go to whatever window lies under the pointer, as for a user.
    QMdiSubWindow* pSubWindow = host()->layoutSubWindow();
    if (host()->area()->activeSubWindow() != pSubWindow)
        host()->area()->setActiveSubWindow(pSubWindow);
}

void TestAppRandomActions::press(QPoint point)
{
    bringLayoutWindowToFront();
    QTest::mousePress(viewport(), Qt::LeftButton, Qt::NoModifier, point);
}

void TestAppRandomActions::dragThrough(QPoint from, QPoint to, int nSteps)
{
    press(from);
    for (int nStep = 1; nStep <= nSteps; ++nStep)
        QTest::mouseMove(viewport(), from + (to - from) * nStep / nSteps);
    QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, to);
}

void TestAppRandomActions::answerModal(QWidget* pModal)
{
    if (auto* pBox = qobject_cast<QMessageBox*>(pModal)) {
        ++m_nBoxesAnswered;
        if (!kExpectedBoxTexts.contains(pBox->text()))
            m_unexpectedModals << QStringLiteral("message box \"%1\"").arg(pBox->text());
        QAbstractButton* pButton = pBox->button(m_plan.m_bYes ? QMessageBox::Yes : QMessageBox::No);
        if (!pButton && !pBox->buttons().isEmpty())
            pButton = pBox->buttons().constFirst();
        if (pButton)
            QTest::mouseClick(pButton, Qt::LeftButton);
        return;
    }
    // Without a file name the dialog is left to be cancelled.
    if (auto* pFiles = qobject_cast<QFileDialog*>(pModal)) {
        if (!m_plan.m_strFileName.isEmpty())
            typeIntoFileDialog(pFiles, m_plan.m_strFileName);
        return;
    }
    // The Edit Text dialog comes from the plugin module: known by its class name.
    if (pModal->inherits("CVXSEditText")) {
        auto* pEdit = pModal->findChild<QTextEdit*>(QStringLiteral("m_pTextEdit"));
        if (pEdit) {
            pEdit->setFocus();
            QTest::keyClick(pEdit, Qt::Key_A, Qt::ControlModifier);
            QTest::keyClick(pEdit, Qt::Key_Delete);
            const QStringList lines = m_plan.m_strEditText.split(QLatin1Char('\n'));
            for (int i = 0; i < lines.size(); ++i) {
                if (i > 0)
                    QTest::keyClick(pEdit, Qt::Key_Return);
                QTest::keyClicks(pEdit, lines.at(i));
            }
        }
        auto* pButton = pModal->findChild<QPushButton*>(
            QString::fromLatin1(m_plan.m_bEditTextOk ? "m_pOkBtn" : "m_pCancelBtn"));
        if (pButton)
            QTest::mouseClick(pButton, Qt::LeftButton);
        return;
    }
    // Anything else is rejected by the watch.
    m_unexpectedModals << QString::fromLatin1(pModal->metaObject()->className());
}

void TestAppRandomActions::waitForModalToClose()
{
    if (!QTest::qWaitFor([] { return !QApplication::activeModalWidget(); }, kModalTimeoutMs))
        m_unexpectedModals << QStringLiteral("a modal dialog that did not close");
}

// --- Actions -------------------------------------------------------------------------

void TestAppRandomActions::pasteActiveDataset()
{
    log(QStringLiteral("Paste Active Dataset"));
    clickAction("m_pPasteActiveDSetAction");
}

void TestAppRandomActions::pasteClipboardImage()
{
    const QImage image = randomImage();
    log(QStringLiteral("clipboard image %1x%2, Paste from Clipboard").arg(image.width()).arg(image.height()));
    QGuiApplication::clipboard()->setImage(image);
    clickAction("m_pPasteAction");
}

void TestAppRandomActions::pasteClipboardText()
{
    const QString strText = randomText();
    log(QStringLiteral("clipboard text \"%1\", Paste from Clipboard").arg(strText));
    QGuiApplication::clipboard()->setText(strText);
    clickAction("m_pPasteAction");
}

void TestAppRandomActions::copyPage()
{
    log(QStringLiteral("Copy to Clipboard"));
    clickAction("m_pCopyAction");
}

void TestAppRandomActions::typeAnnotation()
{
    const bool bClear = chance(60);
    const QString strText = randomText();
    log(QStringLiteral("annotation box: %1\"%2\" Enter").arg(bClear ? QStringLiteral("cleared, ") : QString(), strText));
    auto* pBox = layoutWindow()->findChild<QLineEdit*>(QStringLiteral("m_pAnnotationEdit"));
    bringLayoutWindowToFront();
    pBox->setFocus();
    if (bClear) {
        QTest::keyClick(pBox, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(pBox, Qt::Key_Backspace);
    }
    QTest::keyClicks(pBox, strText);
    QTest::keyClick(pBox, Qt::Key_Return);
}

void TestAppRandomActions::chooseStyle()
{
    auto* pStyles = layoutWindow()->findChild<QComboBox*>(QStringLiteral("m_pLayoutStyleCombo"));
    const int nStyle = randomInt(0, pStyles->count() - 1);
    log(QStringLiteral("style %1").arg(pStyles->itemText(nStyle)));
    bringLayoutWindowToFront();
    pStyles->setCurrentIndex(nStyle);
    emit pStyles->activated(nStyle);
}

void TestAppRandomActions::drawShape()
{
    const int nTool = randomInt(0, 4);
    QString strTool;
    if (nTool < 2) {
        const char* pName = nTool == 0 ? "m_pDrawRectAction" : "m_pDrawEllipseAction";
        strTool = QString::fromLatin1(pName);
        if (!layoutAction(pName)->isChecked())
            clickAction(pName);
    } else {
        // The arrow kinds come from the line tool's popup.
        const char* pName = kArrowKinds[nTool - 2];
        strTool = QString::fromLatin1(pName);
        bringLayoutWindowToFront();
        layoutAction(pName)->trigger();
    }
    const QPoint from = randomViewportPoint();
    const QPoint to = randomViewportPoint(20);
    const int nSteps = randomInt(0, 4);
    log(QStringLiteral("%1, drag %2 -> %3 in %4 steps").arg(strTool, pointText(from), pointText(to)).arg(nSteps));
    if (nSteps == 0) {
        press(from);
        QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, from);
    } else {
        dragThrough(from, to, nSteps);
    }
}

void TestAppRandomActions::choosePointer()
{
    log(QStringLiteral("Pointer"));
    clickAction("m_pArrowAction");
}

void TestAppRandomActions::clickPage()
{
    const QPoint point = randomViewportPoint();
    log(QStringLiteral("click %1").arg(pointText(point)));
    press(point);
    QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, point);
}

void TestAppRandomActions::dragItem()
{
    const QList<QGraphicsItem*> items = layoutItems();
    QPoint from = randomViewportPoint();
    QString strWhat = QStringLiteral("page");
    if (!items.isEmpty()) {
        QGraphicsItem* pItem = items.at(randomInt(0, items.size() - 1));
        // The middle of an arrow's rectangle is the middle of its line.
        from = m_pView->mapFromScene(pItem->sceneBoundingRect().center());
        strWhat = QStringLiteral("item of type %1 z %2").arg(pItem->type()).arg(pItem->zValue());
    }
    if (!viewport()->rect().contains(from))
        from = randomViewportPoint();
    const QPoint to = randomViewportPoint(20);
    const int nSteps = randomInt(1, 6);
    log(QStringLiteral("drag %1 at %2 -> %3 in %4 steps").arg(strWhat, pointText(from), pointText(to)).arg(nSteps));
    dragThrough(from, to, nSteps);
}

void TestAppRandomActions::dragHandle()
{
    QList<QGraphicsItem*> handles;
    const QList<QGraphicsItem*> all = m_pView->scene()->items();
    for (QGraphicsItem* pItem : all) {
        if (m_pView->handleIndex(pItem) > 0 && pItem->isVisible())
            handles << pItem;
    }
    if (handles.isEmpty()) {
        log(QStringLiteral("drag handle: none shown"));
        return;
    }
    QGraphicsItem* pHandle = handles.at(randomInt(0, handles.size() - 1));
    const QPoint from = m_pView->mapFromScene(pHandle->sceneBoundingRect().center());
    const QPoint to = randomViewportPoint(20);
    const int nSteps = randomInt(1, 5);
    log(QStringLiteral("drag handle %1 at %2 -> %3 in %4 steps")
            .arg(m_pView->handleIndex(pHandle)).arg(pointText(from), pointText(to)).arg(nSteps));
    if (viewport()->rect().contains(from))
        dragThrough(from, to, nSteps);
}

void TestAppRandomActions::doubleClickItem()
{
    const QList<QGraphicsItem*> items = layoutItems();
    QPoint point = randomViewportPoint();
    if (!items.isEmpty())
        point = m_pView->mapFromScene(items.at(randomInt(0, items.size() - 1))->sceneBoundingRect().center());
    if (!viewport()->rect().contains(point))
        point = randomViewportPoint();
    m_plan.m_bEditTextOk = chance(60);
    m_plan.m_strEditText = randomText();
    log(QStringLiteral("double-click %1 (Edit Text, if it opens: \"%2\", %3)")
            .arg(pointText(point), m_plan.m_strEditText,
                 m_plan.m_bEditTextOk ? QStringLiteral("OK") : QStringLiteral("Cancel")));
    bringLayoutWindowToFront();
    QTest::mouseDClick(viewport(), Qt::LeftButton, Qt::NoModifier, point);
    // A double click ends with the button held down; let it go.
    QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, point);
    waitForModalToClose();
}

void TestAppRandomActions::pressDelete()
{
    log(QStringLiteral("Delete key on the view"));
    bringLayoutWindowToFront();
    m_pView->setFocus();
    QTest::keyClick(m_pView, Qt::Key_Delete);
}

void TestAppRandomActions::clickDelete()
{
    log(QStringLiteral("Delete"));
    clickAction("m_pDeleteAction");
}

void TestAppRandomActions::clickMoveZ()
{
    log(QStringLiteral("Move in Z button"));
    auto* pButton = layoutWindow()->findChild<QToolButton*>(QStringLiteral("m_pMoveZBtn"));
    if (pButton->isEnabled()) {
        bringLayoutWindowToFront();
        pButton->click();
    }
}

void TestAppRandomActions::chooseMoveZ()
{
    const char* pName = kMoveZChoices[randomInt(0, 3)];
    log(QStringLiteral("Move in Z popup: %1").arg(QString::fromLatin1(pName)));
    auto* pButton = layoutWindow()->findChild<QToolButton*>(QStringLiteral("m_pMoveZBtn"));
    if (pButton->isEnabled()) {
        bringLayoutWindowToFront();
        layoutAction(pName)->trigger();
    }
}

void TestAppRandomActions::clickNew()
{
    m_plan.m_bYes = chance(50);
    log(QStringLiteral("New, answer %1").arg(m_plan.m_bYes ? QStringLiteral("Yes") : QStringLiteral("No")));
    clickAction("m_pNewAction");
    m_plan.m_bYes = false;
}

void TestAppRandomActions::editText()
{
    m_plan.m_bEditTextOk = chance(70);
    m_plan.m_strEditText = randomText();
    if (chance(30))
        m_plan.m_strEditText += QStringLiteral("\nsecond line");
    log(QStringLiteral("Edit Text dialog: \"%1\", %2")
            .arg(m_plan.m_strEditText, m_plan.m_bEditTextOk ? QStringLiteral("OK") : QStringLiteral("Cancel")));
    auto* pButton = layoutWindow()->findChild<QToolButton*>(QStringLiteral("m_pMultiLineTextBtn"));
    bringLayoutWindowToFront();
    QTest::mouseClick(pButton, Qt::LeftButton);
    waitForModalToClose();
}

void TestAppRandomActions::activateHostWindow()
{
    const QList<QMdiSubWindow*> windows = host()->imageSubWindows();
    if (windows.isEmpty()) {
        log(QStringLiteral("activate image window: none open"));
        return;
    }
    QMdiSubWindow* pWindow = windows.at(randomInt(0, windows.size() - 1));
    log(QStringLiteral("activate \"%1\"").arg(pWindow->windowTitle()));
    if (pWindow->isMinimized() && chance(50))
        pWindow->showNormal();
    host()->area()->setActiveSubWindow(pWindow);
}

void TestAppRandomActions::minimizeHostWindow()
{
    const QList<QMdiSubWindow*> windows = host()->imageSubWindows();
    if (windows.isEmpty()) {
        log(QStringLiteral("minimize image window: none open"));
        return;
    }
    QMdiSubWindow* pWindow = windows.at(randomInt(0, windows.size() - 1));
    log(QStringLiteral("minimize \"%1\"").arg(pWindow->windowTitle()));
    pWindow->showMinimized();
}

void TestAppRandomActions::closeHostWindow()
{
    const QList<QMdiSubWindow*> windows = host()->imageSubWindows();
    if (windows.isEmpty()) {
        log(QStringLiteral("close image window: none open"));
        return;
    }
    QMdiSubWindow* pWindow = windows.at(randomInt(0, windows.size() - 1));
    log(QStringLiteral("close \"%1\"").arg(pWindow->windowTitle()));
    pWindow->close();
}

void TestAppRandomActions::chooseSequenceTab()
{
    QList<QTabWidget*> tabs;
    const QList<QMdiSubWindow*> windows = host()->imageSubWindows();
    for (QMdiSubWindow* pWindow : windows) {
        if (qobject_cast<CVXSSequenceWindow*>(pWindow->widget()))
            tabs << pWindow->widget()->findChild<QTabWidget*>();
    }
    tabs.removeAll(nullptr);
    if (tabs.isEmpty()) {
        log(QStringLiteral("sequence tab: no sequence open"));
        return;
    }
    QTabWidget* pTabs = tabs.at(randomInt(0, tabs.size() - 1));
    const int nTab = randomInt(0, pTabs->count() - 1);
    log(QStringLiteral("sequence tab \"%1\"").arg(pTabs->tabText(nTab)));
    pTabs->setCurrentIndex(nTab);
}

void TestAppRandomActions::openSamples()
{
    log(QStringLiteral("File > Open Samples"));
    host()->action(QStringLiteral("actionOpenSamples"))->trigger();
}

void TestAppRandomActions::openImageFile()
{
    const QImage image = randomImage();
    const QString strPath = m_dir.filePath(QStringLiteral("open%1.png").arg(++m_nImageFiles));
    image.save(strPath);
    m_plan.m_strFileName = chance(90) ? strPath : QString();
    log(QStringLiteral("File > Open Images, %1").arg(m_plan.m_strFileName.isEmpty()
                                                       ? QStringLiteral("cancelled")
                                                       : QStringLiteral("%1x%2").arg(image.width()).arg(image.height())));
    host()->action(QStringLiteral("actionOpenImages"))->trigger();
    m_plan.m_strFileName.clear();
}

void TestAppRandomActions::exportPage()
{
    const QString strSuffix = QString::fromLatin1(kExportSuffixes[randomInt(0, 2)]);
    m_plan.m_strFileName = chance(80) ? m_dir.filePath(QStringLiteral("export%1.%2").arg(++m_nExports).arg(strSuffix))
                                      : QString();
    log(QStringLiteral("Export %1").arg(m_plan.m_strFileName.isEmpty() ? QStringLiteral("cancelled")
                                                                        : QFileInfo(m_plan.m_strFileName).fileName()));
    if (clickAction("m_pExportAction") && !m_plan.m_strFileName.isEmpty() && !QFile::exists(m_plan.m_strFileName))
        m_unexpectedModals << QStringLiteral("export wrote no %1").arg(m_plan.m_strFileName);
    m_plan.m_strFileName.clear();
}

void TestAppRandomActions::undoRun()
{
    const int nUndos = randomInt(1, kLongestUndoRun);
    m_pendingSteps.fill(true, nUndos);
    if (chance(50))
        m_pendingSteps.insert(m_pendingSteps.size(), randomInt(1, nUndos), false);
    stepUndo(m_pendingSteps.takeFirst());
}

void TestAppRandomActions::redoRun()
{
    m_pendingSteps.fill(false, randomInt(1, kLongestRedoRun));
    stepUndo(m_pendingSteps.takeFirst());
}

void TestAppRandomActions::sendUndoShortcut(bool bUndo, bool bCtrlY)
{
    // Shortcuts need an active window. The offscreen platform leaves the window focus
    // with a dialog after it closed, where a window system gives it back to the main
    // window; the user would click there first.
    if (!host()->window()->isActiveWindow())
        QApplication::setActiveWindow(host()->window());
    m_pView->setFocus();
    if (bCtrlY)
        QTest::keyClick(m_pView, Qt::Key_Y, Qt::ControlModifier);
    else
        QTest::keyClick(m_pView, Qt::Key_Z, bUndo ? Qt::ControlModifier : Qt::ControlModifier | Qt::ShiftModifier);
}

void TestAppRandomActions::undoWhileDragging()
{
    const QList<QGraphicsItem*> items = layoutItems();
    QPoint from = items.isEmpty() ? randomViewportPoint()
                                  : m_pView->mapFromScene(items.at(randomInt(0, items.size() - 1))->sceneBoundingRect().center());
    if (!viewport()->rect().contains(from))
        from = randomViewportPoint();
    const QPoint to = randomViewportPoint(20);
    const bool bUndo = chance(70);
    QUndoStack* pStack = undoStack();
    log(QStringLiteral("drag at %1 -> %2 with %3 half-way, index %4 of %5")
            .arg(pointText(from), pointText(to), bUndo ? QStringLiteral("Ctrl+Z") : QStringLiteral("Ctrl+Y"))
            .arg(pStack->index()).arg(pStack->count()));
    press(from);
    QTest::mouseMove(viewport(), (from + to) / 2);
    const int nIndex = pStack->index();
    sendUndoShortcut(bUndo, !bUndo);
    // The keys wait for the release, which records the drag.
    if (pStack->index() != nIndex)
        m_strUndoProblem = QStringLiteral("the keys in the middle of a drag took the undo index from %1 to %2")
                               .arg(nIndex).arg(pStack->index());
    QTest::mouseMove(viewport(), to);
    QTest::mouseRelease(viewport(), Qt::LeftButton, Qt::NoModifier, to);
}

void TestAppRandomActions::stepUndo(bool bUndo)
{
    const EUndoWay way = chance(50) ? EUndoWay::WindowAction : chance(50) ? EUndoWay::Shortcut : EUndoWay::EditMenu;
    // Redo has two shortcuts; either one.
    const bool bCtrlY = !bUndo && chance(50);
    const QString strStep = bUndo ? QStringLiteral("Undo") : QStringLiteral("Redo");
    QString strWay = QStringLiteral("Edit menu");
    if (way == EUndoWay::WindowAction)
        strWay = QStringLiteral("window action");
    else if (way == EUndoWay::Shortcut)
        strWay = bUndo ? QStringLiteral("Ctrl+Z") : bCtrlY ? QStringLiteral("Ctrl+Y") : QStringLiteral("Ctrl+Shift+Z");
    QUndoStack* pStack = undoStack();
    const bool bCan = bUndo ? pStack->canUndo() : pStack->canRedo();
    const int nIndexBefore = pStack->index();
    log(QStringLiteral("%1 (%2), index %3 of %4").arg(strStep, strWay).arg(nIndexBefore).arg(pStack->count()));
    bringLayoutWindowToFront();
    switch (way) {
    case EUndoWay::WindowAction:
        layoutAction(bUndo ? "m_pUndoAction" : "m_pRedoAction")->trigger();
        break;
    case EUndoWay::Shortcut:
        sendUndoShortcut(bUndo, bCtrlY);
        break;
    case EUndoWay::EditMenu:
        host()->action(bUndo ? QStringLiteral("actionUndo") : QStringLiteral("actionRedo"))->trigger();
        break;
    }
    (bUndo ? m_nUndos : m_nRedos) += bCan ? 1 : 0;
    const int nExpected = bCan ? nIndexBefore + (bUndo ? -1 : 1) : nIndexBefore;
    if (pStack->index() != nExpected)
        m_strUndoProblem = QStringLiteral("%1 through the %2 took the undo index from %3 to %4, not %5")
                               .arg(strStep, strWay).arg(nIndexBefore).arg(pStack->index()).arg(nExpected);
}

// --- Checks --------------------------------------------------------------------------

QString TestAppRandomActions::checkCells()
{
    CVXSLayoutManager* pManager = m_pView->layoutManager();
    int images[VXSLayout::MaxCellCount] = {};
    const QList<QGraphicsItem*> items = layoutItems();
    for (QGraphicsItem* pItem : items) {
        if (pItem->type() != VXSLayout::ImageItemType)
            continue;
        const int nCell = static_cast<CVXSLayoutItemImage*>(pItem)->getCellIndex();
        if (nCell >= 0 && nCell < VXSLayout::MaxCellCount)
            ++images[nCell];
    }
    for (int nCell = 0; nCell < VXSLayout::MaxCellCount; ++nCell) {
        ++m_nChecks;
        if (pManager->cellUseCount(nCell) != images[nCell])
            return QStringLiteral("cell %1: use counter %2, images in it %3")
                .arg(nCell).arg(pManager->cellUseCount(nCell)).arg(images[nCell]);
    }
    return QString();
}

QString TestAppRandomActions::checkZValues()
{
    using namespace VXSLayout;
    // New items and "Bring to front" take the next value of a counter that nothing lowers
    // (New keeps it too), so in a long session layout items pass the highlight's and the
    // handles' usual z. The marks then move up with the counter, so what holds at every
    // step is: layout items have distinct values up to the counter, and every mark on show
    // lies above all of them.
    QHash<qreal, QGraphicsItem*> holders;
    QList<qreal> gridZ;
    QList<qreal> shownMarkZ;
    qreal topLayoutZ = BaseZ;
    const QList<QGraphicsItem*> all = m_pView->scene()->items();
    for (QGraphicsItem* pItem : all) {
        const qreal z = pItem->zValue();
        ++m_nChecks;
        if (const int nHandle = m_pView->handleIndex(pItem); nHandle != 0 || m_pView->isCellHighlight(pItem)) {
            // An arrow's start handle keeps whatever z it had: only its end handle is set.
            const QGraphicsItem* pSelected = m_pView->currentItem();
            const bool bArrowStart = nHandle == 1 && pSelected && pSelected->type() == ArrowItemType;
            if (pItem->isVisible() && !bArrowStart)
                shownMarkZ << z;
            continue;
        }
        if (pItem->type() == GridItemType) {
            gridZ << z;
            continue;
        }
        if (!isLayoutItemType(pItem->type()))
            return QStringLiteral("unknown item of type %1 in the scene").arg(pItem->type());
        if (z <= BaseZ || z > m_pView->topZ())
            return QStringLiteral("layout item of type %1 has z %2 (top z %3)").arg(pItem->type()).arg(z).arg(m_pView->topZ());
        if (holders.contains(z))
            return QStringLiteral("layout items of types %1 and %2 both have z %3")
                .arg(holders.value(z)->type()).arg(pItem->type()).arg(z);
        holders.insert(z, pItem);
        topLayoutZ = qMax(topLayoutZ, z);
    }
    ++m_nChecks;
    for (const qreal markZ : shownMarkZ) {
        if (markZ <= topLayoutZ)
            return QStringLiteral("a handle or the highlight has z %1, under a layout item at %2")
                .arg(markZ).arg(topLayoutZ);
    }
    // The cell frames are made with z 0..15 and never take part in the z steps.
    std::sort(gridZ.begin(), gridZ.end());
    ++m_nChecks;
    for (int nCell = 0; nCell < MaxCellCount; ++nCell) {
        if (gridZ.value(nCell, -1) != nCell || gridZ.size() != MaxCellCount)
            return QStringLiteral("cell frames have z %1").arg(describeValues(gridZ));
    }
    return QString();
}

QString TestAppRandomActions::checkEnabledStates()
{
    const int nItems = m_pView->scene()->items().size();
    const bool bContent = nItems > VXSLayout::AuxiliaryItemCount;
    for (const char* pName : {"m_pExportAction", "m_pPrintAction", "m_pCopyAction"}) {
        ++m_nChecks;
        if (layoutAction(pName)->isEnabled() != bContent)
            return QStringLiteral("%1 is %2 with %3 items in the scene")
                .arg(QString::fromLatin1(pName), enabledText(layoutAction(pName)->isEnabled()))
                .arg(nItems);
    }
    const bool bSelected = m_pView->currentItem() != nullptr;
    auto* pMoveZ = layoutWindow()->findChild<QToolButton*>(QStringLiteral("m_pMoveZBtn"));
    m_nChecks += 2;
    if (layoutAction("m_pDeleteAction")->isEnabled() != bSelected || pMoveZ->isEnabled() != bSelected)
        return QStringLiteral("Delete %1, Move in Z %2, but %3 item selected")
            .arg(enabledText(layoutAction("m_pDeleteAction")->isEnabled()), enabledText(pMoveZ->isEnabled()),
                 bSelected ? QStringLiteral("an") : QStringLiteral("no"));
    const bool bActiveChild = CVXSChildWindow::getActiveChildWnd() != nullptr;
    ++m_nChecks;
    if (layoutAction("m_pPasteActiveDSetAction")->isEnabled() != bActiveChild)
        return QStringLiteral("Paste Active Dataset %1, but %2 active image window")
            .arg(enabledText(layoutAction("m_pPasteActiveDSetAction")->isEnabled()),
                 bActiveChild ? QStringLiteral("an") : QStringLiteral("no"));
    return QString();
}

QString TestAppRandomActions::checkWindows()
{
    ++m_nChecks;
    if (QWidget* pModal = QApplication::activeModalWidget())
        return QStringLiteral("modal %1 left open").arg(QString::fromLatin1(pModal->metaObject()->className()));
    if (!m_unexpectedModals.isEmpty())
        return QStringLiteral("unexpected: %1").arg(m_unexpectedModals.join(QStringLiteral("; ")));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* pWidget : widgets) {
        ++m_nChecks;
        if (pWidget->isVisible() && pWidget != host()->window())
            return QStringLiteral("top-level %1 \"%2\" is shown")
                .arg(QString::fromLatin1(pWidget->metaObject()->className()), pWidget->windowTitle());
        // A hidden window with a parent goes with its owner, and so do the title bar
        // controls that each workspace sub-window keeps for when it is maximized. Any
        // other without a parent that was not there from the start is left behind.
        ++m_nChecks;
        const QString strClass = QString::fromLatin1(pWidget->metaObject()->className());
        const bool bSubWindowControl = strClass.startsWith(QLatin1String("QMdi::"));
        if (!pWidget->parentWidget() && !bSubWindowControl && !m_startTopLevels.contains(pWidget))
            return QStringLiteral("top-level %1 \"%2\" without a parent was left behind").arg(strClass, pWidget->objectName());
    }
    return QString();
}

QString TestAppRandomActions::checkUndo()
{
    ++m_nChecks;
    if (!m_strUndoProblem.isEmpty())
        return m_strUndoProblem;
    const QString strTitle = layoutWindow()->windowTitle();
    const bool bClean = undoStack()->isClean();
    ++m_nChecks;
    if (strTitle.endsWith(QLatin1Char('*')) == bClean)
        return QStringLiteral("title \"%1\" with %2 undo history").arg(strTitle, bClean ? QStringLiteral("a clean")
                                                                                     : QStringLiteral("a changed"));
    return QString();
}

QString TestAppRandomActions::checkEmptyPage()
{
    m_nChecks += 3;
    if (!layoutItems().isEmpty() || m_pView->scene()->items().size() != VXSLayout::AuxiliaryItemCount)
        return QStringLiteral("%1 layout items and %2 items in all")
            .arg(layoutItems().size()).arg(m_pView->scene()->items().size());
    for (int nCell = 0; nCell < VXSLayout::MaxCellCount; ++nCell) {
        ++m_nChecks;
        if (m_pView->layoutManager()->cellUseCount(nCell) != 0)
            return QStringLiteral("cell %1 has use counter %2").arg(nCell).arg(m_pView->layoutManager()->cellUseCount(nCell));
    }
    auto* pStyles = layoutWindow()->findChild<QComboBox*>(QStringLiteral("m_pLayoutStyleCombo"));
    if (pStyles->currentIndex() != m_nStartStyleIndex || layoutWindowClass()->layoutStyle() != m_nStartStyle)
        return QStringLiteral("style box at %1, style %2; at the start %3, %4")
            .arg(pStyles->currentIndex()).arg(layoutWindowClass()->layoutStyle())
            .arg(m_nStartStyleIndex).arg(m_nStartStyle);
    for (const char* pName : {"m_pExportAction", "m_pPrintAction", "m_pCopyAction"}) {
        ++m_nChecks;
        if (layoutAction(pName)->isEnabled())
            return QStringLiteral("%1 is enabled on the empty page").arg(QString::fromLatin1(pName));
    }
    return QString();
}

QString TestAppRandomActions::runChecks()
{
    for (const auto& check : {&TestAppRandomActions::checkWindows, &TestAppRandomActions::checkCells,
                              &TestAppRandomActions::checkZValues, &TestAppRandomActions::checkEnabledStates,
                              &TestAppRandomActions::checkUndo}) {
        const QString strProblem = (this->*check)();
        if (!strProblem.isEmpty())
            return strProblem;
    }
    return QString();
}

void TestAppRandomActions::undoAndRedoEverything()
{
    QUndoStack* pStack = undoStack();
    const int nItems = layoutItems().size();
    const int nSteps = pStack->index();
    log(QStringLiteral("Undo everything: %1 steps, %2 layout items").arg(nSteps).arg(nItems));
    QElapsedTimer clock;
    clock.start();
    // All steps at once: one by one, every tenth would also write the recovery copy with
    // every image, which would double the run. Single steps are checked during the run.
    pStack->setIndex(0);
    QCoreApplication::processEvents();
    QString strProblem = pStack->canUndo() ? QStringLiteral("Undo still possible at index %1").arg(pStack->index())
                                           : runChecks();
    if (strProblem.isEmpty())
        strProblem = checkEmptyPage();
    if (!strProblem.isEmpty())
        QFAIL(qPrintable(failureReport(0, QStringLiteral("after undoing everything: ") + strProblem)));

    // Up to where the run ended, which need not be the end of the history.
    log(QStringLiteral("Redo everything"));
    pStack->setIndex(nSteps);
    QCoreApplication::processEvents();
    strProblem = runChecks();
    if (strProblem.isEmpty() && layoutItems().size() != nItems)
        strProblem = QStringLiteral("%1 layout items, %2 before undoing everything").arg(layoutItems().size()).arg(nItems);
    if (!strProblem.isEmpty())
        QFAIL(qPrintable(failureReport(0, QStringLiteral("after redoing everything: ") + strProblem)));
    qInfo("undid and redid all %d steps, %.1f s", nSteps, clock.elapsed() / 1000.0);
}

// --- The run -------------------------------------------------------------------------

void TestAppRandomActions::randomActionsKeepLayoutConsistent()
{
    bool bSeedGiven = false;
    const quint32 nSeed = quint32(qEnvironmentVariableIntValue("VX_RANDOM_SEED", &bSeedGiven));
    const quint32 nUsedSeed = bSeedGiven ? nSeed : QRandomGenerator::system()->generate() % 1000000000u;
    m_nSeed = nUsedSeed;
    const int nActions = environmentNumber("VX_RANDOM_ACTIONS", kDefaultActions);
    qInfo("random actions: seed %u (VX_RANDOM_SEED=%u repeats this run), %d actions", nUsedSeed, nUsedSeed, nActions);
    m_random.seed(nUsedSeed);

    host()->action(QStringLiteral("actionOpenSamples"))->trigger();
    CVXUtilityFns::getAction(kEntry)->trigger();
    QMdiSubWindow* pLayoutSubWindow = host()->layoutSubWindow();
    QVERIFY(pLayoutSubWindow && pLayoutSubWindow->isVisible());
    // The view comes from the plugin module, which has its own copy of the layout classes:
    // a qobject_cast against the test's copy would fail. Both are built from the same
    // sources, so the class is checked by name and the pointer cast statically.
    m_pView = static_cast<CVXSLayoutView*>(layoutWindow()->findChild<QGraphicsView*>());
    QVERIFY(m_pView && m_pView->inherits("CVXSLayoutView"));
    QVERIFY(m_pView->layoutManager());
    m_pModals = std::make_unique<CModalWatch>(nullptr, QList<ModalAnswer>(),
                                              [this](QWidget* pModal) { answerModal(pModal); });
    const QWidgetList startWindows = QApplication::topLevelWidgets();
    for (const QWidget* pWidget : startWindows)
        m_startTopLevels.insert(pWidget);
    m_nStartStyle = layoutWindowClass()->layoutStyle();
    m_nStartStyleIndex = layoutWindow()->findChild<QComboBox*>(QStringLiteral("m_pLayoutStyleCombo"))->currentIndex();

    const QVector<CAction> actions {
        {80, "pasteActiveDataset", &TestAppRandomActions::pasteActiveDataset},
        {50, "pasteClipboardImage", &TestAppRandomActions::pasteClipboardImage},
        {8, "pasteClipboardText", &TestAppRandomActions::pasteClipboardText},
        {10, "copyPage", &TestAppRandomActions::copyPage},
        {70, "typeAnnotation", &TestAppRandomActions::typeAnnotation},
        {60, "chooseStyle", &TestAppRandomActions::chooseStyle},
        {110, "drawShape", &TestAppRandomActions::drawShape},
        {30, "choosePointer", &TestAppRandomActions::choosePointer},
        {80, "clickPage", &TestAppRandomActions::clickPage},
        {130, "dragItem", &TestAppRandomActions::dragItem},
        {60, "dragHandle", &TestAppRandomActions::dragHandle},
        {15, "doubleClickItem", &TestAppRandomActions::doubleClickItem},
        {40, "pressDelete", &TestAppRandomActions::pressDelete},
        {25, "clickDelete", &TestAppRandomActions::clickDelete},
        {30, "clickMoveZ", &TestAppRandomActions::clickMoveZ},
        {60, "chooseMoveZ", &TestAppRandomActions::chooseMoveZ},
        {20, "clickNew", &TestAppRandomActions::clickNew},
        {25, "editText", &TestAppRandomActions::editText},
        {40, "activateHostWindow", &TestAppRandomActions::activateHostWindow},
        {8, "minimizeHostWindow", &TestAppRandomActions::minimizeHostWindow},
        {8, "closeHostWindow", &TestAppRandomActions::closeHostWindow},
        {5, "chooseSequenceTab", &TestAppRandomActions::chooseSequenceTab},
        {3, "openSamples", &TestAppRandomActions::openSamples},
        {3, "openImageFile", &TestAppRandomActions::openImageFile},
        {1, "exportPage", &TestAppRandomActions::exportPage},
        {30, "undoRun", &TestAppRandomActions::undoRun},
        {10, "redoRun", &TestAppRandomActions::redoRun},
        {10, "undoWhileDragging", &TestAppRandomActions::undoWhileDragging}};
    int nTotalWeight = 0;
    for (const CAction& action : actions)
        nTotalWeight += action.m_nWeight;

    QVector<int> runs(actions.size());
    QElapsedTimer clock;
    clock.start();
    for (int nAction = 1; nAction <= nActions; ++nAction) {
        m_strUndoProblem.clear();
        if (!m_pendingSteps.isEmpty()) {
            stepUndo(m_pendingSteps.takeFirst());
        } else {
            int nPick = randomInt(0, nTotalWeight - 1);
            int nIndex = 0;
            while (nPick >= actions.at(nIndex).m_nWeight)
                nPick -= actions.at(nIndex++).m_nWeight;
            (this->*actions.at(nIndex).m_pRun)();
            ++runs[nIndex];
        }
        // The window updates some of its buttons on the next turn of the event loop.
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
        const QString strProblem = runChecks();
        if (!strProblem.isEmpty())
            QFAIL(qPrintable(failureReport(nAction, strProblem)));
        if (nAction % kProgressEvery == 0)
            qInfo("%d actions, %.1f s", nAction, clock.elapsed() / 1000.0);
    }
    qInfo("%d actions, %lld checks, %d message boxes answered, %d exports, %d undos, %d redos, top z %d, "
          "%d layout items at the end, %.1f s",
          nActions, m_nChecks, m_nBoxesAnswered, m_nExports, m_nUndos, m_nRedos, m_pView->topZ(),
          layoutItems().size(), clock.elapsed() / 1000.0);
    QStringList counts;
    for (int i = 0; i < actions.size(); ++i)
        counts << QStringLiteral("%1 %2").arg(QString::fromLatin1(actions.at(i).m_pName)).arg(runs.at(i));
    qInfo("actions run: %s", qPrintable(counts.join(QStringLiteral(", "))));
    undoAndRedoEverything();
}

QTEST_MAIN(TestAppRandomActions)
#include "tst_app_randomactions.moc"
