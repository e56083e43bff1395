#include "FileDamage.h"
#include "TestDicomFiles.h"
#include "TestImageFiles.h"

#include <VXImageFileReader.h>

#include <dcmtk/oflog/oflog.h>

#include <QBuffer>
#include <QDataStream>
#include <QElapsedTimer>
#include <QFile>
#include <QImageReader>
#include <QImageWriter>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/resource.h>

// Writes a valid file of one format; its corrupted copies are what the reader is fed.
using SampleWriter = bool (*)(const QString& strPath);
Q_DECLARE_METATYPE(SampleWriter)

namespace {

constexpr quint32 kDefaultSeed = 20261123;
constexpr int kDefaultFilesPerFormat = 300;
// Every byte of the first headers is a truncation point, then as many points spread over
// the rest of the headers, points through the data and the last bytes, where decoders meet
// their end markers.
constexpr int kHeaderCuts = 64;
constexpr int kMiddleCuts = 48;
constexpr int kEndCuts = 32;
// Corruptions land in the headers half of the time: that is where sizes and offsets sit.
constexpr int kHeaderBytes = 256;
// A DICOM file's image description follows a 128-byte preamble, the meta header and the
// identifiers; compressed pixel data starts with its own offset table.
constexpr int kDicomHeaderBytes = 1024;
constexpr int kMaxChangesPerFile = 4;
// Small files decode in milliseconds; anything near this is a decoder going round in circles.
constexpr qint64 kMaxMsPerFile = 5000;
constexpr qint64 kMiB = 1024 * 1024;
// The reader may decode up to its limit; the margin covers the sanitizers' own bookkeeping
// (freed memory is held back for a while) and the libraries' buffers.
constexpr qint64 kMaxPeakGrowth = CVXImageFileReader::kMaxDecodedBytes + 256 * kMiB;
// Refusing a file for its announced size needs no more than its headers.
constexpr qint64 kMaxPeakGrowthWhenRefused = 64 * kMiB;
const QSize kSampleSize(64, 48);
constexpr int kSamplePages = 3;

// The handler in place before the decoders' warnings were silenced; it gets everything else.
QtMessageHandler g_pOtherMessages = nullptr;

// Every damaged file makes the decoders warn; thousands of those would drown the test's own
// output and use up its warning allowance.
void dropWarnings(QtMsgType type, const QMessageLogContext& context, const QString& strMessage)
{
    if (type != QtWarningMsg && g_pOtherMessages)
        g_pOtherMessages(type, context, strMessage);
}

qint64 peakResidentBytes()
{
    rusage usage {};
    getrusage(RUSAGE_SELF, &usage);
    return qint64(usage.ru_maxrss) * 1024; // Linux counts it in KiB
}

// Smooth ramps with a little noise: the compressors get both long runs and real detail.
QImage samplePattern(const QSize& size, QImage::Format format, int nVariant = 0)
{
    QImage image(size, QImage::Format_RGBA64);
    QRandomGenerator noise(quint32(nVariant + 1));
    for (int y = 0; y < size.height(); ++y) {
        auto* pLine = reinterpret_cast<QRgba64*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const auto nNoise = quint16(noise.bounded(512));
            pLine[x] = QRgba64::fromRgba64(quint16(x * 65535 / size.width()) ^ nNoise,
                                           quint16(y * 65535 / size.height()),
                                           quint16((x + y + nVariant * 17) * 257) + nNoise, 65535);
        }
    }
    return image.convertToFormat(format);
}

bool writeWith(const QString& strPath, const QImage& image, const char* pFormat, int nCompression = 0)
{
    QImageWriter writer(strPath, pFormat);
    writer.setCompression(nCompression);
    return writer.write(image);
}

bool writePng(const QString& strPath)
{
    return writeWith(strPath, samplePattern(kSampleSize, QImage::Format_ARGB32), "png");
}

bool writePng16(const QString& strPath)
{
    return writeWith(strPath, samplePattern(kSampleSize, QImage::Format_RGBA64), "png");
}

