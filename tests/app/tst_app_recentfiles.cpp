#include "HostFixture.h"
#include "HostTestCase.h"

#include "FileDialogTyping.h"
#include "ModalWatch.h"
#include "ModalDialogAnswer.h"
#include "TestPictures.h"

#include <VXHostMainWindow.h>
#include <VXHostSetup.h>
#include <VXPreference.h>
#include <VXRecentFileList.h>
#include <VXSSettings.h>

#include <QFileDialog>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMessageBox>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int kQuitAfterMs = 1500;
constexpr int kAllowedMs = 30000;

// The entries of the menu as a user sees it once it opened; separators are "-".
QStringList shownEntries(QMenu* pMenu)
{
    pMenu->popup(QPoint(0, 0));
    QStringList entries;
    const QList<QAction*> actions = pMenu->actions();
    for (const QAction* pAction : actions)
        entries << (pAction->isSeparator() ? QStringLiteral("-") : pAction->text());
    pMenu->hide();
    return entries;
}

QAction* shownEntry(QMenu* pMenu, const QString& strText)
{
    shownEntries(pMenu);
    const QList<QAction*> actions = pMenu->actions();
    for (QAction* pAction : actions) {
        if (pAction->text() == strText)
            return pAction;
    }
    return nullptr;
}

// The folder of the file dialog the action opens, which is then cancelled; empty when
// none came.
QString folderShownBy(QAction* pAction)
{
    QString strShown;
    answerNextModalDialog(QFileDialog::staticMetaObject, [&strShown](QDialog* pDialog) {
        strShown = static_cast<QFileDialog*>(pDialog)->directory().absolutePath();
        pDialog->reject();
    });
    pAction->trigger();
    return strShown;
}

} // namespace

// File > Open Recent and the folder the Open dialogs start in. This process shares the
// host's settings file with the real program it starts (see main below), as two hosts of a
// user do.
class TestAppRecentFiles : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void listSurvivesRestart();
    void chosenEntryOpensAndMovesFirst();
    void deletedEntryIsDroppedWithNote();
    void clearMenuEmptiesList();
    void keepsTenNewestWithoutRepeats();
    void twoHostsKeepEachOthersEntries();
    void openDialogStartsInFolderUsedLast();

private:

    QString path(const QString& strName) const;
    QString writeImage(const QString& strName) const;
    QMenu* recentMenu() const;
    QStringList storedList() const;
    // Starts the real program on the files; it quits by itself after a while.
    void startProgram(QProcess& process, const QStringList& files);

    QTemporaryDir m_dir;
};

QString TestAppRecentFiles::path(const QString& strName) const
{
    return m_dir.filePath(strName);
}

QString TestAppRecentFiles::writeImage(const QString& strName) const
{
    const QString strPath = path(strName);
    return solidImage(QSize(40, 30), Qt::darkGreen, QImage::Format_RGB32).save(strPath) ? strPath : QString();
}

QMenu* TestAppRecentFiles::recentMenu() const
{
    return host()->window()->findChild<QMenu*>(QStringLiteral("menuOpenRecent"));
}

QStringList TestAppRecentFiles::storedList() const
{
    return CVXRecentFileList(*CVXPreference::getSettings()).paths();
}

void TestAppRecentFiles::startProgram(QProcess& process, const QStringList& files)
{
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(QStringLiteral(VXHOST_EXECUTABLE), QStringList {"-platform", "offscreen", "--no-samples",
                                                                  "--quit-after-ms", QString::number(kQuitAfterMs)}
                                                         + files);
    QVERIFY2(process.waitForStarted(), qPrintable(process.errorString()));
}

