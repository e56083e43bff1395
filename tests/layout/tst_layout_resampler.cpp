#include "LanczosReference.h"
#include "TestPictures.h"

#include <output/VXSBandResampler.h>
#include <output/VXSImageResampler.h>

#include <QtTest>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

// Whether every pixel of the image is exactly the colour.
bool allPixelsAre(const QImage& image, QRgb colour)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != colour)
                return false;
        }
    }
    return true;
}

// Black with white where the predicate holds for (x, y).
template<typename Predicate>
QImage blackWithWhite(QSize size, Predicate bWhite)
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, bWhite(x, y) ? qRgb(255, 255, 255) : qRgb(0, 0, 0));
    }
    return image;
}

// The column whose pixel on the middle row is brightest.
int brightestColumn(const QImage& image)
{
    int best = 0;
    const int y = image.height() / 2;
    for (int x = 1; x < image.width(); ++x) {
        if (qRed(image.pixel(x, y)) > qRed(image.pixel(best, y)))
            best = x;
    }
    return best;
}

// The image mirrored at its diagonal: rows become columns.
QImage transposed(const QImage& image)
{
    QImage result(image.height(), image.width(), image.format());
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            result.setPixel(y, x, image.pixel(x, y));
    }
    return result;
}

} // namespace

class TestLayoutResampler : public QObject
{
    Q_OBJECT
private slots:
    void solidColourStaysExact_data();
    void solidColourStaysExact();
    void translucentEdgesStayValidPremultiplied();
    void thinLineLandsInItsTargetColumn_data();
    void thinLineLandsInItsTargetColumn();
    void edgeLandsBetweenItsTargetColumns();
    void noiseIsWithinOneLevelOfLanczosReference();
    void zonePlateMatchesLanczosReference_data();
    void zonePlateMatchesLanczosReference();
    void extremeSizes_data();
    void extremeSizes();
    void nullImageOrEmptySizeGivesNullImage();
    void bandsGiveTheWholeImagesPixels_data();
    void bandsGiveTheWholeImagesPixels();
    void incompleteBandsGiveNoImage();
};

void TestLayoutResampler::solidColourStaysExact_data()
{
    QTest::addColumn<QImage>("source");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRgb>("expected");
    const QColor orange(250, 120, 3);
    QTest::newRow("large opaque image to a layout cell")
        << solidImage(QSize(2048, 2048), orange, QImage::Format_RGB32) << QSize(633, 633) << orange.rgb();
    QTest::newRow("odd sizes") << solidImage(QSize(301, 199), orange) << QSize(7, 5) << orange.rgb();
    QTest::newRow("black") << solidImage(QSize(640, 480), Qt::black) << QSize(211, 157) << qRgb(0, 0, 0);
    QTest::newRow("white") << solidImage(QSize(640, 480), Qt::white) << QSize(211, 157) << qRgb(255, 255, 255);
    QTest::newRow("grey 8 bit") << greyImage(QSize(500, 400), 77, QImage::Format_Grayscale8) << QSize(123, 98)
                                << qRgb(77, 77, 77);
    QTest::newRow("one axis reduced only")
        << solidImage(QSize(900, 100), orange, QImage::Format_RGB32) << QSize(250, 100) << orange.rgb();
    const QColor translucent(200, 40, 90, 128);
    QTest::newRow("translucent") << solidImage(QSize(400, 300), translucent) << QSize(133, 71)
                                 << qPremultiply(translucent.rgba());
}

void TestLayoutResampler::solidColourStaysExact()
{
    QFETCH(QImage, source);
    QFETCH(QSize, size);
    QFETCH(QRgb, expected);
    QImage reduced = CVXSImageResampler::scaled(source, size);
    QCOMPARE(reduced.size(), size);
    // Compared premultiplied, as the reduction works, so that no conversion rounds.
    reduced = reduced.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QVERIFY2(allPixelsAre(reduced, expected),
             qPrintable(QStringLiteral("first pixel %1, expected %2")
                            .arg(reduced.pixel(0, 0), 8, 16, QLatin1Char('0'))
                            .arg(expected, 8, 16, QLatin1Char('0'))));
}