bool writeJpeg(const QString& strPath)
{
    return writeWith(strPath, samplePattern(kSampleSize, QImage::Format_RGB32), "jpeg");
}

bool writeBmp(const QString& strPath)
{
    return writeWith(strPath, samplePattern(kSampleSize, QImage::Format_RGB32), "bmp");
}

bool writeGreyTiff8(const QString& strPath)
{
    return writeWith(strPath, samplePattern(kSampleSize, QImage::Format_Grayscale8), "tiff");
}

// Compressed strips: the decoder rather than a plain copy meets the damage.
bool writeColourTiff8Lzw(const QString& strPath)
{
    constexpr int kLzw = 1;
    return writeWith(strPath, samplePattern(kSampleSize, QImage::Format_RGB32), "tiff", kLzw);
}

bool writeGreyTiff16(const QString& strPath)
{
    return writeWith(strPath, samplePattern(kSampleSize, QImage::Format_Grayscale16), "tiff");
}

bool writeColourTiff16(const QString& strPath)
{
    return writeWith(strPath, samplePattern(kSampleSize, QImage::Format_RGBA64), "tiff");
}

bool writeMultiPageTiff(const QString& strPath)
{
    QVector<QImage> pages;
    for (int i = 0; i < kSamplePages; ++i)
        pages << samplePattern(kSampleSize / 2, QImage::Format_Grayscale8, i);
    return CTestImageFiles::writeMultiPageTiff(strPath, pages);
}

// The pixels as DICOM holds them: row by row, the samples of each pixel together.
void appendDicomSamples(const QImage& image, QVector<quint16>& samples)
{
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            switch (image.format()) {
            case QImage::Format_Grayscale8:
                samples << image.constScanLine(y)[x];
                break;
            case QImage::Format_Grayscale16:
                samples << reinterpret_cast<const quint16*>(image.constScanLine(y))[x];
                break;
            default: {
                const QRgb rgb = image.pixel(x, y);
                samples << quint16(qRed(rgb)) << quint16(qGreen(rgb)) << quint16(qBlue(rgb));
                break;
            }
            }
        }
    }
}

// One frame per image, all of the first one's size and format.
bool writeDicom(const QString& strPath, const QVector<QImage>& frames,
                E_TransferSyntax transfer = EXS_LittleEndianExplicit, const QString& strWindowCentre = {},
                const QString& strWindowWidth = {})
{
    const QImage& first = frames.first();
    const bool bGrey = first.format() == QImage::Format_Grayscale8 || first.format() == QImage::Format_Grayscale16;
    CTestDicomFiles::SHeader header;
    header.size = first.size();
    header.nFrames = frames.size();
    header.nBits = first.format() == QImage::Format_Grayscale16 ? 16 : 8;
    if (!bGrey) {
        header.nSamples = 3;
        header.strPhotometric = QStringLiteral("RGB");
    }
    header.strWindowCentre = strWindowCentre;
    header.strWindowWidth = strWindowWidth;
    QVector<quint16> samples;
    for (const QImage& frame : frames)
        appendDicomSamples(frame, samples);
    return CTestDicomFiles::write(strPath, header, samples, transfer);
}

// A window across part of the range, so damage to it changes what is shown.
bool writeDicomGrey8Window(const QString& strPath)
{
    return writeDicom(strPath, {samplePattern(kSampleSize, QImage::Format_Grayscale8)}, EXS_LittleEndianExplicit,
                      QStringLiteral("100"), QStringLiteral("120"));
}

bool writeDicomGrey16(const QString& strPath)
{
    return writeDicom(strPath, {samplePattern(kSampleSize, QImage::Format_Grayscale16)});
}

bool writeDicomRgb(const QString& strPath)
{
    return writeDicom(strPath, {samplePattern(kSampleSize, QImage::Format_RGB32)});
}

