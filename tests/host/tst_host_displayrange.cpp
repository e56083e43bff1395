#include "VXDisplayRange.h"
#include "VXImageProvenance.h"

#include <QtTest>

namespace {

QString key(const char* pszKey)
{
    return QString::fromLatin1(pszKey);
}

QImage imageWithKeys(const QMap<QString, QString>& keys)
{
    QImage image(4, 4, QImage::Format_Grayscale16);
    image.fill(0);
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        image.setText(it.key(), it.value());
    return image;
}

} // namespace

// The display range and unit an image carries as text keys.
class TestHostDisplayRange : public QObject
{
    Q_OBJECT
private slots:
    void defaultHasNoRangeAndNoRescale();
    void readsEveryKey();
    void writesWhatItReads();
    void writesOnlyWhatSaysSomething();
    void refusesBadRanges_data();
    void refusesBadRanges();
    void ignoresBadNumbersInKeys_data();
    void ignoresBadNumbersInKeys();
    void zeroSlopeMeansNoRescale();
    void valueOfAppliesRescale();
    void sharesScaleWithSameModalityAndUnit_data();
    void sharesScaleWithSameModalityAndUnit();
    void labelsQuantityAndUnit_data();
    void labelsQuantityAndUnit();
};

void TestHostDisplayRange::defaultHasNoRangeAndNoRescale()
{
    const CVXDisplayRange range = CVXDisplayRange::fromImage(QImage());
    QVERIFY(!range.hasRange());
    QCOMPARE(range.tableName(), QStringLiteral("grey"));
    QCOMPARE(range.slope(), 1.0);
    QCOMPARE(range.intercept(), 0.0);
    QVERIFY(range.unit().isEmpty());
    QVERIFY(range.rescaleNote().isEmpty());
}

void TestHostDisplayRange::readsEveryKey()
{
    const CVXDisplayRange range = CVXDisplayRange::fromImage(imageWithKeys({
        {key(CVXDisplayRange::Minimum), "1.5e+06"},
        {key(CVXDisplayRange::Maximum), "2e7"},
        {key(CVXDisplayRange::ColourTable), "magma"},
        {key(CVXDisplayRange::Quantity), "Radiance"},
        {key(CVXDisplayRange::Unit), QString::fromUtf8("p/s/cm²/sr")},
        {key(CVXDisplayRange::RescaleSlope), "250"},
        {key(CVXDisplayRange::RescaleIntercept), "-1000"},
        {key(CVXImageProvenance::Modality), "OPT"},
    }));
    QVERIFY(range.hasRange());
    QCOMPARE(range.minimum(), 1.5e6);
    QCOMPARE(range.maximum(), 2e7);
    QCOMPARE(range.tableName(), QStringLiteral("magma"));
    QCOMPARE(range.quantity(), QStringLiteral("Radiance"));
    QCOMPARE(range.unit(), QString::fromUtf8("p/s/cm²/sr"));
    QCOMPARE(range.slope(), 250.0);
    QCOMPARE(range.intercept(), -1000.0);
    QCOMPARE(range.modality(), QStringLiteral("OPT"));
}

void TestHostDisplayRange::writesWhatItReads()
{
    CVXDisplayRange range;
    QVERIFY(range.setRange(-0.25, 1234.5678));
    range.setTableName(QStringLiteral("inferno"));
    range.setQuantity(QStringLiteral("Efficiency"));
    range.setUnit(QStringLiteral("%"));
    range.setModality(QStringLiteral("OPT"));
    range.setRescale(0.001, 5.0);
    QImage image(2, 2, QImage::Format_RGB32);
    range.writeTo(image);

    QCOMPARE(image.text(key(CVXDisplayRange::Minimum)), QStringLiteral("-0.25"));
    QCOMPARE(image.text(key(CVXDisplayRange::Maximum)), QStringLiteral("1234.5678"));
    QCOMPARE(image.text(key(CVXDisplayRange::ColourTable)), QStringLiteral("inferno"));
    QCOMPARE(image.text(key(CVXDisplayRange::RescaleSlope)), QStringLiteral("0.001"));
    const CVXDisplayRange back = CVXDisplayRange::fromImage(image);
    QCOMPARE(back.minimum(), range.minimum());
    QCOMPARE(back.maximum(), range.maximum());
    QCOMPARE(back.tableName(), range.tableName());
    QCOMPARE(back.quantity(), range.quantity());
    QCOMPARE(back.unit(), range.unit());
    QCOMPARE(back.modality(), range.modality());
    QCOMPARE(back.slope(), range.slope());
    QCOMPARE(back.intercept(), range.intercept());
}

void TestHostDisplayRange::writesOnlyWhatSaysSomething()
{
    QImage image(2, 2, QImage::Format_RGB32);
    CVXDisplayRange().writeTo(image);
    QCOMPARE(image.textKeys(), QStringList({key(CVXDisplayRange::ColourTable)}));
}

