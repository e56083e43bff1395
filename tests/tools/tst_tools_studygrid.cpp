#include "OutsideProgram.h"
#include "TestStudyFiles.h"

#include <studygrid/VXSStudyGridPage.h>

#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

#include <dcmtk/dcmdata/dcdeftag.h>

namespace {

const QSize kPage(1000, 800);
// vxlayout exports at four times the page.
constexpr double kExportScale = 4.0;

OutsideProgram runVxLayout(const QStringList& arguments)
{
    return OutsideProgram(QStringLiteral(VXLAYOUT_EXECUTABLE), arguments, OutsideProgram::Errors::Apart);
}

QStringList gridArguments(const QString& strExport)
{
    return {QStringLiteral("--rows-by"), QStringLiteral("Patient ID"), QStringLiteral("--columns-by"),
            QStringLiteral("Acquisition Date"), QStringLiteral("--colour-bar"), QStringLiteral("--export"), strExport};
}

} // namespace

// vxlayout's study grid: animals by time points from the files' keys, one display range,
// headers and a colour bar, read back by outside programs and by pixels.
class TestToolsStudyGrid : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void pdfNamesAnimalsDaysAndUnit();
    void rasterFollowsSharedRange();
    void givenRangeSetsTheScale();
    void provenanceNamesRowAndColumn();
    void missingCombinationIsMarked();
    void duplicatesAreReported();
    void filesWithoutKeyAreListed();
    void gridSizes_data();
    void gridSizes();
    void zeroRescaleSlopeShowsStoredValues();
    void colourPicturesAreShownAsTheyAre();
    void refusesBadInput_data();
    void refusesBadInput();

private:
    QString path(const QString& strName) const;
    QStringList writeStudy();
    // The grey of the figure at the centre of a cell of the default page.
    static int greyAt(const QImage& figure, int nRows, int nColumns, int nRow, int nColumn);

    std::unique_ptr<QTemporaryDir> m_pDir;
};

void TestToolsStudyGrid::init()
{
    m_pDir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pDir->isValid());
}

QString TestToolsStudyGrid::path(const QString& strName) const
{
    return m_pDir->filePath(strName);
}

QStringList TestToolsStudyGrid::writeStudy()
{
    const QStringList paths = CTestStudyFiles::writeStudy(m_pDir->path());
    if (paths.size() != CTestStudyFiles::kAnimals * CTestStudyFiles::kDays)
        qFatal("the study's DICOM files could not be written");
    return paths;
}

int TestToolsStudyGrid::greyAt(const QImage& figure, int nRows, int nColumns, int nRow, int nColumn)
{
    const QPointF centre = CVXSStudyGridPage(kPage, nRows, nColumns, true).cellRect(nRow, nColumn).center();
    return qGray(figure.pixel((centre * kExportScale).toPoint()));
}

void TestToolsStudyGrid::pdfNamesAnimalsDaysAndUnit()
{
    VX_REQUIRE_PROGRAM("pdftotext");
    const OutsideProgram run = runVxLayout(gridArguments(path("study.pdf")) + writeStudy());
    QVERIFY2(run.succeeded(), qPrintable(run.report()));
    QVERIFY2(!run.errors().contains("vxlayout:"), run.errors().constData());

    const OutsideProgram text(QStringLiteral("pdftotext"), {path("study.pdf"), QStringLiteral("-")});
    QVERIFY2(text.succeeded(), qPrintable(text.report()));
    const QString strText = QString::fromUtf8(text.output());
    for (int nAnimal = 0; nAnimal < CTestStudyFiles::kAnimals; ++nAnimal)
        QVERIFY2(strText.contains(CTestStudyFiles::animal(nAnimal)), qPrintable(strText));
    for (const char* pHeader : {"Day 0", "Day 7", "Day 14", "Day 21"})
        QVERIFY2(strText.contains(QLatin1String(pHeader)), qPrintable(strText));
    QVERIFY2(strText.contains(QLatin1String(CTestStudyFiles::kUnit)), qPrintable(strText));
    QVERIFY2(!strText.contains(QLatin1String("missing")), qPrintable(strText));
}

