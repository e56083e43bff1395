#include "LayoutFixture.h"
#include "MessageBoxAnswer.h"
#include "ModalDialogAnswer.h"
#include "ModalWatch.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <VXSChildWindow.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutItemText.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>
#include <VXSSequenceWindow.h>
#include <VXSWorkspace.h>
#include <VXToolPluginBase.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QClipboard>
#include <QColorDialog>
#include <QComboBox>
#include <QDialog>
#include <QElapsedTimer>
#include <QFontDialog>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QProcess>
#include <QPushButton>
#include <QTextEdit>
#include <QToolButton>
#include <QtTest>

namespace {

enum Style { FreeStyle = 0, Layout2x1 = 2, Layout2x2 = 3, Layout3x2 = 4 };

const QString NoEmptyCellText =
    QStringLiteral("There is no cell currently empty! Delete one or more images to continue.");

QLineEdit* annotationEdit(const LayoutFixture& layout)
{
    return layout.window()->findChild<QLineEdit*>(QStringLiteral("m_pAnnotationEdit"));
}

QToolButton* toolButton(const QWidget* pWindow, const char* pName)
{
    return pWindow->findChild<QToolButton*>(QString::fromLatin1(pName));
}

QDialog* editTextDialog(const LayoutFixture& layout)
{
    return layout.view()->findChild<QDialog*>();
}

QList<CVXSLayoutItemImage*> images(const LayoutFixture& layout)
{
    QList<CVXSLayoutItemImage*> found;
    for (QGraphicsItem* pItem : layout.scene()->items(Qt::AscendingOrder)) {
        if (pItem->type() == CVXSLayoutItemImage::Type)
            found << static_cast<CVXSLayoutItemImage*>(pItem);
    }
    return found;
}

QList<CVXSLayoutItemText*> texts(const LayoutFixture& layout)
{
    QList<CVXSLayoutItemText*> found;
    for (QGraphicsItem* pItem : layout.scene()->items(Qt::AscendingOrder)) {
        if (pItem->type() == CVXSLayoutItemText::Type)
            found << static_cast<CVXSLayoutItemText*>(pItem);
    }
    return found;
}

void clickAt(LayoutFixture& layout, const QRectF& rect)
{
    layout.press(rect.center().toPoint());
    layout.release(rect.center().toPoint());
}

// A press where no item lies: below every item, in the page's bottom-right corner.
void clearSelection(LayoutFixture& layout)
{
    const QPoint corner = layout.view()->viewport()->rect().bottomRight() - QPoint(1, 1);
    layout.press(corner);
    layout.release(corner);
}

QImage argb(const QImage& image)
{
    return image.convertToFormat(QImage::Format_ARGB32);
}

QVector<QImage> threeFrames()
{
    return {solidImage(QSize(40, 30), QColor(200, 10, 10)), solidImage(QSize(40, 30), QColor(10, 200, 10)),
            solidImage(QSize(40, 30), QColor(10, 10, 200))};
}

} // namespace

class TestLayoutWindowCommands : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void freeStylePasteAlwaysSucceeds();
    void pasteSwitchesDrawingOff();
    void pasteIntoFullGridWarnsAndAddsNothing();
    void emptyOrTextClipboardAddsNothing_data();
    void emptyOrTextClipboardAddsNothing();
    void styleChangeRefusedWhileImagesPlaced();
    void styleChangeToFreeStyleAlwaysAllowed();
    void enterCreatesTextItem();
    void emptiedTextAndEnterDeletesIt();
    void enterWithNewTextChangesTheSameItem();
    void blankEnterWithNothingSelectedCreatesNothing();
    void newTextLiesInsideTheScene();
    void oversizedTextStartsWithinTenUnits();
    void textExactlyAsWideAsThePageStartsAtItsLeftEdge();
    void fontAndColourOfSelectedText();
    void fontAndColourDialogsCancelled();
    void fontAndColourForTheNextText();
    void fontAndColourNeedTextOrSelection();
    void deleteFreesTheCell();
    void deleteTwiceAndWithNothingSelected();
    void editTextDialogLiveTextAndCancel();
    void editTextDialogOkChangesTheItem();
    void editTextDialogOkCreatesText();
    void activeImageWindowPaste();
    void sequenceWindowGrabbedTabs_data();
    void sequenceWindowGrabbedTabs();
    void sequenceWindowOtherTabKeepsClipboard();
    void sequenceWindowOtherTabWithEmptyClipboard();
    void minimizedSequenceWindowIsRestoredForTheGrab();
    void noActiveWindowPastesNothing();
    void activeDatasetIntoFullGrid();
    void everyButtonWithoutView();
    void everyButtonWithNothingSelected();
    void enterAndStyleWithoutViewAreProgrammingFaults_data();
    void enterAndStyleWithoutViewAreProgrammingFaults();

private:
    void endTest() override;

    QMdiSubWindow* openInArea(QWidget* pWidget);
    // Lets the window look at the workspace again, as after a host notification.
    void announceDatasetChange(LayoutFixture& layout);

    QScopedPointer<QMdiArea> m_pArea;
};

void TestLayoutWindowCommands::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

void TestLayoutWindowCommands::init()
{
    QGuiApplication::clipboard()->clear();
    m_pArea.reset(new QMdiArea);
    m_pArea->resize(700, 500);
    m_pArea->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pArea.data()));
    CVXSWorkspace::instance()->setMdiArea(m_pArea.data());
}

