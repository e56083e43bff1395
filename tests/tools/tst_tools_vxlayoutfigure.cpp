#include "OutsideProgram.h"
#include "TestDicomFiles.h"
#include "WidgetTestCase.h"

#include <VXImageFileReader.h>
#include <VXPixelSize.h>

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTransform>
#include <QXmlStreamReader>
#include <QtTest>

#include <dcmtk/dcmdata/dcdeftag.h>

#include <algorithm>

namespace {

// Two DICOM sources: 400 x 300 pixels of 50 µm from Pixel Spacing (20 mm across, a 5 mm
// bar) and 500 x 300 pixels of 100 µm from Imager Pixel Spacing (50 mm, a 10 mm bar).
struct Source
{
    const char* pName;
    QSize size;
    DcmTagKey spacingKey;
    QByteArray spacing;
    double dWidthMm;
    double dBarMm;
    const char* pBarText;
};

const Source Sources[] = {
    {"mouse-a.dcm", QSize(400, 300), DCM_PixelSpacing, "0.05\\0.05", 20.0, 5.0, "5 mm"},
    {"mouse-b.dcm", QSize(500, 300), DCM_ImagerPixelSpacing, "0.1\\0.1", 50.0, 10.0, "10 mm"},
};

// At this resolution a 5 mm bar of a 20 mm image in one of two cells runs about 500 pixels,
// so 0.5 % of it is more than two pixels.
constexpr int RasterDpi = 300;
constexpr double Tolerance = 0.005;

struct Run
{
    int nExitCode = -1;
    QString strOut;
    QString strErr;
};

Run vxlayout(const QStringList& arguments)
{
    QProcess process;
    process.start(QStringLiteral(VXLAYOUT_EXECUTABLE), arguments);
    Run run;
    if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit)
        run.nExitCode = process.exitCode();
    run.strOut = QString::fromUtf8(process.readAllStandardOutput());
    run.strErr = QString::fromUtf8(process.readAllStandardError());
    return run;
}

// An image on the page and the bar drawn on it, both measured across in the same units.
struct Measured
{
    double dImageWidth = 0.0;
    double dBarLength = 0.0;
};

QTransform svgTransform(const QXmlStreamAttributes& attributes)
{
    static const QRegularExpression matrix(QStringLiteral("matrix\\(([^)]*)\\)"));
    const QRegularExpressionMatch match = matrix.match(attributes.value(QStringLiteral("transform")).toString());
    if (!match.hasMatch())
        return QTransform();
    const QStringList values = match.captured(1).split(QLatin1Char(','));
    if (values.size() != 6)
        return QTransform();
    return QTransform(values[0].toDouble(), values[1].toDouble(), values[2].toDouble(), values[3].toDouble(),
                      values[4].toDouble(), values[5].toDouble());
}

QRectF svgRect(const QXmlStreamAttributes& attributes, const QTransform& transform)
{
    const QRectF rect(attributes.value(QStringLiteral("x")).toDouble(), attributes.value(QStringLiteral("y")).toDouble(),
                      attributes.value(QStringLiteral("width")).toDouble(),
                      attributes.value(QStringLiteral("height")).toDouble());
    return transform.mapRect(rect);
}

// The images of an SVG page, left to right, each with the thin rectangle (the bar) that
// lies on it.
QVector<Measured> measureSvg(const QString& strPath)
{
    QFile file(strPath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QXmlStreamReader xml(&file);
    QVector<QTransform> transforms {QTransform()};
    QVector<QRectF> images;
    QVector<QRectF> bars;
    while (!xml.atEnd()) {
        const QXmlStreamReader::TokenType token = xml.readNext();
        if (token == QXmlStreamReader::EndElement && xml.name() == QLatin1String("g"))
            transforms.removeLast();
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() == QLatin1String("g"))
            transforms << svgTransform(xml.attributes()) * transforms.last();
        else if (xml.name() == QLatin1String("image"))
            images << svgRect(xml.attributes(), transforms.last());
        else if (xml.name() == QLatin1String("rect")) {
            const QRectF rect = svgRect(xml.attributes(), transforms.last());
            // Not the page's background: a bar is wider than high, and thin.
            if (rect.width() > rect.height() && rect.height() < 20)
                bars << rect;
        }
    }
    std::sort(images.begin(), images.end(), [](const QRectF& a, const QRectF& b) { return a.left() < b.left(); });
    QVector<Measured> measured;
    for (const QRectF& image : qAsConst(images)) {
        Measured one {image.width(), 0.0};
        for (const QRectF& bar : qAsConst(bars)) {
            if (image.contains(bar.center()))
                one.dBarLength = bar.width();
        }
        measured << one;
    }
    return measured;
}

