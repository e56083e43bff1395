#include <VXSLayoutItemRectangle.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>

#include <QtTest>

// The view sizes relayoutItems compares against are kept once per process, so the very
// first re-layout must be checked in a process of its own.
class TestLayoutFirstRelayout : public QObject
{
    Q_OBJECT
private slots:
    void firstRelayoutUsesFactorsOfOne();
};

void TestLayoutFirstRelayout::firstRelayoutUsesFactorsOfOne()
{
    CVXSLayoutManager manager;
    CVXSLayoutView* pView = manager.getLayoutView();
    auto* pRectangle = new CVXSLayoutItemRectangle(100, 50, 40, 20);
    pRectangle->setZValue(pView->nextZ());
    manager.getScene()->addItem(pRectangle);

    // The window is never shown, so nothing but these calls re-lays the page.
    pView->resize(400, 300);
    manager.relayoutItems(true);
    QCOMPARE(pRectangle->rect(), QRectF(100, 50, 40, 20));

    pView->resize(800, 600);
    manager.relayoutItems(true);
    QCOMPARE(pRectangle->rect(), QRectF(200, 100, 80, 40));
}

QTEST_MAIN(TestLayoutFirstRelayout)
#include "tst_layout_firstrelayout.moc"
