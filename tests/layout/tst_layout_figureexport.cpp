#include "FileDialogAnswer.h"
#include "FigureControls.h"
#include "LayoutFixture.h"
#include "MessageBoxAnswer.h"
#include "ModalDialogAnswer.h"
#include "OutsideProgram.h"
#include "WidgetTestCase.h"

#include <figure/export/VXSFigureExportDialog.h>
#include <figure/VXSFigureController.h>
#include <figure/VXSFigurePage.h>
#include <output/VXSLayoutRenderer.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>

#include <VXPreference.h>
#include <VXSSettings.h>

#include <QAction>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QUndoStack>
#include <QXmlStreamReader>
#include <QtTest>

#include <functional>
#include <memory>

// What the user does in the Export Figure dialog before pressing Export.
using DialogSteps = std::function<void(QDialog& dialog)>;

namespace {

constexpr double MmPerInch = 25.4;

// Picks the entry with the text from the box by keyboard, as a user does.
void choose(const QDialog& dialog, const char* pBox, const QString& strText)
{
    auto* pCombo = panelControl<QComboBox>(dialog, pBox);
    QVERIFY2(pCombo->findText(strText) >= 0, qPrintable(strText));
    pCombo->setFocus();
    QTest::keyClick(pCombo, Qt::Key_Home);
    while (pCombo->currentText() != strText && pCombo->currentIndex() < pCombo->count() - 1)
        QTest::keyClick(pCombo, Qt::Key_Down);
    QCOMPARE(pCombo->currentText(), strText);
}

// Types the text in place of what the box or field held, then leaves it with Tab.
void type(const QDialog& dialog, const char* pName, const QString& strText)
{
    auto* pWidget = panelControl<QWidget>(dialog, pName);
    pWidget->setFocus();
    if (auto* pSpin = qobject_cast<QAbstractSpinBox*>(pWidget))
        pSpin->selectAll();
    else if (auto* pEdit = qobject_cast<QLineEdit*>(pWidget))
        pEdit->selectAll();
    QTest::keyClicks(pWidget, strText);
    QTest::keyClick(pWidget, Qt::Key_Tab);
}

void clickExport(const QDialog& dialog)
{
    QTest::mouseClick(panelControl<QPushButton>(dialog, "exportButton"), Qt::LeftButton);
}

// The pixels across and down of a figure of the width and resolution, for a page of the size.
QSize figurePixels(double dWidthMm, int nDpi, const QSize& page)
{
    const int nWidth = qRound(dWidthMm / MmPerInch * nDpi);
    return QSize(nWidth, qRound(nWidth * double(page.height()) / page.width()));
}

QByteArray tiffInfo(const QString& strPath)
{
    const OutsideProgram info(QStringLiteral("tiffinfo"), {strPath});
    if (!info.succeeded())
        qWarning("%s", qPrintable(info.report()));
    return info.output();
}

} // namespace

Q_DECLARE_METATYPE(DialogSteps)

// Export Figure, from the panel's button and from the File menu's command: the dialog's
// presets, typed values, formats and file name, the files as outside programs read them, and
// values that cannot be exported.
class TestLayoutFigureExport : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void commandInFileMenuAndOnTheFigurePage();
    void startsFromTheFigurePage();
    void tiffThroughTheFigurePanelButton_data();
    void tiffThroughTheFigurePanelButton();
    void pngCarriesItsResolution();
    void pdfIsTheWidthOnPaperWithFontsEmbedded();
    void svgIsTheWidthOnPaper();
    void fileChosenInTheFileDialog();
    void refusesBadValues_data();
    void refusesBadValues();
    void asksBeforeReplacing();
    void disabledWithoutALayout();

private:
    void endTest() override;
    QWidget& panel();
    QSize pageUnits() const;
    QString path(const QString& strName) const;
    // Opens the dialog with the panel's button, or the File menu's command, and takes
    // the steps in it; false when no dialog came.
    bool runDialog(const DialogSteps& steps, bool bFromMenu = false);

    std::unique_ptr<LayoutFixture> m_pLayout;
    std::unique_ptr<CVXSFigureController> m_pController;
    QTemporaryDir m_dir;
};

