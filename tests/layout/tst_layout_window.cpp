#include "LayoutFixture.h"
#include "ModalWatch.h"
#include "WidgetTestCase.h"

#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutItemText.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>
#include <VXSMdiSubWindow.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QSizeGrip>
#include <QToolBar>
#include <QToolButton>
#include <QWidgetAction>
#include <QtTest>

namespace {

template <typename T>
T* child(const QWidget* pWindow, const char* pName)
{
    return pWindow->findChild<T*>(QString::fromLatin1(pName));
}

// Toolbar entries left to right: object names, "|" for a separator.
QStringList toolBarEntries(const QToolBar* pToolBar)
{
    QStringList entries;
    const QList<QAction*> actions = pToolBar->actions();
    for (QAction* pAction : actions) {
        if (pAction->isSeparator())
            entries << QStringLiteral("|");
        else if (auto* pWidgetAction = qobject_cast<QWidgetAction*>(pAction))
            entries << pWidgetAction->defaultWidget()->objectName();
        else
            entries << pAction->objectName();
    }
    return entries;
}

QStringList objectNames(const QList<QAction*>& actions)
{
    QStringList names;
    for (const QAction* pAction : actions)
        names << pAction->objectName();
    return names;
}

QImage iconImage(const QIcon& icon, QIcon::Mode mode)
{
    return icon.pixmap(QSize(22, 22), mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

QImage resourceImage(const char* pPath)
{
    return QImage(QString::fromLatin1(pPath)).convertToFormat(QImage::Format_ARGB32);
}

// Presses at the centre of the item's rectangle, selecting it as the user does.
void clickItem(LayoutFixture& layout, const QRectF& rect)
{
    layout.press(rect.center().toPoint());
    layout.release(rect.center().toPoint());
}

} // namespace

class TestLayoutWindow : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void frameAndSizes();
    void centralLayouts();
    void texts_data();
    void texts();
    void provisionalPointerText();
    void toolBarOrder();
    void arrowPopup();
    void moveZPopup();
    void icons_data();
    void icons();
    void deleteIconIsEmbedded();
    void shortcuts();
    void metaObjectOrder();
    void freshWindow();
    void toolsAreExclusive();
    void popupArrowKindChecksArrowTool_data();
    void popupArrowKindChecksArrowTool();
    void pointerWithNothingOnOnlyUnsetsCursor();
    void pointerSwitchesOffTheTool_data();
    void pointerSwitchesOffTheTool();
    void moveZBeforeAnyChoiceBringsForward();
    void moveZPopupChoiceAppliesAtOnce_data();
    void moveZPopupChoiceAppliesAtOnce();
    void buttonsFollowTheContent();
    void deleteAndMoveZFollowTheSelection();
    void nonTextSelectionResetsAnnotation_data();
    void nonTextSelectionResetsAnnotation();
    void textSelectionLoadsAnnotation();
    void hostNotificationsUpdateOnNextTurn();
    void closeKeepsContentAndUnchecksMenuEntry();
    void closeWithoutWorkspaceHides();
    void sizeGripInCornerAndHiddenWhenMaximized();
    void noContextMenu();
    void screenshotWithItems();
};

void TestLayoutWindow::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

void TestLayoutWindow::frameAndSizes()
{
    CVXSLayoutWindow window;
    QCOMPARE(window.objectName(), QStringLiteral("CVXSLayoutWindow"));
    QCOMPARE(window.minimumSize(), QSize(450, 447));
    QVERIFY(window.width() >= 621 && window.height() >= 447);
    QFrame* pFrame = window.viewContainer();
    QCOMPARE(pFrame->objectName(), QStringLiteral("m_pLayoutFrame"));
    QCOMPARE(pFrame->minimumSize(), QSize(440, 330));
    QCOMPARE(pFrame->frameShape(), QFrame::StyledPanel);
    QCOMPARE(pFrame->frameShadow(), QFrame::Raised);
    auto* pEdit = child<QLineEdit>(&window, "m_pAnnotationEdit");
    QVERIFY(pEdit->text().isEmpty());
    QCOMPARE(pEdit->minimumWidth(), 150);
    QCOMPARE(pEdit->maximumSize(), QSize(32767, 32767));

    CVXSLayoutWindow named(nullptr, "Layout Window");
    QCOMPARE(named.objectName(), QStringLiteral("Layout Window"));
}

void TestLayoutWindow::centralLayouts()
{
    CVXSLayoutWindow window;
    auto* pOuter = qobject_cast<QVBoxLayout*>(window.centralWidget()->layout());
    QVERIFY(pOuter);
    QCOMPARE(pOuter->contentsMargins(), QMargins(2, 2, 2, 2));
    QCOMPARE(pOuter->spacing(), 3);
    QCOMPARE(pOuter->count(), 1);
    auto* pGrid = qobject_cast<QGridLayout*>(pOuter->itemAt(0)->layout());
    QVERIFY(pGrid);
    QCOMPARE(pGrid->itemAtPosition(0, 0)->widget(), window.viewContainer());
    auto* pBottom = qobject_cast<QHBoxLayout*>(pGrid->itemAtPosition(1, 0)->layout());
    QVERIFY(pBottom);
    QCOMPARE(pBottom->count(), 3);
    QCOMPARE(pBottom->itemAt(0)->widget(), child<QGroupBox>(&window, "m_pAnnotationGroup"));
    QSpacerItem* pSpacer = pBottom->itemAt(1)->spacerItem();
    QVERIFY(pSpacer);
    QCOMPARE(pSpacer->sizeHint(), QSize(16, 30));
    QCOMPARE(pSpacer->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QCOMPARE(pSpacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(pBottom->itemAt(2)->widget(), child<QPushButton>(&window, "m_pCloseBtn"));

    auto* pGroup = child<QGroupBox>(&window, "m_pAnnotationGroup");
    auto* pGroupLayout = qobject_cast<QVBoxLayout*>(pGroup->layout());
    QVERIFY(pGroupLayout);
    QCOMPARE(pGroupLayout->spacing(), 2);
    QCOMPARE(pGroupLayout->contentsMargins(), QMargins(6, 6, 6, 6));
    auto* pAnnotationGrid = qobject_cast<QGridLayout*>(pGroupLayout->itemAt(0)->layout());
    QVERIFY(pAnnotationGrid);
    QCOMPARE(pAnnotationGrid->alignment(), Qt::Alignment(Qt::AlignTop));
    const char* const row[] = {"m_pAnnotationEdit", "m_pAnnFontBtn", "m_pAnnColorBtn", "m_pMultiLineTextBtn"};
    for (int column = 0; column < 4; ++column)
        QCOMPARE(pAnnotationGrid->itemAtPosition(0, column)->widget()->objectName(), QLatin1String(row[column]));
}

void TestLayoutWindow::texts_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("textProperty");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("toolTip");
    QTest::addColumn<QString>("whatsThis");

    QTest::newRow("annotation group") << QByteArray("m_pAnnotationGroup") << QByteArray("title")
        << "Annotation" << QString()
        << "<b>Annotation: </b><br>To apply notes to an image, enter text in the annotation box and press "
           "Enter.Drag the text to the location of interest in the image.</br>";
    QTest::newRow("close") << QByteArray("m_pCloseBtn") << QByteArray("text") << "Close" << QString()
                           << "<b>Close:</b><br>Closes the image layout window.</br>";
    QTest::newRow("paste") << QByteArray("m_pPasteAction") << QByteArray("text") << "Action"
        << "Paste from Clipboard"
        << "<b>Paste from Clipboard:</b><br>Paste the system clipboard contents into the current image "
           "layout.</br>";
    QTest::newRow("export") << QByteArray("m_pExportAction") << QByteArray("text") << "Action" << "Export"
        << "<b>Export:</b><br>Export the active Image Layout contents in the selected image format.</br>";
    QTest::newRow("print") << QByteArray("m_pPrintAction") << QByteArray("text") << "Action" << "Print"
                           << "<b>Print:</b><br>Print the current image layout contents.</br>";
    QTest::newRow("new") << QByteArray("m_pNewAction") << QByteArray("text") << "New" << "New"
                         << "<b>New:</b><br>Clear the active image layout contents and starts a new one.</br>";
    QTest::newRow("rectangle") << QByteArray("m_pDrawRectAction") << QByteArray("text") << "Draw rectangle"
                               << "Draw rectangle" << "<b>Draw Rectangle:</b><br>Draw a Rectangle.</br>";
    QTest::newRow("ellipse") << QByteArray("m_pDrawEllipseAction") << QByteArray("text") << "Draw Ellipse"
                             << "Draw Ellipse" << "<b>Draw Ellipse:</b><br>Draw an Ellipse.</br>";
    QTest::newRow("delete") << QByteArray("m_pDeleteAction") << QByteArray("text") << "Delete" << "Delete"
                            << "<b>Delete:</b><br>Delete selected item/image.</br>";
    QTest::newRow("copy") << QByteArray("m_pCopyAction") << QByteArray("text") << "Copy to Clipboard"
        << "Copy to Clipboard"
        << "<b>Copy to Clipboard:</b><br>Copy the active image layout contents to the system clipboard.</br>";
    QTest::newRow("pointer") << QByteArray("m_pArrowAction") << QByteArray("text") << "m_pArrowAction"
        << "Pointer" << "<b>Pointer:</b><br>Reset mouse cursor back to Pointer/Picking mode.</br.";
    QTest::newRow("paste active dataset") << QByteArray("m_pPasteActiveDSetAction") << QByteArray("text")
        << "Paste Active Dataset" << "Paste from active dataset"
        << "<b>Paste From Active Dataset:</b><br>Paste active image/sequence window contents into the current "
           "image layout.</br>";
    QTest::newRow("multi-line text") << QByteArray("m_pMultiLineTextBtn") << QByteArray("text") << QString()
        << "Multiline text edit"
        << "<b>Multiline Text Edit:</b><br>Adds a new text item into the image layout.</br>";
    QTest::newRow("arrow tool") << QByteArray("m_pArrowToolBtn") << QByteArray("text") << QString()
        << "Draw Line/Arrow" << "<b>Draw Line/Arrow:</b><br>Set the Arrow/Line option.</br>";
    QTest::newRow("move in z") << QByteArray("m_pMoveZBtn") << QByteArray("text") << QString()
        << "Move selected item in Z"
        << "<b>Move Selected Item in Z:</b><br>Move the selected item to front or back as needed compared to "
           "other items to control its visibility and order of rendering.</br>";
    QTest::newRow("style label") << QByteArray("m_pLayoutStyleLabel") << QByteArray("text") << "Layout Style : "
        << QString()
        << "<b>Layout Style:</b><br>Sets a predefined image layout option. For example a 2x2 layout provides 4 "
           "separate areas to arrange images and items. A different image can be pasted into each layout "
           "area.</br>";
    QTest::newRow("font") << QByteArray("m_pAnnFontBtn") << QByteArray("text") << QString() << "Font"
        << "<b>Font:</b><br>Sets font, font style and font size to the selected test item.</br>";
    QTest::newRow("font colour") << QByteArray("m_pAnnColorBtn") << QByteArray("text") << QString()
        << "Font color" << "<b>Font Color:</b><br>Sets text color to the selected text item.</br>";
}

void TestLayoutWindow::texts()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, textProperty);
    QFETCH(QString, text);
    QFETCH(QString, toolTip);
    QFETCH(QString, whatsThis);
    CVXSLayoutWindow window;
    QCOMPARE(window.windowTitle(), QStringLiteral("Image Layout Window"));
    auto* pObject = window.findChild<QObject*>(QString::fromLatin1(name));
    QVERIFY2(pObject, name.constData());
    QCOMPARE(pObject->property(textProperty.constData()).toString(), text);
    QCOMPARE(pObject->property("toolTip").toString(), toolTip);
    QCOMPARE(pObject->property("whatsThis").toString(), whatsThis);
    // languageChange sets the same texts again.
    window.languageChange();
    QCOMPARE(pObject->property(textProperty.constData()).toString(), text);
    QCOMPARE(pObject->property("whatsThis").toString(), whatsThis);
}

