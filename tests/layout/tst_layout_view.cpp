#include "LayoutFixture.h"
#include "ModalDialogAnswer.h"
#include "WidgetTestCase.h"

#include <VXSLayoutConstants.h>
#include <VXSLayoutItemArrow.h>
#include <VXSLayoutItemEllipse.h>
#include <scene/VXSLayoutItemGeometry.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutItemRectangle.h>
#include <VXSLayoutItemText.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QAction>
#include <QDialog>
#include <QGraphicsScene>
#include <QScopeGuard>
#include <QtTest>

#include <memory>

namespace {

enum Style { FreeStyle = 0, Layout2x2 = 3, Layout4x4 = 8 };

using Emissions = QList<QGraphicsItem*>;

Emissions emitted(const QSignalSpy& spy)
{
    Emissions items;
    for (const QList<QVariant>& arguments : spy)
        items << arguments.at(0).value<QGraphicsItem*>();
    return items;
}

// The handle with the number (1..4) among the scene's items.
QGraphicsRectItem* handle(CVXSLayoutView* pView, int nNumber)
{
    for (QGraphicsItem* pItem : pView->scene()->items()) {
        if (pView->handleIndex(pItem) == nNumber)
            return static_cast<QGraphicsRectItem*>(pItem);
    }
    return nullptr;
}

QGraphicsRectItem* highlight(CVXSLayoutView* pView)
{
    for (QGraphicsItem* pItem : pView->scene()->items()) {
        if (pView->isCellHighlight(pItem))
            return static_cast<QGraphicsRectItem*>(pItem);
    }
    return nullptr;
}

QPoint handleCentre(CVXSLayoutView* pView, int nNumber)
{
    return handle(pView, nNumber)->rect().center().toPoint();
}

QPoint startPoint(const CVXSLayoutItemArrow* pArrow)
{
    int x = 0;
    int y = 0;
    pArrow->getStartPoint(x, y);
    return QPoint(x, y);
}

QPoint endPoint(const CVXSLayoutItemArrow* pArrow)
{
    int x = 0;
    int y = 0;
    pArrow->getEndPoint(x, y);
    return QPoint(x, y);
}

QRectF itemRect(const QGraphicsItem* pItem)
{
    return VXSLayoutItemGeometry::geometryRect(*pItem);
}

QRectF cellRect(CVXSLayoutManager* pManager, int nCell)
{
    QRect rect;
    pManager->getCellRect(nCell, rect, false);
    return QRectF(rect);
}

} // namespace

class TestLayoutView : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void freshViewHasItsAuxiliaryItems();
    void sceneRectIsFourSmallerThanTheView_data();
    void sceneRectIsFourSmallerThanTheView();
    void pressReportsTheItemCountAtDebugLevel();
    void pressOnEmptyCanvasClearsSelection();
    void pressOnGridCellsOnlyClearsSelection();
    void pressOnHandleKeepsSelection();
    void pressAndReleaseWithToolCreatesNothing_data();
    void pressAndReleaseWithToolCreatesNothing();
    void drawingLeavesSelectionToTheRelease();
    void rectangleDrawnUpAndLeft();
    void ellipseDrawnDownAndRight();
    void arrowKinds_data();
    void arrowKinds();
    void toolsDrawItemsWithRisingZ();
    void handlesSurroundTheSelectedItem();
    void imageInCellGetsHighlightInsteadOfHandles();
    void arrowGetsTwoHandles();
    void movingKeepsItemsUnderThePointer_data();
    void movingKeepsItemsUnderThePointer();
    void arrowMovesBothPoints();
    void arrowIsPickedOnlyNearItsLine();
    void rectangleResizedThroughOppositeCornerIsNormalised();
    void resizeByHandle_data();
    void resizeByHandle();
    void collapsedImageStaysPickable_data();
    void collapsedImageStaysPickable();
    void arrowEndsFollowTheirHandles();
    void imageInCellIsNotResized();
    void imageSnapsToCellAndFitsOnRelease();
    void imageDraggedFromCellZeroToCellThree();
    void droppedThinImageStaysVisible();
    void targetCellSurvivesLeavingTheCell();
    void deleteFreesTheImagesCell();
    void deleteWithNothingSelected();
    void deleteAnnouncesTheEmptySelectionBeforeTheHandlesGo_data();
    void deleteAnnouncesTheEmptySelectionBeforeTheHandlesGo();
    void otherKeysAreSwallowed();
    void doubleClickOnEveryItemKind_data();
    void doubleClickOnEveryItemKind();
    void doubleClickOnTextIsTaken();
    void pressesAndMovesOutsideTheScene();
    void viewResizeRefitsImagesInCells();
    void relayoutLeavesTheViewsOwnItemsAlone();
    void viewWithoutManager();
    void windowToolsAreExclusive();
};

void TestLayoutView::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

void TestLayoutView::freshViewHasItsAuxiliaryItems()
{
    LayoutFixture layout;
    CVXSLayoutView* pView = layout.view();
    QCOMPARE(layout.scene()->items().count(), 21);
    int handles = 0;
    int cells = 0;
    for (QGraphicsItem* pItem : layout.scene()->items()) {
        handles += pView->handleIndex(pItem) != 0;
        if (pItem->type() == 32822) {
            ++cells;
            QVERIFY(pItem->zValue() >= 0 && pItem->zValue() <= 15);
        }
    }
    QCOMPARE(handles, 4);
    QCOMPARE(cells, 16);
    // No cell frame shows before a layout style is chosen.
    for (QGraphicsItem* pItem : layout.scene()->items()) {
        if (pItem->type() == 32822)
            QVERIFY(!pItem->isVisible());
    }
    QVERIFY(highlight(pView));
    QVERIFY(!highlight(pView)->isVisible());
    for (int n = 1; n <= 4; ++n) {
        QVERIFY(!handle(pView, n)->isVisible());
        QCOMPARE(handle(pView, n)->rect().size(), QSizeF(8, 8));
        QCOMPARE(handle(pView, n)->brush().color(), QColor(Qt::black));
    }
    QCOMPARE(pView->handleIndex(nullptr), 0);
    QVERIFY(!pView->isCellHighlight(nullptr));
    QCOMPARE(pView->currentItem(), nullptr);
    QCOMPARE(pView->topZ(), 25);
    QCOMPARE(pView->nextZ(), 26);
    QCOMPARE(pView->maxZ(), 999);
    pView->setTopZ(40);
    QCOMPARE(pView->nextZ(), 41);
    pView->resetTopZ();
    QCOMPARE(pView->topZ(), 25);
    QVERIFY(!pView->viewport()->hasMouseTracking());
    QCOMPARE(pView->cacheMode(), QGraphicsView::CacheBackground);
}

