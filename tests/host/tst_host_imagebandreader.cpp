#include "TestDicomFiles.h"
#include "TestImageFiles.h"
#include "TestPictures.h"

#include <VXImageBandReader.h>
#include <VXImageFileReader.h>
#include <VXImageProvenance.h>

#include <QBuffer>
#include <QTemporaryDir>
#include <QtTest>

#include <png.h>
#include <zlib.h>

#include <cstdio>
#include <vector>

namespace {

// The whole image from the reader's bands, which must all be of the image's width and
// format and add up to its height.
QImage joinedBands(CVXImageBandReader& reader, int nBandRows)
{
    QImage whole;
    int y = 0;
    while (!reader.atEnd()) {
        const QImage band = reader.readBand(nBandRows);
        if (band.isNull() || band.width() != reader.size().width() || band.height() > nBandRows)
            return QImage();
        if (whole.isNull())
            whole = QImage(reader.size(), band.format());
        if (band.format() != whole.format() || y + band.height() > whole.height())
            return QImage();
        whole.setColorTable(band.colorTable());
        for (int row = 0; row < band.height(); ++row)
            std::memcpy(whole.scanLine(y + row), band.constScanLine(row), size_t(band.bytesPerLine()));
        y += band.height();
    }
    return y == reader.size().height() ? whole : QImage();
}

QMap<QString, QString> textsOf(const QImage& image)
{
    QMap<QString, QString> texts;
    for (const QString& strKey : image.textKeys())
        texts.insert(strKey, image.text(strKey));
    return texts;
}

// A PNG written by libpng itself: 8-bit RGB, interlaced or not, with a text chunk before
// the image data and a UTF-8 one after it, which Qt's writer never puts there.
bool writePngByLibpng(const QString& strPath, const QImage& image, bool bInterlaced)
{
    FILE* pFile = std::fopen(QFile::encodeName(strPath).constData(), "wb");
    png_structp pPng = pFile ? png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr) : nullptr;
    png_infop pInfo = pPng ? png_create_info_struct(pPng) : nullptr;
    png_infop pEnd = pPng ? png_create_info_struct(pPng) : nullptr;
    const QImage rgb = image.convertToFormat(QImage::Format_RGB888);
    std::vector<png_bytep> rows;
    for (int y = 0; y < rgb.height(); ++y)
        rows.push_back(const_cast<png_bytep>(rgb.constScanLine(y)));
    char key1[] = "Patient ID";
    char text1[] = "mouse 7";
    char key2[] = "Acquisition Date";
    char text2[] = "2024-05-02 \xC3\xA4";
    png_text before = {};
    before.compression = PNG_TEXT_COMPRESSION_NONE;
    before.key = key1;
    before.text = text1;
    png_text after = {};
    after.compression = PNG_ITXT_COMPRESSION_NONE;
    after.key = key2;
    after.text = text2;
    const bool bOk = pEnd && !setjmp(png_jmpbuf(pPng));
    if (bOk) {
        png_init_io(pPng, pFile);
        png_set_IHDR(pPng, pInfo, png_uint_32(rgb.width()), png_uint_32(rgb.height()), 8, PNG_COLOR_TYPE_RGB,
                     bInterlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                     PNG_FILTER_TYPE_DEFAULT);
        png_set_text(pPng, pInfo, &before, 1);
        png_write_info(pPng, pInfo);
        png_write_image(pPng, rows.data());
        png_set_text(pPng, pEnd, &after, 1);
        png_write_end(pPng, pEnd);
    }
    // The end's info first: destroying the write struct forgets the struct it needs.
    png_destroy_info_struct(pPng, &pEnd);
    png_destroy_write_struct(&pPng, &pInfo);
    if (pFile)
        std::fclose(pFile);
    return bOk;
}

// The signature, a header announcing the size in 8-bit RGB, and a little image data: enough
// for the header to be believed.
QByteArray pngAnnouncing(const QSize& size)
{
    QImage small(1, 1, QImage::Format_RGB32);
    small.fill(Qt::red);
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    small.save(&buffer, "png");
    // Width and height, then the header chunk's checksum, which now no longer matches.
    const auto putBigEndian = [&png](int nOffset, quint32 nValue) {
        for (int i = 0; i < 4; ++i)
            png[nOffset + i] = char((nValue >> (24 - 8 * i)) & 0xff);
    };
    putBigEndian(16, quint32(size.width()));
    putBigEndian(20, quint32(size.height()));
    putBigEndian(29, quint32(crc32(0, reinterpret_cast<const Bytef*>(png.constData() + 12), 17)));
    return png;
}

} // namespace

