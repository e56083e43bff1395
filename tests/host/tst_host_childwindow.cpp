#include "TestPictures.h"
#include "VXSChildWindow.h"

#include "WidgetTestCase.h"

#include <QtTest>


class TestHostChildWindow : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void grabImageWithoutDisplayGivesTheImage();
    void setImageReplacesTheImage();
    void grabImageDisplayedHasWidgetSize();
    void paintsImageFittedAndCentred_data();
    void paintsImageFittedAndCentred();
    void nullImagePaintsBackgroundOnly();
    void canGrabMinimized_data();
    void canGrabMinimized();
    void keepsViewState();
    void isNoSequenceWindow();
};

void TestHostChildWindow::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestHostChildWindow::grabImageWithoutDisplayGivesTheImage()
{
    const QImage image = solidImage(QSize(30, 20), Qt::green, QImage::Format_RGB32);
    CVXSChildWindow window(image);
    window.resize(200, 100);
    QCOMPARE(window.grabImage(false), image);
    QCOMPARE(window.image(), image);
}

void TestHostChildWindow::setImageReplacesTheImage()
{
    CVXSChildWindow window(solidImage(QSize(30, 20), Qt::green, QImage::Format_RGB32));
    const QImage replacement = solidImage(QSize(8, 9), Qt::blue, QImage::Format_RGB32);
    window.setImage(replacement);
    QCOMPARE(window.grabImage(false), replacement);
}

void TestHostChildWindow::grabImageDisplayedHasWidgetSize()
{
    CVXSChildWindow window(solidImage(QSize(30, 20), Qt::green, QImage::Format_RGB32));
    window.resize(240, 130);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const QImage grabbed = window.grabImage(true);
    QCOMPARE(grabbed.size(), QSize(240, 130) * window.devicePixelRatioF());
}

void TestHostChildWindow::paintsImageFittedAndCentred_data()
{
    QTest::addColumn<QSize>("imageSize");
    QTest::addColumn<QPoint>("inside");
    QTest::addColumn<QPoint>("outside");

    // A 200x200 window: a 100x50 image is drawn 200x100 at y 50..149; 50x100 at x 50..149.
    QTest::newRow("wide image, inside") << QSize(100, 50) << QPoint(100, 60) << QPoint(100, 40);
    QTest::newRow("wide image, below") << QSize(100, 50) << QPoint(5, 140) << QPoint(5, 160);
    QTest::newRow("tall image, inside") << QSize(50, 100) << QPoint(60, 100) << QPoint(40, 100);
    QTest::newRow("tall image, right") << QSize(50, 100) << QPoint(140, 5) << QPoint(160, 5);
}

void TestHostChildWindow::paintsImageFittedAndCentred()
{
    QFETCH(QSize, imageSize);
    QFETCH(QPoint, inside);
    QFETCH(QPoint, outside);

    CVXSChildWindow window(solidImage(imageSize, Qt::red, QImage::Format_RGB32));
    window.resize(200, 200);
    const QImage grabbed = window.grabImage(true);
    QCOMPARE(grabbed.size(), QSize(200, 200));
    QCOMPARE(QColor(grabbed.pixel(inside)), QColor(Qt::red));
    QVERIFY(QColor(grabbed.pixel(outside)) != QColor(Qt::red));
    QCOMPARE(grabbed.pixel(outside), grabbed.pixel(0, 0));
}

void TestHostChildWindow::nullImagePaintsBackgroundOnly()
{
    CVXSChildWindow window;
    window.resize(50, 40);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    window.repaint();
    QVERIFY(window.grabImage(false).isNull());
    const QImage grabbed = window.grabImage(true);
    QCOMPARE(grabbed.size(), QSize(50, 40) * window.devicePixelRatioF());
    const QRgb background = grabbed.pixel(0, 0);
    QCOMPARE(grabbed.pixel(grabbed.width() / 2, grabbed.height() / 2), background);
    QCOMPARE(grabbed.pixel(grabbed.width() - 1, grabbed.height() - 1), background);
}

void TestHostChildWindow::canGrabMinimized_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("expected");
    QTest::newRow("full resolution") << 0 << true;
    QTest::newRow("as displayed") << 1 << false;
    QTest::newRow("other mode") << 2 << true;
}

void TestHostChildWindow::canGrabMinimized()
{
    QFETCH(int, mode);
    QFETCH(bool, expected);
    CVXSChildWindow window;
    QCOMPARE(window.canGrabMinimized(mode), expected);
}

void TestHostChildWindow::keepsViewState()
{
    CVXSChildWindow window;
    CVXSViewState state;
    state.m_bGrabDisplayed = true;
    state.m_dZoom = 2.5;
    state.m_nCurrentFrame = 4;
    window.setViewState(state);
    const CVXSViewState stored = window.getViewState();
    QCOMPARE(stored.m_bGrabDisplayed, true);
    QCOMPARE(stored.m_dZoom, 2.5);
    QCOMPARE(stored.m_nCurrentFrame, 4);
}

void TestHostChildWindow::isNoSequenceWindow()
{
    CVXSChildWindow window;
    QVERIFY(!window.isSequenceWindow());
}

QTEST_MAIN(TestHostChildWindow)
#include "tst_host_childwindow.moc"