bool isDark(QRgb pixel)
{
    return qGray(pixel) < 128;
}

// The dark images of a page rasterised at RasterDpi, left to right, each with the longest
// light run that lies within it between dark pixels (the bar; its label's strokes are short).
QVector<Measured> measureRaster(const QImage& page)
{
    // The images are the runs of columns with many dark pixels (the page's black edge lines
    // are one column wide, or give each column a pixel or two).
    QVector<int> darkInColumn(page.width(), 0);
    for (int y = 0; y < page.height(); ++y) {
        for (int x = 0; x < page.width(); ++x)
            darkInColumn[x] += isDark(page.pixel(x, y)) ? 1 : 0;
    }
    QVector<QPair<int, int>> images;
    for (int x = 0; x < page.width(); ++x) {
        if (darkInColumn[x] < 100)
            continue;
        const int nStart = x;
        while (x < page.width() && darkInColumn[x] >= 100)
            ++x;
        if (x - nStart > 100)
            images << qMakePair(nStart, x);
    }
    QVector<Measured> measured;
    for (const auto& image : qAsConst(images)) {
        Measured one {double(image.second - image.first), 0.0};
        for (int y = 0; y < page.height(); ++y) {
            int nRunStart = -1;
            for (int x = image.first; x < image.second; ++x) {
                const bool bLight = !isDark(page.pixel(x, y));
                if (bLight && nRunStart < 0 && x > image.first && isDark(page.pixel(x - 1, y)))
                    nRunStart = x;
                if (!bLight && nRunStart >= 0) {
                    one.dBarLength = qMax(one.dBarLength, double(x - nRunStart));
                    nRunStart = -1;
                }
            }
        }
        measured << one;
    }
    return measured;
}

QImage rasterised(const QString& strPdf)
{
    const QString strBase = strPdf + QStringLiteral("-page");
    const OutsideProgram pdftoppm(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QString::number(RasterDpi),
                                                              QStringLiteral("-png"), QStringLiteral("-singlefile"),
                                                              strPdf, strBase});
    return pdftoppm.succeeded() ? QImage(strBase + QStringLiteral(".png")) : QImage();
}

QString pdfText(const QString& strPdf)
{
    const OutsideProgram pdftotext(QStringLiteral("pdftotext"), {strPdf, QStringLiteral("-")});
    return QString::fromUtf8(pdftotext.output());
}

} // namespace

// vxlayout's panel letters and scale bars on real DICOM and TIFF files, read back from the
// PDF and SVG pages it writes with outside programs.
class TestToolsVxLayoutFigure : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void readersTakeThePixelSize_data();
    void readersTakeThePixelSize();
    void barsAndLettersOnVectorPages_data();
    void barsAndLettersOnVectorPages();
    void givenLengthAndLowerCase();
    void sourceWithoutPixelSize();
    void refusesBadValues_data();
    void refusesBadValues();
    void explainsTheOptions();

private:
    QString path(const QString& strName) const;
    QStringList sources() const;
    void verifyBars(const QVector<Measured>& measured, const QString& strWhere) const;

    QTemporaryDir m_dir;
};

void TestToolsVxLayoutFigure::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
    for (const Source& source : Sources) {
        CTestDicomFiles::SHeader header;
        header.size = source.size;
        header.attributes = {{source.spacingKey, source.spacing}};
        // Dark throughout but for one pixel, which gives the grey range its top.
        QVector<quint16> samples(source.size.width() * source.size.height(), 0);
        samples[0] = 255;
        QVERIFY(CTestDicomFiles::write(path(QString::fromLatin1(source.pName)), header, samples));
    }
    QImage plain(200, 100, QImage::Format_RGB32);
    plain.fill(Qt::black);
    QVERIFY(plain.save(path(QStringLiteral("plain.png"))));
}

