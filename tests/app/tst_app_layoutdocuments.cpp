#include "HostFixture.h"

#include "FileDialogAnswer.h"
#include "MessageBoxAnswer.h"
#include "ModalDialogAnswer.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <VXHostMainWindow.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QFileDialog>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QProcess>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <csignal>

namespace {

const QString kEntry = QStringLiteral("Image Layout Window");
// Started with this argument, the program makes unsaved changes in a host and waits to be
// killed.
const QString kChildArgument = QStringLiteral("--make-unsaved-changes");
const QByteArray kReady = "recovery copy written";

QString recoveryFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/recovery");
}

// The recovery copy of the program with this process id, this one's by default.
QString recoveryCopy(qint64 nProcessId = QCoreApplication::applicationPid())
{
    return recoveryFolder() + QStringLiteral("/layout-%1.vxlayout").arg(nProcessId);
}

// The recovery copies there are, of every program.
QStringList recoveryCopies()
{
    QStringList paths;
    const QFileInfoList copies = QDir(recoveryFolder()).entryInfoList({QStringLiteral("*.vxlayout")}, QDir::Files, QDir::Name);
    for (const QFileInfo& copy : copies)
        paths << copy.absoluteFilePath();
    return paths;
}

QWidget* openLayoutWindow(CHostFixture& host)
{
    CVXUtilityFns::getAction(kEntry)->setChecked(true);
    QMdiSubWindow* pSubWindow = host.layoutSubWindow();
    return pSubWindow ? pSubWindow->widget() : nullptr;
}

void triggerLayoutAction(QWidget* pLayoutWindow, const char* pName)
{
    pLayoutWindow->findChild<QAction*>(QString::fromLatin1(pName))->trigger();
}

void pasteColour(QWidget* pLayoutWindow, const QColor& colour)
{
    QGuiApplication::clipboard()->setImage(solidImage(QSize(120, 90), colour));
    triggerLayoutAction(pLayoutWindow, "m_pPasteAction");
}

void enterAnnotation(QWidget* pLayoutWindow, const QString& strText)
{
    auto* pEdit = pLayoutWindow->findChild<QLineEdit*>(QStringLiteral("m_pAnnotationEdit"));
    pEdit->clear();
    QTest::keyClicks(pEdit, strText);
    QTest::keyClick(pEdit, Qt::Key_Return);
}

// Ten changes, the number after which a recovery copy is written at once: five images,
// a layout style with room for them, a label added and then edited three times.
void makeTenChanges(QWidget* pLayoutWindow)
{
    const QColor colours[] = {Qt::red, Qt::green, Qt::blue, Qt::yellow, Qt::magenta};
    for (const QColor& colour : colours)
        pasteColour(pLayoutWindow, colour);
    auto* pStyles = pLayoutWindow->findChild<QComboBox*>(QStringLiteral("m_pLayoutStyleCombo"));
    pStyles->setCurrentIndex(pStyles->findText(QStringLiteral("Layout 3x2")));
    emit pStyles->activated(pStyles->currentIndex());
    for (int i = 0; i < 4; ++i)
        enterAnnotation(pLayoutWindow, QStringLiteral("Label %1").arg(i));
}

QGraphicsScene* layoutScene(QWidget* pLayoutWindow)
{
    return pLayoutWindow->findChild<QGraphicsView*>()->scene();
}

// The layout's items as the scene holds them: kind, place and z, lowest first.
QStringList describeItems(QWidget* pLayoutWindow)
{
    QStringList lines;
    const QList<QGraphicsItem*> items = layoutScene(pLayoutWindow)->items(Qt::AscendingOrder);
    for (const QGraphicsItem* pItem : items) {
        if (pItem->zValue() <= 25 || pItem->zValue() >= 999 || !pItem->isVisible())
            continue;
        const QRectF r = pItem->boundingRect();
        lines << QStringLiteral("%1 %2,%3 %4x%5 z %6").arg(pItem->type()).arg(r.x()).arg(r.y()).arg(r.width())
                     .arg(r.height()).arg(pItem->zValue());
    }
    return lines;
}

