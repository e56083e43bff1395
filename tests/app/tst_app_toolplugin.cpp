#include "HostFixture.h"
#include "HostTestCase.h"
#include "ModalWatch.h"

#include <VXHostMainWindow.h>
#include <VXPreference.h>
#include <VXSChildWindow.h>
#include <VXSDataset.h>
#include <VXSSequenceDataset.h>
#include <VXSSequenceWindow.h>
#include <VXSSettings.h>
#include <VXSWorkspace.h>
#include <VXToolPluginBase.h>
#include <VXToolWindowPlacement.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QClipboard>
#include <QGraphicsView>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLibrary>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPluginLoader>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QString kEntry = QStringLiteral("Image Layout Window");
const QString kPluginPath = QStringLiteral(VXIMAGELAYOUT_PLUGIN);

QJsonObject expectedMetaData()
{
    return QJsonObject {{"IID", "hvd.vexor.vxImageLayout"},
                        {"className", "CVXImageLayoutPlugin"},
                        {"version", 330241},
                        {"debug", false},
                        {"MetaData", QJsonObject()}};
}

QImage marker()
{
    QImage image(7, 5, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    return image;
}

} // namespace

Q_DECLARE_METATYPE(CVXSDataset*)
Q_DECLARE_METATYPE(CVXSSequenceDataset*)

// The layout plugin module as the host loads it, and the host's side of the contract.
class TestAppToolPlugin : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void metadataIsExact();
    void moduleGivesOneToolPlugin();
    void metaObjectHasTheEightSlotsInOrder();
    void toolDescribesItself();
    void getToolActionTwiceGivesTheSameAction();
    void secondInitializeToolDoesNothing();
    void toolSizesItsWindowBeforeTheHostPlacesIt();
    void copyToClipboardByWindowName_data();
    void copyToClipboardByWindowName();
    void notificationsBeforeFirstUseAreIgnored();
    void hostNewsReachTheLayoutWindow_data();
    void hostNewsReachTheLayoutWindow();
    void printPixmapIsTheLayout();
    void deletingHostWithWindowOpenDeletesEverything();
    void hostReportsFilesThatAreNoToolPlugins();
    void loadingTheFolderAgainAddsNothing();
    void hostSendsDatasetNews();
    void copyContentCopiesSequenceTab();

private:

    CVXToolPluginBase* plugin() const;
    QMdiSubWindow* initializedLayoutSubWindow();

};

void TestAppToolPlugin::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    qRegisterMetaType<CVXSDataset*>();
    qRegisterMetaType<CVXSSequenceDataset*>();
}

void TestAppToolPlugin::init()
{
    QVERIFY(startHost());
    QVERIFY(plugin());
}

CVXToolPluginBase* TestAppToolPlugin::plugin() const
{
    // The same library as the host loaded, so the same plugin object.
    QPluginLoader loader(kPluginPath);
    return qobject_cast<CVXToolPluginBase*>(loader.instance());
}

QMdiSubWindow* TestAppToolPlugin::initializedLayoutSubWindow()
{
    if (!plugin()->initializeTool())
        return nullptr;
    return host()->layoutSubWindow();
}

void TestAppToolPlugin::metadataIsExact()
{
    QPluginLoader loader(kPluginPath);
    QCOMPARE(loader.metaData(), expectedMetaData());
}

void TestAppToolPlugin::moduleGivesOneToolPlugin()
{
    QPluginLoader loader(kPluginPath);
    QObject* pObject = loader.instance();
    QVERIFY2(pObject, qPrintable(loader.errorString()));
    QCOMPARE(pObject->metaObject()->className(), "CVXImageLayoutPlugin");
    QCOMPARE(pObject->qt_metacast("CVXImageLayoutPlugin"), static_cast<void*>(pObject));
    QVERIFY(pObject->qt_metacast(CVXToolPluginBase_iid));
    QVERIFY(pObject->qt_metacast("CVXToolPluginBase"));
    QCOMPARE(pObject->qt_metacast("org.example.NotATool/1.0"), nullptr);
    QCOMPARE(qobject_cast<CVXToolPluginBase*>(pObject), plugin());

    QLibrary library(kPluginPath);
    using InstanceFunction = QObject* (*)();
    auto instance = reinterpret_cast<InstanceFunction>(library.resolve("qt_plugin_instance"));
    QVERIFY(instance);
    QCOMPARE(instance(), pObject);
    QCOMPARE(instance(), pObject);
}