void TestLayoutWindowCommands::endTest()
{
    CVXSWorkspace::instance()->setMdiArea(nullptr);
    m_pArea.reset();
}

QMdiSubWindow* TestLayoutWindowCommands::openInArea(QWidget* pWidget)
{
    QMdiSubWindow* pSubWindow = m_pArea->addSubWindow(pWidget);
    pSubWindow->resize(300, 250);
    pSubWindow->show();
    m_pArea->setActiveSubWindow(pSubWindow);
    return pSubWindow;
}

void TestLayoutWindowCommands::announceDatasetChange(LayoutFixture& layout)
{
    layout.window()->onDatasetStatusChanged(nullptr);
    QTRY_COMPARE(layout.action("m_pPasteActiveDSetAction")->isEnabled(),
                 CVXSChildWindow::getActiveChildWnd() != nullptr);
}

void TestLayoutWindowCommands::freeStylePasteAlwaysSucceeds()
{
    LayoutFixture layout;
    QGuiApplication::clipboard()->setImage(solidImage(QSize(60, 40), Qt::darkYellow));
    CModalWatch watch;
    QApplication::setActiveWindow(layout.window());
    QTest::keyClick(layout.window(), Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(images(layout).count(), 1);
    for (int i = 0; i < 19; ++i)
        layout.triggerAction("m_pPasteAction");
    QCOMPARE(images(layout).count(), 20);
    QVERIFY(watch.seen().isEmpty());
    CVXSLayoutItemImage* pLast = images(layout).last();
    QCOMPARE(layout.view()->currentItem(), pLast);
    QCOMPARE(pLast->getCellIndex(), -1);
    QCOMPARE(argb(pLast->getImage()), argb(solidImage(QSize(60, 40), Qt::darkYellow)));
    QCOMPARE(pLast->getImage().format(), QImage::Format_ARGB32);
    QVERIFY(layout.action("m_pExportAction")->isEnabled());
    QVERIFY(layout.action("m_pDeleteAction")->isEnabled());
}

void TestLayoutWindowCommands::pasteSwitchesDrawingOff()
{
    LayoutFixture layout;
    QGuiApplication::clipboard()->setImage(solidImage(QSize(60, 40), Qt::darkYellow));
    layout.triggerAction("m_pDrawRectAction");
    QCOMPARE(layout.view()->cursor().shape(), Qt::CrossCursor);
    layout.triggerAction("m_pPasteAction");
    QVERIFY(!layout.window()->isDrawRectOn());
    QVERIFY(!layout.view()->testAttribute(Qt::WA_SetCursor));
    layout.chooseArrowTool(1);
    layout.triggerAction("m_pPasteAction");
    QCOMPARE(layout.window()->isDrawArrowOn(), -1);
}

void TestLayoutWindowCommands::pasteIntoFullGridWarnsAndAddsNothing()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    QGuiApplication::clipboard()->setImage(solidImage(QSize(60, 40), Qt::darkCyan));
    for (int i = 0; i < 4; ++i)
        layout.triggerAction("m_pPasteAction");
    QList<int> cells;
    for (const CVXSLayoutItemImage* pImage : images(layout))
        cells << pImage->getCellIndex();
    QCOMPARE(cells, (QList<int>{0, 1, 2, 3}));

    layout.triggerAction("m_pDrawEllipseAction");
    const int itemsBefore = layout.scene()->items().count();
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    layout.triggerAction("m_pPasteAction");
    QVERIFY(seen.m_bShown);
    QVERIFY(seen.m_bClosedByAnswer);
    QCOMPARE(seen.m_strText, NoEmptyCellText);
    QCOMPARE(seen.m_strTitle, CVXUtilityFns::getAppName());
    QCOMPARE(seen.m_icon, QMessageBox::Warning);
    QCOMPARE(seen.m_pParent, layout.window());
    QCOMPARE(layout.scene()->items().count(), itemsBefore);
    // Refused before the tools are touched.
    QVERIFY(layout.window()->isDrawEllipseOn());
}

void TestLayoutWindowCommands::emptyOrTextClipboardAddsNothing_data()
{
    QTest::addColumn<QString>("clipboardText");
    QTest::newRow("empty clipboard") << QString();
    QTest::newRow("text on the clipboard") << QStringLiteral("not a picture");
}

void TestLayoutWindowCommands::emptyOrTextClipboardAddsNothing()
{
    QFETCH(QString, clipboardText);
    LayoutFixture layout;
    if (!clipboardText.isEmpty())
        QGuiApplication::clipboard()->setText(clipboardText);
    const int itemsBefore = layout.scene()->items().count();
    CModalWatch watch;
    layout.triggerAction("m_pPasteAction");
    layout.triggerAction("m_pPasteAction");
    QCOMPARE(layout.scene()->items().count(), itemsBefore);
    QVERIFY(watch.seen().isEmpty());
    QCOMPARE(QGuiApplication::clipboard()->text(), clipboardText);
    QCOMPARE(layout.view()->currentItem(), nullptr);
}

