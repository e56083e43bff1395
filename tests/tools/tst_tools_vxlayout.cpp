#include "OutsideProgram.h"
#include "TestDicomFiles.h"
#include "TestImageFiles.h"
#include "WidgetTestCase.h"

#include <VXImageFileReader.h>
#include <VXStatus.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

#include <dcmtk/dcmdata/dcdeftag.h>

#include <cerrno>
#include <unistd.h>

namespace {

constexpr int kAllowedMs = 60000;
const QSize kSourceSize(400, 300);
const QSize kDefaultPage(4004, 3204);

struct ToolRun
{
    int nExitCode = -1;
    QString strOut;
    QString strErr;
};

ToolRun runTool(const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VXLAYOUT_EXECUTABLE), arguments);
    ToolRun run;
    if (!process.waitForFinished(kAllowedMs) || process.exitStatus() != QProcess::NormalExit) {
        process.kill();
        process.waitForFinished();
        run.strErr = QStringLiteral("vxlayout did not finish normally");
        return run;
    }
    run.nExitCode = process.exitCode();
    run.strOut = QString::fromLocal8Bit(process.readAllStandardOutput());
    run.strErr = QString::fromLocal8Bit(process.readAllStandardError());
    return run;
}

ToolRun runTool(const QStringList& arguments)
{
    return runTool(arguments, QProcessEnvironment::systemEnvironment());
}

QImage solid(const QColor& colour)
{
    QImage image(kSourceSize, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

// The sizes of the images a PDF file holds, as pdfimages lists them: "400 x 300".
QStringList pdfImageSizes(const QString& strPdf)
{
    const OutsideProgram list(QStringLiteral("pdfimages"), {QStringLiteral("-list"), strPdf});
    QStringList sizes;
    // Two header lines, then: page, num, type, width, height, ...
    for (const QByteArray& line : list.output().split('\n').mid(2)) {
        const QList<QByteArray> columns = line.simplified().split(' ');
        if (columns.size() > 4)
            sizes << QString::fromLatin1(columns[3] + " x " + columns[4]);
    }
    return sizes;
}

// The root element's attributes of an SVG file and the sizes of the PNG images it embeds.
struct SvgContent
{
    QXmlStreamAttributes root;
    QStringList imageSizes;
};

SvgContent svgContent(const QString& strSvg)
{
    SvgContent content;
    QFile file(strSvg);
    if (!file.open(QIODevice::ReadOnly))
        return content;
    QXmlStreamReader xml(&file);
    static const QString strPngData = QStringLiteral("data:image/png;base64,");
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("svg"))
            content.root = xml.attributes();
        const QString strHref = xml.attributes().value(QStringLiteral("xlink:href")).toString();
        if (xml.name() == QLatin1String("image") && strHref.startsWith(strPngData)) {
            const QImage image = QImage::fromData(QByteArray::fromBase64(strHref.mid(strPngData.size()).toLatin1()), "png");
            content.imageSizes << QStringLiteral("%1 x %2").arg(image.width()).arg(image.height());
        }
    }
    return content;
}

// "353.131mm" in points; 0 for a length in other units.
double millimetresInPoints(const QStringRef& length)
{
    return length.endsWith(QLatin1String("mm")) ? length.chopped(2).toDouble() * 72 / 25.4 : 0;
}

// The two lines vxlayout prints when the exporter fails: the status's text, then the file
// and the system's reason for the call that failed.
QString writeFailure(const QString& strPage, int nStatus, int nError)
{
    return QStringLiteral("vxlayout: Cannot write \"%1\": %2\nvxlayout: Could not write %1: %3\n")
        .arg(strPage, vxStatusText(tag_estatus(nStatus)), qt_error_string(nError));
}

// Dots per inch from what exiftool reads in a file: "X Y" for its two axes.
QString resolutionOf(const QString& strPath)
{
    const OutsideProgram exif(QStringLiteral("exiftool"),
                              {QStringLiteral("-n"), QStringLiteral("-S"), QStringLiteral("-XResolution"),
                               QStringLiteral("-YResolution"), QStringLiteral("-ResolutionUnit"),
                               QStringLiteral("-PixelsPerUnitX"), QStringLiteral("-PixelsPerUnitY"),
                               QStringLiteral("-PixelUnits"), QStringLiteral("-PixelsPerMeterX"),
                               QStringLiteral("-PixelsPerMeterY"), strPath});
    QMap<QString, double> tags;
    for (const QByteArray& line : exif.output().split('\n')) {
        const int nColon = line.indexOf(':');
        if (nColon > 0)
            tags[QString::fromLatin1(line.left(nColon))] = line.mid(nColon + 1).trimmed().toDouble();
    }
    // ResolutionUnit 2 is inches, 3 centimetres; PNG's pixel unit 1 and BMP count per metre.
    double dX = tags.value(QStringLiteral("XResolution"));
    double dY = tags.value(QStringLiteral("YResolution"));
    if (tags.value(QStringLiteral("ResolutionUnit")) == 3) {
        dX *= 2.54;
        dY *= 2.54;
    }
    if (tags.contains(QStringLiteral("PixelsPerUnitX")) && tags.value(QStringLiteral("PixelUnits")) == 1) {
        dX = tags.value(QStringLiteral("PixelsPerUnitX")) * 0.0254;
        dY = tags.value(QStringLiteral("PixelsPerUnitY")) * 0.0254;
    }
    if (tags.contains(QStringLiteral("PixelsPerMeterX"))) {
        dX = tags.value(QStringLiteral("PixelsPerMeterX")) * 0.0254;
        dY = tags.value(QStringLiteral("PixelsPerMeterY")) * 0.0254;
    }
    // Per metre the counts are whole numbers: 300 dpi is 11811 per metre, 299.9994 dpi.
    return QStringLiteral("%1 %2").arg(qRound(dX)).arg(qRound(dY));
}

// The resolution a PDF page is described at: its content starts by scaling the writer's
// dots to points, 72 / dpi, which qpdf shows once it has uncompressed the page.
int pdfResolutionOf(const QString& strPdf)
{
    const QString strPlain = strPdf + QStringLiteral(".qdf");
    const OutsideProgram qpdf(QStringLiteral("qpdf"), {QStringLiteral("--qdf"), QStringLiteral("--object-streams=disable"), strPdf, strPlain});
    QFile plain(strPlain);
    if (!qpdf.succeeded() || !plain.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : plain.readAll().split('\n')) {
        const QList<QByteArray> operands = line.split(' ');
        if (operands.size() == 7 && operands.last() == "cm")
            return qRound(72 / operands.first().toDouble());
    }
    return 0;
}

