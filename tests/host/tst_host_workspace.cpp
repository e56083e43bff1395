#include "TestPictures.h"
#include "VXSChildWindow.h"
#include "VXSMdiSubWindow.h"
#include "VXSSequenceWindow.h"
#include "VXSWorkspace.h"
#include "VXToolPluginBase.h"
#include "VXUtilityFns.h"

#include "WidgetTestCase.h"

#include <QAction>
#include <QClipboard>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QtTest>

namespace {

QVector<QImage> twoFrames()
{
    return {solidImage(QSize(30, 20), Qt::darkRed, QImage::Format_RGB32),
            solidImage(QSize(30, 20), Qt::darkBlue, QImage::Format_RGB32)};
}

// Shows the widget in a new sub-window of the area, as the host does for an opened file.
QMdiSubWindow* openInArea(QMdiArea& area, QWidget* pWidget)
{
    QMdiSubWindow* pSubWindow = area.addSubWindow(pWidget);
    pSubWindow->show();
    return pSubWindow;
}

} // namespace

class TestHostWorkspace : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void noAreaMeansNoActiveChild();
    void imageWindowStaysActiveWhileToolIsUsed();
    void minimizedImageWindowStaysActive();
    void closedImageWindowIsNotActive();
    void deletedImageWindowIsNotActive();
    void currentSubWindowServesBeforeAnyActivation();
    void deletedAreaMeansNoActiveChild();
    void announceToolAction();
    void addWidgetToWorkspace_data();
    void addWidgetToWorkspace();
    void addWidgetWithoutWorkspaceKeepsWidget();
    void subWindowShowHideMove();
    void closingToolSubWindowKeepsIt();
    void shootCopyToClipBoard_data();
    void shootCopyToClipBoard();
    void shootWithoutActiveWindowLeavesClipboard();
    void baseDefaults();

private:
    void endTest() override;

    // The area every test works in; shown because activation needs a visible workspace.
    QScopedPointer<QMdiArea> m_pArea;
};

void TestHostWorkspace::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestHostWorkspace::init()
{
    m_pArea.reset(new QMdiArea);
    m_pArea->resize(640, 480);
    m_pArea->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_pArea.data()));
    CVXSWorkspace::instance()->setMdiArea(m_pArea.data());
}

void TestHostWorkspace::endTest()
{
    CVXSWorkspace::instance()->setMdiArea(nullptr);
    m_pArea.reset();
}

void TestHostWorkspace::noAreaMeansNoActiveChild()
{
    openInArea(*m_pArea, new CVXSChildWindow(solidImage(QSize(10, 10), Qt::red, QImage::Format_RGB32)));
    CVXSWorkspace::instance()->setMdiArea(nullptr);
    QCOMPARE(CVXSWorkspace::instance()->mdiArea(), nullptr);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), nullptr);
}

void TestHostWorkspace::imageWindowStaysActiveWhileToolIsUsed()
{
    auto* pChild = new CVXSChildWindow(solidImage(QSize(10, 10), Qt::red, QImage::Format_RGB32));
    QMdiSubWindow* pImageWindow = openInArea(*m_pArea, pChild);
    QMdiSubWindow* pToolWindow = openInArea(*m_pArea, new QLabel(QStringLiteral("tool")));

    m_pArea->setActiveSubWindow(pImageWindow);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pChild);
    m_pArea->setActiveSubWindow(pToolWindow);
    QCOMPARE(m_pArea->activeSubWindow(), pToolWindow);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pChild);
}

void TestHostWorkspace::minimizedImageWindowStaysActive()
{
    auto* pChild = new CVXSChildWindow(solidImage(QSize(10, 10), Qt::red, QImage::Format_RGB32));
    QMdiSubWindow* pImageWindow = openInArea(*m_pArea, pChild);
    QMdiSubWindow* pToolWindow = openInArea(*m_pArea, new QLabel(QStringLiteral("tool")));
    m_pArea->setActiveSubWindow(pImageWindow);

    pImageWindow->showMinimized();
    m_pArea->setActiveSubWindow(pToolWindow);
    QCOMPARE(m_pArea->activeSubWindow(), pToolWindow);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pChild);
    pImageWindow->showNormal();
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pChild);
}

