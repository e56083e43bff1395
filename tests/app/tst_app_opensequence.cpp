#include "HostFixture.h"
#include "HostTestCase.h"
#include "ModalWatch.h"
#include "TestImageFiles.h"
#include "TestPictures.h"

#include "MessageBoxAnswer.h"

#include <VXHostMainWindow.h>
#include <VXSChildWindow.h>
#include <VXSSequenceWindow.h>

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QSize kImageSize(60, 40);
const QPoint kLeft(10, 20);

} // namespace

class TestAppOpenSequence : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void multiPageTiffOpensAsSequence_data();
    void multiPageTiffOpensAsSequence();
    void opensImagesAsOneSequence();
    void sequenceWithUnreadableFileIsNotOpened();

private:

    QString path(const QString& strName) const;

    QTemporaryDir m_dir;
};

void TestAppOpenSequence::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
}

QString TestAppOpenSequence::path(const QString& strName) const
{
    return m_dir.filePath(strName);
}

void TestAppOpenSequence::multiPageTiffOpensAsSequence_data()
{
    QTest::addColumn<bool>("asSequence");
    QTest::addColumn<int>("pages");
    QTest::newRow("open images, 3 pages") << false << 3;
    QTest::newRow("open sequence, 3 pages") << true << 3;
    QTest::newRow("open sequence, 14 pages") << true << 14;
    QTest::newRow("open sequence, single page") << true << 1;
}

void TestAppOpenSequence::multiPageTiffOpensAsSequence()
{
    QFETCH(bool, asSequence);
    QFETCH(int, pages);
    QVector<QImage> written;
    for (int i = 0; i < pages; ++i)
        written << greyImage(kImageSize, 10 + 15 * i, QImage::Format_Grayscale8);
    const QString strName = QStringLiteral("stack%1.tif").arg(pages);
    QVERIFY(CTestImageFiles::writeMultiPageTiff(path(strName), written));
    CModalWatch boxes(QMessageBox::staticMetaObject);

    if (asSequence)
        host()->window()->openSequenceFiles({path(strName)});
    else
        host()->window()->openImageFiles({path(strName)});

    QCOMPARE(boxes.seen().size(), 0);
    QCOMPARE(host()->imageWindowTitles(), QStringList {strName});
    auto* pSequence = qobject_cast<CVXSSequenceWindow*>(host()->imageWindow(0));
    QVERIFY(pSequence);
    QCOMPARE(pSequence->frameCount(), pages);
    pSequence->setCurrentFrame(pages - 1);
    QCOMPARE(qGray(pSequence->tabImage(QStringLiteral("Sequence View")).pixel(kLeft)), 10 + 15 * (pages - 1));
}

void TestAppOpenSequence::opensImagesAsOneSequence()
{
    // Frames of different sizes are allowed: the sequence window fits each one.
    const QStringList names {"t0.png", "t1.png", "t2.bmp"};
    QVERIFY(greyImage(QSize(40, 30), 20, QImage::Format_Grayscale8).save(path(names[0])));
    QVERIFY(greyImage(QSize(80, 60), 120, QImage::Format_Grayscale8).save(path(names[1])));
    QVERIFY(greyImage(QSize(20, 50), 220, QImage::Format_Grayscale8).save(path(names[2])));
    CModalWatch boxes(QMessageBox::staticMetaObject);

    host()->window()->openSequenceFiles({path(names[0]), path(names[1]), path(names[2])});

    QCOMPARE(boxes.seen().size(), 0);
    QCOMPARE(host()->imageSubWindows().size(), 1);
    QVERIFY(host()->imageWindowTitles().first().startsWith(QStringLiteral("t0.png")));
    auto* pSequence = qobject_cast<CVXSSequenceWindow*>(host()->imageWindow(0));
    QVERIFY(pSequence);
    QCOMPARE(pSequence->frameCount(), 3);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pSequence);
}

void TestAppOpenSequence::sequenceWithUnreadableFileIsNotOpened()
{
    QVERIFY(greyImage(kImageSize, 50, QImage::Format_Grayscale8).save(path("frame.png")));
    QVERIFY(CTestImageFiles::writeTruncatedCopy(path("frame.png"), path("truncated.png")));
    CSeenMessageBox seen;
    CModalWatch boxes(QMessageBox::staticMetaObject, {messageBoxAnswer(&seen, clickStandardButton(QMessageBox::Ok))});

    host()->window()->openSequenceFiles({path("frame.png"), path("truncated.png"), path("missing.png")});

    QCOMPARE(boxes.seen().size(), 1);
    QVERIFY(seen.m_strText.contains(QDir::toNativeSeparators(path("truncated.png"))));
    QVERIFY(seen.m_strText.contains(QDir::toNativeSeparators(path("missing.png"))));
    QVERIFY(seen.m_strText.contains(QStringLiteral("The sequence was not opened.")));
    QVERIFY(host()->imageSubWindows().isEmpty());
}

QTEST_MAIN(TestAppOpenSequence)
#include "tst_app_opensequence.moc"
