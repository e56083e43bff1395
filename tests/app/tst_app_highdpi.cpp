#include "HostFixture.h"
#include "HostTestCase.h"

#include "ModalDialogAnswer.h"

#include <VXHostMainWindow.h>
#include <VXHostSetup.h>

#include <QAction>
#include <QLabel>
#include <QtTest>

namespace {

// The largest difference of a colour or alpha channel between two images of one size.
int largestChannelDifference(const QImage& first, const QImage& second)
{
    const QImage a = first.convertToFormat(QImage::Format_ARGB32);
    const QImage b = second.convertToFormat(QImage::Format_ARGB32);
    if (a.size() != b.size())
        return 256;
    int nLargest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb pa = a.pixel(x, y);
            const QRgb pb = b.pixel(x, y);
            for (int nDifference : {qRed(pa) - qRed(pb), qGreen(pa) - qGreen(pb), qBlue(pa) - qBlue(pb), qAlpha(pa) - qAlpha(pb)})
                nLargest = qMax(nLargest, qAbs(nDifference));
        }
    }
    return nLargest;
}

} // namespace

// On a screen of twice the usual pixel density (QT_SCALE_FACTOR=2, see main below) the
// host scales its windows and draws its icon from the rendering of twice the size, never
// from a smaller one blown up.
class TestAppHighDpi : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void windowsAreScaled();
    void windowIconIsSharp_data();
    void windowIconIsSharp();
    void aboutBoxIconIsSharp();

private:

};

void TestAppHighDpi::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    CVXHostSetup::afterApplication();
}

void TestAppHighDpi::windowsAreScaled()
{
    QCOMPARE(qApp->devicePixelRatio(), 2.0);
    QCOMPARE(host()->window()->devicePixelRatioF(), 2.0);
}

void TestAppHighDpi::windowIconIsSharp_data()
{
    QTest::addColumn<int>("side");
    for (int nSide : {16, 32, 64, 256})
        QTest::addRow("%d px", nSide) << nSide;
}

void TestAppHighDpi::windowIconIsSharp()
{
    QFETCH(int, side);
    const QPixmap pixmap = host()->window()->windowIcon().pixmap(side, side);
    QCOMPARE(pixmap.devicePixelRatio(), 2.0);
    QCOMPARE(pixmap.size(), QSize(2 * side, 2 * side));
    // The rendering of twice the size, but for the rounding of premultiplied alpha; one of
    // the given size blown up would differ by far more.
    const QImage rendered(QStringLiteral(":/icons/vxhost-%1.png").arg(2 * side));
    QVERIFY(!rendered.isNull());
    const int nDifference = largestChannelDifference(pixmap.toImage(), rendered);
    QVERIFY2(nDifference <= 1, qPrintable(QString::number(nDifference)));
}

void TestAppHighDpi::aboutBoxIconIsSharp()
{
    QPixmap icon;
    answerNextModalDialog(QDialog::staticMetaObject, [&icon](QDialog* pDialog) {
        icon = pDialog->findChild<QLabel*>("iconLabel")->pixmap(Qt::ReturnByValue);
        pDialog->reject();
    });
    host()->action("actionAbout")->trigger();
    QCOMPARE(icon.devicePixelRatio(), 2.0);
    QCOMPARE(icon.size(), QSize(128, 128));
}

int main(int argc, char* argv[])
{
    qputenv("QT_SCALE_FACTOR", "2");
    // The attributes for high pixel densities must be set before the application exists.
    CVXHostSetup::beforeApplication();
    QApplication application(argc, argv);
    TestAppHighDpi test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_app_highdpi.moc"
