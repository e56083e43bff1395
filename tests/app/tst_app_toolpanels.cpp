#include "HostFixture.h"

#include "WidgetTestCase.h"

#include <VXHostMainWindow.h>

#include <QAction>
#include <QDockWidget>
#include <QMenu>
#include <QMenuBar>
#include <QtTest>

namespace {

QMenu* menuNamed(const CHostFixture& host, const char* pName)
{
    return host.window()->menuBar()->findChild<QMenu*>(QString::fromLatin1(pName));
}

} // namespace

// The layout tool's "Figure" panel as a dock of the host, shown and hidden from the View
// menu and remembered from one session to the next (the next start shows what the user
// left when quitting).
class TestAppToolPanels : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void figureDockFromViewMenu();
    void dockVisibilityIsRemembered();

private:
    static QDockWidget* figureDock(const CHostFixture& host);
};

void TestAppToolPanels::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

QDockWidget* TestAppToolPanels::figureDock(const CHostFixture& host)
{
    return host.window()->findChild<QDockWidget*>(QStringLiteral("dock_figureProperties"));
}

void TestAppToolPanels::figureDockFromViewMenu()
{
    CHostFixture host;
    QVERIFY(QTest::qWaitForWindowExposed(host.window()));
    QMenu* pView = menuNamed(host, "menuView");
    QVERIFY(pView);
    QVERIFY(pView->menuAction()->isVisible());
    QAction* pToggle = host.action(QStringLiteral("actionShow_figureProperties"));
    QVERIFY(pToggle);
    QVERIFY(pView->actions().contains(pToggle));
    QCOMPARE(pToggle->text(), QStringLiteral("Figure"));
    QDockWidget* pDock = figureDock(host);
    QVERIFY(pDock);
    QCOMPARE(host.window()->dockWidgetArea(pDock), Qt::RightDockWidgetArea);
    QVERIFY(pDock->widget() && pDock->widget()->objectName() == QStringLiteral("figureProperties"));
    pToggle->trigger();
    QTRY_VERIFY2(pDock->isVisible(), "View > Figure shows the panel");
    pToggle->trigger();
    QTRY_VERIFY2(!pDock->isVisible(), "and hides it again");
}

void TestAppToolPanels::dockVisibilityIsRemembered()
{
    {
        CHostFixture host;
        QVERIFY(QTest::qWaitForWindowExposed(host.window()));
        figureDock(host)->setVisible(true);
        QVERIFY(host.action(QStringLiteral("actionShow_figureProperties"))->isChecked());
        QVERIFY(host.window()->close());
    }
    {
        CHostFixture host;
        QVERIFY(QTest::qWaitForWindowExposed(host.window()));
        QTRY_VERIFY(figureDock(host)->isVisible());
        figureDock(host)->close();
        QVERIFY(host.window()->close());
    }
    CHostFixture host;
    QVERIFY(QTest::qWaitForWindowExposed(host.window()));
    QVERIFY(!figureDock(host)->isVisible());
}

QTEST_MAIN(TestAppToolPanels)
#include "tst_app_toolpanels.moc"