// "2008 x 1607": the pixels of a raster file as exiftool reads them.
QString pixelSizeOf(const QString& strPath)
{
    const OutsideProgram exif(QStringLiteral("exiftool"),
                              {QStringLiteral("-n"), QStringLiteral("-s3"), QStringLiteral("-ImageWidth"),
                               QStringLiteral("-ImageHeight"), strPath});
    return QString::fromLatin1(exif.output().simplified()).replace(QLatin1Char(' '), QStringLiteral(" x "));
}

// The width of a figure in pixels: round(width / 25.4 x dpi); the height in proportion to the
// default page of 1001 x 801 layout units.
QString figurePixels(double dWidthMm, int nDpi)
{
    const int nWidth = qRound(dWidthMm / 25.4 * nDpi);
    return QStringLiteral("%1 x %2").arg(nWidth).arg(qRound(nWidth * 801.0 / 1001.0));
}

// The page pixel at a point given in percent of the page.
QColor pageColourAt(const QImage& page, double xPercent, double yPercent)
{
    return page.pixelColor(int(page.width() * xPercent / 100), int(page.height() * yPercent / 100));
}

} // namespace

// Runs the vxlayout program as a user would, on real files, and reads back what it wrote.
class TestToolsVxLayout : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void fillsTheCellsInOrder();
    void writesThePageSizeGiven_data();
    void writesThePageSizeGiven();
    void freeStylePlacesAsAPaste();
    void rasterFilesKeepTheirPixels_data();
    void rasterFilesKeepTheirPixels();
    void writesVectorPages_data();
    void writesVectorPages();
    void writesTheResolutionGiven_data();
    void writesTheResolutionGiven();
    void writesCompressedTiff();
    void writesRasterFiguresAtTheirWidth_data();
    void writesRasterFiguresAtTheirWidth();
    void writesCompressedTiffFigure();
    void writesVectorFiguresAtTheirWidth_data();
    void writesVectorFiguresAtTheirWidth();
    void describesThePdfAtTheResolutionGiven_data();
    void describesThePdfAtTheResolutionGiven();
    void explainsItself();
    void runsWithoutAPlatformChosen();
    void refusesBadInput_data();
    void refusesBadInput();
    void damagedImageGivesOurMessageOnly_data();
    void damagedImageGivesOurMessageOnly();
    void debugMessagesShowWhenAskedFor_data();
    void debugMessagesShowWhenAskedFor();
    void refusesUnwritableOutput_data();
    void refusesUnwritableOutput();
    void refusesUnwritableFigure_data();
    void refusesUnwritableFigure();
    void refusesUnwritableVectorPage_data();
    void refusesUnwritableVectorPage();
    void printsProvenanceAndWritesMethods();

private:
    QString input(const QString& strName) const;
    QString output(const QString& strName) const;
    // The colours of the four inputs in cell order.
    QStringList fourInputs() const;
    void verifyNothingWritten(const QString& strOutput) const;

    QTemporaryDir m_dir;
};

void TestToolsVxLayout::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
    QVERIFY(QDir(m_dir.path()).mkpath(QStringLiteral("in")));
    QVERIFY(solid(Qt::red).save(input("red.png")));
    QVERIFY(solid(Qt::green).save(input("green.tif")));
    QVERIFY(solid(Qt::blue).save(input("blue.png")));
    QVERIFY(solid(Qt::yellow).save(input("yellow.bmp")));
    QVERIFY(CTestImageFiles::writeTruncatedCopy(input("red.png"), input("truncated.png")));
    QVERIFY(CTestImageFiles::writeBytes(input("notes.png"), "These are notes, not an image.\n"));
    QVERIFY(CTestImageFiles::writeBytes(input("afile"), "a file, not a folder"));
}

void TestToolsVxLayout::init()
{
    // Every test writes into a fresh, empty output folder.
    QDir out(output(QString()));
    QVERIFY(out.removeRecursively());
    QVERIFY(out.mkpath(QStringLiteral(".")));
}

QString TestToolsVxLayout::input(const QString& strName) const
{
    return m_dir.filePath(QStringLiteral("in/") + strName);
}

QString TestToolsVxLayout::output(const QString& strName) const
{
    return m_dir.filePath(QStringLiteral("out/") + strName);
}

QStringList TestToolsVxLayout::fourInputs() const
{
    return {input("red.png"), input("green.tif"), input("blue.png"), input("yellow.bmp")};
}

void TestToolsVxLayout::verifyNothingWritten(const QString& strOutput) const
{
    QVERIFY2(!QFileInfo::exists(strOutput), qPrintable(strOutput));
    const QStringList left = QDir(output(QString())).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    QVERIFY2(left.isEmpty(), qPrintable(left.join(QStringLiteral(", "))));
}

void TestToolsVxLayout::fillsTheCellsInOrder()
{
    const QString strFigure = output("figure.png");
    const ToolRun run = runTool(QStringList {"--layout", "Layout 2x2", "--export", strFigure} + fourInputs());
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    QCOMPARE(run.strOut, QStringLiteral("Wrote %1 (4004 x 3204 pixels)\n").arg(strFigure));

    const QImage page(strFigure, "png");
    QCOMPARE(page.size(), kDefaultPage);
    // Cells row by row: top-left, top-right, bottom-left, bottom-right.
    QCOMPARE(pageColourAt(page, 25, 25), QColor(Qt::red));
    QCOMPARE(pageColourAt(page, 75, 25), QColor(Qt::green));
    QCOMPARE(pageColourAt(page, 25, 75), QColor(Qt::blue));
    QCOMPARE(pageColourAt(page, 75, 75), QColor(Qt::yellow));
    // Between the cells the page is white; its top and left edges carry the black line.
    QCOMPARE(pageColourAt(page, 50, 50), QColor(Qt::white));
    QCOMPARE(page.pixelColor(0, 1000), QColor(Qt::black));
    QCOMPARE(page.pixelColor(1000, 0), QColor(Qt::black));
    // The only file in the folder is the page.
    QCOMPARE(QDir(output(QString())).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList {"figure.png"});
}

