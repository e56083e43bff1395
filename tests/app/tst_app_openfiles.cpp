#include "HostFixture.h"
#include "HostTestCase.h"
#include "ModalWatch.h"
#include "TestImageFiles.h"

#include "MessageBoxAnswer.h"

#include <VXHostMainWindow.h>
#include <VXSChildWindow.h>

#include <QDir>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QTemporaryDir>
#include <QtTest>

namespace {

const QSize kImageSize(60, 40);
const QPoint kLeft(10, 20);
const QPoint kRight(50, 20);

QImage redBlue()
{
    return CTestImageFiles::twoHalves(kImageSize, QImage::Format_RGB32, Qt::red, Qt::blue);
}

} // namespace

class TestAppOpenFiles : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void opensImageFile_data();
    void opensImageFile();
    void opensEveryFileOfOneAction();
    void reportsUnreadableFilesInOneMessage_data();
    void reportsUnreadableFilesInOneMessage();
    void opensReadableFilesBesideUnreadable();
    void nothingChosenOpensNothing();

private:

    QString path(const QString& strName) const;
    // Writes the unreadable files the rows refer to.
    void writeUnreadableFiles() const;

    QTemporaryDir m_dir;
};

void TestAppOpenFiles::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
    writeUnreadableFiles();
}

QString TestAppOpenFiles::path(const QString& strName) const
{
    return m_dir.filePath(strName);
}

void TestAppOpenFiles::writeUnreadableFiles() const
{
    QVERIFY(CTestImageFiles::writeBytes(path("empty.png"), QByteArray()));
    QVERIFY(CTestImageFiles::writeBytes(path("corrupt.jpg"), "not a picture at all"));
    QVERIFY(CTestImageFiles::writeBytes(path("notes.txt"), "an unsupported kind of file"));
    QVERIFY(redBlue().save(path("whole.png")));
    QVERIFY(CTestImageFiles::writeTruncatedCopy(path("whole.png"), path("truncated.png")));
    QVERIFY(CTestImageFiles::writeBmpHeader(path("huge.bmp"), QSize(15000, 15000)));
}

void TestAppOpenFiles::opensImageFile_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QImage>("written");
    QTest::addColumn<QColor>("left");
    QTest::addColumn<QColor>("right");
    QTest::addColumn<int>("tolerance");
    QTest::newRow("png") << "image.png" << redBlue() << QColor(Qt::red) << QColor(Qt::blue) << 0;
    QTest::newRow("jpeg") << "image.jpeg" << redBlue() << QColor(Qt::red) << QColor(Qt::blue) << 40;
    QTest::newRow("bmp") << "image.bmp" << redBlue() << QColor(Qt::red) << QColor(Qt::blue) << 0;
    QTest::newRow("8-bit tiff") << "image8.tif"
                                << CTestImageFiles::twoHalves(kImageSize, QImage::Format_Grayscale8,
                                                              QColor(40, 40, 40), QColor(90, 90, 90))
                                << QColor(40, 40, 40) << QColor(90, 90, 90) << 0;
    QTest::newRow("16-bit tiff") << "image16.tiff"
                                 << CTestImageFiles::twoHalves(kImageSize, QImage::Format_Grayscale16,
                                                               CTestImageFiles::deepGrey(4000),
                                                               CTestImageFiles::deepGrey(9000))
                                 << QColor(Qt::black) << QColor(Qt::white) << 0;
}

void TestAppOpenFiles::opensImageFile()
{
    QFETCH(QString, fileName);
    QFETCH(QImage, written);
    QFETCH(QColor, left);
    QFETCH(QColor, right);
    QFETCH(int, tolerance);
    QVERIFY(written.save(path(fileName)));
    CModalWatch boxes(QMessageBox::staticMetaObject);

    host()->window()->openImageFiles({path(fileName)});

    QCOMPARE(boxes.seen().size(), 0);
    QCOMPARE(host()->imageWindowTitles(), QStringList {fileName});
    CVXSChildWindow* pWindow = host()->imageWindow(0);
    QVERIFY(!pWindow->isSequenceWindow());
    QVERIFY(pWindow->isVisible());
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), pWindow);
    const QImage shown = pWindow->image();
    QCOMPARE(shown.size(), kImageSize);
    QVERIFY2(CTestImageFiles::isNear(shown.pixelColor(kLeft), left, tolerance),
             qPrintable(shown.pixelColor(kLeft).name()));
    QVERIFY2(CTestImageFiles::isNear(shown.pixelColor(kRight), right, tolerance),
             qPrintable(shown.pixelColor(kRight).name()));
    // What reaches the screen is the image, not an empty window.
    const QImage drawn = pWindow->grabImage(true).convertToFormat(QImage::Format_RGB32);
    const QPoint centreLeft(drawn.width() / 4, drawn.height() / 2);
    QVERIFY2(CTestImageFiles::isNear(drawn.pixelColor(centreLeft), left, tolerance + 5),
             qPrintable(drawn.pixelColor(centreLeft).name()));
}