QString TestToolsVxLayoutFigure::path(const QString& strName) const
{
    return m_dir.filePath(strName);
}

QStringList TestToolsVxLayoutFigure::sources() const
{
    return {path(QStringLiteral("mouse-a.dcm")), path(QStringLiteral("mouse-b.dcm"))};
}

void TestToolsVxLayoutFigure::readersTakeThePixelSize_data()
{
    QTest::addColumn<QString>("file");
    // For DICOM the attribute and its value; for TIFF the resolution unit (1 none, 2 inch,
    // 3 cm) and X resolution, set with libtiff's tiffset on a TIFF Qt wrote.
    QTest::addColumn<QStringList>("make");
    QTest::addColumn<double>("pixelMm");

    QTest::newRow("DICOM Pixel Spacing, the column spacing")
        << "spacing.dcm" << QStringList {QStringLiteral("PixelSpacing"), QStringLiteral("0.1\\0.2")} << 0.2;
    QTest::newRow("DICOM Imager Pixel Spacing")
        << "imager.dcm" << QStringList {QStringLiteral("ImagerPixelSpacing"), QStringLiteral("0.15\\0.15")} << 0.15;
    QTest::newRow("DICOM without spacing") << "bare.dcm" << QStringList {QStringLiteral("none"), QString()} << 0.0;
    QTest::newRow("TIFF per centimetre")
        << "cm.tif"
        << QStringList {QStringLiteral("3"), QStringLiteral("200")}
        << 0.05;
    QTest::newRow("TIFF per inch")
        << "inch.tif"
        << QStringList {QStringLiteral("2"), QStringLiteral("254")}
        << 0.1;
    QTest::newRow("TIFF without unit")
        << "nounit.tif"
        << QStringList {QStringLiteral("1"), QStringLiteral("254")}
        << 0.0;
    QTest::newRow("PNG") << "plain.png" << QStringList() << 0.0;
}

void TestToolsVxLayoutFigure::readersTakeThePixelSize()
{
    QFETCH(QString, file);
    QFETCH(QStringList, make);
    QFETCH(double, pixelMm);
    const QString strPath = path(file);
    if (file.endsWith(QLatin1String(".dcm"))) {
        CTestDicomFiles::SHeader header;
        header.size = QSize(40, 30);
        if (make.first() == QLatin1String("PixelSpacing"))
            header.attributes = {{DCM_PixelSpacing, make.last().toLatin1()}};
        else if (make.first() == QLatin1String("ImagerPixelSpacing"))
            header.attributes = {{DCM_ImagerPixelSpacing, make.last().toLatin1()}};
        QVERIFY(CTestDicomFiles::write(strPath, header, QVector<quint16>(40 * 30, 90)));
    } else if (file.endsWith(QLatin1String(".tif"))) {
        VX_REQUIRE_PROGRAM("tiffset");
        QImage grey(40, 30, QImage::Format_RGB32);
        grey.fill(Qt::gray);
        QVERIFY(grey.save(strPath, "tif"));
        const OutsideProgram unit(QStringLiteral("tiffset"), {QStringLiteral("-s"), QStringLiteral("296"), make.first(), strPath});
        const OutsideProgram resolution(QStringLiteral("tiffset"),
                                        {QStringLiteral("-s"), QStringLiteral("282"), make.last(), strPath});
        QVERIFY2(unit.succeeded() && resolution.succeeded(), qPrintable(unit.report() + resolution.report()));
    }
    QString strError;
    const QVector<QImage> pages = CVXImageFileReader::read(strPath, strError);
    QVERIFY2(!pages.isEmpty(), qPrintable(strError));
    QVERIFY2(qAbs(CVXPixelSize::of(pages.first()) - pixelMm) < 1e-9,
             qPrintable(pages.first().text(QString::fromLatin1(CVXPixelSize::Key))));
}

