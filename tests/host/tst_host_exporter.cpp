#include "SolidImage.h"
#include "VXSImageExporter.h"

#include <QImageReader>
#include <QScopeGuard>
#include <QtTest>

#include <algorithm>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

// A smooth picture, so that JPEG's loss stays small and comparable.
QImage gradientImage(const QSize& size = QSize(64, 48))
{
    QImage image(size, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb((x * 4) % 256, (y * 5) % 256, ((x + y) * 2) % 256));
    }
    return image;
}

// Random pixels compress badly, so the encoded file is large.
QImage noiseImage(const QSize& size)
{
    QImage image(size, QImage::Format_RGB32);
    QRandomGenerator generator(42);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, generator.generate() | 0xff000000u);
    }
    return image;
}

int largestChannelDifference(const QImage& a, const QImage& b)
{
    int nLargest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb pa = a.pixel(x, y);
            const QRgb pb = b.pixel(x, y);
            nLargest = std::max({nLargest, qAbs(qRed(pa) - qRed(pb)), qAbs(qGreen(pa) - qGreen(pb)),
                             qAbs(qBlue(pa) - qBlue(pb))});
        }
    }
    return nLargest;
}

// Every entry, hidden ones included, so that left-over temporary files show.
QStringList entriesOf(const QString& strFolder)
{
    return QDir(strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                     QDir::Name);
}

QByteArray contentOf(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeFile(const QString& strPath, const QByteArray& content)
{
    QFile file(strPath);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QImage readBack(const QString& strPath, QByteArray* pFormat = nullptr)
{
    QImageReader reader(strPath);
    reader.setDecideFormatFromContent(true);
    if (pFormat)
        *pFormat = reader.format();
    const QImage image = reader.read();
    return image.convertToFormat(QImage::Format_RGB32);
}

tag_estatus save(QImage image, QString strPath)
{
    CVXSImageExporter exporter;
    return exporter.saveImage(image, strPath);
}

} // namespace

namespace QTest {
template <>
char* toString(const tag_estatus& status)
{
    return qstrdup(QByteArray::number(int(status)) + " (" + vxStatusText(status).toUtf8() + ')');
}
} // namespace QTest

class TestHostExporter : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void writesAndReadsBack_data();
    void writesAndReadsBack();
    void isWritableSuffix_data();
    void isWritableSuffix();
    void unsupportedSuffix_data();
    void unsupportedSuffix();
    void nullImage();
    void invalidPath_data();
    void invalidPath();
    void sizeLimits_data();
    void sizeLimits();
    void replacesExistingFileKeepingPermissions();
    void failureLeavesExistingFile_data();
    void failureLeavesExistingFile();
    void failureWhileWritingLeavesExistingFile();
    void writesThroughSymbolicLink();
    void nonAsciiFileName();
    void fullDevice();
    void noPermission();
};

void TestHostExporter::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
}

void TestHostExporter::writesAndReadsBack_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<int>("tolerance");

    QTest::newRow("bmp") << QStringLiteral("out.bmp") << QByteArray("bmp") << 0;
    QTest::newRow("jpg") << QStringLiteral("out.jpg") << QByteArray("jpeg") << 16;
    QTest::newRow("jpeg") << QStringLiteral("out.jpeg") << QByteArray("jpeg") << 16;
    QTest::newRow("png") << QStringLiteral("out.png") << QByteArray("png") << 0;
    QTest::newRow("tif") << QStringLiteral("out.tif") << QByteArray("tiff") << 0;
    QTest::newRow("tiff") << QStringLiteral("out.tiff") << QByteArray("tiff") << 0;
    QTest::newRow("TIFF in capitals") << QStringLiteral("OUT.TIFF") << QByteArray("tiff") << 0;
}

void TestHostExporter::writesAndReadsBack()
{
    QFETCH(QString, fileName);
    QFETCH(QByteArray, format);
    QFETCH(int, tolerance);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(fileName);
    const QImage image = gradientImage();

    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    QByteArray readFormat;
    const QImage read = readBack(strPath, &readFormat);
    QCOMPARE(readFormat, format);
    QCOMPARE(read.size(), image.size());
    if (tolerance == 0)
        QCOMPARE(read, image);
    else
        QVERIFY2(largestChannelDifference(read, image) <= tolerance,
                 qPrintable(QString::number(largestChannelDifference(read, image))));
    QCOMPARE(entriesOf(dir.path()), QStringList{fileName});
}