void TestToolsVxLayout::writesThePageSizeGiven_data()
{
    QTest::addColumn<QString>("size");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<QSize>("pixels");
    QTest::newRow("default size") << QString() << "page.png" << QByteArray("png") << kDefaultPage;
    QTest::newRow("500x400") << "500x400" << "page.png" << QByteArray("png") << QSize(2004, 1604);
    QTest::newRow("wide") << "1200X300" << "page.bmp" << QByteArray("bmp") << QSize(4804, 1204);
    // The suffix chooses the format in any case, and the name is kept as typed.
    QTest::newRow("TIFF in capitals") << "300x200" << "PAGE.TIFF" << QByteArray("tiff") << QSize(1204, 804);
}

void TestToolsVxLayout::writesThePageSizeGiven()
{
    QFETCH(QString, size);
    QFETCH(QString, fileName);
    QFETCH(QByteArray, format);
    QFETCH(QSize, pixels);
    const QString strPage = output(fileName);
    QStringList arguments {"--layout", "Layout 1x1", "--export", strPage, input("blue.png")};
    if (!size.isEmpty())
        arguments << "--size" << size;
    const ToolRun run = runTool(arguments);
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    QVERIFY2(run.strOut.startsWith(QStringLiteral("Wrote %1 ").arg(strPage)), qPrintable(run.strOut));
    const QImage page(strPage, format.constData());
    QCOMPARE(page.size(), pixels);
    QCOMPARE(pageColourAt(page, 50, 50), QColor(Qt::blue));
}

void TestToolsVxLayout::freeStylePlacesAsAPaste()
{
    // A 1004 x 804 view: the free area starts at (251, 201) and is 753 x 603; a 400 x 300
    // image is fitted to half of it, 376 x 282, at (251, 210).
    const QString strPage = output("free.png");
    const ToolRun run = runTool({"--layout", "Free style", "--export", strPage, input("red.png"), input("blue.png")});
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    const QImage page(strPage, "png");
    QCOMPARE(page.size(), kDefaultPage);
    // Both land on the same place; the later one lies on top.
    QCOMPARE(page.pixelColor(4 * (251 + 188), 4 * (210 + 141)), QColor(Qt::blue));
    QCOMPARE(page.pixelColor(4 * (251 + 3), 4 * (210 + 3)), QColor(Qt::blue));
    QCOMPARE(page.pixelColor(4 * (251 + 376 - 3), 4 * (210 + 282 - 3)), QColor(Qt::blue));
    // Outside it the page is empty.
    QCOMPARE(page.pixelColor(4 * 240, 4 * 300), QColor(Qt::white));
    QCOMPARE(page.pixelColor(4 * 700, 4 * 300), QColor(Qt::white));
    QCOMPARE(page.pixelColor(4 * 400, 4 * 600), QColor(Qt::white));
}

void TestToolsVxLayout::rasterFilesKeepTheirPixels_data()
{
    QTest::addColumn<QString>("fileName");
    for (const char* pName : {"small.bmp", "small.jpg", "small.png", "small.tif"})
        QTest::newRow(pName) << QString::fromLatin1(pName);
}

// The files written before vector pages, resolution and provenance came, pixel for pixel.
// VX_WRITE_REFERENCES=<folder> writes this build's files there instead.
void TestToolsVxLayout::rasterFilesKeepTheirPixels()
{
    QFETCH(QString, fileName);
    const QString strWriteTo = qEnvironmentVariable("VX_WRITE_REFERENCES");
    const QString strPage = strWriteTo.isEmpty() ? output(fileName) : QDir(strWriteTo).filePath(fileName);
    const ToolRun run = runTool(QStringList {"--layout", "Layout 2x2", "--size", "40x30", "--export", strPage} + fourInputs());
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    if (!strWriteTo.isEmpty())
        QSKIP("reference written");
    // Pixels and resolution, not bytes: the files now carry their provenance as text.
    const QImage written(strPage);
    const QImage reference(QStringLiteral(VX_TOOLS_TEST_DATA "/") + fileName);
    QVERIFY(!written.isNull());
    QVERIFY2(!reference.isNull(), qPrintable(fileName));
    QCOMPARE(written.convertToFormat(QImage::Format_RGB32), reference.convertToFormat(QImage::Format_RGB32));
    QCOMPARE(written.dotsPerMeterX(), reference.dotsPerMeterX());
    QCOMPARE(written.dotsPerMeterY(), reference.dotsPerMeterY());
}

void TestToolsVxLayout::writesVectorPages_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::newRow("pdf") << "figure.pdf";
    QTest::newRow("svg") << "figure.svg";
    QTest::newRow("PDF in capitals") << "FIGURE.PDF";
}

void TestToolsVxLayout::writesVectorPages()
{
    QFETCH(QString, fileName);
    VX_REQUIRE_PROGRAM("pdfinfo");
    VX_REQUIRE_PROGRAM("pdfimages");
    const QString strFigure = output(fileName);
    const ToolRun run = runTool(QStringList {"--layout", "Layout 2x2", "--export", strFigure} + fourInputs());
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    QCOMPARE(run.strOut, QStringLiteral("Wrote %1 (1001 x 801 points)\n").arg(strFigure));
    QCOMPARE(QDir(output(QString())).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList {fileName});

    // One point per layout unit; each 400 x 300 source goes in with all its pixels, although
    // its cell on the page is smaller.
    const QStringList sources {"400 x 300", "400 x 300", "400 x 300", "400 x 300"};
    if (fileName.endsWith(QLatin1String("svg"))) {
        const SvgContent svg = svgContent(strFigure);
        QCOMPARE(svg.root.value(QStringLiteral("viewBox")).toString(), QStringLiteral("0 0 4004 3204"));
        // 1001 x 801 points, in millimetres.
        const QString strSize = svg.root.value(QStringLiteral("width")) + QLatin1Char(' ') + svg.root.value(QStringLiteral("height"));
        QVERIFY2(qAbs(millimetresInPoints(svg.root.value(QStringLiteral("width"))) - 1001) < 0.05, qPrintable(strSize));
        QVERIFY2(qAbs(millimetresInPoints(svg.root.value(QStringLiteral("height"))) - 801) < 0.05, qPrintable(strSize));
        QCOMPARE(svg.imageSizes, sources);
        return;
    }
    const OutsideProgram info(QStringLiteral("pdfinfo"), {strFigure});
    QVERIFY2(info.succeeded(), qPrintable(info.report()));
    QVERIFY2(info.output().contains("Page size:       1001 x 801 pts\n"), qPrintable(info.report()));
    QVERIFY2(info.output().contains("Title:           FIGURE\n") || info.output().contains("Title:           figure\n"),
             qPrintable(info.report()));
    QCOMPARE(pdfImageSizes(strFigure), sources);
}

