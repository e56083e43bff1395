#include "TestImageFiles.h"
#include "TestPictures.h"

#include <VXImageFileReader.h>
#include <VXImageWindowing.h>

#include <QImageReader>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QSize kImageSize(40, 30);
const QPoint kLeft(5, 15);
const QPoint kRight(35, 15);

} // namespace

class TestAppImageReader : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void readsFormat_data();
    void readsFormat();
    void refusesUnreadable_data();
    void refusesUnreadable();
    void readsEveryPage_data();
    void readsEveryPage();
    void refusesManyPagesTogetherTooLarge();
    void deepImagesAreWindowed_data();
    void deepImagesAreWindowed();
    void flatDeepImageKeepsItsLevel();
    void eightBitImagesStayAsTheyAre();
    void dialogFilterOffersTheFormats();

private:
    QString path(const QString& strName) const;

    QTemporaryDir m_dir;
};

void TestAppImageReader::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

QString TestAppImageReader::path(const QString& strName) const
{
    return m_dir.filePath(strName);
}

void TestAppImageReader::readsFormat_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QImage>("written");
    QTest::addColumn<QImage::Format>("storedFormat");
    QTest::addColumn<QColor>("left");
    QTest::addColumn<QColor>("right");
    QTest::addColumn<int>("tolerance");

    const QImage colour = CTestImageFiles::twoHalves(kImageSize, QImage::Format_RGB32, Qt::red, Qt::blue);
    QTest::newRow("png") << "colour.png" << colour << QImage::Format_RGB32 << QColor(Qt::red) << QColor(Qt::blue) << 0;
    QTest::newRow("jpg") << "colour.jpg" << colour << QImage::Format_RGB32 << QColor(Qt::red) << QColor(Qt::blue) << 40;
    QTest::newRow("jpeg") << "colour.jpeg" << colour << QImage::Format_RGB32 << QColor(Qt::red) << QColor(Qt::blue)
                          << 40;
    QTest::newRow("bmp") << "colour.bmp" << colour << QImage::Format_RGB32 << QColor(Qt::red) << QColor(Qt::blue) << 0;
    const QImage grey8 = CTestImageFiles::twoHalves(kImageSize, QImage::Format_Grayscale8, QColor(30, 30, 30),
                                                    QColor(200, 200, 200));
    QTest::newRow("8-bit grey tiff") << "grey8.tif" << grey8 << QImage::Format_Grayscale8 << QColor(30, 30, 30)
                                     << QColor(200, 200, 200) << 0;
    QTest::newRow("8-bit colour tiff") << "colour8.tiff" << colour << QImage::Format_RGB32 << QColor(Qt::red)
                                       << QColor(Qt::blue) << 0;
    // X-ray detectors use a narrow part of the 16-bit range; it is stretched to full scale.
    const QImage grey16 = CTestImageFiles::twoHalves(kImageSize, QImage::Format_Grayscale16,
                                                     CTestImageFiles::deepGrey(1000), CTestImageFiles::deepGrey(3000));
    QTest::newRow("16-bit grey tiff") << "grey16.tif" << grey16 << QImage::Format_Grayscale16 << QColor(Qt::black)
                                      << QColor(Qt::white) << 0;
    const QImage colour16 = CTestImageFiles::twoHalves(kImageSize, QImage::Format_RGBA64,
                                                       QColor::fromRgba64(1000, 2000, 3000),
                                                       CTestImageFiles::deepGrey(3000));
    QTest::newRow("16-bit colour tiff") << "colour16.tif" << colour16 << QImage::Format_RGBA64 << QColor(0, 127, 255)
                                        << QColor(Qt::white) << 0;
}

void TestAppImageReader::readsFormat()
{
    QFETCH(QString, fileName);
    QFETCH(QImage, written);
    QFETCH(QImage::Format, storedFormat);
    QFETCH(QColor, left);
    QFETCH(QColor, right);
    QFETCH(int, tolerance);
    QVERIFY(written.save(path(fileName)));
    // The file holds what the row claims, so the reader really meets that kind of data.
    QImageReader check(path(fileName));
    QCOMPARE(check.read().format(), storedFormat);

    QString strError;
    const QVector<QImage> frames = CVXImageFileReader::read(path(fileName), strError);

    QCOMPARE(strError, QString());
    QCOMPARE(frames.size(), 1);
    QCOMPARE(frames.first().size(), kImageSize);
    QVERIFY(!CVXImageWindowing::hasDeepChannels(frames.first()));
    const QColor actualLeft = frames.first().pixelColor(kLeft);
    const QColor actualRight = frames.first().pixelColor(kRight);
    QVERIFY2(CTestImageFiles::isNear(actualLeft, left, tolerance), qPrintable(actualLeft.name()));
    QVERIFY2(CTestImageFiles::isNear(actualRight, right, tolerance), qPrintable(actualRight.name()));
}