void TestToolsStudyGrid::rasterFollowsSharedRange()
{
    const OutsideProgram run = runVxLayout(gridArguments(path("study.png")) + writeStudy());
    QVERIFY2(run.succeeded(), qPrintable(run.report()));
    const QImage figure(path("study.png"));
    QVERIFY(!figure.isNull());
    const int nRows = CTestStudyFiles::kAnimals;
    const int nColumns = CTestStudyFiles::kDays;
    // The range spans the lowest and the highest image: they are black and white.
    QCOMPARE(greyAt(figure, nRows, nColumns, 0, 0), 0);
    QCOMPARE(greyAt(figure, nRows, nColumns, nRows - 1, nColumns - 1), 255);
    // A brighter source is brighter in the figure, by its share of the range.
    const int nLowest = CTestStudyFiles::level(0, 0);
    const int nSpan = CTestStudyFiles::level(nRows - 1, nColumns - 1) - nLowest;
    for (int nRow = 0; nRow < nRows; ++nRow) {
        for (int nColumn = 0; nColumn < nColumns; ++nColumn) {
            const double dShare = double(CTestStudyFiles::level(nRow, nColumn) - nLowest) / nSpan;
            QVERIFY2(qAbs(greyAt(figure, nRows, nColumns, nRow, nColumn) - dShare * 255) <= 1.0,
                     qPrintable(QStringLiteral("row %1, column %2").arg(nRow).arg(nColumn)));
        }
    }
    // Equal sources look equal in different cells.
    QCOMPARE(greyAt(figure, nRows, nColumns, 0, 1), greyAt(figure, nRows, nColumns, 1, 0));
}

void TestToolsStudyGrid::givenRangeSetsTheScale()
{
    // Levels 1000 and 2000 are 510 and 1010 after the rescale; the range 510:1010 makes
    // the first black and everything from the second on white.
    const QStringList arguments = gridArguments(path("study.png")) + QStringList {"--range", "510:1010"};
    const OutsideProgram run = runVxLayout(arguments + writeStudy());
    QVERIFY2(run.succeeded(), qPrintable(run.report()));
    const QImage figure(path("study.png"));
    QCOMPARE(greyAt(figure, 3, 4, 0, 0), 0);
    QCOMPARE(greyAt(figure, 3, 4, 0, 1), 255);
    QCOMPARE(greyAt(figure, 3, 4, 2, 3), 255);
}

void TestToolsStudyGrid::provenanceNamesRowAndColumn()
{
    const OutsideProgram run =
        runVxLayout(gridArguments(path("study.png")) + QStringList {"--provenance"} + writeStudy());
    QVERIFY2(run.succeeded(), qPrintable(run.report()));
    const QString strOut = QString::fromUtf8(run.output());
    QVERIFY2(strOut.contains(QLatin1String("Images: 12")), qPrintable(strOut));
    // Every source with its row and column, whatever its number on the page.
    for (int nAnimal = 0; nAnimal < CTestStudyFiles::kAnimals; ++nAnimal) {
        for (int nDay = 0; nDay < CTestStudyFiles::kDays; ++nDay) {
            const QString strFile = CTestStudyFiles::fileName(nAnimal, nDay);
            const QRegularExpression source(QStringLiteral("Image (\\d+) Source: %1\n").arg(QRegularExpression::escape(strFile)));
            const QString strImage = source.match(strOut).captured(1);
            QVERIFY2(!strImage.isEmpty(), qPrintable(strFile));
            const QString strDate = QString::fromLatin1(CTestStudyFiles::date(nDay));
            QVERIFY2(strOut.contains(QStringLiteral("Image %1 Study Row: Patient ID %2\n")
                                         .arg(strImage, CTestStudyFiles::animal(nAnimal))),
                     qPrintable(strOut));
            QVERIFY2(strOut.contains(QStringLiteral("Image %1 Study Column: Acquisition Date %2-%3-%4 (Day %5)\n")
                                         .arg(strImage, strDate.left(4), strDate.mid(4, 2), strDate.mid(6))
                                         .arg(nDay * CTestStudyFiles::kDaysApart)),
                     qPrintable(strOut));
        }
    }
}

void TestToolsStudyGrid::missingCombinationIsMarked()
{
    VX_REQUIRE_PROGRAM("pdftotext");
    QStringList files = writeStudy();
    files.removeAll(path(CTestStudyFiles::fileName(1, 2)));
    const OutsideProgram run = runVxLayout(gridArguments(path("study.pdf")) + files);
    QVERIFY2(run.succeeded(), qPrintable(run.report()));
    const OutsideProgram text(QStringLiteral("pdftotext"), {path("study.pdf"), QStringLiteral("-")});
    QCOMPARE(QString::fromUtf8(text.output()).count(QLatin1String("missing")), 1);

    const OutsideProgram raster = runVxLayout(gridArguments(path("study.png")) + files);
    QVERIFY2(raster.succeeded(), qPrintable(raster.report()));
    // The empty cell stays white inside its grey outline.
    QCOMPARE(greyAt(QImage(path("study.png")), 3, 4, 1, 2), 255);
}

