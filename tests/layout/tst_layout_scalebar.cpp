#include "FigureControls.h"
#include "LayoutFixture.h"
#include "LayoutRecord.h"
#include "MessageBoxAnswer.h"
#include "ModalDialogAnswer.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <figure/VXSFigureController.h>
#include <figure/VXSItemFigure.h>
#include <figure/VXSScaleBar.h>
#include <figure/properties/VXSPixelSizeDialog.h>
#include <file/VXSLayoutFileCommands.h>
#include <scene/VXSLayoutItemGeometry.h>
#include <VXPixelSize.h>
#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>

#include <QAction>
#include <QCheckBox>
#include <QColorDialog>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QToolButton>
#include <QUndoStack>
#include <QtTest>

#include <functional>
#include <memory>

using namespace VXSLayout;

// An edit made through the panel's scale bar editor, as a user makes it.
using Edit = std::function<void(QWidget& panel)>;
Q_DECLARE_METATYPE(Edit)
// What an edit must have done to the bar.
using BarCheck = std::function<bool(const CVXSScaleBar& bar)>;
Q_DECLARE_METATYPE(BarCheck)

namespace {

const QColor Dark(10, 20, 30);
constexpr double Scale = 4.0;
// 400 source pixels of 50 µm: the image shows 20 mm, and its automatic bar is 5 mm.
const QSize SourceSize(400, 300);
constexpr double PixelMm = 0.05;

QImage calibratedImage()
{
    QImage image = solidImage(SourceSize, Dark);
    CVXPixelSize::set(image, PixelMm);
    return image;
}

void clickCheckBox(QCheckBox* pBox)
{
    QTest::mouseClick(pBox, Qt::LeftButton, {}, QPoint(6, pBox->height() / 2));
}

Edit clicked(const char* pName)
{
    return [pName](QWidget& panel) { clickCheckBox(panelControl<QCheckBox>(panel, pName)); };
}

Edit typedLength(const QString& strLength)
{
    return [strLength](QWidget& panel) {
        clickCheckBox(panelControl<QCheckBox>(panel, "figureScaleBarAuto"));
        auto* pLength = panelControl<QLineEdit>(panel, "figureScaleBarLength");
        QTRY_VERIFY(pLength->isEnabled());
        pLength->setFocus();
        pLength->selectAll();
        QTest::keyClicks(pLength, strLength);
        QTest::keyClick(pLength, Qt::Key_Return);
    };
}

Edit typedThickness(const QString& strPoints)
{
    return [strPoints](QWidget& panel) {
        auto* pBox = panelControl<QDoubleSpinBox>(panel, "figureScaleBarThickness");
        pBox->setFocus();
        pBox->selectAll();
        QTest::keyClicks(pBox, strPoints);
        QTest::keyClick(pBox, Qt::Key_Return);
    };
}

// The corner nSteps further down the box, chosen with the keyboard.
Edit cornerChosen(int nSteps)
{
    return [nSteps](QWidget& panel) {
        auto* pCorner = panelControl<QComboBox>(panel, "figureScaleBarCorner");
        pCorner->setFocus();
        for (int i = 0; i < nSteps; ++i)
            QTest::keyClick(pCorner, Qt::Key_Down);
    };
}

Edit colourChosen(QColor colour)
{
    return [colour](QWidget& panel) {
        bool bSeen = false;
        answerNextModalDialog(
            QColorDialog::staticMetaObject,
            [colour](QDialog* pDialog) {
                static_cast<QColorDialog*>(pDialog)->setCurrentColor(colour);
                pDialog->accept();
            },
            &bSeen);
        QTest::mouseClick(panelControl<QToolButton>(panel, "figureScaleBarColour"), Qt::LeftButton);
        QVERIFY(bSeen);
    };
}

// The longest run of pixels near the colour on any row of the rectangle, given in page units
// of a page drawn at the scale.
int longestRun(const QImage& page, const QRectF& rect, const QColor& colour, double dScale = Scale)
{
    const QRect area = QRectF(rect.topLeft() * dScale, rect.size() * dScale).toRect() & page.rect();
    int nLongest = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        int nRun = 0;
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor pixel = page.pixelColor(x, y);
            const bool bNear = qAbs(pixel.red() - colour.red()) + qAbs(pixel.green() - colour.green())
                                   + qAbs(pixel.blue() - colour.blue())
                               < 60;
            nRun = bNear ? nRun + 1 : 0;
            nLongest = qMax(nLongest, nRun);
        }
    }
    return nLongest;
}

