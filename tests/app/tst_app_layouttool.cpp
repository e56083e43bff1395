#include "HostFixture.h"
#include "HostTestCase.h"

#include <VXHostMainWindow.h>
#include <VXPreference.h>
#include <VXSMdiSubWindow.h>
#include <VXSSettings.h>
#include <VXToolWindowPlacement.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <QtTest>

namespace {
const QString kEntry = QStringLiteral("Image Layout Window");
// The window comes from the plugin module, whose classes the test does not link.
const char* const kLayoutWindowClass = "CVXSLayoutWindow";

QString describe(const QRect& rect)
{
    return QStringLiteral("%1,%2 %3x%4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

// Presses the left button at the point of the window, moves by the distance in steps and
// releases, as a user drags.
void dragWithin(QWidget* pWindow, QPoint from, QPoint distance)
{
    constexpr int nSteps = 5;
    QTest::mousePress(pWindow, Qt::LeftButton, Qt::NoModifier, from);
    for (int i = 1; i <= nSteps; ++i)
        QTest::mouseMove(pWindow, from + distance * i / nSteps);
    QTest::mouseRelease(pWindow, Qt::LeftButton, Qt::NoModifier, from + distance);
}
} // namespace

class TestAppLayoutTool : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void entryIsCheckableAndUnchecked();
    void windowIsBuiltOnFirstUse();
    void entryShowsAndHidesWindow_data();
    void entryShowsAndHidesWindow();
    void subWindowFitsLayoutWindow();
    void closingSubWindowHidesAndUnchecks_data();
    void closingSubWindowHidesAndUnchecks();
    void hidingSubWindowUnchecks();
    void entryRestoresMinimizedWindow();
    void wholeToolbarShowsAtFirstStart();
    void windowComesBackWhereTheUserLeftIt();
    void storedPlaceIsKeptInsideTheWorkspace_data();
    void storedPlaceIsKeptInsideTheWorkspace();

private:

    QAction* entry() const;
    void setEntryChecked(bool bChecked, bool bThroughMenu);

};

void TestAppLayoutTool::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestAppLayoutTool::init()
{
    // Each test starts as on the first start: no place is stored for the window.
    CVXPreference::getSettings()->setValue(CVXToolWindowPlacement::settingsKey(kEntry), QVariant());
    QVERIFY(startHost());
}

QAction* TestAppLayoutTool::entry() const
{
    return CVXUtilityFns::getAction(kEntry);
}

void TestAppLayoutTool::setEntryChecked(bool bChecked, bool bThroughMenu)
{
    if (bThroughMenu) {
        // Triggering toggles, as a click on the menu entry does.
        if (entry()->isChecked() != bChecked)
            entry()->trigger();
    } else {
        entry()->setChecked(bChecked);
    }
}

void TestAppLayoutTool::entryIsCheckableAndUnchecked()
{
    QAction* pEntry = entry();
    QVERIFY(pEntry);
    QCOMPARE(pEntry->text(), kEntry);
    QVERIFY(pEntry->isCheckable());
    QVERIFY(!pEntry->isChecked());
    QVERIFY(pEntry->isEnabled());
    QMenu* pTools = host()->window()->menuBar()->findChild<QMenu*>(QStringLiteral("menuTools"));
    QVERIFY(pTools->actions().contains(pEntry));
}

void TestAppLayoutTool::windowIsBuiltOnFirstUse()
{
    QCOMPARE(host()->layoutSubWindow(), nullptr);
    entry()->setChecked(true);
    QMdiSubWindow* pSubWindow = host()->layoutSubWindow();
    QVERIFY(pSubWindow);
    QVERIFY(qobject_cast<CVXSMdiSubWindow*>(pSubWindow));
    QVERIFY(pSubWindow->widget()->inherits(kLayoutWindowClass));
    QCOMPARE(pSubWindow->mdiArea(), host()->area());
    // Showing it again reuses the same window.
    entry()->setChecked(false);
    entry()->setChecked(true);
    QCOMPARE(host()->layoutSubWindow(), pSubWindow);
    int nLayoutWindows = 0;
    const QList<QWidget*> widgets = host()->area()->findChildren<QWidget*>();
    for (const QWidget* pWidget : widgets)
        nLayoutWindows += pWidget->inherits(kLayoutWindowClass) ? 1 : 0;
    QCOMPARE(nLayoutWindows, 1);
}

void TestAppLayoutTool::entryShowsAndHidesWindow_data()
{
    QTest::addColumn<bool>("throughMenu");
    QTest::newRow("menu entry triggered") << true;
    QTest::newRow("entry checked by a plugin") << false;
}

void TestAppLayoutTool::entryShowsAndHidesWindow()
{
    QFETCH(bool, throughMenu);
    setEntryChecked(true, throughMenu);
    QMdiSubWindow* pSubWindow = host()->layoutSubWindow();
    QVERIFY(pSubWindow->isVisible());
    QVERIFY(pSubWindow->widget()->isVisible());
    QCOMPARE(host()->area()->activeSubWindow(), pSubWindow);

    setEntryChecked(false, throughMenu);
    QVERIFY(!pSubWindow->isVisible());
    QVERIFY(!entry()->isChecked());

    setEntryChecked(true, throughMenu);
    QVERIFY(pSubWindow->isVisible());
    QVERIFY(entry()->isChecked());
}

void TestAppLayoutTool::subWindowFitsLayoutWindow()
{
    entry()->setChecked(true);
    QMdiSubWindow* pSubWindow = host()->layoutSubWindow();
    QWidget* pLayoutWindow = pSubWindow->widget();
    // The window gets at least its minimum size inside the frame.
    QCOMPARE(pSubWindow->contentsRect().size(), pLayoutWindow->size());
    QVERIFY(pLayoutWindow->width() >= pLayoutWindow->minimumWidth());
    QVERIFY(pLayoutWindow->height() >= pLayoutWindow->minimumHeight());
    QVERIFY2(host()->area()->viewport()->rect().contains(pSubWindow->geometry()),
             qPrintable(describe(pSubWindow->geometry())));
}

void TestAppLayoutTool::closingSubWindowHidesAndUnchecks_data()
{
    QTest::addColumn<int>("reopenings");
    QTest::newRow("closed once") << 0;
    QTest::newRow("closed after reopening") << 2;
}

void TestAppLayoutTool::closingSubWindowHidesAndUnchecks()
{
    QFETCH(int, reopenings);
    entry()->setChecked(true);
    QPointer<QMdiSubWindow> pSubWindow = host()->layoutSubWindow();
    QPointer<QWidget> pLayoutWindow = pSubWindow->widget();
    for (int i = 0; i <= reopenings; ++i) {
        entry()->setChecked(true);
        QVERIFY(pSubWindow->isVisible());
        // The layout window refuses to close and hides its sub-window instead.
        QVERIFY(!pSubWindow->close());
        QVERIFY(!entry()->isChecked());
        QVERIFY(!pSubWindow->isVisible());
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(pSubWindow);
    QVERIFY(pLayoutWindow);
    entry()->setChecked(true);
    QVERIFY(pSubWindow->isVisible());
    QVERIFY(pLayoutWindow->isVisible());
}

void TestAppLayoutTool::hidingSubWindowUnchecks()
{
    entry()->setChecked(true);
    auto* pSubWindow = qobject_cast<CVXSMdiSubWindow*>(host()->layoutSubWindow());
    pSubWindow->hideWindow();
    QVERIFY(!entry()->isChecked());
    pSubWindow->showWindow();
    QVERIFY(entry()->isChecked());
    // Hiding the whole main window is not closing the tool.
    host()->window()->hide();
    QVERIFY(entry()->isChecked());
}

void TestAppLayoutTool::entryRestoresMinimizedWindow()
{
    entry()->setChecked(true);
    QMdiSubWindow* pSubWindow = host()->layoutSubWindow();
    pSubWindow->showMinimized();
    QVERIFY(pSubWindow->isMinimized());
    // The entry no longer claims the window is up, so choosing it brings the window back.
    QVERIFY(!entry()->isChecked());
    entry()->trigger();
    QVERIFY(!pSubWindow->isMinimized());
    QVERIFY(pSubWindow->isVisible());
    QVERIFY(entry()->isChecked());
    QCOMPARE(host()->area()->activeSubWindow(), pSubWindow);
}

void TestAppLayoutTool::wholeToolbarShowsAtFirstStart()
{
    entry()->setChecked(true);
    QMdiSubWindow* pSubWindow = host()->layoutSubWindow();
    auto* pToolBar = pSubWindow->widget()->findChild<QToolBar*>();
    auto* pExtension = pToolBar->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"));
    auto* pStyles = pToolBar->findChild<QComboBox*>(QStringLiteral("m_pLayoutStyleCombo"));
    QVERIFY(pExtension && pStyles);
    // A tool bar hides what does not fit and offers it behind its extension button.
    QTRY_VERIFY(pStyles->isVisible());
    QVERIFY(pToolBar->rect().contains(pStyles->geometry()));
    QVERIFY(!pExtension->isVisible());
    QVERIFY(host()->area()->viewport()->rect().contains(pSubWindow->geometry()));
}

void TestAppLayoutTool::windowComesBackWhereTheUserLeftIt()
{
    entry()->setChecked(true);
    QMdiSubWindow* pSubWindow = host()->layoutSubWindow();
    const QRect first = pSubWindow->geometry();
    // The user drags the window by its title bar, then its bottom-right corner.
    dragWithin(host()->window(), pSubWindow->mapTo(host()->window(), QPoint(pSubWindow->width() / 2, 8)), QPoint(-40, 70));
    const QPoint corner(pSubWindow->width() - 2, pSubWindow->height() - 2);
    dragWithin(host()->window(), pSubWindow->mapTo(host()->window(), corner), QPoint(90, 60));
    const QRect left = pSubWindow->geometry();
    QCOMPARE(left, QRect(first.topLeft() + QPoint(-40, 70), first.size() + QSize(90, 60)));

    // The program quits and starts again.
    QVERIFY(startHost());
    entry()->setChecked(true);
    QCOMPARE(host()->layoutSubWindow()->geometry(), left);
}

void TestAppLayoutTool::storedPlaceIsKeptInsideTheWorkspace_data()
{
    QTest::addColumn<QRect>("stored");
    QTest::newRow("beyond the right and bottom edges") << QRect(2500, 1800, 800, 600);
    QTest::newRow("above and left of the workspace") << QRect(-900, -700, 800, 600);
    QTest::newRow("larger than the workspace") << QRect(0, 0, 4000, 3000);
}

// A place stored while the workspace was larger, or on another screen.
void TestAppLayoutTool::storedPlaceIsKeptInsideTheWorkspace()
{
    QFETCH(QRect, stored);
    CVXPreference::getSettings()->setValue(CVXToolWindowPlacement::settingsKey(kEntry), stored);
    entry()->setChecked(true);
    QMdiSubWindow* pSubWindow = host()->layoutSubWindow();
    const QRect room = host()->area()->viewport()->rect();
    QVERIFY2(room.contains(pSubWindow->geometry()), qPrintable(describe(pSubWindow->geometry())));
    // As much of the stored size as fits.
    QCOMPARE(pSubWindow->size(), stored.size().boundedTo(room.size()));
}

QTEST_MAIN(TestAppLayoutTool)
#include "tst_app_layouttool.moc"
