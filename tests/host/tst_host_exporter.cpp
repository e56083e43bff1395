#include "ExportReadBack.h"
#include "OutsideProgram.h"
#include "TestPictures.h"
#include "VXSImageExporter.h"

#include <QImageReader>
#include <QImageWriter>
#include <QPainter>
#include <QScopeGuard>
#include <QtTest>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <malloc.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

// An odd size, so that row padding shows; smooth gradients, hard edges, a checkerboard and
// marked last row and column, so that flipped, shifted, cropped or channel-swapped output shows.
QImage structuredImage()
{
    QImage image(157, 93, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            QRgb rgb = qRgb(x * 4, y * 255 / 92, 255 - x * 3);
            if (x == image.width() - 1)
                rgb = qRgb(255, 0, 255);
            else if (y == image.height() - 1)
                rgb = qRgb(0, 255, 255);
            else if (x >= 64 && y < 31)
                rgb = x < 110 ? qRgb(220, 20, 30) : qRgb(10, 40, 200);
            else if (x >= 64 && y < 62)
                rgb = ((x / 3 + y / 3) % 2) ? qRgb(250, 240, 10) : qRgb(0, 90, 30);
            else if (x >= 64)
                rgb = x % 10 == 0 ? qRgb(255, 255, 255) : qRgb(x, x, x);
            image.setPixel(x, y, rgb);
        }
    }
    return image;
}

// A smooth picture, so that JPEG's loss stays small and comparable.
QImage gradientImage(const QSize& size = QSize(64, 48))
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb((x * 4) % 256, (y * 5) % 256, ((x + y) * 2) % 256));
    }
    return image;
}

int largestChannelDifference(const QImage& a, const QImage& b)
{
    int nLargest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb pa = a.pixel(x, y);
            const QRgb pb = b.pixel(x, y);
            nLargest = std::max({nLargest, qAbs(qRed(pa) - qRed(pb)), qAbs(qGreen(pa) - qGreen(pb)),
                             qAbs(qBlue(pa) - qBlue(pb))});
        }
    }
    return nLargest;
}

// Every entry, hidden ones included, so that left-over temporary files show.
QStringList entriesOf(const QString& strFolder)
{
    return QDir(strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                     QDir::Name);
}

QByteArray contentOf(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& strPath, const QByteArray& content)
{
    QFile file(strPath);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QImage readBack(const QString& strPath, QByteArray* pFormat = nullptr)
{
    QImageReader reader(strPath);
    reader.setDecideFormatFromContent(true);
    if (pFormat)
        *pFormat = reader.format();
    const QImage image = reader.read();
    return image.convertToFormat(QImage::Format_RGB32);
}

// The file as dcm2pnm, Ghostscript, or emf2svg and libwmf with librsvg read it; a null image
// when they cannot.
QImage readByOutsidePrograms(const QString& strPath, const QSize& size)
{
    ExportReadBack reader;
    const QImage read = reader.read(strPath, size);
    if (read.isNull())
        qWarning("%s", qPrintable(reader.errorText()));
    return read;
}

// The value of a DICOM attribute as dcmdump prints it, such as "[RGB]" or "157".
QByteArray dumpedValue(const QByteArray& dump, const QByteArray& tag)
{
    for (const QByteArray& line : dump.split('\n')) {
        if (line.startsWith(tag)) {
            const QByteArray rest = line.mid(tag.size()).trimmed(); // VR, value, then "# length"
            return rest.mid(3, rest.indexOf('#') - 3).trimmed();
        }
    }
    return QByteArray();
}

const QList<const char*> kFormats = {"bmp", "jpg", "png", "eps", "tif", "wmf", "emf", "dcm"};

// One row per format, for checks that every format (or each of those given) must pass alike.
void addFormatRows(const QList<const char*>& suffixes = kFormats)
{
    QTest::addColumn<QString>("suffix");
    for (const char* pSuffix : suffixes)
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix);
}

// Saves with a new exporter; pErrorText gets its errorText() afterwards.
tag_estatus save(QImage image, QString strPath, QString* pErrorText = nullptr)
{
    CVXSImageExporter exporter;
    const tag_estatus status = exporter.saveImage(image, strPath);
    if (pErrorText)
        *pErrorText = exporter.errorText();
    return status;
}

// What errorText() says when a system call failed with nError on the file.
QString systemFailure(const QString& strPath, int nError)
{
    return QStringLiteral("Could not write %1: %2").arg(strPath, qt_error_string(nError));
}