void TestLayoutView::sceneRectIsFourSmallerThanTheView_data()
{
    QTest::addColumn<QSize>("viewSize");
    QTest::newRow("1000 x 500") << QSize(1000, 500);
    QTest::newRow("1100 x 800") << QSize(1100, 800);
    QTest::newRow("600 x 700") << QSize(600, 700);
}

void TestLayoutView::sceneRectIsFourSmallerThanTheView()
{
    QFETCH(QSize, viewSize);
    LayoutFixture layout(viewSize);
    QCOMPARE(layout.scene()->sceneRect(), QRectF(0, 0, viewSize.width() - 4, viewSize.height() - 4));
}

// The programs keep debug messages off the terminal in everyday use; this one is still emitted.
void TestLayoutView::pressReportsTheItemCountAtDebugLevel()
{
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=true"));
    const auto quietAgain = qScopeGuard([] { QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false")); });
    LayoutFixture layout;
    layout.pasteImage(QSize(400, 200));
    QTest::ignoreMessage(QtDebugMsg, "No.of Canvas Items;22");
    layout.press(QPoint(50, 50));
    layout.release(QPoint(50, 50));
}

void TestLayoutView::pressOnEmptyCanvasClearsSelection()
{
    LayoutFixture layout;
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(400, 200));
    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    layout.press(QPoint(300, 200));
    QCOMPARE(emitted(selection), Emissions{pImage});
    QCOMPARE(layout.view()->currentItem(), pImage);
    QVERIFY(handle(layout.view(), 1)->isVisible());
    layout.release(QPoint(300, 200));
    QCOMPARE(emitted(selection), (Emissions{pImage, pImage}));

    layout.press(QPoint(50, 50));
    QCOMPARE(emitted(selection), (Emissions{pImage, pImage, nullptr}));
    QCOMPARE(layout.view()->currentItem(), nullptr);
    QCOMPARE(layout.view()->targetCell(), -1);
    for (int n = 1; n <= 4; ++n)
        QVERIFY(!handle(layout.view(), n)->isVisible());
    layout.release(QPoint(50, 50));
    QCOMPARE(selection.count(), 3);
}

void TestLayoutView::pressOnGridCellsOnlyClearsSelection()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(200, 100));
    layout.press(pImage->rect().center().toPoint());
    layout.release(pImage->rect().center().toPoint());
    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    // Cell 3 is empty: only its frame lies under the pointer.
    const QPoint inEmptyCell = cellRect(layout.manager(), 3).center().toPoint();
    QVERIFY(!layout.scene()->items(QPointF(inEmptyCell)).isEmpty());
    layout.press(inEmptyCell);
    QCOMPARE(emitted(selection), Emissions{nullptr});
    QCOMPARE(layout.view()->currentItem(), nullptr);
    QVERIFY(!highlight(layout.view())->isVisible());
}

void TestLayoutView::pressOnHandleKeepsSelection()
{
    LayoutFixture layout;
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(400, 200));
    layout.press(QPoint(300, 200));
    layout.release(QPoint(300, 200));
    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    layout.press(handleCentre(layout.view(), 3));
    QCOMPARE(selection.count(), 0);
    QCOMPARE(layout.view()->currentItem(), pImage);
    QVERIFY(handle(layout.view(), 3)->isVisible());
}

void TestLayoutView::pressAndReleaseWithToolCreatesNothing_data()
{
    QTest::addColumn<QByteArray>("tool");
    QTest::addColumn<bool>("earlierSelection");
    const QList<QByteArray> tools = {"m_pDrawRectAction", "m_pDrawEllipseAction", "line", "single arrow",
                                     "double arrow"};
    for (const QByteArray& tool : tools) {
        QTest::addRow("%s, nothing selected", tool.constData()) << tool << false;
        QTest::addRow("%s, an image selected before", tool.constData()) << tool << true;
    }
}

void TestLayoutView::pressAndReleaseWithToolCreatesNothing()
{
    QFETCH(QByteArray, tool);
    QFETCH(bool, earlierSelection);
    LayoutFixture layout;
    CVXSLayoutItemImage* pSelected = nullptr;
    if (earlierSelection) {
        pSelected = layout.pasteImage(QSize(200, 100));
        layout.press(QPoint(400, 200));
        layout.release(QPoint(400, 200));
        QCOMPARE(layout.view()->currentItem(), pSelected);
    }
    const int itemsBefore = layout.scene()->items().count();
    const int topZBefore = layout.view()->topZ();
    if (tool == "line")
        layout.chooseArrowTool(VXSLayout::LineTool);
    else if (tool == "single arrow")
        layout.chooseArrowTool(VXSLayout::SingleArrowTool);
    else if (tool == "double arrow")
        layout.chooseArrowTool(VXSLayout::DoubleArrowTool);
    else
        layout.triggerAction(tool.constData());
    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    layout.press(QPoint(100, 420));
    QCOMPARE(selection.count(), 0);
    layout.release(QPoint(100, 420));
    QCOMPARE(layout.scene()->items().count(), itemsBefore);
    QCOMPARE(layout.view()->topZ(), topZBefore);
    QCOMPARE(layout.view()->currentItem(), pSelected);
    // The release announces the selection it found, once: the earlier one, if any.
    QCOMPARE(emitted(selection), earlierSelection ? Emissions{pSelected} : Emissions{});
}

