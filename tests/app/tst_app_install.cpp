#include "OutsideProgram.h"
#include "TestPictures.h"

#include <QMimeDatabase>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QtTest>

namespace {

constexpr int kQuitAfterMs = 1500;
constexpr int kAllowedMs = 60000;
const QString kLayoutType = QStringLiteral("application/x-vexor-layout");

// The environment of a user's session without a display and without anything that points
// into the build tree.
QProcessEnvironment environmentWithoutDisplay()
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* pName : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "LD_LIBRARY_PATH", "QT_PLUGIN_PATH"})
        environment.remove(QString::fromLatin1(pName));
    return environment;
}

struct CRun
{
    int m_nExitCode = -1;
    QByteArray m_output;
    QByteArray m_errors;
};

CRun run(const QString& strProgram, const QStringList& arguments, const QProcessEnvironment& environment)
{
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(strProgram, arguments);
    CRun result;
    if (!process.waitForFinished(kAllowedMs) || process.exitStatus() != QProcess::NormalExit)
        return result;
    result.m_nExitCode = process.exitCode();
    result.m_output = process.readAllStandardOutput();
    result.m_errors = process.readAllStandardError();
    return result;
}

} // namespace

// cmake --install into a new prefix gives a tree that works: the programs, the host's
// libraries and its tool plugin, found from wherever the tree lies; a .desktop file and a
// MIME type that the desktop's own checkers accept; icons rendered from their SVG files.
class TestAppInstall : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void treeHoldsEverything_data();
    void treeHoldsEverything();
    void iconsAreRenderedFromTheirSvg_data();
    void iconsAreRenderedFromTheirSvg();
    void desktopFileIsValid();
    void desktopDatabaseKnowsTheTypes();
    void mimeTypeIsValid();
    void mimeTypeRecognisesLayouts_data();
    void mimeTypeRecognisesLayouts();
    void qtKnowsLayoutType();
    void programsReportTheirVersion_data();
    void programsReportTheirVersion();
    void hostHelpNeedsNoDisplay();
    void installedHostOpensLayoutWithItsTool();
    void installedBatchProgramWrites();

private:
    QString installed(const QString& strRelative) const;
    QString work(const QString& strName) const;

    QTemporaryDir m_prefix;
    QTemporaryDir m_work;
};

QString TestAppInstall::installed(const QString& strRelative) const
{
    return m_prefix.filePath(strRelative);
}

QString TestAppInstall::work(const QString& strName) const
{
    return m_work.filePath(strName);
}

void TestAppInstall::initTestCase()
{
    QVERIFY(m_prefix.isValid() && m_work.isValid());
    const OutsideProgram install(QStringLiteral(VX_CMAKE_COMMAND),
                                 {"--install", QStringLiteral(VX_BUILD_DIR), "--prefix", m_prefix.path()});
    QVERIFY2(install.succeeded(), qPrintable(install.report()));
    // The layout under other names, and a zip file of another kind, for the MIME type.
    for (const char* pName : {"figure.vxlayout", "figure", "figure.zip"})
        QVERIFY(QFile::copy(QStringLiteral(VX_LAYOUT_TEST_DATA "/layout-v1.vxlayout"), work(QString::fromLatin1(pName))));
    VX_REQUIRE_PROGRAM("python3");
    const OutsideProgram zip(QStringLiteral("python3"),
                             {"-c", "import sys, zipfile\nzipfile.ZipFile(sys.argv[1], 'w').writestr('notes.txt', 'x')",
                              work("archive")});
    QVERIFY2(zip.succeeded(), qPrintable(zip.report()));
    QVERIFY(solidImage(QSize(64, 48), Qt::darkCyan, QImage::Format_RGB32).save(work("image.png")));
    // The installed data next to the system's, as a desktop session sees them once the prefix
    // is among its data folders. Qt reads the folders when it first needs a MIME type.
    qputenv("XDG_DATA_DIRS", (installed(QStringLiteral(VX_INSTALL_DATADIR)) + ":/usr/share").toLocal8Bit());
    // The MIME database's own compiler reads the type and writes the cache desktops read.
    VX_REQUIRE_PROGRAM("update-mime-database");
    const OutsideProgram update(QStringLiteral("update-mime-database"),
                                {installed(QStringLiteral(VX_INSTALL_DATADIR "/mime"))});
    QVERIFY2(update.succeeded() && update.output().isEmpty(), qPrintable(update.report()));
}

