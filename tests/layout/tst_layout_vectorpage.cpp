#include "LayoutFixture.h"
#include "OutsideProgram.h"
#include "SamplePage.h"
#include "WidgetTestCase.h"

#include <output/VXSExportFormats.h>
#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <output/VXSLayoutRenderer.h>
#include <output/VXSLayoutVectorPage.h>
#include <VXSLayoutView.h>

#include <QGraphicsScene>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <QtTest>

#include <algorithm>
#include <cmath>
#include <memory>

using namespace VXSLayout;

namespace {

constexpr int kGridStyle = 3;
// Page units of shift allowed between a vector page drawn by an outside program and the
// raster export, and by how much a colour channel may then still differ. Outside programs
// draw edges anti-aliased and set text with their own glyph advances, so an edge or the end
// of a line of text may lie a unit or two from where our raster page has it, and a glyph's
// stem, a unit wide, may come out up to a quarter lighter or darker (64 at most on the sample
// page). What is left out or drawn elsewhere leaves colours that occur nowhere near on the
// other page: the thinnest, a rectangle's outline half a unit wide, differs by 128.
constexpr int kReach = 2;
constexpr int kChannelTolerance = 96;

bool writeFile(const QString& strPath, const QByteArray& data)
{
    QFile file(strPath);
    return !data.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(data) == data.size();
}

// The page at one pixel per page unit: the mean of each square of ExportScale x ExportScale
// pixels, so that anti-aliased and aliased edges both become the share of the unit covered.
QImage inPageUnits(const QImage& page)
{
    const QImage source = page.convertToFormat(QImage::Format_RGB32);
    const int nScale = int(VXSExportFormats::ExportScale);
    QImage units(source.width() / nScale, source.height() / nScale, QImage::Format_RGB32);
    for (int y = 0; y < units.height(); ++y) {
        for (int x = 0; x < units.width(); ++x) {
            int sums[3] = {0, 0, 0};
            for (int dy = 0; dy < nScale; ++dy) {
                for (int dx = 0; dx < nScale; ++dx) {
                    const QRgb pixel = source.pixel(x * nScale + dx, y * nScale + dy);
                    sums[0] += qRed(pixel);
                    sums[1] += qGreen(pixel);
                    sums[2] += qBlue(pixel);
                }
            }
            const int nArea = nScale * nScale;
            units.setPixel(x, y, qRgb(sums[0] / nArea, sums[1] / nArea, sums[2] / nArea));
        }
    }
    return units;
}

// How far a channel of the pixel lies outside the range that channel takes within kReach
// units of the same place on the other page.
int outsideNeighbourhood(const QImage& page, const QImage& other, int x, int y)
{
    int nLargest = 0;
    for (int nShift : {16, 8, 0}) {
        int nLow = 255;
        int nHigh = 0;
        for (int oy = qMax(0, y - kReach); oy <= qMin(other.height() - 1, y + kReach); ++oy) {
            for (int ox = qMax(0, x - kReach); ox <= qMin(other.width() - 1, x + kReach); ++ox) {
                const int nValue = int(other.pixel(ox, oy) >> nShift) & 0xff;
                nLow = qMin(nLow, nValue);
                nHigh = qMax(nHigh, nValue);
            }
        }
        const int nValue = int(page.pixel(x, y) >> nShift) & 0xff;
        nLargest = qMax(nLargest, qMax(nValue - nHigh, nLow - nValue));
    }
    return nLargest;
}

// The largest difference between the pages that a shift of up to kReach units cannot
// explain, either way, leaving out the outermost unit all round: the page's outline lies on
// the page's edge, where a raster page keeps the inner half of its pixel and a vector page
// the inner half of its stroke.
int largestUnexplainedDifference(const QImage& first, const QImage& second)
{
    const QImage a = inPageUnits(first);
    const QImage b = inPageUnits(second);
    int nLargest = 0;
    for (int y = 1; y < a.height() - 1; ++y) {
        for (int x = 1; x < a.width() - 1; ++x)
            nLargest = qMax(nLargest, qMax(outsideNeighbourhood(a, b, x, y), outsideNeighbourhood(b, a, x, y)));
    }
    return nLargest;
}

} // namespace

