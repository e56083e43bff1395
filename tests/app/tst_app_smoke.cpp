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

QTEST_GUILESS_MAIN(TestAppSmoke)
#include "tst_app_smoke.moc"