void TestHostWorkspace::closedImageWindowIsNotActive()
{
    QPointer<CVXSChildWindow> pChild
        = new CVXSChildWindow(solidImage(QSize(10, 10), Qt::red, QImage::Format_RGB32));
    QMdiSubWindow* pImageWindow = openInArea(*m_pArea, pChild);
    QMdiSubWindow* pToolWindow = openInArea(*m_pArea, new QLabel(QStringLiteral("tool")));
    m_pArea->setActiveSubWindow(pImageWindow);
    m_pArea->setActiveSubWindow(pToolWindow);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pChild.data());

    QVERIFY(pImageWindow->close());
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), nullptr);
    QTRY_VERIFY(pChild.isNull());
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), nullptr);
}

void TestHostWorkspace::deletedImageWindowIsNotActive()
{
    auto* pChild = new CVXSChildWindow(solidImage(QSize(10, 10), Qt::red, QImage::Format_RGB32));
    QMdiSubWindow* pImageWindow = openInArea(*m_pArea, pChild);
    m_pArea->setActiveSubWindow(pImageWindow);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pChild);
    delete pChild;
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), nullptr);
}

void TestHostWorkspace::currentSubWindowServesBeforeAnyActivation()
{
    CVXSWorkspace::instance()->setMdiArea(nullptr);
    auto* pChild = new CVXSSequenceWindow(twoFrames());
    m_pArea->setActiveSubWindow(openInArea(*m_pArea, pChild));
    CVXSWorkspace::instance()->setMdiArea(m_pArea.data());
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pChild);
}

void TestHostWorkspace::deletedAreaMeansNoActiveChild()
{
    auto* pChild = new CVXSChildWindow(solidImage(QSize(10, 10), Qt::red, QImage::Format_RGB32));
    m_pArea->setActiveSubWindow(openInArea(*m_pArea, pChild));
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pChild);
    m_pArea.reset();
    QCOMPARE(CVXSWorkspace::instance()->mdiArea(), nullptr);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), nullptr);
}

void TestHostWorkspace::announceToolAction()
{
    CVXToolPluginBase plugin;
    QAction action;
    action.setObjectName(QStringLiteral("actWorkspaceTool"));
    action.setCheckable(true);
    QSignalSpy spy(CVXSWorkspace::instance(), &CVXSWorkspace::toolActionAnnounced);

    plugin.forwardToolPluginValidity(&action, false, true);

    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.at(0).at(0).value<QAction*>(), &action);
    QCOMPARE(spy.at(0).at(1).toBool(), false);
    QCOMPARE(spy.at(0).at(2).toBool(), true);
    QVERIFY(!action.isEnabled());
    QVERIFY(action.isChecked());
    QCOMPARE(CVXUtilityFns::getAction(QStringLiteral("actWorkspaceTool")), &action);

    plugin.updateToolPluginValidity(&action, true, false);
    QCOMPARE(spy.count(), 2);
    QVERIFY(action.isEnabled());
    QVERIFY(!action.isChecked());
}

void TestHostWorkspace::addWidgetToWorkspace_data()
{
    QTest::addColumn<bool>("throughHostSlot");
    QTest::newRow("direct call") << false;
    QTest::newRow("host slot") << true;
}

void TestHostWorkspace::addWidgetToWorkspace()
{
    QFETCH(bool, throughHostSlot);
    CVXToolPluginBase plugin;
    auto* pWidget = new QLabel(QStringLiteral("layout"));

    if (throughHostSlot)
        plugin.signalAddWidgetToWorkspace(pWidget);
    else
        plugin.addWidgetToWorkspace(pWidget);

    auto* pSubWindow = qobject_cast<CVXSMdiSubWindow*>(pWidget->parentWidget());
    QVERIFY(pSubWindow);
    QCOMPARE(pSubWindow->widget(), pWidget);
    QCOMPARE(pSubWindow->mdiArea(), m_pArea.data());
    QVERIFY(m_pArea->subWindowList().contains(pSubWindow));
    QVERIFY(!pSubWindow->testAttribute(Qt::WA_DeleteOnClose));
}

void TestHostWorkspace::addWidgetWithoutWorkspaceKeepsWidget()
{
    CVXSWorkspace::instance()->setMdiArea(nullptr);
    CVXToolPluginBase plugin;
    QLabel widget(QStringLiteral("layout"));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QStringLiteral("workspace")));
    plugin.addWidgetToWorkspace(&widget);
    plugin.addWidgetToWorkspace(&widget);
    QCOMPARE(widget.parentWidget(), nullptr);
    QVERIFY(m_pArea->subWindowList().isEmpty());
}

