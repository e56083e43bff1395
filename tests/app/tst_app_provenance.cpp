#include "HostFixture.h"
#include "TestDicomFiles.h"
#include "TestImageFiles.h"
#include "WidgetTestCase.h"

#include <VXHostMainWindow.h>
#include <VXImageFileReader.h>
#include <VXImageProvenance.h>
#include <VXImageWindowing.h>
#include <VXSampleData.h>
#include <VXSChildWindow.h>
#include <VXSSequenceWindow.h>
#include <VXToolPluginBase.h>

#include <dcmtk/dcmdata/dcdeftag.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QTemporaryDir>
#include <QtTest>

#include <memory>

namespace {

const QSize kImageSize(40, 30);
using Keys = QMap<QString, QString>;

QString key(const char* pKey)
{
    return QString::fromLatin1(pKey);
}

// Every provenance key the image carries, with its value.
Keys provenanceOf(const QImage& image)
{
    Keys keys;
    for (const QString& strKey : CVXImageProvenance::keys()) {
        if (!image.text(strKey).isEmpty())
            keys.insert(strKey, image.text(strKey));
    }
    return keys;
}

// A DICOM file with three grey frames and the attributes that say where it came from.
CTestDicomFiles::SHeader describedDicomHeader()
{
    CTestDicomFiles::SHeader header;
    header.size = kImageSize;
    header.nFrames = 3;
    header.attributes = {
        {DCM_PatientID, "Mouse-17"},
        {DCM_StudyInstanceUID, "1.2.826.0.1.3680043.2.1143.1"},
        {DCM_SeriesInstanceUID, "1.2.826.0.1.3680043.2.1143.1.2"},
        {DCM_SOPInstanceUID, "1.2.826.0.1.3680043.2.1143.1.2.3"},
        {DCM_AcquisitionDate, "20240502"},
        {DCM_AcquisitionTime, "101530"},
        {DCM_Modality, "CT"},
        {DCM_PixelSpacing, "0.1\\0.2"},
    };
    return header;
}

QVector<quint16> greySamples(const CTestDicomFiles::SHeader& header)
{
    return QVector<quint16>(int(header.nFrames) * header.size.width() * header.size.height(), 100);
}

} // namespace

class TestAppProvenance : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void fileNamesItsSource_data();
    void fileNamesItsSource();
    void multiPageTiffNumbersItsPages();
    void dicomCarriesItsAttributes();
    void dicomPatientIdInItsCharacterSet_data();
    void dicomPatientIdInItsCharacterSet();
    void dicomWithoutAttributesHasNoneOfThem();
    void samplesNameThemselves();
    void imageWindowGrabKeepsKeys_data();
    void imageWindowGrabKeepsKeys();
    void sequenceTabsKeepKeys();
    void clipboardCopyKeepsKeys();

private:
    void endTest() override;

    QString path(const QString& strName) const;
    QString writeDescribedDicom(const QString& strName) const;
    QVector<QImage> read(const QString& strPath) const;

    QTemporaryDir m_dir;
    std::unique_ptr<CHostFixture> m_pHost;
};

void TestAppProvenance::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

void TestAppProvenance::endTest()
{
    m_pHost.reset();
}

QString TestAppProvenance::path(const QString& strName) const
{
    return m_dir.filePath(strName);
}

QString TestAppProvenance::writeDescribedDicom(const QString& strName) const
{
    const CTestDicomFiles::SHeader header = describedDicomHeader();
    return CTestDicomFiles::write(path(strName), header, greySamples(header)) ? path(strName) : QString();
}

QVector<QImage> TestAppProvenance::read(const QString& strPath) const
{
    QString strError;
    const QVector<QImage> pages = CVXImageFileReader::read(strPath, strError);
    if (pages.isEmpty())
        qWarning("%s: %s", qPrintable(strPath), qPrintable(strError));
    return pages;
}