void TestAppRecentFiles::initTestCase()
{
    QVERIFY(m_dir.isValid());
    // Both this process and the program it starts use the settings here (see main).
    QVERIFY2(CVXPreference::getSettings()->fileName().startsWith(qEnvironmentVariable("XDG_CONFIG_HOME")),
             qPrintable(CVXPreference::getSettings()->fileName()));
    for (const char* pName : {"a.png", "b.png", "c.png", "d.png", "e.png"})
        QVERIFY(!writeImage(QString::fromLatin1(pName)).isEmpty());
    QVERIFY(QFile::copy(QStringLiteral(VX_LAYOUT_TEST_DATA "/layout-v1.vxlayout"), path("figure.vxlayout")));
}

void TestAppRecentFiles::init()
{
    CVXRecentFileList(*CVXPreference::getSettings()).clear();
    QVERIFY(startHost());
    QVERIFY(recentMenu());
}

void TestAppRecentFiles::listSurvivesRestart()
{
    // A session of the real program opens two images and a layout and ends.
    endHost();
    QProcess process;
    startProgram(process, {path("a.png"), path("figure.vxlayout"), path("b.png")});
    QVERIFY2(process.waitForFinished(kAllowedMs), "the program did not quit");
    QCOMPARE(process.exitCode(), 0);

    // The next session offers them, the last opened first; the images opened before the layout.
    QVERIFY(startHost());
    QCOMPARE(shownEntries(recentMenu()), QStringList({"&1 figure.vxlayout", "&2 b.png", "&3 a.png", "-", "&Clear Menu"}));
    QVERIFY(recentMenu()->actions().last()->isEnabled());
    QCOMPARE(recentMenu()->actions().first()->statusTip(), QDir::toNativeSeparators(path("figure.vxlayout")));
}

void TestAppRecentFiles::chosenEntryOpensAndMovesFirst()
{
    CVXRecentFileList list(*CVXPreference::getSettings());
    for (const char* pName : {"a.png", "figure.vxlayout", "b.png"})
        list.add(path(QString::fromLatin1(pName)));

    CModalWatch messages(QMessageBox::staticMetaObject);
    shownEntry(recentMenu(), "&3 a.png")->trigger();
    QCOMPARE(host()->imageWindowTitles(), QStringList {"a.png"});
    QCOMPARE(storedList(), QStringList({path("a.png"), path("b.png"), path("figure.vxlayout")}));

    shownEntry(recentMenu(), "&3 figure.vxlayout")->trigger();
    const QMdiSubWindow* pLayout = host()->layoutSubWindow();
    QVERIFY(pLayout && pLayout->isVisible());
    QVERIFY2(pLayout->widget()->windowTitle().contains("figure.vxlayout"), qPrintable(pLayout->widget()->windowTitle()));
    QCOMPARE(host()->layoutItemCount(), 8);
    QCOMPARE(storedList(), QStringList({path("figure.vxlayout"), path("a.png"), path("b.png")}));
    QCOMPARE(messages.seenTexts(), QStringList());
}

void TestAppRecentFiles::deletedEntryIsDroppedWithNote()
{
    const QString strDoomed = writeImage("doomed.png");
    host()->window()->openFiles({path("a.png"), strDoomed});
    host()->area()->closeAllSubWindows();
    QVERIFY(QFile::remove(strDoomed));

    CModalWatch messages(QMessageBox::staticMetaObject);
    shownEntry(recentMenu(), "&1 doomed.png")->trigger();
    QCOMPARE(messages.seenTexts(), QStringList {QDir::toNativeSeparators(strDoomed)
                                            + " no longer exists. It was removed from the recent files."});
    QCOMPARE(host()->imageWindowTitles(), QStringList());
    QCOMPARE(storedList(), QStringList {path("a.png")});
    QCOMPARE(shownEntries(recentMenu()), QStringList({"&1 a.png", "-", "&Clear Menu"}));
}

void TestAppRecentFiles::clearMenuEmptiesList()
{
    host()->window()->openFiles({path("a.png"), path("b.png")});
    shownEntry(recentMenu(), "&Clear Menu")->trigger();
    QCOMPARE(storedList(), QStringList());
    QCOMPARE(shownEntries(recentMenu()), QStringList({"-", "&Clear Menu"}));
    QVERIFY(!recentMenu()->actions().last()->isEnabled());
}

