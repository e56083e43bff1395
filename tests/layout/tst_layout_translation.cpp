#include "WidgetTestCase.h"

#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>

#include <QAction>
#include <QComboBox>
#include <QDialog>
#include <QLocale>
#include <QToolButton>
#include <QtTest>

// Runs with a German system locale (see CMakeLists.txt): the manager installs the tool's
// German catalogue, so the window and its dialog speak German.
class TestLayoutTranslation : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void windowSpeaksGerman();
    void editTextDialogSpeaksGerman();
    void untranslatedTextsStay();
};

void TestLayoutTranslation::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY2(QLocale::system().name().startsWith(QLatin1String("de")), qPrintable(QLocale::system().name()));
    QVERIFY(qEnvironmentVariableIsEmpty("LANGUAGE"));
}

void TestLayoutTranslation::windowSpeaksGerman()
{
    CVXSLayoutManager manager;
    CVXSLayoutWindow* pWindow = manager.getLayoutWindow();
    QCOMPARE(pWindow->windowTitle(), QStringLiteral("Bildlayout-Fenster"));
    auto* pExport = pWindow->findChild<QAction*>(QStringLiteral("m_pExportAction"));
    QCOMPARE(pExport->toolTip(), QStringLiteral("Exportieren"));
    auto* pArrowTool = pWindow->findChild<QToolButton*>(QStringLiteral("m_pArrowToolBtn"));
    QCOMPARE(pArrowTool->toolTip(), QStringLiteral("Linie/Pfeil zeichnen"));
    QCOMPARE(pWindow->layoutStyleCombo()->itemText(0), QStringLiteral("Freie Anordnung"));
    // The shortcuts keep their keys.
    QCOMPARE(pWindow->findChild<QAction*>(QStringLiteral("m_pPasteAction"))->shortcut(),
             QKeySequence(Qt::CTRL + Qt::Key_V));
}

void TestLayoutTranslation::editTextDialogSpeaksGerman()
{
    CVXSLayoutManager manager;
    auto* pDialog = manager.getLayoutView()->findChild<QDialog*>();
    QVERIFY(pDialog);
    QCOMPARE(pDialog->windowTitle(), QStringLiteral("Text bearbeiten"));
}

void TestLayoutTranslation::untranslatedTextsStay()
{
    CVXSLayoutManager manager;
    auto* pPointer = manager.getLayoutWindow()->findChild<QAction*>(QStringLiteral("m_pArrowAction"));
    QCOMPARE(pPointer->text(), QStringLiteral("m_pArrowAction"));
    QCOMPARE(pPointer->toolTip(), QStringLiteral("Zeiger"));
    QCOMPARE(pPointer->whatsThis(),
             QStringLiteral("<b>Pointer:</b><br>Reset mouse cursor back to Pointer/Picking mode.</br."));
}

QTEST_MAIN(TestLayoutTranslation)
#include "tst_layout_translation.moc"
