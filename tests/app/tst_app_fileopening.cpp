#include "HostFixture.h"
#include "HostTestCase.h"

#include "ModalWatch.h"
#include "OutsideProgram.h"
#include "TestPictures.h"
#include "TestImageFiles.h"

#include <VXHostCommandLine.h>
#include <VXHostMainWindow.h>
#include <VXHostStartup.h>

#include <QAction>
#include <QElapsedTimer>
#include <QMdiSubWindow>
#include <QMessageBox>
#include <QMimeData>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int kQuitAfterMs = 1500;
constexpr int kAllowedMs = 30000;
// A layout file of format version 1: two images, a text, a rectangle, an ellipse and three
// lines or arrows.
constexpr int kItemsInLayout = 8;

QString layoutWindowTitle(const CHostFixture& host)
{
    const QMdiSubWindow* pSubWindow = host.layoutSubWindow();
    return pSubWindow ? pSubWindow->widget()->windowTitle() : QString();
}

// Sends the drag's entry and its drop to the widget, as the window system does for a
// drop on it; true when both were taken.
bool dropUrls(QWidget* pTarget, const QList<QUrl>& urls)
{
    QMimeData data;
    data.setUrls(urls);
    const QPoint position = pTarget->rect().center();
    QDragEnterEvent enter(position, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(pTarget, &enter);
    QDropEvent drop(position, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, Qt::NoModifier);
    QApplication::sendEvent(pTarget, &drop);
    return enter.isAccepted() && drop.isAccepted() && drop.dropAction() == Qt::CopyAction;
}

QList<QUrl> fileUrls(const QStringList& paths)
{
    QList<QUrl> urls;
    for (const QString& strPath : paths)
        urls << QUrl::fromLocalFile(strPath);
    return urls;
}

} // namespace

// Files reach the host the usual ways: on the command line (through the start-up that
// main runs, and the real program) and dropped on the main window. Layout files open in
// the Image Layout window, images as windows; what cannot be opened is reported in a
// message and the host keeps running.
class TestAppFileOpening : public CHostTestCase
{
    Q_OBJECT
private slots:
    void initTestCase();

    void commandLineOpensLayoutAndImage();
    void badLayoutOnCommandLine_data();
    void badLayoutOnCommandLine();
    void programOpensLayout_data();
    void programOpensLayout();
    void droppedFilesOpen();
    void droppedBadFiles_data();
    void droppedBadFiles();
    void dragWithoutFilesIsRefused();

private:

    QString path(const QString& strName) const;
    // Runs the start-up main runs with these arguments after the program's name.
    void startWith(const QStringList& arguments);

    QTemporaryDir m_dir;
};

QString TestAppFileOpening::path(const QString& strName) const
{
    return m_dir.filePath(strName);
}

void TestAppFileOpening::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
    QVERIFY(solidImage(QSize(64, 48), Qt::darkCyan, QImage::Format_RGB32).save(path("image.png")));
    const QString strLayout = QStringLiteral(VX_LAYOUT_TEST_DATA "/layout-v1.vxlayout");
    QVERIFY(QFile::copy(strLayout, path("figure.vxlayout")));
    QVERIFY(CTestImageFiles::writeTruncatedCopy(strLayout, path("truncated.vxlayout")));
    QVERIFY(CTestImageFiles::writeBytes(path("text.vxlayout"), "not a zip archive"));
    QVERIFY(CTestImageFiles::writeBytes(path("notes.txt"), "a few words, no image"));
    QVERIFY(QDir(m_dir.path()).mkdir("folder"));
    QVERIFY(QFile::link(path("gone.vxlayout"), path("dangling.vxlayout")));
    // The same layout as a later format version would write it, entries in the same order.
    const OutsideProgram newer(QStringLiteral("python3"),
                               {QStringLiteral("-c"),
                                QStringLiteral("import json, sys, zipfile\n"
                                               "source = zipfile.ZipFile(sys.argv[1])\n"
                                               "with zipfile.ZipFile(sys.argv[2], 'w') as target:\n"
                                               "    for entry in source.infolist():\n"
                                               "        data = source.read(entry.filename)\n"
                                               "        if entry.filename == 'layout.json':\n"
                                               "            data = json.dumps(dict(json.loads(data), version=99)).encode()\n"
                                               "        target.writestr(entry, data)\n"),
                                strLayout, path("newer.vxlayout")});
    QVERIFY2(newer.succeeded(), qPrintable(newer.report()));
}

void TestAppFileOpening::startWith(const QStringList& arguments)
{
    CVXHostCommandLine commandLine;
    QVERIFY(commandLine.parse(QStringList {"vxhost", "--no-samples"} + arguments));
    CVXHostStartup::run(*host()->window(), commandLine);
}

void TestAppFileOpening::commandLineOpensLayoutAndImage()
{
    CModalWatch messages(QMessageBox::staticMetaObject);
    startWith({path("figure.vxlayout"), path("image.png")});
    QCOMPARE(messages.seenTexts(), QStringList());
    QVERIFY(host()->layoutSubWindow() && host()->layoutSubWindow()->isVisible());
    QCOMPARE(host()->layoutItemCount(), kItemsInLayout);
    QVERIFY2(layoutWindowTitle(*host()).contains("figure.vxlayout"), qPrintable(layoutWindowTitle(*host())));
    QCOMPARE(host()->imageWindowTitles(), QStringList {"image.png"});
}

void TestAppFileOpening::badLayoutOnCommandLine_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    QTest::newRow("truncated") << "truncated.vxlayout" << "";
    QTest::newRow("no zip archive") << "text.vxlayout" << "";
    QTest::newRow("newer format version") << "newer.vxlayout" << "newer version";
    QTest::newRow("missing") << "missing.vxlayout" << "";
    QTest::newRow("link to a missing file") << "dangling.vxlayout" << "";
}

