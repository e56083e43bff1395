#include "LayoutFixture.h"
#include "WidgetTestCase.h"

#include <VXSLayoutConstants.h>
#include <VXSLayoutItemRectangle.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QGraphicsScene>
#include <QtTest>

#include <algorithm>

using namespace VXSLayout;

namespace {

// z values of the given items, in the order given.
QList<double> zValues(const QList<QGraphicsItem*>& items)
{
    QList<double> values;
    for (const QGraphicsItem* pItem : items)
        values << pItem->zValue();
    return values;
}

// z values of every auxiliary item of the view.
QList<double> auxiliaryZ(CVXSLayoutView* pView)
{
    QList<double> values;
    for (QGraphicsItem* pItem : pView->scene()->items(Qt::AscendingOrder)) {
        if (pItem->zValue() <= BaseZ || pView->handleIndex(pItem) != 0 || pView->isCellHighlight(pItem))
            values << pItem->zValue();
    }
    return values;
}

} // namespace

class TestLayoutZOrder : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void zOrderListIsSortedByZ();
    void noSelectionChangesNothing();
    void command_data();
    void command();
    void bringToFrontTwiceRaisesOnce();
    void sendToBackKeepsGaps();
    void bringForwardOnLastListEntryIsGuarded();
    void auxiliaryItemsNeverChangeZ();
    void marksStayAboveItemsInALongSession();

private:
    void endTest() override;

    // Four rectangles side by side with z 26..29, picked through the viewport.
    void drawFour();
    void select(int nIndex);

    LayoutFixture* m_pLayout = nullptr; // created per test
    QList<QGraphicsItem*> m_items;
};

void TestLayoutZOrder::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

void TestLayoutZOrder::init()
{
    m_pLayout = new LayoutFixture(QSize(800, 500));
    drawFour();
}

void TestLayoutZOrder::endTest()
{
    delete m_pLayout;
    m_pLayout = nullptr;
    m_items.clear();
}

void TestLayoutZOrder::drawFour()
{
    m_pLayout->triggerAction("m_pDrawRectAction");
    for (int i = 0; i < 4; ++i) {
        m_pLayout->drag(QPoint(50 + 150 * i, 50), QPoint(150 + 150 * i, 150));
        m_items << m_pLayout->view()->currentItem();
    }
    m_pLayout->triggerAction("m_pArrowAction");
}

void TestLayoutZOrder::select(int nIndex)
{
    const QPoint inside = m_items[nIndex]->boundingRect().center().toPoint();
    m_pLayout->press(inside);
    m_pLayout->release(inside);
    QCOMPARE(m_pLayout->view()->currentItem(), m_items[nIndex]);
}

void TestLayoutZOrder::zOrderListIsSortedByZ()
{
    const QList<QGraphicsItem*> list = m_pLayout->view()->zOrderList();
    QCOMPARE(list.count(), 25);
    for (int i = 1; i < list.count(); ++i)
        QVERIFY(int(list[i - 1]->zValue()) <= int(list[i]->zValue()));
    QList<QGraphicsItem*> layoutItems;
    for (QGraphicsItem* pItem : list) {
        if (m_items.contains(pItem))
            layoutItems << pItem;
    }
    QCOMPARE(layoutItems, m_items);
    // Above the layout items only the highlight and the handles.
    for (int i = list.indexOf(m_items.last()) + 1; i < list.count(); ++i)
        QVERIFY(list[i]->zValue() >= HighlightZ);
}

void TestLayoutZOrder::noSelectionChangesNothing()
{
    m_pLayout->press(QPoint(700, 400));
    QCOMPARE(m_pLayout->view()->currentItem(), nullptr);
    const QList<double> before = zValues(m_pLayout->scene()->items());
    for (int command = BringForward; command <= SendToBack; ++command)
        QCOMPARE(m_pLayout->view()->reorderZ(m_pLayout->view()->currentItem(), command), 16);
    QCOMPARE(zValues(m_pLayout->scene()->items()), before);
}

void TestLayoutZOrder::command_data()
{
    QTest::addColumn<int>("selected");
    QTest::addColumn<int>("command");
    QTest::addColumn<QList<double>>("expected");
    QTest::newRow("bring forward") << 1 << int(BringForward) << QList<double>{26, 28, 27, 29};
    QTest::newRow("send backward") << 2 << int(SendBackward) << QList<double>{26, 28, 27, 29};
    QTest::newRow("bring to front") << 0 << int(BringToFront) << QList<double>{30, 27, 28, 29};
    QTest::newRow("send to back") << 2 << int(SendToBack) << QList<double>{27, 28, 26, 29};
    QTest::newRow("send top item to back") << 3 << int(SendToBack) << QList<double>{27, 28, 29, 26};
    QTest::newRow("unknown command") << 1 << 7 << QList<double>{26, 27, 28, 29};
    // The next entry above the top item is the highlight or a handle.
    QTest::newRow("bring forward the topmost item: nothing changes")
        << 3 << int(BringForward) << QList<double>{26, 27, 28, 29};
    QTest::newRow("send backward the lowest item: nothing changes")
        << 0 << int(SendBackward) << QList<double>{26, 27, 28, 29};
}

