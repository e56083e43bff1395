#include "LayoutFixture.h"
#include "LayoutRecord.h"
#include "MessageBoxAnswer.h"
#include "ModalDialogAnswer.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QAction>
#include <QClipboard>
#include <QColorDialog>
#include <QDialog>
#include <QFontDialog>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QTextEdit>
#include <QToolBar>
#include <QToolButton>
#include <QUndoStack>
#include <QtTest>

using namespace VXSLayout;

namespace {

enum Style { FreeStyle = 0, Layout2x2 = 3 };

// A step a user takes on a layout: setting a page up, or the change under test.
using Step = void (*)(LayoutFixture&);

void clickToolButton(const LayoutFixture& layout, const char* pName)
{
    QTest::mouseClick(layout.window()->findChild<QToolButton*>(QString::fromLatin1(pName)), Qt::LeftButton);
}

void click(LayoutFixture& layout, QPoint point)
{
    layout.press(point);
    layout.release(point);
}

void clickItem(LayoutFixture& layout, const QGraphicsItem* pItem)
{
    click(layout, pItem->boundingRect().center().toPoint());
}

// Pastes from the clipboard with the toolbar's paste button.
void pasteFromClipboard(LayoutFixture& layout, QSize size, QColor color)
{
    QGuiApplication::clipboard()->setImage(solidImage(size, color));
    layout.triggerAction("m_pPasteAction");
}

QGraphicsItem* itemOfType(const LayoutFixture& layout, int nType)
{
    for (QGraphicsItem* pItem : layout.manager()->layoutItems()) {
        if (pItem->type() == nType)
            return pItem;
    }
    return nullptr;
}

QGraphicsItem* lowestItem(const LayoutFixture& layout)
{
    QList<QGraphicsItem*> items = layout.manager()->layoutItems();
    return *std::min_element(items.begin(), items.end(),
                             [](const QGraphicsItem* a, const QGraphicsItem* b) { return a->zValue() < b->zValue(); });
}

void chooseMoveZ(LayoutFixture& layout, const char* pActionName)
{
    auto* pMenu = layout.window()->findChild<QMenu*>(QStringLiteral("m_pMoveZMenu"));
    emit pMenu->triggered(layout.action(pActionName));
}

// ---- pages -----------------------------------------------------------------------

void emptyPage(LayoutFixture&) {}

// Free style: two images pasted, then a rectangle, a text and an arrow drawn over them.
void busyPage(LayoutFixture& layout)
{
    pasteFromClipboard(layout, QSize(300, 200), QColor(200, 40, 40));
    pasteFromClipboard(layout, QSize(120, 160), QColor(40, 160, 40));
    layout.triggerAction("m_pDrawRectAction");
    layout.drag(QPoint(600, 40), QPoint(700, 110));
    layout.triggerAction("m_pDrawRectAction");
    layout.enterAnnotation(QStringLiteral("Tumour"));
    layout.chooseArrowTool(SingleArrowTool);
    layout.drag(QPoint(700, 300), QPoint(850, 380));
    layout.triggerAction("m_pArrowAction");
    click(layout, QPoint(990, 490));
}

// "Layout 2x2" with images in cells 0 and 1.
void gridPage(LayoutFixture& layout)
{
    layout.chooseStyle(Layout2x2);
    pasteFromClipboard(layout, QSize(300, 200), QColor(200, 40, 40));
    pasteFromClipboard(layout, QSize(200, 300), QColor(40, 40, 200));
}

// ---- selections before a change ---------------------------------------------------

void selectNothing(LayoutFixture&) {}

void selectRectangle(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, RectangleItemType));
}

void selectText(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, TextItemType));
}

void selectImage(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, ImageItemType));
}

void selectLowest(LayoutFixture& layout)
{
    clickItem(layout, lowestItem(layout));
}

// ---- changes (each selects its item itself too, which then changes nothing) ---------

void pasteImage(LayoutFixture& layout)
{
    pasteFromClipboard(layout, QSize(80, 60), QColor(10, 10, 200));
}