void TestAppRecentFiles::keepsTenNewestWithoutRepeats()
{
    QStringList opened;
    for (int i = 1; i <= 12; ++i) {
        const QString strPath = writeImage(QStringLiteral("image%1.png").arg(i));
        QVERIFY(!strPath.isEmpty());
        host()->window()->openFiles({strPath});
        opened.prepend(strPath);
    }
    // Opened again, a file moves to the front instead of appearing twice.
    host()->window()->openFiles({path("image5.png")});
    opened.move(opened.indexOf(path("image5.png")), 0);
    QCOMPARE(storedList(), opened.mid(0, CVXRecentFileList::MaxFiles));
    const QStringList entries = shownEntries(recentMenu());
    QCOMPARE(entries.size(), CVXRecentFileList::MaxFiles + 2);
    QCOMPARE(entries.first(), QStringLiteral("&1 image5.png"));
    // Only the first nine have a key.
    QCOMPARE(entries.at(9), QStringLiteral("10 image3.png"));
}

void TestAppRecentFiles::twoHostsKeepEachOthersEntries()
{
    // This host has read the list before the other one starts.
    host()->window()->openFiles({path("a.png")});
    QCOMPARE(storedList(), QStringList {path("a.png")});
    QProcess other;
    startProgram(other, {path("b.png")});
    // While the other runs, this one opens a file too.
    host()->window()->openFiles({path("c.png")});
    QVERIFY2(other.waitForFinished(kAllowedMs), "the program did not quit");
    QCOMPARE(other.exitCode(), 0);
    host()->window()->openFiles({path("d.png")});
    const QStringList stored = storedList();
    QCOMPARE(stored.first(), path("d.png"));
    for (const char* pName : {"a.png", "b.png", "c.png"})
        QVERIFY2(stored.contains(path(QString::fromLatin1(pName))), qPrintable(stored.join(", ")));
    QCOMPARE(stored.size(), 4);
    // What the other host wrote is on disk for the next session as well.
    const QSettings onDisk(CVXPreference::getSettings()->fileName(), QSettings::IniFormat);
    QCOMPARE(onDisk.value("RecentFiles/paths").toStringList(), stored);
}

void TestAppRecentFiles::openDialogStartsInFolderUsedLast()
{
    QVERIFY(QDir(m_dir.path()).mkpath("chosen"));
    const QString strImage = path("chosen/f.png");
    QVERIFY(solidImage(QSize(30, 20), Qt::darkRed, QImage::Format_RGB32).save(strImage));
    answerNextModalDialog(QFileDialog::staticMetaObject, [strImage](QDialog* pDialog) {
        typeIntoFileDialog(static_cast<QFileDialog*>(pDialog), strImage);
    });
    host()->action("actionOpenImages")->trigger();
    QCOMPARE(host()->imageWindowTitles(), QStringList {"f.png"});
    QCOMPARE(storedList().first(), strImage);

    // Open Sequence starts where Open Images left off, and so does a host started anew.
    endHost();
    QVERIFY(startHost());
    QCOMPARE(folderShownBy(host()->action("actionOpenSequence")), path("chosen"));

    // Once that folder is gone the dialog starts in one that exists.
    QVERIFY(QDir(path("chosen")).removeRecursively());
    const QString strShown = folderShownBy(host()->action("actionOpenImages"));
    QVERIFY2(!strShown.isEmpty() && QFileInfo(strShown).isDir(), qPrintable(strShown));
}

int main(int argc, char* argv[])
{
    // The host's names, so that this process finds the program's settings file; both keep
    // it in a folder of this run.
    CVXHostSetup::beforeApplication();
    QTemporaryDir config;
    if (!config.isValid())
        return 1;
    qputenv("XDG_CONFIG_HOME", config.path().toLocal8Bit());
    QApplication application(argc, argv);
    TestAppRecentFiles test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_app_recentfiles.moc"