void TestToolsVxLayoutFigure::verifyBars(const QVector<Measured>& measured, const QString& strWhere) const
{
    QCOMPARE(measured.size(), 2);
    for (int i = 0; i < 2; ++i) {
        const double dExpected = measured[i].dImageWidth * Sources[i].dBarMm / Sources[i].dWidthMm;
        QVERIFY2(qAbs(measured[i].dBarLength - dExpected) <= dExpected * Tolerance,
                 qPrintable(QStringLiteral("%1, image %2: bar %3 across an image of %4, expected %5")
                                .arg(strWhere)
                                .arg(i + 1)
                                .arg(measured[i].dBarLength)
                                .arg(measured[i].dImageWidth)
                                .arg(dExpected)));
    }
}

void TestToolsVxLayoutFigure::barsAndLettersOnVectorPages_data()
{
    QTest::addColumn<QString>("layout");
    QTest::newRow("two cells side by side") << "Layout 2x1";
    // Laid out again: other cells, other sizes; the bars are measured anew.
    QTest::newRow("a 2x2 grid") << "Layout 2x2";
    QTest::newRow("a 3x2 grid") << "Layout 3x2";
}

void TestToolsVxLayoutFigure::barsAndLettersOnVectorPages()
{
    QFETCH(QString, layout);
    VX_REQUIRE_PROGRAM("pdftotext");
    VX_REQUIRE_PROGRAM("pdftoppm");
    const QString strPdf = path(QStringLiteral("figure.pdf"));
    const QString strSvg = path(QStringLiteral("figure.svg"));
    for (const QString& strOut : {strPdf, strSvg}) {
        const Run run = vxlayout(QStringList {QStringLiteral("--layout"), layout, QStringLiteral("--export"), strOut,
                                              QStringLiteral("--panel-labels"), QStringLiteral("A"),
                                              QStringLiteral("--scale-bar"), QStringLiteral("auto")}
                                 + sources());
        QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    }

    // The letters and the bars' lengths are text in the PDF.
    const QStringList words = pdfText(strPdf).split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    QVERIFY2(words.contains(QStringLiteral("A")) && words.contains(QStringLiteral("B")), qPrintable(words.join(' ')));
    const QString strText = pdfText(strPdf).simplified();
    for (const Source& source : Sources)
        QVERIFY2(strText.contains(QString::fromUtf8(source.pBarText)), qPrintable(strText));

    verifyBars(measureSvg(strSvg), QStringLiteral("SVG"));
    const QImage page = rasterised(strPdf);
    QVERIFY(!page.isNull());
    verifyBars(measureRaster(page), QStringLiteral("PDF at %1 dpi").arg(RasterDpi));
}

void TestToolsVxLayoutFigure::givenLengthAndLowerCase()
{
    VX_REQUIRE_PROGRAM("pdftotext");
    const QString strPdf = path(QStringLiteral("given.pdf"));
    const QString strSvg = path(QStringLiteral("given.svg"));
    // The plain PNG gets its pixel size from the command line: 200 pixels of 20 µm, 4 mm.
    const QStringList inputs {path(QStringLiteral("mouse-a.dcm")), path(QStringLiteral("plain.png"))};
    for (const QString& strOut : {strPdf, strSvg}) {
        const Run run = vxlayout(QStringList {QStringLiteral("--layout"), QStringLiteral("Layout 2x1"),
                                              QStringLiteral("--export"), strOut, QStringLiteral("--panel-labels"),
                                              QStringLiteral("a"), QStringLiteral("--scale-bar"), QStringLiteral("500um"),
                                              QStringLiteral("--pixel-size"), QStringLiteral("0.02mm")}
                                 + inputs);
        QVERIFY2(run.nExitCode == 0, qPrintable(run.strErr));
    }
    const QString strText = pdfText(strPdf);
    const QStringList words = strText.split(QRegularExpression(QStringLiteral("\\s+")), Qt::SkipEmptyParts);
    QVERIFY2(words.contains(QStringLiteral("a")) && words.contains(QStringLiteral("b")), qPrintable(strText));
    QCOMPARE(strText.count(QStringLiteral("500 \u00b5m")), 2);
    // The DICOM file keeps its own calibration: 0.5 of 20 mm; the PNG 0.5 of 4 mm.
    const QVector<Measured> measured = measureSvg(strSvg);
    QCOMPARE(measured.size(), 2);
    const double dWidths[] = {20.0, 4.0};
    for (int i = 0; i < 2; ++i) {
        const double dExpected = measured[i].dImageWidth * 0.5 / dWidths[i];
        QVERIFY2(qAbs(measured[i].dBarLength - dExpected) <= dExpected * Tolerance,
                 qPrintable(QStringLiteral("%1 against %2").arg(measured[i].dBarLength).arg(dExpected)));
    }
}