void TestLayoutWindow::provisionalPointerText()
{
    CVXSLayoutWindow window;
    QAction* pPointer = child<QAction>(&window, "m_pArrowAction");
    window.languageChange();
    QCOMPARE(pPointer->text(), QStringLiteral("m_pArrowAction"));
    QCOMPARE(pPointer->toolTip(), QStringLiteral("Pointer"));
}

void TestLayoutWindow::toolBarOrder()
{
    CVXSLayoutWindow window;
    const QList<QToolBar*> toolBars = window.findChildren<QToolBar*>();
    QCOMPARE(toolBars.count(), 1);
    QToolBar* pToolBar = toolBars.first();
    QCOMPARE(pToolBar->windowTitle(), QStringLiteral("Layout Toolbar"));
    QVERIFY(!pToolBar->isMovable());
    QVERIFY(!pToolBar->isFloatable());
    const QStringList expected = {
        "m_pNewAction", "|", "m_pExportAction", "|", "m_pPasteActiveDSetAction", "m_pCopyAction",
        "m_pPasteAction", "|", "m_pDrawRectAction", "m_pDrawEllipseAction", "|", "m_pArrowAction", "|",
        "m_pArrowToolBtn", "|", "m_pMoveZBtn", "|", "m_pDeleteAction", "|", "m_pPrintAction", "|",
        "m_pLayoutStyleLabel", "m_pLayoutStyleCombo"};
    QCOMPARE(toolBarEntries(pToolBar), expected);

    QComboBox* pCombo = window.layoutStyleCombo();
    QStringList styles;
    for (int i = 0; i < pCombo->count(); ++i)
        styles << pCombo->itemText(i);
    QCOMPARE(styles, (QStringList{"Free style", "Layout 1x1", "Layout 2x1", "Layout 2x2", "Layout 3x2",
                                  "Layout 3x3", "Layout 4x2", "Layout 4x3", "Layout 4x4"}));
    QCOMPARE(pCombo->currentIndex(), 0);
}