void TestAppFileOpening::badLayoutOnCommandLine()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);
    CModalWatch messages(QMessageBox::staticMetaObject);
    // The image after the bad layout still opens.
    startWith({path(file), path("image.png")});
    QCOMPARE(messages.seenTexts().size(), 1);
    const QString strText = messages.seenTexts().first();
    QVERIFY2(strText.startsWith("The layout could not be opened.\n"), qPrintable(strText));
    QVERIFY2(strText.contains(reason), qPrintable(strText));
    QCOMPARE(host()->layoutItemCount(), 0);
    QCOMPARE(host()->imageWindowTitles(), QStringList {"image.png"});
    QVERIFY(host()->window()->isVisible());
}

void TestAppFileOpening::programOpensLayout_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("opens");
    QTest::newRow("layout") << "figure.vxlayout" << true;
    // The message about the file is still open when the program is told to quit.
    QTest::newRow("truncated layout") << "truncated.vxlayout" << false;
    QTest::newRow("newer layout") << "newer.vxlayout" << false;
}

void TestAppFileOpening::programOpensLayout()
{
    QFETCH(QString, file);
    QFETCH(bool, opens);
    // The program keeps its recent files in its own settings, here in a folder of this run.
    QTemporaryDir config;
    QVERIFY(config.isValid());
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), config.path());
    process.setProcessEnvironment(environment);
    QElapsedTimer timer;
    timer.start();
    process.start(QStringLiteral(VXHOST_EXECUTABLE), {"-platform", "offscreen", "--no-samples", "--quit-after-ms",
                                                      QString::number(kQuitAfterMs), path(file)});
    QVERIFY2(process.waitForStarted(), qPrintable(process.errorString()));
    QVERIFY2(process.waitForFinished(kAllowedMs), "the program did not quit");
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    // It kept running until told to quit.
    QVERIFY(timer.elapsed() >= kQuitAfterMs);
    // Only a file that opened joins the recent files.
    const QSettings settings(config.filePath("Halvard/Vexor/settings.ini"), QSettings::IniFormat);
    const QStringList recent = settings.value("RecentFiles/paths").toStringList();
    QCOMPARE(recent, opens ? QStringList {path(file)} : QStringList());
}

void TestAppFileOpening::droppedFilesOpen()
{
    CModalWatch messages(QMessageBox::staticMetaObject);
    QVERIFY(dropUrls(host()->window(), fileUrls({path("image.png"), path("figure.vxlayout")})));
    QTRY_COMPARE(host()->layoutItemCount(), kItemsInLayout);
    QCOMPARE(host()->imageWindowTitles(), QStringList {"image.png"});
    QVERIFY(host()->layoutSubWindow()->isVisible());
    QCOMPARE(messages.seenTexts(), QStringList());
}

void TestAppFileOpening::droppedBadFiles_data()
{
    QTest::addColumn<QList<QUrl>>("urls");
    QTest::addColumn<QStringList>("expected");
    QTest::addColumn<QStringList>("windows");
    const QString strFolder = QDir::toNativeSeparators(path("folder"));
    QTest::newRow("folder") << fileUrls({path("folder"), path("image.png")})
                            << QStringList {"These files could not be opened:\n\n" + strFolder
                                            + ": this is a folder; open the files in it instead"}
                            << QStringList {"image.png"};
    QTest::newRow("unknown kind")
        << fileUrls({path("notes.txt")})
        << QStringList {"These files could not be opened:\n\n" + QDir::toNativeSeparators(path("notes.txt"))
                        + ": this kind of file cannot be opened; the program opens images (PNG, JPEG, BMP, TIFF, "
                          "DICOM), *.vxlayout"}
        << QStringList();
    QTest::newRow("web address") << QList<QUrl> {QUrl("https://example.org/figure.png")}
                                 << QStringList {"These files could not be opened:\n\n"
                                                 "https://example.org/figure.png: only files on this computer can be opened"}
                                 << QStringList();
    QTest::newRow("corrupt layout") << fileUrls({path("truncated.vxlayout"), path("image.png")})
                                    << QStringList {"The layout could not be opened.\n"} << QStringList {"image.png"};
    QTest::newRow("newer layout") << fileUrls({path("newer.vxlayout")})
                                  << QStringList {"The layout could not be opened.\n"} << QStringList();
}

void TestAppFileOpening::droppedBadFiles()
{
    QFETCH(QList<QUrl>, urls);
    QFETCH(QStringList, expected);
    QFETCH(QStringList, windows);
    CModalWatch messages(QMessageBox::staticMetaObject);
    QVERIFY(dropUrls(host()->window(), urls));
    QTRY_COMPARE(messages.seenTexts().size(), expected.size());
    for (int i = 0; i < expected.size(); ++i)
        QVERIFY2(messages.seenTexts().at(i).startsWith(expected.at(i)), qPrintable(messages.seenTexts().at(i)));
    QCOMPARE(host()->imageWindowTitles(), windows);
    QVERIFY(host()->layoutItemCount() <= 0);
    QVERIFY(host()->window()->isVisible());
}

void TestAppFileOpening::dragWithoutFilesIsRefused()
{
    QMimeData data;
    data.setText(QStringLiteral("some words"));
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QApplication::sendEvent(host()->window(), &enter);
    QVERIFY(!enter.isAccepted());
}

QTEST_MAIN(TestAppFileOpening)
#include "tst_app_fileopening.moc"