void drawRectangle(LayoutFixture& layout)
{
    layout.triggerAction("m_pDrawRectAction");
    layout.drag(QPoint(100, 300), QPoint(220, 420), 10);
}

void drawEllipse(LayoutFixture& layout)
{
    layout.triggerAction("m_pDrawEllipseAction");
    layout.drag(QPoint(100, 300), QPoint(220, 420), 10);
}

void drawArrow(LayoutFixture& layout, int nKind)
{
    layout.chooseArrowTool(nKind);
    layout.drag(QPoint(100, 300), QPoint(260, 450), 10);
}

void drawLine(LayoutFixture& layout) { drawArrow(layout, LineTool); }
void drawSingleArrow(LayoutFixture& layout) { drawArrow(layout, SingleArrowTool); }
void drawDoubleArrow(LayoutFixture& layout) { drawArrow(layout, DoubleArrowTool); }

void moveRectangle(LayoutFixture& layout)
{
    const QPoint centre = itemOfType(layout, RectangleItemType)->boundingRect().center().toPoint();
    layout.drag(centre, centre + QPoint(-200, 150), 12);
}

void moveArrow(LayoutFixture& layout)
{
    const QGraphicsItem* pArrow = itemOfType(layout, ArrowItemType);
    const QPoint middle = pArrow->boundingRect().center().toPoint();
    layout.drag(middle, middle + QPoint(-300, -100), 12);
}

void moveImageToCell3(LayoutFixture& layout)
{
    const QGraphicsItem* pImage = itemOfType(layout, ImageItemType);
    layout.drag(pImage->boundingRect().center().toPoint(), QPoint(750, 375), 12);
}

void resizeRectangle(LayoutFixture& layout)
{
    QGraphicsItem* pRectangle = itemOfType(layout, RectangleItemType);
    clickItem(layout, pRectangle);
    const QRectF b = pRectangle->boundingRect();
    const QPoint bottomRight(int(b.right() - 1), int(b.bottom() - 1));
    layout.drag(bottomRight, bottomRight + QPoint(90, 60), 8);
}

void deleteWithKey(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, RectangleItemType));
    layout.keyClick(Qt::Key_Delete);
}

void deleteWithButton(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, ImageItemType));
    layout.triggerAction("m_pDeleteAction");
}

void changeStyle(LayoutFixture& layout)
{
    layout.chooseStyle(Layout2x2);
}

void bringToFront(LayoutFixture& layout)
{
    clickItem(layout, lowestItem(layout));
    chooseMoveZ(layout, "m_pBringToFrontAction");
}

void bringForward(LayoutFixture& layout)
{
    clickItem(layout, lowestItem(layout));
    chooseMoveZ(layout, "m_pBringForwardAction");
}

void sendBackward(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, RectangleItemType));
    chooseMoveZ(layout, "m_pSendBackwardAction");
}

void sendToBack(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, RectangleItemType));
    chooseMoveZ(layout, "m_pSendToBackAction");
}

void addText(LayoutFixture& layout)
{
    click(layout, QPoint(990, 490));
    layout.enterAnnotation(QStringLiteral("Day 14"));
}

void editTextInTheBox(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, TextItemType));
    layout.enterAnnotation(QStringLiteral("Metastasis"));
}

void deleteTextByEmptyingIt(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, TextItemType));
    layout.enterAnnotation(QString());
}

void editTextInTheDialog(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, TextItemType));
    clickToolButton(layout, "m_pMultiLineTextBtn");
    QDialog* pDialog = layout.view()->findChild<QDialog*>();
    QTRY_VERIFY(pDialog->isVisible());
    auto* pTextEdit = pDialog->findChild<QTextEdit*>(QStringLiteral("m_pTextEdit"));
    pTextEdit->moveCursor(QTextCursor::End);
    QTest::keyClick(pTextEdit, Qt::Key_Return);
    QTest::keyClicks(pTextEdit, QStringLiteral("left lobe"));
    QTest::mouseClick(pDialog->findChild<QToolButton*>(QStringLiteral("m_pAlignRightTB")), Qt::LeftButton);
    QTest::mouseClick(pDialog->findChild<QPushButton*>(QStringLiteral("m_pOkBtn")), Qt::LeftButton);
}