void TestAppImageReader::refusesUnreadable_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("reason");

    QVERIFY(CTestImageFiles::writeBytes(path("empty.png"), QByteArray()));
    QVERIFY(CTestImageFiles::writeBytes(path("corrupt.png"), "no pixels in here, only text"));
    QVERIFY(CTestImageFiles::writeBytes(path("notes.txt"), "an unsupported kind of file"));
    const QImage image = CTestImageFiles::twoHalves(QSize(200, 100), QImage::Format_RGB32, Qt::red, Qt::blue);
    // A JPEG cut short is not among them: its decoder fills the missing part without error.
    for (const QString& strSuffix : {QStringLiteral("png"), QStringLiteral("tif")}) {
        QVERIFY(image.save(path("whole." + strSuffix)));
        QVERIFY(CTestImageFiles::writeTruncatedCopy(path("whole." + strSuffix), path("truncated." + strSuffix)));
    }
    // 15000 x 15000 pixels would take 900 MB once decoded.
    QVERIFY(CTestImageFiles::writeBmpHeader(path("huge.bmp"), QSize(15000, 15000)));

    QTest::newRow("missing") << "missing.png" << "File not found";
    QTest::newRow("empty") << "empty.png" << "The file is empty.";
    QTest::newRow("corrupt") << "corrupt.png" << "Unsupported image format";
    QTest::newRow("unsupported") << "notes.txt" << "Unsupported image format";
    QTest::newRow("truncated png") << "truncated.png" << "Unable to read image data";
    QTest::newRow("truncated tiff") << "truncated.tif" << "Unable to read image data";
    QTest::newRow("too large") << "huge.bmp"
                               << "The image data (15000 x 15000 pixels per image) would need 859 MiB of memory; "
                                  "files needing more than 512 MiB are not opened.";
}

void TestAppImageReader::refusesUnreadable()
{
    QFETCH(QString, fileName);
    QFETCH(QString, reason);
    QString strError;
    const QVector<QImage> frames = CVXImageFileReader::read(path(fileName), strError);
    QVERIFY(frames.isEmpty());
    QCOMPARE(strError, reason);
}

void TestAppImageReader::readsEveryPage_data()
{
    QTest::addColumn<int>("pages");
    QTest::newRow("one page") << 1;
    QTest::newRow("two pages") << 2;
    QTest::newRow("seven pages") << 7;
}

void TestAppImageReader::readsEveryPage()
{
    QFETCH(int, pages);
    QVector<QImage> written;
    for (int i = 0; i < pages; ++i)
        written << greyImage(kImageSize, 10 + 30 * i, QImage::Format_Grayscale8);
    const QString strPath = path(QStringLiteral("pages%1.tif").arg(pages));
    QVERIFY(CTestImageFiles::writeMultiPageTiff(strPath, written));

    QString strError;
    const QVector<QImage> frames = CVXImageFileReader::read(strPath, strError);

    QCOMPARE(strError, QString());
    QCOMPARE(frames.size(), pages);
    for (int i = 0; i < pages; ++i)
        QCOMPARE(qGray(frames[i].pixel(kLeft)), 10 + 30 * i);
}

void TestAppImageReader::refusesManyPagesTogetherTooLarge()
{
    // Each page alone fits into the limit; all of them together do not.
    const QSize pageSize(8192, 8192);
    const int nPages = int(CVXImageFileReader::kMaxDecodedBytes / (qint64(pageSize.width()) * pageSize.height())) + 1;
    const QString strPath = path(QStringLiteral("many.tif"));
    QVERIFY(CTestImageFiles::writeTiffWithoutPixels(strPath, QVector<QSize>(nPages, pageSize)));

    QString strError;
    const QVector<QImage> frames = CVXImageFileReader::read(strPath, strError);

    QVERIFY(frames.isEmpty());
    QCOMPARE(strError, QStringLiteral("The image data (8192 x 8192 pixels per image) would need 576 MiB of memory; "
                                      "files needing more than 512 MiB are not opened."));
}