QRectF placeOf(const QGraphicsItem* pItem)
{
    return VXSLayoutItemGeometry::geometryRect(*pItem).normalized();
}

// The image's picture in the output at scale 4 leaves out the item's frame of 2 units.
QRectF pictureOf(const QGraphicsItem* pItem)
{
    return placeOf(pItem).adjusted(2, 2, -2, -2);
}

// The bar's length in output pixels as the calibration asks for it.
double expectedBarPixels(const QGraphicsItem* pImage, double dBarMm)
{
    return pictureOf(pImage).width() * Scale * dBarMm / (PixelMm * SourceSize.width());
}

int barPixels(const QImage& page, const QGraphicsItem* pImage, const QColor& colour = Qt::white)
{
    return longestRun(page, pictureOf(pImage), colour);
}

} // namespace

// Scale bars measured from the image's pixel size, added and edited through the figure
// commands and the panel, each change one undo step, kept in layout files and drawn
// the same on screen and in output wherever the image goes.
class TestLayoutScaleBar : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void automaticLength_data();
    void automaticLength();
    void lengthText_data();
    void lengthText();
    void lengthParsed_data();
    void lengthParsed();
    void addAndRemoveFromTheFigureMenu();
    void imageWithoutPixelSize();
    void pixelSizeDialogRefuses_data();
    void pixelSizeDialogRefuses();
    void pixelSizeDialogSetsIt();
    void editorEdit_data();
    void editorEdit();
    void barFollowsTheImage();
    void screenAndExportAgree();
    void keptInLayoutFiles();

private:
    void endTest() override;
    QWidget& panel();
    CVXSLayoutItemImage* selectedBarImage();

    std::unique_ptr<LayoutFixture> m_pLayout;
    std::unique_ptr<CVXSFigureController> m_pController;
    QTemporaryDir m_dir;
};

void TestLayoutScaleBar::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

void TestLayoutScaleBar::init()
{
    m_pLayout = std::make_unique<LayoutFixture>(QSize(600, 400));
    m_pController = std::make_unique<CVXSFigureController>();
    m_pController->setManager(m_pLayout->manager());
    panel().show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel()));
}

void TestLayoutScaleBar::endTest()
{
    m_pController.reset();
    m_pLayout.reset();
}

QWidget& TestLayoutScaleBar::panel()
{
    return *m_pController->panel();
}

// A calibrated image at a known place, selected, with a scale bar added from the menu.
CVXSLayoutItemImage* TestLayoutScaleBar::selectedBarImage()
{
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(calibratedImage());
    pImage->setRect(40, 40, 404, 304);
    m_pLayout->view()->selectItem(pImage);
    figureCommand(*m_pController, "actionAddScaleBar")->trigger();
    return pImage;
}

void TestLayoutScaleBar::automaticLength_data()
{
    QTest::addColumn<double>("widthMm");
    QTest::addColumn<double>("lengthMm");
    QTest::addColumn<QString>("text");
    QTest::newRow("quarter is a 2") << 80.0 << 20.0 << "20 mm";
    QTest::newRow("quarter is a 5") << 20.0 << 5.0 << "5 mm";
    QTest::newRow("quarter is a 1") << 4.0 << 1.0 << "1 mm";
    QTest::newRow("just below a 1 mm quarter") << 3.9 << 0.5 << "500 \u00b5m";
    QTest::newRow("between 2 and 5") << 16.0 << 2.0 << "2 mm";
    QTest::newRow("between 5 and 10") << 36.0 << 5.0 << "5 mm";
    QTest::newRow("micrometres") << 2.0 << 0.5 << "500 \u00b5m";
    QTest::newRow("tens of micrometres") << 0.1 << 0.02 << "20 \u00b5m";
    QTest::newRow("nanometres") << 0.0004 << 0.0001 << "100 nm";
    QTest::newRow("hundreds of millimetres") << 1000.0 << 200.0 << "200 mm";
    QTest::newRow("centimetres") << 20000.0 << 5000.0 << "500 cm";
    QTest::newRow("no width") << 0.0 << 0.0 << "";
}