void TestLayoutView::drawingLeavesSelectionToTheRelease()
{
    LayoutFixture layout;
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(400, 200));
    layout.press(QPoint(300, 200));
    layout.release(QPoint(300, 200));
    layout.triggerAction("m_pDrawRectAction");
    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    // Pressing with a tool on touches no selection, even on an item.
    layout.press(QPoint(300, 200));
    QCOMPARE(selection.count(), 0);
    QCOMPARE(layout.view()->currentItem(), pImage);
    layout.move(QPoint(310, 210));
    layout.move(QPoint(340, 230));
    layout.release(QPoint(340, 230));
    QGraphicsItem* pDrawn = layout.view()->currentItem();
    QVERIFY(pDrawn && pDrawn != pImage);
    QCOMPARE(emitted(selection), Emissions{pDrawn});
}

void TestLayoutView::rectangleDrawnUpAndLeft()
{
    LayoutFixture layout;
    layout.triggerAction("m_pDrawRectAction");
    layout.press(QPoint(300, 200));
    layout.move(QPoint(290, 195));
    layout.move(QPoint(250, 150));
    layout.release(QPoint(250, 150));
    QCOMPARE(layout.scene()->items().count(), 22);
    auto* pRectangle = qgraphicsitem_cast<CVXSLayoutItemRectangle*>(layout.view()->currentItem());
    QVERIFY(pRectangle);
    QCOMPARE(pRectangle->rect(), QRectF(250, 150, 50, 50));
    QCOMPARE(pRectangle->brush(), QBrush(QColor(255, 255, 255, 255)));
    QCOMPARE(pRectangle->pen().color(), QColor(0, 0, 0, 255));
    QCOMPARE(pRectangle->pen().widthF(), 0.0);
    QCOMPARE(pRectangle->zValue(), 26.0);
    QCOMPARE(layout.view()->topZ(), 26);
    // Released: the new rectangle shows its handles.
    QCOMPARE(handle(layout.view(), 1)->rect(), QRectF(247, 147, 8, 8));
    QCOMPARE(handle(layout.view(), 3)->rect(), QRectF(295, 195, 8, 8));
}

void TestLayoutView::ellipseDrawnDownAndRight()
{
    LayoutFixture layout;
    layout.triggerAction("m_pDrawEllipseAction");
    layout.drag(QPoint(100, 100), QPoint(260, 180));
    auto* pEllipse = qgraphicsitem_cast<CVXSLayoutItemEllipse*>(layout.view()->currentItem());
    QVERIFY(pEllipse);
    QCOMPARE(pEllipse->rect(), QRectF(100, 100, 160, 80));
    QCOMPARE(pEllipse->zValue(), 26.0);
    const QImage shown = layout.grabViewport();
    QCOMPARE(shown.pixelColor(180, 140), QColor(Qt::white));
}

void TestLayoutView::arrowKinds_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("startHead");
    QTest::addColumn<bool>("endHead");
    QTest::newRow("line") << int(VXSLayout::LineTool) << false << false;
    QTest::newRow("single-headed arrow") << int(VXSLayout::SingleArrowTool) << false << true;
    QTest::newRow("double-headed arrow") << int(VXSLayout::DoubleArrowTool) << true << true;
}

void TestLayoutView::arrowKinds()
{
    QFETCH(int, kind);
    QFETCH(bool, startHead);
    QFETCH(bool, endHead);
    LayoutFixture layout;
    layout.chooseArrowTool(kind);
    QCOMPARE(layout.window()->isDrawArrowOn(), kind);
    layout.drag(QPoint(100, 300), QPoint(400, 120), 6);
    auto* pArrow = qgraphicsitem_cast<CVXSLayoutItemArrow*>(layout.view()->currentItem());
    QVERIFY(pArrow);
    QCOMPARE(startPoint(pArrow), QPoint(100, 300));
    QCOMPARE(endPoint(pArrow), QPoint(400, 120));
    QCOMPARE(pArrow->hasStartHead(), startHead);
    QCOMPARE(pArrow->hasEndHead(), endHead);
    // The rectangle bounds the line with room for the heads.
    QCOMPARE(pArrow->rect(), QRectF(QPointF(60, 80), QPointF(440, 340)));
    // Deselect so that no handle covers the end, then count ink next to the tip.
    layout.triggerAction("m_pArrowAction");
    layout.press(QPoint(20, 20));
    layout.release(QPoint(20, 20));
    const QImage shown = layout.grabViewport();
    int blackNearEnd = 0;
    for (int y = 120; y < 132; ++y)
        for (int x = 388; x < 400; ++x)
            blackNearEnd += qGray(shown.pixel(x, y)) < 60;
    QVERIFY2(endHead ? blackNearEnd >= 25 : blackNearEnd <= 14, qPrintable(QString::number(blackNearEnd)));
}

void TestLayoutView::toolsDrawItemsWithRisingZ()
{
    LayoutFixture layout;
    layout.triggerAction("m_pDrawRectAction");
    layout.drag(QPoint(50, 50), QPoint(150, 120));
    const QGraphicsItem* pRectangle = layout.view()->currentItem();
    layout.triggerAction("m_pDrawEllipseAction");
    layout.drag(QPoint(200, 50), QPoint(300, 120));
    const QGraphicsItem* pEllipse = layout.view()->currentItem();
    layout.chooseArrowTool(VXSLayout::SingleArrowTool);
    layout.drag(QPoint(350, 50), QPoint(450, 120));
    const QGraphicsItem* pArrow = layout.view()->currentItem();
    QCOMPARE(pRectangle->type(), 32818);
    QCOMPARE(pEllipse->type(), 32817);
    QCOMPARE(pArrow->type(), 32820);
    QCOMPARE(pRectangle->zValue(), 26.0);
    QCOMPARE(pEllipse->zValue(), 27.0);
    QCOMPARE(pArrow->zValue(), 28.0);
    QCOMPARE(layout.view()->topZ(), 28);
}