void TestAppInstall::treeHoldsEverything_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("program");
    const QString strLib = QStringLiteral(VX_INSTALL_LIBDIR);
    const QString strBin = QStringLiteral(VX_INSTALL_BINDIR);
    const QString strShare = QStringLiteral(VX_INSTALL_DATADIR);
    QTest::newRow("host") << strBin + "/vxhost" << true;
    QTest::newRow("batch program") << strBin + "/vxlayout" << true;
    QTest::newRow("utilities library") << strLib + "/libvxutils.so.1" << false;
    QTest::newRow("plugin interface library") << strLib + "/libvxapi.so.1" << false;
    QTest::newRow("layout tool") << QStringLiteral(VX_TOOL_PLUGIN_INSTALL_DIR "/libvximagelayout.so") << false;
    QTest::newRow("desktop file") << strShare + "/applications/vxhost.desktop" << false;
    QTest::newRow("MIME type") << strShare + "/mime/packages/vxhost.xml" << false;
    QTest::newRow("scalable application icon") << strShare + "/icons/hicolor/scalable/apps/vxhost.svg" << false;
    QTest::newRow("scalable layout icon")
        << strShare + "/icons/hicolor/scalable/mimetypes/application-x-vexor-layout.svg" << false;
}

void TestAppInstall::treeHoldsEverything()
{
    QFETCH(QString, file);
    QFETCH(bool, program);
    const QFileInfo info(installed(file));
    QVERIFY2(info.isFile(), qPrintable(info.filePath()));
    QCOMPARE(info.isExecutable(), program);
}

void TestAppInstall::iconsAreRenderedFromTheirSvg_data()
{
    QTest::addColumn<QString>("icon");
    QTest::addColumn<int>("side");
    for (const char* pIcon : {"apps/vxhost", "mimetypes/application-x-vexor-layout"}) {
        for (int nSide : {16, 22, 24, 32, 48, 64, 128, 256})
            QTest::addRow("%s %d", pIcon, nSide) << QString::fromLatin1(pIcon) << nSide;
    }
}

void TestAppInstall::iconsAreRenderedFromTheirSvg()
{
    QFETCH(QString, icon);
    QFETCH(int, side);
    VX_REQUIRE_PROGRAM("rsvg-convert");
    const QString strTheme = installed(QStringLiteral(VX_INSTALL_DATADIR "/icons/hicolor"));
    const QImage png(QStringLiteral("%1/%2x%2/%3.png").arg(strTheme).arg(side).arg(icon));
    QCOMPARE(png.size(), QSize(side, side));
    // The installed SVG rendered by librsvg at that size gives the same pixels.
    const QString strRendered = work(QStringLiteral("rendered-%1.png").arg(side));
    const OutsideProgram render(QStringLiteral("rsvg-convert"),
                                {"--width", QString::number(side), "--height", QString::number(side), "--output",
                                 strRendered, QStringLiteral("%1/scalable/%2.svg").arg(strTheme, icon)});
    QVERIFY2(render.succeeded(), qPrintable(render.report()));
    QCOMPARE(png.convertToFormat(QImage::Format_ARGB32), QImage(strRendered).convertToFormat(QImage::Format_ARGB32));
    // Corners are see-through, the middle is drawn.
    QCOMPARE(png.pixelColor(side / 2, side / 2).alpha(), 255);
    QCOMPARE(png.pixelColor(0, 0).alpha(), 0);
}

void TestAppInstall::desktopFileIsValid()
{
    VX_REQUIRE_PROGRAM("desktop-file-validate");
    const QString strFile = installed(QStringLiteral(VX_INSTALL_DATADIR "/applications/vxhost.desktop"));
    const OutsideProgram validate(QStringLiteral("desktop-file-validate"), {strFile});
    QVERIFY2(validate.succeeded(), qPrintable(validate.report()));
    // Not even a hint.
    QCOMPARE(validate.output(), QByteArray());

    const QSettings entry(strFile, QSettings::IniFormat);
    QCOMPARE(entry.value("Desktop Entry/Exec").toString(), QStringLiteral("vxhost %F"));
    const QString strIcon = entry.value("Desktop Entry/Icon").toString();
    QVERIFY(QFileInfo::exists(installed(QStringLiteral(VX_INSTALL_DATADIR "/icons/hicolor/scalable/apps/%1.svg").arg(strIcon))));
    QVERIFY(QFileInfo::exists(installed(QStringLiteral(VX_INSTALL_DATADIR "/icons/hicolor/48x48/apps/%1.png").arg(strIcon))));
}

void TestAppInstall::desktopDatabaseKnowsTheTypes()
{
    VX_REQUIRE_PROGRAM("update-desktop-database");
    const QString strFolder = installed(QStringLiteral(VX_INSTALL_DATADIR "/applications"));
    const OutsideProgram update(QStringLiteral("update-desktop-database"), {strFolder});
    QVERIFY2(update.succeeded(), qPrintable(update.report()));
    QFile cache(strFolder + "/mimeinfo.cache");
    QVERIFY(cache.open(QIODevice::ReadOnly));
    const QByteArray content = cache.readAll();
    for (const char* pType : {"application/x-vexor-layout", "image/png", "image/jpeg", "image/bmp", "image/tiff",
                              "application/dicom"})
        QVERIFY2(content.contains(QByteArray(pType) + "=vxhost.desktop;"), pType);
}