void TestToolsVxLayout::writesTheResolutionGiven_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("dpi");
    for (const char* pName : {"small.bmp", "small.jpg", "small.png", "small.tif"})
        QTest::addRow("%s 300", pName) << QString::fromLatin1(pName) << "300";
    QTest::newRow("lowest") << "small.png" << "72";
    QTest::newRow("highest") << "small.tif" << "2400";
}

void TestToolsVxLayout::writesTheResolutionGiven()
{
    QFETCH(QString, fileName);
    QFETCH(QString, dpi);
    VX_REQUIRE_PROGRAM("exiftool");
    const QString strPage = output(fileName);
    const ToolRun run = runTool(QStringList {"--layout", "Layout 2x2", "--size", "40x30", "--dpi", dpi, "--export", strPage}
                                + fourInputs());
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));

    QCOMPARE(resolutionOf(strPage), dpi + QLatin1Char(' ') + dpi);
    // The same page without --dpi keeps what it always carried; the pixels are the same.
    const QString strPlain = QStringLiteral(VX_TOOLS_TEST_DATA "/") + fileName;
    QVERIFY(resolutionOf(strPlain) != resolutionOf(strPage));
    QCOMPARE(QImage(strPage).convertToFormat(QImage::Format_RGB32), QImage(strPlain).convertToFormat(QImage::Format_RGB32));
}

void TestToolsVxLayout::writesCompressedTiff()
{
    VX_REQUIRE_PROGRAM("tiffinfo");
    const QString strPage = output("page.tif");
    const ToolRun run = runTool(QStringList {"--layout", "Layout 2x2", "--dpi", "300", "--export", strPage} + fourInputs());
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));

    const OutsideProgram info(QStringLiteral("tiffinfo"), {strPage});
    QVERIFY2(info.succeeded(), qPrintable(info.report()));
    QVERIFY2(info.output().contains("  Compression Scheme: AdobeDeflate\n"), qPrintable(info.report()));
    QVERIFY2(info.output().contains("  Resolution: 300, 300 pixels/inch\n"), qPrintable(info.report()));
    // The page's raw pixels, three bytes each, would take more than a hundred times as much.
    const qint64 nRawBytes = qint64(kDefaultPage.width()) * kDefaultPage.height() * 3;
    QVERIFY2(QFileInfo(strPage).size() < nRawBytes / 100, qPrintable(QString::number(QFileInfo(strPage).size())));
    QCOMPARE(QImage(strPage).size(), kDefaultPage);
}

void TestToolsVxLayout::writesRasterFiguresAtTheirWidth_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("widthMm");
    QTest::addColumn<int>("dpi");
    QTest::addColumn<QStringList>("dpiArguments");
    QTest::newRow("png, one column at 600 dpi") << "figure.png" << "85" << 600 << QStringList {"--dpi", "600"};
    QTest::newRow("png, two columns at 300 dpi") << "figure.png" << "174" << 300 << QStringList {"--dpi", "300"};
    QTest::newRow("tif, one and a half columns at 1200 dpi") << "figure.tif" << "114" << 1200 << QStringList {"--dpi", "1200"};
    QTest::newRow("bmp, without --dpi at 300 dpi") << "figure.bmp" << "85" << 300 << QStringList();
    QTest::newRow("jpg, A4 width at 72 dpi") << "figure.jpg" << "210" << 72 << QStringList {"--dpi", "72"};
    QTest::newRow("png, a width in tenths") << "figure.png" << "60.5" << 600 << QStringList {"--dpi", "600"};
}

void TestToolsVxLayout::writesRasterFiguresAtTheirWidth()
{
    QFETCH(QString, fileName);
    QFETCH(QString, widthMm);
    QFETCH(int, dpi);
    QFETCH(QStringList, dpiArguments);
    VX_REQUIRE_PROGRAM("exiftool");
    VX_REQUIRE_PROGRAM("pngcheck");
    const QString strFigure = output(fileName);
    const ToolRun run = runTool(QStringList {"--layout", "Layout 2x2", "--width-mm", widthMm, "--export", strFigure}
                                + dpiArguments + fourInputs());
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    const QString strPixels = figurePixels(widthMm.toDouble(), dpi);
    QCOMPARE(run.strOut, QStringLiteral("Wrote %1 (%2 pixels, %3 mm wide at %4 dpi)\n").arg(strFigure, strPixels, widthMm).arg(dpi));

    QCOMPARE(pixelSizeOf(strFigure), strPixels);
    QCOMPARE(resolutionOf(strFigure), QStringLiteral("%1 %1").arg(dpi));
    if (fileName.endsWith(QLatin1String(".png"))) {
        // The resolution chunk itself, as a PNG checker reads it.
        const OutsideProgram check(QStringLiteral("pngcheck"), {QStringLiteral("-v"), strFigure});
        QVERIFY2(check.succeeded(), qPrintable(check.report()));
        const QByteArray perMetre = QByteArray::number(qRound(dpi / 0.0254));
        QVERIFY2(check.output().contains(": " + perMetre + "x" + perMetre + " pixels/meter"), qPrintable(check.report()));
    }
}

void TestToolsVxLayout::writesCompressedTiffFigure()
{
    VX_REQUIRE_PROGRAM("tiffinfo");
    const QString strFigure = output("f.tif");
    const ToolRun run = runTool(QStringList {"--layout", "Layout 2x2", "--width-mm", "85", "--dpi", "600", "--export", strFigure}
                                + fourInputs());
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));

    const OutsideProgram info(QStringLiteral("tiffinfo"), {strFigure});
    QVERIFY2(info.succeeded(), qPrintable(info.report()));
    // 85 mm at 600 dpi: 85 / 25.4 x 600 = 2007.9 pixels.
    QVERIFY2(info.output().contains("  Image Width: 2008 Image Length: 1607\n"), qPrintable(info.report()));
    QVERIFY2(info.output().contains("  Resolution: 600, 600 pixels/inch\n"), qPrintable(info.report()));
    QVERIFY2(info.output().contains("  Compression Scheme: AdobeDeflate\n"), qPrintable(info.report()));
    const qint64 nRawBytes = qint64(2008) * 1607 * 3;
    QVERIFY2(QFileInfo(strFigure).size() < nRawBytes / 20, qPrintable(QString::number(QFileInfo(strFigure).size())));
}