void TestLayoutFigureExport::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

void TestLayoutFigureExport::init()
{
    QDir folder(m_dir.path());
    for (const QString& strName : folder.entryList(QDir::Files))
        QVERIFY(folder.remove(strName));
    CVXPreference::getSettings()->setRecentFilePath(m_dir.path());
    m_pLayout = std::make_unique<LayoutFixture>(QSize(600, 400));
    m_pLayout->pasteImage(QSize(300, 200), Qt::darkCyan);
    m_pLayout->addItem("text", QRectF(40, 300, 200, 40));
    m_pLayout->view()->selectItem(nullptr);
    m_pController = std::make_unique<CVXSFigureController>();
    m_pController->setManager(m_pLayout->manager());
    panel().show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel()));
}

void TestLayoutFigureExport::endTest()
{
    m_pController.reset();
    m_pLayout.reset();
}

QWidget& TestLayoutFigureExport::panel()
{
    return *m_pController->panel();
}

QSize TestLayoutFigureExport::pageUnits() const
{
    return CVXSLayoutRenderer(*m_pLayout->scene(), m_pLayout->view()).pageSize();
}

QString TestLayoutFigureExport::path(const QString& strName) const
{
    return m_dir.filePath(strName);
}

bool TestLayoutFigureExport::runDialog(const DialogSteps& steps, bool bFromMenu)
{
    bool bSeen = false;
    answerNextModalDialog(
        CVXSFigureExportDialog::staticMetaObject, [steps](QDialog* pDialog) { steps(*pDialog); }, &bSeen);
    if (bFromMenu) {
        m_pController->menuActions(QLatin1String(CVXSFigureController::FileMenu)).value(0)->trigger();
    } else {
        auto* pButton = panelControl<QPushButton>(panel(), "actionExportFigureButton");
        if (!pButton)
            return false;
        QTest::mouseClick(pButton, Qt::LeftButton);
    }
    return bSeen;
}

void TestLayoutFigureExport::commandInFileMenuAndOnTheFigurePage()
{
    const QList<QAction*> fileActions = m_pController->menuActions(QLatin1String(CVXSFigureController::FileMenu));
    QCOMPARE(fileActions.size(), 1);
    QCOMPARE(fileActions.first()->text(), QStringLiteral("Export Figure..."));
    QVERIFY(m_pController->menuActions(QLatin1String(CVXSFigureController::FigureMenu)).contains(fileActions.first()));
    auto* pButton = panelControl<QPushButton>(panel(), "actionExportFigureButton");
    QVERIFY(pButton);
    QCOMPARE(pButton->text(), QStringLiteral("Export Figure..."));
    QVERIFY(pButton->isVisible());
    QVERIFY(pButton->isEnabled());
}

void TestLayoutFigureExport::startsFromTheFigurePage()
{
    CVXSFigurePage page;
    page.dWidthMm = 174.0;
    page.nDpi = 1200;
    QVERIFY(m_pController->setPage(page, QStringLiteral("Change Figure Width")));
    const int nUndoSteps = m_pLayout->manager()->undoStack()->count();
    const QSize expected = figurePixels(174.0, 1200, pageUnits());
    const bool bSeen = runDialog([expected](QDialog& dialog) {
        QCOMPARE(panelControl<QDoubleSpinBox>(dialog, "exportWidthMm")->value(), 174.0);
        QCOMPARE(panelControl<QComboBox>(dialog, "exportWidthPreset")->currentText(), QStringLiteral("174 mm (two columns)"));
        QCOMPARE(panelControl<QSpinBox>(dialog, "exportDpi")->value(), 1200);
        QCOMPARE(panelControl<QComboBox>(dialog, "exportDpiPreset")->currentText(), QStringLiteral("1200 dpi"));
        const QString strSize = panelControl<QLabel>(dialog, "exportSize")->text();
        QVERIFY2(strSize.contains(QStringLiteral("%1 x %2 pixels").arg(expected.width()).arg(expected.height())),
                 qPrintable(strSize));
        // A typed width no preset has shows as Custom, and the size follows it.
        type(dialog, "exportWidthMm", QStringLiteral("100"));
        QCOMPARE(panelControl<QComboBox>(dialog, "exportWidthPreset")->currentText(), QStringLiteral("Custom"));
        QVERIFY2(panelControl<QLabel>(dialog, "exportSize")->text().contains(QString::number(qRound(100 / MmPerInch * 1200))),
                 qPrintable(panelControl<QLabel>(dialog, "exportSize")->text()));
        rejectDialog(&dialog);
    });
    QVERIFY(bSeen);
    // The dialog's values are the export's own: the figure page stays as it was.
    QCOMPARE(m_pController->page(), page);
    QCOMPARE(m_pLayout->manager()->undoStack()->count(), nUndoSteps);
}

