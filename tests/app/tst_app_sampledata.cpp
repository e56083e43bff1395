#include <VXSampleData.h>

#include <QColor>
#include <QtTest>

#include <algorithm>

namespace {

// Where the generated pictures put things: the phantom lies head up, centred at x 256,
// with the calibration rods at the right; the optical samples' animal is centred too.
const QRect kPhantomAir(10, 10, 30, 50);
const QRect kPhantomAbdomen(300, 430, 20, 70);
const QRect kPhantomSpine(250, 400, 12, 100);
const QRect kPhantomDensestRod(482, 300, 8, 100);
const QPoint kTumour(280, 400);
const QPoint kTumourFlank(318, 400);
const QPoint kPlainFur(190, 480);
const QPoint kStage(40, 600);
const int kScaleBarX = 448;
const int kScaleBarTop = 121;
const int kScaleBarBottom = 518;
const QPoint kOrgan(175, 190);
// Two spreads beside the organ, where the signal never saturates the colour scale.
const QRect kOrganSide(227, 186, 9, 9);
// The summed frame noise over the region stays below this.
constexpr double kNoiseTolerance = 1.0;

double meanCounts(const QImage& image, const QRect& rect)
{
    double dSum = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        const auto* pLine = reinterpret_cast<const quint16*>(image.constScanLine(y));
        for (int x = rect.left(); x <= rect.right(); ++x)
            dSum += pLine[x];
    }
    return dSum / (rect.width() * rect.height());
}

double standardDeviation(const QImage& image, const QRect& rect)
{
    const double dMean = meanCounts(image, rect);
    double dSum = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        const auto* pLine = reinterpret_cast<const quint16*>(image.constScanLine(y));
        for (int x = rect.left(); x <= rect.right(); ++x)
            dSum += (pLine[x] - dMean) * (pLine[x] - dMean);
    }
    return qSqrt(dSum / (rect.width() * rect.height()));
}

double meanRed(const QImage& image, const QRect& rect)
{
    double dSum = 0;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        for (int x = rect.left(); x <= rect.right(); ++x)
            dSum += qRed(image.pixel(x, y));
    }
    return dSum / (rect.width() * rect.height());
}

QVector<double> organSignal(const QVector<QImage>& frames)
{
    QVector<double> signal;
    for (const QImage& frame : frames)
        signal << meanRed(frame, kOrganSide);
    return signal;
}

} // namespace

class TestAppSampleData : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void sizeAndFormat_data();
    void sizeAndFormat();
    void samePixelsEveryTime_data();
    void samePixelsEveryTime();
    void phantomShowsDenseMatterBright();
    void phantomLooksLikeDetectorData();
    void luminescenceSignalIsPseudoColoured();
    void luminescenceHasScaleBar();
    void fluorescenceRisesThenFalls_data();
    void fluorescenceRisesThenFalls();
    void fluorescenceIsColourMapped();
};

void TestAppSampleData::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestAppSampleData::sizeAndFormat_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QImage::Format>("format");
    QTest::newRow("x-ray phantom") << CVXSampleData::xrayPhantom() << QSize(512, 768) << QImage::Format_Grayscale16;
    QTest::newRow("luminescence") << CVXSampleData::luminescence() << QSize(480, 640) << QImage::Format_RGB32;
    const QVector<QImage> frames = CVXSampleData::fluorescenceSequence();
    QTest::newRow("first fluorescence frame") << frames.first() << QSize(320, 320) << QImage::Format_RGB32;
    QTest::newRow("last fluorescence frame") << frames.last() << QSize(320, 320) << QImage::Format_RGB32;
}

void TestAppSampleData::sizeAndFormat()
{
    QFETCH(QImage, image);
    QFETCH(QSize, size);
    QFETCH(QImage::Format, format);
    QCOMPARE(image.size(), size);
    QCOMPARE(image.format(), format);
}

void TestAppSampleData::samePixelsEveryTime_data()
{
    QTest::addColumn<QImage>("first");
    QTest::addColumn<QImage>("second");
    QTest::newRow("x-ray phantom") << CVXSampleData::xrayPhantom() << CVXSampleData::xrayPhantom();
    QTest::newRow("luminescence") << CVXSampleData::luminescence() << CVXSampleData::luminescence();
    const QVector<QImage> first = CVXSampleData::fluorescenceSequence();
    const QVector<QImage> second = CVXSampleData::fluorescenceSequence();
    for (int i = 0; i < first.size(); ++i)
        QTest::addRow("fluorescence frame %d", i) << first[i] << second[i];
}

void TestAppSampleData::samePixelsEveryTime()
{
    QFETCH(QImage, first);
    QFETCH(QImage, second);
    QVERIFY(!first.isNull());
    QVERIFY(first == second);
}

void TestAppSampleData::phantomShowsDenseMatterBright()
{
    const QImage phantom = CVXSampleData::xrayPhantom();
    const double dAir = meanCounts(phantom, kPhantomAir);
    const double dTissue = meanCounts(phantom, kPhantomAbdomen);
    const double dBone = meanCounts(phantom, kPhantomSpine);
    const double dRod = meanCounts(phantom, kPhantomDensestRod);
    QVERIFY2(dTissue > dAir * 3, qPrintable(QStringLiteral("air %1, tissue %2").arg(dAir).arg(dTissue)));
    QVERIFY2(dBone > dTissue * 1.3, qPrintable(QStringLiteral("tissue %1, bone %2").arg(dTissue).arg(dBone)));
    QVERIFY2(dRod > dBone, qPrintable(QStringLiteral("bone %1, rod %2").arg(dBone).arg(dRod)));
}