void TestAppInstall::mimeTypeIsValid()
{
    VX_REQUIRE_PROGRAM("xmllint");
    const QString strFile = installed(QStringLiteral(VX_INSTALL_DATADIR "/mime/packages/vxhost.xml"));
    const OutsideProgram lint(QStringLiteral("xmllint"), {"--noout", strFile});
    QVERIFY2(lint.succeeded(), qPrintable(lint.report()));
    QCOMPARE(lint.output(), QByteArray());
    // update-mime-database (run at start) took the type in.
    QVERIFY(QFileInfo::exists(installed(QStringLiteral(VX_INSTALL_DATADIR "/mime/application/x-vexor-layout.xml"))));
}

void TestAppInstall::mimeTypeRecognisesLayouts_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("icon");
    QTest::newRow("layout") << "figure.vxlayout" << kLayoutType << "application-x-vexor-layout";
    QTest::newRow("layout without suffix") << "figure" << kLayoutType << "application-x-vexor-layout";
    QTest::newRow("layout named as zip") << "figure.zip" << "application/zip" << "application-zip";
    QTest::newRow("other zip without suffix") << "archive" << "application/zip" << "application-zip";
}

void TestAppInstall::mimeTypeRecognisesLayouts()
{
    QFETCH(QString, file);
    QFETCH(QString, type);
    QFETCH(QString, icon);
    // GLib's reader of the database, as file managers use it.
    VX_REQUIRE_PROGRAM("gio");
    const OutsideProgram info(QStringLiteral("gio"), {"info", "-a", "standard::content-type,standard::icon", work(file)});
    QVERIFY2(info.succeeded(), qPrintable(info.report()));
    const QString strOutput = QString::fromUtf8(info.output());
    QVERIFY2(strOutput.contains("standard::content-type: " + type + "\n"), qPrintable(strOutput));
    QVERIFY2(strOutput.contains("standard::icon: " + icon + ","), qPrintable(strOutput));
}

void TestAppInstall::qtKnowsLayoutType()
{
    const QMimeType type = QMimeDatabase().mimeTypeForFile(work("figure.vxlayout"));
    QCOMPARE(type.name(), kLayoutType);
    QVERIFY(type.inherits(QStringLiteral("application/zip")));
    QCOMPARE(type.iconName(), QStringLiteral("application-x-vexor-layout"));
    QCOMPARE(type.comment(), QStringLiteral("Vexor image layout"));
}

void TestAppInstall::programsReportTheirVersion_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("expected");
    QTest::newRow("host") << VX_INSTALL_BINDIR "/vxhost" << "Vexor " VX_EXPECTED_VERSION "\n";
    QTest::newRow("batch program") << VX_INSTALL_BINDIR "/vxlayout" << "vxlayout " VX_EXPECTED_VERSION "\n";
}

void TestAppInstall::programsReportTheirVersion()
{
    QFETCH(QString, program);
    QFETCH(QString, expected);
    const CRun result = run(installed(program), {"--version"}, environmentWithoutDisplay());
    QCOMPARE(result.m_nExitCode, 0);
    QCOMPARE(QString::fromUtf8(result.m_output), expected);
}

void TestAppInstall::hostHelpNeedsNoDisplay()
{
    const CRun result = run(installed(VX_INSTALL_BINDIR "/vxhost"), {"--help"}, environmentWithoutDisplay());
    QVERIFY2(result.m_nExitCode == 0, result.m_errors.constData());
    const QString strHelp = QString::fromUtf8(result.m_output);
    for (const char* pPart : {"Usage:", "--no-samples", "--version", "*.vxlayout", "[files...]"})
        QVERIFY2(strHelp.contains(QLatin1String(pPart)), qPrintable(strHelp));
}

void TestAppInstall::installedHostOpensLayoutWithItsTool()
{
    // The program keeps the files it opened in its settings, here in a folder of this run:
    // the layout is there only if the installed host found its tool and the tool read it.
    QTemporaryDir config;
    QVERIFY(config.isValid());
    QProcessEnvironment environment = environmentWithoutDisplay();
    environment.insert("XDG_CONFIG_HOME", config.path());
    const CRun result = run(installed(VX_INSTALL_BINDIR "/vxhost"),
                            {"-platform", "offscreen", "--no-samples", "--quit-after-ms", QString::number(kQuitAfterMs),
                             work("figure.vxlayout")},
                            environment);
    QVERIFY2(result.m_nExitCode == 0, result.m_errors.constData());
    const QSettings settings(config.filePath("Halvard/Vexor/settings.ini"), QSettings::IniFormat);
    QCOMPARE(settings.value("RecentFiles/paths").toStringList(), QStringList {work("figure.vxlayout")});
}

void TestAppInstall::installedBatchProgramWrites()
{
    const CRun result = run(installed(VX_INSTALL_BINDIR "/vxlayout"),
                            {"--layout", "Layout 1x1", "--size", "100x80", "--export", work("page.png"), work("image.png")},
                            environmentWithoutDisplay());
    QVERIFY2(result.m_nExitCode == 0, result.m_errors.constData());
    QCOMPARE(QImage(work("page.png")).size(), QSize(404, 324));
}

QTEST_GUILESS_MAIN(TestAppInstall)
#include "tst_app_install.moc"