void TestLayoutFigureExport::tiffThroughTheFigurePanelButton_data()
{
    QTest::addColumn<QString>("widthPreset");
    QTest::addColumn<double>("widthMm");
    QTest::addColumn<QString>("dpiPreset");
    QTest::addColumn<int>("dpi");
    QTest::addColumn<QString>("compression");
    QTest::addColumn<QByteArray>("scheme");
    QTest::newRow("one column, 600 dpi, LZW") << "85 mm (one column)" << 85.0 << "600 dpi" << 600 << "LZW"
                                              << QByteArray("LZW");
    QTest::newRow("one and a half columns, 300 dpi, Deflate")
        << "114 mm (one and a half columns)" << 114.0 << "300 dpi" << 300 << "Deflate" << QByteArray("AdobeDeflate");
    QTest::newRow("two columns, 1200 dpi, LZW") << "174 mm (two columns)" << 174.0 << "1200 dpi" << 1200 << "LZW"
                                                << QByteArray("LZW");
    QTest::newRow("A4 width, 300 dpi, Deflate") << "210 mm (A4 portrait)" << 210.0 << "300 dpi" << 300 << "Deflate"
                                                << QByteArray("AdobeDeflate");
}

// The presets, the format and the compression chosen, the name typed: the TIFF is exactly
// round(width / 25.4 x dpi) pixels wide, carries the resolution per inch and is compressed.
void TestLayoutFigureExport::tiffThroughTheFigurePanelButton()
{
    QFETCH(QString, widthPreset);
    QFETCH(double, widthMm);
    QFETCH(QString, dpiPreset);
    QFETCH(int, dpi);
    QFETCH(QString, compression);
    QFETCH(QByteArray, scheme);
    VX_REQUIRE_PROGRAM("tiffinfo");
    const QString strFigure = path(QStringLiteral("figure.tif"));
    QVERIFY(runDialog([&](QDialog& dialog) {
        choose(dialog, "exportWidthPreset", widthPreset);
        choose(dialog, "exportDpiPreset", dpiPreset);
        choose(dialog, "exportFormat", QStringLiteral("TIFF"));
        choose(dialog, "exportTiffCompression", compression);
        type(dialog, "exportFileName", strFigure);
        clickExport(dialog);
    }));
    QTRY_VERIFY(QApplication::activeModalWidget() == nullptr);

    const QSize pixels = figurePixels(widthMm, dpi, pageUnits());
    const QByteArray info = tiffInfo(strFigure);
    QVERIFY2(info.contains(QStringLiteral("  Image Width: %1 Image Length: %2\n").arg(pixels.width()).arg(pixels.height()).toLatin1()),
             info.constData());
    QVERIFY2(info.contains(QStringLiteral("  Resolution: %1, %1 pixels/inch\n").arg(dpi).toLatin1()), info.constData());
    QVERIFY2(info.contains("  Compression Scheme: " + scheme + "\n"), info.constData());
}