// The lines tiffinfo prints about the file.
QByteArray tiffinfo(const QString& strPath)
{
    const OutsideProgram info(QStringLiteral("tiffinfo"), {strPath});
    return info.succeeded() ? info.output() : info.report().toUtf8();
}

// A page as the layout exports them: white, with a few flat pictures and a frame line.
QImage pageImage(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.drawLine(0, 0, size.width() - 1, 0);
    painter.drawLine(0, 0, 0, size.height() - 1);
    painter.fillRect(QRect(40, 40, size.width() / 3, size.height() / 3), QColor(200, 60, 40));
    painter.fillRect(QRect(size.width() / 2, 60, size.width() / 3, size.height() / 2), QColor(20, 90, 160));
    painter.end();
    return image;
}

} // namespace

namespace QTest {
template <>
char* toString(const tag_estatus& status)
{
    return qstrdup(QByteArray::number(int(status)) + " (" + vxStatusText(status).toUtf8() + ')');
}
} // namespace QTest

class TestHostExporter : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void writesAndReadsBack_data();
    void writesAndReadsBack();
    void dicomReadByDcmtk();
    void dicomPassesIodValidation();
    void dicomGetsFreshUids();
    void epsRenderedByGhostscript();
    void metafileRenderedThroughSvg_data();
    void metafileRenderedThroughSvg();
    void tiffReadByLibtiff();
    void tiffCompressionAndTags_data();
    void tiffCompressionAndTags();
    void tiffGreyStaysGrey();
    void tiffKeepsAlpha();
    void tiffIsCompressed();
    void resolutionGiven_data();
    void resolutionGiven();
    void isWritableSuffix_data();
    void isWritableSuffix();
    void refusedImageWritesNothing_data();
    void refusedImageWritesNothing();
    void invalidPath_data();
    void invalidPath();
    void sizeLimits_data();
    void sizeLimits();
    void replacesExistingFileKeepingPermissions();
    void failureLeavesExistingFile_data();
    void failureLeavesExistingFile();
    void failureWhileWritingLeavesExistingFile_data();
    void failureWhileWritingLeavesExistingFile();
    void outOfMemoryLeavesExistingFile_data();
    void outOfMemoryLeavesExistingFile();
    void writesThroughSymbolicLink();
    void nonAsciiFileName();
    void fullDevice_data();
    void fullDevice();
    void noPermission_data();
    void noPermission();
    void saveDataNamesFileAndReason();
    void successLeavesNoErrorText();
};

void TestHostExporter::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    // Large buffers always get mappings of their own and give them back when freed: the
    // allocator would otherwise raise its threshold for mappings after the first large
    // frees and keep later buffers on the heap, whose holes an address space limit cannot
    // see (outOfMemoryLeavesExistingFile).
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
}

void TestHostExporter::writesAndReadsBack_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<int>("tolerance");

    QTest::newRow("bmp") << QStringLiteral("out.bmp") << QByteArray("bmp") << 0;
    QTest::newRow("jpg") << QStringLiteral("out.jpg") << QByteArray("jpeg") << 16;
    QTest::newRow("jpeg") << QStringLiteral("out.jpeg") << QByteArray("jpeg") << 16;
    QTest::newRow("png") << QStringLiteral("out.png") << QByteArray("png") << 0;
    QTest::newRow("tif") << QStringLiteral("out.tif") << QByteArray("tiff") << 0;
    QTest::newRow("tiff") << QStringLiteral("out.tiff") << QByteArray("tiff") << 0;
    QTest::newRow("TIFF in capitals") << QStringLiteral("OUT.TIFF") << QByteArray("tiff") << 0;
}

void TestHostExporter::writesAndReadsBack()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, format);
    QFETCH(int, tolerance);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(fileName);
    // JPEG's loss is only small on smooth pictures; lossless formats get the hard edges too.
    const QImage image = tolerance == 0 ? structuredImage() : gradientImage();

    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    QByteArray readFormat;
    const QImage read = readBack(strPath, &readFormat);
    QCOMPARE(readFormat, format);
    QCOMPARE(read.size(), image.size());
    if (tolerance == 0)
        QCOMPARE(read, image);
    else
        QVERIFY2(largestChannelDifference(read, image) <= tolerance,
                 qPrintable(QString::number(largestChannelDifference(read, image))));
    QCOMPARE(entriesOf(dir.path()), QStringList{fileName});
}

