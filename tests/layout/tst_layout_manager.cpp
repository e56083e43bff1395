#include "LayoutFixture.h"
#include "MessageBoxAnswer.h"
#include "ModalWatch.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <VXSLayoutItemArrow.h>
#include <VXSLayoutItemEllipse.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutItemRectangle.h>
#include <VXSLayoutItemText.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>
#include <VXUtilityFns.h>

#include <QComboBox>
#include <QGraphicsScene>
#include <QtTest>

#include <memory>

namespace {

enum Style { FreeStyle, Layout1x1, Layout2x1, Layout2x2, Layout3x2, Layout3x3, Layout4x2, Layout4x3, Layout4x4 };

QRect cellRect(CVXSLayoutManager* pManager, int nCell)
{
    QRect rect;
    pManager->getCellRect(nCell, rect, false);
    return rect;
}

// Where an image of this size lands when fitted into the cell and centred.
QRectF fittedInCell(const QRect& cell, QSizeF size)
{
    const double scale = std::min(cell.width() / size.width(), cell.height() / size.height());
    const int width = int(size.width() * scale);
    const int height = int(size.height() * scale);
    return QRectF(cell.left() + (cell.width() / 2 - width / 2), cell.top() + (cell.height() / 2 - height / 2), width,
                  height);
}

int countItemsOfType(QGraphicsScene* pScene, int nType)
{
    int count = 0;
    for (const QGraphicsItem* pItem : pScene->items())
        count += pItem->type() == nType;
    return count;
}

} // namespace

class TestLayoutManager : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void cellCount_data();
    void cellCount();
    void cellPercentTable_data();
    void cellPercentTable();
    void twoByOneCellInPixels();
    void cellRectOutsideTheStyle_data();
    void cellRectOutsideTheStyle();
    void freeStyleHasNoCells();
    void freePlacement();
    void cellAtPoint_data();
    void cellAtPoint();
    void cellCountersWrap();
    void firstEmptyCellSearchesAllCounters();
    void twoByTwoFillsCellsInOrder();
    void deletedImageFreesItsCellForTheNextPaste();
    void newImagesTakeRisingZ();
    void wideAndTallImagesInACell_data();
    void wideAndTallImagesInACell();
    void extremeImagesDoNotBreakPlacement_data();
    void extremeImagesDoNotBreakPlacement();
    void thinImagesStayVisibleInTheirCell_data();
    void thinImagesStayVisibleInTheirCell();
    void relayoutKeepsThinImagesVisible();
    void styleChangeKeepsCellIndices();
    void windowNeverPlacedIsDeletedWithTheManager();
    void styleChangeMovesImageToLowerEmptyCell();
    void styleChangeRehomesImageWithoutCell();
    void styleChangeRefusedWithTooManyImages();
    void styleChangeToFreeStyleIsAlwaysAllowed();
    void viewResizeRefitsImagesInTheirCells();
    void freeStyleItemsScaleWithTheView();
    void clearWithOnlyAuxiliaryItemsAsksNothing();
    void clearAnsweredNoKeepsEverything();
    void clearAnsweredYesRemovesUserContent();
    void managerWithoutWindowOrView();
};

void TestLayoutManager::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QCoreApplication::setApplicationName(QStringLiteral("LayoutManagerTest"));
}

void TestLayoutManager::cellCount_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("expected");
    QTest::newRow("below range") << -1 << -1;
    QTest::newRow("Free style") << 0 << -1;
    QTest::newRow("Layout 1x1") << 1 << 1;
    QTest::newRow("Layout 2x1") << 2 << 2;
    QTest::newRow("Layout 2x2") << 3 << 4;
    QTest::newRow("Layout 3x2") << 4 << 6;
    QTest::newRow("Layout 3x3") << 5 << 9;
    QTest::newRow("Layout 4x2") << 6 << 8;
    QTest::newRow("Layout 4x3") << 7 << 12;
    QTest::newRow("Layout 4x4") << 8 << 16;
    QTest::newRow("above range") << 9 << -1;
    QTest::newRow("far above") << 1000 << -1;
}

void TestLayoutManager::cellCount()
{
    QFETCH(int, style);
    QFETCH(int, expected);
    LayoutFixture layout;
    QCOMPARE(layout.manager()->getCellCount(style), expected);
}