void changeFont(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, TextItemType));
    answerNextModalDialog(QFontDialog::staticMetaObject, [](QDialog* pDialog) {
        static_cast<QFontDialog*>(pDialog)->setCurrentFont(QFont(QStringLiteral("DejaVu Serif"), 24));
        pDialog->accept();
    });
    clickToolButton(layout, "m_pAnnFontBtn");
}

void changeColour(LayoutFixture& layout)
{
    clickItem(layout, itemOfType(layout, TextItemType));
    answerNextModalDialog(QColorDialog::staticMetaObject, [](QDialog* pDialog) {
        static_cast<QColorDialog*>(pDialog)->setCurrentColor(QColor(0, 128, 255));
        pDialog->accept();
    });
    clickToolButton(layout, "m_pAnnColorBtn");
}

void newLayout(LayoutFixture& layout)
{
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Yes));
    layout.triggerAction("m_pNewAction");
    QVERIFY(seen.m_bShown);
}

QUndoStack* undoStack(const LayoutFixture& layout)
{
    return layout.manager()->undoStack();
}

} // namespace

Q_DECLARE_METATYPE(Step)

class TestLayoutUndo : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void everyChangeUndoesAndRedoes_data();
    void everyChangeUndoesAndRedoes();
    void dragIsOneStepWhateverItsMoves();
    void clickOnlySelectsAndRecordsNothing();
    void refusedStyleChangeRecordsNothing();
    void undoAfterViewResizeGivesTheRecordedState();
    void undoEverythingGivesTheEmptyLayout();
    void newChangeAfterUndoDropsTheRedoneSteps();
    void undoAndRedoActionsAndShortcuts_data();
    void undoAndRedoActionsAndShortcuts();
    void undoKeysWaitForTheMouseRelease();
    void toolbarHasNoUndoEntries();
    void titleShowsUnsavedChanges();
};

void TestLayoutUndo::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
    qRegisterMetaType<Step>();
}

void TestLayoutUndo::init()
{
    QGuiApplication::clipboard()->clear();
}