void TestLayoutView::handlesSurroundTheSelectedItem()
{
    LayoutFixture layout;
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(400, 200));
    QCOMPARE(pImage->rect(), QRectF(250, 125, 374, 187));
    layout.press(QPoint(300, 200));
    // Bounding rectangle (249.5, 124.5) .. (624.5, 312.5): corners one unit in, less half a handle.
    QCOMPARE(handle(layout.view(), 1)->rect(), QRectF(246.5, 121.5, 8, 8));
    QCOMPARE(handle(layout.view(), 2)->rect(), QRectF(619.5, 121.5, 8, 8));
    QCOMPARE(handle(layout.view(), 3)->rect(), QRectF(619.5, 307.5, 8, 8));
    QCOMPARE(handle(layout.view(), 4)->rect(), QRectF(246.5, 307.5, 8, 8));
    for (int n = 1; n <= 4; ++n) {
        QVERIFY(handle(layout.view(), n)->isVisible());
        QCOMPARE(handle(layout.view(), n)->zValue(), 999.0 + n);
    }
    QVERIFY(!highlight(layout.view())->isVisible());
}

void TestLayoutView::imageInCellGetsHighlightInsteadOfHandles()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(200, 100));
    layout.press(pImage->rect().center().toPoint());
    QGraphicsRectItem* pHighlight = highlight(layout.view());
    QVERIFY(pHighlight->isVisible());
    QCOMPARE(pHighlight->rect(), pImage->boundingRect());
    QCOMPARE(pHighlight->zValue(), 999.0);
    QCOMPARE(pHighlight->pen().color(), QColor(0, 255, 0));
    QCOMPARE(pHighlight->pen().style(), Qt::DashLine);
    for (int n = 1; n <= 4; ++n)
        QVERIFY(!handle(layout.view(), n)->isVisible());
}

void TestLayoutView::arrowGetsTwoHandles()
{
    LayoutFixture layout;
    layout.chooseArrowTool(VXSLayout::LineTool);
    layout.drag(QPoint(100, 100), QPoint(300, 200));
    QCOMPARE(handle(layout.view(), 1)->rect(), QRectF(96, 96, 8, 8));
    QCOMPARE(handle(layout.view(), 2)->rect(), QRectF(296, 196, 8, 8));
    QVERIFY(handle(layout.view(), 1)->isVisible());
    QVERIFY(handle(layout.view(), 2)->isVisible());
    QVERIFY(!handle(layout.view(), 3)->isVisible());
    QVERIFY(!handle(layout.view(), 4)->isVisible());
    QCOMPARE(handle(layout.view(), 2)->zValue(), 1001.0);
    // The start handle keeps the z it last had: none was set yet.
    QCOMPARE(handle(layout.view(), 1)->zValue(), 0.0);
}

void TestLayoutView::movingKeepsItemsUnderThePointer_data()
{
    // Arrows move by whole pixels: arrowMovesBothPoints.
    LayoutFixture::addItemKindRows({"arrow"});
}

void TestLayoutView::movingKeepsItemsUnderThePointer()
{
    QFETCH(QByteArray, kind);
    LayoutFixture layout;
    const QRectF start(200, 150, 120, 80);
    QGraphicsItem* pItem = layout.addItem(kind, start);
    layout.drag(QPoint(250, 180), QPoint(303, 211), 7);
    QCOMPARE(itemRect(pItem), start.translated(53, 31));
    QCOMPARE(layout.view()->currentItem(), pItem);
}

void TestLayoutView::arrowMovesBothPoints()
{
    LayoutFixture layout;
    layout.chooseArrowTool(VXSLayout::SingleArrowTool);
    layout.drag(QPoint(100, 100), QPoint(300, 100));
    layout.triggerAction("m_pArrowAction");
    auto* pArrow = qgraphicsitem_cast<CVXSLayoutItemArrow*>(layout.view()->currentItem());
    layout.drag(QPoint(200, 100), QPoint(260, 340), 5);
    QCOMPARE(startPoint(pArrow), QPoint(160, 340));
    QCOMPARE(endPoint(pArrow), QPoint(360, 340));
    // The rectangle follows the points, with room for the heads, however often it moved.
    QCOMPARE(pArrow->rect(), QRectF(QPointF(120, 300), QPointF(400, 380)));
    // Picked again at its new place.
    layout.press(QPoint(50, 50));
    QCOMPARE(layout.view()->currentItem(), nullptr);
    layout.press(QPoint(250, 341));
    QCOMPARE(layout.view()->currentItem(), pArrow);
}

void TestLayoutView::arrowIsPickedOnlyNearItsLine()
{
    LayoutFixture layout;
    layout.chooseArrowTool(VXSLayout::LineTool);
    layout.drag(QPoint(100, 100), QPoint(400, 100));
    layout.triggerAction("m_pArrowAction");
    layout.press(QPoint(20, 20));
    QCOMPARE(layout.view()->currentItem(), nullptr);
    // Inside the arrow's rectangle but away from the line: not picked.
    layout.press(QPoint(250, 120));
    QCOMPARE(layout.view()->currentItem(), nullptr);
    layout.press(QPoint(250, 102));
    QVERIFY(layout.view()->currentItem());
    QCOMPARE(layout.view()->currentItem()->type(), 32820);
}