void TestLayoutManager::cellPercentTable_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QVector<QRect>>("cells");
    auto cells = [](std::initializer_list<std::array<int, 4>> list) {
        QVector<QRect> result;
        for (const auto& c : list)
            result << QRect(QPoint(c[0], c[1]), QPoint(c[2], c[3]));
        return result;
    };
    QTest::newRow("Layout 1x1") << 1 << cells({{5, 5, 95, 95}});
    QTest::newRow("Layout 2x1") << 2 << cells({{5, 20, 45, 60}, {55, 20, 95, 60}});
    QTest::newRow("Layout 2x2") << 3 << cells({{5, 5, 45, 45}, {55, 5, 95, 45}, {5, 55, 45, 95}, {55, 55, 95, 95}});
    QTest::newRow("Layout 3x2") << 4
                                << cells({{3, 10, 33, 40}, {35, 10, 65, 40}, {67, 10, 97, 40},
                                          {3, 60, 33, 90}, {35, 60, 65, 90}, {67, 60, 97, 90}});
    QTest::newRow("Layout 3x3") << 5
                                << cells({{3, 3, 33, 33}, {35, 3, 65, 33}, {67, 3, 97, 33},
                                          {3, 35, 33, 65}, {35, 35, 65, 65}, {67, 35, 97, 65},
                                          {3, 67, 33, 97}, {35, 67, 65, 97}, {67, 67, 97, 97}});
    QTest::newRow("Layout 4x2") << 6
                                << cells({{4, 10, 24, 30}, {28, 10, 48, 30}, {52, 10, 72, 30}, {76, 10, 96, 30},
                                          {4, 70, 24, 90}, {28, 70, 48, 90}, {52, 70, 72, 90}, {76, 70, 96, 90}});
    QTest::newRow("Layout 4x3") << 7
                                << cells({{4, 10, 24, 30}, {28, 10, 48, 30}, {52, 10, 72, 30}, {76, 10, 96, 30},
                                          {4, 40, 24, 60}, {28, 40, 48, 60}, {52, 40, 72, 60}, {76, 40, 96, 60},
                                          {4, 70, 24, 90}, {28, 70, 48, 90}, {52, 70, 72, 90}, {76, 70, 96, 90}});
    QTest::newRow("Layout 4x4") << 8
                                << cells({{4, 4, 24, 24}, {28, 4, 48, 24}, {52, 4, 72, 24}, {76, 4, 96, 24},
                                          {4, 28, 24, 48}, {28, 28, 48, 48}, {52, 28, 72, 48}, {76, 28, 96, 48},
                                          {4, 52, 24, 72}, {28, 52, 48, 72}, {52, 52, 72, 72}, {76, 52, 96, 72},
                                          {4, 76, 24, 96}, {28, 76, 48, 96}, {52, 76, 72, 96}, {76, 76, 96, 96}});
}

void TestLayoutManager::cellPercentTable()
{
    QFETCH(int, style);
    QFETCH(QVector<QRect>, cells);
    LayoutFixture layout;
    layout.chooseStyle(style);
    QCOMPARE(layout.manager()->getCellCount(style), cells.size());
    for (int cell = 0; cell < cells.size(); ++cell) {
        QRect rect;
        QCOMPARE(layout.manager()->getCellRect(cell, rect, true), 4 * cell);
        QCOMPARE(rect, cells[cell]);
    }
    QRect beyond;
    QCOMPARE(layout.manager()->getCellRect(cells.size(), beyond, true), -1);
}

void TestLayoutManager::twoByOneCellInPixels()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout2x1);
    QRect rect;
    QCOMPARE(layout.manager()->getCellRect(0, rect, false), 0);
    QCOMPARE(rect.topLeft(), QPoint(50, 100));
    QCOMPARE(rect.bottomRight(), QPoint(450, 300));
    QCOMPARE(rect.size(), QSize(401, 201));
    QCOMPARE(layout.manager()->getCellRect(1, rect, false), 4);
    QCOMPARE(rect, QRect(QPoint(550, 100), QPoint(950, 300)));
}