void TestLayoutWindow::arrowPopup()
{
    CVXSLayoutWindow window;
    auto* pMenu = child<QMenu>(&window, "m_pArrowMenu");
    auto* pButton = child<QToolButton>(&window, "m_pArrowToolBtn");
    QCOMPARE(pButton->menu(), pMenu);
    QCOMPARE(pButton->popupMode(), QToolButton::MenuButtonPopup);
    QVERIFY(pButton->isCheckable());
    QCOMPARE(iconImage(pButton->icon(), QIcon::Normal), resourceImage(":/Resource/line.xpm"));
    const QList<QAction*> entries = pMenu->actions();
    QCOMPARE(objectNames(entries),
             (QStringList{"m_pDrawDoubleArrowAction", "m_pDrawSingleArrowAction", "m_pDrawLineAction"}));
    const QStringList whatsThis = {"Draw Double Headed Arrow", "Draw Single Headed Arrow", "Draw Line"};
    const char* const icons[] = {":/Resource/doubleHeadArrow.xpm", ":/Resource/singleHeadArrow.xpm",
                                 ":/Resource/line.xpm"};
    for (int i = 0; i < entries.count(); ++i) {
        QVERIFY(entries.at(i)->text().isEmpty());
        QCOMPARE(entries.at(i)->whatsThis(), whatsThis.at(i));
        QCOMPARE(iconImage(entries.at(i)->icon(), QIcon::Normal), resourceImage(icons[i]));
    }
    QCOMPARE(pMenu->activeAction(), child<QAction>(&window, "m_pDrawLineAction"));
}

void TestLayoutWindow::moveZPopup()
{
    CVXSLayoutWindow window;
    auto* pMenu = child<QMenu>(&window, "m_pMoveZMenu");
    auto* pButton = child<QToolButton>(&window, "m_pMoveZBtn");
    QCOMPARE(pButton->menu(), pMenu);
    QCOMPARE(pButton->popupMode(), QToolButton::MenuButtonPopup);
    QVERIFY(!pButton->isCheckable());
    QVERIFY(!pButton->isEnabled());
    QCOMPARE(iconImage(pButton->icon(), QIcon::Normal), resourceImage(":/Resource/thickUpAllArrow.xpm"));
    const QList<QAction*> entries = pMenu->actions();
    QStringList texts;
    for (const QAction* pAction : entries)
        texts << pAction->text();
    QCOMPARE(texts, (QStringList{"Send to back", "Send backward", "Bring forward", "Bring to front"}));
    const QStringList whatsThis = {"Moves the selected item to bottom of Z-order",
                                   "Moves the selected item down the Z-order (by 1)",
                                   "Moves the selected item up the Z-order (by 1)",
                                   "Moves the selected item to top of Z-order"};
    const char* const icons[] = {":/Resource/thickDownAllArrow.xpm", ":/Resource/thickDownArrow.xpm",
                                 ":/Resource/thickUpArrow.xpm", ":/Resource/thickUpAllArrow.xpm"};
    for (int i = 0; i < entries.count(); ++i) {
        QCOMPARE(entries.at(i)->whatsThis(), whatsThis.at(i));
        QCOMPARE(iconImage(entries.at(i)->icon(), QIcon::Normal), resourceImage(icons[i]));
    }
    QCOMPARE(pMenu->activeAction()->text(), QStringLiteral("Bring to front"));
}

