#include "VXColourTable.h"
#include "VXDisplayRange.h"
#include "VXImageProvenance.h"
#include "VXImageWindowing.h"
#include "VXSChildWindow.h"
#include "VXSSequenceWindow.h"

#include "WidgetTestCase.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace {

// Five bands of 16 x 40 pixels, left to right at these 16-bit levels.
const QVector<quint16> kBandLevels = {1000, 2000, 2500, 3000, 4000};
constexpr int kBandWidth = 16;
const QSize kImageSize(80, 40);
// The levels stand for a radiance of 1000 times their value.
constexpr double kSlope = 1000.0;
const QString kUnit = QString::fromUtf8("p/s/cm²/sr");

QString key(const char* pszKey)
{
    return QString::fromLatin1(pszKey);
}

QImage bandLevels(int nOffset = 0)
{
    QImage levels(kImageSize, QImage::Format_Grayscale16);
    for (int y = 0; y < levels.height(); ++y) {
        auto* pLine = reinterpret_cast<quint16*>(levels.scanLine(y));
        for (int x = 0; x < levels.width(); ++x)
            pLine[x] = quint16(kBandLevels.at(x / kBandWidth) + nOffset);
    }
    return levels;
}

// The picture an image file reader gives for the levels: stretched for the screen, with
// the radiance's keys.
QImage bandPicture(const QImage& levels)
{
    QImage picture = CVXImageWindowing::toDisplay(levels);
    picture.setText(key(CVXDisplayRange::Quantity), QStringLiteral("Radiance"));
    picture.setText(key(CVXDisplayRange::Unit), kUnit);
    picture.setText(key(CVXDisplayRange::RescaleSlope), QString::number(kSlope));
    picture.setText(key(CVXImageProvenance::Modality), QStringLiteral("OPT"));
    return picture;
}

QPoint bandCentre(int nBand)
{
    return QPoint(nBand * kBandWidth + kBandWidth / 2, kImageSize.height() / 2);
}

QRgb entry(const QString& strTable, int nEntry)
{
    return CVXColourTable(strTable).entries().at(nEntry);
}

// Types the number into the spin box as a user does: everything selected, typed over, Enter.
void typeValue(QDoubleSpinBox* pBox, const QString& strText)
{
    QTest::keyClick(pBox, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(pBox, strText);
    QTest::keyClick(pBox, Qt::Key_Return);
}

// Chooses "Display Range" from the window's context menu.
void chooseDisplayRangeFromMenu(QWidget* pWindow)
{
    bool bChosen = false;
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
        auto* pMenu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        QAction* pAction = pMenu ? pMenu->findChild<QAction*>(QStringLiteral("actionDisplayRange")) : nullptr;
        if (!pAction)
            return;
        poll.stop();
        pMenu->setActiveAction(pAction);
        QTest::keyClick(pMenu, Qt::Key_Return);
        bChosen = true;
    });
    poll.start(10);
    const QPoint position = pWindow->rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, pWindow->mapToGlobal(position));
    QApplication::sendEvent(pWindow, &event);
    QVERIFY(bChosen);
}

} // namespace

// Image and sequence windows showing 16-bit levels through a display range, driven through
// the bar of controls at their bottom edge.
class TestHostDisplayWindow : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void defaultDisplayIsTheStretchedImage();
    void contextMenuShowsTheBar();
    void barShowsTheDefaultRangeInTheUnit();
    void typedRangeAndTableChangeThePixelsDrawn();
    void rangeWithMinimumAboveMaximumIsRefused();
    void lettersCannotBeTyped();
    void autoSetsTheWholeDataRange();
    void draggingSetsWindowAndLevel();
    void draggingWithoutTheBarChangesNothing();
    void grabCarriesRangeTableAndUnit_data();
    void grabCarriesRangeTableAndUnit();
    void defaultGrabCarriesTheStretchedRange();
    void resetGivesTheDefaultBack();
    void colourImageHasNoRange();
    void sequenceShowsEveryFrameThroughTheRange();
    void sequenceFrameHandedOverCarriesTheRange();

private:
    // A shown window with the band image and its bar.
    void showBandWindow(CVXSChildWindow& window);
    template <typename Control>
    static Control* control(const QWidget& window, const char* pszName)
    {
        return window.findChild<Control*>(QString::fromLatin1(pszName));
    }
};

void TestHostDisplayWindow::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestHostDisplayWindow::showBandWindow(CVXSChildWindow& window)
{
    window.setLevels(bandLevels());
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.setDisplayRangeBarVisible(true);
    QVERIFY(control<QWidget>(window, "displayRangeBar")->isVisible());
}