void TestAppToolPlugin::metaObjectHasTheEightSlotsInOrder()
{
    const QMetaObject* pMeta = plugin()->metaObject();
    QStringList slotSignatures;
    for (int i = pMeta->methodOffset(); i < pMeta->methodCount(); ++i) {
        QCOMPARE(pMeta->method(i).methodType(), QMetaMethod::Slot);
        slotSignatures << QString::fromLatin1(pMeta->method(i).methodSignature());
    }
    const QStringList expected {"onSignalDatasetChanged(CVXSDataset*)",
                                "onSignalSequenceChanged(CVXSSequenceDataset*)",
                                "onSignalDatasetRemoved(CVXSDataset*)",
                                "onSignalSequenceAdded(CVXSSequenceDataset*)",
                                "onSignalSequenceRemoved(CVXSSequenceDataset*)",
                                "signalAddWidgetToWorkspace(QWidget*)",
                                "onSignalCopyContentToClipBoard(QString)",
                                "onSignalCopyToClipboard(QString)"};
    QCOMPARE(slotSignatures, expected);
    QCOMPARE(QString::fromLatin1(pMeta->superClass()->className()), QStringLiteral("CVXToolPluginBase"));
}

void TestAppToolPlugin::toolDescribesItself()
{
    CVXToolPluginBase* pPlugin = plugin();
    QCOMPARE(pPlugin->getToolType(), 3);
    QCOMPARE(pPlugin->getToolName(), kEntry);
    QVERIFY(pPlugin->getToolIcon().isNull());
    QVERIFY(pPlugin->getToolDescription().isEmpty());
}

void TestAppToolPlugin::getToolActionTwiceGivesTheSameAction()
{
    QAction* pAction = plugin()->getToolAction();
    QVERIFY(pAction);
    QCOMPARE(plugin()->getToolAction(), pAction);
    QCOMPARE(pAction->text(), kEntry);
    QCOMPARE(pAction->objectName(), kEntry);
    QVERIFY(pAction->isCheckable());
    QVERIFY(!pAction->isChecked());
    QCOMPARE(pAction->parent(), plugin());
    QCOMPARE(CVXUtilityFns::getAction(kEntry), pAction);
    const QMenu* pTools = host()->window()->menuBar()->findChild<QMenu*>(QStringLiteral("menuTools"));
    QCOMPARE(pTools->actions().count(pAction), 1);
}

void TestAppToolPlugin::secondInitializeToolDoesNothing()
{
    QCOMPARE(host()->layoutSubWindow(), nullptr);
    QVERIFY(plugin()->initializeTool());
    QPointer<QMdiSubWindow> pSubWindow = host()->layoutSubWindow();
    QVERIFY(pSubWindow);
    QVERIFY(pSubWindow->isHidden());
    QCOMPARE(pSubWindow->widget()->objectName(), kEntry);

    QVERIFY(plugin()->initializeTool());
    QCOMPARE(host()->layoutSubWindow(), pSubWindow.data());
    QVERIFY(pSubWindow->isHidden());
    int nLayoutWindows = 0;
    const QList<QMdiSubWindow*> all = host()->area()->findChildren<QMdiSubWindow*>();
    for (const QMdiSubWindow* pCandidate : all)
        nLayoutWindows += pCandidate->widget() && pCandidate->widget()->objectName() == kEntry ? 1 : 0;
    QCOMPARE(nLayoutWindows, 1);
}

// The tool sizes the sub-window from its window's frame, the frame and title bar added; the
// host, placing it when it is first shown, gives the window at least what it asks for.
void TestAppToolPlugin::toolSizesItsWindowBeforeTheHostPlacesIt()
{
    // As on the first start: no place is stored for the window.
    CVXPreference::getSettings()->setValue(CVXToolWindowPlacement::settingsKey(kEntry), QVariant());
    QSize frame;
    const QMetaObject::Connection added = connect(
        CVXSWorkspace::instance(), &CVXSWorkspace::toolWindowAdded, this,
        [&frame](QMdiSubWindow* pSubWindow) { frame = pSubWindow->widget()->frameGeometry().size(); });
    QMdiSubWindow* pSubWindow = initializedLayoutSubWindow();
    disconnect(added);
    QVERIFY(pSubWindow && frame.isValid());
    QVERIFY(!pSubWindow->isVisible());
    QCOMPARE(pSubWindow->size(), frame + QSize(15, 35));

    CVXUtilityFns::getAction(kEntry)->setChecked(true);
    QVERIFY(pSubWindow->isVisible());
    QVERIFY(pSubWindow->width() >= frame.width() + 15);
    QVERIFY(pSubWindow->height() >= frame.height() + 35);
    const QWidget* pLayoutWindow = pSubWindow->widget();
    QCOMPARE(pLayoutWindow->size(), pLayoutWindow->size().expandedTo(pLayoutWindow->sizeHint()));
}