void TestLayoutFigureExport::pngCarriesItsResolution()
{
    VX_REQUIRE_PROGRAM("pngcheck");
    QVERIFY(runDialog([this](QDialog& dialog) {
        choose(dialog, "exportWidthPreset", QStringLiteral("85 mm (one column)"));
        type(dialog, "exportDpi", QStringLiteral("450"));
        QCOMPARE(panelControl<QComboBox>(dialog, "exportDpiPreset")->currentText(), QStringLiteral("Custom"));
        choose(dialog, "exportFormat", QStringLiteral("PNG"));
        // The compression belongs to TIFF only.
        QVERIFY(!panelControl<QComboBox>(dialog, "exportTiffCompression")->isEnabled());
        // A name without a suffix gets the format's, in the recent export folder.
        type(dialog, "exportFileName", QStringLiteral("plain"));
        clickExport(dialog);
    }));
    const QString strFigure = path(QStringLiteral("plain.png"));
    QTRY_VERIFY(QFileInfo::exists(strFigure));
    const QImage figure(strFigure);
    QCOMPARE(figure.size(), figurePixels(85.0, 450, pageUnits()));
    QCOMPARE(figure.width(), 1506);
    const OutsideProgram check(QStringLiteral("pngcheck"), {QStringLiteral("-v"), strFigure});
    QVERIFY2(check.succeeded(), qPrintable(check.report()));
    QVERIFY2(check.output().contains("17717x17717 pixels/meter (450 dpi)"), qPrintable(check.report()));
}

void TestLayoutFigureExport::pdfIsTheWidthOnPaperWithFontsEmbedded()
{
    VX_REQUIRE_PROGRAM("pdfinfo");
    VX_REQUIRE_PROGRAM("pdffonts");
    const QString strFigure = path(QStringLiteral("figure.pdf"));
    QVERIFY(runDialog([&](QDialog& dialog) {
        choose(dialog, "exportWidthPreset", QStringLiteral("85 mm (one column)"));
        choose(dialog, "exportFormat", QStringLiteral("PDF"));
        type(dialog, "exportFileName", strFigure);
        clickExport(dialog);
    }));
    QTRY_VERIFY(QFileInfo::exists(strFigure));

    const OutsideProgram info(QStringLiteral("pdfinfo"), {strFigure});
    QVERIFY2(info.succeeded(), qPrintable(info.report()));
    static const QRegularExpression pageSize(QStringLiteral("Page size: +([0-9.]+) x ([0-9.]+) pts"));
    const QRegularExpressionMatch match = pageSize.match(QString::fromLatin1(info.output()));
    QVERIFY2(match.hasMatch(), qPrintable(info.report()));
    // 85 mm are 240.94 points.
    QVERIFY2(qAbs(match.captured(1).toDouble() - 240.945) < 0.01, qPrintable(info.report()));
    const double dHeight = 85.0 / MmPerInch * 72 * pageUnits().height() / pageUnits().width();
    QVERIFY2(qAbs(match.captured(2).toDouble() - dHeight) < 0.01, qPrintable(info.report()));

    // The label's font goes in with the file: every font listed is embedded.
    const OutsideProgram fonts(QStringLiteral("pdffonts"), {strFigure});
    QVERIFY2(fonts.succeeded(), qPrintable(fonts.report()));
    const QList<QByteArray> lines = fonts.output().trimmed().split('\n').mid(2);
    QVERIFY2(!lines.isEmpty(), qPrintable(fonts.report()));
    for (const QByteArray& line : lines) {
        // name, type (one or two words), encoding, then emb, sub, uni, object, ID
        const QList<QByteArray> columns = line.simplified().split(' ');
        QVERIFY2(columns.size() >= 7 && columns[columns.size() - 5] == "yes", qPrintable(fonts.report()));
    }
}