void TestAppProvenance::fileNamesItsSource_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QImage::Format>("format");
    QTest::newRow("png") << "colour.png" << QImage::Format_RGB32;
    QTest::newRow("tiff") << "grey.tif" << QImage::Format_Grayscale8;
    // Windowed for display into a new image, which keeps the keys.
    QTest::newRow("16-bit tiff") << "deep.tiff" << QImage::Format_Grayscale16;
    QTest::newRow("non-ascii name") << QString::fromUtf8("Maus-Ä.png") << QImage::Format_RGB32;
}

void TestAppProvenance::fileNamesItsSource()
{
    QFETCH(QString, fileName);
    QFETCH(QImage::Format, format);
    QVERIFY(CTestImageFiles::twoHalves(kImageSize, format, Qt::darkGray, Qt::white).save(path(fileName)));

    const QVector<QImage> pages = read(path(fileName));

    QCOMPARE(pages.size(), 1);
    // One image needs no frame number.
    QCOMPARE(provenanceOf(pages.first()), Keys({{key(CVXImageProvenance::Source), fileName}}));
}

void TestAppProvenance::multiPageTiffNumbersItsPages()
{
    const QImage page = CTestImageFiles::twoHalves(kImageSize, QImage::Format_Grayscale8, Qt::black, Qt::white);
    QVERIFY(CTestImageFiles::writeMultiPageTiff(path("pages.tif"), {page, page, page}));

    const QVector<QImage> pages = read(path("pages.tif"));

    QCOMPARE(pages.size(), 3);
    for (int i = 0; i < pages.size(); ++i) {
        QCOMPARE(provenanceOf(pages[i]), Keys({{key(CVXImageProvenance::Source), QStringLiteral("pages.tif")},
                                               {key(CVXImageProvenance::Frame), QString::number(i + 1)},
                                               {key(CVXImageProvenance::FrameCount), QStringLiteral("3")}}));
    }
}

void TestAppProvenance::dicomCarriesItsAttributes()
{
    const QString strPath = writeDescribedDicom(QStringLiteral("scan.dcm"));
    QVERIFY(!strPath.isEmpty());

    const QVector<QImage> frames = read(strPath);

    QCOMPARE(frames.size(), 3);
    const Keys expected = {
        {key(CVXImageProvenance::Source), QStringLiteral("scan.dcm")},
        {key(CVXImageProvenance::FrameCount), QStringLiteral("3")},
        {key(CVXImageProvenance::PatientId), QStringLiteral("Mouse-17")},
        {key(CVXImageProvenance::StudyInstanceUid), QStringLiteral("1.2.826.0.1.3680043.2.1143.1")},
        {key(CVXImageProvenance::SeriesInstanceUid), QStringLiteral("1.2.826.0.1.3680043.2.1143.1.2")},
        {key(CVXImageProvenance::SopInstanceUid), QStringLiteral("1.2.826.0.1.3680043.2.1143.1.2.3")},
        {key(CVXImageProvenance::SopClassUid), QStringLiteral("1.2.840.10008.5.1.4.1.1.7")},
        {key(CVXImageProvenance::AcquisitionDate), QStringLiteral("2024-05-02")},
        {key(CVXImageProvenance::AcquisitionTime), QStringLiteral("10:15:30")},
        {key(CVXImageProvenance::Modality), QStringLiteral("CT")},
        {key(CVXImageProvenance::PixelSpacing), QStringLiteral("0.1 mm x 0.2 mm (row x column)")},
    };
    for (int i = 0; i < frames.size(); ++i) {
        Keys frameExpected = expected;
        frameExpected.insert(key(CVXImageProvenance::Frame), QString::number(i + 1));
        QCOMPARE(provenanceOf(frames[i]), frameExpected);
    }
}

void TestAppProvenance::dicomPatientIdInItsCharacterSet_data()
{
    QTest::addColumn<QByteArray>("characterSet");
    QTest::addColumn<QByteArray>("patientId");
    QTest::newRow("latin-1") << QByteArray("ISO_IR 100") << QByteArray("Maus-\xC4");
    QTest::newRow("utf-8") << QByteArray("ISO_IR 192") << QByteArray("Maus-\xC3\x84");
}

