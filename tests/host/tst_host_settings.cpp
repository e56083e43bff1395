#include "VXPreference.h"
#include "VXSSettings.h"

#include <QtTest>

namespace {
const QString kAllFormats = QStringLiteral(
    "Bitmap Image (*.bmp);;JPEG Image (*.jpg);;PNG Image (*.png);;"
    "Postscript Enhanced Metafile (*.eps);;Tagged Image File Format (*.tif);;"
    "Windows Metafile Format (*.wmf);;Enhanced Metafile Format (*.emf);;DICOM Format (*.dcm)");
} // namespace

class TestHostSettings : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();

    void valuesSurviveRestart();
    void recentFolderIsOneThatExists_data();
    void recentFolderIsOneThatExists();
    void sharedSettingsLiveInTestLocation();
    void modifySaveFilterByPreference_data();
    void modifySaveFilterByPreference();
    void preferredFormatIsStoredInLowerCase();
};

void TestHostSettings::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestHostSettings::cleanup()
{
    CVXPreference::getSettings()->setPreferredFormat(QString());
    CVXPreference::getSettings()->sync();
}

void TestHostSettings::valuesSurviveRestart()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strFile = dir.filePath(QStringLiteral("settings.ini"));
    const QString strFolder = dir.filePath(QStringLiteral("exports"));
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("exports")));
    {
        CVXSSettings settings(strFile);
        settings.setRecentFilePath(strFolder);
        settings.setPreferredFormat(QStringLiteral("tif"));
        settings.setValue(QStringLiteral("Layout/Columns"), 3);
        QCOMPARE(settings.fileName(), strFile);
    }
    QFile file(strFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY2(file.readAll().contains("PreferredFormat=tif"), "expected an INI file");

    const CVXSSettings restarted(strFile);
    QCOMPARE(restarted.getRecentFilePath(), strFolder);
    QCOMPARE(restarted.getPreferredFormat(), QStringLiteral("tif"));
    QCOMPARE(restarted.value(QStringLiteral("Layout/Columns")).toInt(), 3);
    QCOMPARE(restarted.value(QStringLiteral("Layout/Missing"), 7).toInt(), 7);
    CVXSSettings removing(strFile);
    removing.remove(QStringLiteral("Layout/Columns"));
    removing.sync();
    QCOMPARE(CVXSSettings(strFile).value(QStringLiteral("Layout/Columns"), -1).toInt(), -1);
}

void TestHostSettings::recentFolderIsOneThatExists_data()
{
    QTest::addColumn<bool>("hasPictures");
    QTest::addColumn<QString>("stored"); // relative to the home folder; empty: none stored
    QTest::addColumn<bool>("storedExists");
    QTest::addColumn<QString>("expected"); // relative to the home folder

    QTest::newRow("new machine, no pictures folder") << false << QString() << false << QString();
    QTest::newRow("pictures folder") << true << QString() << false << QStringLiteral("Pictures");
    QTest::newRow("stored folder") << true << QStringLiteral("figures") << true << QStringLiteral("figures");
    QTest::newRow("stored folder deleted") << true << QStringLiteral("figures") << false
                                           << QStringLiteral("Pictures");
    QTest::newRow("stored folder deleted, no pictures folder")
        << false << QStringLiteral("figures") << false << QString();
}

void TestHostSettings::recentFolderIsOneThatExists()
{
    QFETCH(bool, hasPictures);
    QFETCH(QString, stored);
    QFETCH(bool, storedExists);
    QFETCH(QString, expected);

    // A home folder of its own, as on a new machine; the pictures folder follows it.
    QTemporaryDir home;
    QVERIFY(home.isValid());
    const QByteArray oldHome = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(home.path()));
    const auto restoreHome = qScopeGuard([&oldHome] { qputenv("HOME", oldHome); });
    const QDir homeDir(home.path());
    if (hasPictures)
        QVERIFY(homeDir.mkdir(QStringLiteral("Pictures")));
    if (storedExists)
        QVERIFY(homeDir.mkdir(stored));

    CVXSSettings settings(homeDir.filePath(QStringLiteral("fresh.ini")));
    if (!stored.isEmpty())
        settings.setRecentFilePath(homeDir.filePath(stored));

    const QString strFolder = settings.getRecentFilePath();
    QCOMPARE(QDir(strFolder).canonicalPath(), QDir(homeDir.filePath(expected)).canonicalPath());
    QVERIFY2(QFileInfo(strFolder).isDir(), qPrintable(strFolder));
    // Any other folder key falls back the same way.
    const QString strDefault = homeDir.filePath(hasPictures ? QStringLiteral("Pictures") : QString());
    QCOMPARE(QDir(settings.folder(QStringLiteral("Other/Folder"))).canonicalPath(), QDir(strDefault).canonicalPath());
    QCOMPARE(settings.getPreferredFormat(), QString());
}

