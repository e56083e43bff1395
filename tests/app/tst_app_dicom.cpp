#include "HostFixture.h"
#include "ModalWatch.h"
#include "TestDicomFiles.h"
#include "TestImageFiles.h"

#include "WidgetTestCase.h"

#include <VXHostMainWindow.h>
#include <VXImageFileReader.h>
#include <VXSSequenceWindow.h>

#include <QMessageBox>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QtTest>

namespace {

// Three equal bands across the image, left to right.
constexpr int kWidth = 30;
constexpr int kHeight = 10;

struct SDicomImage
{
    int nSamples = 1;
    int nBits = 8;
    QString strPhotometric = QStringLiteral("MONOCHROME2");
    int nFrames = 1;
    QSize size = QSize(kWidth, kHeight);
    // Band values of each frame (grey) or band colours (three samples each).
    QVector<quint16> values;
    QString strWindowCentre;
    QString strWindowWidth;
    bool bPixelData = true;
};

// The value of band nBand (0..2) of sample nSample.
quint16 bandValue(const SDicomImage& dicom, int nFrame, int nBand, int nSample)
{
    return dicom.values.value(((nFrame * 3) + nBand) * dicom.nSamples + nSample);
}

bool writeDicom(const QString& strPath, const SDicomImage& dicom)
{
    CTestDicomFiles::SHeader header;
    header.nSamples = dicom.nSamples;
    header.nBits = dicom.nBits;
    header.strPhotometric = dicom.strPhotometric;
    header.nFrames = dicom.nFrames;
    header.size = dicom.size;
    header.strWindowCentre = dicom.strWindowCentre;
    header.strWindowWidth = dicom.strWindowWidth;
    QVector<quint16> samples;
    if (dicom.bPixelData) {
        // Only as many pixels as the test builds; a size claimed beyond them stays a claim.
        const QSize built(kWidth, kHeight);
        for (int nFrame = 0; nFrame < dicom.nFrames; ++nFrame) {
            for (int y = 0; y < built.height(); ++y) {
                for (int x = 0; x < built.width(); ++x) {
                    for (int s = 0; s < dicom.nSamples; ++s)
                        samples << bandValue(dicom, nFrame, x * 3 / built.width(), s);
                }
            }
        }
    }
    return CTestDicomFiles::write(strPath, header, samples);
}

QColor bandColour(const QImage& image, int nBand)
{
    return image.pixelColor(image.width() * (2 * nBand + 1) / 6, image.height() / 2);
}

// A copy of a DICOM file with its Samples per Pixel value replaced.
bool writeWithSamplesPerPixel(const QString& strSourcePath, const QString& strPath, quint16 nSamples)
{
    QFile source(strSourcePath);
    if (!source.open(QIODevice::ReadOnly))
        return false;
    QByteArray bytes = source.readAll();
    // Tag (0028,0002), value representation US and length 2, little endian.
    const QByteArray element("\x28\x00\x02\x00US\x02\x00", 8);
    const int nElement = bytes.indexOf(element);
    if (nElement < 0)
        return false;
    bytes[nElement + element.size()] = char(nSamples & 0xff);
    bytes[nElement + element.size() + 1] = char(nSamples >> 8);
    return CTestImageFiles::writeBytes(strPath, bytes);
}

bool runTool(const QString& strTool, const QStringList& arguments, QString& strOutput)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(strTool, arguments);
    const bool bDone = process.waitForFinished(30000);
    strOutput = QString::fromLocal8Bit(process.readAll());
    return bDone && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
}

} // namespace

Q_DECLARE_METATYPE(SDicomImage)

// DICOM files written with the DICOM toolkit, read by the image file reader and opened in
// the host.
class TestAppDicom : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void readsBands_data();
    void readsBands();
    void readsEveryFrame();
    void hostOpensMultiFrameAsSequence();
    void readsJpegBaselineFromImg2dcm();
    void readsRleCompressed();
    void refusesBadFiles_data();
    void refusesBadFiles();
    void hostReportsBadFile();

private:
    QString path(const QString& strName) const;

    QTemporaryDir m_dir;
};

void TestAppDicom::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

QString TestAppDicom::path(const QString& strName) const
{
    return m_dir.filePath(strName);
}

