#include "ExportReadBack.h"
#include "OutsideProgram.h"
#include "TestPictures.h"
#include "VXSImageExporter.h"

#include <QImageReader>
#include <QScopeGuard>
#include <QtTest>

#include <algorithm>
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

namespace {

// An odd size, so that row padding shows; smooth gradients, hard edges, a checkerboard and
// marked last row and column, so that flipped, shifted, cropped or channel-swapped output shows.
QImage structuredImage()
{
    QImage image(157, 93, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            QRgb rgb = qRgb(x * 4, y * 255 / 92, 255 - x * 3);
            if (x == image.width() - 1)
                rgb = qRgb(255, 0, 255);
            else if (y == image.height() - 1)
                rgb = qRgb(0, 255, 255);
            else if (x >= 64 && y < 31)
                rgb = x < 110 ? qRgb(220, 20, 30) : qRgb(10, 40, 200);
            else if (x >= 64 && y < 62)
                rgb = ((x / 3 + y / 3) % 2) ? qRgb(250, 240, 10) : qRgb(0, 90, 30);
            else if (x >= 64)
                rgb = x % 10 == 0 ? qRgb(255, 255, 255) : qRgb(x, x, x);
            image.setPixel(x, y, rgb);
        }
    }
    return image;
}

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

// The file as dcm2pnm, Ghostscript, or emf2svg and libwmf with librsvg read it; a null image
// when they cannot.
QImage readByOutsidePrograms(const QString& strPath, const QSize& size)
{
    ExportReadBack reader;
    const QImage read = reader.read(strPath, size);
    if (read.isNull())
        qWarning("%s", qPrintable(reader.errorText()));
    return read;
}

// The value of a DICOM attribute as dcmdump prints it, such as "[RGB]" or "157".
QByteArray dumpedValue(const QByteArray& dump, const QByteArray& tag)
{
    for (const QByteArray& line : dump.split('\n')) {
        if (line.startsWith(tag)) {
            const QByteArray rest = line.mid(tag.size()).trimmed(); // VR, value, then "# length"
            return rest.mid(3, rest.indexOf('#') - 3).trimmed();
        }
    }
    return QByteArray();
}

const QList<const char*> kFormats = {"bmp", "jpg", "png", "eps", "tif", "wmf", "emf", "dcm"};

// One row per format, for checks that every format (or each of those given) must pass alike.
void addFormatRows(const QList<const char*>& suffixes = kFormats)
{
    QTest::addColumn<QString>("suffix");
    for (const char* pSuffix : suffixes)
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix);
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
    void dicomReadByDcmtk();
    void dicomPassesIodValidation();
    void dicomGetsFreshUids();
    void epsRenderedByGhostscript();
    void metafileRenderedThroughSvg_data();
    void metafileRenderedThroughSvg();
    void tiffReadByLibtiff();
    void isWritableSuffix_data();
    void isWritableSuffix();
    void refusedImageWritesNothing_data();
    void refusedImageWritesNothing();
    void invalidPath_data();
    void invalidPath();
    void sizeLimits_data();
    void sizeLimits();
    void replacesExistingFileKeepingPermissions();
    void failureLeavesExistingFile_data();
    void failureLeavesExistingFile();
    void failureWhileWritingLeavesExistingFile_data();
    void failureWhileWritingLeavesExistingFile();
    void outOfMemoryLeavesExistingFile_data();
    void outOfMemoryLeavesExistingFile();
    void writesThroughSymbolicLink();
    void nonAsciiFileName();
    void fullDevice_data();
    void fullDevice();
    void noPermission_data();
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
    // JPEG's loss is only small on smooth pictures; lossless formats get the hard edges too.
    const QImage image = tolerance == 0 ? structuredImage() : gradientImage();

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