void TestHostExporter::dicomReadByDcmtk()
{
    VX_REQUIRE_PROGRAM("dcmdump");
    VX_REQUIRE_PROGRAM("dcm2pnm");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.dcm"));
    const QImage image = structuredImage();
    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    const OutsideProgram dump(QStringLiteral("dcmdump"), {QStringLiteral("-Un"), strPath});
    QVERIFY2(dump.succeeded(), qPrintable(dump.report()));
    QCOMPARE(dumpedValue(dump.output(), "(0002,0002)"), QByteArray("[1.2.840.10008.5.1.4.1.1.7]"));
    QCOMPARE(dumpedValue(dump.output(), "(0008,0016)"), QByteArray("[1.2.840.10008.5.1.4.1.1.7]"));
    QCOMPARE(dumpedValue(dump.output(), "(0008,0060)"), QByteArray("[OT]"));
    QCOMPARE(dumpedValue(dump.output(), "(0008,0064)"), QByteArray("[WSD]"));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0002)"), QByteArray("3"));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0004)"), QByteArray("[RGB]"));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0006)"), QByteArray("0"));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0010)"), QByteArray::number(image.height()));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0011)"), QByteArray::number(image.width()));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0100)"), QByteArray("8"));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0101)"), QByteArray("8"));

    const QImage read = readByOutsidePrograms(strPath, image.size());
    QCOMPARE(read.size(), image.size());
    QCOMPARE(largestChannelDifference(read, image), 0);
}

void TestHostExporter::dicomPassesIodValidation()
{
    VX_REQUIRE_PROGRAM("dciodvfy");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.dcm"));
    QCOMPARE(save(structuredImage(), strPath), eSTATUS_SUCCESS);

    const OutsideProgram validation(QStringLiteral("dciodvfy"), {strPath});
    QVERIFY2(validation.finished(), qPrintable(validation.report()));
    QVERIFY2(validation.output().contains("SCImage"), qPrintable(validation.report()));
    QVERIFY2(!validation.output().contains("Error"), qPrintable(validation.report()));
}

void TestHostExporter::dicomGetsFreshUids()
{
    VX_REQUIRE_PROGRAM("dcmdump");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QVector<QByteArray> dumps;
    for (const QString& strName : {QStringLiteral("first.dcm"), QStringLiteral("second.dcm")}) {
        QCOMPARE(save(structuredImage(), dir.filePath(strName)), eSTATUS_SUCCESS);
        const OutsideProgram dump(QStringLiteral("dcmdump"), {dir.filePath(strName)});
        QVERIFY2(dump.succeeded(), qPrintable(dump.report()));
        dumps.append(dump.output());
    }
    // Study, series and SOP instance.
    for (const QByteArray& tag : {QByteArray("(0020,000d)"), QByteArray("(0020,000e)"), QByteArray("(0008,0018)")}) {
        const QByteArray first = dumpedValue(dumps.at(0), tag);
        QVERIFY2(first.size() > 2, tag.constData());
        QVERIFY2(first != dumpedValue(dumps.at(1), tag), tag.constData());
    }
    QCOMPARE(dumpedValue(dumps.at(0), "(0002,0003)"), dumpedValue(dumps.at(0), "(0008,0018)"));
}

void TestHostExporter::epsRenderedByGhostscript()
{
    VX_REQUIRE_PROGRAM("gs");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.eps"));
    const QImage image = structuredImage();
    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    const QByteArray eps = contentOf(strPath);
    QVERIFY(eps.startsWith("%!PS-Adobe-3.0 EPSF-3.0\n"));
    QVERIFY(eps.split('\n').contains("%%BoundingBox: 0 0 157 93"));
    QVERIFY(eps.endsWith("%%EOF\n"));

    const QImage read = readByOutsidePrograms(strPath, image.size());
    QCOMPARE(read.size(), image.size());
    QCOMPARE(largestChannelDifference(read, image), 0);
}

void TestHostExporter::metafileRenderedThroughSvg_data()
{
    addFormatRows({"emf", "wmf"});
}

void TestHostExporter::metafileRenderedThroughSvg()
{
    QFETCH(QString, suffix);
    const QStringList missing = ExportReadBack::missingPrograms(suffix);
    if (!missing.isEmpty())
        QSKIP(qPrintable(missing.join(QStringLiteral(", ")) + QStringLiteral(" not installed; scripts/install-deps.sh installs it")));
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.") + suffix);
    const QImage image = structuredImage();
    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    const QImage read = readByOutsidePrograms(strPath, image.size());
    QCOMPARE(read.size(), image.size());
    QCOMPARE(largestChannelDifference(read, image), 0);
}