void TestAppDicom::readsBands_data()
{
    QTest::addColumn<SDicomImage>("dicom");
    QTest::addColumn<QColor>("left");
    QTest::addColumn<QColor>("middle");
    QTest::addColumn<QColor>("right");
    QTest::addColumn<int>("tolerance");

    SDicomImage grey8;
    grey8.values = {40, 100, 160};
    // Without a window the whole range of the pixels is shown.
    QTest::newRow("grey 8 bit, no window") << grey8 << QColor(0, 0, 0) << QColor(128, 128, 128)
                                           << QColor(255, 255, 255) << 2;
    SDicomImage grey8Window = grey8;
    grey8Window.strWindowCentre = "70";
    grey8Window.strWindowWidth = "60";
    QTest::newRow("grey 8 bit, window 70/60") << grey8Window << QColor(0, 0, 0) << QColor(255, 255, 255)
                                              << QColor(255, 255, 255) << 2;

    SDicomImage grey16;
    grey16.nBits = 16;
    grey16.values = {1000, 2000, 3000};
    QTest::newRow("grey 16 bit, no window") << grey16 << QColor(0, 0, 0) << QColor(128, 128, 128)
                                            << QColor(255, 255, 255) << 2;
    SDicomImage grey16Window = grey16;
    grey16Window.strWindowCentre = "2000";
    grey16Window.strWindowWidth = "1000";
    QTest::newRow("grey 16 bit, window 2000/1000") << grey16Window << QColor(0, 0, 0) << QColor(128, 128, 128)
                                                   << QColor(255, 255, 255) << 2;
    SDicomImage grey16Narrow = grey16;
    grey16Narrow.strWindowCentre = "1250";
    grey16Narrow.strWindowWidth = "500";
    QTest::newRow("grey 16 bit, window 1250/500") << grey16Narrow << QColor(0, 0, 0) << QColor(255, 255, 255)
                                                  << QColor(255, 255, 255) << 2;

    SDicomImage monochrome1 = grey8;
    monochrome1.strPhotometric = "MONOCHROME1";
    QTest::newRow("grey 8 bit, white is zero") << monochrome1 << QColor(255, 255, 255) << QColor(127, 127, 127)
                                               << QColor(0, 0, 0) << 2;

    SDicomImage rgb;
    rgb.nSamples = 3;
    rgb.strPhotometric = "RGB";
    rgb.values = {255, 0, 0, 0, 255, 0, 0, 0, 255};
    QTest::newRow("RGB") << rgb << QColor(Qt::red) << QColor(Qt::green) << QColor(Qt::blue) << 0;

    SDicomImage ybr = rgb;
    ybr.strPhotometric = "YBR_FULL";
    // Red, green and blue in full-range YCbCr.
    ybr.values = {76, 85, 255, 150, 44, 21, 29, 255, 107};
    QTest::newRow("YBR full") << ybr << QColor(Qt::red) << QColor(Qt::green) << QColor(Qt::blue) << 3;
}

void TestAppDicom::readsBands()
{
    QFETCH(SDicomImage, dicom);
    QFETCH(QColor, left);
    QFETCH(QColor, middle);
    QFETCH(QColor, right);
    QFETCH(int, tolerance);
    const QString strPath = path(QStringLiteral("bands.dcm"));
    QVERIFY(writeDicom(strPath, dicom));

    QString strError;
    const QVector<QImage> frames = CVXImageFileReader::read(strPath, strError);
    QVERIFY2(strError.isEmpty(), qPrintable(strError));
    QCOMPARE(frames.size(), 1);
    const QImage& image = frames.first();
    QCOMPARE(image.size(), QSize(kWidth, kHeight));
    const QColor expected[] = {left, middle, right};
    for (int nBand = 0; nBand < 3; ++nBand) {
        const QColor actual = bandColour(image, nBand);
        QVERIFY2(CTestImageFiles::isNear(actual, expected[nBand], tolerance),
                 qPrintable(QStringLiteral("band %1: %2, expected %3")
                                .arg(nBand)
                                .arg(actual.name(), expected[nBand].name())));
    }
}