void TestLayoutWindow::icons_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("normal");
    QTest::addColumn<QByteArray>("disabled");
    QTest::addColumn<bool>("checkable");
    QTest::newRow("new") << QByteArray("m_pNewAction") << QByteArray(":/Resource/filenew.xpm") << QByteArray()
                         << false;
    QTest::newRow("paste") << QByteArray("m_pPasteAction") << QByteArray(":/Resource/paste.xpm") << QByteArray()
                           << false;
    QTest::newRow("rectangle") << QByteArray("m_pDrawRectAction") << QByteArray(":/Resource/rectangle.xpm")
                               << QByteArray() << true;
    QTest::newRow("ellipse") << QByteArray("m_pDrawEllipseAction") << QByteArray(":/Resource/ellipse.xpm")
                             << QByteArray() << true;
    QTest::newRow("export") << QByteArray("m_pExportAction") << QByteArray(":/Resource/filesave_enabled.xpm")
                            << QByteArray(":/Resource/filesave_disabled.xpm") << false;
    QTest::newRow("print") << QByteArray("m_pPrintAction") << QByteArray(":/Resource/fileprint_enabled.xpm")
                           << QByteArray(":/Resource/fileprint_disabled.xpm") << false;
    QTest::newRow("copy") << QByteArray("m_pCopyAction") << QByteArray(":/Resource/filecopy_enabled.xpm")
                          << QByteArray(":/Resource/filecopy_disabled.xpm") << false;
    QTest::newRow("pointer") << QByteArray("m_pArrowAction") << QByteArray(":/Resource/arrow1.xpm")
                             << QByteArray() << false;
    QTest::newRow("paste active dataset") << QByteArray("m_pPasteActiveDSetAction")
                                          << QByteArray(":/Resource/PasteActiveDataset.xpm") << QByteArray()
                                          << false;
}

void TestLayoutWindow::icons()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, normal);
    QFETCH(QByteArray, disabled);
    QFETCH(bool, checkable);
    CVXSLayoutWindow window;
    QAction* pAction = child<QAction>(&window, name.constData());
    QVERIFY(!resourceImage(normal.constData()).isNull());
    QCOMPARE(iconImage(pAction->icon(), QIcon::Normal), resourceImage(normal.constData()));
    if (!disabled.isEmpty())
        QCOMPARE(iconImage(pAction->icon(), QIcon::Disabled), resourceImage(disabled.constData()));
    QCOMPARE(pAction->isCheckable(), checkable);
}

void TestLayoutWindow::deleteIconIsEmbedded()
{
    CVXSLayoutWindow window;
    const QImage icon = iconImage(child<QAction>(&window, "m_pDeleteAction")->icon(), QIcon::Normal);
    QVERIFY(!icon.isNull());
    // A red cross on a clear ground.
    QCOMPARE(qAlpha(icon.pixel(0, 0)), 0);
    int red = 0;
    for (int y = 0; y < icon.height(); ++y) {
        for (int x = 0; x < icon.width(); ++x)
            red += qAlpha(icon.pixel(x, y)) == 255 && qRed(icon.pixel(x, y)) > 150 && qGreen(icon.pixel(x, y)) < 100;
    }
    QVERIFY2(red > 30, qPrintable(QString::number(red)));
    QVERIFY(!resourceImage(":/Resource/text.xpm").isNull());
    QCOMPARE(iconImage(child<QToolButton>(&window, "m_pMultiLineTextBtn")->icon(), QIcon::Normal),
             resourceImage(":/Resource/text.xpm"));
    QCOMPARE(iconImage(child<QToolButton>(&window, "m_pAnnFontBtn")->icon(), QIcon::Normal),
             resourceImage(":/Resource/fontchange.xpm"));
    QCOMPARE(iconImage(child<QToolButton>(&window, "m_pAnnColorBtn")->icon(), QIcon::Normal),
             resourceImage(":/Resource/fontcolor.xpm"));
}

void TestLayoutWindow::shortcuts()
{
    CVXSLayoutWindow window;
    QCOMPARE(child<QAction>(&window, "m_pDeleteAction")->shortcut(), QKeySequence(Qt::Key_Delete));
    QCOMPARE(child<QAction>(&window, "m_pPasteAction")->shortcut(), QKeySequence(Qt::CTRL + Qt::Key_V));
    QCOMPARE(child<QAction>(&window, "m_pPrintAction")->shortcut(), QKeySequence(Qt::CTRL + Qt::Key_P));
    QCOMPARE(child<QAction>(&window, "m_pNewAction")->shortcut(), QKeySequence(Qt::CTRL + Qt::Key_N));
    for (const char* pName : {"m_pPasteActiveDSetAction", "m_pExportAction", "m_pCopyAction",
                              "m_pDrawRectAction", "m_pDrawEllipseAction", "m_pArrowAction"})
        QVERIFY2(child<QAction>(&window, pName)->shortcut().isEmpty(), pName);
}

void TestLayoutWindow::metaObjectOrder()
{
    const QMetaObject& meta = CVXSLayoutWindow::staticMetaObject;
    QCOMPARE(QString::fromLatin1(meta.className()), QStringLiteral("CVXSLayoutWindow"));
    QStringList methods;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i)
        methods << QString::fromLatin1(meta.method(i).methodSignature());
    const QStringList expected = {
        "updateToolStatus()", "copyToClipBoard(QString)", "onClickClose()",
        "setLayoutManager(CVXSLayoutManager*)", "setLayoutView(CVXSLayoutView*)", "onClickActiveDSetPaste()",
        "onAnnotationEnter()", "onLayoutItemSelectionChange(QGraphicsItem*)", "onClickAnnFont()",
        "onClickAnnClr()", "onClickClipBoardPaste()", "onClickExport()", "onClickPrint()",
        "selChngLayoutStyle()", "onClickNew()", "isDrawRectOn()", "isDrawEllipseOn()", "isDrawArrowOn()",
        "onClickRectangleShapeBtn(bool)", "onClickEllipseShapeBtn(bool)", "onClickArrowShapeBtn(bool)",
        "onSelectArrowToolPopup(QAction*)", "onClickDelete()", "updateButtonStatus()", "onCopyToClipboard()",
        "setCursorStyle()", "onClickMoveZ()", "onSelMoveZType(QAction*)",
        "onDatasetStatusChanged(CVXSDataset*)", "onSequenceStatusChanged(CVXSSequenceDataset*)",
        "onClickMultiLineEditText()", "updateAnnotation(Qt::Alignment,QFont&,QColor&)",
        "updateLayoutText(QString&)", "onClickArrow()", "languageChange()"};
    QCOMPARE(methods, expected);
    QCOMPARE(methods.count(), 35);
}

