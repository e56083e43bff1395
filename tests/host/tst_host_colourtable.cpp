#include "VXColourTable.h"

#include <QColor>
#include <QtMath>
#include <QtTest>

namespace {

// CIE L* (D65) of an sRGB colour.
double lightness(QRgb colour)
{
    const auto linear = [](int nChannel) {
        const double dValue = nChannel / 255.0;
        return dValue <= 0.04045 ? dValue / 12.92 : qPow((dValue + 0.055) / 1.055, 2.4);
    };
    const double dY = 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
    constexpr double kDelta = 6.0 / 29.0;
    const double dF = dY > kDelta * kDelta * kDelta ? qPow(dY, 1.0 / 3.0) : dY / (3 * kDelta * kDelta) + 4.0 / 29.0;
    return 116.0 * dF - 16.0;
}

bool isWithinOneLevel(QRgb actual, const QColor& expected)
{
    return qAbs(qRed(actual) - expected.red()) <= 1 && qAbs(qGreen(actual) - expected.green()) <= 1
           && qAbs(qBlue(actual) - expected.blue()) <= 1;
}

QString table(const char* pszName)
{
    return QString::fromLatin1(pszName);
}

} // namespace

// The colour tables of the display range and the colour bars.
class TestHostColourTable : public QObject
{
    Q_OBJECT
private slots:
    void namesEveryTable();
    void unknownNameGivesGrey();
    void everyTableHas256Entries();
    void perceptualEndsMatchPublishedTables_data();
    void perceptualEndsMatchPublishedTables();
    void perceptualLightnessRises_data();
    void perceptualLightnessRises();
    void greyEntriesAreTheirIndex();
    void hotRunsBlackRedYellowWhite_data();
    void hotRunsBlackRedYellowWhite();
    void colourBetweenEntriesIsInterpolated();
    void colourOutsideTheScaleIsClamped_data();
    void colourOutsideTheScaleIsClamped();
};

void TestHostColourTable::namesEveryTable()
{
    QCOMPARE(CVXColourTable::names(),
             QStringList({"grey", "hot", "viridis", "magma", "inferno", "cividis"}));
    for (const QString& strName : CVXColourTable::names()) {
        QVERIFY(CVXColourTable::isKnown(strName));
        QCOMPARE(CVXColourTable(strName).name(), strName);
    }
    QCOMPARE(CVXColourTable::displayName(table(CVXColourTable::Viridis)), QStringLiteral("Viridis"));
    QCOMPARE(CVXColourTable::displayName(table(CVXColourTable::Grey)), QStringLiteral("Grey"));
}

void TestHostColourTable::unknownNameGivesGrey()
{
    QVERIFY(!CVXColourTable::isKnown(QStringLiteral("jet")));
    QCOMPARE(CVXColourTable(QStringLiteral("jet")).name(), table(CVXColourTable::Grey));
    QCOMPARE(CVXColourTable(QString()).entries(), CVXColourTable(table(CVXColourTable::Grey)).entries());
}

void TestHostColourTable::everyTableHas256Entries()
{
    for (const QString& strName : CVXColourTable::names())
        QCOMPARE(CVXColourTable(strName).entries().size(), 256);
}

void TestHostColourTable::perceptualEndsMatchPublishedTables_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QColor>("first");
    QTest::addColumn<QColor>("last");
    QTest::newRow("viridis") << table(CVXColourTable::Viridis) << QColor("#440154") << QColor("#fde725");
    QTest::newRow("magma") << table(CVXColourTable::Magma) << QColor("#000004") << QColor("#fcfdbf");
    QTest::newRow("inferno") << table(CVXColourTable::Inferno) << QColor("#000004") << QColor("#fcffa4");
    QTest::newRow("cividis") << table(CVXColourTable::Cividis) << QColor("#00224e") << QColor("#fee838");
}