void TestLayoutWindowCommands::styleChangeRefusedWhileImagesPlaced()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    QGuiApplication::clipboard()->setImage(solidImage(QSize(80, 60), Qt::darkGreen));
    for (int i = 0; i < 4; ++i)
        layout.triggerAction("m_pPasteAction");
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    layout.chooseStyle(Layout2x1);
    QVERIFY(seen.m_bShown);
    QCOMPARE(seen.m_strText, QStringLiteral("No. of images are more than the no. of expected cells!\n"
                                            "Delete few images before changing the layout style."));
    QCOMPARE(seen.m_strTitle, CVXUtilityFns::getAppName());
    QCOMPARE(layout.window()->layoutStyleCombo()->currentText(), QStringLiteral("Layout 2x2"));
    QCOMPARE(images(layout).count(), 4);
    // With room for every image the change goes through without a word.
    CModalWatch watch;
    layout.chooseStyle(Layout3x2);
    QVERIFY(watch.seen().isEmpty());
    QCOMPARE(layout.manager()->currentStyle(), int(Layout3x2));
}

void TestLayoutWindowCommands::styleChangeToFreeStyleAlwaysAllowed()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    QGuiApplication::clipboard()->setImage(solidImage(QSize(80, 60), Qt::darkGreen));
    for (int i = 0; i < 4; ++i)
        layout.triggerAction("m_pPasteAction");
    CModalWatch watch;
    layout.chooseStyle(FreeStyle);
    QVERIFY(watch.seen().isEmpty());
    QCOMPARE(layout.window()->layoutStyleCombo()->currentText(), QStringLiteral("Free style"));
    for (const CVXSLayoutItemImage* pImage : images(layout))
        QCOMPARE(pImage->getCellIndex(), -1);
    // And in free style there is no limit.
    for (int i = 0; i < 3; ++i)
        layout.triggerAction("m_pPasteAction");
    QCOMPARE(images(layout).count(), 7);
    QVERIFY(watch.seen().isEmpty());
}

void TestLayoutWindowCommands::enterCreatesTextItem()
{
    LayoutFixture layout;
    layout.triggerAction("m_pDrawRectAction");
    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    layout.enterAnnotation(QStringLiteral("  Tumour, day 3  "));
    QCOMPARE(texts(layout).count(), 1);
    CVXSLayoutItemText* pText = texts(layout).first();
    // The text is kept as typed; only the test for emptiness trims it.
    QCOMPARE(pText->getText(), QStringLiteral("  Tumour, day 3  "));
    QCOMPARE(layout.view()->currentItem(), pText);
    QCOMPARE(selection.count(), 1);
    QCOMPARE(selection.first().first().value<QGraphicsItem*>(), static_cast<QGraphicsItem*>(pText));
    QCOMPARE(pText->zValue(), 26.0);
    QCOMPARE(layout.view()->topZ(), 26);
    QVERIFY(pText->isVisible());
    const QRect extent = QFontMetrics(pText->getFont()).boundingRect(
        layout.scene()->sceneRect().toRect(), Qt::AlignLeft, pText->getText());
    QCOMPARE(pText->rect().size(), QSizeF(extent.width() + 5, extent.height() + 5));
    QVERIFY(!layout.window()->isDrawRectOn());
    // The box keeps the text of the selected item.
    QCOMPARE(annotationEdit(layout)->text(), QStringLiteral("  Tumour, day 3  "));
}

void TestLayoutWindowCommands::emptiedTextAndEnterDeletesIt()
{
    LayoutFixture layout;
    layout.addItem("text", QRectF(100, 100, 120, 40));
    clickAt(layout, QRectF(100, 100, 120, 40));
    QCOMPARE(annotationEdit(layout)->text(), QStringLiteral("Label"));
    const int itemsBefore = layout.scene()->items().count();
    layout.enterAnnotation(QStringLiteral("   "));
    QCOMPARE(layout.scene()->items().count(), itemsBefore - 1);
    QVERIFY(texts(layout).isEmpty());
    QCOMPARE(layout.view()->currentItem(), nullptr);
    QVERIFY(!layout.action("m_pDeleteAction")->isEnabled());
}

void TestLayoutWindowCommands::enterWithNewTextChangesTheSameItem()
{
    LayoutFixture layout;
    auto* pText = static_cast<CVXSLayoutItemText*>(layout.addItem("text", QRectF(100, 100, 120, 40)));
    clickAt(layout, QRectF(100, 100, 120, 40));
    const int itemsBefore = layout.scene()->items().count();
    layout.enterAnnotation(QStringLiteral("Lung"));
    QCOMPARE(layout.scene()->items().count(), itemsBefore);
    QCOMPARE(texts(layout), QList<CVXSLayoutItemText*>{pText});
    QCOMPARE(pText->getText(), QStringLiteral("Lung"));
    QCOMPARE(layout.view()->currentItem(), pText);
    QCOMPARE(pText->rect(), QRectF(100, 100, 120, 40));
}

void TestLayoutWindowCommands::blankEnterWithNothingSelectedCreatesNothing()
{
    LayoutFixture layout;
    const int itemsBefore = layout.scene()->items().count();
    layout.enterAnnotation(QString());
    layout.enterAnnotation(QStringLiteral(" \t "));
    QCOMPARE(layout.scene()->items().count(), itemsBefore);
}