void TestLayoutResampler::translucentEdgesStayValidPremultiplied()
{
    // Opaque white squares on full transparency: the filter's ringing must not leave a
    // colour above its alpha.
    QImage source(600, 600, QImage::Format_ARGB32);
    for (int y = 0; y < source.height(); ++y) {
        for (int x = 0; x < source.width(); ++x)
            source.setPixel(x, y, (x / 7 + y / 7) % 2 == 0 ? qRgba(255, 255, 255, 255) : qRgba(0, 0, 0, 0));
    }
    const QImage reduced = CVXSImageResampler::scaled(source, QSize(190, 190));
    QCOMPARE(reduced.format(), QImage::Format_ARGB32_Premultiplied);
    bool bSomeTranslucent = false;
    for (int y = 0; y < reduced.height(); ++y) {
        for (int x = 0; x < reduced.width(); ++x) {
            const QRgb pixel = reduced.pixel(x, y);
            const int alpha = qAlpha(pixel);
            QVERIFY2(qRed(pixel) <= alpha && qGreen(pixel) <= alpha && qBlue(pixel) <= alpha,
                     qPrintable(QStringLiteral("pixel %1,%2").arg(x).arg(y)));
            bSomeTranslucent = bSomeTranslucent || (alpha > 0 && alpha < 255);
        }
    }
    QVERIFY(bSomeTranslucent);
}

void TestLayoutResampler::thinLineLandsInItsTargetColumn_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("expected");
    // 900 source columns to 300: target column i covers source columns 3i to 3i + 2.
    QTest::newRow("left edge") << 0 << 0;
    QTest::newRow("middle of a target pixel") << 301 << 100;
    QTest::newRow("first of a target pixel") << 450 << 150;
    QTest::newRow("last of a target pixel") << 602 << 200;
    QTest::newRow("right edge") << 899 << 299;
}

void TestLayoutResampler::thinLineLandsInItsTargetColumn()
{
    QFETCH(int, column);
    QFETCH(int, expected);
    const QImage vertical = blackWithWhite(QSize(900, 90), [column](int x, int) { return x == column; });
    const QImage reduced = CVXSImageResampler::scaled(vertical, QSize(300, 30));
    QCOMPARE(brightestColumn(reduced), expected);
    // A third of the line's light falls on its target column when the filter spreads none;
    // the filter's spreading leaves well over a quarter there.
    QVERIFY2(qRed(reduced.pixel(expected, 15)) > 255 / 4, qPrintable(QString::number(qRed(reduced.pixel(expected, 15)))));
    // Far from the line nothing of it shows.
    const int far = expected < 150 ? expected + 10 : expected - 10;
    QCOMPARE(reduced.pixel(far, 15), qRgb(0, 0, 0));

    // The same line lying down lands in the same target row, with the same levels.
    const QImage reducedRows = CVXSImageResampler::scaled(transposed(vertical), QSize(30, 300));
    QCOMPARE(transposed(reducedRows), reduced);
}

void TestLayoutResampler::edgeLandsBetweenItsTargetColumns()
{
    // Black up to source column 499, white from 500: in a reduction by 4 the edge falls
    // between target columns 124 and 125.
    const QImage source = blackWithWhite(QSize(1000, 40), [](int x, int) { return x >= 500; });
    const QImage reduced = CVXSImageResampler::scaled(source, QSize(250, 10));
    const int y = 5;
    QVERIFY2(qRed(reduced.pixel(124, y)) < 128, qPrintable(QString::number(qRed(reduced.pixel(124, y)))));
    QVERIFY2(qRed(reduced.pixel(125, y)) > 128, qPrintable(QString::number(qRed(reduced.pixel(125, y)))));
    // Both sides of the edge mirror each other.
    QVERIFY(std::abs(qRed(reduced.pixel(124, y)) + qRed(reduced.pixel(125, y)) - 255) <= 1);
    // Beyond the filter's reach (three lobes of four source pixels) the sides are untouched.
    for (int x = 0; x <= 121; ++x)
        QCOMPARE(reduced.pixel(x, y), qRgb(0, 0, 0));
    for (int x = 128; x < 250; ++x)
        QCOMPARE(reduced.pixel(x, y), qRgb(255, 255, 255));
}

