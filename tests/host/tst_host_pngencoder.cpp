#include "OutsideProgram.h"
#include "TestImageFiles.h"
#include "TestPictures.h"

#include <VXSImageExporter.h>

#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

namespace {

struct Chunk
{
    QByteArray type;
    QByteArray data;
};

// Every chunk of a PNG file after the signature, in order; empty when it is no PNG.
QVector<Chunk> chunksOf(const QByteArray& png)
{
    QVector<Chunk> chunks;
    if (!png.startsWith("\x89PNG\r\n\x1a\n"))
        return chunks;
    for (int nAt = 8; nAt + 12 <= png.size();) {
        const int nLength = int(qFromBigEndian<quint32>(png.constData() + nAt));
        chunks.push_back({png.mid(nAt + 4, 4), png.mid(nAt + 8, nLength)});
        nAt += 12 + nLength;
    }
    return chunks;
}

// "type" for most chunks, with the data for those that carry no pixels.
QStringList describe(const QVector<Chunk>& chunks)
{
    QStringList described;
    for (const Chunk& chunk : chunks)
        described << QString::fromLatin1(chunk.type) + QLatin1Char(' ') + QString::fromLatin1(chunk.data.toHex());
    return described;
}

// The chunks that carry no pixels: the header without its height, and all but the image data.
QStringList pixelFreeChunks(const QVector<Chunk>& chunks)
{
    QVector<Chunk> kept;
    for (Chunk chunk : chunks) {
        if (chunk.type == "IDAT")
            continue;
        if (chunk.type == "IHDR")
            chunk.data.replace(4, 4, QByteArray(4, '\0'));
        kept << chunk;
    }
    return describe(kept);
}

} // namespace

// PNG pages as the exporter writes them, their image data compressed in bands on every core:
// pixels, chunks and validity, read back by Qt and pngcheck.
class TestHostPngEncoder : public QObject
{
    Q_OBJECT
private slots:
    void pagesReadBackWithTheirChunks_data();
    void pagesReadBackWithTheirChunks();
};

void TestHostPngEncoder::pagesReadBackWithTheirChunks_data()
{
    QTest::addColumn<QImage>("image");
    // A megabyte of rows makes a band: the first two have several bands each.
    QImage page = noiseImage(QSize(1203, 1001), 3);
    page.setText(QStringLiteral("Image 1 Source"), QStringLiteral("zone plate.png"));
    page.setText(QStringLiteral("Layout Style"), QStringLiteral("Layout 4x4"));
    page.setText(QStringLiteral("Description"), QString(300, QLatin1Char('x')));
    page.setText(QStringLiteral("Animal"), QString::fromUtf8("Maus-\xC3\x84"));
    page.setDotsPerMeterX(11811);
    page.setDotsPerMeterY(3937);
    QTest::newRow("opaque noise, several bands") << page;
    QImage smooth = zonePlate(900, QPointF(300, 400));
    smooth.setText(QStringLiteral("Date"), QStringLiteral("2024-05-02T10:00:00+02:00"));
    QTest::newRow("opaque zone plate, several bands") << smooth;
    QImage translucent = noiseImage(QSize(301, 207), 9).convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < translucent.height(); ++y) {
        auto* pLine = reinterpret_cast<QRgb*>(translucent.scanLine(y));
        for (int x = 0; x < translucent.width(); ++x)
            pLine[x] = (pLine[x] & 0xffffffu) | (quint32(x + y) & 0xff) << 24;
    }
    QTest::newRow("translucent") << translucent;
    QTest::newRow("one row") << noiseImage(QSize(97, 1), 5);
    QTest::newRow("one column") << noiseImage(QSize(1, 97), 6);
}

void TestHostPngEncoder::pagesReadBackWithTheirChunks()
{
    QFETCH(QImage, image);
    VX_REQUIRE_PROGRAM("pngcheck");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QString strPath = dir.filePath(QStringLiteral("page.png"));
    CVXSImageExporter exporter;
    QImage written = image;
    QCOMPARE(int(exporter.saveImage(written, strPath)), int(eSTATUS_SUCCESS));

    const OutsideProgram check(QStringLiteral("pngcheck"), {QStringLiteral("-v"), strPath});
    QVERIFY2(check.succeeded(), qPrintable(check.report()));
    const QImage read(strPath);
    QCOMPARE(read.convertToFormat(image.format()), image);
    for (const QString& strKey : image.textKeys())
        QCOMPARE(read.text(strKey), image.text(strKey));

    // The XMP packet of the text keys right after the header, then every chunk Qt's writer
    // writes, in its order, the same but for the height in the header: only the image data
    // is our own.
    QVector<Chunk> chunks = chunksOf(CTestImageFiles::readBytes(strPath));
    QVERIFY(chunks.size() > 2);
    if (!image.textKeys().isEmpty()) {
        QCOMPARE(chunks[1].type, QByteArray("iTXt"));
        QVERIFY(chunks[1].data.startsWith("XML:com.adobe.xmp"));
        chunks.remove(1);
    }
    QCOMPARE(pixelFreeChunks(chunks), pixelFreeChunks(chunksOf(CTestImageFiles::qtPng(image))));
    QCOMPARE(qFromBigEndian<quint32>(chunks.first().data.constData() + 4), quint32(image.height()));
}

QTEST_GUILESS_MAIN(TestHostPngEncoder)
#include "tst_host_pngencoder.moc"
