#include "HostFixture.h"
#include "HostTestCase.h"

#include "ModalDialogAnswer.h"

#include <VXHostMainWindow.h>
#include <VXHostSetup.h>
#include <VXSChildWindow.h>
#include <VXSImageExporter.h>

#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPainter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QtTest>

namespace {

QStringList entryTexts(const QMenu* pMenu)
{
    QStringList texts;
    const QList<QAction*> actions = pMenu->actions();
    for (const QAction* pAction : actions)
        texts << (pAction->isSeparator() ? QStringLiteral("-") : pAction->text());
    return texts;
}

// The texts of the standard buttons of the next dialog of the kind the action opens,
// which is then cancelled, and its title first.
QStringList titleAndButtonsShownBy(QAction* pAction, const QMetaObject& kind)
{
    QStringList texts;
    answerNextModalDialog(kind, [&texts](QDialog* pDialog) {
        texts << pDialog->windowTitle();
        const QList<QAbstractButton*> buttons = pDialog->findChild<QDialogButtonBox*>()->buttons();
        for (const QAbstractButton* pButton : buttons)
            texts << pButton->text();
        pDialog->reject();
    });
    pAction->trigger();
    return texts;
}

} // namespace

// Runs with a German system locale (see CMakeLists.txt): the host installs its German
// catalogue and Qt's own, as main does, so its menus and Qt's standard dialogs speak German.
class TestAppHostTranslation : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void menusSpeakGerman();
    void fileMenuSpeaksGerman();
    void figureMenuSpeaksGerman();
    void standardDialogSpeaksGerman();
    void aboutBoxSpeaksGerman();
    void displayRangeBarSpeaksGerman();
    void exportErrorsSpeakGerman_data();
    void exportErrorsSpeakGerman();
    void screenshotOfMenus();

private:

    QMenu* menu(const QString& strObjectName) const;

};

void TestAppHostTranslation::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY2(QLocale::system().name().startsWith(QLatin1String("de")), qPrintable(QLocale::system().name()));
    QVERIFY(qEnvironmentVariableIsEmpty("LANGUAGE"));
    CVXHostSetup::afterApplication();
}

QMenu* TestAppHostTranslation::menu(const QString& strObjectName) const
{
    return host()->window()->menuBar()->findChild<QMenu*>(strObjectName);
}

void TestAppHostTranslation::menusSpeakGerman()
{
    QStringList titles;
    const QList<QAction*> menus = host()->window()->menuBar()->actions();
    for (const QAction* pAction : menus)
        titles << pAction->text();
    QCOMPARE(titles, QStringList({"&Datei", "&Bearbeiten", "&Ansicht", "Ab&bildung", "&Werkzeuge", "&Fenster", "&Hilfe"}));
    QCOMPARE(entryTexts(menu("menuEdit")), QStringList({"&Rückgängig", "&Wiederherstellen"}));
    QCOMPARE(entryTexts(menu("menuWindow")).mid(0, 2), QStringList({"&Nebeneinander", "Ü&berlappend"}));
    QCOMPARE(entryTexts(menu("menuHelp")), QStringList({"Ü&ber " + QGuiApplication::applicationDisplayName(), "Über &Qt"}));
    // The layout tool's entry comes in German from the tool's own catalogue.
    QCOMPARE(entryTexts(menu("menuTools")), QStringList {"Bildlayout-Fenster"});
}

void TestAppHostTranslation::fileMenuSpeaksGerman()
{
    QCOMPARE(entryTexts(menu("menuFile")),
             QStringList({"&Bilder öffnen...", "&Sequenz öffnen...", "Beispiele öffnen", "-", "&Layout öffnen...",
                          "Layout s&peichern", "Layout speichern &unter...", "-", "Abbildung exportieren...",
                          "Neues Studienraster...", "-",
                          "&Zuletzt geöffnet", "-", "B&eenden"}));
    QCOMPARE(entryTexts(menu("menuOpenRecent")), QStringList({"-", "Menü &leeren"}));
}

void TestAppHostTranslation::figureMenuSpeaksGerman()
{
    // The layout tool's figure commands, from the tool's own catalogue.
    QCOMPARE(entryTexts(menu("menuFigure")),
             QStringList({"Abbildung exportieren...", "Felder beschriften", "Maßstabsbalken hinzufügen",
                          "Maßstabsbalken entfernen", "Pixelgröße festlegen...", "Farbskala hinzufügen"}));
}

void TestAppHostTranslation::standardDialogSpeaksGerman()
{
    // The dialog is Qt's own: its buttons come from Qt's German catalogue.
    const QStringList texts = titleAndButtonsShownBy(host()->action("actionOpenImages"), QFileDialog::staticMetaObject);
    QCOMPARE(texts, QStringList({"Bilder öffnen", "&Öffnen", "Abbrechen"}));
}