void TestLayoutManager::cellRectOutsideTheStyle_data()
{
    QTest::addColumn<int>("cell");
    QTest::newRow("none") << -1;
    QTest::newRow("negative") << -5;
    QTest::newRow("one past the last") << 4;
    QTest::newRow("last counter") << 255;
    QTest::newRow("beyond the counters") << 256;
    QTest::newRow("huge") << (1 << 30);
}

void TestLayoutManager::cellRectOutsideTheStyle()
{
    QFETCH(int, cell);
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    QRect rect(1, 2, 3, 4);
    QCOMPARE(layout.manager()->getCellRect(cell, rect, false), -1);
    if (cell != -1)
        QCOMPARE(rect, QRect(QPoint(0, 0), QPoint(0, 0)));
}

void TestLayoutManager::freeStyleHasNoCells()
{
    LayoutFixture layout;
    QCOMPARE(layout.manager()->currentStyle(), int(FreeStyle));
    QCOMPARE(layout.manager()->getFirstEmptyCell(true), -1);
    QRect rect;
    QCOMPARE(layout.manager()->getCellRect(0, rect, false), -1);
    QCOMPARE(layout.manager()->getCellRect(0, rect, true), -1);
    QPointF point(100, 100);
    QCOMPARE(layout.manager()->getCellAtPoint(point, false), -1);
    QCOMPARE(point, QPointF(100, 100));
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(400, 200));
    QCOMPARE(pImage->getCellIndex(), -1);
}

void TestLayoutManager::freePlacement()
{
    // View 1000 x 500: the area right and below of (250, 125) is 750 x 375; the image
    // gets half of that, aspect kept, centred in the area's upper-left quarter.
    LayoutFixture layout(QSize(1000, 500));
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(400, 200));
    QCOMPARE(pImage->rect(), QRectF(250, 125, 374, 187));
    QCOMPARE(pImage->pos(), QPointF(0, 0));
    QVERIFY(pImage->isVisible());
    // A grid style with every cell taken also places freely.
    layout.chooseStyle(Layout1x1);
    CVXSLayoutItemImage* pFirst = pImage;
    QCOMPARE(pFirst->getCellIndex(), 0);
    CVXSLayoutItemImage* pSecond = layout.pasteImage(QSize(100, 100));
    QCOMPARE(pSecond->getCellIndex(), -1);
    QCOMPARE(pSecond->rect(), QRectF(250 + (187 - 93), 125 + (93 - 93), 187, 187));
}

void TestLayoutManager::cellAtPoint_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QPointF>("point");
    QTest::addColumn<bool>("inPercent");
    QTest::addColumn<int>("expected");
    QTest::addColumn<QPointF>("convertedPoint");
    // View 1000 x 500: a pixel x is trunc(x / 999 * 100 + 0.5) percent, y trunc(y / 499 * 100 + 0.5).
    QTest::newRow("2x1 left-top corner percent") << 2 << QPointF(5, 20) << true << 0 << QPointF(5, 20);
    QTest::newRow("2x1 right-bottom corner percent") << 2 << QPointF(45, 60) << true << 0 << QPointF(45, 60);
    QTest::newRow("2x1 second cell edge") << 2 << QPointF(55, 60) << true << 1 << QPointF(55, 60);
    QTest::newRow("2x1 column gap") << 2 << QPointF(50, 40) << true << 2 << QPointF(50, 40);
    QTest::newRow("2x1 below the cells") << 2 << QPointF(20, 61) << true << 2 << QPointF(20, 61);
    QTest::newRow("2x1 pixel on boundary") << 2 << QPointF(45, 100) << false << 0 << QPointF(5, 20);
    QTest::newRow("2x1 pixel in the gap") << 2 << QPointF(500, 200) << false << 2 << QPointF(50, 40);
    QTest::newRow("2x2 bottom-right pixel") << 3 << QPointF(999, 499) << false << 4 << QPointF(100, 100);
    QTest::newRow("2x2 cell 3") << 3 << QPointF(800, 400) << false << 3 << QPointF(80, 80);
    QTest::newRow("4x2 empty middle band") << 6 << QPointF(100, 250) << false << 8 << QPointF(10, 50);
    QTest::newRow("outside the page") << 3 << QPointF(-300, -10) << false << 4 << QPointF(-29, -1);
}