void TestAppToolPlugin::copyToClipboardByWindowName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("copies");
    QTest::newRow("upper case") << "IMAGE LAYOUT WINDOW" << true;
    QTest::newRow("lower case") << "image layout window" << true;
    QTest::newRow("as named") << kEntry << true;
    QTest::newRow("a tab name") << "Sequence View" << false;
    QTest::newRow("name with a blank more") << "Image Layout Window " << false;
    QTest::newRow("empty") << "" << false;
}

void TestAppToolPlugin::copyToClipboardByWindowName()
{
    QFETCH(QString, name);
    QFETCH(bool, copies);
    QMdiSubWindow* pSubWindow = initializedLayoutSubWindow();
    QVERIFY(pSubWindow);
    QClipboard* pClipboard = QGuiApplication::clipboard();
    pClipboard->setImage(marker());

    plugin()->onSignalCopyToClipboard(name);
    const QImage copied = pClipboard->image();
    if (!copies) {
        QCOMPARE(copied.convertToFormat(QImage::Format_RGB32), marker());
        return;
    }
    // The page at its own size: the scene plus the one-pixel border line.
    const QGraphicsView* pView = pSubWindow->widget()->findChild<QGraphicsView*>();
    QVERIFY(pView);
    const QSize sceneSize = pView->scene()->sceneRect().size().toSize();
    QVERIFY2(qAbs(copied.width() - sceneSize.width()) <= 1 && qAbs(copied.height() - sceneSize.height()) <= 1,
             qPrintable(QStringLiteral("%1x%2 for a scene of %3x%4")
                            .arg(copied.width()).arg(copied.height())
                            .arg(sceneSize.width()).arg(sceneSize.height())));
    // An empty page is white inside its border line.
    QCOMPARE(copied.pixelColor(copied.width() / 2, copied.height() / 2), QColor(Qt::white));
}

void TestAppToolPlugin::notificationsBeforeFirstUseAreIgnored()
{
    CVXSDataset dataset(QStringLiteral("image"), marker());
    CVXSSequenceDataset sequence(QStringLiteral("sequence"), {marker(), marker()});
    CVXToolPluginBase* pPlugin = plugin();
    pPlugin->onSignalDatasetChanged(&dataset);
    pPlugin->onSignalSequenceChanged(&sequence);
    pPlugin->onSignalDatasetRemoved(&dataset);
    pPlugin->onSignalSequenceAdded(&sequence);
    pPlugin->onSignalSequenceRemoved(&sequence);
    // The host's own news about its windows reach the plugin the same way.
    host()->window()->openSamples();
    QCoreApplication::processEvents();
    QCOMPARE(host()->layoutSubWindow(), nullptr);
    QVERIFY(!CVXUtilityFns::getAction(kEntry)->isChecked());
    pPlugin->onSignalCopyToClipboard(kEntry);
    QCOMPARE(host()->layoutSubWindow(), nullptr);
}

void TestAppToolPlugin::hostNewsReachTheLayoutWindow_data()
{
    QTest::addColumn<int>("frames");
    QTest::newRow("image window") << 1;
    QTest::newRow("sequence window") << 3;
}

