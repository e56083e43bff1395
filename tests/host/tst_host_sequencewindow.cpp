#include "TestPictures.h"
#include "VXSSequenceWindow.h"

#include "WidgetTestCase.h"

#include <QClipboard>
#include <QTabWidget>
#include <QtTest>

namespace {

QImage grayFrameWithSpot(int nValue, const QPoint& spot, int nSpotValue)
{
    QImage frame = greyImage(QSize(40, 20), nValue, QImage::Format_RGB32);
    frame.setPixel(spot, qRgb(nSpotValue, nSpotValue, nSpotValue));
    return frame;
}

// Three 40x20 frames, each with one bright spot of its own.
QVector<QImage> spottedStack()
{
    return {grayFrameWithSpot(10, QPoint(1, 1), 200), grayFrameWithSpot(50, QPoint(2, 2), 120),
            grayFrameWithSpot(30, QPoint(3, 3), 90)};
}

// Pixels and the grey each must show.
using Greys = QVector<QPair<QPoint, int>>;

int grayAt(const QImage& image, int x, int y)
{
    return qRed(image.pixel(x, y));
}

} // namespace

class TestHostSequenceWindow : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void hasTheThreeTabs();
    void setCurrentTab_data();
    void setCurrentTab();
    void sequenceViewShowsCurrentFrame();
    void projectionKeepsBrightestPixel_data();
    void projectionKeepsBrightestPixel();
    void tabShowsTheFrames_data();
    void tabShowsTheFrames();
    void thumbnailsOfLargeFramesAreSmall();
    void grabImageFollowsCurrentTab();
    void copyTabToClipboard();
    void copyUnknownTabLeavesClipboard();
    void zeroFramesGiveNullImages();
};

void TestHostSequenceWindow::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestHostSequenceWindow::hasTheThreeTabs()
{
    CVXSSequenceWindow window(spottedStack());
    auto* pTabs = window.findChild<QTabWidget*>();
    QVERIFY(pTabs);
    QStringList titles;
    for (int i = 0; i < pTabs->count(); ++i)
        titles << pTabs->tabText(i);
    QCOMPARE(titles, (QStringList{QStringLiteral("Sequence View"), QStringLiteral("3D View"),
                                  QStringLiteral("Thumbnails")}));
    QCOMPARE(window.getCurrentTabName(), QStringLiteral("Sequence View"));
    QVERIFY(window.isSequenceWindow());
    QCOMPARE(window.frameCount(), 3);
}

void TestHostSequenceWindow::setCurrentTab_data()
{
    QTest::addColumn<QString>("requested");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QString>("current");

    QTest::newRow("3d view in lower case") << QStringLiteral("3d view") << true << QStringLiteral("3D View");
    QTest::newRow("thumbnails in capitals") << QStringLiteral("THUMBNAILS") << true << QStringLiteral("Thumbnails");
    QTest::newRow("exact title") << QStringLiteral("Sequence View") << true << QStringLiteral("Sequence View");
    QTest::newRow("unknown keeps current") << QStringLiteral("Histogram") << false << QStringLiteral("Sequence View");
    QTest::newRow("empty keeps current") << QString() << false << QStringLiteral("Sequence View");
}

void TestHostSequenceWindow::setCurrentTab()
{
    QFETCH(QString, requested);
    QFETCH(bool, found);
    QFETCH(QString, current);

    CVXSSequenceWindow window(spottedStack());
    QCOMPARE(window.setCurrentTab(requested), found);
    QCOMPARE(window.getCurrentTabName(), current);
    QCOMPARE(window.findChild<QTabWidget*>()->tabText(window.findChild<QTabWidget*>()->currentIndex()), current);
}

void TestHostSequenceWindow::sequenceViewShowsCurrentFrame()
{
    const QVector<QImage> frames = spottedStack();
    CVXSSequenceWindow window(frames);
    QCOMPARE(window.currentFrame(), 0);
    QCOMPARE(window.tabImage(QStringLiteral("Sequence View")), frames.at(0));

    window.setCurrentFrame(2);
    QCOMPARE(window.currentFrame(), 2);
    QCOMPARE(window.tabImage(QStringLiteral("sequence view")), frames.at(2));

    window.setCurrentFrame(3);
    window.setCurrentFrame(-1);
    QCOMPARE(window.currentFrame(), 2);
    QCOMPARE(window.tabImage(QStringLiteral("Sequence View")), frames.at(2));
}

void TestHostSequenceWindow::projectionKeepsBrightestPixel_data()
{
    QTest::addColumn<QPoint>("pixel");
    QTest::addColumn<int>("expected");

    QTest::newRow("background of the brightest frame") << QPoint(0, 0) << 50;
    QTest::newRow("spot of frame 0") << QPoint(1, 1) << 200;
    QTest::newRow("spot of frame 1") << QPoint(2, 2) << 120;
    QTest::newRow("spot of frame 2") << QPoint(3, 3) << 90;
    QTest::newRow("far corner") << QPoint(39, 19) << 50;
}

void TestHostSequenceWindow::projectionKeepsBrightestPixel()
{
    QFETCH(QPoint, pixel);
    QFETCH(int, expected);

    const CVXSSequenceWindow window(spottedStack());
    const QImage projection = window.tabImage(QStringLiteral("3D View"));
    QCOMPARE(projection.size(), QSize(40, 20));
    QCOMPARE(grayAt(projection, pixel.x(), pixel.y()), expected);
}