void TestHostDisplayRange::refusesBadRanges_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::newRow("minimum above maximum") << 10.0 << 5.0;
    QTest::newRow("minimum equal to maximum") << 5.0 << 5.0;
    QTest::newRow("minimum not a number") << qQNaN() << 5.0;
    QTest::newRow("maximum infinite") << 0.0 << qInf();
}

void TestHostDisplayRange::refusesBadRanges()
{
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    CVXDisplayRange range;
    QVERIFY(range.setRange(1.0, 2.0));
    QVERIFY(!range.setRange(minimum, maximum));
    QCOMPARE(range.minimum(), 1.0);
    QCOMPARE(range.maximum(), 2.0);
}

void TestHostDisplayRange::ignoresBadNumbersInKeys_data()
{
    QTest::addColumn<QString>("minimum");
    QTest::addColumn<QString>("maximum");
    QTest::newRow("words") << "low" << "high";
    QTest::newRow("minimum above maximum") << "300" << "200";
    QTest::newRow("comma decimals") << "0,5" << "1,5";
    QTest::newRow("not a number") << "nan" << "1";
}

void TestHostDisplayRange::ignoresBadNumbersInKeys()
{
    QFETCH(QString, minimum);
    QFETCH(QString, maximum);
    const CVXDisplayRange range = CVXDisplayRange::fromImage(
        imageWithKeys({{key(CVXDisplayRange::Minimum), minimum}, {key(CVXDisplayRange::Maximum), maximum}}));
    QVERIFY(!range.hasRange());
}

void TestHostDisplayRange::zeroSlopeMeansNoRescale()
{
    const CVXDisplayRange range = CVXDisplayRange::fromImage(
        imageWithKeys({{key(CVXDisplayRange::RescaleSlope), "0"}, {key(CVXDisplayRange::RescaleIntercept), "-1024"}}));
    QCOMPARE(range.slope(), 1.0);
    QCOMPARE(range.intercept(), 0.0);
    QCOMPARE(range.rescaleNote(), key(CVXDisplayRange::ZeroSlopeNote));
    QCOMPARE(range.valueOf(700), 700.0);
    QImage written(1, 1, QImage::Format_RGB32);
    range.writeTo(written);
    QCOMPARE(written.text(key(CVXDisplayRange::RescaleNote)), key(CVXDisplayRange::ZeroSlopeNote));
    QCOMPARE(written.text(key(CVXDisplayRange::RescaleSlope)), QStringLiteral("1"));
}

void TestHostDisplayRange::valueOfAppliesRescale()
{
    CVXDisplayRange range;
    range.setRescale(0.5, -100.0);
    QCOMPARE(range.valueOf(0), -100.0);
    QCOMPARE(range.valueOf(1000), 400.0);
}

void TestHostDisplayRange::sharesScaleWithSameModalityAndUnit_data()
{
    QTest::addColumn<QString>("modality1");
    QTest::addColumn<QString>("unit1");
    QTest::addColumn<QString>("modality2");
    QTest::addColumn<QString>("unit2");
    QTest::addColumn<bool>("shared");
    QTest::newRow("same modality and unit") << "PT" << "BQML" << "PT" << "BQML" << true;
    QTest::newRow("other unit") << "PT" << "BQML" << "PT" << "CNTS" << false;
    QTest::newRow("other modality") << "PT" << "BQML" << "CT" << "BQML" << false;
    QTest::newRow("both without unit") << "" << "" << "" << "" << true;
    QTest::newRow("one without unit") << "PT" << "" << "PT" << "BQML" << false;
}

void TestHostDisplayRange::sharesScaleWithSameModalityAndUnit()
{
    QFETCH(QString, modality1);
    QFETCH(QString, unit1);
    QFETCH(QString, modality2);
    QFETCH(QString, unit2);
    QFETCH(bool, shared);
    CVXDisplayRange first;
    first.setModality(modality1);
    first.setUnit(unit1);
    CVXDisplayRange second;
    second.setModality(modality2);
    second.setUnit(unit2);
    QCOMPARE(first.sharesScaleWith(second), shared);
    QCOMPARE(second.sharesScaleWith(first), shared);
}

void TestHostDisplayRange::labelsQuantityAndUnit_data()
{
    QTest::addColumn<QString>("quantity");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<QString>("label");
    QTest::newRow("both") << "Radiance" << QString::fromUtf8("p/s/cm²/sr") << QString::fromUtf8("Radiance (p/s/cm²/sr)");
    QTest::newRow("unit only") << "" << "HU" << "HU";
    QTest::newRow("quantity only") << "Counts" << "" << "Counts";
    QTest::newRow("neither") << "" << "" << "";
}

void TestHostDisplayRange::labelsQuantityAndUnit()
{
    QFETCH(QString, quantity);
    QFETCH(QString, unit);
    QFETCH(QString, label);
    CVXDisplayRange range;
    range.setQuantity(quantity);
    range.setUnit(unit);
    QCOMPARE(range.quantityLabel(), label);
}

QTEST_APPLESS_MAIN(TestHostDisplayRange)
#include "tst_host_displayrange.moc"