void TestHostExporter::isWritableSuffix_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("writable");
    for (const char* pSuffix : {"bmp", "jpg", "jpeg", "png", "tif", "tiff"})
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix) << true;
    for (const char* pSuffix : {"eps", "wmf", "emf", "dcm", "gif", ""})
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix) << false;
}

void TestHostExporter::isWritableSuffix()
{
    QFETCH(QString, suffix);
    QFETCH(bool, writable);
    QCOMPARE(CVXSImageExporter::isWritableSuffix(suffix), writable);
}

void TestHostExporter::unsupportedSuffix_data()
{
    QTest::addColumn<QString>("fileName");
    for (const char* pName : {"layout.eps", "layout.wmf", "layout.emf", "layout.dcm", "layout.txt", "layout"})
        QTest::newRow(pName) << QString::fromLatin1(pName);
}

void TestHostExporter::unsupportedSuffix()
{
    QFETCH(QString, fileName);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QCOMPARE(save(gradientImage(), dir.filePath(fileName)), eSTATUS_UNSUPPORTED_FORMAT);
    QCOMPARE(entriesOf(dir.path()), QStringList());
}

void TestHostExporter::nullImage()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QCOMPARE(save(QImage(), dir.filePath(QStringLiteral("null.png"))), eSTATUS_NULL_IMAGE);
    QCOMPARE(entriesOf(dir.path()), QStringList());
}

void TestHostExporter::invalidPath_data()
{
    QTest::addColumn<QString>("relativePath"); // inside a fresh temporary folder
    QTest::newRow("empty path") << QString();
    QTest::newRow("missing folder") << QStringLiteral("missing/out.png");
    QTest::newRow("folder named like an image") << QStringLiteral("folder.png");
}

void TestHostExporter::invalidPath()
{
    QFETCH(QString, relativePath);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("folder.png")));
    const QString strPath = relativePath.isEmpty() ? QString() : dir.filePath(relativePath);

    QCOMPARE(save(gradientImage(), strPath), eSTATUS_INVALID_PATH);
    QCOMPARE(entriesOf(dir.path()), QStringList{QStringLiteral("folder.png")});
    QVERIFY(QFileInfo(dir.filePath(QStringLiteral("folder.png"))).isDir());
}

void TestHostExporter::sizeLimits_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("expected");

    QTest::newRow("jpg at its limit") << QStringLiteral("wide.jpg") << QSize(65500, 1) << int(eSTATUS_SUCCESS);
    QTest::newRow("jpg too wide") << QStringLiteral("wide.jpg") << QSize(65501, 1) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("jpg too high") << QStringLiteral("high.jpeg") << QSize(1, 65501) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("png at its limit") << QStringLiteral("wide.png") << QSize(1000000, 1) << int(eSTATUS_SUCCESS);
    QTest::newRow("png too wide") << QStringLiteral("wide.png") << QSize(1000001, 1) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("bmp wider than jpg allows") << QStringLiteral("wide.bmp") << QSize(70000, 1) << int(eSTATUS_SUCCESS);
}

void TestHostExporter::sizeLimits()
{
    QFETCH(QString, fileName);
    QFETCH(QSize, size);
    QFETCH(int, expected);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QImage image = solidImage(size, Qt::darkCyan, QImage::Format_RGB32);

    QCOMPARE(int(save(image, dir.filePath(fileName))), expected);
    const QStringList expectedEntries = expected == eSTATUS_SUCCESS ? QStringList{fileName} : QStringList();
    QCOMPARE(entriesOf(dir.path()), expectedEntries);
}

void TestHostExporter::replacesExistingFileKeepingPermissions()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.png"));
    QVERIFY(writeFile(strPath, "old content"));
    QVERIFY(QFile::setPermissions(strPath, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));

    QCOMPARE(save(gradientImage(), strPath), eSTATUS_SUCCESS);

    QCOMPARE(readBack(strPath), gradientImage());
    struct stat status = {};
    QCOMPARE(::stat(QFile::encodeName(strPath).constData(), &status), 0);
    QCOMPARE(status.st_mode & 07777, mode_t(0640));
    QCOMPARE(entriesOf(dir.path()), QStringList{QStringLiteral("layout.png")});
}