void TestHostExporter::dicomReadByDcmtk()
{
    VX_REQUIRE_PROGRAM("dcmdump");
    VX_REQUIRE_PROGRAM("dcm2pnm");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.dcm"));
    const QImage image = structuredImage();
    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    const OutsideProgram dump(QStringLiteral("dcmdump"), {QStringLiteral("-Un"), strPath});
    QVERIFY2(dump.succeeded(), qPrintable(dump.report()));
    QCOMPARE(dumpedValue(dump.output(), "(0002,0002)"), QByteArray("[1.2.840.10008.5.1.4.1.1.7]"));
    QCOMPARE(dumpedValue(dump.output(), "(0008,0016)"), QByteArray("[1.2.840.10008.5.1.4.1.1.7]"));
    QCOMPARE(dumpedValue(dump.output(), "(0008,0060)"), QByteArray("[OT]"));
    QCOMPARE(dumpedValue(dump.output(), "(0008,0064)"), QByteArray("[WSD]"));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0002)"), QByteArray("3"));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0004)"), QByteArray("[RGB]"));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0006)"), QByteArray("0"));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0010)"), QByteArray::number(image.height()));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0011)"), QByteArray::number(image.width()));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0100)"), QByteArray("8"));
    QCOMPARE(dumpedValue(dump.output(), "(0028,0101)"), QByteArray("8"));

    const QImage read = readByOutsidePrograms(strPath, image.size());
    QCOMPARE(read.size(), image.size());
    QCOMPARE(largestChannelDifference(read, image), 0);
}

void TestHostExporter::dicomPassesIodValidation()
{
    VX_REQUIRE_PROGRAM("dciodvfy");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.dcm"));
    QCOMPARE(save(structuredImage(), strPath), eSTATUS_SUCCESS);

    const OutsideProgram validation(QStringLiteral("dciodvfy"), {strPath});
    QVERIFY2(validation.finished(), qPrintable(validation.report()));
    QVERIFY2(validation.output().contains("SCImage"), qPrintable(validation.report()));
    QVERIFY2(!validation.output().contains("Error"), qPrintable(validation.report()));
}

void TestHostExporter::dicomGetsFreshUids()
{
    VX_REQUIRE_PROGRAM("dcmdump");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QVector<QByteArray> dumps;
    for (const QString& strName : {QStringLiteral("first.dcm"), QStringLiteral("second.dcm")}) {
        QCOMPARE(save(structuredImage(), dir.filePath(strName)), eSTATUS_SUCCESS);
        const OutsideProgram dump(QStringLiteral("dcmdump"), {dir.filePath(strName)});
        QVERIFY2(dump.succeeded(), qPrintable(dump.report()));
        dumps.append(dump.output());
    }
    // Study, series and SOP instance.
    for (const QByteArray& tag : {QByteArray("(0020,000d)"), QByteArray("(0020,000e)"), QByteArray("(0008,0018)")}) {
        const QByteArray first = dumpedValue(dumps.at(0), tag);
        QVERIFY2(first.size() > 2, tag.constData());
        QVERIFY2(first != dumpedValue(dumps.at(1), tag), tag.constData());
    }
    QCOMPARE(dumpedValue(dumps.at(0), "(0002,0003)"), dumpedValue(dumps.at(0), "(0008,0018)"));
}

void TestHostExporter::epsRenderedByGhostscript()
{
    VX_REQUIRE_PROGRAM("gs");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.eps"));
    const QImage image = structuredImage();
    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    const QByteArray eps = contentOf(strPath);
    QVERIFY(eps.startsWith("%!PS-Adobe-3.0 EPSF-3.0\n"));
    QVERIFY(eps.split('\n').contains("%%BoundingBox: 0 0 157 93"));
    QVERIFY(eps.endsWith("%%EOF\n"));

    const QImage read = readByOutsidePrograms(strPath, image.size());
    QCOMPARE(read.size(), image.size());
    QCOMPARE(largestChannelDifference(read, image), 0);
}

void TestHostExporter::metafileRenderedThroughSvg_data()
{
    addFormatRows({"emf", "wmf"});
}

void TestHostExporter::metafileRenderedThroughSvg()
{
    QFETCH(QString, suffix);
    const QStringList missing = ExportReadBack::missingPrograms(suffix);
    if (!missing.isEmpty())
        QSKIP(qPrintable(missing.join(QStringLiteral(", ")) + QStringLiteral(" not installed; scripts/install-deps.sh installs it")));
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.") + suffix);
    const QImage image = structuredImage();
    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    const QImage read = readByOutsidePrograms(strPath, image.size());
    QCOMPARE(read.size(), image.size());
    QCOMPARE(largestChannelDifference(read, image), 0);
}