// The child: a host with unsaved changes; tells the parent what its layout holds once the
// recovery copy is on disk, then waits to be killed.
int makeUnsavedChanges(const QString& strDescription)
{
    CHostFixture host;
    QWidget* pLayoutWindow = openLayoutWindow(host);
    if (!pLayoutWindow)
        return 2;
    makeTenChanges(pLayoutWindow);
    // The copy is written in the background.
    if (!QTest::qWaitFor([] { return QFileInfo::exists(recoveryCopy()); }, 30000))
        return 3;
    QFile description(strDescription);
    if (!description.open(QIODevice::WriteOnly))
        return 4;
    description.write(describeItems(pLayoutWindow).join(QLatin1Char('\n')).toUtf8());
    description.close();
    QTextStream(stdout) << kReady << Qt::endl;
    // Should the test be gone before it could kill this process, it ends by itself.
    QTimer::singleShot(120000, qApp, [] { QCoreApplication::exit(5); });
    return QApplication::exec();
}

// Starts this program again as a host with unsaved changes that describes its layout into the
// file; true once that host's recovery copy is on disk.
bool startHostWithUnsavedChanges(QProcess& child, const QString& strDescription)
{
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(), {kChildArgument, strDescription});
    if (!child.waitForStarted())
        return false;
    QByteArray output;
    const bool bEither = QTest::qWaitFor([&child, &output] {
        return (output += child.readAllStandardOutput()).contains(kReady) || child.state() != QProcess::Running;
    }, 60000);
    return bEither && output.contains(kReady) && child.state() == QProcess::Running;
}

// Kills the host as a crash would; the layout it described, one line per item.
QStringList killHost(QProcess& child, const QString& strDescription)
{
    ::kill(pid_t(child.processId()), SIGKILL);
    if (!child.waitForFinished() || child.exitStatus() != QProcess::CrashExit)
        return {};
    QFile description(strDescription);
    if (!description.open(QIODevice::ReadOnly))
        return {};
    return QString::fromUtf8(description.readAll()).split(QLatin1Char('\n'));
}

// Lets the host offer the copies of hosts that ended abnormally, answering the question
// with the button; whether it was asked.
bool offerRecovery(CHostFixture& host, QMessageBox::StandardButton answer)
{
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(answer));
    host.window()->offerRecovery();
    cancelPendingDialogAnswers();
    return seen.m_bShown;
}

} // namespace

// The layout as a document in the host: Undo and Redo in the Edit menu, Save and Open in
// the File menu, the question on quitting, and recovery after the host was killed.
class TestAppLayoutDocuments : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void editMenuFollowsTheActiveWindow();
    void fileMenuSavesAndOpensTheLayout();
    void quitAsksAboutUnsavedChanges_data();
    void quitAsksAboutUnsavedChanges();
    void cleanQuitRemovesTheRecoveryCopy();
    void nextStartAfterKillOffersAndRestores_data();
    void nextStartAfterKillOffersAndRestores();
    void copyOfThisSessionIsNotOffered();
    void hostsRunningTogetherKeepTheirOwnCopies();

private:
    QTemporaryDir m_dir;
};

void TestAppLayoutDocuments::initTestCase()
{
    QVERIFY(m_dir.isValid());
}

void TestAppLayoutDocuments::init()
{
    QVERIFY(QDir(recoveryFolder()).removeRecursively());
}

