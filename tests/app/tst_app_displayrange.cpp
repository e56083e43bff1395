#include "HostFixture.h"
#include "MessageBoxAnswer.h"
#include "ModalWatch.h"
#include "TestDicomFiles.h"
#include "WidgetTestCase.h"

#include <VXDisplayRange.h>
#include <VXHostMainWindow.h>
#include <VXImageFileReader.h>
#include <VXSChildWindow.h>
#include <VXSSequenceWindow.h>

#include <dcmtk/dcmdata/dcdeftag.h>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLabel>
#include <QMap>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

#include <algorithm>

namespace {

const QSize kSize(60, 20);
// Three bands of stored values, left to right.
const QVector<quint16> kStored = {1000, 2000, 3000};

QPoint bandCentre(int nBand)
{
    return QPoint(kSize.width() * (2 * nBand + 1) / 6, kSize.height() / 2);
}

QVector<quint16> bandSamples()
{
    QVector<quint16> samples;
    for (int y = 0; y < kSize.height(); ++y) {
        for (int x = 0; x < kSize.width(); ++x)
            samples << kStored.at(x * 3 / kSize.width());
    }
    return samples;
}

// A 16-bit grey DICOM file of the three bands with these attributes.
bool writeDicom(const QString& strPath, std::vector<std::pair<DcmTagKey, QByteArray>> attributes)
{
    CTestDicomFiles::SHeader header;
    header.nBits = 16;
    header.size = kSize;
    header.attributes = std::move(attributes);
    return CTestDicomFiles::write(strPath, header, bandSamples());
}

// A 16-bit grey PNG of the three bands with these text keys.
bool writeDeepPng(const QString& strPath, const QMap<QString, QString>& keys = {})
{
    QImage image(kSize, QImage::Format_Grayscale16);
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        image.setText(it.key(), it.value());
    for (int y = 0; y < kSize.height(); ++y) {
        auto* pLine = reinterpret_cast<quint16*>(image.scanLine(y));
        for (int x = 0; x < kSize.width(); ++x)
            pLine[x] = kStored.at(x * 3 / kSize.width());
    }
    return image.save(strPath);
}

bool writePhoto(const QString& strPath)
{
    QImage photo(kSize, QImage::Format_RGB32);
    photo.fill(QColor(180, 140, 90));
    return photo.save(strPath);
}

// The window's whole data range, minimum and maximum; not numbers where it has none.
QPair<double, double> dataRangeOf(const CVXSChildWindow* pWindow)
{
    double dMinimum = qQNaN();
    double dMaximum = qQNaN();
    if (!pWindow->dataRange(dMinimum, dMaximum))
        return qMakePair(qQNaN(), qQNaN());
    return qMakePair(dMinimum, dMaximum);
}

void typeValue(QDoubleSpinBox* pBox, const QString& strText)
{
    QTest::keyClick(pBox, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClicks(pBox, strText);
    QTest::keyClick(pBox, Qt::Key_Return);
}

} // namespace

// Display ranges in the host: DICOM files' rescale and units, and "Apply to All" across the
// open windows.
class TestAppDisplayRange : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void readsRescaleAndUnits_data();
    void readsRescaleAndUnits();
    void unitAddedWithDcmodifyIsRead();
    void pngKeysGiveUnitAndRescale();
    void signedValuesKeepTheirSign();
    void defaultDisplayOfDicomIsUnchanged();
    void rangeInTheFileUnitChangesThePixels();
    void zeroSlopeShowsStoredValues();
    void multiFrameDicomKeepsEveryFramesLevels();
    void applyToAllSkipsOtherModalitiesAndUnits();
    void applyToAllMatchesImagesWithoutUnits();

private:
    QString path(const QString& strName) const;
    // Opens the files in the host; each must open.
    static void openAll(CHostFixture& host, const QStringList& paths);
    // Shows the window's bar and types the range into it.
    static void typeRange(CVXSChildWindow* pWindow, const QString& strMinimum, const QString& strMaximum);

    QTemporaryDir m_dir;
};