void TestHostColourTable::perceptualEndsMatchPublishedTables()
{
    QFETCH(QString, name);
    QFETCH(QColor, first);
    QFETCH(QColor, last);
    const QVector<QRgb>& entries = CVXColourTable(name).entries();
    QVERIFY2(isWithinOneLevel(entries.first(), first), qPrintable(QColor(entries.first()).name()));
    QVERIFY2(isWithinOneLevel(entries.last(), last), qPrintable(QColor(entries.last()).name()));
    QVERIFY(isWithinOneLevel(CVXColourTable(name).colour(0.0), first));
    QVERIFY(isWithinOneLevel(CVXColourTable(name).colour(1.0), last));
}

void TestHostColourTable::perceptualLightnessRises_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("viridis") << table(CVXColourTable::Viridis);
    QTest::newRow("magma") << table(CVXColourTable::Magma);
    QTest::newRow("inferno") << table(CVXColourTable::Inferno);
    QTest::newRow("cividis") << table(CVXColourTable::Cividis);
}

void TestHostColourTable::perceptualLightnessRises()
{
    QFETCH(QString, name);
    const QVector<QRgb>& entries = CVXColourTable(name).entries();
    for (int i = 1; i < entries.size(); ++i) {
        QVERIFY2(lightness(entries.at(i)) > lightness(entries.at(i - 1)),
                 qPrintable(QStringLiteral("entry %1 (%2, L* %3) is not lighter than entry %4 (%5, L* %6)")
                                .arg(i)
                                .arg(QColor(entries.at(i)).name())
                                .arg(lightness(entries.at(i)))
                                .arg(i - 1)
                                .arg(QColor(entries.at(i - 1)).name())
                                .arg(lightness(entries.at(i - 1)))));
    }
    // Perceptual tables span most of the lightness scale.
    QVERIFY(lightness(entries.last()) - lightness(entries.first()) > 70.0);
}

void TestHostColourTable::greyEntriesAreTheirIndex()
{
    const QVector<QRgb>& entries = CVXColourTable(table(CVXColourTable::Grey)).entries();
    for (int i = 0; i < entries.size(); ++i)
        QCOMPARE(entries.at(i), qRgb(i, i, i));
}

void TestHostColourTable::hotRunsBlackRedYellowWhite_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("below the scale") << -1.0 << QColor(Qt::black);
    QTest::newRow("bottom") << 0.0 << QColor(Qt::black);
    QTest::newRow("red") << 0.375 << QColor(Qt::red);
    QTest::newRow("yellow") << 0.75 << QColor(Qt::yellow);
    QTest::newRow("top") << 1.0 << QColor(Qt::white);
    QTest::newRow("above the scale") << 2.0 << QColor(Qt::white);
}

void TestHostColourTable::hotRunsBlackRedYellowWhite()
{
    QFETCH(double, value);
    QFETCH(QColor, colour);
    const CVXColourTable hot(table(CVXColourTable::Hot));
    QCOMPARE(QColor(hot.colour(value)), colour);
    QCOMPARE(qRed(hot.entries().at(qBound(0, qRound(value * 255), 255))), colour.red());
}

void TestHostColourTable::colourBetweenEntriesIsInterpolated()
{
    const CVXColourTable magma(table(CVXColourTable::Magma));
    const QRgb below = magma.entries().at(127);
    const QRgb above = magma.entries().at(128);
    const QRgb between = magma.colour(127.5 / 255.0);
    QCOMPARE(qRed(between), qRound((qRed(below) + qRed(above)) / 2.0));
    QCOMPARE(qGreen(between), qRound((qGreen(below) + qGreen(above)) / 2.0));
    QCOMPARE(qBlue(between), qRound((qBlue(below) + qBlue(above)) / 2.0));
    QCOMPARE(magma.colour(100.0 / 255.0), magma.entries().at(100));
}

void TestHostColourTable::colourOutsideTheScaleIsClamped_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("entry");
    QTest::newRow("below") << -3.0 << 0;
    QTest::newRow("above") << 7.5 << 255;
    QTest::newRow("not a number") << qQNaN() << 0;
}

void TestHostColourTable::colourOutsideTheScaleIsClamped()
{
    QFETCH(double, value);
    QFETCH(int, entry);
    const CVXColourTable viridis(table(CVXColourTable::Viridis));
    QCOMPARE(viridis.colour(value), viridis.entries().at(entry));
}

QTEST_APPLESS_MAIN(TestHostColourTable)
#include "tst_host_colourtable.moc"