void TestHostExporter::tiffReadByLibtiff()
{
    VX_REQUIRE_PROGRAM("tiffinfo");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.tif"));
    const QImage image = structuredImage();
    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    const OutsideProgram info(QStringLiteral("tiffinfo"), {strPath});
    QVERIFY2(info.succeeded(), qPrintable(info.report()));
    QVERIFY2(info.output().contains("Image Width: 157 Image Length: 93"), qPrintable(info.report()));
    QCOMPARE(readBack(strPath), image);
}

void TestHostExporter::tiffCompressionAndTags_data()
{
    QTest::addColumn<int>("compression"); // -1 leaves the exporter's default
    QTest::addColumn<int>("givenDpi");    // 0 keeps the image's own
    QTest::addColumn<int>("imageDpi");
    QTest::addColumn<QByteArray>("expectedLines");

    QTest::newRow("deflate by default, the image's resolution")
        << -1 << 0 << 150 << QByteArray("Compression Scheme: AdobeDeflate\nResolution: 150, 150 pixels/inch");
    QTest::newRow("lzw chosen")
        << int(CVXSImageExporter::TiffCompression::Lzw) << 0 << 96
        << QByteArray("Compression Scheme: LZW\nResolution: 96, 96 pixels/inch");
    QTest::newRow("deflate chosen, resolution given")
        << int(CVXSImageExporter::TiffCompression::Deflate) << 300 << 96
        << QByteArray("Compression Scheme: AdobeDeflate\nResolution: 300, 300 pixels/inch");
}

void TestHostExporter::tiffCompressionAndTags()
{
    VX_REQUIRE_PROGRAM("tiffinfo");
    QFETCH(int, compression);
    QFETCH(int, givenDpi);
    QFETCH(int, imageDpi);
    QFETCH(QByteArray, expectedLines);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QString strPath = dir.filePath(QStringLiteral("layout.tif"));
    QImage image = structuredImage();
    image.setDotsPerMeterX(qRound(imageDpi / 0.0254));
    image.setDotsPerMeterY(qRound(imageDpi / 0.0254));
    CVXSImageExporter exporter;
    QCOMPARE(exporter.tiffCompression(), CVXSImageExporter::TiffCompression::Deflate);
    if (compression >= 0)
        exporter.setTiffCompression(CVXSImageExporter::TiffCompression(compression));
    exporter.setResolution(givenDpi);
    QCOMPARE(exporter.resolution(), givenDpi);

    const QDate before = QDate::currentDate();
    QCOMPARE(exporter.saveImage(image, strPath), eSTATUS_SUCCESS);

    const QByteArray info = tiffinfo(strPath);
    for (const QByteArray& line : expectedLines.split('\n'))
        QVERIFY2(info.contains("  " + line + '\n'), (line + " in:\n" + info).constData());
    QVERIFY2(info.contains("  Predictor: horizontal differencing"), info.constData());
    QVERIFY2(info.contains("  Software: " + QCoreApplication::applicationName().toUtf8() + '\n'), info.constData());
    const QString strDays = QStringLiteral("(%1|%2)").arg(before.toString(QStringLiteral("yyyy:MM:dd")),
                                                        QDate::currentDate().toString(QStringLiteral("yyyy:MM:dd")));
    QVERIFY2(QRegularExpression(QStringLiteral("  DateTime: %1 \\d\\d:\\d\\d:\\d\\d\n").arg(strDays))
                 .match(QString::fromLatin1(info))
                 .hasMatch(),
             info.constData());
    // Lossless whatever the compression; the picture has no keys, so no description.
    QCOMPARE(readBack(strPath), image.convertToFormat(QImage::Format_RGB32));
    QVERIFY2(!info.contains("ImageDescription") && !info.contains("XMLPacket"), info.constData());
}

void TestHostExporter::tiffGreyStaysGrey()
{
    VX_REQUIRE_PROGRAM("tiffinfo");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("grey.tif"));
    QImage image(157, 93, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb((x + 3 * y) % 256, (x + 3 * y) % 256, (x + 3 * y) % 256));
    }

    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    const QByteArray info = tiffinfo(strPath);
    QVERIFY2(info.contains("  Samples/Pixel: 1\n") && info.contains("  Bits/Sample: 8\n")
                 && info.contains("  Photometric Interpretation: min-is-black\n"),
             info.constData());
    QCOMPARE(readBack(strPath), image);
}