void TestLayoutUndo::everyChangeUndoesAndRedoes_data()
{
    QTest::addColumn<Step>("page");
    QTest::addColumn<Step>("select");
    QTest::addColumn<Step>("change");
    QTest::addColumn<QString>("text");

    QTest::newRow("paste into free style") << Step(busyPage) << Step(selectNothing) << Step(pasteImage) << "Paste Image";
    QTest::newRow("paste into a cell") << Step(gridPage) << Step(selectNothing) << Step(pasteImage) << "Paste Image";
    QTest::newRow("paste onto an empty page") << Step(emptyPage) << Step(selectNothing) << Step(pasteImage) << "Paste Image";
    QTest::newRow("draw rectangle") << Step(busyPage) << Step(selectNothing) << Step(drawRectangle) << "Draw Rectangle";
    QTest::newRow("draw ellipse") << Step(busyPage) << Step(selectNothing) << Step(drawEllipse) << "Draw Ellipse";
    QTest::newRow("draw line") << Step(busyPage) << Step(selectNothing) << Step(drawLine) << "Draw Line";
    QTest::newRow("draw arrow") << Step(busyPage) << Step(selectNothing) << Step(drawSingleArrow) << "Draw Arrow";
    QTest::newRow("draw double arrow") << Step(busyPage) << Step(selectNothing) << Step(drawDoubleArrow) << "Draw Double Arrow";
    QTest::newRow("move rectangle") << Step(busyPage) << Step(selectNothing) << Step(moveRectangle) << "Move";
    QTest::newRow("move arrow") << Step(busyPage) << Step(selectNothing) << Step(moveArrow) << "Move";
    QTest::newRow("move image into another cell") << Step(gridPage) << Step(selectNothing) << Step(moveImageToCell3) << "Move";
    QTest::newRow("resize with a handle") << Step(busyPage) << Step(selectRectangle) << Step(resizeRectangle) << "Resize";
    QTest::newRow("delete key") << Step(busyPage) << Step(selectRectangle) << Step(deleteWithKey) << "Delete";
    QTest::newRow("delete button, image in a cell") << Step(gridPage) << Step(selectImage) << Step(deleteWithButton) << "Delete";
    QTest::newRow("change layout style") << Step(busyPage) << Step(selectNothing) << Step(changeStyle) << "Change Layout Style";
    QTest::newRow("bring to front") << Step(busyPage) << Step(selectLowest) << Step(bringToFront) << "Bring to Front";
    QTest::newRow("bring forward") << Step(busyPage) << Step(selectLowest) << Step(bringForward) << "Bring Forward";
    QTest::newRow("send backward") << Step(busyPage) << Step(selectRectangle) << Step(sendBackward) << "Send Backward";
    QTest::newRow("send to back") << Step(busyPage) << Step(selectRectangle) << Step(sendToBack) << "Send to Back";
    QTest::newRow("add text") << Step(busyPage) << Step(selectNothing) << Step(addText) << "Add Text";
    QTest::newRow("edit text in the box") << Step(busyPage) << Step(selectText) << Step(editTextInTheBox) << "Edit Text";
    QTest::newRow("delete text by emptying it") << Step(busyPage) << Step(selectText) << Step(deleteTextByEmptyingIt) << "Delete";
    QTest::newRow("edit text dialog") << Step(busyPage) << Step(selectText) << Step(editTextInTheDialog) << "Edit Text";
    QTest::newRow("change font") << Step(busyPage) << Step(selectText) << Step(changeFont) << "Change Font";
    QTest::newRow("change colour") << Step(busyPage) << Step(selectText) << Step(changeColour) << "Change Colour";
    QTest::newRow("new layout") << Step(busyPage) << Step(selectNothing) << Step(newLayout) << "New Layout";
    QTest::newRow("new layout of a grid") << Step(gridPage) << Step(selectNothing) << Step(newLayout) << "New Layout";
}

void TestLayoutUndo::everyChangeUndoesAndRedoes()
{
    QFETCH(Step, page);
    QFETCH(Step, select);
    QFETCH(Step, change);
    QFETCH(QString, text);

    LayoutFixture layout;
    page(layout);
    select(layout);
    QUndoStack* pStack = undoStack(layout);
    const int nSteps = pStack->count();
    const LayoutRecord before = LayoutRecord::take(*layout.manager());

    change(layout);
    QCOMPARE(pStack->count(), nSteps + 1);
    QCOMPARE(pStack->undoText(), text);
    const LayoutRecord after = LayoutRecord::take(*layout.manager());
    QVERIFY2(!after.differenceFrom(before).isEmpty(), "the change changed nothing");

    for (int round = 0; round < 2; ++round) {
        layout.triggerAction("m_pUndoAction");
        const QString strUndone = LayoutRecord::take(*layout.manager()).differenceFrom(before);
        QVERIFY2(strUndone.isEmpty(), qPrintable(QStringLiteral("after undo:\n") + strUndone));
        QCOMPARE(pStack->redoText(), text);
        layout.triggerAction("m_pRedoAction");
        const QString strRedone = LayoutRecord::take(*layout.manager()).differenceFrom(after);
        QVERIFY2(strRedone.isEmpty(), qPrintable(QStringLiteral("after redo:\n") + strRedone));
    }
}

void TestLayoutUndo::dragIsOneStepWhateverItsMoves()
{
    LayoutFixture layout;
    busyPage(layout);
    const int nSteps = undoStack(layout)->count();
    const QPoint centre = itemOfType(layout, RectangleItemType)->boundingRect().center().toPoint();
    layout.drag(centre, centre + QPoint(-300, 200), 40);
    QCOMPARE(undoStack(layout)->count(), nSteps + 1);
    QCOMPARE(undoStack(layout)->undoText(), QStringLiteral("Move"));
}