void TestToolsVxLayout::writesVectorFiguresAtTheirWidth_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("widthMm");
    QTest::newRow("pdf, one column") << "figure.pdf" << "85";
    QTest::newRow("pdf, two columns") << "figure.pdf" << "174";
    QTest::newRow("svg, one column") << "figure.svg" << "85";
    QTest::newRow("svg, A4 width") << "figure.svg" << "210";
}

void TestToolsVxLayout::writesVectorFiguresAtTheirWidth()
{
    QFETCH(QString, fileName);
    QFETCH(QString, widthMm);
    VX_REQUIRE_PROGRAM("pdfinfo");
    VX_REQUIRE_PROGRAM("pdfimages");
    const QString strFigure = output(fileName);
    const ToolRun run = runTool(QStringList {"--layout", "Layout 2x2", "--width-mm", widthMm, "--dpi", "600", "--export", strFigure}
                                + fourInputs());
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    // 85 mm are 240.94 points; the height keeps the page's 1001 : 801.
    const double dWidth = widthMm.toDouble() * 72 / 25.4;
    const double dHeight = dWidth * 801 / 1001;
    QVERIFY2(run.strOut.contains(QStringLiteral("(%1 x %2 points, %3 mm wide)").arg(dWidth, 0, 'f', 2).arg(dHeight, 0, 'f', 2).arg(widthMm)),
             qPrintable(run.strOut));
    const QStringList sources {"400 x 300", "400 x 300", "400 x 300", "400 x 300"};
    if (fileName.endsWith(QLatin1String("svg"))) {
        const SvgContent svg = svgContent(strFigure);
        QCOMPARE(svg.root.value(QStringLiteral("width")).toString(), widthMm + QStringLiteral("mm"));
        QVERIFY2(qAbs(millimetresInPoints(svg.root.value(QStringLiteral("height"))) - dHeight) < 0.01,
                 qPrintable(svg.root.value(QStringLiteral("height")).toString()));
        QCOMPARE(svg.root.value(QStringLiteral("viewBox")).toString(), QStringLiteral("0 0 4004 3204"));
        QCOMPARE(svg.imageSizes, sources);
        return;
    }
    const OutsideProgram info(QStringLiteral("pdfinfo"), {strFigure});
    QVERIFY2(info.succeeded(), qPrintable(info.report()));
    static const QRegularExpression pageSize(QStringLiteral("Page size: +([0-9.]+) x ([0-9.]+) pts"));
    const QRegularExpressionMatch match = pageSize.match(QString::fromLatin1(info.output()));
    QVERIFY2(match.hasMatch(), qPrintable(info.report()));
    QVERIFY2(qAbs(match.captured(1).toDouble() - dWidth) < 0.01, qPrintable(info.report()));
    QVERIFY2(qAbs(match.captured(2).toDouble() - dHeight) < 0.01, qPrintable(info.report()));
    QCOMPARE(pdfImageSizes(strFigure), sources);
    QCOMPARE(pdfResolutionOf(strFigure), 600);
}

void TestToolsVxLayout::describesThePdfAtTheResolutionGiven_data()
{
    QTest::addColumn<QString>("dpi");
    QTest::addColumn<QString>("expected");
    QTest::newRow("lowest") << "72" << "72 72";
    QTest::newRow("300") << "300" << "300 300";
    QTest::newRow("highest") << "2400" << "2400 2400";
    // Without --dpi, the resolution raster files carry.
    QTest::newRow("none") << QString() << resolutionOf(QStringLiteral(VX_TOOLS_TEST_DATA "/small.png"));
}

void TestToolsVxLayout::describesThePdfAtTheResolutionGiven()
{
    QFETCH(QString, dpi);
    QFETCH(QString, expected);
    VX_REQUIRE_PROGRAM("qpdf");
    VX_REQUIRE_PROGRAM("pdfinfo");
    VX_REQUIRE_PROGRAM("pdfimages");
    VX_REQUIRE_PROGRAM("exiftool");
    const QString strPdf = output("page.pdf");
    QStringList arguments {"--layout", "Layout 2x2", "--size", "100x80", "--export", strPdf};
    if (!dpi.isEmpty())
        arguments << "--dpi" << dpi;
    QVERIFY(runTool(arguments + fourInputs()).nExitCode == 0);

    const int nDpi = pdfResolutionOf(strPdf);
    QCOMPARE(QStringLiteral("%1 %1").arg(nDpi), expected);
    // The resolution changes neither the page's size nor the images in it.
    const OutsideProgram info(QStringLiteral("pdfinfo"), {strPdf});
    QVERIFY2(info.output().contains("Page size:       101 x 81 pts\n"), qPrintable(info.report()));
    const QStringList sources {"400 x 300", "400 x 300", "400 x 300", "400 x 300"};
    QCOMPARE(pdfImageSizes(strPdf), sources);
}

void TestToolsVxLayout::explainsItself()
{
    const ToolRun run = runTool({"--help"});
    QCOMPARE(run.nExitCode, 0);
    for (const char* pText : {"--layout <style>", "--size <WIDTHxHEIGHT>", "--export <file>", "--dpi <N>",
                              "\"Free style\"", "\"Layout 4x4\"", "4004 x 3204", "tiff", "pdf, svg",
                              "1001 x 801 points", "--width-mm <N>", "--width-mm 85 --dpi 600"})
        QVERIFY2(run.strOut.contains(QLatin1String(pText)), pText);
}

void TestToolsVxLayout::runsWithoutAPlatformChosen()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    const QString strPage = output("page.jpg");
    const ToolRun run = runTool({"--layout", "Layout 2x1", "--export", strPage, input("red.png")}, environment);
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    QCOMPARE(QImage(strPage).size(), kDefaultPage);
}

