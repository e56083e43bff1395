#include "HostFixture.h"
#include "HostTestCase.h"

#include <VXHostMainWindow.h>
#include <VXPreference.h>
#include <VXSSettings.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kEntry = QStringLiteral("Image Layout Window");
// Content smaller than this no longer shows an image one can make out.
const QSize kVisibleContent(100, 75);

QString describe(const QWidget* pWidget)
{
    const QRect r = pWidget->geometry();
    return QStringLiteral("%1 at %2,%3 %4x%5")
        .arg(pWidget->windowTitle())
        .arg(r.x())
        .arg(r.y())
        .arg(r.width())
        .arg(r.height());
}

} // namespace

// How the main window and the workspace's windows are placed, sized and listed.
class TestAppWindows : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void mainWindowStartsMaximizedThenAsLeft();
    void newWindowsOpenInsideWorkspace_data();
    void newWindowsOpenInsideWorkspace();
    void newWindowsKeepOffLayoutWindow();
    void cascadeLeavesContentShowing();
    void tileKeepsMainWindowSize();
    void windowMenuListsOpenWindows();
    void windowMenuRestoresMinimizedWindow();

private:

    void showLayoutWindow();
    QList<QMdiSubWindow*> shownSubWindows() const;
    QList<QAction*> windowListActions() const;
    // An image file of the size, in the test's folder.
    QString imageFile(const QSize& size);

    QTemporaryDir m_dir;
};

void TestAppWindows::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

void TestAppWindows::showLayoutWindow()
{
    CVXUtilityFns::getAction(kEntry)->trigger();
    QVERIFY(host()->layoutSubWindow()->isVisible());
}

QList<QMdiSubWindow*> TestAppWindows::shownSubWindows() const
{
    QList<QMdiSubWindow*> shown;
    const QList<QMdiSubWindow*> all = host()->area()->subWindowList(QMdiArea::CreationOrder);
    for (QMdiSubWindow* pSubWindow : all) {
        if (pSubWindow->isVisible())
            shown << pSubWindow;
    }
    return shown;
}

QList<QAction*> TestAppWindows::windowListActions() const
{
    QMenu* pMenu = host()->window()->menuBar()->findChild<QMenu*>(QStringLiteral("menuWindow"));
    emit pMenu->aboutToShow();
    const QList<QAction*> actions = pMenu->actions();
    return actions.mid(actions.indexOf(host()->action(QStringLiteral("actionCascade"))) + 2);
}

QString TestAppWindows::imageFile(const QSize& size)
{
    const QString strPath = m_dir.filePath(QStringLiteral("image%1x%2.png").arg(size.width()).arg(size.height()));
    if (!QFile::exists(strPath)) {
        QImage image(size, QImage::Format_RGB32);
        image.fill(Qt::darkGreen);
        image.save(strPath);
    }
    return strPath;
}

void TestAppWindows::mainWindowStartsMaximizedThenAsLeft()
{
    endHost();
    CVXPreference::getSettings()->setValue(QStringLiteral("MainWindow/geometry"), QVariant());
    {
        CVXHostMainWindow first;
        first.showWithLastGeometry();
        QVERIFY(first.isMaximized());
        first.showNormal();
        first.setGeometry(QRect(60, 70, 700, 500));
        QVERIFY(first.close());
    }
    CVXHostMainWindow second;
    second.showWithLastGeometry();
    QVERIFY(!second.isMaximized());
    QCOMPARE(second.geometry(), QRect(60, 70, 700, 500));
    QVERIFY(second.close());
}

void TestAppWindows::newWindowsOpenInsideWorkspace_data()
{
    QTest::addColumn<QSize>("mainWindow");
    QTest::addColumn<QSize>("image");
    QTest::newRow("small images, large workspace") << QSize(1200, 900) << QSize(120, 80);
    QTest::newRow("large images, large workspace") << QSize(1200, 900) << QSize(3000, 2000);
    QTest::newRow("large images, small workspace") << QSize(640, 480) << QSize(3000, 2000);
    QTest::newRow("tall images, small workspace") << QSize(640, 480) << QSize(300, 2000);
}

void TestAppWindows::newWindowsOpenInsideWorkspace()
{
    QFETCH(QSize, mainWindow);
    QFETCH(QSize, image);
    host()->window()->resize(mainWindow);
    QCoreApplication::processEvents();
    const QString strPath = imageFile(image);
    QStringList paths;
    for (int i = 0; i < 8; ++i)
        paths << strPath;
    host()->window()->openImageFiles(paths);
    const QRect viewport = host()->area()->viewport()->rect();
    const QList<QMdiSubWindow*> windows = host()->imageSubWindows();
    QCOMPARE(windows.size(), 8);
    for (const QMdiSubWindow* pSubWindow : windows)
        QVERIFY2(viewport.contains(pSubWindow->geometry()), qPrintable(describe(pSubWindow)));
}