void TestAppProvenance::dicomPatientIdInItsCharacterSet()
{
    QFETCH(QByteArray, characterSet);
    QFETCH(QByteArray, patientId);
    CTestDicomFiles::SHeader header;
    header.size = kImageSize;
    header.attributes = {{DCM_SpecificCharacterSet, characterSet}, {DCM_PatientID, patientId}};
    QVERIFY(CTestDicomFiles::write(path("charset.dcm"), header, greySamples(header)));

    const QVector<QImage> frames = read(path("charset.dcm"));

    QCOMPARE(frames.size(), 1);
    QCOMPARE(frames.first().text(key(CVXImageProvenance::PatientId)), QString::fromUtf8("Maus-Ä"));
}

void TestAppProvenance::dicomWithoutAttributesHasNoneOfThem()
{
    CTestDicomFiles::SHeader header;
    header.size = kImageSize;
    QVERIFY(CTestDicomFiles::write(path("plain.dcm"), header, greySamples(header)));

    const QVector<QImage> frames = read(path("plain.dcm"));

    QCOMPARE(frames.size(), 1);
    // The test files carry only the class, the instance and the modality.
    const Keys keys = provenanceOf(frames.first());
    QCOMPARE(keys.keys(), QStringList({key(CVXImageProvenance::Modality), key(CVXImageProvenance::SopClassUid),
                                       key(CVXImageProvenance::SopInstanceUid), key(CVXImageProvenance::Source)}));
}

void TestAppProvenance::samplesNameThemselves()
{
    const QString strSource = key(CVXImageProvenance::Source);
    const QImage xray = CVXSampleData::xrayPhantom();
    QCOMPARE(xray.text(strSource), QStringLiteral("Sample X-ray phantom (generated)"));
    // The host shows the phantom windowed into a new image.
    QCOMPARE(CVXImageWindowing::toDisplay(xray).text(strSource), xray.text(strSource));
    QCOMPARE(CVXSampleData::luminescence().text(strSource), QStringLiteral("Sample luminescence image (generated)"));
    const QVector<QImage> frames = CVXSampleData::fluorescenceSequence(4);
    QCOMPARE(frames.size(), 4);
    for (int i = 0; i < frames.size(); ++i) {
        QCOMPARE(provenanceOf(frames[i]),
                 Keys({{strSource, QStringLiteral("Sample fluorescence sequence (generated)")},
                       {key(CVXImageProvenance::Frame), QString::number(i + 1)},
                       {key(CVXImageProvenance::FrameCount), QStringLiteral("4")}}));
    }
}

void TestAppProvenance::imageWindowGrabKeepsKeys_data()
{
    QTest::addColumn<bool>("grabDisplayed");
    QTest::newRow("image") << false;
    QTest::newRow("as displayed") << true;
}

void TestAppProvenance::imageWindowGrabKeepsKeys()
{
    QFETCH(bool, grabDisplayed);
    QVERIFY(CTestImageFiles::twoHalves(kImageSize, QImage::Format_RGB32, Qt::red, Qt::blue).save(path("window.png")));
    m_pHost = std::make_unique<CHostFixture>();
    m_pHost->window()->openImageFiles({path("window.png")});
    QTRY_VERIFY(m_pHost->imageWindow(0) != nullptr);

    const QImage grabbed = m_pHost->imageWindow(0)->grabImage(grabDisplayed);

    QVERIFY(!grabbed.isNull());
    const QString strSize = QStringLiteral("%1 x %2 pixels").arg(grabbed.width()).arg(grabbed.height());
    QCOMPARE(provenanceOf(grabbed), Keys({{key(CVXImageProvenance::Source), QStringLiteral("window.png")},
                                          {key(CVXImageProvenance::Window), QStringLiteral("window.png")},
                                          {key(CVXImageProvenance::ImageSize), strSize}}));
    QCOMPARE(grabbed.size() == kImageSize, !grabDisplayed);
}