bool writeDicomMultiFrame(const QString& strPath)
{
    QVector<QImage> frames;
    for (int i = 0; i < kSamplePages; ++i)
        frames << samplePattern(kSampleSize / 2, QImage::Format_Grayscale8, i);
    return writeDicom(strPath, frames);
}

bool writeDicomJpegBaseline(const QString& strPath)
{
    return writeDicom(strPath, {samplePattern(kSampleSize, QImage::Format_RGB32)}, EXS_JPEGProcess1);
}

bool writeDicomRle(const QString& strPath)
{
    return writeDicom(strPath, {samplePattern(kSampleSize, QImage::Format_Grayscale16)}, EXS_RLELossless);
}

// Every format the host reads, one row each.
struct SampleFormat
{
    const char* pName;
    const char* pSuffix;
    SampleWriter write;
    int nHeaderBytes = kHeaderBytes;
};

const SampleFormat kFormats[] = {
    {"png", "png", writePng},
    {"16-bit png", "png", writePng16},
    {"jpeg", "jpg", writeJpeg},
    {"bmp", "bmp", writeBmp},
    {"8-bit grey tiff", "tif", writeGreyTiff8},
    {"8-bit colour tiff, lzw", "tif", writeColourTiff8Lzw},
    {"16-bit grey tiff", "tif", writeGreyTiff16},
    {"16-bit colour tiff", "tif", writeColourTiff16},
    {"multi-page tiff", "tif", writeMultiPageTiff},
    {"8-bit grey dicom, window", "dcm", writeDicomGrey8Window, kDicomHeaderBytes},
    {"16-bit grey dicom", "dcm", writeDicomGrey16, kDicomHeaderBytes},
    {"rgb dicom", "dcm", writeDicomRgb, kDicomHeaderBytes},
    {"multi-frame dicom", "dcm", writeDicomMultiFrame, kDicomHeaderBytes},
    {"jpeg baseline dicom", "dcm", writeDicomJpegBaseline, kDicomHeaderBytes},
    {"rle dicom", "dcm", writeDicomRle, kDicomHeaderBytes},
};

QVector<int> truncationPoints(int nSize, int nHeaderBytes)
{
    QVector<int> points;
    for (int i = 0; i < qMin(kHeaderCuts, nSize); ++i)
        points << i;
    const int nRestOfHeaders = qMin(nHeaderBytes, nSize) - kHeaderCuts;
    for (int i = 1; nRestOfHeaders > 0 && i <= kHeaderCuts; ++i)
        points << kHeaderCuts + nRestOfHeaders * i / (kHeaderCuts + 1);
    for (int i = 1; i <= kMiddleCuts; ++i)
        points << int(qint64(nSize) * i / (kMiddleCuts + 1));
    for (int i = qMax(0, nSize - kEndCuts); i < nSize; ++i)
        points << i;
    std::sort(points.begin(), points.end());
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

quint32 pngCrc(const QByteArray& bytes)
{
    quint32 nCrc = 0xffffffffu;
    for (const char c : bytes) {
        nCrc ^= quint8(c);
        for (int nBit = 0; nBit < 8; ++nBit)
            nCrc = (nCrc >> 1) ^ (0xedb88320u & (0u - (nCrc & 1u)));
    }
    return ~nCrc;
}

void writePngChunk(QDataStream& stream, const QByteArray& type, const QByteArray& data)
{
    stream << quint32(data.size());
    stream.writeRawData(type.constData(), type.size());
    stream.writeRawData(data.constData(), data.size());
    stream << pngCrc(type + data);
}

// A PNG announcing an 8-bit RGB image of this size; its data is a token.
QByteArray pngAnnouncing(const QSize& size)
{
    QByteArray header;
    QDataStream headerStream(&header, QIODevice::WriteOnly);
    headerStream << quint32(size.width()) << quint32(size.height()) << quint8(8) << quint8(2) << quint8(0)
                 << quint8(0) << quint8(0);
    QByteArray bytes("\x89PNG\r\n\x1a\n", 8);
    QDataStream stream(&bytes, QIODevice::Append);
    writePngChunk(stream, "IHDR", header);
    writePngChunk(stream, "IDAT", QByteArray("\x78\x9c\x03\x00\x00\x00\x00\x01", 8));
    writePngChunk(stream, "IEND", {});
    return bytes;
}

// A real JPEG whose frame header claims this size.
QByteArray jpegAnnouncing(const QSize& size)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    if (!samplePattern(kSampleSize, QImage::Format_RGB32).save(&buffer, "jpeg"))
        return {};
    // The baseline frame marker, then length, precision, height and width.
    const int nFrame = bytes.indexOf(QByteArray("\xff\xc0", 2));
    if (nFrame < 0)
        return {};
    QDataStream stream(&buffer);
    buffer.seek(nFrame + 5);
    stream << quint16(size.height()) << quint16(size.width());
    return bytes;
}