void TestAppDisplayRange::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

QString TestAppDisplayRange::path(const QString& strName) const
{
    return m_dir.filePath(strName);
}

void TestAppDisplayRange::openAll(CHostFixture& host, const QStringList& paths)
{
    QCOMPARE(host.window()->openImageFiles(paths), paths);
}

void TestAppDisplayRange::typeRange(CVXSChildWindow* pWindow, const QString& strMinimum, const QString& strMaximum)
{
    pWindow->setDisplayRangeBarVisible(true);
    // The minimum first when it rises above the old maximum would be refused.
    typeValue(pWindow->findChild<QDoubleSpinBox*>(QStringLiteral("displayRangeMaximum")), strMaximum);
    typeValue(pWindow->findChild<QDoubleSpinBox*>(QStringLiteral("displayRangeMinimum")), strMinimum);
}

void TestAppDisplayRange::readsRescaleAndUnits_data()
{
    QTest::addColumn<QByteArray>("slope");
    QTest::addColumn<QByteArray>("intercept");
    QTest::addColumn<QByteArray>("units");
    QTest::addColumn<QByteArray>("rescaleType");
    QTest::addColumn<QString>("unit");
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::newRow("units") << QByteArray("0.5") << QByteArray("-100") << QByteArray("BQML") << QByteArray()
                           << "BQML" << 400.0 << 1400.0;
    QTest::newRow("rescale type") << QByteArray("1") << QByteArray("-1024") << QByteArray() << QByteArray("HU")
                                  << "HU" << -24.0 << 1976.0;
    QTest::newRow("units before rescale type") << QByteArray("2") << QByteArray("0") << QByteArray("CNTS")
                                               << QByteArray("US") << "CNTS" << 2000.0 << 6000.0;
    QTest::newRow("unspecified rescale type") << QByteArray("2") << QByteArray("0") << QByteArray()
                                              << QByteArray("US") << "" << 2000.0 << 6000.0;
    QTest::newRow("no rescale") << QByteArray() << QByteArray() << QByteArray() << QByteArray() << "" << 1000.0
                                << 3000.0;
}

void TestAppDisplayRange::readsRescaleAndUnits()
{
    QFETCH(QByteArray, slope);
    QFETCH(QByteArray, intercept);
    QFETCH(QByteArray, units);
    QFETCH(QByteArray, rescaleType);
    QFETCH(QString, unit);
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    std::vector<std::pair<DcmTagKey, QByteArray>> attributes = {{DCM_Modality, "PT"}};
    for (const auto& attribute : {std::make_pair(DCM_RescaleSlope, slope), std::make_pair(DCM_RescaleIntercept, intercept),
                                  std::make_pair(DCM_Units, units), std::make_pair(DCM_RescaleType, rescaleType)}) {
        if (!attribute.second.isEmpty())
            attributes.push_back(attribute);
    }
    QVERIFY(writeDicom(path(QStringLiteral("rescaled.dcm")), attributes));
    CHostFixture host;
    openAll(host, {path(QStringLiteral("rescaled.dcm"))});

    CVXSChildWindow* pWindow = host.imageWindow(0);
    QVERIFY(pWindow->hasLevels());
    const CVXDisplayRange range = pWindow->displayRange();
    QCOMPARE(range.unit(), unit);
    QCOMPARE(range.modality(), QStringLiteral("PT"));
    QCOMPARE(dataRangeOf(pWindow), qMakePair(minimum, maximum));
    pWindow->setDisplayRangeBarVisible(true);
    const QString strUnitShown = pWindow->findChild<QLabel*>(QStringLiteral("displayRangeUnit"))->text();
    QCOMPARE(strUnitShown, unit.isEmpty() ? QStringLiteral("(raw values)") : unit);
}