void TestAppLayoutDocuments::editMenuFollowsTheActiveWindow()
{
    CHostFixture host;
    host.window()->openSamples();
    QWidget* pLayoutWindow = openLayoutWindow(host);
    QVERIFY(pLayoutWindow);
    QAction* pUndo = host.action(QStringLiteral("actionUndo"));
    QAction* pRedo = host.action(QStringLiteral("actionRedo"));
    host.area()->setActiveSubWindow(host.layoutSubWindow());
    pasteColour(pLayoutWindow, Qt::red);
    QVERIFY(pUndo->isEnabled());
    QCOMPARE(pUndo->text(), QStringLiteral("&Undo Paste Image"));
    QVERIFY(!pRedo->isEnabled());

    host.area()->setActiveSubWindow(host.imageSubWindows().first());
    QVERIFY(!pUndo->isEnabled());
    QCOMPARE(pUndo->text(), QStringLiteral("&Undo"));

    host.area()->setActiveSubWindow(host.layoutSubWindow());
    pUndo->trigger();
    QCOMPARE(describeItems(pLayoutWindow).size(), 0);
    QVERIFY(pRedo->isEnabled());
    QCOMPARE(pRedo->text(), QStringLiteral("&Redo Paste Image"));
    pRedo->trigger();
    QCOMPARE(describeItems(pLayoutWindow).size(), 1);
}

void TestAppLayoutDocuments::fileMenuSavesAndOpensTheLayout()
{
    const QString strPath = m_dir.filePath(QStringLiteral("figure 1.vxlayout"));
    CHostFixture host;
    QWidget* pLayoutWindow = openLayoutWindow(host);
    pasteColour(pLayoutWindow, Qt::red);
    enterAnnotation(pLayoutWindow, QStringLiteral("Mouse 3"));
    const QStringList saved = describeItems(pLayoutWindow);

    answerNextFileDialog(typeFileName(strPath));
    host.action(QStringLiteral("actionSaveLayoutAs"))->trigger();
    QVERIFY(QFileInfo::exists(strPath));
    QCOMPARE(pLayoutWindow->windowTitle(), QStringLiteral("Image Layout Window - figure 1.vxlayout"));

    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Yes));
    triggerLayoutAction(pLayoutWindow, "m_pNewAction");
    QCOMPARE(describeItems(pLayoutWindow).size(), 0);

    answerNextFileDialog(typeFileName(strPath));
    host.action(QStringLiteral("actionOpenLayout"))->trigger();
    QCOMPARE(describeItems(pLayoutWindow), saved);
    QCOMPARE(pLayoutWindow->windowTitle(), QStringLiteral("Image Layout Window - figure 1.vxlayout"));
}

void TestAppLayoutDocuments::quitAsksAboutUnsavedChanges_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("closes");
    QTest::newRow("cancel keeps the host open") << "Cancel" << false;
    QTest::newRow("discard quits") << "Discard" << true;
}

void TestAppLayoutDocuments::quitAsksAboutUnsavedChanges()
{
    QFETCH(QString, button);
    QFETCH(bool, closes);
    CHostFixture host;
    pasteColour(openLayoutWindow(host), Qt::blue);
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickButtonWithText(button));
    host.action(QStringLiteral("actionQuit"))->trigger();
    QVERIFY(seen.m_bShown);
    QCOMPARE(seen.m_strText, QStringLiteral("The layout has unsaved changes.\nDo you want to save them?"));
    QCOMPARE(host.window()->isVisible(), !closes);
}

void TestAppLayoutDocuments::cleanQuitRemovesTheRecoveryCopy()
{
    {
        CHostFixture host;
        makeTenChanges(openLayoutWindow(host));
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(recoveryCopy()), 30000);
        CSeenMessageBox seen;
        answerNextMessageBox(&seen, clickButtonWithText(QStringLiteral("Discard")));
        QVERIFY(host.window()->close());
    }
    QVERIFY(!QFileInfo::exists(recoveryCopy()));
}

void TestAppLayoutDocuments::nextStartAfterKillOffersAndRestores_data()
{
    QTest::addColumn<bool>("restore");
    QTest::newRow("restored") << true;
    QTest::newRow("declined") << false;
}