// Reads image files band by band and compares with the whole-file reader, which stays the
// measure of pixels, formats, text keys and reasons.
class TestHostImageBandReader : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void bandsAddUpToWhatTheFileReaderReads_data();
    void bandsAddUpToWhatTheFileReaderReads();
    void refusesAsTheFileReaderDoes_data();
    void refusesAsTheFileReaderDoes();
    void damagedImageDataIsRefused();
    void damageAfterTheFirstBandsEndsTheReading();

private:
    QString path(const char* pName) const;

    QTemporaryDir m_dir;
};

QString TestHostImageBandReader::path(const char* pName) const
{
    return m_dir.filePath(QString::fromLatin1(pName));
}

void TestHostImageBandReader::initTestCase()
{
    QVERIFY(m_dir.isValid());
    const QImage noise = noiseImage(QSize(67, 45), 11);
    QImage textual = noise;
    textual.setText(QStringLiteral("Patient ID"), QStringLiteral("mouse 7"));
    textual.setText(QStringLiteral("Source"), QStringLiteral("another name.png"));
    QVERIFY(textual.save(path("rgb.png")));
    QImage translucent = noise.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < translucent.height(); ++y)
        for (int x = 0; x < translucent.width(); ++x)
            translucent.setPixel(x, y, (translucent.pixel(x, y) & 0xffffffu) | (quint32(x * 3 + y) << 24));
    QVERIFY(translucent.save(path("rgba.png")));
    QVERIFY(noise.convertToFormat(QImage::Format_Grayscale8).save(path("grey.png")));
    QVERIFY(zonePlate(64, QPointF(20, 30), QImage::Format_Grayscale16).save(path("grey16.png")));
    QVERIFY(noise.convertToFormat(QImage::Format_Indexed8).save(path("palette.png")));
    QVERIFY(writePngByLibpng(path("texts.png"), noise, false));
    QVERIFY(writePngByLibpng(path("interlaced.png"), noise, true));
    QVERIFY(noise.save(path("noise.tif")));
    QVERIFY(noise.save(path("noise.bmp")));
    QVERIFY(noise.save(path("noise.jpg")));
    CTestDicomFiles::SHeader header;
    header.size = QSize(40, 30);
    QVERIFY(CTestDicomFiles::write(path("scan.dcm"), header, QVector<quint16>(40 * 30, 900)));
    QVERIFY(CTestImageFiles::writeBytes(path("huge.png"), pngAnnouncing(QSize(30000, 30000))));
    QVERIFY(CTestImageFiles::writeTruncatedCopy(path("rgb.png"), path("truncated.png")));
    QVERIFY(CTestImageFiles::writeTruncatedCopy(path("noise.tif"), path("truncated.tif")));
    QVERIFY(CTestImageFiles::writeBytes(path("empty.png"), QByteArray()));
    QVERIFY(CTestImageFiles::writeBytes(path("notes.png"), "notes, not an image\n"));
}

void TestHostImageBandReader::bandsAddUpToWhatTheFileReaderReads_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("bandRows");
    QTest::addColumn<bool>("streamed");
    QTest::newRow("rgb png, bands of 1") << path("rgb.png") << 1 << true;
    QTest::newRow("rgb png, bands of 8") << path("rgb.png") << 8 << true;
    QTest::newRow("rgba png") << path("rgba.png") << 7 << true;
    QTest::newRow("grey png") << path("grey.png") << 10 << true;
    QTest::newRow("texts before and after the image data") << path("texts.png") << 16 << true;
    // Kinds that Qt's decoder converts are read whole.
    QTest::newRow("16-bit grey png") << path("grey16.png") << 9 << false;
    QTest::newRow("palette png") << path("palette.png") << 9 << false;
    QTest::newRow("interlaced png") << path("interlaced.png") << 9 << false;
    QTest::newRow("tiff") << path("noise.tif") << 9 << false;
    QTest::newRow("bmp") << path("noise.bmp") << 9 << false;
    QTest::newRow("jpeg") << path("noise.jpg") << 9 << false;
    QTest::newRow("dicom") << path("scan.dcm") << 9 << false;
}