void TestLayoutScaleBar::automaticLength()
{
    QFETCH(double, widthMm);
    QFETCH(double, lengthMm);
    QFETCH(QString, text);
    const double dLength = CVXSScaleBar::autoLengthMm(widthMm);
    QVERIFY2(qAbs(dLength - lengthMm) <= lengthMm * 1e-9, qPrintable(QString::number(dLength, 'g', 17)));
    if (!text.isEmpty())
        QCOMPARE(CVXPixelSize::text(dLength), text);
}

void TestLayoutScaleBar::lengthText_data()
{
    QTest::addColumn<double>("mm");
    QTest::addColumn<QString>("text");
    QTest::newRow("nm") << 0.0005 << "500 nm";
    QTest::newRow("one um") << 0.001 << "1 \u00b5m";
    QTest::newRow("um") << 0.25 << "250 \u00b5m";
    QTest::newRow("mm") << 1.0 << "1 mm";
    QTest::newRow("below 1000 um") << 0.999 << "999 µm";
    QTest::newRow("tens of mm") << 20.0 << "20 mm";
    QTest::newRow("999 mm stays mm") << 999.0 << "999 mm";
    QTest::newRow("cm") << 2000.0 << "200 cm";
    QTest::newRow("fraction") << 2.5 << "2.5 mm";
}

void TestLayoutScaleBar::lengthText()
{
    QFETCH(double, mm);
    QFETCH(QString, text);
    QCOMPARE(CVXPixelSize::text(mm), text);
}

void TestLayoutScaleBar::lengthParsed_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("ok");
    QTest::addColumn<double>("mm");
    QTest::newRow("um") << "500um" << true << 0.5;
    QTest::newRow("micro sign") << "50 \u00b5m" << true << 0.05;
    QTest::newRow("mm") << "2mm" << true << 2.0;
    QTest::newRow("cm") << "0.5cm" << true << 5.0;
    QTest::newRow("nm") << "200nm" << true << 0.0002;
    QTest::newRow("one metre") << "1m" << true << 1000.0;
    QTest::newRow("zero") << "0mm" << false << 0.0;
    QTest::newRow("negative") << "-1mm" << false << 0.0;
    QTest::newRow("above a metre") << "101cm" << false << 0.0;
    QTest::newRow("no unit") << "5" << false << 0.0;
    QTest::newRow("unknown unit") << "5 in" << false << 0.0;
    QTest::newRow("not a number") << "abc mm" << false << 0.0;
    QTest::newRow("nan") << "nan mm" << false << 0.0;
    QTest::newRow("empty") << "" << false << 0.0;
}

void TestLayoutScaleBar::lengthParsed()
{
    QFETCH(QString, text);
    QFETCH(bool, ok);
    QFETCH(double, mm);
    double dMm = -1.0;
    QString strError;
    QCOMPARE(CVXPixelSize::parse(text, dMm, strError), ok);
    if (ok) {
        QVERIFY(qAbs(dMm - mm) <= mm * 1e-12);
        QVERIFY(strError.isEmpty());
    } else {
        QCOMPARE(dMm, -1.0);
        QVERIFY2(strError.contains(QLatin1Char('"') + text + QLatin1Char('"')), qPrintable(strError));
    }
}

void TestLayoutScaleBar::addAndRemoveFromTheFigureMenu()
{
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(calibratedImage());
    pImage->setRect(40, 40, 404, 304);
    m_pLayout->view()->selectItem(pImage);
    QUndoStack* pStack = m_pLayout->manager()->undoStack();
    const int nSteps = pStack->index();
    const QImage before = m_pLayout->manager()->renderLayoutImage(Scale);
    QCOMPARE(barPixels(before, pImage), 0);

    figureCommand(*m_pController, "actionAddScaleBar")->trigger();
    QVERIFY(CVXSItemFigure::of(*pImage).scaleBar.bShown);
    QCOMPARE(pStack->index(), nSteps + 1);
    QCOMPARE(pStack->undoText(), QStringLiteral("Add Scale Bar"));
    const QImage page = m_pLayout->manager()->renderLayoutImage(Scale);
    const double dExpected = expectedBarPixels(pImage, 5.0);
    QVERIFY2(qAbs(barPixels(page, pImage) - dExpected) <= 1.5,
             qPrintable(QStringLiteral("%1 against %2").arg(barPixels(page, pImage)).arg(dExpected)));

    pStack->undo();
    QCOMPARE(barPixels(m_pLayout->manager()->renderLayoutImage(Scale), pImage), 0);
    pStack->redo();
    QCOMPARE(barPixels(m_pLayout->manager()->renderLayoutImage(Scale), pImage), barPixels(page, pImage));

    figureCommand(*m_pController, "actionRemoveScaleBar")->trigger();
    QCOMPARE(pStack->undoText(), QStringLiteral("Remove Scale Bar"));
    QCOMPARE(barPixels(m_pLayout->manager()->renderLayoutImage(Scale), pImage), 0);
}