void TestLayoutWindowCommands::newTextLiesInsideTheScene()
{
    LayoutFixture layout(QSize(600, 400));
    const QRectF page = layout.scene()->sceneRect();
    QSet<int> lefts;
    for (int i = 0; i < 30; ++i) {
        clearSelection(layout);
        layout.enterAnnotation(QStringLiteral("Note %1").arg(i));
        CVXSLayoutItemText* pText = texts(layout).last();
        QCOMPARE(pText->getText(), QStringLiteral("Note %1").arg(i));
        QVERIFY2(page.contains(pText->rect()), qPrintable(QStringLiteral("%1 %2 %3 %4")
                                                              .arg(pText->rect().x())
                                                              .arg(pText->rect().y())
                                                              .arg(pText->rect().width())
                                                              .arg(pText->rect().height())));
        lefts << int(pText->rect().x());
    }
    QCOMPARE(texts(layout).count(), 30);
    // Placed at random, not all in one spot.
    QVERIFY(lefts.count() > 10);
}

void TestLayoutWindowCommands::oversizedTextStartsWithinTenUnits()
{
    LayoutFixture layout(QSize(600, 400));
    QTest::keyClicks(annotationEdit(layout), QStringLiteral("WWWW"));
    QFont huge(QStringLiteral("DejaVu Sans"), 300);
    bool bSeen = false;
    answerNextModalDialog(QFontDialog::staticMetaObject, [huge](QDialog* pDialog) {
        static_cast<QFontDialog*>(pDialog)->setCurrentFont(huge);
        pDialog->accept();
    }, &bSeen);
    QTest::mouseClick(toolButton(layout.window(), "m_pAnnFontBtn"), Qt::LeftButton);
    QVERIFY(bSeen);
    QTest::keyClick(annotationEdit(layout), Qt::Key_Return);
    QCOMPARE(texts(layout).count(), 1);
    CVXSLayoutItemText* pText = texts(layout).first();
    QCOMPARE(pText->getFont().pointSize(), 300);
    const QRectF page = layout.scene()->sceneRect();
    QVERIFY(pText->rect().width() > page.width());
    QVERIFY(pText->rect().height() > page.height());
    QVERIFY(pText->rect().x() >= 0 && pText->rect().x() < 10);
    QVERIFY(pText->rect().y() >= 0 && pText->rect().y() < 10);
}

void TestLayoutWindowCommands::textExactlyAsWideAsThePageStartsAtItsLeftEdge()
{
    // A text item is 5 wider than its text; the page is 4 narrower than the view.
    QString strText = QStringLiteral("Edge to edge");
    const QFontMetrics metrics(QApplication::font());
    while (metrics.boundingRect(QRect(0, 0, 4000, 1000), Qt::AlignLeft, strText).width() < 560)
        strText += QStringLiteral(" edge");
    const int nTextWidth = metrics.boundingRect(QRect(0, 0, 4000, 1000), Qt::AlignLeft, strText).width();
    LayoutFixture layout(QSize(nTextWidth + 5 + 4, 400));
    QCOMPARE(int(layout.scene()->sceneRect().width()), nTextWidth + 5);
    for (int i = 0; i < 5; ++i) {
        clearSelection(layout);
        layout.enterAnnotation(strText);
        const QRectF rect = texts(layout).last()->rect();
        QCOMPARE(rect.width(), layout.scene()->sceneRect().width());
        QCOMPARE(rect.x(), 0.0);
        QVERIFY(layout.scene()->sceneRect().contains(rect));
    }
    QCOMPARE(texts(layout).count(), 5);
}

void TestLayoutWindowCommands::fontAndColourOfSelectedText()
{
    LayoutFixture layout;
    auto* pText = static_cast<CVXSLayoutItemText*>(layout.addItem("text", QRectF(100, 100, 120, 40)));
    clickAt(layout, QRectF(100, 100, 120, 40));
    const QFont chosen(QStringLiteral("DejaVu Serif"), 21);
    answerNextModalDialog(QFontDialog::staticMetaObject, [chosen](QDialog* pDialog) {
        static_cast<QFontDialog*>(pDialog)->setCurrentFont(chosen);
        pDialog->accept();
    });
    QTest::mouseClick(toolButton(layout.window(), "m_pAnnFontBtn"), Qt::LeftButton);
    QCOMPARE(pText->getFont().family(), QStringLiteral("DejaVu Serif"));
    QCOMPARE(pText->getFont().pointSize(), 21);
    answerNextModalDialog(QColorDialog::staticMetaObject, [](QDialog* pDialog) {
        static_cast<QColorDialog*>(pDialog)->setCurrentColor(QColor(0, 128, 255));
        pDialog->accept();
    });
    QTest::mouseClick(toolButton(layout.window(), "m_pAnnColorBtn"), Qt::LeftButton);
    QCOMPARE(pText->getColor(), QColor(0, 128, 255));
    QCOMPARE(layout.view()->currentItem(), pText);
}

