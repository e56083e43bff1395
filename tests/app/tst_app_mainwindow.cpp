#include "HostFixture.h"
#include "HostTestCase.h"

#include <VXHostMainWindow.h>
#include <VXSChildWindow.h>
#include <VXSSequenceWindow.h>
#include <VXSWorkspace.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QtTest>

namespace {

QMenu* menuNamed(QMainWindow* pWindow, const QString& strObjectName)
{
    return pWindow->menuBar()->findChild<QMenu*>(strObjectName);
}

QStringList actionNames(const QMenu* pMenu)
{
    QStringList names;
    const QList<QAction*> actions = pMenu->actions();
    for (const QAction* pAction : actions)
        names << (pAction->isSeparator() ? QStringLiteral("-") : pAction->objectName());
    return names;
}

} // namespace

class TestAppMainWindow : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void hasWorkspaceRegistered();
    void menusHoldTheirActions_data();
    void menusHoldTheirActions();
    void actionTexts_data();
    void actionTexts();
    void openSamplesOpensThreeWindows();
    void samplesShowTheirContent();
    void activeChildFollowsActivation();
    void announcedToolActionJoinsToolsMenu_data();
    void announcedToolActionJoinsToolsMenu();
    void tileArrangesWithoutOverlap();
    void cascadeStaggersWindows();
    void quitClosesMainWindow();
    void closingImageWindowDeletesIt();
    void deletingMainWindowTakesItsWindows();

private:
    void endTest() override;

    void openSamples();

};

void TestAppMainWindow::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestAppMainWindow::endTest()
{
    endHost();
    QCOMPARE(CVXSWorkspace::instance()->mdiArea(), nullptr);
}

void TestAppMainWindow::openSamples()
{
    host()->action(QStringLiteral("actionOpenSamples"))->trigger();
}

void TestAppMainWindow::hasWorkspaceRegistered()
{
    QVERIFY(host()->area());
    QCOMPARE(host()->window()->centralWidget(), host()->area());
    QCOMPARE(CVXSWorkspace::instance()->mdiArea(), host()->area());
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), nullptr);
}

void TestAppMainWindow::menusHoldTheirActions_data()
{
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QStringList>("actions");
    QTest::newRow("File") << "menuFile"
                          << QStringList {"actionOpenImages", "actionOpenSequence", "actionOpenSamples", "-",
                                          "actionOpenLayout", "actionSaveLayout", "actionSaveLayoutAs", "-",
                                          "actionExportFigure", "actionNewStudyGrid", "-", "actionOpenRecent", "-",
                                          "actionQuit"};
    // Undo and Redo follow the active tool window.
    QTest::newRow("Edit") << "menuEdit" << QStringList {"actionUndo", "actionRedo"};
    // The layout tool's figure commands.
    QTest::newRow("Figure") << "menuFigure"
                            << QStringList {"actionExportFigure", "actionLabelPanels", "actionAddScaleBar",
                                            "actionRemoveScaleBar", "actionSetPixelSize", "actionAddColourBar"};
    // Tools start with what the built-in tools announce; plugins add theirs.
    QTest::newRow("Tools") << "menuTools" << QStringList {"Image Layout Window"};
    // The open windows follow the separator.
    QTest::newRow("Window") << "menuWindow" << QStringList {"actionTile", "actionCascade", "-"};
}

void TestAppMainWindow::menusHoldTheirActions()
{
    QFETCH(QString, menu);
    QFETCH(QStringList, actions);
    QMenu* pMenu = menuNamed(host()->window(), menu);
    QVERIFY(pMenu);
    QCOMPARE(actionNames(pMenu), actions);
}

void TestAppMainWindow::actionTexts_data()
{
    QTest::addColumn<QString>("objectName");
    QTest::addColumn<QString>("text");
    QTest::newRow("open images") << "actionOpenImages" << "&Open Images...";
    QTest::newRow("open sequence") << "actionOpenSequence" << "Open &Sequence...";
    QTest::newRow("open samples") << "actionOpenSamples" << "Open Samples";
    QTest::newRow("open layout") << "actionOpenLayout" << "Open &Layout...";
    QTest::newRow("save layout") << "actionSaveLayout" << "Save La&yout";
    QTest::newRow("save layout as") << "actionSaveLayoutAs" << "Save Layout &As...";
    QTest::newRow("quit") << "actionQuit" << "&Quit";
    QTest::newRow("undo with no tool window") << "actionUndo" << "&Undo";
    QTest::newRow("redo with no tool window") << "actionRedo" << "&Redo";
    QTest::newRow("tile") << "actionTile" << "&Tile";
    QTest::newRow("cascade") << "actionCascade" << "&Cascade";
}

void TestAppMainWindow::actionTexts()
{
    QFETCH(QString, objectName);
    QFETCH(QString, text);
    QAction* pAction = host()->action(objectName);
    QVERIFY(pAction);
    QCOMPARE(pAction->text(), text);
    // Plugins find the host's actions by name.
    QCOMPARE(CVXUtilityFns::getAction(objectName), pAction);
}

void TestAppMainWindow::openSamplesOpensThreeWindows()
{
    openSamples();
    QCOMPARE(host()->imageWindowTitles(),
             QStringList({"Sample X-ray", "Sample Luminescence", "Sample Fluorescence Sequence"}));
    QVERIFY(!host()->imageWindow(0)->isSequenceWindow());
    QVERIFY(!host()->imageWindow(1)->isSequenceWindow());
    auto* pSequence = qobject_cast<CVXSSequenceWindow*>(host()->imageWindow(2));
    QVERIFY(pSequence);
    QVERIFY(pSequence->frameCount() >= 12);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pSequence);
    for (QMdiSubWindow* pSubWindow : host()->imageSubWindows())
        QVERIFY(pSubWindow->isVisible());
}