void TestLayoutView::rectangleResizedThroughOppositeCornerIsNormalised()
{
    LayoutFixture layout;
    layout.triggerAction("m_pDrawRectAction");
    layout.drag(QPoint(100, 100), QPoint(200, 160));
    layout.triggerAction("m_pArrowAction");
    auto* pRectangle = qgraphicsitem_cast<CVXSLayoutItemRectangle*>(layout.view()->currentItem());
    QCOMPARE(pRectangle->rect(), QRectF(100, 100, 100, 60));

    // Drag the bottom-right handle past the top-left corner.
    layout.press(handleCentre(layout.view(), 3));
    layout.move(QPoint(150, 130));
    layout.move(QPoint(60, 40));
    QCOMPARE(pRectangle->rect(), QRectF(QPointF(100, 100), QPointF(60, 40)));
    layout.release(QPoint(60, 40));
    QCOMPARE(pRectangle->rect(), QRectF(60, 40, 40, 60));
    QCOMPARE(handle(layout.view(), 1)->rect(), QRectF(57, 37, 8, 8));
}

void TestLayoutView::resizeByHandle_data()
{
    QTest::addColumn<QByteArray>("kind");
    QTest::addColumn<int>("handleNumber");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<QRectF>("expected");
    // Every item starts as (200, 150, 120, 80).
    QTest::newRow("rectangle, top-left") << QByteArray("rectangle") << 1 << QPoint(180, 140) << QRectF(180, 140, 140, 90);
    QTest::newRow("ellipse, top-right") << QByteArray("ellipse") << 2 << QPoint(400, 100) << QRectF(200, 100, 200, 130);
    QTest::newRow("free image, bottom-right") << QByteArray("image") << 3 << QPoint(360, 300) << QRectF(200, 150, 160, 150);
    QTest::newRow("text, bottom-left") << QByteArray("text") << 4 << QPoint(150, 260) << QRectF(150, 150, 170, 110);
}

void TestLayoutView::resizeByHandle()
{
    QFETCH(QByteArray, kind);
    QFETCH(int, handleNumber);
    QFETCH(QPoint, to);
    QFETCH(QRectF, expected);
    LayoutFixture layout;
    QGraphicsItem* pItem = layout.addItem(kind, QRectF(200, 150, 120, 80));
    layout.press(QPoint(260, 190));
    QCOMPARE(layout.view()->currentItem(), pItem);
    layout.release(QPoint(260, 190));
    const QPoint from = handleCentre(layout.view(), handleNumber);
    layout.press(from);
    layout.move((from + to) / 2);
    layout.move(to);
    layout.release(to);
    QCOMPARE(itemRect(pItem), expected);
    QCOMPARE(layout.view()->currentItem(), pItem);
}

void TestLayoutView::collapsedImageStaysPickable_data()
{
    QTest::addColumn<int>("handleNumber");
    QTest::addColumn<QPoint>("to");
    QTest::addColumn<QRectF>("expected");
    // The image is (200, 150, 120, 80); its handle is dragged onto the opposite edge.
    QTest::newRow("bottom-right onto the top-left corner") << 3 << QPoint(200, 150) << QRectF(200, 150, 1, 1);
    QTest::newRow("top-left onto the bottom-right corner") << 1 << QPoint(320, 230) << QRectF(319, 229, 1, 1);
    QTest::newRow("top-right onto the left edge") << 2 << QPoint(200, 100) << QRectF(200, 100, 1, 130);
    QTest::newRow("bottom-left onto the top edge") << 4 << QPoint(150, 150) << QRectF(150, 150, 170, 1);
}

// A handle drag leaves an image at least one pixel a side, so it can still be picked and
// deleted.
void TestLayoutView::collapsedImageStaysPickable()
{
    QFETCH(int, handleNumber);
    QFETCH(QPoint, to);
    QFETCH(QRectF, expected);
    LayoutFixture layout;
    QGraphicsItem* pImage = layout.addItem("image", QRectF(200, 150, 120, 80));
    layout.press(QPoint(260, 190));
    layout.release(QPoint(260, 190));
    const QPoint from = handleCentre(layout.view(), handleNumber);
    layout.press(from);
    layout.move((from + to) / 2);
    layout.move(to);
    QCOMPARE(itemRect(pImage), expected);
    layout.release(to);
    QCOMPARE(itemRect(pImage), expected);

    layout.press(QPoint(600, 400));
    layout.release(QPoint(600, 400));
    QCOMPARE(layout.view()->currentItem(), nullptr);
    layout.press(expected.topLeft().toPoint());
    layout.release(expected.topLeft().toPoint());
    QCOMPARE(layout.view()->currentItem(), pImage);
    layout.keyClick(Qt::Key_Delete);
    QCOMPARE(layout.scene()->items().count(), VXSLayout::AuxiliaryItemCount);
}

void TestLayoutView::arrowEndsFollowTheirHandles()
{
    LayoutFixture layout;
    layout.chooseArrowTool(VXSLayout::DoubleArrowTool);
    layout.drag(QPoint(100, 100), QPoint(300, 200));
    layout.triggerAction("m_pArrowAction");
    auto* pArrow = qgraphicsitem_cast<CVXSLayoutItemArrow*>(layout.view()->currentItem());
    layout.press(handleCentre(layout.view(), 1));
    layout.move(QPoint(80, 150));
    layout.move(QPoint(50, 250));
    layout.release(QPoint(50, 250));
    QCOMPARE(startPoint(pArrow), QPoint(50, 250));
    QCOMPARE(endPoint(pArrow), QPoint(300, 200));
    layout.press(handleCentre(layout.view(), 2));
    layout.move(QPoint(400, 50));
    layout.release(QPoint(400, 50));
    QCOMPARE(endPoint(pArrow), QPoint(400, 50));
    QCOMPARE(pArrow->rect(), QRectF(QPointF(10, 10), QPointF(440, 290)));
}