void TestToolsStudyGrid::duplicatesAreReported()
{
    QStringList files = writeStudy();
    // A second image of M2 on day 7.
    QVERIFY(CTestStudyFiles::writeImage(path("again.dcm"), 1, 1, 1234));
    files << path("again.dcm");
    const OutsideProgram run = runVxLayout(gridArguments(path("study.png")) + files);
    QVERIFY2(run.succeeded(), qPrintable(run.report()));
    const QString strErrors = QString::fromUtf8(run.errors());
    QVERIFY2(strErrors.contains(QStringLiteral("M2-day7.dcm and again.dcm are both M2, Day 7; the grid shows M2-day7.dcm.")),
             qPrintable(strErrors));
}

void TestToolsStudyGrid::filesWithoutKeyAreListed()
{
    QStringList files = writeStudy();
    QVERIFY(CTestStudyFiles::writeImage(path("anonymous.dcm"), 0, 0, 1000, 16, {{DCM_PatientID, ""}}));
    files << path("anonymous.dcm");
    const OutsideProgram run = runVxLayout(gridArguments(path("study.png")) + QStringList {"--provenance"} + files);
    QVERIFY2(run.succeeded(), qPrintable(run.report()));
    const QString strErrors = QString::fromUtf8(run.errors());
    QVERIFY2(strErrors.contains(
                 QStringLiteral("vxlayout: Left out, without \"Patient ID\" or \"Acquisition Date\": anonymous.dcm.\n")),
             qPrintable(strErrors));
    QCOMPARE(strErrors.count(QLatin1String("vxlayout:")), 1);
    QVERIFY(QString::fromUtf8(run.output()).contains(QLatin1String("Images: 12\n")));
}

void TestToolsStudyGrid::gridSizes_data()
{
    QTest::addColumn<int>("nAnimals");
    QTest::addColumn<int>("nDays");
    QTest::newRow("1 x 1") << 1 << 1;
    QTest::newRow("20 x 20") << 20 << 20;
}

void TestToolsStudyGrid::gridSizes()
{
    QFETCH(int, nAnimals);
    QFETCH(int, nDays);
    QStringList files;
    for (int nAnimal = 0; nAnimal < nAnimals; ++nAnimal) {
        for (int nDay = 0; nDay < nDays; ++nDay) {
            files << path(CTestStudyFiles::fileName(nAnimal, nDay));
            QVERIFY(CTestStudyFiles::writeImage(files.last(), nAnimal, nDay, 100 * (nAnimal + nDay), 4));
        }
    }
    const OutsideProgram run = runVxLayout(gridArguments(path("study.png")) + QStringList {"--provenance"} + files);
    QVERIFY2(run.succeeded(), qPrintable(run.report()));
    QVERIFY2(!run.errors().contains("vxlayout:"), run.errors().constData());
    const QString strOut = QString::fromUtf8(run.output());
    QVERIFY2(strOut.contains(QStringLiteral("Images: %1\n").arg(nAnimals * nDays)), qPrintable(strOut));
    const QImage figure(path("study.png"));
    // The first and the last cell hold the darkest and the brightest image.
    QCOMPARE(greyAt(figure, nAnimals, nDays, 0, 0), 0);
    if (nAnimals * nDays > 1)
        QCOMPARE(greyAt(figure, nAnimals, nDays, nAnimals - 1, nDays - 1), 255);
}

void TestToolsStudyGrid::zeroRescaleSlopeShowsStoredValues()
{
    // A slope of 0 would make every image one value; the stored levels are shown instead.
    const QStringList files = {path("a.dcm"), path("b.dcm")};
    QVERIFY(CTestStudyFiles::writeImage(files[0], 0, 0, 100, 16, {{DCM_RescaleSlope, "0"}}));
    QVERIFY(CTestStudyFiles::writeImage(files[1], 0, 1, 300, 16, {{DCM_RescaleSlope, "0"}}));
    const OutsideProgram run = runVxLayout(gridArguments(path("study.png")) + files);
    QVERIFY2(run.succeeded(), qPrintable(run.report()));
    const QImage figure(path("study.png"));
    QCOMPARE(greyAt(figure, 1, 2, 0, 0), 0);
    QCOMPARE(greyAt(figure, 1, 2, 0, 1), 255);
}