void TestAppDisplayRange::unitAddedWithDcmodifyIsRead()
{
    const QString strPath = path(QStringLiteral("modified.dcm"));
    QVERIFY(writeDicom(strPath, {{DCM_Modality, "PT"}}));
    QProcess dcmodify;
    dcmodify.start(QStringLiteral("dcmodify"), {QStringLiteral("-nb"), QStringLiteral("-i"), QStringLiteral("(0054,1001)=CNTS"),
                                                QStringLiteral("-i"), QStringLiteral("(0028,1053)=0.25"), strPath});
    QVERIFY2(dcmodify.waitForFinished(30000) && dcmodify.exitCode() == 0, dcmodify.readAllStandardError().constData());

    QString strError;
    const QVector<CVXImagePage> pages = CVXImageFileReader::readWithLevels(strPath, strError);
    QVERIFY2(strError.isEmpty(), qPrintable(strError));
    QCOMPARE(pages.size(), 1);
    QCOMPARE(pages.first().levels.format(), QImage::Format_Grayscale16);
    const CVXDisplayRange range = CVXDisplayRange::fromImage(pages.first().picture);
    QCOMPARE(range.unit(), QStringLiteral("CNTS"));
    QCOMPARE(range.slope(), 0.25);
    QCOMPARE(range.valueOf(2000), 500.0);
}

void TestAppDisplayRange::signedValuesKeepTheirSign()
{
    // Stored -500, 2000 and 3000 as 16-bit two's complement once the file says its values are
    // signed.
    const QString strPath = path(QStringLiteral("signed.dcm"));
    CTestDicomFiles::SHeader header;
    header.nBits = 16;
    header.size = kSize;
    header.attributes = {{DCM_Modality, "CT"}, {DCM_RescaleIntercept, "-1024"}, {DCM_RescaleType, "HU"}};
    QVector<quint16> samples = bandSamples();
    std::replace(samples.begin(), samples.end(), quint16(1000), quint16(-500));
    QVERIFY(CTestDicomFiles::write(strPath, header, samples));
    QProcess dcmodify;
    dcmodify.start(QStringLiteral("dcmodify"), {QStringLiteral("-nb"), QStringLiteral("-m"), QStringLiteral("(0028,0103)=1"), strPath});
    QVERIFY2(dcmodify.waitForFinished(30000) && dcmodify.exitCode() == 0, dcmodify.readAllStandardError().constData());
    CHostFixture host;
    openAll(host, {strPath});
    CVXSChildWindow* pWindow = host.imageWindow(0);

    QCOMPARE(pWindow->displayRange().unit(), QStringLiteral("HU"));
    QCOMPARE(dataRangeOf(pWindow), qMakePair(-1524.0, 1976.0));
    QVERIFY(pWindow->setDisplayRange(-1524, 1976, QStringLiteral("grey")));
    // 2000 stored is 976 HU: five sevenths of the way up.
    QCOMPARE(qGray(pWindow->image().pixel(bandCentre(0))), 0);
    QCOMPARE(qGray(pWindow->image().pixel(bandCentre(1))), 182);
    QCOMPARE(qGray(pWindow->image().pixel(bandCentre(2))), 255);
}

void TestAppDisplayRange::pngKeysGiveUnitAndRescale()
{
    const QString strUnit = QString::fromUtf8("p/s/cm²/sr");
    QVERIFY(writeDeepPng(path(QStringLiteral("radiance.png")),
                         {{QString::fromLatin1(CVXDisplayRange::Quantity), QStringLiteral("Radiance")},
                          {QString::fromLatin1(CVXDisplayRange::Unit), strUnit},
                          {QString::fromLatin1(CVXDisplayRange::RescaleSlope), QStringLiteral("1e4")},
                          {QString::fromLatin1(CVXDisplayRange::RescaleIntercept), QStringLiteral("5e3")}}));
    CHostFixture host;
    openAll(host, {path(QStringLiteral("radiance.png"))});
    CVXSChildWindow* pWindow = host.imageWindow(0);

    const CVXDisplayRange range = pWindow->displayRange();
    QCOMPARE(range.quantityLabel(), QStringLiteral("Radiance (%1)").arg(strUnit));
    // Stored 1000 to 3000: 1.0005e7 to 3.0005e7 p/s/cm²/sr.
    QCOMPARE(range.minimum(), 1.0005e7);
    QCOMPARE(range.maximum(), 3.0005e7);
    typeRange(pWindow, QStringLiteral("20005000"), QStringLiteral("30005000"));
    QCOMPARE(qGray(pWindow->image().pixel(bandCentre(1))), 0);
    QCOMPARE(qGray(pWindow->image().pixel(bandCentre(2))), 255);
    QCOMPARE(pWindow->grabImage(false).text(QString::fromLatin1(CVXDisplayRange::Unit)), strUnit);
}