void TestHostExporter::tiffReadByLibtiff()
{
    VX_REQUIRE_PROGRAM("tiffinfo");
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strPath = dir.filePath(QStringLiteral("layout.tif"));
    const QImage image = structuredImage();
    QCOMPARE(save(image, strPath), eSTATUS_SUCCESS);

    const OutsideProgram info(QStringLiteral("tiffinfo"), {strPath});
    QVERIFY2(info.succeeded(), qPrintable(info.report()));
    QVERIFY2(info.output().contains("Image Width: 157 Image Length: 93"), qPrintable(info.report()));
    QCOMPARE(readBack(strPath), image);
}

void TestHostExporter::isWritableSuffix_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<bool>("writable");
    for (const char* pSuffix : {"bmp", "jpg", "jpeg", "png", "eps", "tif", "tiff", "wmf", "emf", "dcm", "DCM"})
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix) << true;
    for (const char* pSuffix : {"gif", "txt", "pdf", ""})
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix) << false;
}

void TestHostExporter::isWritableSuffix()
{
    QFETCH(QString, suffix);
    QFETCH(bool, writable);
    QCOMPARE(CVXSImageExporter::isWritableSuffix(suffix), writable);
}

void TestHostExporter::refusedImageWritesNothing_data()
{
    QTest::addColumn<QImage>("image");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<int>("expected");
    for (const char* pName : {"layout.gif", "layout.pdf", "layout.txt", "layout"}) {
        QTest::addRow("unsupported suffix: %s", pName)
            << gradientImage() << QString::fromLatin1(pName) << int(eSTATUS_UNSUPPORTED_FORMAT);
    }
    for (const char* pSuffix : kFormats)
        QTest::addRow("null image: %s", pSuffix) << QImage() << QStringLiteral("null.") + QLatin1String(pSuffix)
                                                 << int(eSTATUS_NULL_IMAGE);
}

void TestHostExporter::refusedImageWritesNothing()
{
    QFETCH(QImage, image);
    QFETCH(QString, fileName);
    QFETCH(int, expected);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    QCOMPARE(int(save(image, dir.filePath(fileName))), expected);
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
    QTest::newRow("wmf at its limit") << QStringLiteral("wide.wmf") << QSize(32767, 2) << int(eSTATUS_SUCCESS);
    QTest::newRow("wmf too wide") << QStringLiteral("wide.wmf") << QSize(32768, 1) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("wmf too high") << QStringLiteral("high.wmf") << QSize(1, 32768) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("dcm at its limit") << QStringLiteral("wide.dcm") << QSize(65535, 1) << int(eSTATUS_SUCCESS);
    QTest::newRow("dcm too wide") << QStringLiteral("wide.dcm") << QSize(65536, 1) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("dcm too high") << QStringLiteral("high.dcm") << QSize(1, 65536) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("emf wider than wmf allows") << QStringLiteral("wide.emf") << QSize(40000, 1) << int(eSTATUS_SUCCESS);
    QTest::newRow("eps wider than wmf allows") << QStringLiteral("wide.eps") << QSize(40000, 1) << int(eSTATUS_SUCCESS);
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
    QTest::newRow("image too large for wmf")
        << QStringLiteral("keep.wmf") << QSize(32768, 2) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("image too large for dcm")
        << QStringLiteral("keep.dcm") << QSize(2, 65536) << int(eSTATUS_IMAGE_TOO_LARGE);
    QTest::newRow("unsupported format") << QStringLiteral("keep.gif") << QSize(8, 8) << int(eSTATUS_UNSUPPORTED_FORMAT);
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

void TestHostExporter::failureWhileWritingLeavesExistingFile_data()
{
    addFormatRows();
}

void TestHostExporter::failureWhileWritingLeavesExistingFile()
{
    QFETCH(QString, suffix);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strName = QStringLiteral("keep.") + suffix;
    const QString strPath = dir.filePath(strName);
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
        // Noise compresses badly, so the encoded file is large.
        status = save(noiseImage(QSize(100, 100), 42), strPath);
    }

    QCOMPARE(status, eSTATUS_WRITE_FAILED);
    QCOMPARE(contentOf(strPath), original);
    QCOMPARE(entriesOf(dir.path()), QStringList{strName});
}

