#include "HostFixture.h"
#include "HostTestCase.h"

#include "ModalDialogAnswer.h"
#include "OutsideProgram.h"
#include "TestPictures.h"

#include <VXHostMainWindow.h>
#include <VXHostSetup.h>
#include <VXVersion.h>

#include <QAction>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QGraphicsView>
#include <QMdiSubWindow>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

namespace {

// The About box's library table, row by row: name, version, licence.
QList<QStringList> tableRows(const QTableWidget* pTable)
{
    QList<QStringList> rows;
    for (int nRow = 0; nRow < pTable->rowCount(); ++nRow) {
        QStringList cells;
        for (int nColumn = 0; nColumn < pTable->columnCount(); ++nColumn)
            cells << pTable->item(nRow, nColumn)->text();
        rows << cells;
    }
    return rows;
}

// The version of the installed library as pkg-config, which knows nothing of this
// program, tells it.
QString installedVersion(const QString& strModule)
{
    const OutsideProgram pkgConfig(QStringLiteral("pkg-config"), {QStringLiteral("--modversion"), strModule});
    return pkgConfig.succeeded() ? QString::fromLatin1(pkgConfig.output()).trimmed() : pkgConfig.report();
}

} // namespace

// The host's menus as a desktop program's: the standard keys of the platform on their
// entries, and Help with the About box.
class TestAppHostMenus : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void standardShortcuts_data();
    void standardShortcuts();
    void undoKeyInLayoutWindowUndoesOnce();
    void helpMenuFollowsWindowMenu();
    void aboutBoxNamesVersionAndLibraries();

private:

};

void TestAppHostMenus::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    CVXHostSetup::afterApplication();
}

void TestAppHostMenus::standardShortcuts_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QKeySequence::StandardKey>("key");
    // The keys where the platform's conventions have none (the offscreen platform follows
    // Windows, whose programs have no key for Save As or Quit).
    QTest::addColumn<QList<QKeySequence>>("otherwise");
    const QList<QKeySequence> none;
    QTest::newRow("open images") << "actionOpenImages" << QKeySequence::Open << none;
    QTest::newRow("save layout") << "actionSaveLayout" << QKeySequence::Save << none;
    QTest::newRow("save layout as") << "actionSaveLayoutAs" << QKeySequence::SaveAs
                                    << QList<QKeySequence> {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S)};
    QTest::newRow("quit") << "actionQuit" << QKeySequence::Quit << none;
    QTest::newRow("undo") << "actionUndo" << QKeySequence::Undo << none;
    QTest::newRow("redo") << "actionRedo" << QKeySequence::Redo << none;
}

void TestAppHostMenus::standardShortcuts()
{
    QFETCH(QString, action);
    QFETCH(QKeySequence::StandardKey, key);
    QFETCH(QList<QKeySequence>, otherwise);
    const QList<QKeySequence> keys = QKeySequence::keyBindings(key);
    QCOMPARE(host()->action(action)->shortcuts(), keys.isEmpty() ? otherwise : keys);
}

void TestAppHostMenus::undoKeyInLayoutWindowUndoesOnce()
{
    // The host's Undo shows the key that the layout window's own Undo answers to; one key
    // press must undo exactly one step, not none for two claims on the key.
    host()->action("Image Layout Window")->setChecked(true);
    QWidget* pLayoutWindow = host()->layoutSubWindow()->widget();
    QGuiApplication::clipboard()->setImage(solidImage(QSize(60, 40), Qt::red));
    pLayoutWindow->findChild<QAction*>("m_pPasteAction")->trigger();
    QGuiApplication::clipboard()->setImage(solidImage(QSize(60, 40), Qt::blue));
    pLayoutWindow->findChild<QAction*>("m_pPasteAction")->trigger();
    QCOMPARE(host()->layoutItemCount(), 2);
    QCOMPARE(host()->action("actionUndo")->shortcut(), QKeySequence(QKeySequence::Undo));
    QApplication::setActiveWindow(host()->window());
    auto* pView = pLayoutWindow->findChild<QGraphicsView*>();
    pView->setFocus();
    QTest::keyClick(pView, Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(host()->layoutItemCount(), 1);
    // The host's menu entry undoes the next step of the same history.
    host()->action("actionUndo")->trigger();
    QCOMPARE(host()->layoutItemCount(), 0);
}

void TestAppHostMenus::helpMenuFollowsWindowMenu()
{
    const QList<QAction*> menus = host()->window()->menuBar()->actions();
    QStringList names;
    for (const QAction* pAction : menus)
        names << pAction->menu()->objectName();
    QCOMPARE(names, QStringList({"menuFile", "menuEdit", "menuView", "menuFigure", "menuTools", "menuWindow", "menuHelp"}));
    const QMenu* pHelp = menus.last()->menu();
    QCOMPARE(pHelp->title(), QStringLiteral("&Help"));
    QCOMPARE(pHelp->actions().size(), 2);
    QCOMPARE(host()->action("actionAbout")->text(), QStringLiteral("&About %1").arg(QGuiApplication::applicationDisplayName()));
    QCOMPARE(host()->action("actionAboutQt")->text(), QStringLiteral("About &Qt"));
}

void TestAppHostMenus::aboutBoxNamesVersionAndLibraries()
{
    QString strTitle;
    QString strHeading;
    QList<QStringList> rows;
    bool bIcon = false;
    bool bSeen = false;
    answerNextModalDialog(
        QDialog::staticMetaObject,
        [&](QDialog* pDialog) {
            strTitle = pDialog->windowTitle();
            strHeading = pDialog->findChild<QLabel*>("titleLabel")->text();
            rows = tableRows(pDialog->findChild<QTableWidget*>("libraryTable"));
            bIcon = !pDialog->findChild<QLabel*>("iconLabel")->pixmap(Qt::ReturnByValue).isNull();
            QTest::mouseClick(pDialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Close), Qt::LeftButton);
        },
        &bSeen);
    host()->action("actionAbout")->trigger();
    QVERIFY(bSeen);
    QCOMPARE(strTitle, QStringLiteral("About %1").arg(QGuiApplication::applicationDisplayName()));
    QVERIFY2(strHeading.contains(QStringLiteral("Version " VX_VERSION_STRING)), qPrintable(strHeading));
    QVERIFY(bIcon);
    // The host's libraries first, then those the layout tool's plugin module adds.
    VX_REQUIRE_PROGRAM("pkg-config");
    const QList<QStringList> expected {
        {"Qt", installedVersion("Qt5Core"), "LGPL-3.0-only"},
        {"DCMTK", installedVersion("dcmtk"), "BSD-3-Clause"},
        {"zlib", installedVersion("zlib"), "Zlib"},
        {"libzip", installedVersion("libzip"), "BSD-3-Clause"},
        {"libpng", installedVersion("libpng"), "libpng-2.0"},
    };
    QCOMPARE(rows, expected);
}

QTEST_MAIN(TestAppHostMenus)
#include "tst_app_hostmenus.moc"