void TestLayoutScaleBar::imageWithoutPixelSize()
{
    QImage source = solidImage(SourceSize, Dark);
    source.setText(QStringLiteral("Source"), QStringLiteral("mouse.png"));
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(source);
    m_pLayout->view()->selectItem(pImage);
    const int nSteps = m_pLayout->manager()->undoStack()->index();
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
    figureCommand(*m_pController, "actionAddScaleBar")->trigger();
    QTRY_VERIFY(seen.m_bShown);
    QCOMPARE(seen.m_strText, QStringLiteral("\"mouse.png\" has no pixel size; use Set Pixel Size... to give it one."));
    QVERIFY(!CVXSItemFigure::of(*pImage).scaleBar.bShown);
    QCOMPARE(m_pLayout->manager()->undoStack()->index(), nSteps);

    // The same through the editor's check box, which then shows no bar.
    auto* pShown = panelControl<QCheckBox>(panel(), "figureScaleBarOn");
    QTRY_VERIFY(pShown->isVisible());
    QCOMPARE(panelControl<QLabel>(panel(), "figurePixelSize")->text(), QStringLiteral("none"));
    CSeenMessageBox seenAgain;
    answerNextMessageBox(&seenAgain, clickStandardButton(QMessageBox::Ok));
    clickCheckBox(pShown);
    QTRY_VERIFY(seenAgain.m_bShown);
    QCOMPARE(seenAgain.m_strText, seen.m_strText);
    QTRY_VERIFY(!pShown->isChecked());
    QCOMPARE(m_pLayout->manager()->undoStack()->index(), nSteps);
}

void TestLayoutScaleBar::pixelSizeDialogRefuses_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("unit"); // nm, µm, mm, cm
    QTest::addColumn<QString>("message");
    QTest::newRow("zero") << "0" << 2 << "The pixel size has to be more than 0 and at most 1 m; 0 mm is not.";
    QTest::newRow("negative") << "-3" << 1 << "The pixel size has to be more than 0 and at most 1 m; -3 \u00b5m is not.";
    QTest::newRow("above a metre") << "101" << 3
                                   << "The pixel size has to be more than 0 and at most 1 m; 101 cm is not.";
    QTest::newRow("not a number") << "fifty" << 1 << "\"fifty\" is not a number.";
    QTest::newRow("empty") << "" << 2 << "\"\" is not a number.";
}

void TestLayoutScaleBar::pixelSizeDialogRefuses()
{
    QFETCH(QString, value);
    QFETCH(int, unit);
    QFETCH(QString, message);
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(solidImage(SourceSize, Dark));
    m_pLayout->view()->selectItem(pImage);
    const LayoutRecord before = LayoutRecord::take(*m_pLayout->manager());
    bool bSeen = false;
    CSeenMessageBox seen;
    bool bStayedOpen = false;
    answerNextModalDialog(
        CVXSPixelSizeDialog::staticMetaObject,
        [&](QDialog* pDialog) {
            auto* pValue = pDialog->findChild<QLineEdit*>(QStringLiteral("pixelSizeValue"));
            pDialog->findChild<QComboBox*>(QStringLiteral("pixelSizeUnit"))->setCurrentIndex(unit);
            pValue->selectAll();
            QTest::keyClicks(pValue, value);
            answerNextMessageBox(&seen, clickStandardButton(QMessageBox::Ok));
            QTest::keyClick(pValue, Qt::Key_Return);
            bStayedOpen = pDialog->isVisible();
            pDialog->reject();
        },
        &bSeen);
    QTest::mouseClick(panelControl<QPushButton>(panel(), "figureSetPixelSize"), Qt::LeftButton);
    QVERIFY(bSeen);
    QVERIFY(seen.m_bShown);
    QCOMPARE(seen.m_strText, message);
    QVERIFY2(bStayedOpen, "the dialog stays open for another value");
    QVERIFY(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before).isEmpty());
}