void TestHostExporter::outOfMemoryLeavesExistingFile_data()
{
    QTest::addColumn<QString>("suffix");
    for (const char* pSuffix : {"eps", "wmf", "emf", "dcm"})
        QTest::newRow(pSuffix) << QString::fromLatin1(pSuffix);
}

void TestHostExporter::outOfMemoryLeavesExistingFile()
{
    QFETCH(QString, suffix);
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strName = QStringLiteral("keep.") + suffix;
    const QString strPath = dir.filePath(strName);
    const QByteArray original("the user's earlier export");
    QVERIFY(writeFile(strPath, original));
    const QImage image = noiseImage(QSize(1500, 1500), 42);

#ifdef __SANITIZE_ADDRESS__
    QSKIP("AddressSanitizer reserves its shadow memory up front: an address space limit cannot make "
          "single buffers fail under it");
#endif
    // An address space limit a little above what the process uses lets the writer's
    // large buffers fail, as they would on a machine without memory to spare.
    QFile statm(QStringLiteral("/proc/self/statm"));
    if (!statm.open(QIODevice::ReadOnly))
        QSKIP("This system has no /proc/self/statm to size the limit by");
    const rlim_t nUsedBytes = rlim_t(statm.readLine().split(' ').value(0).toULongLong()) * rlim_t(getpagesize());
    QVERIFY(nUsedBytes > 0);
    tag_estatus status = eSTATUS_SUCCESS;
    {
        rlimit previous = {};
        QCOMPARE(getrlimit(RLIMIT_AS, &previous), 0);
        const auto restore = qScopeGuard([&] { setrlimit(RLIMIT_AS, &previous); });
        rlimit limited = previous;
        limited.rlim_cur = nUsedBytes + 2 * 1024 * 1024;
        QCOMPARE(setrlimit(RLIMIT_AS, &limited), 0);
        status = save(image, strPath);
    }

    QCOMPARE(status, eSTATUS_OUT_OF_MEMORY);
    QCOMPARE(contentOf(strPath), original);
    QCOMPARE(entriesOf(dir.path()), QStringList{strName});
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

void TestHostExporter::fullDevice_data()
{
    addFormatRows();
}

void TestHostExporter::fullDevice()
{
    QFETCH(QString, suffix);
    struct stat before = {};
    if (::stat("/dev/full", &before) != 0 || !S_ISCHR(before.st_mode))
        QSKIP("This system has no /dev/full device");
    // The suffix picks the format, so the device is reached through a link named like an image.
    QTemporaryDir dir;
    QVERIFY(dir.isValid());
    const QString strName = QStringLiteral("full.") + suffix;
    const QString strLink = dir.filePath(strName);
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), strLink));

    QCOMPARE(save(gradientImage(), strLink), eSTATUS_DISK_FULL);
    QCOMPARE(save(gradientImage(), QStringLiteral("/dev/full")), eSTATUS_UNSUPPORTED_FORMAT);

    struct stat after = {};
    QCOMPARE(::stat("/dev/full", &after), 0);
    QVERIFY(S_ISCHR(after.st_mode));
    QCOMPARE(after.st_rdev, before.st_rdev);
    QVERIFY(QFileInfo(strLink).isSymLink());
    QCOMPARE(entriesOf(dir.path()), QStringList{strName});
}

void TestHostExporter::noPermission_data()
{
    addFormatRows();
}

void TestHostExporter::noPermission()
{
    QFETCH(QString, suffix);
    // sysfs refuses to create files (EACCES) even for root, unlike a chmod-ed folder.
    if (!QFileInfo(QStringLiteral("/sys/kernel")).isDir())
        QSKIP("This system has no sysfs under /sys");
    const QString strPath = QStringLiteral("/sys/vx_export_test.") + suffix;

    QCOMPARE(save(gradientImage(), strPath), eSTATUS_NO_PERMISSION);
    QVERIFY(!QFileInfo::exists(strPath));
}

QTEST_GUILESS_MAIN(TestHostExporter)
#include "tst_host_exporter.moc"