void TestHostExporter::failureLeavesExistingFile_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<int>("expected");
    QTest::newRow("image too large for the format")
        << QStringLiteral("keep.jpg") << QSize(65501, 2) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("unsupported format") << QStringLiteral("keep.eps") << QSize(8, 8) << int(eSTATUS_UNSUPPORTED_FORMAT);
}

void TestHostExporter::failureLeavesExistingFile()
{
    QFETCH(QString, fileName);
    QFETCH(QSize, size);
    QFETCH(int, expected);

    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(fileName);
    const QByteArray original("the user's earlier export");
    QVERIFY(writeFile(strPath, original));
    const QImage image = solidImage(size, Qt::gray, QImage::Format_RGB32);

    QCOMPARE(int(save(image, strPath)), expected);

    QCOMPARE(contentOf(strPath), original);
    QCOMPARE(entriesOf(dir.path()), QStringList{fileName});
}

void TestHostExporter::failureWhileWritingLeavesExistingFile()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("keep.png"));
    const QByteArray original("the user's earlier export");
    QVERIFY(writeFile(strPath, original));

    // A file size limit makes the kernel refuse the write (EFBIG) half-way, even for root.
    tag_estatus status = eSTATUS_SUCCESS;
    {
        rlimit previous = {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &previous), 0);
        const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
        const auto restore = qScopeGuard([&] {
            setrlimit(RLIMIT_FSIZE, &previous);
            std::signal(SIGXFSZ, previousHandler);
        });
        rlimit limited = previous;
        limited.rlim_cur = 4096;
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &limited), 0);
        status = save(noiseImage(QSize(100, 100)), strPath);
    }

    QCOMPARE(status, eSTATUS_WRITE_FAILED);
    QCOMPARE(contentOf(strPath), original);
    QCOMPARE(entriesOf(dir.path()), QStringList{QStringLiteral("keep.png")});
}

void TestHostExporter::writesThroughSymbolicLink()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strTarget = dir.filePath(QStringLiteral("target.png"));
    const QString strLink = dir.filePath(QStringLiteral("link.png"));
    QVERIFY(writeFile(strTarget, "old content"));
    QVERIFY(QFile::link(strTarget, strLink));

    QCOMPARE(save(gradientImage(), strLink), eSTATUS_SUCCESS);

    QVERIFY(QFileInfo(strLink).isSymLink());
    QCOMPARE(readBack(strTarget), gradientImage());
    QCOMPARE(entriesOf(dir.path()), (QStringList{QStringLiteral("link.png"), QStringLiteral("target.png")}));
}

void TestHostExporter::nonAsciiFileName()
{
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strName = QStringLiteral("Aufnahme_äöü_画像.png");
    const QString strPath = dir.filePath(strName);

    QCOMPARE(save(gradientImage(), strPath), eSTATUS_SUCCESS);

    QCOMPARE(entriesOf(dir.path()), QStringList{strName});
    QCOMPARE(readBack(strPath), gradientImage());
}

void TestHostExporter::fullDevice()
{
    struct stat before = {};
    if (::stat("/dev/full", &before) != 0 || !S_ISCHR(before.st_mode))
        QSKIP("This system has no /dev/full device");
    // The suffix picks the format, so the device is reached through a link named like an image.
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strLink = dir.filePath(QStringLiteral("full.png"));
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), strLink));

    QCOMPARE(save(gradientImage(), strLink), eSTATUS_DISK_FULL);
    QCOMPARE(save(gradientImage(), QStringLiteral("/dev/full")), eSTATUS_UNSUPPORTED_FORMAT);

    struct stat after = {};
    QCOMPARE(::stat("/dev/full", &after), 0);
    QVERIFY(S_ISCHR(after.st_mode));
    QCOMPARE(after.st_rdev, before.st_rdev);
    QVERIFY(QFileInfo(strLink).isSymLink());
    QCOMPARE(entriesOf(dir.path()), QStringList{QStringLiteral("full.png")});
}

void TestHostExporter::noPermission()
{
    // sysfs refuses to create files (EACCES) even for root, unlike a chmod-ed folder.
    if (!QFileInfo(QStringLiteral("/sys/kernel")).isDir())
        QSKIP("This system has no sysfs under /sys");
    const QString strPath = QStringLiteral("/sys/vx_export_test.png");

    QCOMPARE(save(gradientImage(), strPath), eSTATUS_NO_PERMISSION);
    QVERIFY(!QFileInfo::exists(strPath));
}

QTEST_GUILESS_MAIN(TestHostExporter)
#include "tst_host_exporter.moc"