void TestAppWindows::newWindowsKeepOffLayoutWindow()
{
    showLayoutWindow();
    const QRect layout = host()->layoutSubWindow()->geometry();
    host()->window()->openSamples();
    host()->window()->openImageFiles({imageFile(QSize(400, 300)), imageFile(QSize(2000, 2000))});
    const QList<QMdiSubWindow*> windows = host()->imageSubWindows();
    QCOMPARE(windows.size(), 5);
    const QRect viewport = host()->area()->viewport()->rect();
    for (const QMdiSubWindow* pSubWindow : windows) {
        QVERIFY2(!pSubWindow->geometry().intersects(layout), qPrintable(describe(pSubWindow)));
        QVERIFY2(viewport.contains(pSubWindow->geometry()), qPrintable(describe(pSubWindow)));
    }
}

void TestAppWindows::cascadeLeavesContentShowing()
{
    host()->window()->openSamples();
    showLayoutWindow();
    host()->action(QStringLiteral("actionCascade"))->trigger();
    const QRect viewport = host()->area()->viewport()->rect();
    const QList<QMdiSubWindow*> windows = shownSubWindows();
    QCOMPARE(windows.size(), 4);
    for (const QMdiSubWindow* pSubWindow : windows) {
        const QSize content = pSubWindow->widget()->size();
        QVERIFY2(content.width() >= kVisibleContent.width() && content.height() >= kVisibleContent.height(),
                 qPrintable(describe(pSubWindow)));
        QVERIFY2(viewport.contains(pSubWindow->geometry().topLeft()), qPrintable(describe(pSubWindow)));
    }
}

void TestAppWindows::tileKeepsMainWindowSize()
{
    // The layout window cannot be made as small as a quarter of this workspace.
    host()->window()->resize(1000, 650);
    QCoreApplication::processEvents();
    host()->window()->openSamples();
    showLayoutWindow();
    const QSize before = host()->window()->size();
    host()->action(QStringLiteral("actionTile"))->trigger();
    QCoreApplication::processEvents();
    QCOMPARE(host()->window()->size(), before);
    const QRect viewport = host()->area()->viewport()->rect();
    const QList<QMdiSubWindow*> windows = shownSubWindows();
    QCOMPARE(windows.size(), 4);
    for (const QMdiSubWindow* pSubWindow : windows) {
        QVERIFY2(viewport.contains(pSubWindow->geometry().topLeft()), qPrintable(describe(pSubWindow)));
        QVERIFY2(pSubWindow->widget()->height() >= kVisibleContent.height(), qPrintable(describe(pSubWindow)));
    }
}

void TestAppWindows::windowMenuListsOpenWindows()
{
    host()->window()->openSamples();
    showLayoutWindow();
    QList<QAction*> actions = windowListActions();
    const QList<QMdiSubWindow*> windows = shownSubWindows();
    QCOMPARE(actions.size(), windows.size());
    for (int i = 0; i < actions.size(); ++i) {
        QVERIFY(actions[i]->isCheckable());
        QVERIFY2(actions[i]->text().endsWith(windows[i]->windowTitle()), qPrintable(actions[i]->text()));
        QCOMPARE(actions[i]->isChecked(), windows[i] == host()->area()->activeSubWindow());
    }
    // The layout window was shown last, so it is the active one.
    QVERIFY(actions.last()->isChecked());

    actions[1]->trigger();
    QCOMPARE(host()->area()->activeSubWindow(), windows[1]);
    actions = windowListActions();
    QVERIFY(actions[1]->isChecked());
    QVERIFY(!actions.last()->isChecked());

    // Closed windows leave the list.
    QVERIFY(windows[0]->close());
    QCOMPARE(windowListActions().size(), windows.size() - 1);
}

void TestAppWindows::windowMenuRestoresMinimizedWindow()
{
    host()->window()->openSamples();
    QMdiSubWindow* pFirst = host()->imageSubWindows().first();
    pFirst->showMinimized();
    QVERIFY(pFirst->isMinimized());
    windowListActions().first()->trigger();
    QVERIFY(!pFirst->isMinimized());
    QCOMPARE(host()->area()->activeSubWindow(), pFirst);
}

QTEST_MAIN(TestAppWindows)
#include "tst_app_windows.moc"