void TestLayoutManager::cellAtPoint()
{
    QFETCH(int, style);
    QFETCH(QPointF, point);
    QFETCH(bool, inPercent);
    QFETCH(int, expected);
    QFETCH(QPointF, convertedPoint);
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(style);
    QCOMPARE(layout.manager()->getCellAtPoint(point, inPercent), expected);
    QCOMPARE(point, convertedPoint);
}

void TestLayoutManager::cellCountersWrap()
{
    LayoutFixture layout;
    CVXSLayoutManager* pManager = layout.manager();
    for (int cell = 0; cell < 256; ++cell)
        QCOMPARE(pManager->cellUseCount(cell), 0);
    pManager->setCellUsed(-1, false);
    QCOMPARE(pManager->cellUseCount(255), 255);
    pManager->setCellUsed(-1, true);
    QCOMPARE(pManager->cellUseCount(255), 0);
    pManager->setCellUsed(256, true);
    QCOMPARE(pManager->cellUseCount(0), 1);
    pManager->setCellUsed(3, true);
    pManager->setCellUsed(3, true);
    QCOMPARE(pManager->cellUseCount(3), 2);
}

void TestLayoutManager::firstEmptyCellSearchesAllCounters()
{
    LayoutFixture layout;
    CVXSLayoutManager* pManager = layout.manager();
    layout.chooseStyle(Layout1x1);
    pManager->setCellUsed(0, true);
    QCOMPARE(pManager->getFirstEmptyCell(true), -1);
    QCOMPARE(pManager->getFirstEmptyCell(false), 1);
    for (int cell = 1; cell < 256; ++cell)
        pManager->setCellUsed(cell, true);
    QCOMPARE(pManager->getFirstEmptyCell(false), -1);
    layout.chooseStyle(FreeStyle);
    QCOMPARE(pManager->getFirstEmptyCell(true), -1);
}

void TestLayoutManager::twoByTwoFillsCellsInOrder()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout2x2);
    const QPoint expectedCorners[] = {{50, 25}, {550, 25}, {50, 275}, {550, 275}};
    for (int cell = 0; cell < 4; ++cell) {
        CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(200, 100));
        QCOMPARE(pImage->getCellIndex(), cell);
        QCOMPARE(layout.manager()->cellUseCount(cell), 1);
        const QRect rect = cellRect(layout.manager(), cell);
        QCOMPARE(rect.topLeft(), expectedCorners[cell]);
        // 401 x 201 cell: the 200 x 100 image becomes 401 x 200, one row below the top.
        QCOMPARE(pImage->rect(), QRectF(rect.left(), rect.top() + (100 - 100), 401, 200));
    }
    QCOMPARE(layout.manager()->getFirstEmptyCell(true), -1);
}

void TestLayoutManager::deletedImageFreesItsCellForTheNextPaste()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout2x2);
    QList<CVXSLayoutItemImage*> images;
    for (int i = 0; i < 4; ++i)
        images << layout.pasteImage(QSize(200, 100));
    // Select the top-right image and delete it with the Delete key.
    layout.press(images[1]->rect().center().toPoint());
    layout.release(images[1]->rect().center().toPoint());
    QCOMPARE(layout.view()->currentItem(), images[1]);
    layout.keyClick(Qt::Key_Delete);
    QCOMPARE(layout.view()->currentItem(), nullptr);
    QCOMPARE(layout.manager()->cellUseCount(1), 0);
    QCOMPARE(layout.manager()->getFirstEmptyCell(true), 1);
    CVXSLayoutItemImage* pNext = layout.pasteImage(QSize(200, 100));
    QCOMPARE(pNext->getCellIndex(), 1);
}

void TestLayoutManager::newImagesTakeRisingZ()
{
    LayoutFixture layout;
    QCOMPARE(layout.view()->topZ(), 25);
    for (int z = 26; z < 30; ++z) {
        CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(20, 20));
        QCOMPARE(pImage->zValue(), double(z));
        QCOMPARE(layout.view()->topZ(), z);
    }
}

void TestLayoutManager::wideAndTallImagesInACell_data()
{
    QTest::addColumn<QSize>("imageSize");
    QTest::addColumn<QRectF>("expected");
    // "Layout 1x1" in 1000 x 500: the cell is (50, 25) .. (950, 475), 901 x 451.
    QTest::newRow("wide: limited by the width, centred vertically") << QSize(1000, 100) << QRectF(50, 205, 901, 90);
    QTest::newRow("tall: limited by the height, centred horizontally") << QSize(100, 1000) << QRectF(478, 25, 45, 451);
    QTest::newRow("same aspect as the cell") << QSize(901, 451) << QRectF(50, 25, 901, 451);
}