void TestHostImageBandReader::bandsAddUpToWhatTheFileReaderReads()
{
    QFETCH(QString, file);
    QFETCH(int, bandRows);
    QFETCH(bool, streamed);
    QString strError;
    const QVector<QImage> pages = CVXImageFileReader::read(file, strError);
    QVERIFY2(!pages.isEmpty(), qPrintable(strError));
    CVXImageBandReader reader(file);
    QVERIFY2(reader.open(), qPrintable(reader.errorString()));
    QCOMPARE(reader.isStreamed(), streamed);
    QCOMPARE(reader.size(), pages.first().size());
    const QImage whole = joinedBands(reader, streamed ? bandRows : pages.first().height());
    QVERIFY2(reader.errorString().isEmpty(), qPrintable(reader.errorString()));
    QCOMPARE(whole.format(), pages.first().format());
    QCOMPARE(whole, pages.first());
    QCOMPARE(reader.texts(), textsOf(pages.first()));
    QVERIFY(reader.readBand(bandRows).isNull());
}

void TestHostImageBandReader::refusesAsTheFileReaderDoes_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("missing") << path("missing.png");
    QTest::newRow("empty") << path("empty.png");
    QTest::newRow("not an image") << path("notes.png");
    QTest::newRow("png cut short") << path("truncated.png");
    QTest::newRow("tiff cut short") << path("truncated.tif");
    QTest::newRow("30000 x 30000 png") << path("huge.png");
}

// The reason is the file reader's, whether it shows when opening or in a later band.
void TestHostImageBandReader::refusesAsTheFileReaderDoes()
{
    QFETCH(QString, file);
    QString strError;
    QVERIFY(CVXImageFileReader::read(file, strError).isEmpty());
    QVERIFY(!strError.isEmpty());
    CVXImageBandReader reader(file);
    if (reader.open()) {
        while (!reader.readBand(4).isNull()) {
        }
    }
    QCOMPARE(reader.errorString(), strError);
}

// The band reader leaves out zlib's own checksum for speed; a byte changed in the image data
// is still found by the chunk's CRC.
void TestHostImageBandReader::damagedImageDataIsRefused()
{
    QVERIFY(noiseImage(QSize(300, 400), 7).save(path("flipped.png")));
    QByteArray bytes = CTestImageFiles::readBytes(path("flipped.png"));
    const int nData = bytes.indexOf("IDAT") + 4;
    QVERIFY(nData > 4);
    bytes[nData + 100] = char(bytes.at(nData + 100) ^ 0x5a);
    QVERIFY(CTestImageFiles::writeBytes(path("flipped.png"), bytes));
    CVXImageBandReader reader(path("flipped.png"));
    if (reader.open()) {
        while (!reader.readBand(50).isNull()) {
        }
    }
    QVERIFY(!reader.atEnd());
    QVERIFY(!reader.errorString().isEmpty());
}

void TestHostImageBandReader::damageAfterTheFirstBandsEndsTheReading()
{
    // The image data of a large noise image cut at three quarters: the first bands decode,
    // a later one fails.
    QVERIFY(noiseImage(QSize(300, 400), 5).save(path("long.png")));
    QFile file(path("long.png"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(CTestImageFiles::writeBytes(path("long-cut.png"), file.readAll().left(int(file.size() * 3 / 4))));
    CVXImageBandReader reader(path("long-cut.png"));
    QVERIFY(reader.open());
    QVERIFY(reader.isStreamed());
    QVERIFY(!reader.readBand(50).isNull());
    int nBands = 1;
    while (!reader.readBand(50).isNull())
        ++nBands;
    QVERIFY2(nBands < 8, qPrintable(QString::number(nBands)));
    QVERIFY(!reader.atEnd());
    QString strError;
    QVERIFY(CVXImageFileReader::read(path("long-cut.png"), strError).isEmpty());
    QCOMPARE(reader.errorString(), strError);
}

QTEST_GUILESS_MAIN(TestHostImageBandReader)
#include "tst_host_imagebandreader.moc"