void TestHostDisplayWindow::defaultDisplayIsTheStretchedImage()
{
    const QImage picture = bandPicture(bandLevels());
    CVXSChildWindow window(picture);
    showBandWindow(window);
    QVERIFY(window.isDefaultDisplay());
    QVERIFY(window.hasLevels());
    // Levels and the bar leave the picture shown exactly as it was given.
    QCOMPARE(window.image(), picture);
    QCOMPARE(window.image().format(), QImage::Format_Grayscale8);
    const int expected[] = {0, 85, 127, 170, 255};
    for (int nBand = 0; nBand < kBandLevels.size(); ++nBand)
        QCOMPARE(qGray(window.image().pixel(bandCentre(nBand))), expected[nBand]);
}

void TestHostDisplayWindow::contextMenuShowsTheBar()
{
    CVXSChildWindow window(bandPicture(bandLevels()));
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QVERIFY(!window.isDisplayRangeBarVisible());
    const QSize fullGrab = window.grabImage(true).size();

    chooseDisplayRangeFromMenu(&window);

    QTRY_VERIFY(window.isDisplayRangeBarVisible());
    const QWidget* pBar = control<QWidget>(window, "displayRangeBar");
    QCOMPARE(pBar->geometry().bottom(), window.rect().bottom());
    // What is grabbed as displayed is the picture, never the bar.
    QCOMPARE(window.grabImage(true).size(), (fullGrab - QSize(0, pBar->height())));
    chooseDisplayRangeFromMenu(&window);
    QTRY_VERIFY(!window.isDisplayRangeBarVisible());
}

void TestHostDisplayWindow::barShowsTheDefaultRangeInTheUnit()
{
    CVXSChildWindow window(bandPicture(bandLevels()));
    showBandWindow(window);
    QCOMPARE(control<QDoubleSpinBox>(window, "displayRangeMinimum")->value(), 1000 * kSlope);
    QCOMPARE(control<QDoubleSpinBox>(window, "displayRangeMaximum")->value(), 4000 * kSlope);
    QCOMPARE(control<QComboBox>(window, "displayRangeTable")->currentData().toString(), QStringLiteral("grey"));
    QCOMPARE(control<QLabel>(window, "displayRangeUnit")->text(), QStringLiteral("Radiance (%1)").arg(kUnit));
}

void TestHostDisplayWindow::typedRangeAndTableChangeThePixelsDrawn()
{
    CVXSChildWindow window(bandPicture(bandLevels()));
    showBandWindow(window);
    QSignalSpy changes(&window, &CVXSChildWindow::displayRangeChanged);

    typeValue(control<QDoubleSpinBox>(window, "displayRangeMinimum"), QStringLiteral("2000000"));
    typeValue(control<QDoubleSpinBox>(window, "displayRangeMaximum"), QStringLiteral("3000000"));

    QCOMPARE(changes.count(), 2);
    QVERIFY(!window.isDefaultDisplay());
    QCOMPARE(window.displayRange().minimum(), 2e6);
    QCOMPARE(window.displayRange().maximum(), 3e6);
    // Level 2000 is the minimum, 3000 the maximum: 2500 lies halfway, entry 127.
    const int expected[] = {0, 0, 127, 255, 255};
    for (int nBand = 0; nBand < kBandLevels.size(); ++nBand)
        QCOMPARE(window.image().pixel(bandCentre(nBand)), entry(QStringLiteral("grey"), expected[nBand]));

    auto* pTable = control<QComboBox>(window, "displayRangeTable");
    pTable->setFocus();
    QTest::keyClicks(pTable, QStringLiteral("Hot"));
    QCOMPARE(pTable->currentData().toString(), QStringLiteral("hot"));
    QCOMPARE(window.displayRange().tableName(), QStringLiteral("hot"));
    for (int nBand = 0; nBand < kBandLevels.size(); ++nBand)
        QCOMPARE(window.image().pixel(bandCentre(nBand)), entry(QStringLiteral("hot"), expected[nBand]));

    // On screen: the picture fills the room above the bar, five times enlarged.
    window.repaint();
    const QImage drawn = window.grabImage(true);
    const QSize shownSize = kImageSize.scaled(drawn.size(), Qt::KeepAspectRatio);
    const QPoint origin((drawn.width() - shownSize.width()) / 2, (drawn.height() - shownSize.height()) / 2);
    const double dScale = double(shownSize.width()) / kImageSize.width();
    for (int nBand = 0; nBand < kBandLevels.size(); ++nBand) {
        const QPoint onScreen = origin + bandCentre(nBand) * dScale;
        QCOMPARE(QColor(drawn.pixel(onScreen)), QColor(entry(QStringLiteral("hot"), expected[nBand])));
    }
}