void TestHostExporter::tiffKeepsAlpha()
{
    VX_REQUIRE_PROGRAM("tiffinfo");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("alpha.tif"));
    QImage image(64, 48, QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgba(x * 4, y * 5, 120, x % 2 ? 255 : y * 5));
    }

    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    const QByteArray info = tiffinfo(strPath);
    QVERIFY2(info.contains("  Samples/Pixel: 4\n") && info.contains("  Extra Samples: 1<unassoc-alpha>\n"),
             info.constData());
    // Readers premultiply unassociated alpha: the file reads as the one Qt's own TIFF writer made.
    const QString strQtPath = dir.filePath(QStringLiteral("qt.tif"));
    QVERIFY(QImageWriter(strQtPath, "tiff").write(image));
    const QImage read(strPath);
    QVERIFY(!read.isNull());
    QCOMPARE(read, QImage(strQtPath));
}

void TestHostExporter::tiffIsCompressed()
{
    // A page of flat areas, as layouts mostly are, takes a small part of its raw size.
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QImage page = pageImage(QSize(2000, 1500));
    const qint64 nRawBytes = qint64(page.width()) * page.height() * 3;
    for (const auto eCompression : {CVXSImageExporter::TiffCompression::Deflate, CVXSImageExporter::TiffCompression::Lzw}) {
        QImage image = page;
        QString strPath = dir.filePath(QStringLiteral("page%1.tif").arg(int(eCompression)));
        CVXSImageExporter exporter;
        exporter.setTiffCompression(eCompression);
        QCOMPARE(exporter.saveImage(image, strPath), eSTATUS_SUCCESS);

        const qint64 nBytes = QFileInfo(strPath).size();
        QVERIFY2(nBytes > 0 && nBytes < nRawBytes / 100, qPrintable(QString::number(nBytes)));
        QCOMPARE(readBack(strPath), page);
    }
}

void TestHostExporter::resolutionGiven_data()
{
    QTest::addColumn<QString>("fileName");
    for (const char* pName : {"page.bmp", "page.jpg", "page.png", "page.tif"})
        QTest::newRow(pName) << QString::fromLatin1(pName);
}

void TestHostExporter::resolutionGiven()
{
    QFETCH(QString, fileName);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QString strPath = dir.filePath(fileName);
    QImage image = gradientImage();
    CVXSImageExporter exporter;
    exporter.setResolution(300);

    QCOMPARE(exporter.saveImage(image, strPath), eSTATUS_SUCCESS);

    // 300 dpi is 11811 dots per metre; the caller's image keeps its own.
    const QImage read(strPath);
    QCOMPARE(read.dotsPerMeterX(), 11811);
    QCOMPARE(read.dotsPerMeterY(), 11811);
    QCOMPARE(image.dotsPerMeterX(), gradientImage().dotsPerMeterX());
}

void TestHostExporter::isWritableSuffix_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("writable");
    for (const char* pSuffix : {"bmp", "jpg", "jpeg", "png", "eps", "tif", "tiff", "wmf", "emf", "dcm", "DCM"})
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix) << true;
    for (const char* pSuffix : {"gif", "txt", "pdf", ""})
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix) << false;
}

void TestHostExporter::isWritableSuffix()
{
    QFETCH(QString, suffix);
    QFETCH(bool, writable);
    QCOMPARE(CVXSImageExporter::isWritableSuffix(suffix), writable);
}

void TestHostExporter::refusedImageWritesNothing_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<int>("expected");
    QTest::addColumn<QString>("reason");
    for (const char* pName : {"layout.gif", "layout.pdf", "layout.txt", "layout"}) {
        QTest::addRow("unsupported suffix: %s", pName)
            << gradientImage() << QString::fromLatin1(pName) << int(eSTATUS_UNSUPPORTED_FORMAT)
            << QStringLiteral("the file name does not end in the suffix of a format this program writes");
    }
    for (const char* pSuffix : kFormats)
        QTest::addRow("null image: %s", pSuffix) << QImage() << QStringLiteral("null.") + QLatin1String(pSuffix)
                                                 << int(eSTATUS_NULL_IMAGE)
                                                 << QStringLiteral("there is no image to write");
}

void TestHostExporter::refusedImageWritesNothing()
{
    QFETCH(QImage, image);
    QFETCH(QString, fileName);
    QFETCH(int, expected);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QFETCH(QString, reason);
    QString strError;
    QCOMPARE(int(save(image, dir.filePath(fileName), &strError)), expected);
    QCOMPARE(strError, QStringLiteral("Could not write %1: %2").arg(dir.filePath(fileName), reason));
    QCOMPARE(entriesOf(dir.path()), QStringList());
}