void TestAppDisplayRange::defaultDisplayOfDicomIsUnchanged()
{
    const QString strPath = path(QStringLiteral("windowed.dcm"));
    CTestDicomFiles::SHeader header;
    header.nBits = 16;
    header.size = kSize;
    header.strWindowCentre = QStringLiteral("2000");
    header.strWindowWidth = QStringLiteral("1000");
    QVERIFY(CTestDicomFiles::write(strPath, header, bandSamples()));
    QString strError;
    const QImage picture = CVXImageFileReader::read(strPath, strError).value(0);
    QVERIFY2(strError.isEmpty(), qPrintable(strError));

    CHostFixture host;
    openAll(host, {strPath});
    CVXSChildWindow* pWindow = host.imageWindow(0);

    QVERIFY(pWindow->isDefaultDisplay());
    QCOMPARE(pWindow->image().format(), picture.format());
    QCOMPARE(pWindow->image(), picture);
    // The default is the file's window: its edges are the range handed over.
    const QImage handed = pWindow->grabImage(false);
    QCOMPARE(handed.text(QString::fromLatin1(CVXDisplayRange::Minimum)), QStringLiteral("1500"));
    QCOMPARE(handed.text(QString::fromLatin1(CVXDisplayRange::Maximum)), QStringLiteral("2499"));
}

void TestAppDisplayRange::rangeInTheFileUnitChangesThePixels()
{
    QVERIFY(writeDicom(path(QStringLiteral("pet.dcm")), {{DCM_Modality, "PT"}, {DCM_RescaleSlope, "0.5"},
                                                         {DCM_RescaleIntercept, "-100"}, {DCM_Units, "BQML"}}));
    CHostFixture host;
    openAll(host, {path(QStringLiteral("pet.dcm"))});
    CVXSChildWindow* pWindow = host.imageWindow(0);

    // Stored 1000, 2000, 3000 are 400, 900, 1400 Bq/ml.
    typeRange(pWindow, QStringLiteral("400"), QStringLiteral("1400"));

    QCOMPARE(pWindow->displayRange().minimum(), 400.0);
    QCOMPARE(pWindow->displayRange().maximum(), 1400.0);
    QCOMPARE(qGray(pWindow->image().pixel(bandCentre(0))), 0);
    QCOMPARE(qGray(pWindow->image().pixel(bandCentre(1))), 127);
    QCOMPARE(qGray(pWindow->image().pixel(bandCentre(2))), 255);
}

void TestAppDisplayRange::zeroSlopeShowsStoredValues()
{
    QVERIFY(writeDicom(path(QStringLiteral("zero.dcm")), {{DCM_RescaleSlope, "0"}, {DCM_RescaleIntercept, "50"}}));
    CHostFixture host;
    openAll(host, {path(QStringLiteral("zero.dcm"))});
    CVXSChildWindow* pWindow = host.imageWindow(0);

    const CVXDisplayRange range = pWindow->displayRange();
    QCOMPARE(range.slope(), 1.0);
    QCOMPARE(range.intercept(), 0.0);
    QCOMPARE(range.rescaleNote(), QString::fromLatin1(CVXDisplayRange::ZeroSlopeNote));
    QCOMPARE(dataRangeOf(pWindow), qMakePair(1000.0, 3000.0));
    QVERIFY(pWindow->setDisplayRange(1000, 3000, QStringLiteral("grey")));
    QCOMPARE(qGray(pWindow->image().pixel(bandCentre(1))), 127);
    // The reason travels with the image handed over.
    QCOMPARE(pWindow->grabImage(false).text(QString::fromLatin1(CVXDisplayRange::RescaleNote)),
             QString::fromLatin1(CVXDisplayRange::ZeroSlopeNote));
}