void TestAppProvenance::sequenceTabsKeepKeys()
{
    const QString strPath = writeDescribedDicom(QStringLiteral("series.dcm"));
    QVERIFY(!strPath.isEmpty());
    m_pHost = std::make_unique<CHostFixture>();
    m_pHost->window()->openImageFiles({strPath});
    QTRY_VERIFY(qobject_cast<CVXSSequenceWindow*>(m_pHost->imageWindow(0)) != nullptr);
    auto* pSequence = qobject_cast<CVXSSequenceWindow*>(m_pHost->imageWindow(0));
    pSequence->setCurrentFrame(1);

    const QImage frame = pSequence->tabImage(QStringLiteral("Sequence View"));
    QCOMPARE(frame.text(key(CVXImageProvenance::Frame)), QStringLiteral("2"));
    QCOMPARE(frame.text(key(CVXImageProvenance::SequenceFrame)), QStringLiteral("2 of 3"));
    QCOMPARE(frame.text(key(CVXImageProvenance::Tab)), QStringLiteral("Sequence View"));
    QCOMPARE(frame.text(key(CVXImageProvenance::Window)), QStringLiteral("series.dcm"));
    QCOMPARE(frame.text(key(CVXImageProvenance::PatientId)), QStringLiteral("Mouse-17"));

    // The projection shows every frame: what they share stays, the frame number goes.
    const QImage projection = pSequence->tabImage(QStringLiteral("3D View"));
    QCOMPARE(projection.text(key(CVXImageProvenance::Source)), QStringLiteral("series.dcm"));
    QCOMPARE(projection.text(key(CVXImageProvenance::SopInstanceUid)), QStringLiteral("1.2.826.0.1.3680043.2.1143.1.2.3"));
    QCOMPARE(projection.text(key(CVXImageProvenance::Frame)), QString());
    QCOMPARE(projection.text(key(CVXImageProvenance::SequenceFrame)), QString());
    QCOMPARE(projection.text(key(CVXImageProvenance::Tab)), QStringLiteral("3D View"));

    QVERIFY(pSequence->setCurrentTab(QStringLiteral("Sequence View")));
    const QImage displayed = pSequence->grabImage(true);
    QCOMPARE(displayed.text(key(CVXImageProvenance::Frame)), QStringLiteral("2"));
    QCOMPARE(displayed.text(key(CVXImageProvenance::ImageSize)),
             QStringLiteral("%1 x %2 pixels").arg(displayed.width()).arg(displayed.height()));
}

void TestAppProvenance::clipboardCopyKeepsKeys()
{
    const QString strPath = writeDescribedDicom(QStringLiteral("copied.dcm"));
    QVERIFY(!strPath.isEmpty());
    QVERIFY(CTestImageFiles::twoHalves(kImageSize, QImage::Format_RGB32, Qt::red, Qt::blue).save(path("single.png")));
    m_pHost = std::make_unique<CHostFixture>();
    m_pHost->window()->openImageFiles({strPath});
    QTRY_VERIFY(m_pHost->imageWindow(0) != nullptr);
    auto* pSequence = qobject_cast<CVXSSequenceWindow*>(m_pHost->imageWindow(0));
    QVERIFY(pSequence);

    QVERIFY(pSequence->copyTabToClipboard(QStringLiteral("Thumbnails")));
    QImage copied = QGuiApplication::clipboard()->image();
    QCOMPARE(copied.text(key(CVXImageProvenance::Tab)), QStringLiteral("Thumbnails"));
    QCOMPARE(copied.text(key(CVXImageProvenance::PatientId)), QStringLiteral("Mouse-17"));

    // A tool asks the host for a copy of the active image window.
    m_pHost->window()->openImageFiles({path("single.png")});
    QTRY_COMPARE(CVXSChildWindow::getActiveChildWnd(), m_pHost->imageWindow(1));
    CVXToolPluginBase tool;
    tool.shootCopyToClipBoard(QString());
    copied = QGuiApplication::clipboard()->image();
    QCOMPARE(copied.text(key(CVXImageProvenance::Source)), QStringLiteral("single.png"));
    QCOMPARE(copied.text(key(CVXImageProvenance::Window)), QStringLiteral("single.png"));
}

QTEST_MAIN(TestAppProvenance)
#include "tst_app_provenance.moc"