void TestAppToolPlugin::hostNewsReachTheLayoutWindow()
{
    QFETCH(int, frames);
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    QStringList paths;
    for (int i = 0; i < frames; ++i) {
        paths << folder.filePath(QStringLiteral("frame%1.png").arg(i));
        QVERIFY(marker().save(paths.last()));
    }
    QMdiSubWindow* pLayoutSubWindow = initializedLayoutSubWindow();
    QVERIFY(pLayoutSubWindow);
    // "Paste Active Dataset" is offered while the host has an active image window.
    auto* pPaste = pLayoutSubWindow->widget()->findChild<QAction*>(QStringLiteral("m_pPasteActiveDSetAction"));
    QVERIFY(pPaste);
    QTRY_VERIFY(!pPaste->isEnabled());

    if (frames == 1)
        host()->window()->openImageFiles(paths);
    else
        host()->window()->openSequenceFiles(paths);
    QCOMPARE(host()->imageSubWindows().size(), 1);
    QTRY_VERIFY(pPaste->isEnabled());

    host()->imageSubWindows().first()->close();
    QTRY_VERIFY(!pPaste->isEnabled());
}

void TestAppToolPlugin::printPixmapIsTheLayout()
{
    QSignalSpy delivered(CVXSWorkspace::instance(), &CVXSWorkspace::printPixmapDelivered);
    plugin()->onSignalGetPrintPixmap(true);
    QCOMPARE(delivered.count(), 0);

    QVERIFY(initializedLayoutSubWindow());
    plugin()->onSignalCopyToClipboard(kEntry);
    const QImage copied = QGuiApplication::clipboard()->image();
    plugin()->onSignalGetPrintPixmap(true);
    QCOMPARE(delivered.count(), 1);
    const QImage printed = delivered.first().first().value<QPixmap>().toImage();
    QCOMPARE(printed.size(), copied.size());
    QCOMPARE(printed.convertToFormat(QImage::Format_RGB32), copied.convertToFormat(QImage::Format_RGB32));
}

void TestAppToolPlugin::deletingHostWithWindowOpenDeletesEverything()
{
    host()->window()->openSamples();
    CVXUtilityFns::getAction(kEntry)->trigger();
    QPointer<QMdiSubWindow> pSubWindow = host()->layoutSubWindow();
    QVERIFY(pSubWindow);
    QVERIFY(pSubWindow->isVisible());
    QPointer<QWidget> pLayoutWindow = pSubWindow->widget();
    QPointer<QGraphicsView> pView = pLayoutWindow->findChild<QGraphicsView*>();
    QPointer<QObject> pPlugin = plugin();
    QVERIFY(pView);

    endHost();
    QVERIFY(!pPlugin);
    QVERIFY(!pSubWindow);
    QVERIFY(!pLayoutWindow);
    QVERIFY(!pView);
    QCOMPARE(CVXSWorkspace::instance()->mdiArea(), nullptr);
}

void TestAppToolPlugin::hostReportsFilesThatAreNoToolPlugins()
{
    QTemporaryDir folder;
    QVERIFY(folder.isValid());
    QFile text(folder.filePath(QStringLiteral("readme.txt")));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("Tools go here.\n");
    text.close();
    QVERIFY(QFile::copy(QStringLiteral(VXFOREIGN_PLUGIN), folder.filePath(QStringLiteral("libforeign.so"))));
    QVERIFY(QFile::copy(QStringLiteral(VXUNRESOLVABLE_PLUGIN), folder.filePath(QStringLiteral("libunresolvable.so"))));
    const QMenu* pTools = host()->window()->menuBar()->findChild<QMenu*>(QStringLiteral("menuTools"));
    const QList<QAction*> toolsBefore = pTools->actions();

    CModalWatch boxes(QMessageBox::staticMetaObject);
    host()->window()->loadToolPlugins({folder.path()});
    QCOMPARE(boxes.seen().size(), 1);
    const QStringList lines = boxes.seen().first().m_strText.split(QLatin1Char('\n'));
    const auto lineAbout = [&lines](const QString& strFile) {
        for (const QString& strLine : lines) {
            if (strLine.contains(strFile))
                return strLine;
        }
        return QString();
    };
    QVERIFY2(lineAbout("readme.txt").contains("not an ELF object"), qPrintable(boxes.seen().first().m_strText));
    QVERIFY2(lineAbout("libforeign.so").contains("org.example.NotATool/1.0"), qPrintable(boxes.seen().first().m_strText));
    QVERIFY2(lineAbout("libunresolvable.so").contains("g_nNowhereDefined"), qPrintable(boxes.seen().first().m_strText));
    QCOMPARE(pTools->actions(), toolsBefore);
    // The real tool still works.
    CVXUtilityFns::getAction(kEntry)->trigger();
    QVERIFY(host()->layoutSubWindow()->isVisible());
}