void TestToolsVxLayout::refusesBadInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("messages");

    const QString strPage = output("page.png");
    const QStringList page {"--export", strPage};
    const QStringList styles {"\"Free style\"", "\"Layout 1x1\"", "\"Layout 2x1\"", "\"Layout 2x2\"",
                              "\"Layout 3x2\"", "\"Layout 3x3\"", "\"Layout 4x2\"", "\"Layout 4x3\"",
                              "\"Layout 4x4\""};
    QTest::newRow("unknown style") << QStringList {"--layout", "Layout 5x5"} + page + QStringList {input("red.png")}
                                   << QStringList {"Unknown layout style \"Layout 5x5\"", styles.join(", ")};
    QTest::newRow("style in other case")
        << QStringList {"--layout", "layout 2x2"} + page + QStringList {input("red.png")}
        << QStringList {"Unknown layout style \"layout 2x2\""};
    QTest::newRow("no style") << page + QStringList {input("red.png")} << QStringList {"No layout style given"};
    QTest::newRow("more files than cells")
        << QStringList {"--layout", "Layout 2x2"} + page + fourInputs() + QStringList {input("red.png")}
        << QStringList {"5 image files given, but \"Layout 2x2\" has 4 cells only."};
    QTest::newRow("no inputs") << QStringList {"--layout", "Layout 2x2"} + page
                               << QStringList {"No image files given."};
    QTest::newRow("no output") << QStringList {"--layout", "Layout 2x2", input("red.png")}
                               << QStringList {"No output file given"};
    QTest::newRow("output of unknown type")
        << QStringList {"--layout", "Layout 2x2", "--export", output("page.txt"), input("red.png")}
        << QStringList {QStringLiteral("Cannot export to \"%1\"").arg(output("page.txt")), ".png", ".tiff"};
    QTest::newRow("output without suffix")
        << QStringList {"--layout", "Layout 2x2", "--export", output("page"), input("red.png")}
        << QStringList {QStringLiteral("Cannot export to \"%1\"").arg(output("page"))};
    const QString strLongName = output(QString(182, QLatin1Char('n')) + QStringLiteral(".png"));
    QTest::newRow("output name too long")
        << QStringList {"--layout", "Layout 2x2", "--export", strLongName, input("red.png")}
        << QStringList {"longer than 185 characters"};
    for (const char* pSize : {"10x", "0x100", "100x0", "abc", "9000x10", "-5x10", "100x100x3"})
        QTest::addRow("bad size %s", pSize)
            << QStringList {"--layout", "Layout 2x2", "--size", pSize} + page + QStringList {input("red.png")}
            << QStringList {QStringLiteral("Bad --size \"%1\"").arg(QLatin1String(pSize)), "1000x800"};
    for (const char* pDpi : {"71", "2401", "abc", "300.5", "-300", ""})
        QTest::addRow("bad dpi \"%s\"", pDpi)
            << QStringList {"--layout", "Layout 2x2", "--dpi", pDpi} + page + QStringList {input("red.png")}
            << QStringList {QStringLiteral("Bad --dpi \"%1\"").arg(QLatin1String(pDpi)), "72 to 2400"};
    for (const char* pWidth : {"0", "2001", "abc", "-85", "85mm", ""})
        QTest::addRow("bad figure width \"%s\"", pWidth)
            << QStringList {"--layout", "Layout 2x2", "--width-mm", pWidth, "--dpi", "300"} + page + QStringList {input("red.png")}
            << QStringList {QStringLiteral("Bad --width-mm \"%1\"").arg(QLatin1String(pWidth)), "from 1 to 2000"};
    for (const char* pDpi : {"50", "2401"})
        QTest::addRow("figure width with bad dpi %s", pDpi)
            << QStringList {"--layout", "Layout 2x2", "--width-mm", "85", "--dpi", pDpi} + page + QStringList {input("red.png")}
            << QStringList {QStringLiteral("Bad --dpi \"%1\"").arg(QLatin1String(pDpi)), "72 to 2400"};
    for (const char* pName : {"page.svg", "page.eps", "page.dcm"})
        QTest::addRow("dpi for %s", pName)
            << QStringList {"--layout", "Layout 2x2", "--dpi", "300", "--export", output(pName), input("red.png")}
            << QStringList {QStringLiteral("--dpi applies to .bmp, .jpg, .png, .tif and .pdf files; \"%1\"").arg(QLatin1String(pName))};
    QTest::newRow("unknown option") << QStringList {"--layout", "Layout 2x2", "--colour", "red"} + page
                                    << QStringList {"Unknown option 'colour'", "--help"};

    // Unreadable inputs are named with the reader's own reason, and every one is named.
    for (const char* pName : {"missing.png", "truncated.png", "notes.png"}) {
        QString strReason;
        CVXImageFileReader::read(input(pName), strReason);
        QTest::addRow("unreadable %s", pName)
            << QStringList {"--layout", "Layout 2x2"} + page + QStringList {input("red.png"), input(pName)}
            << QStringList {QStringLiteral("Cannot read \"%1\": %2").arg(input(pName), strReason)};
    }
    QTest::newRow("methods file is the output")
        << QStringList {"--layout", "Layout 2x2", "--methods", strPage} + page + QStringList {input("red.png")}
        << QStringList {QStringLiteral("The Methods paragraph cannot go to \"%1\": that is the output file.").arg(strPage)};
    QTest::newRow("methods in a missing folder")
        << QStringList {"--layout", "Layout 2x2", "--methods", output("no/such/methods.txt")} + page
               + QStringList {input("red.png")}
        << QStringList {QStringLiteral("Cannot write the Methods paragraph to \"%1\"").arg(output("no/such/methods.txt"))};
    QTest::newRow("methods file is a folder")
        << QStringList {"--layout", "Layout 2x2", "--methods", m_dir.path()} + page + QStringList {input("red.png")}
        << QStringList {QStringLiteral("Cannot write the Methods paragraph to \"%1\"").arg(m_dir.path())};
    QTest::newRow("methods without a file")
        << QStringList {"--layout", "Layout 2x2", "--methods="} + page + QStringList {input("red.png")}
        << QStringList {"No file given for --methods"};
    QTest::newRow("two unreadable")
        << QStringList {"--layout", "Layout 2x2"} + page + QStringList {input("missing.png"), input("notes.png")}
        << QStringList {QStringLiteral("Cannot read \"%1\"").arg(input("missing.png")),
                        QStringLiteral("Cannot read \"%1\"").arg(input("notes.png"))};
}

void TestToolsVxLayout::refusesBadInput()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, messages);
    const ToolRun run = runTool(arguments);
    QCOMPARE(run.nExitCode, 1);
    QCOMPARE(run.strOut, QString());
    for (const QString& strMessage : messages)
        QVERIFY2(run.strErr.contains(strMessage),
                 qPrintable(QStringLiteral("expected \"%1\" in:\n%2").arg(strMessage, run.strErr)));
    QVERIFY2(run.strErr.contains(QStringLiteral("vxlayout: ")), qPrintable(run.strErr));
    verifyNothingWritten(output("page.png"));
}