void TestLayoutUndo::clickOnlySelectsAndRecordsNothing()
{
    LayoutFixture layout;
    busyPage(layout);
    const int nSteps = undoStack(layout)->count();
    clickItem(layout, itemOfType(layout, RectangleItemType));
    click(layout, QPoint(990, 490));
    layout.keyClick(Qt::Key_Delete); // nothing selected
    QCOMPARE(undoStack(layout)->count(), nSteps);
}

void TestLayoutUndo::refusedStyleChangeRecordsNothing()
{
    LayoutFixture layout;
    for (int i = 0; i < 3; ++i)
        pasteImage(layout);
    const int nSteps = undoStack(layout)->count();
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    layout.chooseStyle(2); // "Layout 2x1" has two cells for three images
    QVERIFY(seen.m_bShown);
    QCOMPARE(undoStack(layout)->count(), nSteps);
    QCOMPARE(layout.window()->layoutStyle(), 0);
}

void TestLayoutUndo::undoAfterViewResizeGivesTheRecordedState()
{
    LayoutFixture layout;
    busyPage(layout);
    const LayoutRecord before = LayoutRecord::take(*layout.manager());
    moveRectangle(layout);
    const int nSteps = undoStack(layout)->count();
    layout.setViewSize(QSize(800, 400));
    QCOMPARE(undoStack(layout)->count(), nSteps);
    layout.setViewSize(QSize(1000, 500));
    layout.triggerAction("m_pUndoAction");
    // The page is rendered at the view's size again, so everything matches the record.
    const QString strDifference = LayoutRecord::take(*layout.manager()).differenceFrom(before);
    QVERIFY2(strDifference.isEmpty(), qPrintable(strDifference));
}

void TestLayoutUndo::undoEverythingGivesTheEmptyLayout()
{
    LayoutFixture layout;
    const LayoutRecord empty = LayoutRecord::take(*layout.manager());
    busyPage(layout);
    changeStyle(layout);
    moveImageToCell3(layout);
    deleteWithButton(layout);
    newLayout(layout);
    QVERIFY(undoStack(layout)->count() >= 9);
    while (undoStack(layout)->canUndo())
        layout.triggerAction("m_pUndoAction");
    const QString strDifference = LayoutRecord::take(*layout.manager()).differenceFrom(empty);
    QVERIFY2(strDifference.isEmpty(), qPrintable(strDifference));
    QCOMPARE(layout.scene()->items().count(), AuxiliaryItemCount);
    QVERIFY(!layout.action("m_pExportAction")->isEnabled());
}

void TestLayoutUndo::newChangeAfterUndoDropsTheRedoneSteps()
{
    LayoutFixture layout;
    busyPage(layout);
    deleteWithButton(layout);
    deleteWithKey(layout);
    layout.triggerAction("m_pUndoAction");
    layout.triggerAction("m_pUndoAction");
    const LayoutRecord restored = LayoutRecord::take(*layout.manager());
    QCOMPARE(restored.items.size(), 5);
    // The two deletions are dropped with their items; the restored ones stay in the scene.
    drawEllipse(layout);
    QVERIFY(!undoStack(layout)->canRedo());
    QCOMPARE(layout.manager()->layoutItems().count(), 6);
    layout.triggerAction("m_pUndoAction");
    QVERIFY2(LayoutRecord::take(*layout.manager()).differenceFrom(restored).isEmpty(), "the ellipse stayed");
}

void TestLayoutUndo::undoAndRedoActionsAndShortcuts_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QList<QKeySequence>>("shortcuts");
    QTest::addColumn<QString>("text");
    QTest::newRow("undo") << QByteArray("m_pUndoAction") << QList<QKeySequence>{QKeySequence(QStringLiteral("Ctrl+Z"))}
                          << "Undo Move";
    QTest::newRow("redo") << QByteArray("m_pRedoAction")
                          << QList<QKeySequence>{QKeySequence(QStringLiteral("Ctrl+Shift+Z")),
                                                 QKeySequence(QStringLiteral("Ctrl+Y"))}
                          << "Redo Move";
}