// A DICOM header announcing this many frames of this size, with a token of pixel data.
bool writeDicomAnnouncing(const QString& strPath, const QSize& size, qint64 nFrames, int nSamples, int nBits)
{
    CTestDicomFiles::SHeader header;
    header.size = size;
    header.nFrames = nFrames;
    header.nSamples = nSamples;
    header.nBits = nBits;
    if (nSamples > 1)
        header.strPhotometric = QStringLiteral("RGB");
    return CTestDicomFiles::write(strPath, header, QVector<quint16>(64, 1));
}

QSize announcedSize(const QString& strPath)
{
    if (strPath.endsWith(QStringLiteral(".dcm")))
        return CTestDicomFiles::announcedSize(strPath);
    return QImageReader(strPath).size();
}

} // namespace

// Damaged files of every readable format must be refused with a reason or read as a
// sane image: never a crash, a hang or an allocation the file does not justify.
class TestAppCorruptInput : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void truncatedFiles_data();
    void truncatedFiles();
    void changedBytes_data();
    void changedBytes();
    void hugeAnnouncedSizesAreRefused_data();
    void hugeAnnouncedSizesAreRefused();

private:
    static void addFormatRows();
    // Writes the valid sample of the current row and gives its bytes.
    QByteArray validSample();
    // Reads one damaged file; what went wrong, or nothing when it was handled well. When it
    // was not, the file and its folder stay behind to be looked at.
    QString tryDamaged(const QString& strName, const QByteArray& bytes);
    void reportCounts(const char* pKind) const;

    QTemporaryDir m_dir;
    quint32 m_nSeed = kDefaultSeed;
    int m_nFilesPerFormat = kDefaultFilesPerFormat;
    qint64 m_nPeakBefore = 0;
    int m_nRefused = 0;
    int m_nRead = 0;
};

void TestAppCorruptInput::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
    // The DICOM toolkit logs what it finds wrong in every damaged file to the console.
    OFLog::configure(OFLogger::FATAL_LOG_LEVEL);
    m_nSeed = FileDamage::seed(kDefaultSeed);
    m_nFilesPerFormat = FileDamage::changedFiles(kDefaultFilesPerFormat);
    qInfo("Seed %u (VX_CORRUPT_SEED), %d changed files per format (VX_CORRUPT_FILES), files in %s", m_nSeed,
          m_nFilesPerFormat, qPrintable(m_dir.path()));
}

void TestAppCorruptInput::addFormatRows()
{
    QTest::addColumn<QString>("suffix");
    QTest::addColumn<SampleWriter>("writer");
    QTest::addColumn<int>("headerBytes");
    for (const SampleFormat& format : kFormats)
        QTest::newRow(format.pName) << QString::fromLatin1(format.pSuffix) << format.write << format.nHeaderBytes;
}

QByteArray TestAppCorruptInput::validSample()
{
    QFETCH(QString, suffix);
    QFETCH(SampleWriter, writer);
    const QString strPath = m_dir.filePath(QStringLiteral("valid.") + suffix);
    if (!writer(strPath))
        return {};
    // The sample itself must read, or its damaged copies prove nothing.
    QString strError;
    if (CVXImageFileReader::read(strPath, strError).isEmpty())
        return {};
    QFile file(strPath);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    m_nPeakBefore = peakResidentBytes();
    m_nRefused = 0;
    m_nRead = 0;
    return file.readAll();
}