void TestAppDisplayRange::multiFrameDicomKeepsEveryFramesLevels()
{
    CTestDicomFiles::SHeader header;
    header.nBits = 16;
    header.size = kSize;
    header.nFrames = 3;
    header.attributes = {{DCM_Modality, "PT"}, {DCM_Units, "BQML"}};
    // Each frame 1000 above the one before.
    QVector<quint16> samples;
    for (int nFrame = 0; nFrame < 3; ++nFrame) {
        for (quint16 nStored : bandSamples())
            samples << quint16(nStored + 1000 * nFrame);
    }
    QVERIFY(CTestDicomFiles::write(path(QStringLiteral("frames.dcm")), header, samples));
    CHostFixture host;
    openAll(host, {path(QStringLiteral("frames.dcm"))});
    auto* pSequence = qobject_cast<CVXSSequenceWindow*>(host.imageWindow(0));
    QVERIFY(pSequence);
    QVERIFY(pSequence->hasLevels());
    QCOMPARE(dataRangeOf(pSequence), qMakePair(1000.0, 5000.0));

    QVERIFY(pSequence->setDisplayRange(2000, 3000, QStringLiteral("grey")));

    // Band 1 is 2000, 3000 and 4000 in the three frames.
    const int expected[] = {0, 255, 255};
    for (int nFrame = 0; nFrame < 3; ++nFrame) {
        pSequence->setCurrentFrame(nFrame);
        QCOMPARE(qGray(pSequence->tabImage(QStringLiteral("Sequence View")).pixel(bandCentre(1))), expected[nFrame]);
    }
    pSequence->setCurrentFrame(0);
    QCOMPARE(qGray(pSequence->tabImage(QStringLiteral("Sequence View")).pixel(bandCentre(2))), 255);
    QCOMPARE(qGray(pSequence->tabImage(QStringLiteral("Sequence View")).pixel(bandCentre(0))), 0);
}

void TestAppDisplayRange::applyToAllSkipsOtherModalitiesAndUnits()
{
    const std::vector<std::pair<DcmTagKey, QByteArray>> pet = {{DCM_Modality, "PT"}, {DCM_RescaleSlope, "0.5"},
                                                              {DCM_Units, "BQML"}};
    QVERIFY(writeDicom(path(QStringLiteral("day1.dcm")), pet));
    QVERIFY(writeDicom(path(QStringLiteral("day2.dcm")), pet));
    QVERIFY(writeDicom(path(QStringLiteral("ct.dcm")), {{DCM_Modality, "CT"}, {DCM_RescaleType, "HU"}}));
    QVERIFY(writeDicom(path(QStringLiteral("counts.dcm")), {{DCM_Modality, "PT"}, {DCM_Units, "CNTS"}}));
    QVERIFY(writePhoto(path(QStringLiteral("photo.png"))));
    CHostFixture host;
    openAll(host, {path(QStringLiteral("day1.dcm")), path(QStringLiteral("day2.dcm")), path(QStringLiteral("ct.dcm")),
                   path(QStringLiteral("counts.dcm")), path(QStringLiteral("photo.png"))});
    CVXSChildWindow* pFirst = host.imageWindow(0);
    typeRange(pFirst, QStringLiteral("600"), QStringLiteral("1200"));
    pFirst->findChild<QComboBox*>(QStringLiteral("displayRangeTable"))->setFocus();
    QTest::keyClicks(pFirst->findChild<QComboBox*>(QStringLiteral("displayRangeTable")), QStringLiteral("Magma"));
    QCOMPARE(pFirst->displayRange().tableName(), QStringLiteral("magma"));

    CSeenMessageBox seen;
    CModalWatch boxes(QMessageBox::staticMetaObject, {messageBoxAnswer(&seen, clickStandardButton(QMessageBox::Ok))});
    QTest::mouseClick(pFirst->findChild<QPushButton*>(QStringLiteral("displayRangeApplyToAll")), Qt::LeftButton);

    QVERIFY(seen.m_bShown);
    QVERIFY2(seen.m_strText.contains(QStringLiteral("applied to 1 other window.")), qPrintable(seen.m_strText));
    QVERIFY2(seen.m_strText.contains(QStringLiteral("3 windows were left as they were")), qPrintable(seen.m_strText));
    QVERIFY2(seen.m_strText.contains(QStringLiteral("ct.dcm: modality CT, unit HU, not modality PT, unit BQML")),
             qPrintable(seen.m_strText));
    QVERIFY2(seen.m_strText.contains(QStringLiteral("counts.dcm: modality PT, unit CNTS")), qPrintable(seen.m_strText));
    QVERIFY2(seen.m_strText.contains(QStringLiteral("photo.png: a colour image")), qPrintable(seen.m_strText));
    const CVXDisplayRange second = host.imageWindow(1)->displayRange();
    QCOMPARE(second.minimum(), 600.0);
    QCOMPARE(second.maximum(), 1200.0);
    QCOMPARE(second.tableName(), QStringLiteral("magma"));
    QCOMPARE(host.imageWindow(1)->image(), pFirst->image());
    for (int i = 2; i < 5; ++i)
        QVERIFY2(host.imageWindow(i)->isDefaultDisplay(), qPrintable(host.imageWindowTitles().at(i)));
}