void TestAppToolPlugin::loadingTheFolderAgainAddsNothing()
{
    const QMenu* pTools = host()->window()->menuBar()->findChild<QMenu*>(QStringLiteral("menuTools"));
    const QList<QAction*> toolsBefore = pTools->actions();
    QPointer<QObject> pPlugin = plugin();
    CModalWatch boxes(QMessageBox::staticMetaObject);
    host()->window()->loadToolPlugins({QFileInfo(kPluginPath).absolutePath()});
    QCOMPARE(boxes.seen().size(), 0);
    QCOMPARE(pTools->actions(), toolsBefore);
    QCOMPARE(plugin(), pPlugin.data());
    // Still owned once: deleting the host deletes it once.
    endHost();
    QVERIFY(!pPlugin);
}

void TestAppToolPlugin::hostSendsDatasetNews()
{
    CVXSWorkspace* pWorkspace = CVXSWorkspace::instance();
    QSignalSpy datasetChanged(pWorkspace, &CVXSWorkspace::datasetChanged);
    QSignalSpy datasetRemoved(pWorkspace, &CVXSWorkspace::datasetRemoved);
    QSignalSpy sequenceAdded(pWorkspace, &CVXSWorkspace::sequenceAdded);
    QSignalSpy sequenceChanged(pWorkspace, &CVXSWorkspace::sequenceChanged);
    QSignalSpy sequenceRemoved(pWorkspace, &CVXSWorkspace::sequenceRemoved);

    host()->window()->openSamples();
    CVXSChildWindow* pImage = host()->imageWindow(0);
    auto* pSequence = qobject_cast<CVXSSequenceWindow*>(host()->imageWindow(2));
    QVERIFY(pImage && pSequence);
    QCOMPARE(pImage->dataset()->name(), QStringLiteral("Sample X-ray"));
    QCOMPARE(pImage->dataset()->image(), pImage->image());
    QCOMPARE(pSequence->sequenceDataset()->frameCount(), pSequence->frameCount());
    QVERIFY(datasetChanged.contains({QVariant::fromValue(pImage->dataset())}));
    QCOMPARE(sequenceAdded.count(), 1);
    QCOMPARE(sequenceAdded.first().first().value<CVXSSequenceDataset*>(), pSequence->sequenceDataset());

    sequenceChanged.clear();
    pSequence->setCurrentFrame(1);
    QCOMPARE(sequenceChanged.count(), 1);
    QCOMPARE(sequenceChanged.first().first().value<CVXSSequenceDataset*>(), pSequence->sequenceDataset());

    datasetChanged.clear();
    host()->area()->setActiveSubWindow(host()->imageSubWindows().at(0));
    QCOMPARE(datasetChanged.count(), 1);
    QCOMPARE(datasetChanged.first().first().value<CVXSDataset*>(), pImage->dataset());

    CVXSDataset* pClosedDataset = pImage->dataset();
    QVERIFY(host()->imageSubWindows().at(0)->close());
    QCOMPARE(datasetRemoved.count(), 1);
    QCOMPARE(datasetRemoved.first().first().value<CVXSDataset*>(), pClosedDataset);
    CVXSSequenceDataset* pClosedSequence = pSequence->sequenceDataset();
    QVERIFY(host()->imageSubWindows().last()->close());
    QCOMPARE(sequenceRemoved.count(), 1);
    QCOMPARE(sequenceRemoved.first().first().value<CVXSSequenceDataset*>(), pClosedSequence);
}

void TestAppToolPlugin::copyContentCopiesSequenceTab()
{
    host()->window()->openSamples();
    auto* pSequence = qobject_cast<CVXSSequenceWindow*>(host()->imageWindow(2));
    QVERIFY(pSequence);
    host()->area()->setActiveSubWindow(host()->imageSubWindows().at(2));
    QGuiApplication::clipboard()->setImage(marker());
    plugin()->onSignalCopyContentToClipBoard(QStringLiteral("3D View"));
    const QImage expected = pSequence->tabImage(QStringLiteral("3D View"));
    QVERIFY(!expected.isNull());
    QCOMPARE(QGuiApplication::clipboard()->image().convertToFormat(QImage::Format_ARGB32),
             expected.convertToFormat(QImage::Format_ARGB32));
}

QTEST_MAIN(TestAppToolPlugin)
#include "tst_app_toolplugin.moc"