void TestLayoutWindow::freshWindow()
{
    LayoutFixture layout;
    CVXSLayoutWindow* pWindow = layout.window();
    QCOMPARE(layout.scene()->items().count(), 21);
    for (const char* pName : {"m_pExportAction", "m_pPrintAction", "m_pCopyAction", "m_pDeleteAction"})
        QVERIFY2(!layout.action(pName)->isEnabled(), pName);
    QVERIFY(!child<QToolButton>(pWindow, "m_pMoveZBtn")->isEnabled());
    // No image window is open.
    QVERIFY(!layout.action("m_pPasteActiveDSetAction")->isEnabled());
    QVERIFY(layout.action("m_pPasteAction")->isEnabled());
    QCOMPARE(pWindow->layoutStyleCombo()->currentText(), QStringLiteral("Free style"));
    QVERIFY(!pWindow->isDrawRectOn());
    QVERIFY(!pWindow->isDrawEllipseOn());
    QCOMPARE(pWindow->isDrawArrowOn(), -1);
    child<QToolButton>(pWindow, "m_pArrowToolBtn")->click();
    QCOMPARE(pWindow->isDrawArrowOn(), 0);
    QCOMPARE(pWindow->contentsMargins(), QMargins(5, 5, 5, 5));
    QVERIFY(pWindow->height() >= pWindow->minimumSizeHint().height());
    QCOMPARE(layout.view()->parentWidget(), pWindow->viewContainer());
    QVERIFY(qobject_cast<QBoxLayout*>(pWindow->viewContainer()->layout()));
    QCOMPARE(qobject_cast<QBoxLayout*>(pWindow->viewContainer()->layout())->direction(), QBoxLayout::LeftToRight);
    // The Edit Text dialog belongs to the view.
    auto* pDialog = layout.view()->findChild<QDialog*>();
    QVERIFY(pDialog);
    QVERIFY(pDialog->isModal());
    QCOMPARE(pDialog->windowTitle(), QStringLiteral("Edit Text"));
    QVERIFY(!pDialog->isVisible());
}

void TestLayoutWindow::toolsAreExclusive()
{
    LayoutFixture layout;
    CVXSLayoutWindow* pWindow = layout.window();
    layout.triggerAction("m_pDrawEllipseAction");
    QVERIFY(pWindow->isDrawEllipseOn());
    QCOMPARE(layout.view()->cursor().shape(), Qt::CrossCursor);
    layout.triggerAction("m_pDrawRectAction");
    QVERIFY(pWindow->isDrawRectOn());
    QVERIFY(!pWindow->isDrawEllipseOn());
    child<QToolButton>(pWindow, "m_pArrowToolBtn")->click();
    QCOMPARE(pWindow->isDrawArrowOn(), 0);
    QVERIFY(!pWindow->isDrawRectOn());
    layout.triggerAction("m_pDrawEllipseAction");
    QCOMPARE(pWindow->isDrawArrowOn(), -1);
    QVERIFY(pWindow->isDrawEllipseOn());
    // Switching the tool off by its own button leaves the pointer.
    layout.triggerAction("m_pDrawEllipseAction");
    QVERIFY(!pWindow->isDrawEllipseOn());
    QVERIFY(!layout.view()->testAttribute(Qt::WA_SetCursor));
}

void TestLayoutWindow::popupArrowKindChecksArrowTool_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<QByteArray>("icon");
    QTest::newRow("line") << 0 << QByteArray(":/Resource/line.xpm");
    QTest::newRow("single-headed") << 1 << QByteArray(":/Resource/singleHeadArrow.xpm");
    QTest::newRow("double-headed") << 2 << QByteArray(":/Resource/doubleHeadArrow.xpm");
}

void TestLayoutWindow::popupArrowKindChecksArrowTool()
{
    QFETCH(int, kind);
    QFETCH(QByteArray, icon);
    LayoutFixture layout;
    CVXSLayoutWindow* pWindow = layout.window();
    layout.triggerAction("m_pDrawRectAction");
    layout.chooseArrowTool(kind);
    QCOMPARE(pWindow->isDrawArrowOn(), kind);
    QVERIFY(child<QToolButton>(pWindow, "m_pArrowToolBtn")->isChecked());
    QVERIFY(!pWindow->isDrawRectOn());
    QVERIFY(!pWindow->isDrawEllipseOn());
    QCOMPARE(layout.view()->cursor().shape(), Qt::CrossCursor);
    QCOMPARE(iconImage(child<QToolButton>(pWindow, "m_pArrowToolBtn")->icon(), QIcon::Normal),
             resourceImage(icon.constData()));
    // An action from elsewhere changes neither the kind nor the picture.
    pWindow->onSelectArrowToolPopup(layout.action("m_pNewAction"));
    QCOMPARE(pWindow->isDrawArrowOn(), kind);
    QCOMPARE(iconImage(child<QToolButton>(pWindow, "m_pArrowToolBtn")->icon(), QIcon::Normal),
             resourceImage(icon.constData()));
}