void TestAppDicom::readsEveryFrame()
{
    SDicomImage dicom;
    dicom.nFrames = 3;
    dicom.values = {0, 0, 0, 100, 100, 100, 200, 200, 200};
    dicom.strWindowCentre = "128";
    dicom.strWindowWidth = "256";
    const QString strPath = path(QStringLiteral("frames.dcm"));
    QVERIFY(writeDicom(strPath, dicom));
    QString strError;
    const QVector<QImage> frames = CVXImageFileReader::read(strPath, strError);
    QVERIFY2(strError.isEmpty(), qPrintable(strError));
    QCOMPARE(frames.size(), 3);
    QVERIFY(qGray(frames[0].pixel(5, 5)) < qGray(frames[1].pixel(5, 5)));
    QVERIFY(qGray(frames[1].pixel(5, 5)) < qGray(frames[2].pixel(5, 5)));
}

void TestAppDicom::hostOpensMultiFrameAsSequence()
{
    SDicomImage multi;
    multi.nFrames = 4;
    multi.values = {10, 10, 10, 20, 20, 20, 30, 30, 30, 40, 40, 40};
    SDicomImage single;
    single.values = {10, 20, 30};
    QVERIFY(writeDicom(path(QStringLiteral("multi.dcm")), multi));
    QVERIFY(writeDicom(path(QStringLiteral("single.dcm")), single));

    CHostFixture host;
    host.window()->openImageFiles({path(QStringLiteral("single.dcm")), path(QStringLiteral("multi.dcm"))});
    QCOMPARE(host.imageWindowTitles(), QStringList({"single.dcm", "multi.dcm"}));
    QVERIFY(!host.imageWindow(0)->isSequenceWindow());
    auto* pSequence = qobject_cast<CVXSSequenceWindow*>(host.imageWindow(1));
    QVERIFY(pSequence);
    QCOMPARE(pSequence->frameCount(), 4);
}

void TestAppDicom::readsJpegBaselineFromImg2dcm()
{
    const QString strTool = QStandardPaths::findExecutable(QStringLiteral("img2dcm"));
    QVERIFY2(!strTool.isEmpty(), "img2dcm (package dcmtk) is needed");
    const QImage source = CTestImageFiles::twoHalves(QSize(64, 32), QImage::Format_RGB32, Qt::red, Qt::blue);
    QVERIFY(source.save(path(QStringLiteral("source.jpg")), "JPEG", 95));
    const QString strPath = path(QStringLiteral("baseline.dcm"));
    QString strOutput;
    QVERIFY2(runTool(strTool, {path(QStringLiteral("source.jpg")), strPath}, strOutput), qPrintable(strOutput));
    QCOMPARE(CTestDicomFiles::transferSyntaxOf(strPath), EXS_JPEGProcess1);

    QString strError;
    const QVector<QImage> frames = CVXImageFileReader::read(strPath, strError);
    QVERIFY2(strError.isEmpty(), qPrintable(strError));
    QCOMPARE(frames.size(), 1);
    QCOMPARE(frames.first().size(), source.size());
    QVERIFY(CTestImageFiles::isNear(frames.first().pixelColor(8, 16), Qt::red, 12));
    QVERIFY(CTestImageFiles::isNear(frames.first().pixelColor(56, 16), Qt::blue, 12));
}

void TestAppDicom::readsRleCompressed()
{
    const QString strTool = QStandardPaths::findExecutable(QStringLiteral("dcmcrle"));
    if (strTool.isEmpty())
        QSKIP("dcmcrle is not installed");
    SDicomImage grey16;
    grey16.nBits = 16;
    grey16.values = {1000, 2000, 3000};
    const QString strPlain = path(QStringLiteral("plain.dcm"));
    const QString strRle = path(QStringLiteral("rle.dcm"));
    QVERIFY(writeDicom(strPlain, grey16));
    QString strOutput;
    QVERIFY2(runTool(strTool, {strPlain, strRle}, strOutput), qPrintable(strOutput));
    QCOMPARE(CTestDicomFiles::transferSyntaxOf(strRle), EXS_RLELossless);

    QString strError;
    const QVector<QImage> plain = CVXImageFileReader::read(strPlain, strError);
    QVERIFY2(strError.isEmpty(), qPrintable(strError));
    const QVector<QImage> rle = CVXImageFileReader::read(strRle, strError);
    QVERIFY2(strError.isEmpty(), qPrintable(strError));
    QCOMPARE(rle.size(), 1);
    QCOMPARE(rle.first(), plain.first());
}

