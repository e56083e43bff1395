#include "TestImageFiles.h"
#include "TestPictures.h"

#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>

namespace {
constexpr int kQuitAfterMs = 800;
constexpr int kAllowedMs = 30000;
} // namespace

// Starts the real application, lets it come up and checks that it ends cleanly.
class TestAppSmoke : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void startsAndQuits_data();
    void startsAndQuits();
    void refusesUnknownOption();
    void debugMessagesShowWhenAskedFor_data();
    void debugMessagesShowWhenAskedFor();

private:
    QTemporaryDir m_dir;
};

void TestAppSmoke::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
    const QImage image = solidImage(QSize(64, 48), Qt::darkCyan, QImage::Format_RGB32);
    QVERIFY(image.save(m_dir.filePath("image.png")));
    QVERIFY(CTestImageFiles::writeBytes(m_dir.filePath("corrupt.png"), "not an image"));
}

void TestAppSmoke::startsAndQuits_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("with samples") << QStringList();
    QTest::newRow("without samples") << QStringList {"--no-samples"};
    QTest::newRow("with a file") << QStringList {m_dir.filePath("image.png")};
    // The warning about the file is still open when the application is told to quit.
    QTest::newRow("with an unreadable file") << QStringList {"--no-samples", m_dir.filePath("corrupt.png")};
}

void TestAppSmoke::startsAndQuits()
{
    QFETCH(QStringList, arguments);
    QProcess process;
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    // The host keeps its window geometry in the user's settings; this run keeps it here.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), m_dir.filePath(QStringLiteral("config")));
    process.setProcessEnvironment(environment);
    QElapsedTimer timer;
    timer.start();
    process.start(QStringLiteral(VXHOST_EXECUTABLE),
                  QStringList {"-platform", "offscreen", "--quit-after-ms", QString::number(kQuitAfterMs)} + arguments);
    QVERIFY2(process.waitForStarted(), qPrintable(process.errorString()));
    QVERIFY2(process.waitForFinished(kAllowedMs), "the application did not quit");
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
    // It ran until told to quit rather than ending at once.
    QVERIFY(timer.elapsed() >= kQuitAfterMs);
}

void TestAppSmoke::refusesUnknownOption()
{
    QProcess process;
    process.start(QStringLiteral(VXHOST_EXECUTABLE), {"-platform", "offscreen", "--no-such-option"});
    QVERIFY(process.waitForFinished(kAllowedMs));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QVERIFY(process.exitCode() != 0);
    QVERIFY(process.readAllStandardError().contains("no-such-option"));
}

void TestAppSmoke::debugMessagesShowWhenAskedFor_data()
{
    QTest::addColumn<QString>("variable");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("iniFile");
    QTest::addColumn<bool>("shown");
    const QString strConf = m_dir.filePath(QStringLiteral("logging.conf"));
    QVERIFY(CTestImageFiles::writeBytes(strConf, "[Rules]\n*.debug=true\n"));
    QTest::newRow("everyday run") << QString() << QString() << QString() << false;
    QTest::newRow("QT_LOGGING_RULES *.debug=true") << "QT_LOGGING_RULES" << "*.debug=true" << QString() << true;
    QTest::newRow("QT_LOGGING_RULES default.debug=true") << "QT_LOGGING_RULES" << "default.debug=true" << QString() << true;
    QTest::newRow("QT_LOGGING_RULES about something else") << "QT_LOGGING_RULES" << "qt.qpa.*=false" << QString() << false;
    QTest::newRow("QT_LOGGING_CONF") << "QT_LOGGING_CONF" << strConf << QString() << true;
    QTest::newRow("qtlogging.ini") << QString() << QString() << "[Rules]\n*.debug=true\n" << true;
}

// Debug messages are emitted but kept off the terminal unless the user asks for them.
void TestAppSmoke::debugMessagesShowWhenAskedFor()
{
    QFETCH(QString, variable);
    QFETCH(QString, value);
    QFETCH(QString, iniFile);
    QFETCH(bool, shown);
    const QString strConfig = m_dir.filePath(QStringLiteral("config-") + QTest::currentDataTag());
    if (!iniFile.isEmpty()) {
        QVERIFY(QDir().mkpath(strConfig + QStringLiteral("/QtProject")));
        QVERIFY(CTestImageFiles::writeBytes(strConfig + QStringLiteral("/QtProject/qtlogging.ini"), iniFile.toUtf8()));
    }
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), strConfig);
    environment.remove(QStringLiteral("QT_LOGGING_RULES"));
    environment.remove(QStringLiteral("QT_LOGGING_CONF"));
    // Every line says what kind of message it is.
    environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"), QStringLiteral("%{type}: %{message}"));
    if (!variable.isEmpty())
        environment.insert(variable, value);
    QProcess process;
    process.setProcessEnvironment(environment);
    process.start(QStringLiteral(VXHOST_EXECUTABLE), {"-platform", "offscreen", "--no-samples", "--quit-after-ms",
                                                     QString::number(kQuitAfterMs)});
    QVERIFY2(process.waitForFinished(kAllowedMs), "the application did not quit");
    QCOMPARE(process.exitCode(), 0);
    const QString strErrors = QString::fromLocal8Bit(process.readAllStandardError());
    // Loading the layout tool says so at debug level.
    const bool bLoadShown = strErrors.contains(QStringLiteral("debug: Loaded the tool plugin "));
    QVERIFY2(bLoadShown == shown, qPrintable(strErrors));
    if (!shown)
        QVERIFY2(!strErrors.contains(QRegularExpression(QStringLiteral("^(debug|info): "), QRegularExpression::MultilineOption)),
                 qPrintable(strErrors));
}

QTEST_GUILESS_MAIN(TestAppSmoke)
#include "tst_app_smoke.moc"