void TestHostDisplayWindow::rangeWithMinimumAboveMaximumIsRefused()
{
    CVXSChildWindow window(bandPicture(bandLevels()));
    showBandWindow(window);
    QVERIFY(window.setDisplayRange(2e6, 3e6, QStringLiteral("grey")));
    const QImage before = window.image();
    auto* pMinimum = control<QDoubleSpinBox>(window, "displayRangeMinimum");

    typeValue(pMinimum, QStringLiteral("3500000"));

    const QString strMessage = control<QLabel>(window, "displayRangeMessage")->text();
    QVERIFY2(strMessage.contains(QStringLiteral("must be below the maximum")), qPrintable(strMessage));
    QCOMPARE(window.displayRange().minimum(), 2e6);
    QCOMPARE(pMinimum->value(), 2e6);
    QCOMPARE(window.image(), before);
    // Refused through the window's own call as well.
    QVERIFY(!window.setDisplayRange(3e6, 2e6, QStringLiteral("grey")));
    QVERIFY(!window.setDisplayRange(qQNaN(), 2e6, QStringLiteral("grey")));
    QVERIFY(!window.setDisplayRange(1e6, 2e6, QStringLiteral("rainbow")));
    QCOMPARE(window.displayRange().minimum(), 2e6);
}

void TestHostDisplayWindow::lettersCannotBeTyped()
{
    CVXSChildWindow window(bandPicture(bandLevels()));
    showBandWindow(window);
    auto* pMaximum = control<QDoubleSpinBox>(window, "displayRangeMaximum");
    typeValue(pMaximum, QStringLiteral("abc"));
    QCOMPARE(pMaximum->value(), 4000 * kSlope);
    QVERIFY(window.isDefaultDisplay());
}

void TestHostDisplayWindow::autoSetsTheWholeDataRange()
{
    CVXSChildWindow window(bandPicture(bandLevels()));
    showBandWindow(window);
    QVERIFY(window.setDisplayRange(2e6, 3e6, QStringLiteral("magma")));

    QTest::mouseClick(control<QPushButton>(window, "displayRangeAuto"), Qt::LeftButton);

    QCOMPARE(window.displayRange().minimum(), 1000 * kSlope);
    QCOMPARE(window.displayRange().maximum(), 4000 * kSlope);
    QCOMPARE(window.displayRange().tableName(), QStringLiteral("magma"));
    QCOMPARE(control<QDoubleSpinBox>(window, "displayRangeMinimum")->value(), 1000 * kSlope);
    QCOMPARE(window.image().pixel(bandCentre(0)), entry(QStringLiteral("magma"), 0));
    QCOMPARE(window.image().pixel(bandCentre(4)), entry(QStringLiteral("magma"), 255));
}

void TestHostDisplayWindow::draggingSetsWindowAndLevel()
{
    CVXSChildWindow window(bandPicture(bandLevels()));
    showBandWindow(window);
    QVERIFY(window.setDisplayRange(2e6, 3e6, QStringLiteral("grey")));
    const int nContentHeight = window.height() - control<QWidget>(window, "displayRangeBar")->height();
    const QPoint start(100, 100);

    // A tenth of the width to the right: the range widens by a tenth of the data's 3e6.
    QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, start);
    QMouseEvent move(QEvent::MouseMove, start + QPoint(window.width() / 10, 0), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&window, &move);
    QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, start + QPoint(window.width() / 10, 0));
    QCOMPARE(window.displayRange().minimum(), 2e6 - 0.15e6);
    QCOMPARE(window.displayRange().maximum(), 3e6 + 0.15e6);

    // Half the picture's height down: the range moves up by half the data's.
    QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, start);
    QMouseEvent down(QEvent::MouseMove, start + QPoint(0, nContentHeight / 2), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(&window, &down);
    QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, start + QPoint(0, nContentHeight / 2));
    const double dShift = (nContentHeight / 2) * 3e6 / nContentHeight;
    QCOMPARE(window.displayRange().minimum(), 1.85e6 + dShift);
    QCOMPARE(window.displayRange().maximum(), 3.15e6 + dShift);
    // The bar follows.
    QCOMPARE(control<QDoubleSpinBox>(window, "displayRangeMinimum")->value(), qRound(1.85e6 + dShift) * 1.0);
}