void TestLayoutZOrder::command()
{
    QFETCH(int, selected);
    QFETCH(int, command);
    QFETCH(QList<double>, expected);
    select(selected);
    QCOMPARE(m_pLayout->view()->reorderZ(m_pLayout->view()->currentItem(), command), 0);
    QCOMPARE(zValues(m_items), expected);
}

void TestLayoutZOrder::bringToFrontTwiceRaisesOnce()
{
    select(1);
    m_pLayout->view()->reorderZ(m_items[1], BringToFront);
    QCOMPARE(m_items[1]->zValue(), 30.0);
    QCOMPARE(m_pLayout->view()->topZ(), 30);
    m_pLayout->view()->reorderZ(m_items[1], BringToFront);
    QCOMPARE(m_items[1]->zValue(), 30.0);
    QCOMPARE(m_pLayout->view()->topZ(), 30);
    // The next new item still comes out on top.
    m_pLayout->triggerAction("m_pDrawRectAction");
    m_pLayout->drag(QPoint(100, 300), QPoint(200, 400));
    QCOMPARE(m_pLayout->view()->currentItem()->zValue(), 31.0);
}

void TestLayoutZOrder::sendToBackKeepsGaps()
{
    select(1);
    m_pLayout->view()->reorderZ(m_items[1], BringToFront); // 30, leaving 27 free
    QCOMPARE(zValues(m_items), (QList<double>{26, 30, 28, 29}));
    m_pLayout->view()->reorderZ(m_items[1], SendToBack);
    QCOMPARE(zValues(m_items), (QList<double>{28, 26, 29, 30}));
    select(0);
    m_pLayout->view()->reorderZ(m_items[0], BringForward);
    QCOMPARE(zValues(m_items), (QList<double>{29, 26, 28, 30}));
}

void TestLayoutZOrder::bringForwardOnLastListEntryIsGuarded()
{
    // An item stacked above every handle is the list's very last entry.
    auto* pHigh = new CVXSLayoutItemRectangle(600, 300, 50, 50);
    pHigh->setPen(QPen(Qt::black, 0));
    m_pLayout->scene()->addItem(pHigh);
    pHigh->setZValue(5000);
    QCOMPARE(m_pLayout->view()->zOrderList().last(), pHigh);
    QCOMPARE(m_pLayout->view()->reorderZ(pHigh, BringForward), 0);
    QCOMPARE(pHigh->zValue(), 5000.0);
    QCOMPARE(zValues(m_items), (QList<double>{26, 27, 28, 29}));
}

void TestLayoutZOrder::auxiliaryItemsNeverChangeZ()
{
    // Compared without selecting anything again, which would set the handles' z anew and
    // hide a change.
    select(1);
    const QList<double> before = auxiliaryZ(m_pLayout->view());
    QCOMPARE(before.count(), 21);
    for (int command = BringForward; command <= SendToBack; ++command) {
        for (int i = 0; i < 4; ++i)
            QCOMPARE(m_pLayout->view()->reorderZ(m_items[i], command), 0);
    }
    QCOMPARE(auxiliaryZ(m_pLayout->view()), before);
    for (QGraphicsItem* pItem : m_items)
        QVERIFY(pItem->zValue() > BaseZ && pItem->zValue() < HighlightZ);
}

void TestLayoutZOrder::marksStayAboveItemsInALongSession()
{
    // Every "Bring to front" takes a new top z, and nothing ever lowers it: a long session
    // carries the items past the highlight's and the handles' z.
    for (int i = 0; i < 1000; ++i)
        QCOMPARE(m_pLayout->view()->reorderZ(m_items[i % 4], BringToFront), 0);
    CVXSLayoutView* pView = m_pLayout->view();
    QCOMPARE(pView->topZ(), BaseZ + 4 + 1000);
    QCOMPARE(m_items[3]->zValue(), double(pView->topZ()));

    // The handles of a selected item are drawn above every item.
    select(2);
    QList<double> handleZ;
    for (QGraphicsItem* pItem : m_pLayout->scene()->items()) {
        if (pView->handleIndex(pItem) != 0)
            handleZ << pItem->zValue();
    }
    std::sort(handleZ.begin(), handleZ.end());
    QCOMPARE(handleZ, (QList<double>{1031, 1032, 1033, 1034}));

    // The z steps move items among items only: the handles keep their z values.
    QCOMPARE(pView->reorderZ(m_items[3], SendToBack), 0);
    QCOMPARE(pView->reorderZ(m_items[3], BringForward), 0);
    QList<double> after;
    for (QGraphicsItem* pItem : m_pLayout->scene()->items()) {
        if (pView->handleIndex(pItem) != 0)
            after << pItem->zValue();
    }
    std::sort(after.begin(), after.end());
    QCOMPARE(after, handleZ);
    // Items 0 to 3 stood at 1026 to 1029. Send to back: item 3 takes 1026, the others move
    // up one place; bring forward: item 3 swaps with item 0, which is past the marks' band.
    QCOMPARE(zValues(m_items), (QList<double>{1026, 1028, 1029, 1027}));
}

QTEST_MAIN(TestLayoutZOrder)
#include "tst_layout_zorder.moc"