void TestLayoutView::imageInCellIsNotResized()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(200, 100));
    const QRectF before = pImage->rect();
    layout.press(before.center().toPoint());
    layout.release(before.center().toPoint());
    // No handle to grab: pressing at the corner picks the image itself and moves it.
    layout.press(before.bottomRight().toPoint() - QPoint(2, 2));
    QCOMPARE(layout.view()->currentItem(), pImage);
    layout.release(before.bottomRight().toPoint() - QPoint(2, 2));
    QCOMPARE(pImage->rect(), before);
    QCOMPARE(pImage->getCellIndex(), 0);
}

void TestLayoutView::imageSnapsToCellAndFitsOnRelease()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout2x2);
    QList<CVXSLayoutItemImage*> images;
    for (int i = 0; i < 4; ++i)
        images << layout.pasteImage(QSize(200, 100));
    // No cell left: a tall image is placed freely, at half the lower-right area.
    CVXSLayoutItemImage* pTall = layout.pasteImage(QSize(100, 300));
    QCOMPARE(pTall->getCellIndex(), -1);
    QCOMPARE(pTall->rect(), QRectF(250 + (187 - 31), 125 + (93 - 93), 62, 187));
    // Empty cell 3 by deleting its image.
    layout.press(images[3]->rect().center().toPoint());
    layout.release(images[3]->rect().center().toPoint());
    layout.keyClick(Qt::Key_Delete);
    QCOMPARE(layout.manager()->cellUseCount(3), 0);

    const QRectF cell3 = cellRect(layout.manager(), 3);
    layout.press(pTall->rect().center().toPoint());
    QCOMPARE(layout.view()->currentItem(), pTall);
    layout.move(QPoint(600, 300));
    layout.move(QPoint(700, 400));
    // Over cell 3: centred on the cell at its own size.
    QCOMPARE(layout.view()->targetCell(), 3);
    QCOMPARE(pTall->rect().size(), QSizeF(62, 187));
    QCOMPARE(pTall->rect().topLeft(), QPointF(550 + (200 - 31), 275 + (100 - 93)));
    layout.release(QPoint(700, 400));
    // Fitted with its aspect kept: limited by the cell's 201 rows, centred across.
    QCOMPARE(pTall->getCellIndex(), 3);
    QCOMPARE(layout.manager()->cellUseCount(3), 1);
    QCOMPARE(pTall->rect(), QRectF(cell3.left() + (200 - 33), cell3.top() + (100 - 100), 66, 201));
    QVERIFY(highlight(layout.view())->isVisible());
}

void TestLayoutView::imageDraggedFromCellZeroToCellThree()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout2x2);
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(200, 100));
    QCOMPARE(pImage->getCellIndex(), 0);
    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    layout.drag(QPoint(250, 125), QPoint(750, 375), 8);
    QCOMPARE(pImage->getCellIndex(), 3);
    QCOMPARE(layout.manager()->cellUseCount(0), 0);
    QCOMPARE(layout.manager()->cellUseCount(3), 1);
    QCOMPARE(pImage->rect(), QRectF(550, 275, 401, 200));
    QCOMPARE(emitted(selection), (Emissions{pImage, pImage}));
    QCOMPARE(layout.manager()->getFirstEmptyCell(true), 0);
}

// A free image dropped into a smaller cell is fitted to one pixel rather than to nothing,
// and gives its cell back when the layout goes free.
void TestLayoutView::droppedThinImageStaysVisible()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout4x4);
    for (int i = 0; i < 16; ++i)
        layout.pasteImage(QSize(30, 20));
    // No cell is left: the profile is placed freely, 375 x 1, at (250, 218).
    CVXSLayoutItemImage* pProfile = layout.pasteImage(QSize(506, 2));
    QCOMPARE(pProfile->rect(), QRectF(250, 218, 375, 1));
    QCOMPARE(pProfile->getCellIndex(), -1);

    // Free cell 5, (280, 140) .. (480, 240), and drop the profile there: 0.54 pixels high
    // when fitted exactly.
    layout.press(QPoint(380, 190));
    layout.release(QPoint(380, 190));
    QCOMPARE(layout.view()->currentItem()->type(), int(VXSLayout::ImageItemType));
    layout.keyClick(Qt::Key_Delete);
    QCOMPARE(layout.manager()->cellUseCount(5), 0);
    layout.drag(QPoint(260, 218), QPoint(380, 190));
    QCOMPARE(pProfile->getCellIndex(), 5);
    QCOMPARE(pProfile->rect(), QRectF(280, 190, 201, 1));
    QCOMPARE(layout.manager()->cellUseCount(5), 1);

    layout.chooseStyle(FreeStyle);
    QCOMPARE(pProfile->getCellIndex(), -1);
    for (int cell = 0; cell < 16; ++cell)
        QCOMPARE(layout.manager()->cellUseCount(cell), 0);
}

void TestLayoutView::targetCellSurvivesLeavingTheCell()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout2x2);
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(200, 100));
    layout.press(QPoint(250, 125));
    layout.move(QPoint(600, 300)); // over cell 3
    QCOMPARE(layout.view()->targetCell(), 3);
    layout.move(QPoint(500, 250)); // the gap between the cells
    layout.move(QPoint(505, 490)); // below every cell
    QCOMPARE(layout.view()->targetCell(), 3);
    layout.release(QPoint(505, 490));
    QCOMPARE(pImage->getCellIndex(), 3);
    QCOMPARE(layout.manager()->cellUseCount(0), 0);
    QCOMPARE(layout.manager()->cellUseCount(3), 1);
    QCOMPARE(pImage->rect(), QRectF(550, 275, 401, 200));
}