void TestToolsVxLayout::damagedImageGivesOurMessageOnly_data()
{
    QTest::addColumn<QString>("fileName");
    QFile file(input("red.png"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray png = file.readAll();
    // The width in the header, and a byte of the image data: both no longer match their
    // chunk's checksum.
    QByteArray header = png;
    header[18] = char(header.at(18) ^ 0x40);
    QByteArray data = png;
    const int nData = data.indexOf("IDAT") + 20;
    data[nData] = char(data.at(nData) ^ 0xff);
    QVERIFY(CTestImageFiles::writeBytes(input("header.png"), header));
    QVERIFY(CTestImageFiles::writeBytes(input("data.png"), data));
    QVERIFY(CTestImageFiles::writeBytes(input("signature.png"), png.left(8)));
    // A chunk a decoder must understand, after the image data; the checksum is right.
    QByteArray critical = png;
    critical.insert(critical.size() - 12, QByteArray("\0\0\0\0ABCD\xdb\x17\x20\xa5", 12));
    QVERIFY(CTestImageFiles::writeBytes(input("critical.png"), critical));
    QVERIFY(CTestImageFiles::writeBytes(input("directory.tif"), QByteArray("II*\0\x08\0\0\0\x40\0", 10)));
    CTestDicomFiles::SHeader dicomHeader;
    dicomHeader.size = QSize(40, 30);
    QVERIFY(CTestDicomFiles::write(input("whole.dcm"), dicomHeader, QVector<quint16>(40 * 30, 90)));
    QVERIFY(CTestImageFiles::writeTruncatedCopy(input("whole.dcm"), input("truncated.dcm")));

    QTest::newRow("png cut short") << "truncated.png";
    QTest::newRow("png header damaged") << "header.png";
    QTest::newRow("png data damaged") << "data.png";
    QTest::newRow("png signature only") << "signature.png";
    QTest::newRow("png with an unknown critical chunk at its end") << "critical.png";
    QTest::newRow("tiff directory cut short") << "directory.tif";
    QTest::newRow("dicom cut short") << "truncated.dcm";
}

// A damaged image is reported once, in our words: the decoding libraries' own complaints
// stay off the terminal.
void TestToolsVxLayout::damagedImageGivesOurMessageOnly()
{
    QFETCH(QString, fileName);
    QString strReason;
    QVERIFY(CVXImageFileReader::read(input(fileName), strReason).isEmpty());
    const ToolRun run = runTool({"--layout", "Layout 2x2", "--export", output("page.png"), input(fileName)});
    QCOMPARE(run.nExitCode, 1);
    const QString strMessage = QStringLiteral("vxlayout: Cannot read \"%1\": %2\n").arg(input(fileName), strReason);
    QVERIFY2(run.strErr.count(strMessage) == 1, qPrintable(run.strErr));
    // libpng's and libtiff's lines, and DCMTK's log lines ("E: ...").
    static const QRegularExpression libraryLines(QStringLiteral("libpng|TIFF|^[EWF]: "), QRegularExpression::MultilineOption);
    QVERIFY2(!run.strErr.contains(libraryLines), qPrintable(run.strErr));
    verifyNothingWritten(output("page.png"));
}

void TestToolsVxLayout::debugMessagesShowWhenAskedFor_data()
{
    QTest::addColumn<QString>("rules");
    QTest::addColumn<bool>("shown");
    QTest::newRow("everyday run") << QString() << false;
    QTest::newRow("QT_LOGGING_RULES *.debug=true") << "*.debug=true" << true;
    QTest::newRow("QT_LOGGING_RULES default.debug=true") << "default.debug=true" << true;
}

// Debug messages are emitted but kept off the terminal unless the user asks for them.
void TestToolsVxLayout::debugMessagesShowWhenAskedFor()
{
    QFETCH(QString, rules);
    QFETCH(bool, shown);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
    environment.remove(QStringLiteral("QT_LOGGING_CONF"));
    // Every line says what kind of message it is.
    environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"), QStringLiteral("%{type}: %{message}"));
    if (!rules.isEmpty())
        environment.insert(QStringLiteral("QT_LOGGING_RULES"), rules);
    const ToolRun run = runTool({"--layout", "Layout 2x1", "--export", output("page.png"), input("red.png")}, environment);
    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    // Each image read is reported at debug level.
    const QString strRead = QStringLiteral("debug: Read %1: 400 x 300 pixels\n").arg(input("red.png"));
    QVERIFY2(run.strErr.contains(strRead) == shown, qPrintable(run.strErr.left(2000)));
    static const QRegularExpression debugLines(QStringLiteral("^(debug|info): "), QRegularExpression::MultilineOption);
    QVERIFY2(shown || !run.strErr.contains(debugLines), qPrintable(run.strErr.left(2000)));
}

void TestToolsVxLayout::refusesUnwritableOutput_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("error"); // the system's reason, by its errno
    QTest::newRow("missing folder") << output("no/such/folder/page.png") << int(eSTATUS_INVALID_PATH) << ENOENT;
    QTest::newRow("folder is a file") << input("afile/page.png") << int(eSTATUS_INVALID_PATH) << ENOTDIR;
    QTest::newRow("read-only folder") << output("locked/page.png") << int(eSTATUS_NO_PERMISSION) << EACCES;
}

void TestToolsVxLayout::refusesUnwritableOutput()
{
    QFETCH(QString, page);
    QFETCH(int, status);
    QFETCH(int, error);
    const QFileInfo target(page);
    if (page.contains(QLatin1String("locked"))) {
        QVERIFY(QDir().mkpath(target.absolutePath()));
        QVERIFY(QFile::setPermissions(target.absolutePath(), QFile::ReadOwner | QFile::ExeOwner));
        if (::access(QFile::encodeName(target.absolutePath()).constData(), W_OK) == 0)
            QSKIP("this user may write into read-only folders");
    }
    const ToolRun run = runTool({"--layout", "Layout 2x2", "--export", page, input("red.png")});
    if (page.contains(QLatin1String("locked")))
        QVERIFY(QFile::setPermissions(target.absolutePath(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    QCOMPARE(run.nExitCode, 1);
    QVERIFY2(run.strErr.contains(writeFailure(page, status, error)), qPrintable(run.strErr));
    QVERIFY(!QFileInfo::exists(page));
    QCOMPARE(QDir(target.absolutePath()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList());
}

void TestToolsVxLayout::refusesUnwritableFigure_data()
{
    QTest::addColumn<QString>("figure");
    QTest::newRow("tif in a missing folder") << output("no/such/folder/figure.tif");
    QTest::newRow("pdf in a missing folder") << output("no/such/folder/figure.pdf");
    QTest::newRow("png in a file's place of a folder") << input("afile/figure.png");
}

void TestToolsVxLayout::refusesUnwritableFigure()
{
    QFETCH(QString, figure);
    const ToolRun run =
        runTool({"--layout", "Layout 2x2", "--width-mm", "85", "--dpi", "600", "--export", figure, input("red.png")});
    QCOMPARE(run.nExitCode, 1);
    QCOMPARE(run.strOut, QString());
    const int nError = figure.contains(QLatin1String("afile")) ? ENOTDIR : ENOENT;
    QVERIFY2(run.strErr.contains(writeFailure(figure, eSTATUS_INVALID_PATH, nError)), qPrintable(run.strErr));
    QVERIFY(!QFileInfo::exists(figure));
}

void TestToolsVxLayout::refusesUnwritableVectorPage_data()
{
    QTest::addColumn<QString>("page");
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("error"); // the system's reason, by its errno
    for (const char* pSuffix : {"pdf", "svg"}) {
        const QString strName = QStringLiteral("page.") + QLatin1String(pSuffix);
        // Not ".../folder/": that one is made below, with a folder named like the page in it.
        QTest::addRow("%s missing folder", pSuffix) << output("no/such/place/" + strName) << int(eSTATUS_INVALID_PATH)
                                                    << ENOENT;
        QTest::addRow("%s folder is a file", pSuffix) << input("afile/" + strName) << int(eSTATUS_INVALID_PATH) << ENOTDIR;
        QTest::addRow("%s folder of that name", pSuffix) << output("folder/" + strName) << int(eSTATUS_INVALID_PATH)
                                                         << EISDIR;
        QTest::addRow("%s full disk", pSuffix) << output("full/" + strName) << int(eSTATUS_DISK_FULL) << ENOSPC;
        // sysfs refuses new files (EACCES) even to root, unlike a read-only folder.
        QTest::addRow("%s no permission", pSuffix) << QStringLiteral("/sys/vx_vxlayout_test.") + QLatin1String(pSuffix)
                                                   << int(eSTATUS_NO_PERMISSION) << EACCES;
    }
}

void TestToolsVxLayout::refusesUnwritableVectorPage()
{
    QFETCH(QString, page);
    QFETCH(int, status);
    QFETCH(int, error);
    const QFileInfo target(page);
    if (page.contains(QLatin1String("/folder/")))
        QVERIFY(QDir().mkpath(page));
    if (page.contains(QLatin1String("/full/"))) {
        if (!QFileInfo::exists(QStringLiteral("/dev/full")))
            QSKIP("this system has no /dev/full");
        QVERIFY(QDir().mkpath(target.absolutePath()));
        QVERIFY(QFile::link(QStringLiteral("/dev/full"), page));
    }
    if (page.startsWith(QLatin1String("/sys/")) && !QFileInfo(QStringLiteral("/sys/kernel")).isDir())
        QSKIP("this system has no sysfs under /sys");
    const QStringList before = QDir(target.absolutePath()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);

    const ToolRun run = runTool({"--layout", "Layout 2x2", "--export", page, input("red.png")});
    QCOMPARE(run.nExitCode, 1);
    QCOMPARE(run.strOut, QString());
    QVERIFY2(run.strErr.contains(writeFailure(page, status, error)), qPrintable(run.strErr));
    // Nothing new beside the target, no temporary file left, and the target what it was.
    QCOMPARE(QDir(target.absolutePath()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), before);
    QVERIFY(!target.isFile() || target.isSymLink());
    QCOMPARE(QFileInfo(page).isDir(), page.contains(QLatin1String("/folder/")));
}

void TestToolsVxLayout::printsProvenanceAndWritesMethods()
{
    CTestDicomFiles::SHeader header;
    header.size = QSize(40, 30);
    header.attributes = {{DCM_SpecificCharacterSet, "ISO_IR 192"},
                         {DCM_PatientID, "Maus-\xC3\x84"},
                         {DCM_SOPInstanceUID, "1.2.826.0.1.3680043.2.1143.7"},
                         {DCM_SeriesInstanceUID, "1.2.826.0.1.3680043.2.1143.7.1"},
                         {DCM_AcquisitionDate, "20240502"}};
    QVERIFY(CTestDicomFiles::write(input("scan.dcm"), header, QVector<quint16>(40 * 30, 90)));
    const QString strFigure = output("figure.png");
    const QString strMethods = output("figure-methods.txt");

    const ToolRun run = runTool({"--layout", "Layout 2x1", "--export", strFigure, "--provenance", "--methods",
                                 strMethods, input("scan.dcm"), input("red.png")});

    QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    const QStringList lines = run.strOut.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    QCOMPARE(lines.value(0), QStringLiteral("Wrote %1 (4004 x 3204 pixels)").arg(strFigure));
    // Printed as UTF-8 whatever the locale; read back here as the locale reads it.
    for (const QByteArray& expected :
         {QByteArray("Layout Style: Layout 2x1"), QByteArray("Images: 2"), QByteArray("Page Size: 1000 x 800 layout units"),
          QByteArray("Image Size: 4004 x 3204 pixels"),
          QByteArray("Image 1 Cell: 1, row 1, column 1"), QByteArray("Image 1 Source: scan.dcm"),
          QByteArray("Image 1 Patient ID: Maus-\xC3\x84"),
          QByteArray("Image 1 SOP Instance UID: 1.2.826.0.1.3680043.2.1143.7"),
          QByteArray("Image 2 Cell: 2, row 1, column 2"), QByteArray("Image 2 Source: red.png")})
        QVERIFY2(lines.contains(QString::fromLocal8Bit(expected)), expected.constData());
    QFile methods(strMethods);
    QVERIFY(methods.open(QIODevice::ReadOnly));
    const QString strParagraph = QString::fromUtf8(methods.readAll());
    QVERIFY2(strParagraph.startsWith(QString::fromUtf8(
                 "Figure assembled from 2 images in a 2 x 1 grid: Image 1 (cell 1, row 1, column 1) shows scan.dcm "
                 "(animal Maus-\xC3\x84, acquired 2024-05-02, series 1.2.826.0.1.3680043.2.1143.7.1). "
                 "Image 2 (cell 2, row 1, column 2) shows red.png. Assembled with Vexor Image Layout (vxlayout)")),
             qPrintable(strParagraph));
    // The figure itself carries the same, as PNG text.
    QCOMPARE(QImage(strFigure).text(QStringLiteral("Image 1 Source")), QStringLiteral("scan.dcm"));
}

QTEST_MAIN(TestToolsVxLayout)
#include "tst_tools_vxlayout.moc"