// The page written as PDF and SVG: read by outside programs, it holds text as text, shapes as
// vectors and images at their own resolution, and looks like the raster export.
class TestLayoutVectorPage : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void pdfHoldsTheTextsAsText();
    void pdfPageIsTheSceneInPoints();
    void pdfEmbedsImagesAtTheirOwnResolution();
    void svgHoldsTextShapesAndImages();
    void looksLikeTheRasterExport_data();
    void looksLikeTheRasterExport();

private:
    void endTest() override;

    QString write(const QString& strName);
    OutsideProgram readSamplePdf(const QString& strProgram, QStringList arguments);
    QImage drawnByOutsideProgram(const QString& strPath);
    void leaveOutFirstOfKind(int nType);

    std::unique_ptr<LayoutFixture> m_pFixture;
    QTemporaryDir m_dir;
};

void TestLayoutVectorPage::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

void TestLayoutVectorPage::init()
{
    m_pFixture = std::make_unique<LayoutFixture>(SamplePage::viewSize());
}

void TestLayoutVectorPage::endTest()
{
    m_pFixture.reset();
}

// Writes the fixture's page as the suffix of the name says.
QString TestLayoutVectorPage::write(const QString& strName)
{
    const CVXSLayoutRenderer renderer(*m_pFixture->scene(), m_pFixture->view());
    const CVXSLayoutVectorPage page(renderer);
    const QString strPath = m_dir.filePath(strName);
    const QByteArray data = strName.endsWith(QLatin1String(".pdf")) ? page.pdf(300, strName) : page.svg(strName);
    return writeFile(strPath, data) ? strPath : QString();
}

// The sample page in the grid style written as PDF, and the program run with the file as its
// last argument.
OutsideProgram TestLayoutVectorPage::readSamplePdf(const QString& strProgram, QStringList arguments)
{
    SamplePage::fill(*m_pFixture, kGridStyle);
    return OutsideProgram(strProgram, arguments << write(QStringLiteral("page.pdf")));
}

// The page as pdftoppm or rsvg-convert draws it, at the raster export's size.
QImage TestLayoutVectorPage::drawnByOutsideProgram(const QString& strPath)
{
    const QSize size = m_pFixture->manager()->renderLayoutImage(VXSExportFormats::ExportScale).size();
    const QString strPng = strPath + QStringLiteral(".png");
    const bool bPdf = strPath.endsWith(QLatin1String(".pdf"));
    const OutsideProgram program = bPdf
        ? OutsideProgram(QStringLiteral("pdftoppm"), {QStringLiteral("-r"), QString::number(72 * VXSExportFormats::ExportScale),
                                                      QStringLiteral("-png"), QStringLiteral("-singlefile"), strPath,
                                                      strPath})
        : OutsideProgram(QStringLiteral("rsvg-convert"), {QStringLiteral("-w"), QString::number(size.width()),
                                                          QStringLiteral("-h"), QString::number(size.height()),
                                                          QStringLiteral("-b"), QStringLiteral("white"), strPath,
                                                          QStringLiteral("-o"), strPng});
    if (!program.succeeded())
        qWarning("%s", qPrintable(program.report()));
    return QImage(strPng);
}