void TestToolsStudyGrid::colourPicturesAreShownAsTheyAre()
{
    // PNG files keep the keys as text chunks; a grey one has levels, a colour one has none.
    QImage grey(8, 8, QImage::Format_Grayscale8);
    grey.fill(200);
    QImage colour(8, 8, QImage::Format_RGB32);
    colour.fill(QColor(0, 0, 255));
    for (QImage* pImage : {&grey, &colour}) {
        pImage->setText(QStringLiteral("Patient ID"), QStringLiteral("M1"));
        pImage->setText(QStringLiteral("Acquisition Date"), pImage == &grey ? "2024-01-01" : "2024-01-03");
    }
    QVERIFY(grey.save(path("grey.png")));
    QVERIFY(colour.save(path("colour.png")));
    const OutsideProgram run = runVxLayout(gridArguments(path("study.png")) + QStringList {path("grey.png"), path("colour.png")});
    QVERIFY2(run.succeeded(), qPrintable(run.report()));
    QVERIFY2(run.errors().contains(
                 "vxlayout: Shown as they are, without grey levels to show through the shared range: colour.png.\n"),
             run.errors().constData());
    const QImage figure(path("study.png"));
    const QPointF centre = CVXSStudyGridPage(kPage, 1, 2, true).cellRect(0, 1).center() * kExportScale;
    QCOMPARE(figure.pixelColor(centre.toPoint()), QColor(0, 0, 255));
}

void TestToolsStudyGrid::refusesBadInput_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("changedAttribute");
    QTest::addColumn<QByteArray>("changedValue");
    // What standard error says, in pieces that must all be there.
    QTest::addColumn<QStringList>("errors");
    const QByteArray none;
    QTest::newRow("other modality") << QStringList() << QByteArray("Modality") << QByteArray("OT")
                                    << QStringList {"vxlayout: These images measure different things and cannot share "
                                                    "one display range: M1-day0.dcm (OT, BQML); M1-day7.dcm, ",
                                                    "M3-day21.dcm (PT, BQML)."};
    QTest::newRow("other unit") << QStringList() << QByteArray("Units") << QByteArray("CNTS")
                                << QStringList {"vxlayout: These images measure different things and cannot share "
                                                "one display range: M1-day7.dcm, ",
                                                "M3-day21.dcm (PT, BQML); M1-day0.dcm (PT, CNTS)."};
    QTest::newRow("date that is none") << QStringList() << QByteArray("AcquisitionDate") << QByteArray("someday")
                                       << QStringList {"vxlayout: These images' \"Acquisition Date\" is not a date "
                                                       "(give it as 2024-03-01 or 20240301): M1-day0.dcm (\"someday\")."};
    QTest::newRow("range minimum above maximum")
        << QStringList {"--range", "10:5"} << none << none
        << QStringList {"vxlayout: Bad --range \"10:5\": the minimum has to be below the maximum."};
    QTest::newRow("range not a number") << QStringList {"--range", "low:high"} << none << none
                                        << QStringList {"vxlayout: Bad --range \"low:high\": give MIN:MAX as two "
                                                        "numbers, e.g. 0:1.5e6."};
    QTest::newRow("range without colon") << QStringList {"--range", "100"} << none << none
                                         << QStringList {"vxlayout: Bad --range \"100\": give MIN:MAX as two numbers, "
                                                         "e.g. 0:1.5e6."};
    QTest::newRow("rows without columns")
        << QStringList {"--columns-by", ""} << none << none
        << QStringList {"vxlayout: A study grid needs both --rows-by and --columns-by"};
    QTest::newRow("key nobody has") << QStringList {"--rows-by", "Colour"} << none << none
                                    << QStringList {"vxlayout: Left out, without \"Colour\" or \"Acquisition Date\": "
                                                    "M1-day0.dcm, M1-day7.dcm,",
                                                    "\nvxlayout: No image has both \"Colour\" and \"Acquisition Date\""};
}

void TestToolsStudyGrid::refusesBadInput()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, changedAttribute);
    QFETCH(QByteArray, changedValue);
    QFETCH(QStringList, errors);
    const QStringList files = writeStudy();
    if (!changedAttribute.isEmpty()) {
        const DcmTagKey tag = changedAttribute == "Modality" ? DCM_Modality
                            : changedAttribute == "Units"    ? DCM_Units
                                                             : DCM_AcquisitionDate;
        QVERIFY(CTestStudyFiles::writeImage(files.first(), 0, 0, CTestStudyFiles::level(0, 0), 16, {{tag, changedValue}}));
    }
    // Later options replace earlier ones of the same name.
    const OutsideProgram run = runVxLayout(gridArguments(path("study.png")) + arguments + files);
    QVERIFY(run.finished());
    QVERIFY2(!run.succeeded(), qPrintable(run.report()));
    const QString strErrors = QString::fromUtf8(run.errors());
    QVERIFY2(strErrors.startsWith(errors.first()), qPrintable(run.report()));
    for (const QString& strPiece : errors)
        QVERIFY2(strErrors.contains(strPiece), qPrintable(strPiece));
    QVERIFY(!QFile::exists(path("study.png")));
}

QTEST_MAIN(TestToolsStudyGrid)
#include "tst_tools_studygrid.moc"