void TestLayoutManager::wideAndTallImagesInACell()
{
    QFETCH(QSize, imageSize);
    QFETCH(QRectF, expected);
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout1x1);
    CVXSLayoutItemImage* pImage = layout.pasteImage(imageSize);
    QCOMPARE(pImage->getCellIndex(), 0);
    QCOMPARE(pImage->rect(), expected);
}

void TestLayoutManager::extremeImagesDoNotBreakPlacement_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QSize>("imageSize");
    QTest::addColumn<QRectF>("expected");
    // Nothing is ever fitted to less than a pixel a side.
    QTest::newRow("null image, free style") << 0 << QSize(0, 0) << QRectF(250 + 187, 125 + 93, 1, 1);
    QTest::newRow("null image, grid style") << 1 << QSize(0, 0) << QRectF(50 + 450, 25 + 225, 1, 1);
    QTest::newRow("1 x 20000, free style") << 0 << QSize(1, 20000) << QRectF(250 + 187, 125, 1, 187);
    QTest::newRow("1 x 20000, grid style") << 1 << QSize(1, 20000) << QRectF(50 + 450, 25, 1, 451);
    QTest::newRow("20000 x 1, grid style") << 1 << QSize(20000, 1) << QRectF(50, 25 + 225, 901, 1);
}

void TestLayoutManager::extremeImagesDoNotBreakPlacement()
{
    QFETCH(int, style);
    QFETCH(QSize, imageSize);
    QFETCH(QRectF, expected);
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(style);
    const QImage image = imageSize.isEmpty() ? QImage() : solidImage(imageSize, Qt::gray);
    auto* pItem = new CVXSLayoutItemImage(image, nullptr);
    layout.scene()->addItem(pItem);
    QCOMPARE(layout.manager()->addImageItem(pItem, true), 0);
    QCOMPARE(pItem->rect(), expected);
    QCOMPARE(pItem->getCellIndex(), style == 0 ? -1 : 0);
    QCOMPARE(layout.manager()->addImageItem(nullptr, true), 0);
    layout.grabViewport();
}

void TestLayoutManager::thinImagesStayVisibleInTheirCell_data()
{
    QTest::addColumn<QSize>("imageSize");
    QTest::addColumn<QRectF>("expected");
    // Cell 0 of "Layout 4x4" in 1000 x 500 is (40, 20) .. (240, 120), 201 x 101; fitted
    // exactly, these would be 0.79 pixels high and 0.005 pixels wide.
    QTest::newRow("506 x 2 profile") << QSize(506, 2) << QRectF(40, 70, 201, 1);
    QTest::newRow("1 x 20000 strip") << QSize(1, 20000) << QRectF(140, 20, 1, 101);
}

// A thin image is fitted to one pixel rather than to nothing, so it can still be picked
// and deleted, and the next re-layout finds it and gives its cell back.
void TestLayoutManager::thinImagesStayVisibleInTheirCell()
{
    QFETCH(QSize, imageSize);
    QFETCH(QRectF, expected);
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout4x4);
    CVXSLayoutItemImage* pImage = layout.pasteImage(imageSize);
    QCOMPARE(pImage->rect(), expected);
    QCOMPARE(pImage->getCellIndex(), 0);
    QCOMPARE(layout.manager()->cellUseCount(0), 1);

    const QPoint onImage = expected.topLeft().toPoint();
    layout.press(QPoint(20, 480));
    layout.release(QPoint(20, 480));
    QCOMPARE(layout.view()->currentItem(), nullptr);
    layout.press(onImage);
    layout.release(onImage);
    QCOMPARE(layout.view()->currentItem(), pImage);

    layout.chooseStyle(FreeStyle);
    QCOMPARE(pImage->getCellIndex(), -1);
    QCOMPARE(layout.manager()->cellUseCount(0), 0);
    layout.keyClick(Qt::Key_Delete);
    QCOMPARE(layout.scene()->items().count(), 21);
}