void TestLayoutUndo::undoAndRedoActionsAndShortcuts()
{
    QFETCH(QByteArray, name);
    QFETCH(QList<QKeySequence>, shortcuts);
    QFETCH(QString, text);

    LayoutFixture layout;
    busyPage(layout);
    moveRectangle(layout);
    const bool bRedo = name == "m_pRedoAction";
    if (bRedo)
        layout.triggerAction("m_pUndoAction");
    QAction* pAction = layout.action(name.constData());
    QVERIFY(pAction);
    QCOMPARE(pAction->shortcuts(), shortcuts);
    QCOMPARE(pAction->shortcutContext(), Qt::WidgetWithChildrenShortcut);
    QCOMPARE(pAction->text(), text);
    QVERIFY(pAction->isEnabled());

    QUndoStack* pStack = undoStack(layout);
    layout.view()->setFocus();
    for (const QKeySequence& shortcut : shortcuts) {
        const int nIndex = pStack->index();
        QTest::keySequence(layout.view(), shortcut);
        QCOMPARE(pStack->index(), bRedo ? nIndex + 1 : nIndex - 1);
        // Back again for the next shortcut.
        if (bRedo)
            pStack->undo();
        else
            pStack->redo();
    }
}

void TestLayoutUndo::undoKeysWaitForTheMouseRelease()
{
    LayoutFixture layout;
    busyPage(layout);
    QUndoStack* pStack = undoStack(layout);
    const int nSteps = pStack->index();
    const int nItems = layout.manager()->layoutItems().count();
    layout.triggerAction("m_pDrawRectAction");
    layout.view()->setFocus();
    layout.press(QPoint(100, 300));
    layout.move(QPoint(160, 360));
    for (const QKeySequence& keys : {QKeySequence(Qt::CTRL | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)}) {
        QTest::keySequence(layout.view(), keys);
        QCOMPARE(pStack->index(), nSteps);
    }
    layout.move(QPoint(220, 420));
    layout.release(QPoint(220, 420));
    // The rectangle is one step of its own, and undoing it gives back the page before.
    QCOMPARE(pStack->index(), nSteps + 1);
    QCOMPARE(layout.manager()->layoutItems().count(), nItems + 1);
    QTest::keySequence(layout.view(), QKeySequence(Qt::CTRL | Qt::Key_Z));
    QCOMPARE(pStack->index(), nSteps);
    QCOMPARE(layout.manager()->layoutItems().count(), nItems);
}

void TestLayoutUndo::toolbarHasNoUndoEntries()
{
    LayoutFixture layout;
    auto* pToolBar = layout.window()->findChild<QToolBar*>();
    QVERIFY(pToolBar);
    for (const char* pName : {"m_pUndoAction", "m_pRedoAction"}) {
        QAction* pAction = layout.action(pName);
        QVERIFY(pAction);
        QVERIFY(!pToolBar->actions().contains(pAction));
        QVERIFY(layout.window()->actions().contains(pAction));
        QVERIFY(!pAction->isEnabled());
    }
}

void TestLayoutUndo::titleShowsUnsavedChanges()
{
    LayoutFixture layout;
    QCOMPARE(layout.window()->windowTitle(), QStringLiteral("Image Layout Window"));
    pasteImage(layout);
    QCOMPARE(layout.window()->windowTitle(), QStringLiteral("Image Layout Window*"));
    layout.triggerAction("m_pUndoAction");
    QCOMPARE(layout.window()->windowTitle(), QStringLiteral("Image Layout Window"));
    layout.window()->setDocumentName(QStringLiteral("mouse 3.vxlayout"));
    QCOMPARE(layout.window()->windowTitle(), QStringLiteral("Image Layout Window - mouse 3.vxlayout"));
    layout.triggerAction("m_pRedoAction");
    QCOMPARE(layout.window()->windowTitle(), QStringLiteral("Image Layout Window - mouse 3.vxlayout*"));
}

QTEST_MAIN(TestLayoutUndo)
#include "tst_layout_undo.moc"