void TestHostExporter::invalidPath_data()
{
    QTest::addColumn<QString>("relativePath"); // inside a fresh temporary folder
    QTest::addColumn<int>("error");            // what the system says, by its errno
    QTest::newRow("empty path") << QString() << 0;
    QTest::newRow("missing folder") << QStringLiteral("missing/out.png") << ENOENT;
    QTest::newRow("folder named like an image") << QStringLiteral("folder.png") << EISDIR;
    QTest::newRow("file in place of a folder") << QStringLiteral("plain.txt/out.png") << ENOTDIR;
}

void TestHostExporter::invalidPath()
{
    QFETCH(QString, relativePath);
    QFETCH(int, error);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.png")));
    QVERIFY(writeFile(dir.filePath(QStringLiteral("plain.txt")), "some notes"));
    const QString strPath = relativePath.isEmpty() ? QString() : dir.filePath(relativePath);

    QString strError;
    QCOMPARE(save(gradientImage(), strPath, &strError), eSTATUS_INVALID_PATH);
    QCOMPARE(strError, error == 0 ? QStringLiteral("Could not write the image: no file name was given")
                                  : systemFailure(strPath, error));
    QCOMPARE(entriesOf(dir.path()), (QStringList{QStringLiteral("folder.png"), QStringLiteral("plain.txt")}));
    QVERIFY(QFileInfo(dir.filePath(QStringLiteral("folder.png"))).isDir());
}

void TestHostExporter::sizeLimits_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("expected");

    QTest::newRow("jpg at its limit") << QStringLiteral("wide.jpg") << QSize(65500, 1) << int(eSTATUS_SUCCESS);
    QTest::newRow("jpg too wide") << QStringLiteral("wide.jpg") << QSize(65501, 1) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("jpg too high") << QStringLiteral("high.jpeg") << QSize(1, 65501) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("png at its limit") << QStringLiteral("wide.png") << QSize(1000000, 1) << int(eSTATUS_SUCCESS);
    QTest::newRow("png too wide") << QStringLiteral("wide.png") << QSize(1000001, 1) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("bmp wider than jpg allows") << QStringLiteral("wide.bmp") << QSize(70000, 1) << int(eSTATUS_SUCCESS);
    QTest::newRow("wmf at its limit") << QStringLiteral("wide.wmf") << QSize(32767, 2) << int(eSTATUS_SUCCESS);
    QTest::newRow("wmf too wide") << QStringLiteral("wide.wmf") << QSize(32768, 1) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("wmf too high") << QStringLiteral("high.wmf") << QSize(1, 32768) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("dcm at its limit") << QStringLiteral("wide.dcm") << QSize(65535, 1) << int(eSTATUS_SUCCESS);
    QTest::newRow("dcm too wide") << QStringLiteral("wide.dcm") << QSize(65536, 1) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("dcm too high") << QStringLiteral("high.dcm") << QSize(1, 65536) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("emf wider than wmf allows") << QStringLiteral("wide.emf") << QSize(40000, 1) << int(eSTATUS_SUCCESS);
    QTest::newRow("eps wider than wmf allows") << QStringLiteral("wide.eps") << QSize(40000, 1) << int(eSTATUS_SUCCESS);
}

void TestHostExporter::sizeLimits()
{
    QFETCH(QString, fileName);
    QFETCH(QSize, size);
    QFETCH(int, expected);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QImage image = solidImage(size, Qt::darkCyan, QImage::Format_RGB32);

    QString strError;
    QCOMPARE(int(save(image, dir.filePath(fileName), &strError)), expected);
    const QStringList expectedEntries = expected == eSTATUS_SUCCESS ? QStringList{fileName} : QStringList();
    QCOMPARE(entriesOf(dir.path()), expectedEntries);
    const QString strFormat = QFileInfo(fileName).suffix().toUpper();
    QCOMPARE(strError, expected == eSTATUS_SUCCESS ? QString()
                                                   : QStringLiteral("Could not write %1: %2 x %3 pixels are more than a %4 file holds")
                                                         .arg(dir.filePath(fileName)).arg(size.width()).arg(size.height()).arg(strFormat));
}