QString TestAppCorruptInput::tryDamaged(const QString& strName, const QByteArray& bytes)
{
    QFETCH(QString, suffix);
    const QString strPath = m_dir.filePath(strName + QLatin1Char('.') + suffix);
    if (!CTestImageFiles::writeBytes(strPath, bytes))
        return QStringLiteral("cannot write ") + strPath;
    QElapsedTimer timer;
    timer.start();
    QString strError;
    g_pOtherMessages = qInstallMessageHandler(dropWarnings);
    const QVector<QImage> pages = CVXImageFileReader::read(strPath, strError);
    qInstallMessageHandler(g_pOtherMessages);
    const qint64 nMs = timer.elapsed();
    const qint64 nGrowth = peakResidentBytes() - m_nPeakBefore;

    QStringList problems;
    if (pages.isEmpty() && strError.isEmpty())
        problems << QStringLiteral("refused without a reason");
    if (!pages.isEmpty() && !strError.isEmpty())
        problems << QStringLiteral("read, yet with the error \"%1\"").arg(strError);
    for (const QImage& page : pages) {
        const qint64 nBytes = qint64(page.width()) * page.height() * 4;
        if (page.isNull() || nBytes > CVXImageFileReader::kMaxDecodedBytes)
            problems << QStringLiteral("read as a %1 x %2 image").arg(page.width()).arg(page.height());
    }
    if (nMs > kMaxMsPerFile)
        problems << QStringLiteral("took %1 ms").arg(nMs);
    if (nGrowth > kMaxPeakGrowth)
        problems << QStringLiteral("grew the peak memory by %1 MiB").arg(nGrowth / kMiB);
    if (!problems.isEmpty()) {
        m_dir.setAutoRemove(false);
        return QStringLiteral("%1 (seed %2): %3").arg(strPath).arg(m_nSeed).arg(problems.join(QStringLiteral("; ")));
    }

    ++(pages.isEmpty() ? m_nRefused : m_nRead);
    QFile::remove(strPath);
    return {};
}

void TestAppCorruptInput::reportCounts(const char* pKind) const
{
    qInfo("%d %s files tried, %d refused with a reason, %d read; peak memory grew by %lld MiB", m_nRefused + m_nRead,
          pKind, m_nRefused, m_nRead, (peakResidentBytes() - m_nPeakBefore) / kMiB);
}

void TestAppCorruptInput::truncatedFiles_data()
{
    addFormatRows();
}

void TestAppCorruptInput::truncatedFiles()
{
    const QByteArray valid = validSample();
    QVERIFY(!valid.isEmpty());
    QFETCH(int, headerBytes);
    for (const int nSize : truncationPoints(valid.size(), headerBytes)) {
        const QString strProblem = tryDamaged(QStringLiteral("cut-at-%1").arg(nSize), valid.left(nSize));
        QVERIFY2(strProblem.isEmpty(), qPrintable(strProblem));
    }
    reportCounts("truncated");
    QVERIFY(m_nRefused > 0);
}

void TestAppCorruptInput::changedBytes_data()
{
    addFormatRows();
}

void TestAppCorruptInput::changedBytes()
{
    const QByteArray valid = validSample();
    QVERIFY(!valid.isEmpty());
    QFETCH(int, headerBytes);
    // The row's own sequence, so one format's files do not depend on the others.
    QRandomGenerator random(m_nSeed ^ qHash(QByteArray(QTest::currentDataTag())));
    for (int i = 0; i < m_nFilesPerFormat; ++i) {
        const QString strProblem =
            tryDamaged(QStringLiteral("changed-%1").arg(i),
                       FileDamage::withRandomChanges(valid, {{0, headerBytes}}, kMaxChangesPerFile, random));
        QVERIFY2(strProblem.isEmpty(), qPrintable(strProblem));
    }
    reportCounts("changed");
    QCOMPARE(m_nRefused + m_nRead, m_nFilesPerFormat);
}

