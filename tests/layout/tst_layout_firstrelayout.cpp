#include "WidgetTestCase.h"

#include <VXSLayoutItemRectangle.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QGraphicsScene>
#include <QtTest>

// The view sizes relayoutItems compares against are kept once per process, so the very
// first re-layout must be checked in a process of its own.
class TestLayoutFirstRelayout : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void firstRelayoutUsesFactorsOfOne();
};

void TestLayoutFirstRelayout::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QLoggingCategory::setFilterRules(QStringLiteral("default.debug=false"));
}

void TestLayoutFirstRelayout::firstRelayoutUsesFactorsOfOne()
{
    CVXSLayoutManager manager;
    CVXSLayoutWindow* pWindow = manager.getLayoutWindow();
    CVXSLayoutView* pView = manager.getLayoutView();
    auto* pRectangle = new CVXSLayoutItemRectangle(100, 50, 40, 20);
    pRectangle->setZValue(pView->nextZ());
    manager.getScene()->addItem(pRectangle);
    const QSize hiddenSize = pView->size();

    // Showing the window gives the view its size: the first re-layout ever, which
    // compares against that same size and so leaves the page as it is.
    pWindow->resize(700, 500);
    pWindow->show();
    QVERIFY(QTest::qWaitForWindowExposed(pWindow));
    QTRY_COMPARE(manager.getScene()->sceneRect(), QRectF(0, 0, pView->width() - 4, pView->height() - 4));
    QVERIFY(pView->size() != hiddenSize);
    QCOMPARE(pRectangle->rect(), QRectF(100, 50, 40, 20));

    // From then on a resize of the window scales the page with the view.
    const QSize shownSize = pView->size();
    pWindow->resize(pWindow->size() + shownSize);
    QTRY_COMPARE(manager.getScene()->sceneRect(), QRectF(0, 0, pView->width() - 4, pView->height() - 4));
    QVERIFY(pView->width() > shownSize.width() && pView->height() > shownSize.height());
    const double sx = double(pView->width()) / shownSize.width();
    const double sy = double(pView->height()) / shownSize.height();
    QCOMPARE(pRectangle->rect(), QRectF(100 * sx, 50 * sy, 40 * sx, 20 * sy));
}

QTEST_MAIN(TestLayoutFirstRelayout)
#include "tst_layout_firstrelayout.moc"