void TestLayoutWindow::pointerWithNothingOnOnlyUnsetsCursor()
{
    LayoutFixture layout;
    layout.view()->setCursor(Qt::CrossCursor);
    layout.triggerAction("m_pArrowAction");
    QVERIFY(!layout.view()->testAttribute(Qt::WA_SetCursor));
    QVERIFY(!layout.window()->isDrawRectOn());
    QVERIFY(!layout.window()->isDrawEllipseOn());
    QCOMPARE(layout.window()->isDrawArrowOn(), -1);
}

void TestLayoutWindow::pointerSwitchesOffTheTool_data()
{
    QTest::addColumn<QByteArray>("tool");
    QTest::newRow("rectangle") << QByteArray("m_pDrawRectAction");
    QTest::newRow("ellipse") << QByteArray("m_pDrawEllipseAction");
    QTest::newRow("arrow") << QByteArray("arrow");
}

void TestLayoutWindow::pointerSwitchesOffTheTool()
{
    QFETCH(QByteArray, tool);
    LayoutFixture layout;
    if (tool == "arrow")
        layout.chooseArrowTool(2);
    else
        layout.triggerAction(tool.constData());
    QCOMPARE(layout.view()->cursor().shape(), Qt::CrossCursor);
    layout.triggerAction("m_pArrowAction");
    QVERIFY(!layout.window()->isDrawRectOn());
    QVERIFY(!layout.window()->isDrawEllipseOn());
    QCOMPARE(layout.window()->isDrawArrowOn(), -1);
    QVERIFY(!layout.view()->testAttribute(Qt::WA_SetCursor));
}

void TestLayoutWindow::moveZBeforeAnyChoiceBringsForward()
{
    LayoutFixture layout;
    QGraphicsItem* pLower = layout.addItem("rectangle", QRectF(100, 100, 100, 80));
    QGraphicsItem* pMiddle = layout.addItem("rectangle", QRectF(400, 100, 100, 80));
    QGraphicsItem* pUpper = layout.addItem("ellipse", QRectF(700, 100, 100, 80));
    clickItem(layout, QRectF(100, 100, 100, 80));
    QCOMPARE(layout.view()->currentItem(), pLower);
    auto* pButton = child<QToolButton>(layout.window(), "m_pMoveZBtn");
    QVERIFY(pButton->isEnabled());
    // The left part of the button runs the command; the arrow part opens the popup.
    QTest::mouseClick(pButton, Qt::LeftButton, Qt::NoModifier, QPoint(4, pButton->height() / 2));
    QCOMPARE(pLower->zValue(), 27.0);
    QCOMPARE(pMiddle->zValue(), 26.0);
    QCOMPARE(pUpper->zValue(), 28.0);
}

void TestLayoutWindow::moveZPopupChoiceAppliesAtOnce_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QByteArray>("icon");
    QTest::addColumn<QList<qreal>>("zAfterChoice");
    // Three items at z 26, 27, 28; the middle one is selected.
    QTest::newRow("bring to front") << "Bring to front" << QByteArray(":/Resource/thickUpAllArrow.xpm")
                                    << QList<qreal>{26, 29, 28};
    QTest::newRow("bring forward") << "Bring forward" << QByteArray(":/Resource/thickUpArrow.xpm")
                                   << QList<qreal>{26, 28, 27};
    QTest::newRow("send backward") << "Send backward" << QByteArray(":/Resource/thickDownArrow.xpm")
                                   << QList<qreal>{27, 26, 28};
    QTest::newRow("send to back") << "Send to back" << QByteArray(":/Resource/thickDownAllArrow.xpm")
                                  << QList<qreal>{27, 26, 28};
}

void TestLayoutWindow::moveZPopupChoiceAppliesAtOnce()
{
    QFETCH(QString, entry);
    QFETCH(QByteArray, icon);
    QFETCH(QList<qreal>, zAfterChoice);
    LayoutFixture layout;
    const QList<QGraphicsItem*> items = {layout.addItem("rectangle", QRectF(100, 100, 100, 80)),
                                         layout.addItem("rectangle", QRectF(400, 100, 100, 80)),
                                         layout.addItem("ellipse", QRectF(700, 100, 100, 80))};
    clickItem(layout, QRectF(400, 100, 100, 80));
    auto* pMenu = child<QMenu>(layout.window(), "m_pMoveZMenu");
    QAction* pEntry = nullptr;
    for (QAction* pAction : pMenu->actions()) {
        if (pAction->text() == entry)
            pEntry = pAction;
    }
    QVERIFY(pEntry);
    pEntry->trigger();
    QList<qreal> z;
    for (const QGraphicsItem* pItem : items)
        z << pItem->zValue();
    QCOMPARE(z, zAfterChoice);
    auto* pButton = child<QToolButton>(layout.window(), "m_pMoveZBtn");
    QCOMPARE(iconImage(pButton->icon(), QIcon::Normal), resourceImage(icon.constData()));
    // The button now repeats the choice.
    const qreal zBefore = items.at(1)->zValue();
    pButton->click();
    if (entry == QLatin1String("Bring to front"))
        QCOMPARE(items.at(1)->zValue(), zBefore);
    if (entry == QLatin1String("Send backward"))
        QCOMPARE(items.at(1)->zValue(), zBefore);
    // Any other action clears the picture.
    layout.window()->onSelMoveZType(layout.action("m_pNewAction"));
    QVERIFY(pButton->icon().isNull());
}

void TestLayoutWindow::buttonsFollowTheContent()
{
    LayoutFixture layout;
    const char* const outputs[] = {"m_pExportAction", "m_pPrintAction", "m_pCopyAction"};
    // A rectangle drawn as the user does.
    layout.triggerAction("m_pDrawRectAction");
    layout.drag(QPoint(100, 100), QPoint(250, 200));
    QCOMPARE(layout.scene()->items().count(), 22);
    for (const char* pName : outputs)
        QVERIFY2(layout.action(pName)->isEnabled(), pName);
    layout.triggerAction("m_pArrowAction");
    clickItem(layout, QRectF(100, 100, 150, 100));
    QVERIFY(layout.view()->currentItem());
    layout.triggerAction("m_pDeleteAction");
    QCOMPARE(layout.scene()->items().count(), 21);
    for (const char* pName : outputs)
        QVERIFY2(!layout.action(pName)->isEnabled(), pName);
}