void TestHostSequenceWindow::tabShowsTheFrames_data()
{
    QTest::addColumn<QVector<QImage>>("frames");
    QTest::addColumn<QString>("tab");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<Greys>("greys");
    const QVector<QImage> differentSizes = {greyImage(QSize(40, 20), 10, QImage::Format_RGB32),
                                            greyImage(QSize(80, 40), 100, QImage::Format_RGB32),
                                            greyImage(QSize(20, 40), 70, QImage::Format_RGB32)};
    QTest::newRow("projection of frames of different sizes")
        << differentSizes << QStringLiteral("3D View") << QSize(40, 20)
        << Greys{{{0, 0}, 100}, {{20, 10}, 100}, {{39, 19}, 100}};
    // Two columns and two rows of 40x20 cells with 4 pixel gaps.
    QTest::newRow("thumbnails show every frame")
        << spottedStack() << QStringLiteral("Thumbnails") << QSize(92, 52)
        << Greys{{{24, 14}, 10}, {{68, 14}, 50}, {{24, 38}, 30}, {{68, 38}, 0}, {{2, 2}, 0}, {{46, 14}, 0}};
    // The tall frame fills the middle 10 pixels of its 40x20 cell.
    QTest::newRow("thumbnails of frames of different sizes")
        << differentSizes << QStringLiteral("Thumbnails") << QSize(92, 52)
        << Greys{{{68, 14}, 100}, {{24, 38}, 70}, {{8, 38}, 0}};
}

void TestHostSequenceWindow::tabShowsTheFrames()
{
    QFETCH(QVector<QImage>, frames);
    QFETCH(QString, tab);
    QFETCH(QSize, size);
    QFETCH(Greys, greys);
    const CVXSSequenceWindow window(frames);
    const QImage shown = window.tabImage(tab);
    QCOMPARE(shown.size(), size);
    for (const auto& grey : greys)
        QCOMPARE(grayAt(shown, grey.first.x(), grey.first.y()), grey.second);
}

void TestHostSequenceWindow::thumbnailsOfLargeFramesAreSmall()
{
    const CVXSSequenceWindow window({greyImage(QSize(512, 256), 40, QImage::Format_RGB32),
                                     greyImage(QSize(512, 256), 80, QImage::Format_RGB32)});
    const QImage montage = window.tabImage(QStringLiteral("Thumbnails"));
    // Cells of at most 128 pixels, two side by side.
    QCOMPARE(montage.size(), QSize(2 * 128 + 3 * 4, 64 + 2 * 4));
    QCOMPARE(grayAt(montage, 4 + 64, 4 + 32), 40);
    QCOMPARE(grayAt(montage, 8 + 128 + 64, 4 + 32), 80);
}

void TestHostSequenceWindow::grabImageFollowsCurrentTab()
{
    CVXSSequenceWindow window(spottedStack());
    window.resize(300, 200);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    for (const QString& strTab : {QStringLiteral("Sequence View"), QStringLiteral("3D View"),
                                  QStringLiteral("Thumbnails")}) {
        QVERIFY(window.setCurrentTab(strTab));
        QCOMPARE(window.grabImage(false), window.tabImage(strTab));
        const QWidget* pPage = window.findChild<QTabWidget*>()->currentWidget();
        QCOMPARE(window.grabImage(true).size(), pPage->size() * window.devicePixelRatioF());
    }
}

void TestHostSequenceWindow::copyTabToClipboard()
{
    CVXSSequenceWindow window(spottedStack());
    QClipboard* pClipboard = QGuiApplication::clipboard();
    pClipboard->clear();
    QVERIFY(window.copyTabToClipboard(QStringLiteral("Thumbnails")));
    const QImage copied = pClipboard->image();
    QCOMPARE(copied.size(), QSize(92, 52));
    QCOMPARE(copied, window.tabImage(QStringLiteral("Thumbnails")));

    QVERIFY(window.copyTabToClipboard(QStringLiteral("3d view")));
    QCOMPARE(pClipboard->image(), window.tabImage(QStringLiteral("3D View")));
}

void TestHostSequenceWindow::copyUnknownTabLeavesClipboard()
{
    CVXSSequenceWindow window(spottedStack());
    QClipboard* pClipboard = QGuiApplication::clipboard();
    pClipboard->setText(QStringLiteral("marker"));
    QVERIFY(!window.copyTabToClipboard(QStringLiteral("Histogram")));
    QCOMPARE(pClipboard->text(), QStringLiteral("marker"));
    QVERIFY(window.tabImage(QStringLiteral("Histogram")).isNull());
}

void TestHostSequenceWindow::zeroFramesGiveNullImages()
{
    CVXSSequenceWindow window({});
    window.resize(120, 90);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCOMPARE(window.frameCount(), 0);
    for (const QString& strTab : {QStringLiteral("Sequence View"), QStringLiteral("3D View"),
                                  QStringLiteral("Thumbnails")}) {
        QVERIFY2(window.tabImage(strTab).isNull(), qPrintable(strTab));
        QVERIFY(window.setCurrentTab(strTab));
        QVERIFY(window.grabImage(false).isNull());
        QVERIFY(!window.grabImage(true).isNull());
    }
    window.setCurrentFrame(0);
    QCOMPARE(window.currentFrame(), 0);
    QVERIFY(window.copyTabToClipboard(QStringLiteral("Thumbnails")));
    QVERIFY(QGuiApplication::clipboard()->image().isNull());
}

QTEST_MAIN(TestHostSequenceWindow)
#include "tst_host_sequencewindow.moc"