void TestLayoutView::deleteFreesTheImagesCell()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(200, 100));
    layout.press(pImage->rect().center().toPoint());
    layout.release(pImage->rect().center().toPoint());
    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    layout.keyClick(Qt::Key_Delete);
    QCOMPARE(emitted(selection), Emissions{nullptr});
    QCOMPARE(layout.scene()->items().count(), 21);
    QCOMPARE(layout.manager()->cellUseCount(0), 0);
    QCOMPARE(layout.view()->currentItem(), nullptr);
    QVERIFY(!highlight(layout.view())->isVisible());

    // A free image passes its missing cell on as it is: counter 255 wraps.
    CVXSLayoutItemImage* pFree = layout.pasteImage(QSize(200, 100));
    layout.chooseStyle(FreeStyle);
    QCOMPARE(pFree->getCellIndex(), -1);
    layout.press(pFree->rect().center().toPoint());
    layout.release(pFree->rect().center().toPoint());
    layout.keyClick(Qt::Key_Delete);
    QCOMPARE(layout.manager()->cellUseCount(255), 255);
}

void TestLayoutView::deleteWithNothingSelected()
{
    LayoutFixture layout;
    layout.pasteImage(QSize(200, 100));
    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    layout.keyClick(Qt::Key_Delete);
    QCOMPARE(selection.count(), 0);
    QCOMPARE(layout.scene()->items().count(), 22);
}

void TestLayoutView::deleteAnnouncesTheEmptySelectionBeforeTheHandlesGo_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("Delete key") << "key";
    QTest::newRow("Delete button") << "button";
    QTest::newRow("emptied annotation") << "annotation";
}

// Whoever hears of the empty selection still finds the handles of the item that went: the
// view deletes the item, announces the empty selection and only then hides the handles.
void TestLayoutView::deleteAnnouncesTheEmptySelectionBeforeTheHandlesGo()
{
    QFETCH(QString, way);
    // Declared before the layout, which may still announce while it goes.
    Emissions announced;
    QList<bool> handlesShown;
    QList<int> itemsInScene;
    LayoutFixture layout;
    layout.enterAnnotation(QStringLiteral("Tag 14"));
    QGraphicsItem* pText = layout.view()->currentItem();
    QVERIFY(pText && pText->type() == VXSLayout::TextItemType);
    QVERIFY(handle(layout.view(), 1)->isVisible());

    connect(layout.view(), &CVXSLayoutView::selectionChanged, this, [&](QGraphicsItem* pItem) {
        announced << pItem;
        handlesShown << handle(layout.view(), 1)->isVisible();
        itemsInScene << layout.scene()->items().count();
    });
    if (way == QLatin1String("key"))
        layout.keyClick(Qt::Key_Delete);
    else if (way == QLatin1String("button"))
        layout.triggerAction("m_pDeleteAction");
    else
        layout.enterAnnotation(QString());

    QCOMPARE(announced, Emissions{nullptr});
    // The item was gone already, the handles were still there.
    QCOMPARE(itemsInScene, QList<int>{21});
    QCOMPARE(handlesShown, QList<bool>{true});
    QVERIFY(!handle(layout.view(), 1)->isVisible());
    QCOMPARE(layout.view()->currentItem(), nullptr);
}

void TestLayoutView::otherKeysAreSwallowed()
{
    LayoutFixture layout;
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(200, 100));
    layout.press(pImage->rect().center().toPoint());
    layout.release(pImage->rect().center().toPoint());
    const QRectF before = pImage->rect();
    for (Qt::Key key : {Qt::Key_Backspace, Qt::Key_Left, Qt::Key_Right, Qt::Key_A, Qt::Key_Escape})
        layout.keyClick(key);
    QCOMPARE(pImage->rect(), before);
    QCOMPARE(layout.view()->currentItem(), pImage);
    QCOMPARE(layout.scene()->items().count(), 22);
}

void TestLayoutView::doubleClickOnEveryItemKind_data()
{
    LayoutFixture::addItemKindRows();
    QTest::newRow("empty canvas") << QByteArray("none");
}

void TestLayoutView::doubleClickOnEveryItemKind()
{
    QFETCH(QByteArray, kind);
    LayoutFixture layout;
    QGraphicsItem* pItem = kind == "none" ? nullptr : layout.addItem(kind, QRectF(200, 150, 120, 80));
    layout.grabViewport(); // painted once, as the user sees it before clicking
    const int itemsBefore = layout.scene()->items().count();
    layout.doubleClick(QPoint(260, 190));
    QCOMPARE(layout.view()->currentItem(), pItem);
    QCOMPARE(layout.scene()->items().count(), itemsBefore);
}

void TestLayoutView::doubleClickOnTextIsTaken()
{
    LayoutFixture layout;
    layout.addItem("text", QRectF(100, 100, 80, 30));
    layout.addItem("image", QRectF(300, 100, 80, 30));

    auto doubleClickAccepted = [&layout](QPoint pos, Qt::MouseButton button) {
        layout.press(pos, button);
        layout.release(pos, button);
        QMouseEvent event(QEvent::MouseButtonDblClick, pos, button, button, Qt::NoModifier);
        QApplication::sendEvent(layout.view()->viewport(), &event);
        return event.isAccepted();
    };
    // The double click opens the modal Edit Text dialog; cancelled, so that the page is
    // reached again.
    bool bDialogSeen = false;
    answerNextModalDialog(QDialog::staticMetaObject, rejectDialog, &bDialogSeen);
    QVERIFY(doubleClickAccepted(QPoint(120, 110), Qt::LeftButton));
    QTRY_VERIFY(bDialogSeen);
    QVERIFY(!doubleClickAccepted(QPoint(120, 110), Qt::RightButton));
    QVERIFY(!doubleClickAccepted(QPoint(320, 110), Qt::LeftButton));
    QVERIFY(!doubleClickAccepted(QPoint(20, 20), Qt::LeftButton));
}