void TestLayoutScaleBar::pixelSizeDialogSetsIt()
{
    CVXSLayoutItemImage* pImage = m_pLayout->pasteImage(solidImage(SourceSize, Dark));
    pImage->setRect(40, 40, 404, 304);
    m_pLayout->view()->selectItem(pImage);
    bool bSeen = false;
    answerNextModalDialog(
        CVXSPixelSizeDialog::staticMetaObject,
        [](QDialog* pDialog) {
            auto* pValue = pDialog->findChild<QLineEdit*>(QStringLiteral("pixelSizeValue"));
            pDialog->findChild<QComboBox*>(QStringLiteral("pixelSizeUnit"))->setCurrentIndex(1);
            pValue->selectAll();
            QTest::keyClicks(pValue, QStringLiteral("50"));
            QTest::mouseClick(pDialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
        },
        &bSeen);
    figureCommand(*m_pController, "actionSetPixelSize")->trigger();
    QVERIFY(bSeen);
    QCOMPARE(CVXSItemFigure::of(*pImage).dPixelSizeMm, 0.05);
    QCOMPARE(m_pLayout->manager()->undoStack()->undoText(), QStringLiteral("Set Pixel Size"));
    QTRY_COMPARE(panelControl<QLabel>(panel(), "figurePixelSize")->text(), QStringLiteral("50 \u00b5m"));
    // Now the bar can be measured.
    clickCheckBox(panelControl<QCheckBox>(panel(), "figureScaleBarOn"));
    QVERIFY(CVXSItemFigure::of(*pImage).scaleBar.bShown);
    const double dExpected = expectedBarPixels(pImage, 5.0);
    QVERIFY(qAbs(barPixels(m_pLayout->manager()->renderLayoutImage(Scale), pImage) - dExpected) <= 1.5);
    m_pLayout->manager()->undoStack()->undo();
    m_pLayout->manager()->undoStack()->undo();
    QCOMPARE(CVXSItemFigure::of(*pImage).dPixelSizeMm, 0.0);
}

void TestLayoutScaleBar::editorEdit_data()
{
    QTest::addColumn<Edit>("edit");
    QTest::addColumn<QString>("undoText");
    QTest::addColumn<BarCheck>("check");
    QTest::newRow("length") << typedLength(QStringLiteral("2 mm")) << "Change Scale Bar Length"
                            << BarCheck([](const CVXSScaleBar& bar) { return bar.dLengthMm == 2.0; });
    QTest::newRow("corner") << cornerChosen(1) << "Change Scale Bar Corner"
                            << BarCheck([](const CVXSScaleBar& bar) { return bar.nCorner == CVXSScaleBar::BottomLeft; });
    QTest::newRow("colour") << colourChosen(Qt::yellow) << "Change Scale Bar Colour"
                            << BarCheck([](const CVXSScaleBar& bar) { return bar.colour == QColor(Qt::yellow); });
    QTest::newRow("thickness") << typedThickness(QStringLiteral("3")) << "Change Scale Bar Thickness"
                               << BarCheck([](const CVXSScaleBar& bar) { return bar.dThickness > 3.0; });
    QTest::newRow("label off") << clicked("figureScaleBarLabel") << "Change Scale Bar Label"
                               << BarCheck([](const CVXSScaleBar& bar) { return !bar.bLabel; });
    QTest::newRow("off") << clicked("figureScaleBarOn") << "Remove Scale Bar"
                         << BarCheck([](const CVXSScaleBar& bar) { return !bar.bShown; });
}

// Each edit: one undo step with its text that undo and redo take back and give again, drawn
// in the output, and kept by a layout file.
void TestLayoutScaleBar::editorEdit()
{
    QFETCH(Edit, edit);
    QFETCH(QString, undoText);
    QFETCH(BarCheck, check);
    CVXSLayoutItemImage* pImage = selectedBarImage();
    QTRY_VERIFY(panelControl<QCheckBox>(panel(), "figureScaleBarOn")->isChecked());
    QUndoStack* pStack = m_pLayout->manager()->undoStack();
    const int nSteps = pStack->index();
    const LayoutRecord before = LayoutRecord::take(*m_pLayout->manager());

    edit(panel());
    QVERIFY(check(CVXSItemFigure::of(*pImage).scaleBar));
    QCOMPARE(pStack->index(), nSteps + 1);
    QCOMPARE(pStack->undoText(), undoText);
    const LayoutRecord after = LayoutRecord::take(*m_pLayout->manager());
    QVERIFY(after.rendered.convertToFormat(QImage::Format_RGB32) != before.rendered.convertToFormat(QImage::Format_RGB32));

    pStack->undo();
    QVERIFY(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(before).isEmpty());
    pStack->redo();
    QVERIFY(LayoutRecord::take(*m_pLayout->manager()).differenceFrom(after).isEmpty());

    const QString strPath = m_dir.filePath(QStringLiteral("bar.vxlayout"));
    QVERIFY(m_pLayout->manager()->fileCommands()->saveTo(strPath));
    LayoutFixture fresh(QSize(600, 400));
    QVERIFY(fresh.manager()->fileCommands()->openFile(strPath));
    m_pLayout->view()->clearSelection();
    QCOMPARE(LayoutRecord::take(*fresh.manager()).describe(), LayoutRecord::take(*m_pLayout->manager()).describe());
}

void TestLayoutScaleBar::barFollowsTheImage()
{
    CVXSLayoutItemImage* pImage = selectedBarImage();
    const auto measured = [this, pImage] {
        return barPixels(m_pLayout->manager()->renderLayoutImage(Scale), pImage);
    };
    QVERIFY(qAbs(measured() - expectedBarPixels(pImage, 5.0)) <= 1.5);
    // Smaller: the bar keeps its 5 mm while that still fits a quarter of the image.
    pImage->setRect(100, 60, 204, 154);
    QVERIFY(qAbs(measured() - expectedBarPixels(pImage, 5.0)) <= 1.5);
    // Fitted into a cell of another layout style.
    m_pLayout->chooseStyle(3); // Layout 2x2
    QVERIFY(pImage->getCellIndex() >= 0);
    QVERIFY2(qAbs(measured() - expectedBarPixels(pImage, 5.0)) <= 1.5,
             qPrintable(QStringLiteral("%1 against %2").arg(measured()).arg(expectedBarPixels(pImage, 5.0))));
    m_pLayout->chooseStyle(2); // Layout 2x1
    QVERIFY(qAbs(measured() - expectedBarPixels(pImage, 5.0)) <= 1.5);
}

void TestLayoutScaleBar::screenAndExportAgree()
{
    CVXSLayoutItemImage* pImage = selectedBarImage();
    m_pLayout->view()->clearSelection();
    const auto screenBar = [this, pImage] {
        return longestRun(m_pLayout->grabViewport(), placeOf(pImage).adjusted(3, 3, -3, -3), Qt::white, 1.0);
    };
    QTRY_VERIFY(screenBar() > 0);
    // On screen the bar is a quarter of the image's width too, to a pixel.
    const double dScreenBar = screenBar();
    const double dExpected = placeOf(pImage).width() * 5.0 / 20.0;
    QVERIFY2(qAbs(dScreenBar - dExpected) <= 1.5, qPrintable(QStringLiteral("%1 against %2").arg(dScreenBar).arg(dExpected)));
    const double dPageBar = barPixels(m_pLayout->manager()->renderLayoutImage(Scale), pImage) / Scale;
    QVERIFY(qAbs(dPageBar - dScreenBar) <= 1.5);
}

void TestLayoutScaleBar::keptInLayoutFiles()
{
    // The calibration the source brought travels with the picture.
    selectedBarImage();
    m_pLayout->view()->clearSelection();
    const LayoutRecord saved = LayoutRecord::take(*m_pLayout->manager());
    const QString strPath = m_dir.filePath(QStringLiteral("calibrated.vxlayout"));
    QVERIFY(m_pLayout->manager()->fileCommands()->saveTo(strPath));
    LayoutFixture fresh(QSize(600, 400));
    QVERIFY(fresh.manager()->fileCommands()->openFile(strPath));
    const LayoutRecord opened = LayoutRecord::take(*fresh.manager());
    QCOMPARE(opened.describe(), saved.describe());
    QCOMPARE(opened.rendered.convertToFormat(QImage::Format_RGB32), saved.rendered.convertToFormat(QImage::Format_RGB32));
    const QList<QGraphicsItem*> items = fresh.scene()->items();
    const auto image = std::find_if(items.cbegin(), items.cend(),
                                    [](const QGraphicsItem* pItem) { return pItem->type() == ImageItemType; });
    QVERIFY(image != items.cend());
    QCOMPARE(CVXPixelSize::of(static_cast<CVXSLayoutItemImage*>(*image)->image()), PixelMm);
}

QTEST_MAIN(TestLayoutScaleBar)
#include "tst_layout_scalebar.moc"