void TestLayoutWindowCommands::fontAndColourDialogsCancelled()
{
    LayoutFixture layout;
    auto* pText = static_cast<CVXSLayoutItemText*>(layout.addItem("text", QRectF(100, 100, 120, 40)));
    const QFont font = pText->getFont();
    clickAt(layout, QRectF(100, 100, 120, 40));
    bool bSeen = false;
    answerNextModalDialog(QFontDialog::staticMetaObject, [](QDialog* pDialog) {
        static_cast<QFontDialog*>(pDialog)->setCurrentFont(QFont(QStringLiteral("DejaVu Serif"), 40));
        pDialog->reject();
    }, &bSeen);
    QTest::mouseClick(toolButton(layout.window(), "m_pAnnFontBtn"), Qt::LeftButton);
    QVERIFY(bSeen);
    QCOMPARE(pText->getFont(), font);
    answerNextModalDialog(QColorDialog::staticMetaObject, [](QDialog* pDialog) {
        static_cast<QColorDialog*>(pDialog)->setCurrentColor(Qt::magenta);
        pDialog->reject();
    }, &bSeen);
    QTest::mouseClick(toolButton(layout.window(), "m_pAnnColorBtn"), Qt::LeftButton);
    QVERIFY(bSeen);
    QCOMPARE(pText->getColor(), QColor(0, 0, 0, 255));
    // Entering the text again keeps font and colour: nothing was stored.
    QTest::keyClick(annotationEdit(layout), Qt::Key_Return);
    QCOMPARE(pText->getFont(), font);
    QCOMPARE(pText->getColor(), QColor(0, 0, 0, 255));
}

void TestLayoutWindowCommands::fontAndColourForTheNextText()
{
    LayoutFixture layout;
    QTest::keyClicks(annotationEdit(layout), QStringLiteral("Kidney"));
    answerNextModalDialog(QFontDialog::staticMetaObject, [](QDialog* pDialog) {
        static_cast<QFontDialog*>(pDialog)->setCurrentFont(QFont(QStringLiteral("DejaVu Serif"), 19));
        pDialog->accept();
    });
    QTest::mouseClick(toolButton(layout.window(), "m_pAnnFontBtn"), Qt::LeftButton);
    answerNextModalDialog(QColorDialog::staticMetaObject, [](QDialog* pDialog) {
        static_cast<QColorDialog*>(pDialog)->setCurrentColor(QColor(200, 0, 0));
        pDialog->accept();
    });
    QTest::mouseClick(toolButton(layout.window(), "m_pAnnColorBtn"), Qt::LeftButton);
    QVERIFY(texts(layout).isEmpty());
    QTest::keyClick(annotationEdit(layout), Qt::Key_Return);
    QCOMPARE(texts(layout).count(), 1);
    QCOMPARE(texts(layout).first()->getFont().pointSize(), 19);
    QCOMPARE(texts(layout).first()->getColor(), QColor(200, 0, 0));
}

void TestLayoutWindowCommands::fontAndColourNeedTextOrSelection()
{
    LayoutFixture layout;
    layout.addItem("rectangle", QRectF(100, 100, 120, 40));
    clickAt(layout, QRectF(100, 100, 120, 40));
    CModalWatch watch;
    for (int i = 0; i < 2; ++i) {
        QTest::mouseClick(toolButton(layout.window(), "m_pAnnFontBtn"), Qt::LeftButton);
        QTest::mouseClick(toolButton(layout.window(), "m_pAnnColorBtn"), Qt::LeftButton);
    }
    QVERIFY(watch.seen().isEmpty());
}

void TestLayoutWindowCommands::deleteFreesTheCell()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    QGuiApplication::clipboard()->setImage(solidImage(QSize(80, 60), Qt::darkGreen));
    for (int i = 0; i < 4; ++i)
        layout.triggerAction("m_pPasteAction");
    CVXSLayoutItemImage* pSecond = images(layout).at(1);
    QCOMPARE(pSecond->getCellIndex(), 1);
    clickAt(layout, pSecond->rect());
    QCOMPARE(layout.view()->currentItem(), pSecond);
    layout.triggerAction("m_pDeleteAction");
    QCOMPARE(images(layout).count(), 3);
    QCOMPARE(layout.manager()->cellUseCount(1), 0);
    QCOMPARE(layout.view()->currentItem(), nullptr);
    QVERIFY(!layout.action("m_pDeleteAction")->isEnabled());
    QVERIFY(!toolButton(layout.window(), "m_pMoveZBtn")->isEnabled());
    layout.triggerAction("m_pPasteAction");
    QCOMPARE(images(layout).last()->getCellIndex(), 1);
}

void TestLayoutWindowCommands::deleteTwiceAndWithNothingSelected()
{
    LayoutFixture layout;
    layout.addItem("ellipse", QRectF(100, 100, 120, 40));
    layout.addItem("arrow", QRectF(300, 100, 120, 40));
    clickAt(layout, QRectF(100, 100, 120, 40));
    layout.window()->onClickDelete();
    layout.window()->onClickDelete();
    QCOMPARE(layout.scene()->items().count(), 22);
    layout.triggerAction("m_pDeleteAction");
    QCOMPARE(layout.scene()->items().count(), 22);
}