void TestHostExporter::replacesExistingFileKeepingPermissions()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.png"));
    QVERIFY(writeFile(strPath, "old content"));
    QVERIFY(QFile::setPermissions(strPath, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));

    QCOMPARE(save(gradientImage(), strPath), eSTATUS_SUCCESS);

    QCOMPARE(readBack(strPath), gradientImage());
    struct stat status = {};
    QCOMPARE(::stat(QFile::encodeName(strPath).constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777, mode_t(0640));
    QCOMPARE(entriesOf(dir.path()), QStringList{QStringLiteral("layout.png")});
}

void TestHostExporter::failureLeavesExistingFile_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("expected");
    QTest::newRow("image too large for the format")
        << QStringLiteral("keep.jpg") << QSize(65501, 2) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("image too large for wmf")
        << QStringLiteral("keep.wmf") << QSize(32768, 2) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("image too large for dcm")
        << QStringLiteral("keep.dcm") << QSize(2, 65536) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("unsupported format") << QStringLiteral("keep.gif") << QSize(8, 8) << int(eSTATUS_UNSUPPORTED_FORMAT);
}

void TestHostExporter::failureLeavesExistingFile()
{
    QFETCH(QString, fileName);
    QFETCH(QSize, size);
    QFETCH(int, expected);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(fileName);
    const QByteArray original("the user's earlier export");
    QVERIFY(writeFile(strPath, original));
    const QImage image = solidImage(size, Qt::gray, QImage::Format_RGB32);

    QCOMPARE(int(save(image, strPath)), expected);

    QCOMPARE(contentOf(strPath), original);
    QCOMPARE(entriesOf(dir.path()), QStringList{fileName});
}

void TestHostExporter::failureWhileWritingLeavesExistingFile_data()
{
    addFormatRows();
}

void TestHostExporter::failureWhileWritingLeavesExistingFile()
{
    QFETCH(QString, suffix);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strName = QStringLiteral("keep.") + suffix;
    const QString strPath = dir.filePath(strName);
    const QByteArray original("the user's earlier export");
    QVERIFY(writeFile(strPath, original));

    // A file size limit makes the kernel refuse the write (EFBIG) half-way, even for root.
    tag_estatus status = eSTATUS_SUCCESS;
    QString strError;
    {
        rlimit previous = {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &previous), 0);
        const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
        const auto restore = qScopeGuard([&] {
            setrlimit(RLIMIT_FSIZE, &previous);
            std::signal(SIGXFSZ, previousHandler);
        });
        rlimit limited = previous;
        limited.rlim_cur = 4096;
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &limited), 0);
        // Noise compresses badly, so the encoded file is large.
        status = save(noiseImage(QSize(100, 100), 42), strPath, &strError);
    }

    QCOMPARE(status, eSTATUS_WRITE_FAILED);
    QCOMPARE(strError, systemFailure(strPath, EFBIG));
    QCOMPARE(contentOf(strPath), original);
    QCOMPARE(entriesOf(dir.path()), QStringList{strName});
}

void TestHostExporter::outOfMemoryLeavesExistingFile_data()
{
    QTest::addColumn<QString>("suffix");
    for (const char* pSuffix : {"eps", "wmf", "emf", "dcm"})
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix);
}

void TestHostExporter::outOfMemoryLeavesExistingFile()
{
    QFETCH(QString, suffix);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strName = QStringLiteral("keep.") + suffix;
    const QString strPath = dir.filePath(strName);
    const QByteArray original("the user's earlier export");
    QVERIFY(writeFile(strPath, original));
    const QImage image = noiseImage(QSize(1500, 1500), 42);

#ifdef __SANITIZE_ADDRESS__
    QSKIP("AddressSanitizer reserves its shadow memory up front: an address space limit cannot make "
          "single buffers fail under it");
#endif
    // An address space limit a little above what the process uses lets the writer's
    // large buffers fail, as they would on a machine without memory to spare.
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        QSKIP("This system has no /proc/self/statm to size the limit by");
    const rlim_t nUsedBytes = rlim_t(statm.readLine().split(' ').value(0).toULongLong()) * rlim_t(getpagesize());
    QVERIFY(nUsedBytes > 0);
    tag_estatus status = eSTATUS_SUCCESS;
    QString strError;
    {
        rlimit previous = {};
        QCOMPARE(getrlimit(RLIMIT_AS, &previous), 0);
        const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_AS, &previous); });
        rlimit limited = previous;
        limited.rlim_cur = nUsedBytes + 2 * 1024 * 1024;
        QCOMPARE(setrlimit(RLIMIT_AS, &limited), 0);
        status = save(image, strPath, &strError);
    }

    QCOMPARE(status, eSTATUS_OUT_OF_MEMORY);
    QCOMPARE(strError, systemFailure(strPath, ENOMEM));
    QCOMPARE(contentOf(strPath), original);
    QCOMPARE(entriesOf(dir.path()), QStringList{strName});
}