void TestLayoutVectorPage::pdfHoldsTheTextsAsText()
{
    VX_REQUIRE_PROGRAM("pdffonts");
    VX_REQUIRE_PROGRAM("pdftotext");
    const OutsideProgram fonts = readSamplePdf(QStringLiteral("pdffonts"), {});
    QVERIFY2(fonts.succeeded(), qPrintable(fonts.report()));
    // A header of two lines, then one line per font: both texts are set in DejaVu Sans,
    // the bold one in its bold face.
    const QList<QByteArray> lines = fonts.output().trimmed().split('\n');
    QVERIFY2(lines.size() >= 4, qPrintable(fonts.report()));
    QVERIFY2(fonts.output().contains("DejaVuSans"), qPrintable(fonts.report()));
    QVERIFY2(fonts.output().contains("DejaVuSans-Bold"), qPrintable(fonts.report()));

    const OutsideProgram text(QStringLiteral("pdftotext"), {m_dir.filePath(QStringLiteral("page.pdf")), QStringLiteral("-")});
    QVERIFY2(text.succeeded(), qPrintable(text.report()));
    for (const QString& strText : SamplePage::texts())
        QVERIFY2(QString::fromUtf8(text.output()).contains(strText), qPrintable(text.report()));
}

void TestLayoutVectorPage::pdfPageIsTheSceneInPoints()
{
    VX_REQUIRE_PROGRAM("pdfinfo");
    const OutsideProgram info = readSamplePdf(QStringLiteral("pdfinfo"), {});
    QVERIFY2(info.succeeded(), qPrintable(info.report()));
    // The scene is 416 x 306; the page is one unit larger, like the raster page.
    const QSize scene = m_pFixture->scene()->sceneRect().size().toSize();
    const QByteArray expected = QStringLiteral("Page size:       %1 x %2 pts").arg(scene.width() + 1).arg(scene.height() + 1).toLatin1();
    QVERIFY2(info.output().contains(expected), qPrintable(info.report()));
    QVERIFY2(info.output().contains("Pages:           1\n"), qPrintable(info.report()));
}

void TestLayoutVectorPage::pdfEmbedsImagesAtTheirOwnResolution()
{
    VX_REQUIRE_PROGRAM("pdfimages");
    const OutsideProgram list = readSamplePdf(QStringLiteral("pdfimages"), {QStringLiteral("-list")});
    QVERIFY2(list.succeeded(), qPrintable(list.report()));

    // Columns: page, num, type, width, height, color, comp, bpc, enc, ...
    QStringList images;
    for (const QByteArray& line : list.output().split('\n').mid(2)) {
        const QList<QByteArray> columns = line.simplified().split(' ');
        if (columns.size() > 8)
            images << QStringLiteral("%1 %2 x %3 %4").arg(QString::fromLatin1(columns[2]), QString::fromLatin1(columns[3]),
                                                         QString::fromLatin1(columns[4]), QString::fromLatin1(columns[8]));
    }
    // The image over the page's right edge goes in with the source pixels that show: its
    // place at the export scale, cut at the page's edge, in source pixels rounded up.
    const int nScale = int(VXSExportFormats::ExportScale);
    const int nPageWidth = int(m_pFixture->scene()->width() + 1);
    const QList<QGraphicsItem*> items = m_pFixture->scene()->items(Qt::AscendingOrder);
    const auto hanging = std::find_if(items.cbegin(), items.cend(), [nPageWidth](QGraphicsItem* pItem) {
        return pItem->type() == CVXSLayoutItemImage::Type && pItem->boundingRect().right() > nPageWidth;
    });
    QVERIFY(hanging != items.cend());
    const QRectF b = (*hanging)->boundingRect();
    const int nSourceWidth = static_cast<CVXSLayoutItemImage*>(*hanging)->getImage().width();
    const int nLeft = int((b.left() + 2) * nScale);
    const int nWidth = int((b.right() - 2) * nScale) - nLeft + 1;
    const int nShown = int(std::ceil((nPageWidth * nScale - nLeft) * double(nSourceWidth) / nWidth));
    QVERIFY(nShown < nSourceWidth);
    // Flate-compressed ("image"), never JPEG: the pixels stay as they are.
    const QStringList expected {"image 320 x 240 image", "image 100 x 60 image", "image 120 x 90 image",
                                QStringLiteral("image %1 x 40 image").arg(nShown)};
    QCOMPARE(images, expected);
}