void TestAppLayoutDocuments::nextStartAfterKillOffersAndRestores()
{
    QFETCH(bool, restore);
    const QString strDescription = m_dir.filePath(QStringLiteral("before the kill"));
    QProcess child;
    QVERIFY(startHostWithUnsavedChanges(child, strDescription));
    const QString strChildCopy = recoveryCopy(child.processId());
    const QStringList before = killHost(child, strDescription);
    QCOMPARE(before.size(), 6);
    QCOMPARE(recoveryCopies(), QStringList{strChildCopy});

    // As the host starts: the layout window is shown, then the tools offer their copies.
    CHostFixture host;
    QVERIFY(openLayoutWindow(host));
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(restore ? QMessageBox::Yes : QMessageBox::No));
    host.window()->offerRecovery();
    QVERIFY(seen.m_bShown);
    QVERIFY2(seen.m_strText.startsWith(QStringLiteral("The Image Layout window was not closed normally.")),
             qPrintable(seen.m_strText));
    if (!restore) {
        QCOMPARE(recoveryCopies(), QStringList());
        QCOMPARE(describeItems(host.layoutSubWindow()->widget()).size(), 0);
        return;
    }
    QMdiSubWindow* pSubWindow = host.layoutSubWindow();
    QVERIFY(pSubWindow && pSubWindow->isVisible());
    QCOMPARE(describeItems(pSubWindow->widget()), before);
    QCOMPARE(pSubWindow->widget()->windowTitle(), QStringLiteral("Image Layout Window*"));
    // Still unsaved: the layout lives on in this host's own copy, which stays until the
    // layout is saved or thrown away; the killed host's copy has done its job.
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(recoveryCopy()), 30000);
    QCOMPARE(recoveryCopies(), QStringList{recoveryCopy()});
}

void TestAppLayoutDocuments::copyOfThisSessionIsNotOffered()
{
    CHostFixture host;
    makeTenChanges(openLayoutWindow(host));
    QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(recoveryCopy()), 30000);
    QVERIFY(!offerRecovery(host, QMessageBox::Yes));
}

// Two hosts at once: each keeps its own copy; the copy of the one still running is neither
// offered nor removed by the other, and offered once that one has been killed.
void TestAppLayoutDocuments::hostsRunningTogetherKeepTheirOwnCopies()
{
    const QString strDescription = m_dir.filePath(QStringLiteral("other host"));
    QProcess other;
    QVERIFY(startHostWithUnsavedChanges(other, strDescription));
    const QString strOtherCopy = recoveryCopy(other.processId());
    QCOMPARE(recoveryCopies(), QStringList{strOtherCopy});
    {
        CHostFixture host;
        QWidget* pLayoutWindow = openLayoutWindow(host);
        QVERIFY(pLayoutWindow);
        QVERIFY(!offerRecovery(host, QMessageBox::Yes));
        QCOMPARE(recoveryCopies(), QStringList{strOtherCopy});
        makeTenChanges(pLayoutWindow);
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(recoveryCopy()), 30000);
        QCOMPARE(recoveryCopies().size(), 2);
        // This host quits, throwing its changes away: its own copy goes, the other's stays.
        CSeenMessageBox asked;
        answerNextMessageBox(&asked, clickButtonWithText(QStringLiteral("Discard")));
        QVERIFY(host.window()->close());
        QVERIFY(asked.m_bShown);
    }
    QCOMPARE(recoveryCopies(), QStringList{strOtherCopy});

    const QStringList before = killHost(other, strDescription);
    QCOMPARE(before.size(), 6);
    CHostFixture host;
    QVERIFY(openLayoutWindow(host));
    QVERIFY(offerRecovery(host, QMessageBox::Yes));
    QCOMPARE(describeItems(host.layoutSubWindow()->widget()), before);
}

int main(int argc, char* argv[])
{
    QApplication app(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() == 3 && arguments.at(1) == kChildArgument)
        return makeUnsavedChanges(arguments.at(2));
    TestAppLayoutDocuments test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_app_layoutdocuments.moc"