void TestHostExporter::writesThroughSymbolicLink()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strTarget = dir.filePath(QStringLiteral("target.png"));
    const QString strLink = dir.filePath(QStringLiteral("link.png"));
    QVERIFY(writeFile(strTarget, "old content"));
    QVERIFY(QFile::link(strTarget, strLink));

    QCOMPARE(save(gradientImage(), strLink), eSTATUS_SUCCESS);

    QVERIFY(QFileInfo(strLink).isSymLink());
    QCOMPARE(readBack(strTarget), gradientImage());
    QCOMPARE(entriesOf(dir.path()), (QStringList{QStringLiteral("link.png"), QStringLiteral("target.png")}));
}

void TestHostExporter::nonAsciiFileName()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strName = QStringLiteral("Aufnahme_äöü_画像.png");
    const QString strPath = dir.filePath(strName);

    QCOMPARE(save(gradientImage(), strPath), eSTATUS_SUCCESS);

    QCOMPARE(entriesOf(dir.path()), QStringList{strName});
    QCOMPARE(readBack(strPath), gradientImage());
}

void TestHostExporter::fullDevice_data()
{
    addFormatRows();
}

void TestHostExporter::fullDevice()
{
    QFETCH(QString, suffix);
    struct stat before = {};
    if (::stat("/dev/full", &before) != 0 || !S_ISCHR(before.st_mode))
        QSKIP("This system has no /dev/full device");
    // The suffix picks the format, so the device is reached through a link named like an image.
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strName = QStringLiteral("full.") + suffix;
    const QString strLink = dir.filePath(strName);
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), strLink));

    QString strError;
    QCOMPARE(save(gradientImage(), strLink, &strError), eSTATUS_DISK_FULL);
    QCOMPARE(strError, systemFailure(strLink, ENOSPC));
    QCOMPARE(save(gradientImage(), QStringLiteral("/dev/full")), eSTATUS_UNSUPPORTED_FORMAT);

    struct stat after = {};
    QCOMPARE(::stat("/dev/full", &after), 0);
    QVERIFY(S_ISCHR(after.st_mode));
    QCOMPARE(after.st_rdev, before.st_rdev);
    QVERIFY(QFileInfo(strLink).isSymLink());
    QCOMPARE(entriesOf(dir.path()), QStringList{strName});
}

void TestHostExporter::noPermission_data()
{
    addFormatRows();
}

void TestHostExporter::noPermission()
{
    QFETCH(QString, suffix);
    // sysfs refuses to create files (EACCES) even for root, unlike a chmod-ed folder.
    if (!QFileInfo(QStringLiteral("/sys/kernel")).isDir())
        QSKIP("This system has no sysfs under /sys");
    const QString strPath = QStringLiteral("/sys/vx_export_test.") + suffix;

    QString strError;
    QCOMPARE(save(gradientImage(), strPath, &strError), eSTATUS_NO_PERMISSION);
    QCOMPARE(strError, systemFailure(strPath, EACCES));
    QVERIFY(!QFileInfo::exists(strPath));
}

void TestHostExporter::saveDataNamesFileAndReason()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("missing/page.pdf"));
    CVXSImageExporter exporter;

    QCOMPARE(exporter.saveData("%PDF-1.4", strPath), eSTATUS_INVALID_PATH);

    QCOMPARE(exporter.errorText(), systemFailure(strPath, ENOENT));
    QCOMPARE(entriesOf(dir.path()), QStringList());
}

void TestHostExporter::successLeavesNoErrorText()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    CVXSImageExporter exporter;
    QImage image = gradientImage();
    QString strMissing = dir.filePath(QStringLiteral("missing/out.png"));
    QCOMPARE(exporter.saveImage(image, strMissing), eSTATUS_INVALID_PATH);
    QVERIFY(!exporter.errorText().isEmpty());

    QString strPath = dir.filePath(QStringLiteral("out.png"));
    QCOMPARE(exporter.saveImage(image, strPath), eSTATUS_SUCCESS);

    QCOMPARE(exporter.errorText(), QString());
}

QTEST_GUILESS_MAIN(TestHostExporter)
#include "tst_host_exporter.moc"