void TestLayoutVectorPage::svgHoldsTextShapesAndImages()
{
    SamplePage::fill(*m_pFixture, kGridStyle);
    const QString strSvg = write(QStringLiteral("page.svg"));
    QVERIFY(!strSvg.isEmpty());
    QFile file(strSvg);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QMap<QString, int> elements;
    QStringList texts;
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        ++elements[xml.name().toString()];
        if (xml.name() == QLatin1String("text"))
            texts << xml.readElementText(QXmlStreamReader::IncludeChildElements).simplified();
    }
    QVERIFY2(!xml.hasError(), qPrintable(xml.errorString()));
    QCOMPARE(texts, SamplePage::texts());
    QCOMPARE(elements.value(QStringLiteral("image")), 4);
    // The page, the rectangle and the ellipse; the lines and the arrows' heads.
    QVERIFY2(elements.value(QStringLiteral("rect")) + elements.value(QStringLiteral("path")) >= 3,
             qPrintable(QStringList(elements.keys()).join(QLatin1Char(' '))));
    QVERIFY2(elements.value(QStringLiteral("polyline")) + elements.value(QStringLiteral("path"))
                     + elements.value(QStringLiteral("polygon")) >= 6,
             qPrintable(QStringList(elements.keys()).join(QLatin1Char(' '))));
}

void TestLayoutVectorPage::looksLikeTheRasterExport_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<int>("style");
    QTest::addColumn<int>("leftOut");
    // Rows that leave an item of a kind out of the raster page show that the comparison
    // fails when the pages differ; 0 leaves nothing out.
    const std::pair<const char*, int> kinds[] = {{"nothing left out", 0},       {"text left out", TextItemType},
                                                 {"ellipse left out", EllipseItemType},
                                                 {"rectangle left out", RectangleItemType},
                                                 {"line left out", ArrowItemType}, {"image left out", ImageItemType}};
    for (const char* pFormat : {"pdf", "svg"}) {
        for (const auto& kind : kinds)
            QTest::addRow("%s grid %s", pFormat, kind.first) << QString::fromLatin1(pFormat) << kGridStyle << kind.second;
        QTest::addRow("%s free nothing left out", pFormat) << QString::fromLatin1(pFormat) << 0 << 0;
    }
}

void TestLayoutVectorPage::looksLikeTheRasterExport()
{
    QFETCH(QString, format);
    QFETCH(int, style);
    QFETCH(int, leftOut);
    VX_REQUIRE_PROGRAM("pdftoppm");
    VX_REQUIRE_PROGRAM("rsvg-convert");
    SamplePage::fill(*m_pFixture, style);
    const QString strPath = write(QStringLiteral("page.") + format);
    QVERIFY(!strPath.isEmpty());
    const QImage drawn = drawnByOutsideProgram(strPath);
    if (leftOut != 0)
        leaveOutFirstOfKind(leftOut);
    const QImage raster = m_pFixture->manager()->renderLayoutImage(VXSExportFormats::ExportScale);
    QCOMPARE(drawn.size(), raster.size());
    const int nDifference = largestUnexplainedDifference(drawn, raster);
    qInfo("largest difference %d", nDifference);
    if (leftOut == 0)
        QVERIFY2(nDifference <= kChannelTolerance, qPrintable(QString::number(nDifference)));
    else
        QVERIFY2(nDifference > kChannelTolerance, qPrintable(QString::number(nDifference)));
}

// Removes the lowest item of the kind (for texts the small "Lung 12 h", for lines the plain
// line, for images the gradient) from the page.
void TestLayoutVectorPage::leaveOutFirstOfKind(int nType)
{
    const QList<QGraphicsItem*> items = m_pFixture->scene()->items(Qt::AscendingOrder);
    for (QGraphicsItem* pItem : items) {
        if (pItem->type() == nType && !m_pFixture->view()->isAuxiliaryItem(pItem)) {
            m_pFixture->scene()->removeItem(pItem);
            delete pItem;
            return;
        }
    }
    QFAIL("no item of the kind on the page");
}

QTEST_MAIN(TestLayoutVectorPage)
#include "tst_layout_vectorpage.moc"
