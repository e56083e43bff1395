#include "VXGeometry.h"
#include "VXSubWindowGeometry.h"

#include <QtTest>

class TestHostGeometry : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void rotatePoint_data();
    void rotatePoint();
    void keptInside_data();
    void keptInside();
};

void TestHostGeometry::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestHostGeometry::rotatePoint_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("angle");
    QTest::addColumn<double>("expectedX");
    QTest::addColumn<double>("expectedY");

    QTest::newRow("90 degrees turns x onto y") << 1.0 << 0.0 << 90.0 << 0.0 << 1.0;
    QTest::newRow("90 degrees turns y onto -x") << 0.0 << 1.0 << 90.0 << -1.0 << 0.0;
    QTest::newRow("-90 degrees turns x onto -y") << 1.0 << 0.0 << -90.0 << 0.0 << -1.0;
    QTest::newRow("180 degrees mirrors") << 2.0 << -3.0 << 180.0 << -2.0 << 3.0;
    QTest::newRow("360 degrees keeps the point") << 2.5 << -4.0 << 360.0 << 2.5 << -4.0;
    QTest::newRow("0 degrees keeps the point") << 2.5 << -4.0 << 0.0 << 2.5 << -4.0;
    QTest::newRow("45 degrees") << 1.0 << 1.0 << 45.0 << 0.0 << std::sqrt(2.0);
    QTest::newRow("origin stays") << 0.0 << 0.0 << 33.0 << 0.0 << 0.0;
}

void TestHostGeometry::rotatePoint()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, angle);
    QFETCH(double, expectedX);
    QFETCH(double, expectedY);

    ::rotatePoint(x, y, angle);

    QVERIFY2(std::abs(x - expectedX) < 1e-12, qPrintable(QString::number(x, 'g', 17)));
    QVERIFY2(std::abs(y - expectedY) < 1e-12, qPrintable(QString::number(y, 'g', 17)));
}

void TestHostGeometry::keptInside_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("wanted");
    QTest::addColumn<QPoint>("expected");
    // The room is QRect(10, 20, 300, 200).
    QTest::newRow("inside stays") << QSize(100, 50) << QPoint(50, 60) << QPoint(50, 60);
    QTest::newRow("past the right edge") << QSize(100, 50) << QPoint(250, 60) << QPoint(210, 60);
    QTest::newRow("past the bottom edge") << QSize(100, 50) << QPoint(50, 190) << QPoint(50, 170);
    QTest::newRow("above and left") << QSize(100, 50) << QPoint(-40, -5) << QPoint(10, 20);
    QTest::newRow("exactly the room") << QSize(300, 200) << QPoint(90, 90) << QPoint(10, 20);
    QTest::newRow("larger than the room") << QSize(500, 400) << QPoint(90, 90) << QPoint(10, 20);
}

void TestHostGeometry::keptInside()
{
    QFETCH(QSize, size);
    QFETCH(QPoint, wanted);
    QFETCH(QPoint, expected);
    const QRect room(10, 20, 300, 200);
    const QPoint placed = CVXSubWindowGeometry::keptInside(room, size, wanted);
    QCOMPARE(placed, expected);
    if (size.width() <= room.width() && size.height() <= room.height())
        QVERIFY(room.contains(QRect(placed, size)));
}

QTEST_GUILESS_MAIN(TestHostGeometry)
#include "tst_host_geometry.moc"