void TestAppHostTranslation::aboutBoxSpeaksGerman()
{
    const QStringList texts = titleAndButtonsShownBy(host()->action("actionAbout"), QDialog::staticMetaObject);
    QCOMPARE(texts, QStringList({"Über " + QGuiApplication::applicationDisplayName(), "Schließen"}));
}

void TestAppHostTranslation::displayRangeBarSpeaksGerman()
{
    host()->window()->openSamples();
    CVXSChildWindow* pXray = host()->imageWindow(0);
    pXray->setDisplayRangeBarVisible(true);
    QCOMPARE(pXray->findChild<QPushButton*>(QStringLiteral("displayRangeAuto"))->text(), QStringLiteral("Auto"));
    QCOMPARE(pXray->findChild<QPushButton*>(QStringLiteral("displayRangeApplyToAll"))->text(),
             QStringLiteral("Auf alle anwenden"));
    auto* pTable = pXray->findChild<QComboBox*>(QStringLiteral("displayRangeTable"));
    QCOMPARE(pTable->itemText(0), QStringLiteral("Grau"));
    QCOMPARE(pTable->itemText(1), QStringLiteral("Heiß"));
    QCOMPARE(pXray->findChild<QLabel*>(QStringLiteral("displayRangeUnit"))->text(), QStringLiteral("(Rohwerte)"));
    // The luminescence sample is a colour picture.
    CVXSChildWindow* pLuminescence = host()->imageWindow(1);
    pLuminescence->setDisplayRangeBarVisible(true);
    QCOMPARE(pLuminescence->findChild<QLabel*>(QStringLiteral("displayRangeMessage"))->text(),
             QStringLiteral("Ein Farbbild: Seine Farben werden unverändert gezeigt, ohne Anzeigebereich."));
}

void TestAppHostTranslation::exportErrorsSpeakGerman_data()
{
    QTest::addColumn<bool>("withImage");
    QTest::addColumn<QString>("fileName"); // in a fresh temporary folder; empty for none
    QTest::addColumn<QString>("expected"); // %1 is the path, %2 what the system says
    QTest::newRow("no image") << false << "out.png"
                              << "%1 konnte nicht geschrieben werden: es gibt kein Bild, das geschrieben werden könnte";
    QTest::newRow("no file name") << true << ""
                                  << "Das Bild konnte nicht geschrieben werden: es wurde kein Dateiname angegeben";
    QTest::newRow("unknown suffix")
        << true << "out.xyz"
        << "%1 konnte nicht geschrieben werden: der Dateiname endet nicht auf die Endung eines Formats, das "
           "dieses Programm schreibt";
    QTest::newRow("missing folder") << true << "missing/out.png" << "%1 konnte nicht geschrieben werden: %2";
}

// The exporter's account of a failure, which follows the status text in the error message.
void TestAppHostTranslation::exportErrorsSpeakGerman()
{
    QFETCH(bool, withImage);
    QFETCH(QString, fileName);
    QFETCH(QString, expected);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QImage image;
    if (withImage) {
        image = QImage(8, 6, QImage::Format_RGB32);
        image.fill(Qt::darkCyan);
    }
    QString strPath = fileName.isEmpty() ? QString() : dir.filePath(fileName);
    CVXSImageExporter exporter;
    QVERIFY(exporter.saveImage(image, strPath) != eSTATUS_SUCCESS);
    if (expected.contains(QLatin1String("%2")))
        QCOMPARE(exporter.errorText(), expected.arg(strPath, qt_error_string(ENOENT)));
    else if (expected.contains(QLatin1String("%1")))
        QCOMPARE(exporter.errorText(), expected.arg(strPath));
    else
        QCOMPARE(exporter.errorText(), expected);
}

void TestAppHostTranslation::screenshotOfMenus()
{
    // Writes the README's picture of the German File menu when asked to (see README.md).
    const QString strOutput = qEnvironmentVariable("VX_HOST_MENU_SCREENSHOT");
    if (strOutput.isEmpty())
        QSKIP("VX_HOST_MENU_SCREENSHOT names no file to write");
    CVXHostMainWindow* pWindow = host()->window();
    pWindow->resize(900, 560);
    pWindow->openSamples();
    QMenu* pFile = menu("menuFile");
    pWindow->menuBar()->setActiveAction(pFile->menuAction());
    QTRY_VERIFY(pFile->isVisible());
    // The menu is a window of its own; it goes into the picture where it lies on the main window.
    QImage picture = pWindow->grab().toImage();
    QPainter painter(&picture);
    painter.drawPixmap(pWindow->mapFromGlobal(pFile->pos()), pFile->grab());
    painter.end();
    pFile->hide();
    QVERIFY(picture.save(strOutput));
}

QTEST_MAIN(TestAppHostTranslation)
#include "tst_app_hosttranslation.moc"