void TestLayoutResampler::noiseIsWithinOneLevelOfLanczosReference()
{
    // Colour noise of odd sizes: every channel of every pixel, edges included, is the exact
    // filter's value rounded, give or take the fixed-point arithmetic's one level.
    const QImage source = noiseImage(QSize(1531, 977), 11);
    const QSize size(433, 211);
    const QImage reduced = CVXSImageResampler::scaled(source, size);
    const std::vector<CLanczosReference::Channel> channels = {qRed, qGreen, qBlue};
    const CLanczosReference reference(source, size, channels);
    for (std::size_t c = 0; c < channels.size(); ++c) {
        for (int y = 0; y < size.height(); ++y) {
            for (int x = 0; x < size.width(); ++x) {
                const double expected = std::clamp(reference.level(c, x, y), 0.0, 255.0);
                const int level = channels[c](reduced.pixel(x, y));
                QVERIFY2(std::abs(level - expected) <= 1.0,
                         qPrintable(QStringLiteral("%1 at %2,%3 instead of %4").arg(level).arg(x).arg(y).arg(expected)));
            }
        }
    }
}

void TestLayoutResampler::zonePlateMatchesLanczosReference_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<double>("minimumPsnr");
    // A layout cell of the exported page; measured 56.3 dB.
    QTest::newRow("2048 to 633") << 2048 << 50.0;
    // Halved by block averages first, then filtered; measured 40.8 dB.
    QTest::newRow("4096 to 633, halved first") << 4096 << 38.0;
}

void TestLayoutResampler::zonePlateMatchesLanczosReference()
{
    QFETCH(int, side);
    QFETCH(double, minimumPsnr);
    // The rings' centre in the middle of the image.
    const QImage source = zonePlate(side, QPointF(side / 2.0 - 0.5, side / 2.0 - 0.5));
    const QSize size(633, 633);
    const QImage reduced = CVXSImageResampler::scaled(source, size);
    QCOMPARE(reduced.size(), size);
    // Compared by grey levels.
    const CLanczosReference reference(source, size, {qRed});
    const double dPsnr = reference.psnr(reduced);
    qInfo("zone plate %d -> 633 against Lanczos-3: %.1f dB", side, dPsnr);
    QVERIFY2(dPsnr >= minimumPsnr, qPrintable(QString::number(dPsnr, 'f', 1)));
    // An area average, as Qt's smooth scaling does, aliases the rings near the sampling
    // limit: the comparison tells the two apart.
    const QImage averaged = source.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    const double dAveraged = reference.psnr(averaged);
    QVERIFY2(dAveraged < dPsnr - 5.0, qPrintable(QString::number(dAveraged, 'f', 1)));
}

void TestLayoutResampler::extremeSizes_data()
{
    QTest::addColumn<QSize>("source");
    QTest::addColumn<QSize>("size");
    QTest::newRow("one column") << QSize(1, 500) << QSize(1, 37);
    QTest::newRow("one row") << QSize(500, 1) << QSize(37, 1);
    QTest::newRow("to one pixel") << QSize(800, 600) << QSize(1, 1);
    QTest::newRow("two pixels to one") << QSize(2, 2) << QSize(1, 1);
    QTest::newRow("column to one pixel") << QSize(1, 3000) << QSize(1, 1);
    QTest::newRow("same size") << QSize(123, 45) << QSize(123, 45);
    QTest::newRow("enlargement") << QSize(30, 20) << QSize(300, 200);
    QTest::newRow("one pixel enlarged") << QSize(1, 1) << QSize(50, 40);
    QTest::newRow("wider and lower") << QSize(100, 400) << QSize(300, 100);
}

void TestLayoutResampler::extremeSizes()
{
    QFETCH(QSize, source);
    QFETCH(QSize, size);
    // A horizontal grey ramp from 40 to 200: whatever the sizes, every output level lies in
    // between (up to the filter's ringing at the ends) and the ramp keeps its direction.
    QImage ramp(source, QImage::Format_RGB32);
    for (int x = 0; x < source.width(); ++x) {
        const int level = source.width() == 1 ? 120 : 40 + 160 * x / (source.width() - 1);
        for (int y = 0; y < source.height(); ++y)
            ramp.setPixel(x, y, qRgb(level, level, level));
    }
    const QImage scaled = CVXSImageResampler::scaled(ramp, size);
    QCOMPARE(scaled.size(), size);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x) {
            const QRgb pixel = scaled.pixel(x, y);
            QCOMPARE(qAlpha(pixel), 255);
            QCOMPARE(qGreen(pixel), qRed(pixel));
            QVERIFY2(qRed(pixel) >= 30 && qRed(pixel) <= 210, qPrintable(QString::number(qRed(pixel))));
        }
    }
    if (size.width() > 1 && source.width() > 1)
        QVERIFY(qRed(scaled.pixel(size.width() - 1, 0)) > qRed(scaled.pixel(0, 0)));
}

