#include "LayoutFixture.h"
#include "TestPictures.h"
#include "WidgetTestCase.h"

#include <VXImageProvenance.h>
#include <host/VXSActiveDatasetGrabber.h>
#include <VXSChildWindow.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>
#include <output/VXSLayoutProvenance.h>
#include <VXSLayoutWindow.h>
#include <VXSSequenceWindow.h>

#include <QClipboard>
#include <QGraphicsScene>
#include <QGuiApplication>
#include <QtTest>

#include <memory>

namespace {

using Keys = CVXSLayoutProvenance::Keys;

constexpr int kFreeStyle = 0;
constexpr int kLayout2x1 = 2;
constexpr int kLayout4x4 = 8;
const QSize kSourceSize(60, 40);

QString key(const char* pKey)
{
    return QString::fromLatin1(pKey);
}

QString imageKey(int nImage, const char* pKey)
{
    return CVXImageProvenance::imageKey(nImage, key(pKey));
}

QImage keyedImage(const Keys& keys, QColor colour = Qt::darkCyan)
{
    QImage image = solidImage(kSourceSize, colour);
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        image.setText(it.key(), it.value());
    return image;
}

// A frame of a DICOM series as the host's reader describes it.
Keys dicomFrameKeys()
{
    return {{key(CVXImageProvenance::Source), QStringLiteral("scan.dcm")},
            {key(CVXImageProvenance::Frame), QStringLiteral("2")},
            {key(CVXImageProvenance::PatientId), QStringLiteral("Mouse-17")},
            {key(CVXImageProvenance::AcquisitionDate), QStringLiteral("2024-05-02")},
            {key(CVXImageProvenance::AcquisitionTime), QStringLiteral("10:15:30")},
            {key(CVXImageProvenance::SeriesInstanceUid), QStringLiteral("1.2.3.4")}};
}

Keys plainFileKeys()
{
    return {{key(CVXImageProvenance::Source), QStringLiteral("photo.png")}};
}

// A UID of the longest form, 64 characters, different for every n.
QString longUid(int n)
{
    const QString strStem = QStringLiteral("1.2.826.0.1.3680043.10.1234.");
    const QString strTail = QStringLiteral(".%1").arg(n);
    return strStem + QString(64 - strStem.size() - strTail.size(), QLatin1Char('9')) + strTail;
}

} // namespace

class TestLayoutProvenance : public CWidgetTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();

    void pageNamesBothImagesInZOrder();
    void raisingAnImageChangesItsNumber();
    void sourceWithoutKeysGivesNoSourceParts();
    void freeStyleHasNoCells();
    void methodsParagraphNamesEveryImage();
    void clipboardPasteKeepsKeys();
    void activeDatasetGrabKeepsKeys();
    void extremeValuesArriveWhole_data();
    void extremeValuesArriveWhole();
    void sixteenDicomSourcesInOrder();

private:
    void endTest() override;

    Keys renderedKeys() const;

    std::unique_ptr<LayoutFixture> m_pFixture;
};

void TestLayoutProvenance::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestLayoutProvenance::init()
{
    m_pFixture = std::make_unique<LayoutFixture>(QSize(500, 400));
}

void TestLayoutProvenance::endTest()
{
    m_pFixture.reset();
}

Keys TestLayoutProvenance::renderedKeys() const
{
    return CVXSLayoutProvenance::keysOf(m_pFixture->manager()->renderLayoutImage(1.0));
}

void TestLayoutProvenance::pageNamesBothImagesInZOrder()
{
    m_pFixture->chooseStyle(kLayout2x1);
    m_pFixture->pasteImage(keyedImage(dicomFrameKeys()));
    m_pFixture->pasteImage(keyedImage(plainFileKeys()));

    const QImage page = m_pFixture->manager()->renderLayoutImage(1.0);
    const Keys keys = CVXSLayoutProvenance::keysOf(page);

    QCOMPARE(keys.value(key(CVXSLayoutProvenance::LayoutStyle)), QStringLiteral("Layout 2x1"));
    QCOMPARE(keys.value(key(CVXSLayoutProvenance::Grid)), QStringLiteral("2 x 1"));
    QCOMPARE(keys.value(key(CVXSLayoutProvenance::PageSize)), QStringLiteral("496 x 396 layout units"));
    QCOMPARE(keys.value(key(CVXImageProvenance::ImageSize)),
             QStringLiteral("%1 x %2 pixels").arg(page.width()).arg(page.height()));
    QVERIFY(keys.value(key(CVXSLayoutProvenance::Software)).startsWith(QStringLiteral("Vexor Image Layout")));
    QVERIFY(!keys.value(key(CVXSLayoutProvenance::SoftwareVersion)).isEmpty());
    QVERIFY(QDateTime::fromString(keys.value(key(CVXSLayoutProvenance::Date)), Qt::ISODate).isValid());
    QCOMPARE(keys.value(key(CVXImageProvenance::ImageCount)), QStringLiteral("2"));
    QCOMPARE(keys.value(imageKey(1, CVXSLayoutProvenance::Cell)), QStringLiteral("1, row 1, column 1"));
    QCOMPARE(keys.value(imageKey(2, CVXSLayoutProvenance::Cell)), QStringLiteral("2, row 1, column 2"));
    const Keys frameKeys = dicomFrameKeys();
    for (auto it = frameKeys.cbegin(); it != frameKeys.cend(); ++it)
        QCOMPARE(keys.value(CVXImageProvenance::imageKey(1, it.key())), it.value());
    QCOMPARE(keys.value(imageKey(2, CVXImageProvenance::Source)), QStringLiteral("photo.png"));
    QVERIFY(keys.value(imageKey(1, CVXSLayoutProvenance::Position)).startsWith(QStringLiteral("x ")));
    QVERIFY(!keys.contains(imageKey(3, CVXImageProvenance::Source)));
}