void TestHostSettings::sharedSettingsLiveInTestLocation()
{
    CVXSSettings* pSettings = CVXPreference::getSettings();
    QVERIFY(pSettings);
    QCOMPARE(CVXPreference::getSettings(), pSettings);
    const QString strFolder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QVERIFY2(strFolder.contains(QStringLiteral(".qttest")), qPrintable(strFolder));
    QCOMPARE(pSettings->fileName(), strFolder + QStringLiteral("/settings.ini"));
    QVERIFY(QFileInfo(strFolder).isDir());
}

void TestHostSettings::modifySaveFilterByPreference_data()
{
    QTest::addColumn<QString>("preferred");
    QTest::addColumn<QString>("expected");

    QTest::newRow("no preference") << QString() << kAllFormats;
    QTest::newRow("png") << QStringLiteral("png")
                         << QStringLiteral("PNG Image (*.png);;Bitmap Image (*.bmp);;JPEG Image (*.jpg);;"
                                           "Postscript Enhanced Metafile (*.eps);;"
                                           "Tagged Image File Format (*.tif);;Windows Metafile Format (*.wmf);;"
                                           "Enhanced Metafile Format (*.emf);;DICOM Format (*.dcm)");
    QTest::newRow("capitals") << QStringLiteral("PNG")
                              << QStringLiteral("PNG Image (*.png);;Bitmap Image (*.bmp);;JPEG Image (*.jpg);;"
                                                "Postscript Enhanced Metafile (*.eps);;"
                                                "Tagged Image File Format (*.tif);;Windows Metafile Format (*.wmf);;"
                                                "Enhanced Metafile Format (*.emf);;DICOM Format (*.dcm)");
    QTest::newRow("last entry") << QStringLiteral("dcm")
                                << QStringLiteral("DICOM Format (*.dcm);;Bitmap Image (*.bmp);;JPEG Image (*.jpg);;"
                                                  "PNG Image (*.png);;Postscript Enhanced Metafile (*.eps);;"
                                                  "Tagged Image File Format (*.tif);;Windows Metafile Format (*.wmf);;"
                                                  "Enhanced Metafile Format (*.emf)");
    QTest::newRow("already first") << QStringLiteral("bmp") << kAllFormats;
    QTest::newRow("unknown") << QStringLiteral("xyz") << kAllFormats;
    QTest::newRow("part of a suffix") << QStringLiteral("p") << kAllFormats;
}

void TestHostSettings::modifySaveFilterByPreference()
{
    QFETCH(QString, preferred);
    QFETCH(QString, expected);

    CVXPreference::getSettings()->setPreferredFormat(preferred);
    QString strFilter = kAllFormats;
    CVXPreference::modifySaveFilterByPreference(strFilter);

    QCOMPARE(strFilter, expected);
}

void TestHostSettings::preferredFormatIsStoredInLowerCase()
{
    CVXPreference::setUsersPreferredFormat(QStringLiteral("JPG"));
    QCOMPARE(CVXPreference::getSettings()->getPreferredFormat(), QStringLiteral("jpg"));

    // Read back through a second QSettings: the value must have reached the file.
    const CVXSSettings fromDisk(CVXPreference::getSettings()->fileName());
    QCOMPARE(fromDisk.getPreferredFormat(), QStringLiteral("jpg"));

    QString strFilter = kAllFormats;
    CVXPreference::modifySaveFilterByPreference(strFilter);
    QVERIFY2(strFilter.startsWith(QStringLiteral("JPEG Image (*.jpg);;Bitmap Image (*.bmp);;")),
             qPrintable(strFilter));
}

QTEST_GUILESS_MAIN(TestHostSettings)
#include "tst_host_settings.moc"