void TestLayoutManager::relayoutKeepsThinImagesVisible()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout1x1);
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(506, 2));
    QCOMPARE(pImage->rect(), QRectF(50, 249, 901, 3));
    // Refitted from 901 x 3 into the 201 x 101 cell: 0.67 pixels high, kept at one.
    layout.chooseStyle(Layout4x4);
    QCOMPARE(pImage->rect(), QRectF(40, 70, 201, 1));
    QCOMPARE(pImage->getCellIndex(), 0);
    layout.chooseStyle(FreeStyle);
    QCOMPARE(pImage->getCellIndex(), -1);
    QCOMPARE(layout.manager()->cellUseCount(0), 0);
}

// A window no workspace ever took has no sub-window to delete it: the manager deletes
// the window itself, and with it the view.
void TestLayoutManager::windowNeverPlacedIsDeletedWithTheManager()
{
    QPointer<CVXSLayoutWindow> pWindow;
    QPointer<CVXSLayoutView> pView;
    {
        CVXSLayoutManager manager;
        pWindow = manager.getLayoutWindow();
        pView = manager.getLayoutView();
        QVERIFY(pWindow && !pWindow->parentWidget());
        QVERIFY(pView);
    }
    QVERIFY(pWindow.isNull());
    QVERIFY(pView.isNull());
}

void TestLayoutManager::styleChangeKeepsCellIndices()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout2x2);
    QList<CVXSLayoutItemImage*> images;
    QVector<QSizeF> sizes;
    for (int i = 0; i < 4; ++i) {
        images << layout.pasteImage(QSize(300, 200));
        sizes << images.last()->rect().size();
    }
    // 300 x 200 into 401 x 201: the scale 1.005 gives 301.5 x 200.99..., truncated.
    QCOMPARE(sizes.first(), QSizeF(301, 200));
    layout.chooseStyle(Layout3x2);
    for (int cell = 0; cell < 4; ++cell) {
        QCOMPARE(images[cell]->getCellIndex(), cell);
        QCOMPARE(images[cell]->rect(), fittedInCell(cellRect(layout.manager(), cell), sizes[cell]));
        QCOMPARE(layout.manager()->cellUseCount(cell), 1);
    }
    QCOMPARE(layout.manager()->cellUseCount(4), 0);
    QCOMPARE(layout.manager()->cellUseCount(5), 0);
}

void TestLayoutManager::styleChangeMovesImageToLowerEmptyCell()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout2x2);
    QList<CVXSLayoutItemImage*> images;
    for (int i = 0; i < 4; ++i)
        images << layout.pasteImage(QSize(300, 200));
    // Free cell 0, then change style: the topmost image (cell 3) is re-placed first and
    // finds cell 0 empty; the others find their own cells empty at their turn.
    layout.manager()->setCellUsed(0, false);
    delete images.takeFirst();
    layout.chooseStyle(Layout3x2);
    QCOMPARE(images[2]->getCellIndex(), 0);
    QCOMPARE(images[1]->getCellIndex(), 2);
    QCOMPARE(images[0]->getCellIndex(), 1);
    QCOMPARE(layout.manager()->cellUseCount(3), 0);
}

void TestLayoutManager::styleChangeRehomesImageWithoutCell()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout3x3);
    QList<CVXSLayoutItemImage*> images;
    for (int i = 0; i < 9; ++i)
        images << layout.pasteImage(QSize(300, 200));
    // Keep the images in cells 0, 1, 2 and 8; cell 8 does not exist in "Layout 3x2".
    for (int cell = 3; cell < 8; ++cell) {
        layout.manager()->setCellUsed(cell, false);
        delete images[cell];
    }
    layout.chooseStyle(Layout3x2);
    QCOMPARE(images[8]->getCellIndex(), 3);
    QCOMPARE(images[8]->rect(), fittedInCell(cellRect(layout.manager(), 3), images[8]->rect().size()));
    QCOMPARE(images[0]->getCellIndex(), 0);
    QCOMPARE(images[1]->getCellIndex(), 1);
    QCOMPARE(images[2]->getCellIndex(), 2);
    QCOMPARE(layout.manager()->cellUseCount(8), 0);
}