void TestLayoutWindowCommands::editTextDialogLiveTextAndCancel()
{
    LayoutFixture layout;
    auto* pText = static_cast<CVXSLayoutItemText*>(layout.addItem("text", QRectF(100, 100, 120, 40)));
    clickAt(layout, QRectF(100, 100, 120, 40));
    QTest::mouseClick(toolButton(layout.window(), "m_pMultiLineTextBtn"), Qt::LeftButton);
    QDialog* pDialog = editTextDialog(layout);
    QTRY_VERIFY(pDialog->isVisible());
    auto* pTextEdit = pDialog->findChild<QTextEdit*>(QStringLiteral("m_pTextEdit"));
    QCOMPARE(pTextEdit->toPlainText(), QStringLiteral("Label"));
    pTextEdit->moveCursor(QTextCursor::End);
    QTest::keyClicks(pTextEdit, QStringLiteral(" left"));
    // The box follows every key.
    QCOMPARE(annotationEdit(layout)->text(), QStringLiteral("Label left"));
    QTest::mouseClick(pDialog->findChild<QPushButton*>(QStringLiteral("m_pCancelBtn")), Qt::LeftButton);
    QVERIFY(!pDialog->isVisible());
    QCOMPARE(annotationEdit(layout)->text(), QStringLiteral("Label"));
    QCOMPARE(pText->getText(), QStringLiteral("Label"));
    QCOMPARE(layout.view()->currentItem(), pText);
    // Closing the dialog by its frame cancels the same way.
    QTest::mouseClick(toolButton(layout.window(), "m_pMultiLineTextBtn"), Qt::LeftButton);
    QTRY_VERIFY(pDialog->isVisible());
    QTest::keyClicks(pTextEdit, QStringLiteral("x"));
    pDialog->close();
    QCOMPARE(annotationEdit(layout)->text(), QStringLiteral("Label"));
}

void TestLayoutWindowCommands::editTextDialogOkChangesTheItem()
{
    LayoutFixture layout;
    auto* pText = static_cast<CVXSLayoutItemText*>(layout.addItem("text", QRectF(100, 100, 120, 40)));
    clickAt(layout, QRectF(100, 100, 120, 40));
    const int itemsBefore = layout.scene()->items().count();
    QTest::mouseClick(toolButton(layout.window(), "m_pMultiLineTextBtn"), Qt::LeftButton);
    QDialog* pDialog = editTextDialog(layout);
    QTRY_VERIFY(pDialog->isVisible());
    auto* pTextEdit = pDialog->findChild<QTextEdit*>(QStringLiteral("m_pTextEdit"));
    pTextEdit->moveCursor(QTextCursor::End);
    QTest::keyClick(pTextEdit, Qt::Key_Return);
    QTest::keyClicks(pTextEdit, QStringLiteral("lobe"));
    QTest::mouseClick(pDialog->findChild<QToolButton*>(QStringLiteral("m_pAlignRightTB")), Qt::LeftButton);
    QTest::mouseClick(pDialog->findChild<QPushButton*>(QStringLiteral("m_pOkBtn")), Qt::LeftButton);
    QVERIFY(!pDialog->isVisible());
    QCOMPARE(layout.scene()->items().count(), itemsBefore);
    QCOMPARE(pText->getText(), QStringLiteral("Label\nlobe"));
    QVERIFY(pText->getTextFlags() & Qt::AlignRight);
    QCOMPARE(layout.view()->currentItem(), pText);
}

void TestLayoutWindowCommands::editTextDialogOkCreatesText()
{
    LayoutFixture layout;
    QTest::mouseClick(toolButton(layout.window(), "m_pMultiLineTextBtn"), Qt::LeftButton);
    QDialog* pDialog = editTextDialog(layout);
    QTRY_VERIFY(pDialog->isVisible());
    auto* pTextEdit = pDialog->findChild<QTextEdit*>(QStringLiteral("m_pTextEdit"));
    QVERIFY(pTextEdit->toPlainText().isEmpty());
    QTest::keyClicks(pTextEdit, QStringLiteral("Two"));
    QTest::keyClick(pTextEdit, Qt::Key_Return);
    QTest::keyClicks(pTextEdit, QStringLiteral("lines"));
    QTest::mouseClick(pDialog->findChild<QPushButton*>(QStringLiteral("m_pOkBtn")), Qt::LeftButton);
    QCOMPARE(texts(layout).count(), 1);
    CVXSLayoutItemText* pText = texts(layout).first();
    QCOMPARE(pText->getText(), QStringLiteral("Two\nlines"));
    QVERIFY(pText->rect().height() > 2 * QFontMetrics(pText->getFont()).height());
}

void TestLayoutWindowCommands::activeImageWindowPaste()
{
    const QImage picture = solidImage(QSize(40, 30), QColor(120, 30, 200));
    openInArea(new CVXSChildWindow(picture));
    LayoutFixture layout;
    announceDatasetChange(layout);
    QVERIFY(layout.action("m_pPasteActiveDSetAction")->isEnabled());
    layout.triggerAction("m_pPasteActiveDSetAction");
    QCOMPARE(images(layout).count(), 1);
    QCOMPARE(argb(images(layout).first()->getImage()), argb(picture));
    QCOMPARE(layout.view()->currentItem(), images(layout).first());
}

void TestLayoutWindowCommands::sequenceWindowGrabbedTabs_data()
{
    QTest::addColumn<QString>("tab");
    QTest::newRow("3D View") << QStringLiteral("3D View");
    QTest::newRow("sequence view, other letter case") << QStringLiteral("sequence VIEW");
}