void TestLayoutProvenance::raisingAnImageChangesItsNumber()
{
    m_pFixture->chooseStyle(kLayout2x1);
    CVXSLayoutItemImage* pFirst = m_pFixture->pasteImage(keyedImage(dicomFrameKeys()));
    CVXSLayoutItemImage* pSecond = m_pFixture->pasteImage(keyedImage(plainFileKeys()));

    pFirst->setZValue(pSecond->zValue() + 1);
    const Keys keys = renderedKeys();

    QCOMPARE(keys.value(imageKey(1, CVXImageProvenance::Source)), QStringLiteral("photo.png"));
    QCOMPARE(keys.value(imageKey(1, CVXSLayoutProvenance::Cell)), QStringLiteral("2, row 1, column 2"));
    QCOMPARE(keys.value(imageKey(2, CVXImageProvenance::Source)), QStringLiteral("scan.dcm"));
    QCOMPARE(keys.value(imageKey(2, CVXSLayoutProvenance::Cell)), QStringLiteral("1, row 1, column 1"));
}

void TestLayoutProvenance::sourceWithoutKeysGivesNoSourceParts()
{
    m_pFixture->chooseStyle(kLayout2x1);
    // A file's own text, such as a camera's comment, is no key of the host.
    m_pFixture->pasteImage(keyedImage({{QStringLiteral("Comment"), QStringLiteral("camera text")}}));
    m_pFixture->pasteImage(keyedImage(plainFileKeys()));

    const Keys keys = renderedKeys();

    // The image from outside has its cell and place, nothing else.
    QStringList firstImageKeys;
    for (const QString& strKey : keys.keys()) {
        if (strKey.startsWith(QStringLiteral("Image 1 ")))
            firstImageKeys << strKey;
    }
    QCOMPARE(firstImageKeys, QStringList({imageKey(1, CVXSLayoutProvenance::Cell),
                                          imageKey(1, CVXSLayoutProvenance::Position)}));
    QCOMPARE(keys.value(imageKey(2, CVXImageProvenance::Source)), QStringLiteral("photo.png"));
    QVERIFY(CVXSLayoutProvenance::methodsParagraph(keys).contains(
        QStringLiteral("Image 1 (cell 1, row 1, column 1) has no recorded source.")));
}

void TestLayoutProvenance::freeStyleHasNoCells()
{
    m_pFixture->chooseStyle(kFreeStyle);
    m_pFixture->pasteImage(keyedImage(plainFileKeys()));

    const Keys keys = renderedKeys();

    // The style box may speak another language; the key does not.
    QCOMPARE(keys.value(key(CVXSLayoutProvenance::LayoutStyle)), QStringLiteral("Free style"));
    QVERIFY(!keys.contains(key(CVXSLayoutProvenance::Grid)));
    QVERIFY(!keys.contains(imageKey(1, CVXSLayoutProvenance::Cell)));
    QVERIFY(CVXSLayoutProvenance::methodsParagraph(keys).startsWith(
        QStringLiteral("Figure assembled from 1 image placed freely on the page: Image 1 (placed freely) shows "
                       "photo.png.")));
}

void TestLayoutProvenance::methodsParagraphNamesEveryImage()
{
    m_pFixture->chooseStyle(kLayout2x1);
    m_pFixture->pasteImage(keyedImage(dicomFrameKeys()));
    m_pFixture->pasteImage(keyedImage(plainFileKeys()));
    const Keys keys = renderedKeys();

    const QString strMethods = CVXSLayoutProvenance::methodsParagraph(keys);

    const QString strExpected =
        QStringLiteral("Figure assembled from 2 images in a 2 x 1 grid: "
                       "Image 1 (cell 1, row 1, column 1) shows frame 2 of scan.dcm (animal Mouse-17, "
                       "acquired 2024-05-02 10:15:30, series 1.2.3.4). "
                       "Image 2 (cell 2, row 1, column 2) shows photo.png. "
                       "Assembled with %1 %2 on %3.\n")
            .arg(keys.value(key(CVXSLayoutProvenance::Software)),
                 keys.value(key(CVXSLayoutProvenance::SoftwareVersion)),
                 QDate::currentDate().toString(Qt::ISODate));
    QCOMPARE(strMethods, strExpected);
}