void TestLayoutFigureExport::svgIsTheWidthOnPaper()
{
    const QString strFigure = path(QStringLiteral("figure.svg"));
    QVERIFY(runDialog([&](QDialog& dialog) {
        choose(dialog, "exportWidthPreset", QStringLiteral("114 mm (one and a half columns)"));
        choose(dialog, "exportFormat", QStringLiteral("SVG"));
        type(dialog, "exportFileName", strFigure);
        clickExport(dialog);
    }));
    QTRY_VERIFY(QFileInfo::exists(strFigure));
    QFile file(strFigure);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    while (!xml.atEnd() && !(xml.readNext() == QXmlStreamReader::StartElement && xml.name() == QLatin1String("svg"))) {
    }
    QCOMPARE(xml.attributes().value(QStringLiteral("width")).toString(), QStringLiteral("114mm"));
    const QString strHeight = xml.attributes().value(QStringLiteral("height")).toString();
    const double dHeight = 114.0 * pageUnits().height() / pageUnits().width();
    QVERIFY2(strHeight.endsWith(QLatin1String("mm")) && qAbs(strHeight.chopped(2).toDouble() - dHeight) < 0.001,
             qPrintable(strHeight));
    // The label stays text.
    QVERIFY(file.seek(0));
    QVERIFY(file.readAll().contains(">Label</text>"));
}

// Browse opens the file dialog in the recent export folder; the file chosen there, with its
// filter, sets the name and the format. Through the File menu's command.
void TestLayoutFigureExport::fileChosenInTheFileDialog()
{
    VX_REQUIRE_PROGRAM("tiffinfo");
    CFileDialogAnswers answers({chooseFile(QStringLiteral("TIFF files (*.tif)"), QStringLiteral("chosen"))});
    QVERIFY(runDialog(
        [](QDialog& dialog) {
            type(dialog, "exportWidthMm", QStringLiteral("100"));
            type(dialog, "exportDpi", QStringLiteral("450"));
            QTest::mouseClick(panelControl<QPushButton>(dialog, "exportBrowse"), Qt::LeftButton);
            QCOMPARE(panelControl<QComboBox>(dialog, "exportFormat")->currentText(), QStringLiteral("TIFF"));
            clickExport(dialog);
        },
        true));
    QCOMPARE(answers.seen().size(), 1);
    QCOMPARE(QDir(answers.seen().first().m_strDirectory).canonicalPath(), QDir(m_dir.path()).canonicalPath());
    QVERIFY(answers.seen().first().m_nameFilters.contains(QStringLiteral("PDF files (*.pdf)")));

    const QString strFigure = path(QStringLiteral("chosen.tif"));
    QTRY_VERIFY(QFileInfo::exists(strFigure));
    const QByteArray info = tiffInfo(strFigure);
    // 100 mm at 450 dpi: 1771.65 pixels.
    QVERIFY2(info.contains("  Image Width: 1772 "), info.constData());
    QVERIFY2(info.contains("  Resolution: 450, 450 pixels/inch\n"), info.constData());
}

void TestLayoutFigureExport::refusesBadValues_data()
{
    QTest::addColumn<DialogSteps>("steps");
    QTest::addColumn<QString>("message");
    const auto typed = [](const char* pName, const QString& strText) {
        return DialogSteps([pName, strText](QDialog& dialog) { type(dialog, pName, strText); });
    };
    QTest::newRow("width 0") << typed("exportWidthMm", QStringLiteral("0"))
                             << "The figure width has to be from 1 to 2000 mm; 0 mm cannot be exported.";
    QTest::newRow("width above 2000 mm") << typed("exportWidthMm", QStringLiteral("2500"))
                                         << "The figure width has to be from 1 to 2000 mm; 2500 mm cannot be exported.";
    QTest::newRow("dpi below 72") << typed("exportDpi", QStringLiteral("50"))
                                  << "The resolution has to be from 72 to 2400 dpi; 50 dpi cannot be exported.";
    QTest::newRow("dpi above 2400") << typed("exportDpi", QStringLiteral("3000"))
                                    << "The resolution has to be from 72 to 2400 dpi; 3000 dpi cannot be exported.";
    QTest::newRow("no file name") << typed("exportFileName", QStringLiteral("   "))
                                  << "Enter the name of the file to export the figure to.";
    // 2000 mm at 2400 dpi: more pixels than one image can hold.
    QTest::newRow("raster too large for memory")
        << DialogSteps([](QDialog& dialog) {
               type(dialog, "exportWidthMm", QStringLiteral("2000"));
               type(dialog, "exportDpi", QStringLiteral("2400"));
               choose(dialog, "exportFormat", QStringLiteral("PNG"));
           })
        << "A figure of 188976 x ";
    const QString strMissing = path(QStringLiteral("no/such/folder/figure.pdf"));
    QTest::newRow("folder missing") << typed("exportFileName", strMissing)
                                    << QStringLiteral("Could not write %1: %2").arg(strMissing, qt_error_string(ENOENT));
}