void TestLayoutView::pressesAndMovesOutsideTheScene()
{
    LayoutFixture layout(QSize(800, 600));
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(100, 100));
    const QRectF before = pImage->rect();
    // Drag the image off the page to the top-left and back again.
    const QPoint grip = before.center().toPoint();
    layout.press(grip);
    layout.move(QPoint(-300, -200));
    QCOMPARE(pImage->rect().topLeft(), before.topLeft() + QPointF(-300, -200) - QPointF(grip));
    layout.move(grip);
    layout.release(grip);
    QCOMPARE(pImage->rect(), before);
    // A zero-size drag selects and changes nothing.
    layout.drag(QPoint(10, 10), QPoint(10, 10), 1);
    QCOMPARE(layout.view()->currentItem(), nullptr);
    QCOMPARE(pImage->rect(), before);
    // Drawing past the page's edge still gives a positive rectangle.
    layout.triggerAction("m_pDrawRectAction");
    layout.press(QPoint(100, 100));
    layout.move(QPoint(90, 90));
    layout.move(QPoint(-50, -70));
    layout.release(QPoint(-50, -70));
    auto* pRectangle = qgraphicsitem_cast<CVXSLayoutItemRectangle*>(layout.view()->currentItem());
    QVERIFY(pRectangle);
    QCOMPARE(pRectangle->rect(), QRectF(-50, -70, 150, 170));
}

void TestLayoutView::viewResizeRefitsImagesInCells()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout4x4);
    QList<CVXSLayoutItemImage*> images;
    for (int i = 0; i < 16; ++i)
        images << layout.pasteImage(QSize(160, 90));
    layout.setViewSize(QSize(800, 800));
    for (int cell = 0; cell < 16; ++cell) {
        const QRectF rect = cellRect(layout.manager(), cell);
        QCOMPARE(images[cell]->getCellIndex(), cell);
        QVERIFY(rect.contains(images[cell]->rect()));
        // 4 x 4 cells of 161 x 161: the wide images fill the width.
        QCOMPARE(images[cell]->rect().width(), 161.0);
        QVERIFY(std::abs(images[cell]->rect().center().y() - rect.center().y()) <= 1);
    }
    // The cell frames moved along.
    for (QGraphicsItem* pItem : layout.scene()->items()) {
        if (pItem->type() == 32822 && pItem->isVisible())
            QVERIFY(pItem->boundingRect().right() <= 800);
    }
}

void TestLayoutView::relayoutLeavesTheViewsOwnItemsAlone()
{
    LayoutFixture layout(QSize(800, 500));
    QGraphicsItem* pRectangle = layout.addItem("rectangle", QRectF(100, 100, 80, 40));
    // Handles shown without a current item: nothing hides them before the re-layout.
    layout.view()->showHandles(pRectangle);
    QCOMPARE(layout.view()->currentItem(), nullptr);
    const QRectF handleBefore = handle(layout.view(), 3)->rect();
    QVERIFY(handle(layout.view(), 3)->isVisible());
    layout.setViewSize(QSize(1600, 1000));
    QCOMPARE(itemRect(pRectangle), QRectF(200, 200, 160, 80));
    QCOMPARE(handle(layout.view(), 3)->rect(), handleBefore);
    QCOMPARE(handle(layout.view(), 3)->rect().size(), QSizeF(8, 8));
}

void TestLayoutView::viewWithoutManager()
{
    QGraphicsScene scene(0, 0, 300, 300);
    {
        CVXSLayoutView view(&scene);
        view.resize(400, 300);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QCOMPARE(scene.sceneRect(), QRectF(0, 0, 396, 296));
        auto* pRectangle = new CVXSLayoutItemRectangle(50, 50, 100, 100);
        pRectangle->setPen(QPen(Qt::black, 0));
        scene.addItem(pRectangle);
        pRectangle->setZValue(view.nextZ());
        QTest::mousePress(view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
        QCOMPARE(view.currentItem(), pRectangle);
        QTest::mouseMove(view.viewport(), QPoint(120, 130));
        QTest::mouseRelease(view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(120, 130));
        QCOMPARE(pRectangle->rect(), QRectF(70, 80, 100, 100));
        QTest::mouseDClick(view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(120, 130));
        QTest::keyClick(&view, Qt::Key_Delete);
        QCOMPARE(view.currentItem(), nullptr);
        QCOMPARE(scene.items().count(), 21);
        view.showCells(3);
        QCOMPARE(view.reorderZ(nullptr, 1), 16);
    }
    // The view takes its own items with it.
    QCOMPARE(scene.items().count(), 0);
}

void TestLayoutView::windowToolsAreExclusive()
{
    LayoutFixture layout;
    CVXSLayoutWindow* pWindow = layout.window();
    QCOMPARE(pWindow->isDrawRectOn(), false);
    QCOMPARE(pWindow->isDrawEllipseOn(), false);
    QCOMPARE(pWindow->isDrawArrowOn(), -1);
    layout.triggerAction("m_pDrawEllipseAction");
    QCOMPARE(pWindow->isDrawEllipseOn(), true);
    QCOMPARE(layout.view()->cursor().shape(), Qt::CrossCursor);
    layout.triggerAction("m_pDrawRectAction");
    QCOMPARE(pWindow->isDrawRectOn(), true);
    QCOMPARE(pWindow->isDrawEllipseOn(), false);
    layout.chooseArrowTool(VXSLayout::DoubleArrowTool);
    QCOMPARE(pWindow->isDrawArrowOn(), 2);
    QCOMPARE(pWindow->isDrawRectOn(), false);
    QCOMPARE(pWindow->isDrawEllipseOn(), false);
    layout.triggerAction("m_pArrowAction");
    QCOMPARE(pWindow->isDrawArrowOn(), -1);
    QCOMPARE(layout.view()->cursor().shape(), Qt::ArrowCursor);
    QVERIFY(!layout.view()->testAttribute(Qt::WA_SetCursor));
    // The kind of line is kept for the next time the tool is switched on.
    layout.chooseArrowTool(VXSLayout::SingleArrowTool);
    QCOMPARE(pWindow->isDrawArrowOn(), 1);
}

QTEST_MAIN(TestLayoutView)
#include "tst_layout_view.moc"