void TestLayoutProvenance::clipboardPasteKeepsKeys()
{
    m_pFixture->chooseStyle(kLayout2x1);
    QGuiApplication::clipboard()->setImage(keyedImage(dicomFrameKeys()));

    m_pFixture->window()->onClickClipBoardPaste();

    QCOMPARE(renderedKeys().value(imageKey(1, CVXImageProvenance::PatientId)), QStringLiteral("Mouse-17"));
}

void TestLayoutProvenance::activeDatasetGrabKeepsKeys()
{
    CVXSChildWindow imageWindow(keyedImage(plainFileKeys()));
    imageWindow.setWindowTitle(QStringLiteral("Photo"));
    CVXSSequenceWindow sequenceWindow({keyedImage(dicomFrameKeys()), keyedImage(dicomFrameKeys(), Qt::red)});
    // Tabs other than the frame and the projection come through the clipboard.
    const CVXSActiveDatasetGrabber grabber(
        [&sequenceWindow](const QString& strTabName) { sequenceWindow.copyTabToClipboard(strTabName); });
    QVERIFY(sequenceWindow.setCurrentTab(QStringLiteral("Thumbnails")));

    const QImage image = grabber.grab(&imageWindow);
    QImage thumbnails = grabber.grab(&sequenceWindow);
    m_pFixture->chooseStyle(kLayout2x1);
    m_pFixture->window()->addImageToLayout(thumbnails);

    QCOMPARE(image.text(key(CVXImageProvenance::Source)), QStringLiteral("photo.png"));
    QCOMPARE(image.text(key(CVXImageProvenance::Window)), QStringLiteral("Photo"));
    QCOMPARE(thumbnails.text(key(CVXImageProvenance::Tab)), QStringLiteral("Thumbnails"));
    QCOMPARE(thumbnails.text(key(CVXImageProvenance::PatientId)), QStringLiteral("Mouse-17"));
    // The window converts what it pastes for drawing; the keys stay.
    QCOMPARE(renderedKeys().value(imageKey(1, CVXImageProvenance::Tab)), QStringLiteral("Thumbnails"));
}

void TestLayoutProvenance::extremeValuesArriveWhole_data()
{
    QTest::addColumn<QString>("value");
    QTest::newRow("non-ascii") << QString::fromUtf8("Maus-Ä \u6CE8 \U0001F42D");
    QTest::newRow("10000 characters") << QString(10000, QLatin1Char('x'));
    QTest::newRow("line breaks") << QStringLiteral("first\nsecond\r\nthird");
}

void TestLayoutProvenance::extremeValuesArriveWhole()
{
    QFETCH(QString, value);
    m_pFixture->chooseStyle(kLayout2x1);
    m_pFixture->pasteImage(keyedImage({{key(CVXImageProvenance::Source), value},
                                       {key(CVXImageProvenance::PatientId), value}}));

    const Keys keys = renderedKeys();

    QCOMPARE(keys.value(imageKey(1, CVXImageProvenance::Source)), value);
    QCOMPARE(keys.value(imageKey(1, CVXImageProvenance::PatientId)), value);
    // The description keeps one line per key.
    const QString strDescription = CVXSLayoutProvenance::describe(keys);
    QVERIFY(strDescription.contains(imageKey(1, CVXImageProvenance::Source) + QStringLiteral(": ")
                                    + value.simplified() + QLatin1Char('\n')));
    QCOMPARE(strDescription.count(QLatin1Char('\n')), keys.size());
}

void TestLayoutProvenance::sixteenDicomSourcesInOrder()
{
    m_pFixture->chooseStyle(kLayout4x4);
    for (int n = 1; n <= 16; ++n) {
        m_pFixture->pasteImage(keyedImage({{key(CVXImageProvenance::Source), QStringLiteral("frame%1.dcm").arg(n)},
                                           {key(CVXImageProvenance::SopInstanceUid), longUid(n)},
                                           {key(CVXImageProvenance::SeriesInstanceUid), longUid(100 + n)}}));
    }

    const Keys keys = renderedKeys();

    QCOMPARE(keys.value(key(CVXImageProvenance::ImageCount)), QStringLiteral("16"));
    for (int n = 1; n <= 16; ++n) {
        QCOMPARE(keys.value(imageKey(n, CVXImageProvenance::SopInstanceUid)), longUid(n));
        QCOMPARE(keys.value(imageKey(n, CVXImageProvenance::SopInstanceUid)).size(), 64);
        QCOMPARE(keys.value(imageKey(n, CVXSLayoutProvenance::Cell)).section(QLatin1Char(','), 0, 0),
                 QString::number(n));
    }
    const QString strMethods = CVXSLayoutProvenance::methodsParagraph(keys);
    QVERIFY(strMethods.contains(QStringLiteral("Image 16 (cell 16, row 4, column 4) shows frame16.dcm (series %1).")
                                    .arg(longUid(116))));
}

QTEST_MAIN(TestLayoutProvenance)
#include "tst_layout_provenance.moc"