void TestAppCorruptInput::hugeAnnouncedSizesAreRefused_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QSize>("announced");

    const QSize pngSize(60000, 60000);
    QVERIFY(CTestImageFiles::writeBytes(m_dir.filePath("huge.png"), pngAnnouncing(pngSize)));
    const QSize jpegSize(65000, 65000);
    QVERIFY(CTestImageFiles::writeBytes(m_dir.filePath("huge.jpg"), jpegAnnouncing(jpegSize)));
    // Qt's BMP reader refuses larger sizes by itself.
    const QSize bmpSize(16000, 16000);
    QVERIFY(CTestImageFiles::writeBmpHeader(m_dir.filePath("huge.bmp"), bmpSize));
    const QSize tiffSize(70000, 70000);
    QVERIFY(CTestImageFiles::writeTiffWithoutPixels(m_dir.filePath("huge.tif"), {tiffSize}));
    // The largest pages a TIFF can announce: their bytes together exceed what 64 bits hold.
    const QSize tiffLargest(0x7fffffff, 0x7fffffff);
    QVERIFY(CTestImageFiles::writeTiffWithoutPixels(m_dir.filePath("largest.tif"), QVector<QSize>(3, tiffLargest)));
    // DICOM sizes are 16 bits each; the frame count is a number of up to twelve characters.
    const QSize dicomSize(65535, 65535);
    QVERIFY(writeDicomAnnouncing(m_dir.filePath("huge.dcm"), dicomSize, 1, 1, 8));
    constexpr qint64 kMostDicomFrames = 2147483647;
    QVERIFY(writeDicomAnnouncing(m_dir.filePath("manyframes.dcm"), kSampleSize, kMostDicomFrames, 1, 8));
    // Their bytes together exceed what 64 bits hold.
    QVERIFY(writeDicomAnnouncing(m_dir.filePath("largest.dcm"), dicomSize, kMostDicomFrames, 3, 16));

    QTest::newRow("png") << "huge.png" << pngSize;
    QTest::newRow("jpeg") << "huge.jpg" << jpegSize;
    QTest::newRow("bmp") << "huge.bmp" << bmpSize;
    QTest::newRow("tiff") << "huge.tif" << tiffSize;
    QTest::newRow("largest tiff pages") << "largest.tif" << tiffLargest;
    QTest::newRow("dicom") << "huge.dcm" << dicomSize;
    QTest::newRow("dicom frames") << "manyframes.dcm" << kSampleSize;
    QTest::newRow("largest dicom frames") << "largest.dcm" << dicomSize;
}

void TestAppCorruptInput::hugeAnnouncedSizesAreRefused()
{
    QFETCH(QString, fileName);
    QFETCH(QSize, announced);
    const QString strPath = m_dir.filePath(fileName);
    // The file really announces the size, so it is the size that gets it refused.
    QCOMPARE(announcedSize(strPath), announced);
    const qint64 nPeakBefore = peakResidentBytes();
    QElapsedTimer timer;
    timer.start();

    QString strError;
    const QVector<QImage> pages = CVXImageFileReader::read(strPath, strError);

    QVERIFY(pages.isEmpty());
    QVERIFY2(strError.startsWith(QStringLiteral("The image data (%1 x %2 pixels per image) would need ")
                                     .arg(announced.width())
                                     .arg(announced.height())),
             qPrintable(strError));
    QVERIFY2(timer.elapsed() < kMaxMsPerFile, qPrintable(QString::number(timer.elapsed())));
    QVERIFY2(peakResidentBytes() - nPeakBefore < kMaxPeakGrowthWhenRefused,
             qPrintable(QString::number((peakResidentBytes() - nPeakBefore) / kMiB)));
}

QTEST_MAIN(TestAppCorruptInput)
#include "tst_app_corruptinput.moc"