void TestLayoutWindowCommands::sequenceWindowGrabbedTabs()
{
    QFETCH(QString, tab);
    auto* pSequence = new CVXSSequenceWindow(threeFrames());
    openInArea(pSequence);
    QVERIFY(pSequence->setCurrentTab(tab));
    const QImage marker = solidImage(QSize(7, 7), Qt::yellow);
    QGuiApplication::clipboard()->setImage(marker);
    LayoutFixture layout;
    QSignalSpy copyRequests(layout.window(), &CVXSLayoutWindow::copyToClipBoard);
    announceDatasetChange(layout);
    layout.triggerAction("m_pPasteActiveDSetAction");
    QCOMPARE(images(layout).count(), 1);
    QCOMPARE(argb(images(layout).first()->getImage()), argb(pSequence->tabImage(tab)));
    QCOMPARE(copyRequests.count(), 0);
    QCOMPARE(argb(QGuiApplication::clipboard()->image()), argb(marker));
}

void TestLayoutWindowCommands::sequenceWindowOtherTabKeepsClipboard()
{
    auto* pSequence = new CVXSSequenceWindow(threeFrames());
    openInArea(pSequence);
    QVERIFY(pSequence->setCurrentTab(QStringLiteral("Thumbnails")));
    const QImage earlier = solidImage(QSize(7, 7), Qt::blue);
    QGuiApplication::clipboard()->setImage(earlier);
    LayoutFixture layout;
    // As the host does: the request goes to the plugin base, which fills the clipboard.
    CVXToolPluginBase plugin;
    connect(layout.window(), &CVXSLayoutWindow::copyToClipBoard, &plugin, &CVXToolPluginBase::shootCopyToClipBoard);
    QSignalSpy copyRequests(layout.window(), &CVXSLayoutWindow::copyToClipBoard);
    announceDatasetChange(layout);
    QElapsedTimer elapsed;
    elapsed.start();
    layout.triggerAction("m_pPasteActiveDSetAction");
    QVERIFY(elapsed.elapsed() >= 200);
    QCOMPARE(copyRequests.count(), 1);
    QCOMPARE(copyRequests.first().first().toString(), QStringLiteral("Thumbnails"));
    QCOMPARE(images(layout).count(), 1);
    const QImage thumbnails = pSequence->tabImage(QStringLiteral("Thumbnails"));
    QVERIFY(!thumbnails.isNull());
    QCOMPARE(argb(images(layout).first()->getImage()), argb(thumbnails));
    QCOMPARE(argb(QGuiApplication::clipboard()->image()), argb(earlier));
}

void TestLayoutWindowCommands::sequenceWindowOtherTabWithEmptyClipboard()
{
    auto* pSequence = new CVXSSequenceWindow(threeFrames());
    openInArea(pSequence);
    QVERIFY(pSequence->setCurrentTab(QStringLiteral("Thumbnails")));
    QGuiApplication::clipboard()->setText(QStringLiteral("a note"));
    LayoutFixture layout;
    connect(layout.window(), &CVXSLayoutWindow::copyToClipBoard, pSequence, &CVXSSequenceWindow::copyTabToClipboard);
    announceDatasetChange(layout);
    layout.triggerAction("m_pPasteActiveDSetAction");
    QCOMPARE(images(layout).count(), 1);
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("a note"));
    QVERIFY(QGuiApplication::clipboard()->image().isNull());
}

void TestLayoutWindowCommands::minimizedSequenceWindowIsRestoredForTheGrab()
{
    auto* pSequence = new CVXSSequenceWindow(threeFrames());
    QMdiSubWindow* pSubWindow = openInArea(pSequence);
    QVERIFY(pSequence->setCurrentTab(QStringLiteral("3D View")));
    CVXSViewState state;
    state.m_bGrabDisplayed = true;
    pSequence->setViewState(state);
    QVERIFY(!pSequence->canGrabMinimized(1));
    const QImage shown = pSequence->grabImage(true);
    pSubWindow->showMinimized();
    QTRY_VERIFY(pSubWindow->isMinimized());
    LayoutFixture layout;
    announceDatasetChange(layout);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pSequence);
    layout.triggerAction("m_pPasteActiveDSetAction");
    QCOMPARE(images(layout).count(), 1);
    // Grabbed as shown when restored, then minimized again.
    QCOMPARE(images(layout).first()->getImage().size(), shown.size());
    QVERIFY(pSubWindow->isMinimized());
}

void TestLayoutWindowCommands::noActiveWindowPastesNothing()
{
    LayoutFixture layout;
    announceDatasetChange(layout);
    QVERIFY(!layout.action("m_pPasteActiveDSetAction")->isEnabled());
    CModalWatch watch;
    layout.window()->onClickActiveDSetPaste();
    layout.window()->onClickActiveDSetPaste();
    QVERIFY(images(layout).isEmpty());
    QVERIFY(watch.seen().isEmpty());
}

void TestLayoutWindowCommands::activeDatasetIntoFullGrid()
{
    openInArea(new CVXSChildWindow(solidImage(QSize(40, 30), Qt::darkRed)));
    LayoutFixture layout;
    announceDatasetChange(layout);
    layout.chooseStyle(1);
    layout.triggerAction("m_pPasteActiveDSetAction");
    QCOMPARE(images(layout).count(), 1);
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    layout.triggerAction("m_pPasteActiveDSetAction");
    QVERIFY(seen.m_bShown);
    QCOMPARE(seen.m_strText, NoEmptyCellText);
    QCOMPARE(images(layout).count(), 1);
}