void TestToolsVxLayoutFigure::sourceWithoutPixelSize()
{
    const QString strOut = path(QStringLiteral("uncalibrated.png"));
    const Run run = vxlayout(QStringList {QStringLiteral("--layout"), QStringLiteral("Layout 2x1"),
                                          QStringLiteral("--export"), strOut, QStringLiteral("--scale-bar"),
                                          QStringLiteral("auto"), path(QStringLiteral("mouse-a.dcm")),
                                          path(QStringLiteral("plain.png"))});
    QCOMPARE(run.nExitCode, 1);
    QCOMPARE(run.strErr, QStringLiteral("vxlayout: Cannot put a scale bar on \"%1\": the file states no pixel size; "
                                        "give one with --pixel-size, e.g. --pixel-size 0.05mm.\n")
                             .arg(path(QStringLiteral("plain.png"))));
    QVERIFY(!QFile::exists(strOut));
}

void TestToolsVxLayoutFigure::refusesBadValues_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("message");
    const QString strNotALength = QStringLiteral("\"%1\" is not a length: give a number and a unit (nm, um, mm, cm), e.g. 0.05mm.");
    QTest::newRow("pixel size zero") << "--pixel-size" << "0mm"
                                     << "Bad --pixel-size: \"0mm\": the length has to be more than 0.";
    QTest::newRow("pixel size negative") << "--pixel-size" << "-0.1mm"
                                         << "Bad --pixel-size: \"-0.1mm\": the length has to be more than 0.";
    QTest::newRow("pixel size above a metre") << "--pixel-size" << "2m"
                                              << "Bad --pixel-size: \"2m\": the length has to be 1 m or less.";
    QTest::newRow("pixel size not a number") << "--pixel-size" << "tiny"
                                             << "Bad --pixel-size: " + strNotALength.arg(QStringLiteral("tiny"));
    QTest::newRow("pixel size without unit") << "--pixel-size" << "0.05"
                                             << "Bad --pixel-size: " + strNotALength.arg(QStringLiteral("0.05"));
    QTest::newRow("bar length unknown unit") << "--scale-bar" << "5 furlongs"
                                             << "Bad --scale-bar: " + strNotALength.arg(QStringLiteral("5 furlongs"));
    QTest::newRow("letters neither A nor a") << "--panel-labels" << "1"
                                             << "Bad --panel-labels \"1\": give A for A, B, C or a for a, b, c.";
}

void TestToolsVxLayoutFigure::refusesBadValues()
{
    QFETCH(QString, option);
    QFETCH(QString, value);
    QFETCH(QString, message);
    const QString strOut = path(QStringLiteral("refused.png"));
    const Run run = vxlayout({QStringLiteral("--layout"), QStringLiteral("Layout 2x1"), QStringLiteral("--export"),
                              strOut, option, value, path(QStringLiteral("mouse-a.dcm"))});
    QCOMPARE(run.nExitCode, 1);
    QVERIFY2(run.strErr.startsWith(QStringLiteral("vxlayout: ") + message + QLatin1Char('\n')), qPrintable(run.strErr));
    QVERIFY(!QFile::exists(strOut));
}

void TestToolsVxLayoutFigure::explainsTheOptions()
{
    const Run run = vxlayout({QStringLiteral("--help")});
    QCOMPARE(run.nExitCode, 0);
    for (const char* pOption : {"--panel-labels <A|a>", "--scale-bar <auto|length>", "--pixel-size <length>"})
        QVERIFY2(run.strOut.contains(QLatin1String(pOption)), pOption);
    QVERIFY(run.strOut.contains(QStringLiteral("Imager\nPixel Spacing")));
}

QTEST_MAIN(TestToolsVxLayoutFigure)
#include "tst_tools_vxlayoutfigure.moc"