void TestAppOpenFiles::opensEveryFileOfOneAction()
{
    const QStringList names {"first.png", "second.bmp", "third.png"};
    for (const QString& strName : names)
        QVERIFY(redBlue().save(path(strName)));
    CModalWatch boxes(QMessageBox::staticMetaObject);

    host()->window()->openImageFiles({path(names[0]), path(names[1]), path(names[2])});

    QCOMPARE(boxes.seen().size(), 0);
    QCOMPARE(host()->imageWindowTitles(), names);
    QCOMPARE(CVXSChildWindow::getActiveChildWnd(), host()->imageWindow(2));
}

void TestAppOpenFiles::reportsUnreadableFilesInOneMessage_data()
{
    QTest::addColumn<QStringList>("fileNames");
    QTest::addColumn<QStringList>("reasons");
    QTest::newRow("corrupt") << QStringList {"corrupt.jpg"} << QStringList {"Unsupported image format"};
    QTest::newRow("truncated") << QStringList {"truncated.png"} << QStringList {"Unable to read image data"};
    QTest::newRow("empty") << QStringList {"empty.png"} << QStringList {"The file is empty."};
    QTest::newRow("missing") << QStringList {"missing.tif"} << QStringList {"File not found"};
    QTest::newRow("unsupported") << QStringList {"notes.txt"} << QStringList {"Unsupported image format"};
    QTest::newRow("too large") << QStringList {"huge.bmp"} << QStringList {"859 MiB"};
    QTest::newRow("all at once") << QStringList {"corrupt.jpg", "truncated.png", "empty.png", "missing.tif"}
                                 << QStringList {"Unsupported image format", "Unable to read image data",
                                                 "The file is empty.", "File not found"};
}

void TestAppOpenFiles::reportsUnreadableFilesInOneMessage()
{
    QFETCH(QStringList, fileNames);
    QFETCH(QStringList, reasons);
    QStringList paths;
    for (const QString& strName : fileNames)
        paths << path(strName);
    CSeenMessageBox seen;
    CModalWatch boxes(QMessageBox::staticMetaObject, {messageBoxAnswer(&seen, clickStandardButton(QMessageBox::Ok))});

    host()->window()->openImageFiles(paths);

    QVERIFY(seen.m_bShown);
    QVERIFY(seen.m_bClosedByAnswer);
    QCOMPARE(boxes.seen().size(), 1);
    QCOMPARE(seen.m_icon, QMessageBox::Warning);
    QCOMPARE(seen.m_pParent, host()->window());
    const QStringList lines = seen.m_strText.split(QLatin1Char('\n'));
    for (int i = 0; i < paths.size(); ++i) {
        const QString strLine = QDir::toNativeSeparators(paths[i]) + QStringLiteral(": ");
        auto names = [&strLine](const QString& strTextLine) { return strTextLine.startsWith(strLine); };
        const auto it = std::find_if(lines.begin(), lines.end(), names);
        QVERIFY2(it != lines.end(), qPrintable(seen.m_strText));
        QVERIFY2(it->contains(reasons[i]), qPrintable(*it));
    }
    QVERIFY(host()->imageSubWindows().isEmpty());
}

void TestAppOpenFiles::opensReadableFilesBesideUnreadable()
{
    QVERIFY(redBlue().save(path("good.png")));
    CSeenMessageBox seen;
    CModalWatch boxes(QMessageBox::staticMetaObject, {messageBoxAnswer(&seen, clickStandardButton(QMessageBox::Ok))});

    host()->window()->openImageFiles({path("corrupt.jpg"), path("good.png")});

    QCOMPARE(boxes.seen().size(), 1);
    QVERIFY(seen.m_strText.contains(QDir::toNativeSeparators(path("corrupt.jpg"))));
    QVERIFY(!seen.m_strText.contains(QStringLiteral("good.png")));
    QCOMPARE(host()->imageWindowTitles(), QStringList {"good.png"});
}

void TestAppOpenFiles::nothingChosenOpensNothing()
{
    CModalWatch boxes(QMessageBox::staticMetaObject);
    host()->window()->openImageFiles({});
    host()->window()->openSequenceFiles({});
    QCOMPARE(boxes.seen().size(), 0);
    QVERIFY(host()->imageSubWindows().isEmpty());
}

QTEST_MAIN(TestAppOpenFiles)
#include "tst_app_openfiles.moc"