void TestLayoutWindow::deleteAndMoveZFollowTheSelection()
{
    LayoutFixture layout;
    layout.addItem("rectangle", QRectF(100, 100, 100, 80));
    auto* pMoveZ = child<QToolButton>(layout.window(), "m_pMoveZBtn");
    clickItem(layout, QRectF(100, 100, 100, 80));
    QVERIFY(layout.action("m_pDeleteAction")->isEnabled());
    QVERIFY(pMoveZ->isEnabled());
    layout.press(QPoint(600, 400));
    layout.release(QPoint(600, 400));
    QVERIFY(!layout.action("m_pDeleteAction")->isEnabled());
    QVERIFY(!pMoveZ->isEnabled());
}

void TestLayoutWindow::nonTextSelectionResetsAnnotation_data()
{
    LayoutFixture::addItemKindRows({"text"});
}

void TestLayoutWindow::nonTextSelectionResetsAnnotation()
{
    QFETCH(QByteArray, kind);
    LayoutFixture layout;
    auto* pText = static_cast<CVXSLayoutItemText*>(layout.addItem("text", QRectF(100, 100, 120, 40)));
    QFont bigFont(QStringLiteral("DejaVu Serif"), 30, QFont::Bold);
    pText->setFont(bigFont);
    pText->setColor(Qt::red);
    pText->setTextFlags(Qt::AlignRight);
    const QRectF otherRect(500, 100, 160, 100);
    layout.addItem(kind, otherRect);
    auto* pEdit = child<QLineEdit>(layout.window(), "m_pAnnotationEdit");

    clickItem(layout, QRectF(100, 100, 120, 40));
    QCOMPARE(pEdit->text(), QStringLiteral("Label"));
    clickItem(layout, otherRect);
    QVERIFY(layout.view()->currentItem() && layout.view()->currentItem() != pText);
    QVERIFY(pEdit->text().isEmpty());

    // The next text item is made with what the window holds now.
    layout.press(QPoint(990, 490));
    layout.release(QPoint(990, 490));
    QTest::keyClicks(pEdit, QStringLiteral("Fresh"));
    QTest::keyClick(pEdit, Qt::Key_Return);
    auto* pFresh = static_cast<CVXSLayoutItemText*>(layout.view()->currentItem());
    QVERIFY(pFresh && pFresh != pText);
    QCOMPARE(pFresh->type(), int(CVXSLayoutItemText::Type));
    QCOMPARE(pFresh->getFont(), QApplication::font());
    QCOMPARE(pFresh->getColor(), QColor(0, 0, 0, 255));
    QCOMPARE(pFresh->getTextFlags() & ~Qt::AlignTop, Qt::Alignment(Qt::AlignLeft));
}

void TestLayoutWindow::textSelectionLoadsAnnotation()
{
    LayoutFixture layout;
    auto* pText = static_cast<CVXSLayoutItemText*>(layout.addItem("text", QRectF(100, 100, 120, 40)));
    const QFont font(QStringLiteral("DejaVu Sans"), 17, QFont::Bold);
    pText->setFont(font);
    pText->setColor(Qt::darkGreen);
    pText->setTextFlags(Qt::AlignHCenter);
    clickItem(layout, QRectF(100, 100, 120, 40));
    auto* pEdit = child<QLineEdit>(layout.window(), "m_pAnnotationEdit");
    QCOMPARE(pEdit->text(), QStringLiteral("Label"));
    // The formatting comes back unchanged when the same text is entered again.
    QTest::keyClick(pEdit, Qt::Key_Return);
    QCOMPARE(layout.view()->currentItem(), pText);
    QCOMPARE(pText->getFont(), font);
    QCOMPARE(pText->getColor(), QColor(Qt::darkGreen));
    QVERIFY(pText->getTextFlags() & Qt::AlignHCenter);
}

void TestLayoutWindow::hostNotificationsUpdateOnNextTurn()
{
    LayoutFixture layout;
    QAction* pExport = layout.action("m_pExportAction");
    layout.addItem("rectangle", QRectF(100, 100, 100, 80));
    QVERIFY(!pExport->isEnabled());
    layout.window()->onDatasetStatusChanged(nullptr);
    QVERIFY(!pExport->isEnabled());
    QTRY_VERIFY(pExport->isEnabled());
    layout.window()->onSequenceStatusChanged(nullptr);
    QTRY_VERIFY(pExport->isEnabled());
}

void TestLayoutWindow::closeKeepsContentAndUnchecksMenuEntry()
{
    QMdiArea area;
    area.resize(1200, 900);
    area.show();
    QVERIFY(QTest::qWaitForWindowExposed(&area));
    QAction menuEntry(QStringLiteral("Image Layout Window"));
    menuEntry.setObjectName(QStringLiteral("Image Layout Window"));
    menuEntry.setCheckable(true);
    menuEntry.setChecked(true);
    CVXUtilityFns::registerAction(&menuEntry);
    {
        LayoutFixture layout;
        auto* pSubWindow = new CVXSMdiSubWindow;
        pSubWindow->setWidget(layout.window());
        area.addSubWindow(pSubWindow);
        pSubWindow->showWindow();
        QGraphicsItem* pRect = layout.addItem("rectangle", QRectF(100, 100, 100, 80));
        const int itemCount = layout.scene()->items().count();

        QTest::mouseClick(child<QPushButton>(layout.window(), "m_pCloseBtn"), Qt::LeftButton);
        QVERIFY(!menuEntry.isChecked());
        QVERIFY(pSubWindow->isHidden());
        QCOMPARE(layout.window()->parentWidget(), pSubWindow);
        QCOMPARE(layout.scene()->items().count(), itemCount);
        QVERIFY(layout.scene()->items().contains(pRect));

        // Shown again, it is as it was.
        menuEntry.setChecked(true);
        pSubWindow->showWindow();
        QVERIFY(layout.window()->isVisible());
        QCOMPARE(layout.scene()->items().count(), itemCount);
        // Closing the sub-window itself only hides it too.
        QVERIFY(!pSubWindow->close());
        QVERIFY(pSubWindow->isHidden());
        QVERIFY(!menuEntry.isChecked());
    }
}