// A message says what is wrong, and the dialog stays open with every value as it was.
void TestLayoutFigureExport::refusesBadValues()
{
    QFETCH(DialogSteps, steps);
    QFETCH(QString, message);
    CSeenMessageBox seen;
    QVERIFY(runDialog([&](QDialog& dialog) {
        steps(dialog);
        const QString strWidth = panelControl<QDoubleSpinBox>(dialog, "exportWidthMm")->text();
        const QString strDpi = panelControl<QSpinBox>(dialog, "exportDpi")->text();
        const QString strName = panelControl<QLineEdit>(dialog, "exportFileName")->text();
        answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
        clickExport(dialog);
        QVERIFY(seen.m_bShown);
        QVERIFY(dialog.isVisible());
        QCOMPARE(panelControl<QDoubleSpinBox>(dialog, "exportWidthMm")->text(), strWidth);
        QCOMPARE(panelControl<QSpinBox>(dialog, "exportDpi")->text(), strDpi);
        QCOMPARE(panelControl<QLineEdit>(dialog, "exportFileName")->text(), strName);
        rejectDialog(&dialog);
    }));
    QVERIFY2(seen.m_strText.contains(message), qPrintable(seen.m_strText));
    QCOMPARE(QDir(m_dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
}

// An existing file is replaced only when the user says so; No leaves it and the dialog as
// they were.
void TestLayoutFigureExport::asksBeforeReplacing()
{
    const QString strFigure = path(QStringLiteral("figure.png"));
    QFile existing(strFigure);
    QVERIFY(existing.open(QIODevice::WriteOnly) && existing.write("keep me") == 7);
    existing.close();
    CSeenMessageBox declined;
    CSeenMessageBox accepted;
    QVERIFY(runDialog([&](QDialog& dialog) {
        choose(dialog, "exportFormat", QStringLiteral("PNG"));
        type(dialog, "exportFileName", strFigure);
        answerNextMessageBox(&declined, clickStandardButton(QMessageBox::No));
        clickExport(dialog);
        QVERIFY(dialog.isVisible());
        QFile kept(strFigure);
        QVERIFY(kept.open(QIODevice::ReadOnly));
        QCOMPARE(kept.readAll(), QByteArray("keep me"));
        answerNextMessageBox(&accepted, clickStandardButton(QMessageBox::Yes));
        clickExport(dialog);
    }));
    QVERIFY2(declined.m_strText.contains(strFigure), qPrintable(declined.m_strText));
    QVERIFY(accepted.m_bShown);
    QTRY_VERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(QImage(strFigure).width(), CVXSFigurePage().pixelWidth());
}

void TestLayoutFigureExport::disabledWithoutALayout()
{
    m_pController->setManager(nullptr);
    QVERIFY(!m_pController->menuActions(QLatin1String(CVXSFigureController::FileMenu)).first()->isEnabled());
    m_pController->setManager(m_pLayout->manager());
    QVERIFY(m_pController->menuActions(QLatin1String(CVXSFigureController::FileMenu)).first()->isEnabled());
}

QTEST_MAIN(TestLayoutFigureExport)
#include "tst_layout_figureexport.moc"