void TestAppImageReader::deepImagesAreWindowed_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<QImage::Format>("displayFormat");
    QTest::addColumn<QColor>("left");
    QTest::addColumn<QColor>("right");
    QTest::newRow("grey, narrow range")
        << CTestImageFiles::twoHalves(kImageSize, QImage::Format_Grayscale16, CTestImageFiles::deepGrey(20000),
                                      CTestImageFiles::deepGrey(20100))
        << QImage::Format_Grayscale8 << QColor(Qt::black) << QColor(Qt::white);
    QTest::newRow("grey, full range")
        << CTestImageFiles::twoHalves(kImageSize, QImage::Format_Grayscale16, CTestImageFiles::deepGrey(0),
                                      CTestImageFiles::deepGrey(65535))
        << QImage::Format_Grayscale8 << QColor(Qt::black) << QColor(Qt::white);
    QTest::newRow("colour, opaque")
        << CTestImageFiles::twoHalves(kImageSize, QImage::Format_RGBX64, QColor::fromRgba64(500, 700, 900),
                                      CTestImageFiles::deepGrey(900))
        << QImage::Format_ARGB32 << QColor(0, 127, 255) << QColor(Qt::white);
    QTest::newRow("colour, half transparent")
        << CTestImageFiles::twoHalves(kImageSize, QImage::Format_RGBA64, QColor::fromRgba64(500, 700, 900, 32768),
                                      QColor::fromRgba64(900, 900, 900, 32768))
        << QImage::Format_ARGB32 << QColor(0, 127, 255, 128) << QColor(255, 255, 255, 128);
}

void TestAppImageReader::deepImagesAreWindowed()
{
    QFETCH(QImage, image);
    QFETCH(QImage::Format, displayFormat);
    QFETCH(QColor, left);
    QFETCH(QColor, right);
    QVERIFY(CVXImageWindowing::hasDeepChannels(image));
    const QImage display = CVXImageWindowing::toDisplay(image);
    QCOMPARE(display.format(), displayFormat);
    QCOMPARE(display.size(), image.size());
    QCOMPARE(display.pixelColor(kLeft), left);
    QCOMPARE(display.pixelColor(kRight), right);
}

void TestAppImageReader::flatDeepImageKeepsItsLevel()
{
    // Nothing to stretch: the level is shown as it is rather than as black or white.
    QImage flat(kImageSize, QImage::Format_Grayscale16);
    flat.fill(0);
    for (int y = 0; y < flat.height(); ++y) {
        auto* pLine = reinterpret_cast<quint16*>(flat.scanLine(y));
        std::fill(pLine, pLine + flat.width(), quint16(100 * 257));
    }
    const QImage display = CVXImageWindowing::toDisplay(flat);
    QCOMPARE(display.format(), QImage::Format_Grayscale8);
    QCOMPARE(qGray(display.pixel(kLeft)), 100);
}

void TestAppImageReader::eightBitImagesStayAsTheyAre()
{
    for (QImage::Format format : {QImage::Format_Grayscale8, QImage::Format_RGB32, QImage::Format_ARGB32,
                                  QImage::Format_Indexed8}) {
        const QImage image = greyImage(kImageSize, 77, QImage::Format_RGB32).convertToFormat(format);
        QVERIFY(!CVXImageWindowing::hasDeepChannels(image));
        const QImage display = CVXImageWindowing::toDisplay(image);
        QCOMPARE(display.format(), format);
        QVERIFY(display == image);
    }
}

void TestAppImageReader::dialogFilterOffersTheFormats()
{
    const QString strFilter = CVXImageFileReader::dialogFilter();
    for (const char* pPattern : {"*.png", "*.jpg", "*.jpeg", "*.bmp", "*.tif", "*.tiff"})
        QVERIFY2(strFilter.contains(QLatin1String(pPattern)), pPattern);
}

QTEST_MAIN(TestAppImageReader)
#include "tst_app_imagereader.moc"