void TestLayoutManager::styleChangeRefusedWithTooManyImages()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout2x2);
    for (int i = 0; i < 4; ++i)
        layout.pasteImage(QSize(300, 200));
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    layout.chooseStyle(Layout2x1);
    QVERIFY(seen.m_bShown);
    QCOMPARE(seen.m_strText, QStringLiteral("No. of images are more than the no. of expected cells!\n"
                                            "Delete few images before changing the layout style."));
    QCOMPARE(seen.m_strTitle, CVXUtilityFns::getAppName());
    QCOMPARE(layout.window()->layoutStyleCombo()->currentText(), QStringLiteral("Layout 2x2"));
    QCOMPARE(layout.manager()->currentStyle(), int(Layout2x2));
    for (int cell = 0; cell < 4; ++cell)
        QCOMPARE(layout.manager()->cellUseCount(cell), 1);
}

void TestLayoutManager::styleChangeToFreeStyleIsAlwaysAllowed()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout4x4);
    QList<CVXSLayoutItemImage*> images;
    for (int i = 0; i < 16; ++i)
        images << layout.pasteImage(QSize(30, 20));
    const QRectF before = images[5]->rect();
    layout.chooseStyle(FreeStyle);
    QCOMPARE(layout.manager()->currentStyle(), int(FreeStyle));
    for (CVXSLayoutItemImage* pImage : images)
        QCOMPARE(pImage->getCellIndex(), -1);
    for (int cell = 0; cell < 16; ++cell)
        QCOMPARE(layout.manager()->cellUseCount(cell), 0);
    QCOMPARE(images[5]->rect(), before);
}

void TestLayoutManager::viewResizeRefitsImagesInTheirCells()
{
    LayoutFixture layout(QSize(1000, 500));
    layout.chooseStyle(Layout2x2);
    QList<CVXSLayoutItemImage*> images;
    for (int i = 0; i < 3; ++i)
        images << layout.pasteImage(QSize(300, 200));
    layout.setViewSize(QSize(600, 700));
    for (int cell = 0; cell < 3; ++cell) {
        QCOMPARE(images[cell]->getCellIndex(), cell);
        const QRect rect = cellRect(layout.manager(), cell);
        QCOMPARE(rect.width(), 241);
        QVERIFY(QRectF(rect).contains(images[cell]->rect()));
        QCOMPARE(images[cell]->rect().width(), 241.0);
        QCOMPARE(layout.manager()->cellUseCount(cell), 1);
    }
    QCOMPARE(layout.manager()->cellUseCount(3), 0);
}

void TestLayoutManager::freeStyleItemsScaleWithTheView()
{
    LayoutFixture layout(QSize(1000, 500));
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(400, 200));
    auto* pRectangle = new CVXSLayoutItemRectangle(100, 50, 40, 20);
    auto* pEllipse = new CVXSLayoutItemEllipse(300, 60, 80, 30);
    auto* pText = new CVXSLayoutItemText(QStringLiteral("label"));
    pText->setRect(600, 300, 70, 25);
    auto* pArrow = new CVXSLayoutItemArrow(0, 0, 0, 0);
    pArrow->setStartPoint(101, 401);
    pArrow->setEndPoint(333, 255);
    pArrow->fitRectToPoints();
    for (QGraphicsItem* pItem : QList<QGraphicsItem*>{pRectangle, pEllipse, pText, pArrow}) {
        pItem->setZValue(layout.view()->nextZ());
        layout.view()->setTopZ(int(pItem->zValue()));
        layout.scene()->addItem(pItem);
    }

    layout.setViewSize(QSize(1500, 1000));
    QCOMPARE(pImage->rect(), QRectF(375, 250, 561, 374));
    QCOMPARE(pRectangle->rect(), QRectF(150, 100, 60, 40));
    QCOMPARE(pEllipse->rect(), QRectF(450, 120, 120, 60));
    QCOMPARE(pText->rect(), QRectF(900, 600, 70, 25));
    int x = 0;
    int y = 0;
    pArrow->getStartPoint(x, y);
    QCOMPARE(QPoint(x, y), QPoint(151, 802));
    pArrow->getEndPoint(x, y);
    QCOMPARE(QPoint(x, y), QPoint(499, 510));
}