void TestHostWorkspace::subWindowShowHideMove()
{
    CVXToolPluginBase plugin;
    auto* pWidget = new QLabel(QStringLiteral("layout"));
    plugin.addWidgetToWorkspace(pWidget);
    auto* pSubWindow = qobject_cast<CVXSMdiSubWindow*>(pWidget->parentWidget());
    QVERIFY(pSubWindow);
    openInArea(*m_pArea, new QLabel(QStringLiteral("image")));

    pSubWindow->showWindow();
    QVERIFY(pSubWindow->isVisible());
    QVERIFY(pWidget->isVisible());
    QCOMPARE(m_pArea->activeSubWindow(), pSubWindow);

    pSubWindow->setWindowPosition(QPoint(25, 35));
    QCOMPARE(pSubWindow->pos(), QPoint(25, 35));

    pSubWindow->hideWindow();
    QVERIFY(!pSubWindow->isVisible());
    QVERIFY(!pWidget->isVisible());
    QCOMPARE(pSubWindow->widget(), pWidget);

    pSubWindow->showWindow();
    QVERIFY(pWidget->isVisible());
    QCOMPARE(pSubWindow->pos(), QPoint(25, 35));
}

void TestHostWorkspace::closingToolSubWindowKeepsIt()
{
    CVXToolPluginBase plugin;
    QPointer<QLabel> pWidget = new QLabel(QStringLiteral("layout"));
    plugin.addWidgetToWorkspace(pWidget);
    auto* pSubWindow = qobject_cast<CVXSMdiSubWindow*>(pWidget->parentWidget());
    QVERIFY(pSubWindow);
    pSubWindow->showWindow();
    QVERIFY(pSubWindow->close());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QVERIFY(!pWidget.isNull());
    QVERIFY(!pSubWindow->isVisible());
}

void TestHostWorkspace::shootCopyToClipBoard_data()
{
    QTest::addColumn<bool>("sequence");
    QTest::addColumn<QString>("content");
    QTest::newRow("sequence window, Thumbnails") << true << QStringLiteral("Thumbnails");
    QTest::newRow("sequence window, 3D View") << true << QStringLiteral("3D View");
    QTest::newRow("image window") << false << QStringLiteral("Thumbnails");
}

void TestHostWorkspace::shootCopyToClipBoard()
{
    QFETCH(bool, sequence);
    QFETCH(QString, content);

    const QImage image = solidImage(QSize(33, 22), Qt::darkGreen, QImage::Format_RGB32);
    auto* pSequence = sequence ? new CVXSSequenceWindow(twoFrames()) : nullptr;
    CVXSChildWindow* pChild = sequence ? pSequence : new CVXSChildWindow(image);
    m_pArea->setActiveSubWindow(openInArea(*m_pArea, pChild));
    // The user then clicks into the tool's own window.
    m_pArea->setActiveSubWindow(openInArea(*m_pArea, new QLabel(QStringLiteral("tool"))));
    const QImage expected = sequence ? pSequence->tabImage(content) : image;
    QVERIFY(!expected.isNull());
    QGuiApplication::clipboard()->clear();

    CVXToolPluginBase plugin;
    plugin.onSignalCopyContentToClipBoard(content);

    QCOMPARE(QGuiApplication::clipboard()->image(), expected);
}

void TestHostWorkspace::shootWithoutActiveWindowLeavesClipboard()
{
    openInArea(*m_pArea, new QLabel(QStringLiteral("tool")));
    QGuiApplication::clipboard()->setText(QStringLiteral("marker"));
    CVXToolPluginBase plugin;
    plugin.shootCopyToClipBoard(QStringLiteral("Thumbnails"));
    QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("marker"));
    QVERIFY(QGuiApplication::clipboard()->image().isNull());
}

void TestHostWorkspace::baseDefaults()
{
    CVXToolPluginBase plugin;
    QCOMPARE(plugin.getToolType(), 0);
    QCOMPARE(plugin.getToolAction(), nullptr);
    QVERIFY(plugin.getToolIcon().isNull());
    QVERIFY(plugin.getToolName().isEmpty());
    QVERIFY(plugin.getToolDescription().isEmpty());
    QVERIFY(!plugin.initializeTool());
    QVERIFY(plugin.isToolAvailable());
    QVERIFY(plugin.canUnloadTool());
    QVERIFY(!plugin.hasPreferenceWidget());
    QCOMPARE(plugin.getPreferenceWidget(), nullptr);
}

QTEST_MAIN(TestHostWorkspace)
#include "tst_host_workspace.moc"
