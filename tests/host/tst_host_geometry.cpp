#include "VXGeometry.h"

#include <QtTest>

class TestHostGeometry : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void rotatePoint_data();
    void rotatePoint();
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

QTEST_GUILESS_MAIN(TestHostGeometry)
#include "tst_host_geometry.moc"