void TestAppMainWindow::samplesShowTheirContent()
{
    openSamples();
    // The X-ray's 16-bit counts are shown stretched over the whole grey scale.
    const QImage xray = host()->imageWindow(0)->image();
    QCOMPARE(xray.format(), QImage::Format_Grayscale8);
    QCOMPARE(xray.size(), QSize(512, 768));
    int nDarkest = 255;
    int nBrightest = 0;
    for (int y = 0; y < xray.height(); ++y) {
        const uchar* pLine = xray.constScanLine(y);
        nDarkest = qMin(nDarkest, int(*std::min_element(pLine, pLine + xray.width())));
        nBrightest = qMax(nBrightest, int(*std::max_element(pLine, pLine + xray.width())));
    }
    QCOMPARE(nDarkest, 0);
    QCOMPARE(nBrightest, 255);
    const QImage luminescence = host()->imageWindow(1)->image();
    QCOMPARE(luminescence.size(), QSize(480, 640));
    QVERIFY(!luminescence.isGrayscale());
}

void TestAppMainWindow::activeChildFollowsActivation()
{
    openSamples();
    const QList<QMdiSubWindow*> windows = host()->imageSubWindows();
    host()->area()->setActiveSubWindow(windows[0]);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), host()->imageWindow(0));
    host()->area()->setActiveSubWindow(windows[1]);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), host()->imageWindow(1));
    // Using a tool keeps the image the user worked in last.
    host()->action(QStringLiteral("Image Layout Window"))->setChecked(true);
    QVERIFY(host()->layoutSubWindow());
    QCOMPARE(host()->area()->activeSubWindow(), host()->layoutSubWindow());
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), host()->imageWindow(1));
}

void TestAppMainWindow::announcedToolActionJoinsToolsMenu_data()
{
    QTest::addColumn<int>("announcements");
    QTest::newRow("announced once") << 1;
    QTest::newRow("announced three times") << 3;
}

void TestAppMainWindow::announcedToolActionJoinsToolsMenu()
{
    QFETCH(int, announcements);
    QAction action(QStringLiteral("Measure"));
    action.setObjectName(QStringLiteral("actionMeasureTool"));
    action.setCheckable(true);
    for (int i = 0; i < announcements; ++i)
        CVXSWorkspace::instance()->announceToolAction(&action, false, true);

    QMenu* pTools = menuNamed(host()->window(), QStringLiteral("menuTools"));
    QCOMPARE(actionNames(pTools), QStringList({"Image Layout Window", "actionMeasureTool"}));
    QVERIFY(!action.isEnabled());
    QVERIFY(action.isChecked());
}

void TestAppMainWindow::tileArrangesWithoutOverlap()
{
    openSamples();
    const QList<QMdiSubWindow*> windows = host()->imageSubWindows();
    host()->action(QStringLiteral("actionTile"))->trigger();
    const QRect viewport = host()->area()->viewport()->rect();
    int nCovered = 0;
    for (int i = 0; i < windows.size(); ++i) {
        QVERIFY2(viewport.contains(windows[i]->geometry()), qPrintable(windows[i]->windowTitle()));
        nCovered += windows[i]->width() * windows[i]->height();
        for (int j = i + 1; j < windows.size(); ++j)
            QVERIFY(!windows[i]->geometry().intersects(windows[j]->geometry()));
    }
    // Tiling uses the workspace rather than leaving the windows small.
    QVERIFY(nCovered > viewport.width() * viewport.height() / 2);
}

void TestAppMainWindow::cascadeStaggersWindows()
{
    openSamples();
    host()->action(QStringLiteral("actionTile"))->trigger();
    host()->action(QStringLiteral("actionCascade"))->trigger();
    QList<QMdiSubWindow*> windows = host()->imageSubWindows();
    QCOMPARE(windows.size(), 3);
    std::sort(windows.begin(), windows.end(), [](const QWidget* pA, const QWidget* pB) { return pA->x() < pB->x(); });
    for (int i = 1; i < windows.size(); ++i) {
        QVERIFY(windows[i]->x() > windows[i - 1]->x());
        QVERIFY(windows[i]->y() > windows[i - 1]->y());
        QVERIFY(windows[i]->geometry().intersects(windows[i - 1]->geometry()));
    }
}

void TestAppMainWindow::quitClosesMainWindow()
{
    host()->action(QStringLiteral("actionQuit"))->trigger();
    QVERIFY(!host()->window()->isVisible());
}

void TestAppMainWindow::closingImageWindowDeletesIt()
{
    openSamples();
    QPointer<QMdiSubWindow> pFirst = host()->imageSubWindows().first();
    QVERIFY(pFirst->close());
    QTRY_VERIFY(pFirst.isNull());
    QCOMPARE(host()->imageWindowTitles(), QStringList({"Sample Luminescence", "Sample Fluorescence Sequence"}));
}

void TestAppMainWindow::deletingMainWindowTakesItsWindows()
{
    openSamples();
    host()->action(QStringLiteral("Image Layout Window"))->setChecked(true);
    QPointer<QMdiSubWindow> pLayout = host()->layoutSubWindow();
    QPointer<QWidget> pLayoutWindow = pLayout->widget();
    QPointer<QMdiSubWindow> pImage = host()->imageSubWindows().first();
    QVERIFY(pLayout && pLayoutWindow && pImage);
    endHost();
    QVERIFY(pLayout.isNull());
    QVERIFY(pLayoutWindow.isNull());
    QVERIFY(pImage.isNull());
    QCOMPARE(CVXUtilityFns::getAction(QStringLiteral("Image Layout Window")), nullptr);
}

QTEST_MAIN(TestAppMainWindow)
#include "tst_app_mainwindow.moc"