void TestLayoutManager::clearWithOnlyAuxiliaryItemsAsksNothing()
{
    LayoutFixture layout;
    QCOMPARE(layout.scene()->items().count(), 21);
    CModalWatch boxes(QMessageBox::staticMetaObject);
    layout.manager()->clearLayout();
    QCOMPARE(boxes.seen().size(), 0);
    QCOMPARE(layout.scene()->items().count(), 21);
}

void TestLayoutManager::clearAnsweredNoKeepsEverything()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    CVXSLayoutItemImage* pImage = layout.pasteImage(QSize(300, 200));
    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::No));
    layout.manager()->clearLayout();
    QVERIFY(seen.m_bShown);
    QCOMPARE(seen.m_strText, QStringLiteral("Are you sure you want to clear the layout?\n"));
    QCOMPARE(seen.m_strTitle, CVXUtilityFns::getAppName());
    QCOMPARE(seen.m_pParent, layout.view());
    QCOMPARE(seen.m_buttonTexts.size(), 2);
    QCOMPARE(seen.m_strDefaultButton, seen.m_strEscapeButton);
    QCOMPARE(layout.scene()->items().count(), 22);
    QCOMPARE(pImage->scene(), layout.scene());
    QCOMPARE(layout.manager()->cellUseCount(0), 1);
    QCOMPARE(selection.count(), 0);
}

void TestLayoutManager::clearAnsweredYesRemovesUserContent()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    layout.pasteImage(QSize(300, 200));
    layout.pasteImage(QSize(300, 200));
    CVXSLayoutItemImage* pFree = layout.pasteImage(QSize(300, 200));
    layout.manager()->setCellUsed(pFree->getCellIndex(), false);
    pFree->setCellIndex(-1);
    auto* pText = new CVXSLayoutItemText(QStringLiteral("note"));
    layout.scene()->addItem(pText);
    pText->setZValue(layout.view()->nextZ());
    layout.view()->setTopZ(int(pText->zValue()));
    const int topZ = layout.view()->topZ();

    QSignalSpy selection(layout.view(), &CVXSLayoutView::selectionChanged);
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Yes));
    layout.manager()->clearLayout();
    QVERIFY(seen.m_bShown);
    QCOMPARE(layout.scene()->items().count(), 21);
    for (int cell = 0; cell < 4; ++cell)
        QCOMPARE(layout.manager()->cellUseCount(cell), 0);
    // The image without a cell released counter 255, which no style uses.
    QCOMPARE(layout.manager()->cellUseCount(255), 255);
    QCOMPARE(selection.count(), 1);
    QCOMPARE(selection.at(0).at(0).value<QGraphicsItem*>(), nullptr);
    QCOMPARE(layout.view()->currentItem(), nullptr);
    QCOMPARE(layout.manager()->currentStyle(), int(Layout2x2));
    QCOMPARE(layout.view()->topZ(), topZ);
    QCOMPARE(countItemsOfType(layout.scene(), 32822), 16);
}

void TestLayoutManager::managerWithoutWindowOrView()
{
    LayoutFixture layout;
    layout.chooseStyle(Layout2x2);
    CVXSLayoutManager* pManager = layout.manager();
    delete pManager->getLayoutWindow();
    QCOMPARE(pManager->getLayoutWindow(), nullptr);
    QCOMPARE(pManager->getLayoutView(), nullptr);
    QCOMPARE(layout.scene()->items().count(), 0);

    QVERIFY(!pManager->isWindowVisible());
    pManager->showLayoutWindow(true);
    pManager->editSelectedText();
    QCOMPARE(pManager->currentStyle(), 0);
    QCOMPARE(pManager->getFirstEmptyCell(true), -1);
    QCOMPARE(pManager->getFirstEmptyCell(false), 0);
    QRect rect;
    QCOMPARE(pManager->getCellRect(0, rect, false), -1);
    QPointF point(10, 10);
    QCOMPARE(pManager->getCellAtPoint(point, false), -1);
    std::unique_ptr<CVXSLayoutItemImage> image(new CVXSLayoutItemImage(QImage(10, 10, QImage::Format_ARGB32)));
    QCOMPARE(pManager->addImageItem(image.get(), true), 0);
    QCOMPARE(image->rect(), QRectF(0, 0, 10, 10));
    pManager->relayoutItems(true);
    pManager->clearLayout();
}

QTEST_MAIN(TestLayoutManager)
#include "tst_layout_manager.moc"