void TestHostDisplayWindow::draggingWithoutTheBarChangesNothing()
{
    CVXSChildWindow window(bandPicture(bandLevels()));
    window.setLevels(bandLevels());
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QTest::mousePress(&window, Qt::LeftButton, Qt::NoModifier, QPoint(100, 100));
    QMouseEvent move(QEvent::MouseMove, QPoint(200, 200), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(&window, &move);
    QTest::mouseRelease(&window, Qt::LeftButton, Qt::NoModifier, QPoint(200, 200));
    QVERIFY(window.isDefaultDisplay());
}

void TestHostDisplayWindow::grabCarriesRangeTableAndUnit_data()
{
    QTest::addColumn<bool>("displayed");
    QTest::newRow("full resolution") << false;
    QTest::newRow("as displayed") << true;
}

void TestHostDisplayWindow::grabCarriesRangeTableAndUnit()
{
    QFETCH(bool, displayed);
    CVXSChildWindow window(bandPicture(bandLevels()));
    window.setWindowTitle(QStringLiteral("Mouse 3, day 7"));
    showBandWindow(window);
    QVERIFY(window.setDisplayRange(2e6, 3e6, QStringLiteral("viridis")));

    const QImage grabbed = window.grabImage(displayed);

    QCOMPARE(grabbed.format(), QImage::Format_RGB32);
    QCOMPARE(grabbed.text(key(CVXDisplayRange::Minimum)), QStringLiteral("2000000"));
    QCOMPARE(grabbed.text(key(CVXDisplayRange::Maximum)), QStringLiteral("3000000"));
    QCOMPARE(grabbed.text(key(CVXDisplayRange::ColourTable)), QStringLiteral("viridis"));
    QCOMPARE(grabbed.text(key(CVXDisplayRange::Quantity)), QStringLiteral("Radiance"));
    QCOMPARE(grabbed.text(key(CVXDisplayRange::Unit)), kUnit);
    QCOMPARE(grabbed.text(key(CVXDisplayRange::RescaleSlope)), QStringLiteral("1000"));
    QCOMPARE(grabbed.text(key(CVXImageProvenance::Modality)), QStringLiteral("OPT"));
    QCOMPARE(grabbed.text(key(CVXImageProvenance::Window)), QStringLiteral("Mouse 3, day 7"));
    const CVXDisplayRange range = CVXDisplayRange::fromImage(grabbed);
    QCOMPARE(range.minimum(), 2e6);
    QCOMPARE(range.tableName(), QStringLiteral("viridis"));
    if (!displayed) {
        // The pixels are the table applied to the levels.
        const int expected[] = {0, 0, 127, 255, 255};
        for (int nBand = 0; nBand < kBandLevels.size(); ++nBand)
            QCOMPARE(grabbed.pixel(bandCentre(nBand)), entry(QStringLiteral("viridis"), expected[nBand]));
    }
}

void TestHostDisplayWindow::defaultGrabCarriesTheStretchedRange()
{
    CVXSChildWindow window(bandPicture(bandLevels()));
    showBandWindow(window);

    const QImage grabbed = window.grabImage(false);

    QCOMPARE(grabbed.format(), QImage::Format_RGB32);
    QCOMPARE(grabbed.text(key(CVXDisplayRange::Minimum)), QStringLiteral("1000000"));
    QCOMPARE(grabbed.text(key(CVXDisplayRange::Maximum)), QStringLiteral("4000000"));
    QCOMPARE(grabbed.text(key(CVXDisplayRange::ColourTable)), QStringLiteral("grey"));
    QCOMPARE(qGray(grabbed.pixel(bandCentre(1))), 85);
}

void TestHostDisplayWindow::resetGivesTheDefaultBack()
{
    const QImage picture = bandPicture(bandLevels());
    CVXSChildWindow window(picture);
    showBandWindow(window);
    QVERIFY(window.setDisplayRange(2e6, 3e6, QStringLiteral("hot")));
    window.resetDisplayRange();
    QVERIFY(window.isDefaultDisplay());
    QCOMPARE(window.image(), picture);
}

void TestHostDisplayWindow::colourImageHasNoRange()
{
    QImage photo(kImageSize, QImage::Format_RGB32);
    photo.fill(QColor(200, 120, 40));
    CVXSChildWindow window(photo);
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.setDisplayRangeBarVisible(true);

    QVERIFY(!window.hasLevels());
    QVERIFY(!window.displayRange().hasRange());
    QVERIFY(!control<QDoubleSpinBox>(window, "displayRangeMinimum")->isEnabled());
    QVERIFY(!control<QPushButton>(window, "displayRangeApplyToAll")->isEnabled());
    QVERIFY(control<QLabel>(window, "displayRangeMessage")->text().contains(QStringLiteral("colour image")));
    QVERIFY(!window.setDisplayRange(0, 100, QStringLiteral("grey")));
    // Handed over as it is, without range keys.
    const QImage grabbed = window.grabImage(false);
    QCOMPARE(grabbed.format(), QImage::Format_RGB32);
    QVERIFY(grabbed.text(key(CVXDisplayRange::ColourTable)).isEmpty());
}

void TestHostDisplayWindow::sequenceShowsEveryFrameThroughTheRange()
{
    // Three frames, each 500 levels brighter than the one before.
    QVector<QImage> pictures;
    QVector<QImage> levels;
    for (int i = 0; i < 3; ++i) {
        levels << bandLevels(500 * i);
        pictures << bandPicture(levels.last());
    }
    CVXSSequenceWindow window(pictures);
    window.setFrameLevels(levels);
    window.resize(400, 300);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    // Each frame on its own stretched, as it always was.
    QCOMPARE(window.tabImage(QStringLiteral("Sequence View")).pixel(bandCentre(1)), pictures.first().pixel(bandCentre(1)));
    window.setDisplayRangeBarVisible(true);
    // The whole sequence's range, from the first frame's darkest to the last frame's brightest.
    QCOMPARE(control<QDoubleSpinBox>(window, "displayRangeMaximum")->value(), 5000 * kSlope);

    typeValue(control<QDoubleSpinBox>(window, "displayRangeMinimum"), QStringLiteral("2000000"));
    typeValue(control<QDoubleSpinBox>(window, "displayRangeMaximum"), QStringLiteral("3000000"));

    // Band 1 is at level 2000, 2500 and 3000 in the three frames.
    const int expected[] = {0, 127, 255};
    for (int nFrame = 0; nFrame < 3; ++nFrame) {
        window.setCurrentFrame(nFrame);
        QCOMPARE(window.tabImage(QStringLiteral("Sequence View")).pixel(bandCentre(1)),
                 entry(QStringLiteral("grey"), expected[nFrame]));
    }
    // The projection shows the brightest level of each pixel, the last frame's: 2000 in
    // band 0, 3000 in band 1.
    QCOMPARE(window.tabImage(QStringLiteral("3D View")).pixel(bandCentre(0)), entry(QStringLiteral("grey"), 0));
    QCOMPARE(window.tabImage(QStringLiteral("3D View")).pixel(bandCentre(1)), entry(QStringLiteral("grey"), 255));
}

void TestHostDisplayWindow::sequenceFrameHandedOverCarriesTheRange()
{
    const QVector<QImage> levels = {bandLevels(), bandLevels(1000)};
    CVXSSequenceWindow window({bandPicture(levels.first()), bandPicture(levels.last())});
    window.setFrameLevels(levels);
    QVERIFY(window.setDisplayRange(1e6, 5e6, QStringLiteral("cividis")));
    window.setCurrentFrame(1);

    QVERIFY(window.copyTabToClipboard(QStringLiteral("Sequence View")));
    const QImage handed = QGuiApplication::clipboard()->image();

    QCOMPARE(handed.text(key(CVXImageProvenance::SequenceFrame)), QStringLiteral("2 of 2"));
    QCOMPARE(handed.text(key(CVXDisplayRange::Minimum)), QStringLiteral("1000000"));
    QCOMPARE(handed.text(key(CVXDisplayRange::Maximum)), QStringLiteral("5000000"));
    QCOMPARE(handed.text(key(CVXDisplayRange::ColourTable)), QStringLiteral("cividis"));
    QCOMPARE(handed.text(key(CVXDisplayRange::Unit)), kUnit);
    // Band 0 of frame 2 is at level 2000: a quarter of the range, entry 63.
    QCOMPARE(QColor(handed.pixel(bandCentre(0))), QColor(entry(QStringLiteral("cividis"), 63)));
    const QImage projection = window.tabImage(QStringLiteral("3D View"));
    QCOMPARE(projection.text(key(CVXDisplayRange::ColourTable)), QStringLiteral("cividis"));
    QCOMPARE(projection.text(key(CVXDisplayRange::Maximum)), QStringLiteral("5000000"));
}

QTEST_MAIN(TestHostDisplayWindow)
#include "tst_host_displaywindow.moc"