void TestAppSampleData::phantomLooksLikeDetectorData()
{
    const QImage phantom = CVXSampleData::xrayPhantom();
    // Counts beyond the 8-bit range, and noise even where only air is.
    QVERIFY(meanCounts(phantom, kPhantomDensestRod) > 10000);
    const double dNoise = standardDeviation(phantom, kPhantomAir);
    QVERIFY2(dNoise > 50 && dNoise < 1000, qPrintable(QString::number(dNoise)));
    // Blurred: no edge jumps from air to rod level between neighbouring pixels.
    const QImage row = phantom.copy(0, 350, phantom.width(), 1);
    const auto* pLine = reinterpret_cast<const quint16*>(row.constScanLine(0));
    int nLargestStep = 0;
    for (int x = 1; x < row.width(); ++x)
        nLargestStep = qMax(nLargestStep, qAbs(int(pLine[x]) - int(pLine[x - 1])));
    QVERIFY2(nLargestStep < meanCounts(phantom, kPhantomDensestRod) / 2, qPrintable(QString::number(nLargestStep)));
}

void TestAppSampleData::luminescenceSignalIsPseudoColoured()
{
    const QImage image = CVXSampleData::luminescence();
    // The strongest signal is at the top of the scale, its flank in full colour.
    const QColor tumour = image.pixelColor(kTumour);
    QVERIFY2(tumour.value() > 230, qPrintable(tumour.name()));
    const QColor flank = image.pixelColor(kTumourFlank);
    QVERIFY2(flank.saturation() > 150, qPrintable(flank.name()));
    QVERIFY2(flank.red() >= flank.green() && flank.green() >= flank.blue(), qPrintable(flank.name()));
    for (const QPoint& plain : {kPlainFur, kStage}) {
        const QColor grey = image.pixelColor(plain);
        QVERIFY2(grey.saturation() < 20, qPrintable(grey.name()));
    }
    // The animal is lit brighter than the stage it lies on.
    QVERIFY(image.pixelColor(kPlainFur).value() > image.pixelColor(kStage).value() + 40);
}

void TestAppSampleData::luminescenceHasScaleBar()
{
    const QImage image = CVXSampleData::luminescence();
    const QColor top = image.pixelColor(kScaleBarX, kScaleBarTop);
    const QColor middle = image.pixelColor(kScaleBarX, (kScaleBarTop + kScaleBarBottom) / 2);
    const QColor bottom = image.pixelColor(kScaleBarX, kScaleBarBottom);
    QVERIFY2(qMin(top.red(), qMin(top.green(), top.blue())) > 200, qPrintable(top.name()));
    QVERIFY2(middle.red() > 200 && middle.blue() < 60, qPrintable(middle.name()));
    QVERIFY2(bottom.value() < 40, qPrintable(bottom.name()));
}

void TestAppSampleData::fluorescenceRisesThenFalls_data()
{
    QTest::addColumn<int>("frames");
    QTest::newRow("default") << -1;
    QTest::newRow("12 frames") << 12;
    QTest::newRow("30 frames") << 30;
}

void TestAppSampleData::fluorescenceRisesThenFalls()
{
    QFETCH(int, frames);
    const QVector<QImage> sequence = frames < 0 ? CVXSampleData::fluorescenceSequence()
                                                : CVXSampleData::fluorescenceSequence(frames);
    QCOMPARE(sequence.size(), frames < 0 ? 12 : frames);
    const QVector<double> signal = organSignal(sequence);
    const int nPeak = int(std::max_element(signal.begin(), signal.end()) - signal.begin());
    QVERIFY2(nPeak > 0 && nPeak < signal.size() - 1, qPrintable(QString::number(nPeak)));
    QVERIFY(signal.first() < signal[nPeak] / 2);
    QVERIFY(signal.last() < signal[nPeak] / 1.5);
    for (int i = 1; i < signal.size(); ++i) {
        const bool bRising = i <= nPeak;
        const double dChange = signal[i] - signal[i - 1];
        QVERIFY2(bRising ? dChange > -kNoiseTolerance : dChange < kNoiseTolerance,
                 qPrintable(QStringLiteral("frame %1: %2 after %3").arg(i).arg(signal[i]).arg(signal[i - 1])));
    }
}

void TestAppSampleData::fluorescenceIsColourMapped()
{
    const QVector<QImage> sequence = CVXSampleData::fluorescenceSequence();
    const QVector<double> signal = organSignal(sequence);
    const int nPeak = int(std::max_element(signal.begin(), signal.end()) - signal.begin());
    const QColor before = sequence.first().pixelColor(kOrgan);
    const QColor during = sequence[nPeak].pixelColor(kOrgan);
    const QColor late = sequence.last().pixelColor(kOrgan);
    QVERIFY2(before.saturation() < 40, qPrintable(before.name()));
    QVERIFY2(during.value() > 200, qPrintable(during.name()));
    QVERIFY2(late.saturation() > 150 && late.red() > late.green(), qPrintable(late.name()));
}

QTEST_MAIN(TestAppSampleData)
#include "tst_app_sampledata.moc"