void TestAppDisplayRange::applyToAllMatchesImagesWithoutUnits()
{
    QVERIFY(writeDeepPng(path(QStringLiteral("raw1.png"))));
    QVERIFY(writeDeepPng(path(QStringLiteral("raw2.png"))));
    QVERIFY(writeDicom(path(QStringLiteral("pet.dcm")), {{DCM_Modality, "PT"}, {DCM_Units, "BQML"}}));
    CHostFixture host;
    openAll(host, {path(QStringLiteral("raw1.png")), path(QStringLiteral("raw2.png")), path(QStringLiteral("pet.dcm"))});
    CVXSChildWindow* pFirst = host.imageWindow(0);
    // The 16-bit files are shown stretched as before; their levels are there for a range.
    QCOMPARE(qGray(pFirst->image().pixel(bandCentre(1))), 127);
    typeRange(pFirst, QStringLiteral("1500"), QStringLiteral("2500"));

    CSeenMessageBox seen;
    CModalWatch boxes(QMessageBox::staticMetaObject, {messageBoxAnswer(&seen, clickStandardButton(QMessageBox::Ok))});
    QTest::mouseClick(pFirst->findChild<QPushButton*>(QStringLiteral("displayRangeApplyToAll")), Qt::LeftButton);

    QVERIFY2(seen.m_strText.contains(QStringLiteral("pet.dcm: modality PT, unit BQML, not no modality, no unit")),
             qPrintable(seen.m_strText));
    QCOMPARE(host.imageWindow(1)->displayRange().minimum(), 1500.0);
    QCOMPARE(qGray(host.imageWindow(1)->image().pixel(bandCentre(0))), 0);
    QCOMPARE(qGray(host.imageWindow(1)->image().pixel(bandCentre(1))), 127);
    QVERIFY(host.imageWindow(2)->isDefaultDisplay());

    // With none to skip, the bar says how many took the range.
    host.imageSubWindows().at(2)->close();
    QTRY_COMPARE(host.imageWindowTitles().size(), 2);
    QTest::mouseClick(pFirst->findChild<QPushButton*>(QStringLiteral("displayRangeApplyToAll")), Qt::LeftButton);
    QCOMPARE(pFirst->findChild<QLabel*>(QStringLiteral("displayRangeMessage"))->text(),
             QStringLiteral("The display range was applied to 1 other window."));
}

QTEST_MAIN(TestAppDisplayRange)
#include "tst_app_displayrange.moc"