void TestLayoutWindow::closeWithoutWorkspaceHides()
{
    LayoutFixture layout;
    layout.addItem("ellipse", QRectF(100, 100, 100, 80));
    QVERIFY(!layout.window()->close());
    QVERIFY(!layout.window()->isVisible());
    QCOMPARE(layout.scene()->items().count(), 22);
}

void TestLayoutWindow::sizeGripInCornerAndHiddenWhenMaximized()
{
    LayoutFixture layout;
    CVXSLayoutWindow* pWindow = layout.window();
    auto* pGrip = child<QSizeGrip>(pWindow, "m_pSizeGrip");
    QVERIFY(pGrip);
    QCOMPARE(pGrip->size(), QSize(12, 12));
    QCOMPARE(pGrip->geometry().bottomRight(), QPoint(pWindow->width() - 1, pWindow->height() - 1));
    pWindow->resize(pWindow->size() + QSize(37, 21));
    QTRY_COMPARE(pGrip->geometry().bottomRight(), QPoint(pWindow->width() - 1, pWindow->height() - 1));
    QVERIFY(pGrip->isVisible());
    pWindow->showMaximized();
    QTRY_VERIFY(!pGrip->isVisible());
    pWindow->showNormal();
    QTRY_VERIFY(pGrip->isVisible());
}

void TestLayoutWindow::noContextMenu()
{
    CVXSLayoutWindow window;
    QMainWindow* pMainWindow = &window;
    QCOMPARE(pMainWindow->createPopupMenu(), nullptr);
    CModalWatch watch;
    QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5));
    QApplication::sendEvent(window.findChild<QToolBar*>(), &event);
    QVERIFY(!QApplication::activePopupWidget());
    QVERIFY(watch.seen().isEmpty());
}

// A picture with some structure: a bright disc fading into a dark ground.
static QImage phantomPicture(QSize size, QColor centre)
{
    QImage picture(size, QImage::Format_ARGB32);
    picture.fill(QColor(20, 20, 30));
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    QRadialGradient gradient(QPointF(size.width() / 2.0, size.height() / 2.0), size.height() / 2.0);
    gradient.setColorAt(0, centre);
    gradient.setColorAt(1, QColor(20, 20, 30));
    painter.setBrush(gradient);
    painter.setPen(Qt::NoPen);
    painter.drawEllipse(picture.rect());
    return picture;
}

// The window as a user sees it with a few items; with VX_LAYOUT_SCREENSHOT set, the
// picture is also written there (the README shows it).
void TestLayoutWindow::screenshotWithItems()
{
    LayoutFixture layout(QSize(760, 420));
    layout.chooseStyle(2);
    const QImage left = phantomPicture(QSize(320, 240), QColor(255, 200, 60));
    layout.pasteImage(left);
    layout.pasteImage(phantomPicture(QSize(320, 240), QColor(90, 220, 255)));
    static_cast<QGraphicsRectItem*>(layout.addItem("rectangle", QRectF(120, 130, 90, 70)))->setBrush(Qt::NoBrush);
    layout.chooseArrowTool(1);
    layout.drag(QPoint(330, 330), QPoint(230, 210));
    layout.triggerAction("m_pArrowAction");
    QTest::keyClicks(child<QLineEdit>(layout.window(), "m_pAnnotationEdit"), QStringLiteral("Region of interest"));
    QTest::keyClick(child<QLineEdit>(layout.window(), "m_pAnnotationEdit"), Qt::Key_Return);
    QGraphicsItem* pCurrent = layout.view()->currentItem();
    QVERIFY(pCurrent && pCurrent->type() == VXSLayout::TextItemType);
    auto* pText = static_cast<QGraphicsRectItem*>(pCurrent);
    pText->setRect(QRectF(QPointF(340, 330), pText->rect().size()));
    layout.view()->showHandles(pText);
    layout.view()->viewport()->repaint();

    const QImage shot = layout.window()->grab().toImage();
    QCOMPARE(shot.size(), layout.window()->size() * layout.window()->devicePixelRatioF());
    const CVXSLayoutItemImage* pFirst = nullptr;
    for (QGraphicsItem* pItem : layout.scene()->items(Qt::AscendingOrder)) {
        if (pItem->type() == VXSLayout::ImageItemType && !pFirst)
            pFirst = static_cast<const CVXSLayoutItemImage*>(pItem);
    }
    QVERIFY(pFirst);
    const QPoint centre = layout.view()->viewport()->mapTo(
        layout.window(), layout.view()->mapFromScene(pFirst->rect().center()));
    // The image is shown scaled and smoothed: its centre is near, not exactly, the source's.
    const QColor shown = shot.pixelColor(centre);
    QVERIFY2(qAbs(shown.red() - 255) <= 8 && qAbs(shown.green() - 200) <= 8 && qAbs(shown.blue() - 60) <= 8,
             qPrintable(shown.name()));
    const QString strPath = qEnvironmentVariable("VX_LAYOUT_SCREENSHOT");
    if (!strPath.isEmpty())
        QVERIFY(shot.save(strPath, "PNG"));
}

QTEST_MAIN(TestLayoutWindow)
#include "tst_layout_window.moc"
