#include <VXAppIcon.h>

#include <QtTest>

class TestAppAppIcon : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void drawnAtEverySize_data();
    void drawnAtEverySize();
};

void TestAppAppIcon::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestAppAppIcon::drawnAtEverySize_data()
{
    QTest::addColumn<int>("side");
    for (int nSide : {16, 24, 32, 48, 64, 128, 256})
        QTest::addRow("%d px", nSide) << nSide;
}

void TestAppAppIcon::drawnAtEverySize()
{
    QFETCH(int, side);
    const QIcon icon = CVXAppIcon::create();
    QVERIFY(icon.availableSizes().contains(QSize(side, side)));
    const QImage image = icon.pixmap(side, side).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(image.size(), QSize(side, side));
    // Rounded corners stay see-through; the glowing lens in the middle is bright and warm.
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    const QColor centre = image.pixelColor(side / 2, side / 2);
    QCOMPARE(centre.alpha(), 255);
    QVERIFY2(centre.red() > 150 && centre.red() >= centre.blue(), qPrintable(centre.name()));
}

QTEST_MAIN(TestAppAppIcon)
#include "tst_app_appicon.moc"