void TestLayoutWindowCommands::everyButtonWithoutView()
{
    QGuiApplication::clipboard()->setImage(solidImage(QSize(20, 20), Qt::red));
    openInArea(new CVXSChildWindow(solidImage(QSize(40, 30), Qt::darkRed)));
    CVXSLayoutWindow window;
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.updateButtonStatus();
    CModalWatch watch;
    for (int round = 0; round < 2; ++round) {
        for (QAction* pAction : window.findChildren<QAction*>()) {
            if (!pAction->isSeparator())
                pAction->trigger();
        }
        for (QToolButton* pButton : window.findChildren<QToolButton*>())
            pButton->click();
        window.onClickDelete();
        window.onClickMoveZ();
        window.onClickExport();
        window.onClickPrint();
        window.onClickNew();
        window.onCopyToClipboard();
        window.onClickClipBoardPaste();
        window.onClickActiveDSetPaste();
        window.onClickMultiLineEditText();
        window.onClickAnnFont();
        window.onClickAnnClr();
        window.onClickArrow();
        window.setCursorStyle();
        window.onLayoutItemSelectionChange(nullptr);
        window.findChild<QPushButton*>(QStringLiteral("m_pCloseBtn"))->click();
    }
    QVERIFY(watch.seen().isEmpty());
    QVERIFY(!window.isVisible());
    QVERIFY(!window.findChild<QAction*>(QStringLiteral("m_pExportAction"))->isEnabled());
    QVERIFY(!window.findChild<QAction*>(QStringLiteral("m_pDeleteAction"))->isEnabled());
    QCOMPARE(argb(QGuiApplication::clipboard()->image()), argb(solidImage(QSize(20, 20), Qt::red)));
}

void TestLayoutWindowCommands::everyButtonWithNothingSelected()
{
    LayoutFixture layout;
    layout.addItem("rectangle", QRectF(100, 100, 120, 40));
    const int itemsBefore = layout.scene()->items().count();
    const qreal zBefore = layout.scene()->items(Qt::DescendingOrder).at(0)->zValue();
    CModalWatch watch;
    for (int round = 0; round < 2; ++round) {
        layout.triggerAction("m_pDeleteAction");
        layout.window()->onClickDelete();
        layout.window()->onClickMoveZ();
        for (QAction* pEntry : layout.window()->findChild<QMenu*>(QStringLiteral("m_pMoveZMenu"))->actions())
            pEntry->trigger();
        QTest::mouseClick(toolButton(layout.window(), "m_pAnnFontBtn"), Qt::LeftButton);
        QTest::mouseClick(toolButton(layout.window(), "m_pAnnColorBtn"), Qt::LeftButton);
        layout.triggerAction("m_pPasteAction");
        layout.triggerAction("m_pPasteActiveDSetAction");
        layout.triggerAction("m_pArrowAction");
        QTest::keyClick(annotationEdit(layout), Qt::Key_Return);
    }
    QVERIFY(watch.seen().isEmpty());
    QCOMPARE(layout.scene()->items().count(), itemsBefore);
    QCOMPARE(layout.scene()->items(Qt::DescendingOrder).at(0)->zValue(), zBefore);
    QCOMPARE(layout.view()->currentItem(), nullptr);
}

void TestLayoutWindowCommands::enterAndStyleWithoutViewAreProgrammingFaults_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("condition");
    QTest::newRow("enter in the annotation box") << QStringLiteral("enter") << QStringLiteral("m_pView != NULL");
    QTest::newRow("style change") << QStringLiteral("style") << QStringLiteral("m_pMngr");
}

// A window that was never given its view and manager cannot annotate or change the style:
// the assertion names what is missing. Run in a child process, which the assertion ends.
void TestLayoutWindowCommands::enterAndStyleWithoutViewAreProgrammingFaults()
{
    QFETCH(QString, command);
    QFETCH(QString, condition);
    const QString strCommand = qEnvironmentVariable("VX_WINDOW_FAULT");
    if (!strCommand.isEmpty()) {
        CVXSLayoutWindow window;
        if (strCommand == QLatin1String("enter"))
            window.onAnnotationEnter();
        else {
            window.layoutStyleCombo()->setCurrentIndex(2);
            window.selChngLayoutStyle();
        }
        QFAIL("the command went on without its view or manager");
    }
#ifdef QT_NO_DEBUG
    QSKIP("assertions are compiled out in this build");
#endif
    QProcess child;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VX_WINDOW_FAULT"), command);
    child.setProcessEnvironment(environment);
    child.start(QCoreApplication::applicationFilePath(),
                {QStringLiteral("enterAndStyleWithoutViewAreProgrammingFaults:") + QTest::currentDataTag()});
    QVERIFY(child.waitForFinished(60000));
    const QString strOutput = QString::fromLocal8Bit(child.readAllStandardOutput() + child.readAllStandardError());
    QVERIFY2(child.exitStatus() == QProcess::CrashExit || child.exitCode() != 0, qPrintable(strOutput));
    QVERIFY2(strOutput.contains(QStringLiteral("ASSERT failure in VXSLayoutWindow: \"%1\"").arg(condition)),
             qPrintable(strOutput));
}

QTEST_MAIN(TestLayoutWindowCommands)
#include "tst_layout_windowcommands.moc"