void TestAppDicom::refusesBadFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");

    SDicomImage valid;
    valid.nBits = 16;
    valid.values = {1, 2, 3};
    QVERIFY(writeDicom(path(QStringLiteral("valid.dcm")), valid));
    QVERIFY(CTestImageFiles::writeTruncatedCopy(path(QStringLiteral("valid.dcm")), path(QStringLiteral("truncated.dcm"))));
    QVERIFY(CTestImageFiles::writeBytes(path(QStringLiteral("empty.dcm")), QByteArray()));
    QVERIFY(CTestImageFiles::writeBytes(path(QStringLiteral("text.dcm")), "This is no DICOM file.\n"));
    SDicomImage noPixels = valid;
    noPixels.bPixelData = false;
    QVERIFY(writeDicom(path(QStringLiteral("nopixels.dcm")), noPixels));
    SDicomImage huge = valid;
    huge.size = QSize(60000, 60000);
    huge.nFrames = 10;
    QVERIFY(writeDicom(path(QStringLiteral("huge.dcm")), huge));
    // Rows, columns, frames and bytes per pixel all at their largest: the product of
    // them overflows 64 bits, which must not let the file through.
    CTestDicomFiles::SHeader largest;
    largest.size = QSize(65535, 65535);
    largest.nFrames = 2147483647;
    largest.nSamples = 3;
    largest.nBits = 16;
    largest.strPhotometric = QStringLiteral("RGB");
    QVERIFY(CTestDicomFiles::write(path(QStringLiteral("largest.dcm")), largest, QVector<quint16>(30, 1)));
    // Compressed pixel data has no length to check against the header, so a damaged
    // sample count would have the decoder fill that many samples per pixel.
    CTestDicomFiles::SHeader rgb;
    rgb.size = QSize(kWidth, kHeight);
    rgb.nSamples = 3;
    rgb.strPhotometric = QStringLiteral("RGB");
    QVERIFY(CTestDicomFiles::write(path(QStringLiteral("jpeg.dcm")), rgb, QVector<quint16>(kWidth * kHeight * 3, 200),
                                   EXS_JPEGProcess1));
    QVERIFY(writeWithSamplesPerPixel(path(QStringLiteral("jpeg.dcm")), path(QStringLiteral("manysamples.dcm")), 64259));
    SDicomImage short16 = valid;
    short16.size = QSize(2000, 2000);
    QVERIFY(writeDicom(path(QStringLiteral("shortpixels.dcm")), short16));

    QTest::newRow("truncated") << "truncated.dcm" << "not a readable DICOM file";
    QTest::newRow("empty") << "empty.dcm" << "empty";
    QTest::newRow("not DICOM") << "text.dcm" << "not a readable DICOM file";
    QTest::newRow("no pixel data") << "nopixels.dcm" << "no pixel data";
    QTest::newRow("huge claimed size") << "huge.dcm" << "MiB";
    QTest::newRow("largest claimed size") << "largest.dcm" << "(65535 x 65535 pixels per image) would need";
    QTest::newRow("samples per pixel damaged") << "manysamples.dcm" << "64259 samples per pixel";
    QTest::newRow("fewer pixels than claimed") << "shortpixels.dcm" << "incomplete";
}

void TestAppDicom::refusesBadFiles()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);
    QString strError;
    const QVector<QImage> frames = CVXImageFileReader::read(path(file), strError);
    QVERIFY(frames.isEmpty());
    QVERIFY2(strError.contains(reason), qPrintable(strError));
}

void TestAppDicom::hostReportsBadFile()
{
    QVERIFY(CTestImageFiles::writeBytes(path(QStringLiteral("bad.dcm")), "DICM but nothing else"));
    CHostFixture host;
    CModalWatch boxes(QMessageBox::staticMetaObject);
    host.window()->openImageFiles({path(QStringLiteral("bad.dcm"))});
    QCOMPARE(boxes.seen().size(), 1);
    QVERIFY2(boxes.seen().first().m_strText.contains(QStringLiteral("bad.dcm")), qPrintable(boxes.seen().first().m_strText));
    QVERIFY(host.imageWindowTitles().isEmpty());
}

QTEST_MAIN(TestAppDicom)
#include "tst_app_dicom.moc"
