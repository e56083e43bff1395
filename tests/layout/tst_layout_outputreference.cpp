#include "ExportReadBack.h"
#include "LayoutFixture.h"
#include "SamplePage.h"
#include "WidgetTestCase.h"

#include <output/VXSExportFormats.h>
#include <VXSImageExporter.h>
#include <VXSLayoutManager.h>
#include <VXStatus.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

struct Style
{
    const char* pName;
    int nIndex;
};

constexpr Style kStyles[] = {{"grid", 3}, {"free", 0}};

// The outputs pinned: the rendered page at the clipboard's and the export's scale, and each
// export format as its reader sees the file.
constexpr const char* kOutputs[] = {"scale1", "scale4", "bmp", "jpg", "png", "eps", "tif", "wmf", "emf", "dcm"};

// JPEG's pixels are pinned by the file itself, which is much smaller than its pixels as PNG.
QString referenceSuffix(const QString& strOutput)
{
    return strOutput == QLatin1String("jpg") ? strOutput : QStringLiteral("png");
}

// "grid png" is pinned by "grid-png.png".
QString referenceName(const QString& strOutput)
{
    return QString::fromLatin1(QTest::currentDataTag()).replace(QLatin1Char(' '), QLatin1Char('-'))
        + QLatin1Char('.') + referenceSuffix(strOutput);
}

// How many pixels differ, and the first of them: "x, y: reference, rendered".
QString differences(const QImage& reference, const QImage& rendered)
{
    int nDifferent = 0;
    QString strFirst;
    for (int y = 0; y < reference.height(); ++y) {
        for (int x = 0; x < reference.width(); ++x) {
            if (reference.pixel(x, y) == rendered.pixel(x, y))
                continue;
            if (nDifferent++ == 0)
                strFirst = QStringLiteral("%1, %2: %3, %4")
                               .arg(x)
                               .arg(y)
                               .arg(reference.pixel(x, y), 8, 16)
                               .arg(rendered.pixel(x, y), 8, 16);
        }
    }
    return QStringLiteral("%1 pixels differ, the first at %2").arg(nDifferent).arg(strFirst);
}

} // namespace

// The raster output of a page with every kind of item, in every format, against what the
// output gave before the renderer learnt to draw on vector devices: reducing, drawing and
// encoding must not change a single pixel. VX_WRITE_REFERENCES=<folder> writes this build's
// output into the folder instead, for a deliberate change of the output.
class TestLayoutOutputReference : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void outputMatchesTheReference_data();
    void outputMatchesTheReference();

private:
    void endTest() override;

    // The page as the output gives it: the rendered image, or the file exported.
    bool produce(const QString& strOutput, const QString& strPath);
    QImage readBack(const QString& strPath);

    std::unique_ptr<LayoutFixture> m_pFixture;
    QTemporaryDir m_dir;
};

void TestLayoutOutputReference::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

void TestLayoutOutputReference::endTest()
{
    m_pFixture.reset();
}

void TestLayoutOutputReference::outputMatchesTheReference_data()
{
    QTest::addColumn<int>("style");
    QTest::addColumn<QString>("output");
    for (const Style& style : kStyles) {
        for (const char* pOutput : kOutputs)
            QTest::addRow("%s %s", style.pName, pOutput) << style.nIndex << QString::fromLatin1(pOutput);
    }
}

void TestLayoutOutputReference::outputMatchesTheReference()
{
    QFETCH(int, style);
    QFETCH(QString, output);
    const QStringList missing = ExportReadBack::missingPrograms(output);
    if (!missing.isEmpty())
        QSKIP(qPrintable(missing.join(QStringLiteral(", ")) + QStringLiteral(" missing; scripts/install-deps.sh installs it")));
    m_pFixture = std::make_unique<LayoutFixture>(SamplePage::viewSize());
    SamplePage::fill(*m_pFixture, style);

    const QString strName = referenceName(output);
    const QString strWriteTo = qEnvironmentVariable("VX_WRITE_REFERENCES");
    if (!strWriteTo.isEmpty()) {
        QVERIFY(produce(output, QDir(strWriteTo).filePath(strName)));
        QSKIP("reference written");
    }
    const QString strPath = m_dir.filePath(strName);
    QVERIFY(produce(output, strPath));
    const QImage page = readBack(strPath);
    const QImage reference = readBack(QStringLiteral(VX_LAYOUT_TEST_DATA "/reference/") + strName);
    QVERIFY(!page.isNull());
    QVERIFY(!reference.isNull());
    QCOMPARE(page.size(), reference.size());
    QVERIFY2(page == reference, qPrintable(differences(reference, page)));
}

bool TestLayoutOutputReference::produce(const QString& strOutput, const QString& strPath)
{
    if (strOutput == QLatin1String("scale1"))
        return m_pFixture->manager()->renderLayoutImage(1.0).save(strPath);
    QImage page = m_pFixture->manager()->renderLayoutImage(VXSExportFormats::ExportScale);
    if (strOutput == QLatin1String("scale4"))
        return page.save(strPath);
    // Each format through the exporter, then read back as others read it.
    QString strExport = m_dir.filePath(QStringLiteral("page.") + strOutput);
    CVXSImageExporter exporter;
    const tag_estatus status = exporter.saveImage(page, strExport);
    if (status != eSTATUS_SUCCESS) {
        qWarning("cannot export %s: %s", qPrintable(strExport), qPrintable(vxStatusText(status)));
        return false;
    }
    if (strOutput == QLatin1String("jpg")) {
        QFile::remove(strPath);
        return QFile::rename(strExport, strPath);
    }
    const QImage read = readBack(strExport);
    return !read.isNull() && read.save(strPath);
}

QImage TestLayoutOutputReference::readBack(const QString& strPath)
{
    ExportReadBack reader;
    const QImage read = reader.read(strPath, m_pFixture->manager()->renderLayoutImage(VXSExportFormats::ExportScale).size());
    if (read.isNull())
        qWarning("cannot read %s: %s", qPrintable(strPath), qPrintable(reader.errorText()));
    return read;
}

QTEST_MAIN(TestLayoutOutputReference)
#include "tst_layout_outputreference.moc"