void TestLayoutResampler::nullImageOrEmptySizeGivesNullImage()
{
    QVERIFY(CVXSImageResampler::scaled(QImage(), QSize(10, 10)).isNull());
    const QImage image = solidImage(QSize(20, 20), Qt::red);
    QVERIFY(CVXSImageResampler::scaled(image, QSize(0, 10)).isNull());
    QVERIFY(CVXSImageResampler::scaled(image, QSize(10, -1)).isNull());
}

void TestLayoutResampler::bandsGiveTheWholeImagesPixels_data()
{
    QTest::addColumn<QImage>("source");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("bandRows");
    const QImage noise = noiseImage(QSize(803, 611), 7);
    // Halved three times before the filter, with odd sizes at every step.
    QTest::newRow("halved thrice, bands of 1") << noise << QSize(23, 17) << 1;
    QTest::newRow("halved thrice, bands of 5") << noise << QSize(23, 17) << 5;
    QTest::newRow("halved once, bands of 64") << noise << QSize(120, 90) << 64;
    QTest::newRow("filter only, bands of 3") << noise << QSize(401, 305) << 3;
    QImage translucent = noise.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < translucent.height(); ++y) {
        auto* pLine = reinterpret_cast<QRgb*>(translucent.scanLine(y));
        for (int x = 0; x < translucent.width(); ++x)
            pLine[x] = (pLine[x] & 0x00ffffffu) | (quint32((x * 7 + y) & 255) << 24);
    }
    QTest::newRow("alpha varies, bands of 9") << translucent << QSize(97, 71) << 9;
    QTest::newRow("grey 8 bit, bands of 2") << noise.convertToFormat(QImage::Format_Grayscale8) << QSize(50, 40) << 2;
    QTest::newRow("enlarged, bands of 11") << noise.copy(0, 0, 60, 50) << QSize(130, 100) << 11;
    QTest::newRow("same size, bands of 13") << noise.copy(0, 0, 60, 50) << QSize(60, 50) << 13;
}

// A source added band by band, as a decoder hands it over, gives exactly the pixels of the
// whole image scaled at once.
void TestLayoutResampler::bandsGiveTheWholeImagesPixels()
{
    QFETCH(QImage, source);
    QFETCH(QSize, size);
    QFETCH(int, bandRows);
    CVXSBandResampler resampler(source.size(), size);
    for (int y = 0; y < source.height(); y += bandRows) {
        QVERIFY(!resampler.isComplete());
        resampler.addRows(source.copy(0, y, source.width(), qMin(bandRows, source.height() - y)));
    }
    QVERIFY(resampler.isComplete());
    const QImage whole = CVXSImageResampler::scaled(source, size);
    QCOMPARE(whole.size(), size);
    QCOMPARE(resampler.result(), whole);
}

void TestLayoutResampler::incompleteBandsGiveNoImage()
{
    const QImage noise = noiseImage(QSize(300, 200), 3);
    CVXSBandResampler resampler(noise.size(), QSize(30, 20));
    resampler.addRows(noise.copy(0, 0, 300, 199));
    QVERIFY(!resampler.isComplete());
    QVERIFY(resampler.result().isNull());
    // A band of another width is not part of this source.
    resampler.addRows(noise.copy(0, 0, 299, 1));
    QVERIFY(!resampler.isComplete());
    resampler.addRows(noise.copy(0, 199, 300, 1));
    QVERIFY(resampler.isComplete());
    QCOMPARE(resampler.result(), CVXSImageResampler::scaled(noise, QSize(30, 20)));
}

QTEST_GUILESS_MAIN(TestLayoutResampler)
#include "tst_layout_resampler.moc"
