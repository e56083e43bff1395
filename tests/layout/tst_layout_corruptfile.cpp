#include "FileDamage.h"
#include "FileDialogAnswer.h"
#include "LayoutFixture.h"
#include "LayoutRecord.h"
#include "MessageBoxAnswer.h"

#include <VXImageFileReader.h>
#include <VXSLayoutConstants.h>
#include <file/VXSLayoutDocument.h>
#include <file/VXSLayoutFile.h>
#include <file/VXSLayoutFileCommands.h>
#include <VXSLayoutItemArrow.h>
#include <file/VXSLayoutItemCodec.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutItemText.h>
#include <VXSLayoutManager.h>
#include <VXSLayoutView.h>
#include <file/archive/VXSZipReader.h>

#include <QAbstractButton>
#include <QElapsedTimer>
#include <QGraphicsItem>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QUndoStack>
#include <QtEndian>
#include <QtTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <optional>

using namespace VXSLayout;

namespace {

constexpr quint32 kDefaultSeed = 20261124;
// Changed copies per kind of change: of the whole file, of layout.json, of the PNG entries as
// they are and of the PNG entries with their checksums put right.
constexpr int kDefaultChangedFiles = 150;
constexpr int kStyle = 4; // "Layout 3x2"
constexpr int kMaxChangesPerFile = 4;
// Truncation points spread over the data between the headers.
constexpr int kSpreadCuts = 64;
// A PNG entry is cut at every byte of its signature and first chunks, and at points beyond.
constexpr int kPngHeadCuts = 64;
constexpr int kPngSpreadCuts = 16;
// The sample decodes, lays out and renders in milliseconds; anything near this is a loop.
constexpr qint64 kMaxMsPerFile = 5000;
constexpr qint64 kMiB = 1024 * 1024;
// What one file may add to the peak: layout.json is read whole (up to 16 MiB) and parsed,
// the sample's images take well under a MiB once decoded, and the page is rendered; the
// margin covers the libraries' buffers and the sanitizers' bookkeeping.
constexpr qint64 kMaxPeakGrowth = 128 * kMiB;
// Refusing an image for its announced size needs no more than its header and a row.
constexpr qint64 kMaxPeakGrowthWhenRefused = 16 * kMiB;
// Files handled badly named in a failure; the rest are counted.
constexpr int kShownProblems = 20;
// Every so many files also go through the window's own Open.
constexpr int kWindowSampleEvery = 127;
// Library texts that once stood for a reason and said nothing about the file.
const std::array<const char*, 3> kUnclearReasons {"No error", "File already exists", "Premature end of file"};
const QString kJsonEntry = QStringLiteral("layout.json");
const QString kLayoutFilter = QStringLiteral("Layouts (*.vxlayout)");
const QSize kViewSize(420, 310);

// Where each file is written to be read: in memory when the system offers a folder there,
// since thousands of rewrites of one file on a disk wait for the disk.
QString scratchFolderTemplate()
{
    const QString strMemory = QStringLiteral("/dev/shm");
    return (QFileInfo(strMemory).isWritable() ? strMemory : QDir::tempPath())
        + QStringLiteral("/tst_layout_corruptfile-XXXXXX");
}

// Resident memory as the kernel reports it for this process: "VmRSS:" now, "VmHWM:" its peak.
qint64 residentBytes(const QByteArray& key)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : status.readAll().split('\n')) {
        if (line.startsWith(key))
            return line.mid(key.size()).trimmed().split(' ').first().toLongLong() * 1024;
    }
    return -1;
}

// Lets the peak start again from the memory in use now, so that each file's own peak shows.
bool resetPeak()
{
    QFile clear(QStringLiteral("/proc/self/clear_refs"));
    return clear.open(QIODevice::WriteOnly) && clear.write("5") == 1;
}

// Reading a layout file prints nothing: its damage is reported once, in the reason. The
// sanitizers report on the same stream, so their builds leave it alone.
#if defined(__SANITIZE_ADDRESS__)
constexpr bool kWatchStandardError = false;
#else
constexpr bool kWatchStandardError = true;
#endif

// Sends what the process writes to its standard error into the file (opened for appending)
// until restored; gives the standard error as it was.
int divertStandardError(int nInto)
{
    std::fflush(stderr);
    const int nSaved = ::dup(STDERR_FILENO);
    ::dup2(nInto, STDERR_FILENO);
    return nSaved;
}

// What was written since divertStandardError, after which the file is empty again.
QByteArray restoreStandardError(int nSaved, int nInto)
{
    std::fflush(stderr);
    ::dup2(nSaved, STDERR_FILENO);
    ::close(nSaved);
    struct stat status = {};
    QByteArray written;
    if (::fstat(nInto, &status) == 0 && status.st_size > 0) {
        written.resize(int(qMin<off_t>(status.st_size, 4096)));
        written.resize(int(qMax<ssize_t>(0, ::pread(nInto, written.data(), size_t(written.size()), 0))));
        if (::ftruncate(nInto, 0) != 0)
            written += " (and the capture could not be emptied)";
    }
    return written;
}

// --- Sample images ---------------------------------------------------------------------

// Ramps with a little noise, so that the PNG filters and deflate both have work to do.
QImage rampImage(QSize size, QImage::Format format, int nVariant)
{
    QImage image(size, QImage::Format_RGBA64);
    QRandomGenerator noise(quint32(nVariant + 1));
    for (int y = 0; y < size.height(); ++y) {
        auto* pLine = reinterpret_cast<QRgba64*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x) {
            const auto nNoise = quint16(noise.bounded(1024));
            pLine[x]
                = QRgba64::fromRgba64(quint16(x * 65535 / size.width()) ^ nNoise, quint16(y * 65535 / size.height()),
                                      quint16((x + y + nVariant * 37) * 509), quint16(65535 - nNoise * 8));
        }
    }
    return image.convertToFormat(format);
}

QImage indexedImage(QSize size)
{
    QImage image(size, QImage::Format_Indexed8);
    QVector<QRgb> colours;
    for (int i = 0; i < 16; ++i)
        colours << qRgb(i * 16, 255 - i * 12, (i * 77) % 256);
    image.setColorTable(colours);
    for (int y = 0; y < size.height(); ++y) {
        for (int x = 0; x < size.width(); ++x)
            image.setPixel(x, y, uint((x / 3 + y / 2) % colours.size()));
    }
    return image;
}

// The images of the sample layout: colour with and without alpha, 8- and 16-bit grey and a
// palette image, small enough to decode in a blink and of different sizes.
QVector<QImage> sampleImages()
{
    return {rampImage(QSize(48, 36), QImage::Format_ARGB32, 1),
            rampImage(QSize(40, 30), QImage::Format_RGB32, 2),
            rampImage(QSize(36, 44), QImage::Format_Grayscale8, 3),
            rampImage(QSize(30, 20), QImage::Format_Grayscale16, 4),
            indexedImage(QSize(24, 18)),
            rampImage(QSize(20, 32), QImage::Format_RGB32, 5)};
}

// --- Zip archives ----------------------------------------------------------------------

using Entries = QVector<QPair<QString, QByteArray>>;

void appendLe16(QByteArray& bytes, quint32 nValue)
{
    bytes.append(char(nValue & 0xff)).append(char((nValue >> 8) & 0xff));
}

void appendLe32(QByteArray& bytes, quint32 nValue)
{
    appendLe16(bytes, nValue & 0xffff);
    appendLe16(bytes, nValue >> 16);
}

quint32 crcOf(const QByteArray& bytes)
{
    return quint32(crc32(0, reinterpret_cast<const Bytef*>(bytes.constData()), uInt(bytes.size())));
}

// The fields local header and directory entry share: version needed, UTF-8 names, stored,
// 1 January 1980, checksum, sizes and the name's length.
QByteArray commonZipFields(const QByteArray& name, const QByteArray& data)
{
    QByteArray fields;
    appendLe16(fields, 20);
    appendLe16(fields, 0x0800);
    appendLe16(fields, 0);
    appendLe16(fields, 0);
    appendLe16(fields, (1 << 5) | 1);
    appendLe32(fields, crcOf(data));
    appendLe32(fields, quint32(data.size()));
    appendLe32(fields, quint32(data.size()));
    appendLe16(fields, quint32(name.size()));
    appendLe16(fields, 0);
    return fields;
}

// A zip archive of stored entries with correct sizes and checksums: a changed entry gets
// past the archive's checks to the layout reader's own.
QByteArray storedZip(const Entries& entries)
{
    QByteArray zip;
    QByteArray directory;
    for (const auto& entry : entries) {
        const QByteArray name = entry.first.toUtf8();
        const quint32 nOffset = quint32(zip.size());
        appendLe32(zip, 0x04034b50);
        zip.append(commonZipFields(name, entry.second)).append(name).append(entry.second);
        appendLe32(directory, 0x02014b50);
        appendLe16(directory, 20);
        directory.append(commonZipFields(name, entry.second));
        appendLe16(directory, 0); // comment
        appendLe16(directory, 0); // disk
        appendLe16(directory, 0); // internal attributes
        appendLe32(directory, 0); // external attributes
        appendLe32(directory, nOffset);
        directory.append(name);
    }
    const quint32 nDirectoryOffset = quint32(zip.size());
    zip.append(directory);
    appendLe32(zip, 0x06054b50);
    appendLe32(zip, 0); // this disk, the directory's disk
    appendLe16(zip, quint32(entries.size()));
    appendLe16(zip, quint32(entries.size()));
    appendLe32(zip, quint32(directory.size()));
    appendLe32(zip, nDirectoryOffset);
    appendLe16(zip, 0);
    return zip;
}

using FileDamage::Range;

quint32 le16At(const QByteArray& bytes, int nAt)
{
    return qFromLittleEndian<quint16>(bytes.constData() + nAt);
}

quint32 le32At(const QByteArray& bytes, int nAt)
{
    return qFromLittleEndian<quint32>(bytes.constData() + nAt);
}

// Where an archive without comment keeps its sizes and offsets: every local header, the
// central directory and the end record. Empty when the archive is not of that kind.
QVector<Range> zipStructure(const QByteArray& zip)
{
    constexpr int kEndRecordSize = 22;
    const int nEnd = zip.size() - kEndRecordSize;
    if (nEnd < 0 || zip.mid(nEnd, 4) != QByteArray("PK\x05\x06", 4))
        return {};
    const int nDirectory = int(le32At(zip, nEnd + 16));
    QVector<Range> ranges{{nDirectory, zip.size()}};
    int nAt = nDirectory;
    for (quint32 i = 0; i < le16At(zip, nEnd + 10); ++i) {
        const int nLocal = int(le32At(zip, nAt + 42));
        ranges << Range(nLocal, nLocal + 30 + int(le16At(zip, nLocal + 26) + le16At(zip, nLocal + 28)));
        nAt += 46 + int(le16At(zip, nAt + 28) + le16At(zip, nAt + 30) + le16At(zip, nAt + 32));
    }
    return ranges;
}

// The archive with a 16-bit field of the entry's local header (nField bytes into it: 6 flags,
// 8 method) and of its directory entry set alike, as a hostile archive would.
QByteArray withEntryField(QByteArray zip, const QByteArray& name, int nField, quint16 nValue)
{
    const QByteArray local("PK\x03\x04", 4);
    const QByteArray central("PK\x01\x02", 4);
    for (int nAt = zip.indexOf(local); nAt >= 0; nAt = zip.indexOf(local, nAt + 1)) {
        if (zip.mid(nAt + 30, name.size()) == name)
            qToLittleEndian(nValue, zip.data() + nAt + nField);
    }
    // The directory entry has "version made by" in front of the local header's fields.
    for (int nAt = zip.indexOf(central); nAt >= 0; nAt = zip.indexOf(central, nAt + 1)) {
        if (zip.mid(nAt + 46, name.size()) == name)
            qToLittleEndian(nValue, zip.data() + nAt + nField + 2);
    }
    return zip;
}

// Every byte of the ranges, and points spread over the whole.
QVector<int> truncationPoints(int nSize, const QVector<Range>& ranges, int nSpread)
{
    QVector<int> points;
    for (const Range& range : ranges) {
        for (int i = range.first; i < qMin(range.second, nSize); ++i)
            points << i;
    }
    for (int i = 0; i <= nSpread; ++i)
        points << int(qint64(nSize) * i / (nSpread + 1));
    std::sort(points.begin(), points.end());
    points.erase(std::unique(points.begin(), points.end()), points.end());
    return points;
}

// --- PNG chunks ------------------------------------------------------------------------

const QByteArray kPngSignature("\x89PNG\r\n\x1a\n", 8);

struct PngChunk
{
    QByteArray type;
    QByteArray data;
};

QVector<PngChunk> pngChunks(const QByteArray& png)
{
    QVector<PngChunk> chunks;
    int nAt = kPngSignature.size();
    while (nAt + 12 <= png.size()) {
        const int nLength = int(qFromBigEndian<quint32>(png.constData() + nAt));
        chunks.append({png.mid(nAt + 4, 4), png.mid(nAt + 8, nLength)});
        nAt += 12 + nLength;
    }
    return chunks;
}

QByteArray chunkBytes(const PngChunk& chunk)
{
    QByteArray bytes(4, '\0');
    qToBigEndian(quint32(chunk.data.size()), bytes.data());
    bytes.append(chunk.type).append(chunk.data);
    QByteArray crc(4, '\0');
    qToBigEndian(crcOf(chunk.type + chunk.data), crc.data());
    return bytes.append(crc);
}

QByteArray pngOf(const QVector<PngChunk>& chunks)
{
    QByteArray png = kPngSignature;
    for (const PngChunk& chunk : chunks)
        png.append(chunkBytes(chunk));
    return png;
}

int chunkIndex(const QVector<PngChunk>& chunks, const char* pType)
{
    for (int i = 0; i < chunks.size(); ++i) {
        if (chunks.at(i).type == pType)
            return i;
    }
    return -1;
}

using PngChange = std::function<void(QVector<PngChunk>&)>;

// A field of the header (the first chunk): 0 width, 4 height.
quint32 headerValue(const QVector<PngChunk>& chunks, int nOffset)
{
    return qFromBigEndian<quint32>(chunks[0].data.constData() + nOffset);
}

// The PNG with its header's field at nOffset (0 width, 4 height, 8 bit depth, 9 colour type,
// 10 compression, 11 filter, 12 interlace) set, and every checksum right.
PngChange headerField(int nOffset, quint32 nValue)
{
    return [nOffset, nValue](QVector<PngChunk>& chunks) {
        QByteArray& header = chunks[0].data;
        if (nOffset < 8)
            qToBigEndian(nValue, header.data() + nOffset);
        else
            header[nOffset] = char(nValue);
    };
}

PngChange withoutChunk(const char* pType)
{
    return [pType](QVector<PngChunk>& chunks) {
        const int nIndex = chunkIndex(chunks, pType);
        if (nIndex >= 0)
            chunks.removeAt(nIndex);
    };
}

PngChange withChunk(int nBeforeEnd, const PngChunk& chunk)
{
    return [nBeforeEnd, chunk](QVector<PngChunk>& chunks) { chunks.insert(chunks.size() - nBeforeEnd, chunk); };
}

PngChange imageData(const std::function<void(QByteArray&)>& change)
{
    return [change](QVector<PngChunk>& chunks) {
        const int nIndex = chunkIndex(chunks, "IDAT");
        if (nIndex >= 0)
            change(chunks[nIndex].data);
    };
}

QByteArray zlibOf(const QByteArray& data)
{
    uLongf nSize = compressBound(uLong(data.size()));
    QByteArray packed(int(nSize), '\0');
    compress2(reinterpret_cast<Bytef*>(packed.data()), &nSize, reinterpret_cast<const Bytef*>(data.constData()),
              uLong(data.size()), 9);
    packed.resize(int(nSize));
    return packed;
}

// Changes of a PNG entry with every checksum right, so that the decoder meets them.
QVector<QPair<QString, PngChange>> pngChanges()
{
    const QByteArray bomb = QByteArray("Comment") + '\0' + '\0' + zlibOf(QByteArray(16 * kMiB, 'x'));
    return {
        {"width 0", headerField(0, 0)},
        {"height 0", headerField(4, 0)},
        {"width doubled, data too short",
         [](QVector<PngChunk>& chunks) { headerField(0, headerValue(chunks, 0) * 2)(chunks); }},
        {"announcing 8000 x 8000",
         [](QVector<PngChunk>& chunks) {
             headerField(0, 8000)(chunks);
             headerField(4, 8000)(chunks);
         }},
        {"announcing 100000 x 100000",
         [](QVector<PngChunk>& chunks) {
             headerField(0, 100000)(chunks);
             headerField(4, 100000)(chunks);
         }},
        {"width 2^31-1", headerField(0, 0x7fffffff)},
        {"width 2^32-1", headerField(0, 0xffffffff)},
        {"height 1000000", headerField(4, 1000000)},
        {"one row more", [](QVector<PngChunk>& chunks) { headerField(4, headerValue(chunks, 4) + 1)(chunks); }},
        {"bit depth 3", headerField(8, 3)},
        {"bit depth 16", headerField(8, 16)},
        {"bit depth 1", headerField(8, 1)},
        {"colour type 1", headerField(9, 1)},
        {"colour type 3", headerField(9, 3)},
        {"colour type 7", headerField(9, 7)},
        {"compression 1", headerField(10, 1)},
        {"filter 1", headerField(11, 1)},
        {"interlaced", headerField(12, 1)},
        {"interlace 2", headerField(12, 2)},
        {"header too short", [](QVector<PngChunk>& chunks) { chunks[0].data.chop(1); }},
        {"header too long", [](QVector<PngChunk>& chunks) { chunks[0].data.append('\0'); }},
        {"no header", withoutChunk("IHDR")},
        {"two headers", [](QVector<PngChunk>& chunks) { chunks.insert(1, chunks.first()); }},
        {"no image data", withoutChunk("IDAT")},
        {"no end", withoutChunk("IEND")},
        {"no palette", withoutChunk("PLTE")},
        {"palette of one colour",
         [](QVector<PngChunk>& chunks) {
             const int nIndex = chunkIndex(chunks, "PLTE");
             if (nIndex >= 0)
                 chunks[nIndex].data.truncate(3);
         }},
        {"palette not a multiple of three",
         [](QVector<PngChunk>& chunks) {
             const int nIndex = chunkIndex(chunks, "PLTE");
             if (nIndex >= 0)
                 chunks[nIndex].data.chop(1);
         }},
        {"transparency longer than the palette", withChunk(2, {"tRNS", QByteArray(300, '\x80')})},
        {"image data cut in half", imageData([](QByteArray& data) { data.truncate(data.size() / 2); })},
        {"image data of one byte", imageData([](QByteArray& data) { data.truncate(1); })},
        {"image data empty", imageData([](QByteArray& data) { data.clear(); })},
        {"zlib header damaged", imageData([](QByteArray& data) { data[0] = char(data.at(0) ^ 0x0f); })},
        {"deflate data damaged",
         imageData([](QByteArray& data) { data[data.size() / 2] = char(~data.at(data.size() / 2)); })},
        {"adler checksum damaged",
         imageData([](QByteArray& data) { data[data.size() - 1] = char(data.at(data.size() - 1) ^ 1); })},
        {"image data with garbage after it", imageData([](QByteArray& data) { data.append(QByteArray(64, '\x55')); })},
        {"image data of another size", imageData([](QByteArray& data) { data = zlibOf(QByteArray(7, '\0')); })},
        {"filter type 9 on every row", imageData([](QByteArray& data) { data = zlibOf(QByteArray(4096, '\x09')); })},
        {"image data after the end", withChunk(0, {"IDAT", zlibOf(QByteArray(16, '\0'))})},
        {"unknown critical chunk", withChunk(1, {"ABCD", QByteArray("data")})},
        {"one MiB of text", withChunk(1, {"tEXt", QByteArray("Comment") + '\0' + QByteArray(kMiB, 'y')})},
        {"compressed text of 16 MiB", withChunk(1, {"zTXt", bomb})},
        {"text without keyword", withChunk(1, {"tEXt", QByteArray(1, '\0') + "value"})},
        {"keyword of 200 characters", withChunk(1, {"tEXt", QByteArray(200, 'k') + '\0' + "value"})},
        {"huge resolution", withChunk(1, {"pHYs", QByteArray("\xff\xff\xff\xff\xff\xff\xff\xff\x01", 9)})},
        {"resolution of zero", withChunk(1, {"pHYs", QByteArray(9, '\0')})},
        {"gamma of zero", withChunk(1, {"gAMA", QByteArray(4, '\0')})},
        {"colour profile of garbage",
         withChunk(1, {"iCCP", QByteArray("icc") + '\0' + '\0' + zlibOf(QByteArray(500, 'g'))})},
        {"significant bits of 200", withChunk(1, {"sBIT", QByteArray(4, '\xc8')})},
    };
}

// The PNG with a few bytes of its chunks' data changed and every checksum put right.
QByteArray withChangedChunkData(const QByteArray& png, QRandomGenerator& random)
{
    QVector<PngChunk> chunks = pngChunks(png);
    QByteArray data;
    for (const PngChunk& chunk : chunks)
        data.append(chunk.data);
    data = FileDamage::withRandomChanges(data, {{0, qMin(13, data.size())}}, kMaxChangesPerFile, random);
    int nAt = 0;
    for (PngChunk& chunk : chunks) {
        chunk.data = data.mid(nAt, chunk.data.size());
        nAt += chunk.data.size();
    }
    return pngOf(chunks);
}

// --- layout.json -----------------------------------------------------------------------

using JsonPath = QVector<QVariant>; // keys and list indexes

QString pathText(const JsonPath& path)
{
    QStringList steps;
    for (const QVariant& step : path)
        steps << (step.type() == QVariant::Int ? QStringLiteral("[%1]").arg(step.toInt()) : step.toString());
    return steps.join(QLatin1Char('.'));
}

QJsonValue valueAt(const QJsonValue& root, const JsonPath& path)
{
    QJsonValue value = root;
    for (const QVariant& step : path)
        value = value.isObject() ? value.toObject().value(step.toString()) : value.toArray().at(step.toInt());
    return value;
}

// The value with the one at the path replaced, or taken out when no value is given.
QJsonValue changedAt(const QJsonValue& root, const JsonPath& path, int nDepth, const std::optional<QJsonValue>& value)
{
    const QVariant& step = path.at(nDepth);
    const std::optional<QJsonValue> replacement
        = nDepth + 1 == path.size() ? value : changedAt(valueAt(root, {step}), path, nDepth + 1, value);
    if (root.isObject()) {
        QJsonObject object = root.toObject();
        if (replacement)
            object.insert(step.toString(), *replacement);
        else
            object.remove(step.toString());
        return object;
    }
    QJsonArray array = root.toArray();
    if (replacement)
        array.replace(step.toInt(), *replacement);
    else
        array.removeAt(step.toInt());
    return array;
}

void collectPaths(const QJsonValue& value, JsonPath& path, QVector<JsonPath>& paths)
{
    if (!path.isEmpty())
        paths << path;
    if (value.isObject()) {
        const QJsonObject object = value.toObject();
        for (auto it = object.begin(); it != object.end(); ++it) {
            path << it.key();
            collectPaths(it.value(), path, paths);
            path.removeLast();
        }
    } else if (value.isArray()) {
        const QJsonArray array = value.toArray();
        for (int i = 0; i < array.size(); ++i) {
            path << i;
            collectPaths(array.at(i), path, paths);
            path.removeLast();
        }
    }
}

// The items worth changing one value at a time: the first of every kind, each kind's values
// go through their own decoding. A line and an arrow differ in their values only, as do a
// rectangle and an ellipse.
QVector<int> representativeItems(const QJsonArray& items)
{
    QStringList seen;
    QVector<int> indexes;
    for (int i = 0; i < items.size(); ++i) {
        const QString strKind = items.at(i).toObject().value(QStringLiteral("kind")).toString();
        if (!seen.contains(strKind)) {
            seen << strKind;
            indexes << i;
        }
    }
    return indexes;
}

// Every place a value can be changed: the header's keys and values, and those of the
// representative items.
QVector<JsonPath> changeablePaths(const QJsonObject& json)
{
    QVector<JsonPath> paths;
    QJsonObject header = json;
    header.insert(QStringLiteral("items"), QJsonArray());
    JsonPath path;
    collectPaths(header, path, paths);
    const QJsonArray items = json.value(QStringLiteral("items")).toArray();
    for (const int nItem : representativeItems(items)) {
        path = {QStringLiteral("items"), nItem};
        collectPaths(items.at(nItem), path, paths);
    }
    return paths;
}

// Values of the wrong type or out of every range, for a place holding the value given.
QVector<QPair<QString, QJsonValue>> hostileValues(const QJsonValue& current)
{
    QVector<QPair<QString, QJsonValue>> values{{"null", QJsonValue()}, {"a list", QJsonArray{1, 2}}};
    if (current.isDouble()) {
        values += {{"text", "7"},      {"true", true}, {"-1", -1},       {"0.5", 0.5},
                   {"1e-300", 1e-300}, {"-1e9", -1e9}, {"1e300", 1e300}, {"2^31", 2147483648.0}};
    } else if (current.isString()) {
        values += {{"a number", 7}, {"empty text", ""}, {"other text", "images/../layout.json"}};
    } else if (current.isBool()) {
        values += {{"a number", 1}, {"text", "true"}};
    } else {
        values += {
            {"a number", 3}, {"text", "x"}, {"an empty object", QJsonObject()}, {"an object", QJsonObject{{"a", 1}}}};
    }
    return values;
}

QByteArray jsonText(const QJsonObject& json)
{
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

QJsonObject withValue(const QJsonObject& json, const JsonPath& path, const std::optional<QJsonValue>& value)
{
    return changedAt(json, path, 0, value).toObject();
}

// The number of items a layout.json holds; -1 when it holds no list of them.
int itemCountOf(const QByteArray& json)
{
    const QJsonValue items = QJsonDocument::fromJson(json).object().value(QStringLiteral("items"));
    return items.isArray() ? items.toArray().size() : -1;
}

QJsonObject withItems(const QJsonObject& json, const QJsonArray& items)
{
    QJsonObject changed = json;
    changed.insert(QStringLiteral("items"), items);
    return changed;
}

QJsonArray itemsOf(const QJsonObject& json)
{
    return json.value(QStringLiteral("items")).toArray();
}

// The index of the first item of the kind.
int firstItem(const QJsonObject& json, const QString& strKind)
{
    const QJsonArray items = itemsOf(json);
    for (int i = 0; i < items.size(); ++i) {
        if (items.at(i).toObject().value(QStringLiteral("kind")).toString() == strKind)
            return i;
    }
    return -1;
}

QJsonObject withItemValue(const QJsonObject& json, const QString& strKind, const QString& strKey,
                          const QJsonValue& value)
{
    return withValue(json, {QStringLiteral("items"), firstItem(json, strKind), strKey}, value);
}

// The item repeated nCount times in place of all items.
QJsonObject withRepeatedItem(const QJsonObject& json, const QString& strKind, int nCount)
{
    const QJsonValue item = itemsOf(json).at(firstItem(json, strKind));
    QJsonArray items;
    for (int i = 0; i < nCount; ++i)
        items.append(item);
    return withItems(json, items);
}

QByteArray nestedLists(int nDepth)
{
    return QByteArray(nDepth, '[') + QByteArray(nDepth, ']');
}

// Whole texts of layout.json that are no valid layout in ways a change of one value cannot
// make, or valid ones at the edges of what is allowed.
QVector<QPair<QString, QByteArray>> specialJsonTexts(const QJsonObject& json)
{
    const QByteArray text = jsonText(json);
    const int nZ = text.indexOf("\"z\":") + 4;
    const auto withZText = [&text, nZ](const QByteArray& z) {
        QByteArray changed = text;
        const int nEnd = changed.indexOf(',', nZ);
        return changed.replace(nZ, nEnd - nZ, z);
    };
    const auto withExtraKey = [&text](const QByteArray& value) {
        QByteArray changed = text;
        return changed.insert(1, "\"extra\":" + value + ",");
    };
    const QString strLongText(CVXSLayoutItemCodec::MaxTextLength, QLatin1Char('w'));
    return {
        {"empty", QByteArray()},
        {"only spaces", QByteArray(100, ' ')},
        {"a list", "[]"},
        {"a number", "7"},
        {"text", "\"vxlayout\""},
        {"null", "null"},
        {"NaN for z", withZText("NaN")},
        {"Infinity for z", withZText("Infinity")},
        {"-Infinity for z", withZText("-Infinity")},
        {"1e400 for z", withZText("1e400")},
        {"-1e400 for z", withZText("-1e400")},
        {"z in hexadecimal", withZText("0x1f")},
        {"z with a leading zero", withZText("026")},
        {"lists nested 500 deep in an extra key", withExtraKey(nestedLists(500))},
        {"lists nested 5000 deep in an extra key", withExtraKey(nestedLists(5000))},
        {"lists nested 100000 deep", nestedLists(100000)},
        {"objects nested 5000 deep in an extra key",
         withExtraKey(QByteArray("{\"a\":").repeated(5000) + "1" + QByteArray(5000, '}'))},
        {"unclosed object", text.left(text.size() - 1)},
        {"garbage after the object", text + "garbage"},
        {"two objects", text + text},
        {"byte order mark", "\xef\xbb\xbf" + text},
        {"UTF-16", QByteArray(reinterpret_cast<const char*>(QString::fromUtf8(text).utf16()), text.size() * 2)},
        {"invalid UTF-8 in a text", QByteArray(text).replace("\"text\":\"", "\"text\":\"\xff\xfe\xc3")},
        {"NUL in a text", QByteArray(text).replace("\"text\":\"", QByteArray("\"text\":\"\\u0000", 14))},
        {"a key twice", QByteArray(text).replace("\"z\":", "\"z\":\"x\",\"z\":")},
        {"comment", "/* layout */" + text},
        {"no items", jsonText(withItems(json, QJsonArray()))},
        {"text of the longest length", jsonText(withItemValue(json, "text", "text", strLongText))},
        {"text a character too long", jsonText(withItemValue(json, "text", "text", strLongText + QLatin1Char('w')))},
        {"text of 4 million characters",
         jsonText(withItemValue(json, "text", "text", QString(4 * kMiB, QLatin1Char('w'))))},
        {"kind of 8 million characters",
         jsonText(withItemValue(json, "text", "kind", QString(8 * kMiB, QLatin1Char('k'))))},
        {"layout.json over 16 MiB", withExtraKey('"' + QByteArray(16 * kMiB, 'p') + '"')},
        {"font of 100000 points",
         jsonText(withItemValue(json, "text", "font", "DejaVu Sans,100000,-1,5,50,0,0,0,0,0"))},
        {"font of 100000 pixels",
         jsonText(withItemValue(json, "text", "font", "DejaVu Sans,-1,100000,5,50,0,0,0,0,0"))},
        {"font of -5 points", jsonText(withItemValue(json, "text", "font", "DejaVu Sans,-5,-1,5,50,0,0,0,0,0"))},
        {"font of 1e300 points", jsonText(withItemValue(json, "text", "font", "DejaVu Sans,1e300,-1,5,50,0,0,0,0,0"))},
        {"font of NaN points", jsonText(withItemValue(json, "text", "font", "DejaVu Sans,nan,-1,5,50,0,0,0,0,0"))},
        {"font with weight 5000", jsonText(withItemValue(json, "text", "font", "DejaVu Sans,12,-1,5,5000,0,0,0,0,0"))},
        {"font with stretch -3", jsonText(withItemValue(json, "text", "font", "DejaVu Sans,12,-1,5,50,0,0,0,-3,0"))},
        {"font of commas", jsonText(withItemValue(json, "text", "font", QString(1000, QLatin1Char(','))))},
        {"font name only", jsonText(withItemValue(json, "text", "font", "DejaVu Sans"))},
        {"text item a million wide", jsonText(withItemValue(json, "text", "rect", QJsonArray{-1e6, -1e6, 1e6, 1e6}))},
        {"pen of 1000 with dashes",
         jsonText(withItemValue(
             json, "ellipse", "pen",
             QJsonObject{{"color", "#ff000000"}, {"width", 1000}, {"style", 2}, {"cap", 16}, {"join", 64}}))},
        {"hairline dashes around a million",
         jsonText(withItemValue(
             withItemValue(json, "rectangle", "rect", QJsonArray{-1e6, -1e6, 2e6, 2e6}), "rectangle", "pen",
             QJsonObject{{"color", "#ff000000"}, {"width", 0}, {"style", 3}, {"cap", 16}, {"join", 64}}))},
        {"arrow head a million long", jsonText(withItemValue(json, "arrow", "headLength", 1e6))},
        {"arrow head 100 times wider", jsonText(withItemValue(json, "arrow", "headWidthRatio", 100))},
        {"arrow from corner to corner",
         jsonText(withItemValue(withItemValue(json, "arrow", "start", QJsonArray{-1000000, -1000000}), "arrow", "end",
                                QJsonArray{1000000, 1000000}))},
        {"arrow of no length",
         jsonText(withItemValue(json, "arrow", "end",
                                itemsOf(json).at(firstItem(json, "arrow")).toObject().value("start")))},
        {"page of 1 x 1", jsonText(withValue(json, {"page"}, QJsonObject{{"width", 1}, {"height", 1}}))},
        {"page of 100000 x 1", jsonText(withValue(json, {"page"}, QJsonObject{{"width", 100000}, {"height", 1}}))},
        {"page of 1 x 1 with an arrow a million out",
         jsonText(withItemValue(withValue(json, {"page"}, QJsonObject{{"width", 1}, {"height", 1}}), "arrow", "end",
                                QJsonArray{1000000, -1000000}))},
        {"free style", jsonText(withValue(json, {"style"}, 0))},
        {"layout 4x4", jsonText(withValue(json, {"style"}, 8))},
        {"layout 1x1", jsonText(withValue(json, {"style"}, 1))},
        {"every image in cell 0", jsonText(withRepeatedItem(json, "image", 6))},
        {"255 images in cell 0", jsonText(withRepeatedItem(json, "image", 255))},
        {"300 images in cell 0", jsonText(withRepeatedItem(json, "image", 300))},
        {"2000 rectangles", jsonText(withRepeatedItem(json, "rectangle", 2000))},
        {"10001 rectangles", jsonText(withRepeatedItem(json, "rectangle", 10001))},
        {"image item in cell 15 of six", jsonText(withItemValue(json, "image", "cell", 15))},
        {"image entry missing", jsonText(withItemValue(json, "image", "image", "images/99.png"))},
        {"image entry of the JSON", jsonText(withItemValue(json, "image", "image", "layout.json"))},
        {"image entry going up", jsonText(withItemValue(json, "image", "image", "../images/0.png"))},
        {"image entry absolute", jsonText(withItemValue(json, "image", "image", "/images/0.png"))},
        {"image entry a folder", jsonText(withItemValue(json, "image", "image", "images/"))},
        {"image entry empty", jsonText(withItemValue(json, "image", "image", ""))},
        {"image entry with NUL",
         jsonText(withItemValue(json, "image", "image", QStringLiteral("images/0.png") + QChar(0) + "x"))},
        {"every item z 26",
         jsonText(withItems(json,
                            [&json] {
                                QJsonArray items = itemsOf(json);
                                for (int i = 0; i < items.size(); ++i) {
                                    QJsonObject item = items.at(i).toObject();
                                    item.insert(QStringLiteral("z"), 26);
                                    items.replace(i, item);
                                }
                                return items;
                            }()))},
    };
}

// --- Checks ----------------------------------------------------------------------------

bool isFinite(const QRectF& rect)
{
    return std::isfinite(rect.x()) && std::isfinite(rect.y()) && std::isfinite(rect.width())
        && std::isfinite(rect.height());
}

// Finite, and no further out than an item can lie: it may start at the largest coordinate and
// be as large again, and its pen or an arrow's heads reach a little further.
bool isWithinReach(const QRectF& rect)
{
    const double dReach = 2 * MaxCoordinate + 10000;
    return isFinite(rect) && qAbs(rect.left()) <= dReach && qAbs(rect.right()) <= dReach
        && qAbs(rect.top()) <= dReach && qAbs(rect.bottom()) <= dReach;
}

QString itemProblem(const CVXSLayoutItemState& state)
{
    static const QVector<int> kinds{ImageItemType, TextItemType, RectangleItemType, EllipseItemType, ArrowItemType};
    if (!kinds.contains(state.nType))
        return QStringLiteral("an item of type %1").arg(state.nType);
    if (!isFinite(state.rect) || state.rect.width() < 0 || state.rect.height() < 0)
        return QStringLiteral("an item with the rectangle (%1, %2, %3, %4)")
            .arg(state.rect.x())
            .arg(state.rect.y())
            .arg(state.rect.width())
            .arg(state.rect.height());
    if (!std::isfinite(state.z) || !std::isfinite(state.pen.widthF()) || state.pen.widthF() < 0
        || !std::isfinite(state.dHeadLength) || !std::isfinite(state.dHeadWidthRatio))
        return QStringLiteral("an item with z %1, pen %2, head %3/%4")
            .arg(state.z)
            .arg(state.pen.widthF())
            .arg(state.dHeadLength)
            .arg(state.dHeadWidthRatio);
    if (state.nType == TextItemType) {
        const QFontMetricsF metrics(state.font);
        if (!std::isfinite(metrics.height()) || !std::isfinite(metrics.horizontalAdvance(state.strText.left(100))))
            return QStringLiteral("a text in the font \"%1\"").arg(state.font.toString());
    }
    if (state.nType != ImageItemType)
        return QString();
    const qint64 nBytes = state.image.sizeInBytes();
    if (state.image.isNull() || nBytes > CVXImageFileReader::kMaxDecodedBytes)
        return QStringLiteral("an image of %1 x %2").arg(state.image.width()).arg(state.image.height());
    if (state.nCellIndex < -1 || state.nCellIndex >= MaxCellCount)
        return QStringLiteral("an image in cell %1").arg(state.nCellIndex);
    return QString();
}

// What is wrong with a document read from a file; nothing when it is a sane layout.
QStringList documentProblems(const CVXSLayoutDocument& document, int nItems)
{
    QStringList problems;
    if (document.nStyle < 0 || document.nStyle >= StyleCount)
        problems << QStringLiteral("style %1").arg(document.nStyle);
    if (document.pageSize.isEmpty())
        problems << QStringLiteral("a page of %1 x %2").arg(document.pageSize.width()).arg(document.pageSize.height());
    if (document.items.size() != nItems)
        problems << QStringLiteral("%1 items read from a file of %2").arg(document.items.size()).arg(nItems);
    for (const CVXSLayoutItemState& state : document.items) {
        const QString strProblem = itemProblem(state);
        if (!strProblem.isEmpty())
            problems << strProblem;
    }
    return problems;
}

// What is wrong with the layout the manager shows; the rules every window state keeps:
// items inside their z band with distinct values, cell counters matching the images in
// the cells, finite geometry.
QStringList layoutProblems(CVXSLayoutManager& manager, int nItems)
{
    QStringList problems;
    const QList<QGraphicsItem*> items = manager.layoutItems();
    if (items.size() != nItems)
        problems << QStringLiteral("%1 items shown of %2").arg(items.size()).arg(nItems);
    const int nTopZ = manager.getLayoutView()->topZ();
    QSet<qreal> zValues;
    std::array<int, MaxCellCount> images{};
    for (const QGraphicsItem* pItem : items) {
        const qreal z = pItem->zValue();
        if (!isWithinReach(pItem->sceneBoundingRect()))
            problems << QStringLiteral("an item of type %1 lies beyond reach").arg(pItem->type());
        if (z <= BaseZ || z > nTopZ)
            problems << QStringLiteral("an item of type %1 at z %2 (top %3)").arg(pItem->type()).arg(z).arg(nTopZ);
        if (zValues.contains(z))
            problems << QStringLiteral("two items at z %1").arg(z);
        zValues.insert(z);
        if (pItem->type() == ImageItemType) {
            const int nCell = static_cast<const CVXSLayoutItemImage*>(pItem)->getCellIndex();
            if (nCell >= 0 && nCell < MaxCellCount)
                ++images[size_t(nCell)];
        }
    }
    for (int nCell = 0; nCell < MaxCellCount; ++nCell) {
        if (manager.cellUseCount(nCell) != images[size_t(nCell)])
            problems << QStringLiteral("cell %1 counts %2 images, holds %3")
                            .arg(nCell)
                            .arg(manager.cellUseCount(nCell))
                            .arg(images[size_t(nCell)]);
    }
    return problems;
}

// What a failed read must leave as it was.
CVXSLayoutDocument untouchedDocument()
{
    CVXSLayoutDocument document;
    document.nStyle = 5;
    document.pageSize = QSize(123, 45);
    CVXSLayoutItemState item;
    item.nType = EllipseItemType;
    item.rect = QRectF(1, 2, 3, 4);
    item.z = 77;
    document.items.append(item);
    return document;
}

bool isUntouched(const CVXSLayoutDocument& document)
{
    const CVXSLayoutDocument untouched = untouchedDocument();
    return document.nStyle == untouched.nStyle && document.pageSize == untouched.pageSize && document.items.size() == 1
        && document.items.first() == untouched.items.first();
}

// Answers the one message box Open shows here: the error for a file it refuses, the New
// question for one it could open, which is answered No so that the layout stays.
MessageBoxAnswer keepTheLayout()
{
    return [](QMessageBox* pBox) {
        QAbstractButton* pButton = pBox->button(QMessageBox::Ok);
        if (!pButton)
            pButton = pBox->button(QMessageBox::No);
        if (pButton)
            QTest::mouseClick(pButton, Qt::LeftButton);
    };
}

} // namespace

// Damaged and hostile layout files must be refused with a reason or open as a sane layout,
// quickly and without memory the file does not justify; a refused file leaves the window's
// layout as it was.
class TestLayoutCorruptFile : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanupTestCase();

    void truncatedFiles();
    void changedBytes();
    void changedJsonValues();
    void specialJsonTexts();
    void specialArchives();
    void changedJsonText();
    void truncatedImages();
    void changedImages();
    void changedImageBytes();
    void refusedFilesLeaveTheWindowAlone();
    void hugeAnnouncedImagesAreRefusedUndecoded_data();
    void hugeAnnouncedImagesAreRefusedUndecoded();

private:
    void buildLayout();
    // What reading a file (and showing it when it opened) came to.
    struct FileOutcome
    {
        bool bOpened = false;
        QString strReason; // why it was refused
        qint64 nMs = 0;
        qint64 nPeakGrowth = 0;
        QStringList problems;
    };

    // Reads one file and notes what went wrong, if anything; a file handled badly stays
    // behind to be looked at. nItems is the number of items the file holds, -1 when it
    // holds no valid list of them.
    void tryFile(const QString& strName, const QByteArray& bytes, int nItems, bool bInWindow = false);
    // Reads the file and, when it opens, shows it in the scratch window.
    FileOutcome readFile(const QString& strPath, int nItems);
    QString tryOpened(const CVXSLayoutDocument& document, int nItems);
    QString tryInWindow(const QString& strPath, bool bRead, const QString& strReason);
    // The saved file packed again with one entry in place of the saved one.
    void tryEntry(const QString& strName, const QString& strEntry, const QByteArray& data, bool bInWindow = false);
    void tryJson(const QString& strName, const QJsonObject& json);
    void startCounting();
    // Reports the counts and fails, naming the first of them, when files were handled badly.
    void verifyAllHandled(const char* pKind);

    QTemporaryDir m_dir;
    QTemporaryDir m_scratch{scratchFolderTemplate()};
    int m_nStandardErrorCapture = -1; // where standard error goes while a file is read
    quint32 m_nSeed = kDefaultSeed;
    int m_nChangedFiles = kDefaultChangedFiles;
    std::unique_ptr<LayoutFixture> m_pWindow; // the layout built and saved; Open is tried on it
    std::unique_ptr<LayoutFixture> m_pScratch; // every document read is shown here
    LayoutRecord m_saved;
    QImage m_savedView; // what the window's view shows of it
    QString m_strSavedPath;
    QByteArray m_savedFile;
    Entries m_savedEntries;
    QJsonObject m_savedJson;
    int m_nSavedItems = 0;
    qint64 m_nPeakBefore = 0;
    qint64 m_nLargestGrowth = 0;
    bool m_bVerbose = qEnvironmentVariableIsSet("VX_CORRUPT_VERBOSE");
    QElapsedTimer m_timer;
    QStringList m_problems;
    int m_nRefused = 0;
    int m_nOpened = 0;
    int m_nTried = 0;
    int m_nTriedInWindow = 0;
    qint64 m_nSlowestMs = 0;
};

void TestLayoutCorruptFile::initTestCase()
{
    QStandardPaths::setTestModeEnabled(true);
    QVERIFY(m_dir.isValid());
    QVERIFY(m_scratch.isValid());
    if (kWatchStandardError) {
        m_nStandardErrorCapture = ::open(QFile::encodeName(m_scratch.filePath(QStringLiteral("stderr"))).constData(),
                                         O_RDWR | O_CREAT | O_TRUNC | O_APPEND, 0600);
        QVERIFY(m_nStandardErrorCapture >= 0);
    }
    m_nSeed = FileDamage::seed(kDefaultSeed);
    m_nChangedFiles = FileDamage::changedFiles(kDefaultChangedFiles);
    qInfo("Seed %u (VX_CORRUPT_SEED), %d changed files of each kind (VX_CORRUPT_FILES), files in %s", m_nSeed,
          m_nChangedFiles, qPrintable(m_dir.path()));

    m_pWindow = std::make_unique<LayoutFixture>(kViewSize);
    m_pScratch = std::make_unique<LayoutFixture>(kViewSize);
    buildLayout();
    m_strSavedPath = m_dir.filePath(QStringLiteral("saved.vxlayout"));
    QVERIFY(m_pWindow->manager()->fileCommands()->saveTo(m_strSavedPath));
    m_saved = LayoutRecord::take(*m_pWindow->manager());
    m_savedView = m_pWindow->grabViewport();
    m_nSavedItems = m_saved.items.size();
    // The images, a rectangle, an ellipse, a text, a line, an arrow and a double arrow.
    QCOMPARE(m_nSavedItems, sampleImages().size() + 6);
    QFile file(m_strSavedPath);
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_savedFile = file.readAll();
    QVERIFY(!zipStructure(m_savedFile).isEmpty());

    // The entries as the program wrote them; changed ones are packed again around them.
    CVXSZipReader archive(m_strSavedPath);
    QByteArray json;
    QVERIFY(archive.read(kJsonEntry, CVXSLayoutFile::MaxJsonBytes, json));
    m_savedJson = QJsonDocument::fromJson(json).object();
    m_savedEntries.append({kJsonEntry, json});
    for (int i = 0; i < sampleImages().size(); ++i) {
        const QString strEntry = QStringLiteral("images/%1.png").arg(i);
        QByteArray png;
        QVERIFY2(archive.read(strEntry, kMiB, png), qPrintable(archive.errorText()));
        m_savedEntries.append({strEntry, png});
    }

    // The saved file itself opens, and so does its copy packed again: what the changed
    // copies are measured against.
    startCounting();
    tryFile(QStringLiteral("saved"), m_savedFile, m_nSavedItems);
    tryFile(QStringLiteral("repacked"), storedZip(m_savedEntries), m_nSavedItems);
    verifyAllHandled("files as saved");
    QCOMPARE(m_nOpened, 2);
}

void TestLayoutCorruptFile::cleanupTestCase()
{
    qInfo("%d files tried in all, %d of them also through the window's Open; slowest %lld ms", m_nTried,
          m_nTriedInWindow, m_nSlowestMs);
    m_pScratch.reset();
    m_pWindow.reset();
    if (m_nStandardErrorCapture >= 0)
        ::close(m_nStandardErrorCapture);
}

void TestLayoutCorruptFile::buildLayout()
{
    LayoutFixture& layout = *m_pWindow;
    layout.chooseStyle(kStyle);
    // Images as the host hands them over: in their own formats.
    for (const QImage& image : sampleImages()) {
        auto* pImage = new CVXSLayoutItemImage(image);
        layout.scene()->addItem(pImage);
        layout.manager()->addImageItem(pImage, true);
    }
    layout.addItem("rectangle", QRectF(20, 250, 70, 40));
    layout.addItem("ellipse", QRectF(100, 250, 60, 40));
    auto* pText = static_cast<CVXSLayoutItemText*>(layout.addItem("text", QRectF(180, 250, 100, 24)));
    pText->setText(QStringLiteral("Maus 3 \u2013 Tag 14"));
    pText->setFont(QFont(QStringLiteral("DejaVu Sans"), 11, QFont::Bold));
    pText->setColor(QColor(160, 20, 40));
    // A line, an arrow and a double arrow.
    for (int i = 0; i < 3; ++i) {
        auto* pArrow = static_cast<CVXSLayoutItemArrow*>(layout.addItem("arrow", QRectF(290, 240 + 20 * i, 110, 0)));
        pArrow->setStartHead(i == 2);
        pArrow->setEndHead(i > 0);
    }
}

void TestLayoutCorruptFile::startCounting()
{
    m_timer.start();
    m_nPeakBefore = residentBytes("VmHWM:");
    m_nLargestGrowth = 0;
    m_nRefused = 0;
    m_nOpened = 0;
    m_problems.clear();
}

void TestLayoutCorruptFile::verifyAllHandled(const char* pKind)
{
    qInfo("%d %s in %lld ms: %d refused with a reason, %d opened, %d handled badly; one file grew the peak memory "
          "by at most %lld MiB",
          m_nRefused + m_nOpened + m_problems.size(), pKind, m_timer.elapsed(), m_nRefused, m_nOpened,
          m_problems.size(), m_nLargestGrowth / kMiB);
    for (const QString& strProblem : m_problems.mid(0, kShownProblems))
        qWarning("%s", qPrintable(strProblem.left(500)));
    QVERIFY2(m_problems.isEmpty(), "files were handled badly");
}

void TestLayoutCorruptFile::tryFile(const QString& strName, const QByteArray& bytes, int nItems, bool bInWindow)
{
    const QString strPath = m_scratch.filePath(QStringLiteral("tried.vxlayout"));
    QFile file(strPath);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate) || file.write(bytes) != bytes.size()) {
        m_problems << QStringLiteral("cannot write ") + strPath;
        return;
    }
    file.close();
    ++m_nTried;
    FileOutcome outcome = readFile(strPath, nItems);
    m_nSlowestMs = qMax(m_nSlowestMs, outcome.nMs);
    m_nLargestGrowth = qMax(m_nLargestGrowth, outcome.nPeakGrowth);
    if (outcome.nMs > kMaxMsPerFile)
        outcome.problems << QStringLiteral("took %1 ms").arg(outcome.nMs);
    if (outcome.nPeakGrowth > kMaxPeakGrowth)
        outcome.problems << QStringLiteral("grew the peak memory by %1 MiB").arg(outcome.nPeakGrowth / kMiB);
    if (bInWindow || m_nTried % kWindowSampleEvery == 0)
        outcome.problems << tryInWindow(strPath, outcome.bOpened, outcome.strReason);
    outcome.problems.removeAll(QString());
    if (!outcome.problems.isEmpty()) {
        m_dir.setAutoRemove(false);
        const QString strKept = m_dir.filePath(QStringLiteral("failed %1.vxlayout").arg(m_nTried));
        QFile::copy(strPath, strKept);
        m_problems << QStringLiteral("%1 (%2): %3").arg(strName, strKept, outcome.problems.join(QStringLiteral("; ")));
        return;
    }
    ++(outcome.bOpened ? m_nOpened : m_nRefused);
    if (m_bVerbose)
        qInfo("%s: %s in %lld ms, %lld MiB", qPrintable(strName),
              outcome.bOpened ? "opened" : qPrintable(outcome.strReason), outcome.nMs, outcome.nPeakGrowth / kMiB);
}

TestLayoutCorruptFile::FileOutcome TestLayoutCorruptFile::readFile(const QString& strPath, int nItems)
{
    FileOutcome outcome;
    const bool bPeakReset = resetPeak();
    const qint64 nResidentBefore = residentBytes("VmRSS:");
    QElapsedTimer timer;
    timer.start();
    const int nStandardError = kWatchStandardError ? divertStandardError(m_nStandardErrorCapture) : -1;
    CVXSLayoutFile reader;
    CVXSLayoutDocument document = untouchedDocument();
    outcome.bOpened = reader.read(strPath, document);
    if (outcome.bOpened) {
        outcome.problems << documentProblems(document, nItems);
        if (outcome.problems.isEmpty())
            outcome.problems << tryOpened(document, nItems);
    }
    const QByteArray printed
        = kWatchStandardError ? restoreStandardError(nStandardError, m_nStandardErrorCapture) : QByteArray();
    outcome.nMs = timer.elapsed();
    outcome.nPeakGrowth = residentBytes("VmHWM:") - (bPeakReset ? nResidentBefore : m_nPeakBefore);
    if (!printed.isEmpty())
        outcome.problems << QStringLiteral("printed \"%1\"").arg(QString::fromLocal8Bit(printed).trimmed());
    if (!outcome.bOpened) {
        outcome.strReason = reader.errorText();
        const QString strStart = QStringLiteral("Cannot open \"%1\": ").arg(strPath);
        const bool bUnclear = std::any_of(kUnclearReasons.cbegin(), kUnclearReasons.cend(),
                                          [&outcome](const char* pText) { return outcome.strReason.contains(pText); });
        if (!outcome.strReason.startsWith(strStart) || outcome.strReason.size() < strStart.size() + 8 || bUnclear)
            outcome.problems << QStringLiteral("refused with the reason \"%1\"").arg(outcome.strReason);
        if (!isUntouched(document))
            outcome.problems << QStringLiteral("refused, yet the document changed");
    }
    return outcome;
}

QString TestLayoutCorruptFile::tryOpened(const CVXSLayoutDocument& document, int nItems)
{
    CVXSLayoutManager& manager = *m_pScratch->manager();
    manager.replaceLayout(document);
    QStringList problems = layoutProblems(manager, nItems);
    if (manager.renderLayoutImage(1.0).isNull())
        problems << QStringLiteral("the page cannot be rendered");
    return problems.join(QStringLiteral("; "));
}

// The window's own Open: the file goes through the message boxes and a refused one leaves
// the layout on screen as it was, down to its pixels.
QString TestLayoutCorruptFile::tryInWindow(const QString& strPath, bool bRead, const QString& strReason)
{
    ++m_nTriedInWindow;
    CVXSLayoutManager& manager = *m_pWindow->manager();
    const int nSteps = manager.undoStack()->count();
    CSeenMessageBox seen;
    answerNextMessageBox(&seen, keepTheLayout());
    // Every other one is chosen in the Open dialog, as the user does.
    bool bOpened = false;
    if (m_nTriedInWindow % 2 == 0) {
        CFileDialogAnswers answers({chooseFile(kLayoutFilter, strPath)});
        bOpened = manager.fileCommands()->open();
    } else {
        bOpened = manager.fileCommands()->openFile(strPath);
    }
    QStringList problems;
    const QString strExpected = bRead ? QStringLiteral("Are you sure you want to clear the layout?\n")
                                      : QStringLiteral("The layout could not be opened.\n") + strReason;
    if (bOpened || !seen.m_bShown || seen.m_strText != strExpected)
        problems << QStringLiteral("the window's Open said \"%1\", not \"%2\"").arg(seen.m_strText, strExpected);
    const QString strDifference = LayoutRecord::take(manager).differenceFrom(m_saved);
    if (!strDifference.isEmpty())
        problems << QStringLiteral("the window's layout changed: ") + strDifference;
    if (m_pWindow->grabViewport() != m_savedView)
        problems << QStringLiteral("the window's view shows something else");
    if (manager.undoStack()->count() != nSteps
        || manager.fileCommands()->filePath() != QFileInfo(m_strSavedPath).absoluteFilePath())
        problems << QStringLiteral("the window's history or file changed");
    return problems.join(QStringLiteral("; "));
}

void TestLayoutCorruptFile::tryEntry(const QString& strName, const QString& strEntry, const QByteArray& data,
                                     bool bInWindow)
{
    Entries entries = m_savedEntries;
    for (auto& entry : entries) {
        if (entry.first == strEntry)
            entry.second = data;
    }
    tryFile(strName, storedZip(entries), strEntry == kJsonEntry ? itemCountOf(data) : m_nSavedItems, bInWindow);
}

void TestLayoutCorruptFile::tryJson(const QString& strName, const QJsonObject& json)
{
    tryEntry(strName, kJsonEntry, jsonText(json));
}

void TestLayoutCorruptFile::truncatedFiles()
{
    startCounting();
    const QVector<Range> structure = zipStructure(m_savedFile);
    for (const int nSize : truncationPoints(m_savedFile.size(), structure, kSpreadCuts))
        tryFile(QStringLiteral("cut at %1").arg(nSize), m_savedFile.left(nSize), m_nSavedItems);
    verifyAllHandled("truncated files");
    QVERIFY(m_nRefused > 0);
}

void TestLayoutCorruptFile::changedBytes()
{
    startCounting();
    const QVector<Range> structure = zipStructure(m_savedFile);
    QRandomGenerator random(m_nSeed);
    for (int i = 0; i < m_nChangedFiles; ++i)
        tryFile(QStringLiteral("changed %1").arg(i),
                FileDamage::withRandomChanges(m_savedFile, structure, kMaxChangesPerFile, random), m_nSavedItems);
    verifyAllHandled("changed files");
    QCOMPARE(m_nRefused + m_nOpened, m_nChangedFiles);
}

void TestLayoutCorruptFile::changedJsonValues()
{
    startCounting();
    for (const JsonPath& path : changeablePaths(m_savedJson)) {
        const QString strPlace = pathText(path);
        tryJson(strPlace + QStringLiteral(" taken out"), withValue(m_savedJson, path, std::nullopt));
        for (const auto& value : hostileValues(valueAt(m_savedJson, path)))
            tryJson(strPlace + QStringLiteral(" as ") + value.first, withValue(m_savedJson, path, value.second));
    }
    verifyAllHandled("files with one value of layout.json changed or taken out");
    QVERIFY(m_nRefused > 0);
    QVERIFY(m_nOpened > 0);
}

void TestLayoutCorruptFile::specialJsonTexts()
{
    startCounting();
    for (const auto& text : ::specialJsonTexts(m_savedJson))
        tryEntry(text.first, kJsonEntry, text.second);
    verifyAllHandled("files with a special layout.json");
}

// Archives that are valid zip files, or nearly, but not as the program writes them.
void TestLayoutCorruptFile::specialArchives()
{
    startCounting();
    const Entries images = m_savedEntries.mid(1);
    const QByteArray json = m_savedEntries.first().second;
    const QByteArray saved = storedZip(m_savedEntries);
    QByteArray commented = saved;
    commented[commented.size() - 2] = char(7);
    commented.append("comment");
    constexpr int kFlags = 6;
    constexpr int kMethod = 8;
    const QVector<QPair<QString, QByteArray>> archives {
        {"no entries", storedZip({})},
        {"layout.json twice, the first cut short", storedZip(Entries {{kJsonEntry, json.left(20)}, {kJsonEntry, json}} + images)},
        {"an image entry twice", storedZip(m_savedEntries + images.mid(0, 1))},
        {"layout.json in other case", storedZip(Entries {{QStringLiteral("Layout.json"), json}} + images)},
        {"layout.json encrypted", withEntryField(saved, kJsonEntry.toUtf8(), kFlags, 1)},
        {"an image entry encrypted", withEntryField(saved, images.first().first.toUtf8(), kFlags, 1)},
        {"layout.json packed by an unknown method", withEntryField(saved, kJsonEntry.toUtf8(), kMethod, 99)},
        {"an image entry said to be deflated", withEntryField(saved, images.first().first.toUtf8(), kMethod, 8)},
        {"a comment after the archive", commented},
        {"garbage before the archive", QByteArray(1000, 'g') + saved},
        {"an entry nothing names, of 8 MiB", storedZip(m_savedEntries + Entries {{QStringLiteral("extra"), QByteArray(8 * kMiB, 'e')}})},
    };
    for (const auto& archive : archives)
        tryFile(archive.first, archive.second, m_nSavedItems);
    verifyAllHandled("special archives");
}

void TestLayoutCorruptFile::changedJsonText()
{
    startCounting();
    const QByteArray json = m_savedEntries.first().second;
    for (const int nSize : truncationPoints(json.size(), {{0, kPngHeadCuts}}, kSpreadCuts))
        tryEntry(QStringLiteral("layout.json cut at %1").arg(nSize), kJsonEntry, json.left(nSize));
    QRandomGenerator random(m_nSeed ^ 0x4a534f4eu);
    for (int i = 0; i < m_nChangedFiles; ++i)
        tryEntry(QStringLiteral("layout.json changed %1").arg(i), kJsonEntry,
                 FileDamage::withRandomChanges(json, {}, kMaxChangesPerFile, random));
    verifyAllHandled("files with layout.json cut or changed");
}

void TestLayoutCorruptFile::truncatedImages()
{
    startCounting();
    for (const auto& entry : m_savedEntries.mid(1)) {
        for (const int nSize : truncationPoints(entry.second.size(), {{0, kPngHeadCuts}}, kPngSpreadCuts))
            tryEntry(QStringLiteral("%1 cut at %2").arg(entry.first).arg(nSize), entry.first, entry.second.left(nSize));
    }
    verifyAllHandled("files with an image entry cut");
    QCOMPARE(m_nOpened, 0);
}

void TestLayoutCorruptFile::changedImages()
{
    startCounting();
    const auto changes = pngChanges();
    for (const auto& entry : m_savedEntries.mid(1)) {
        for (const auto& change : changes) {
            QVector<PngChunk> chunks = pngChunks(entry.second);
            change.second(chunks);
            tryEntry(entry.first + QStringLiteral(": ") + change.first, entry.first, pngOf(chunks));
        }
    }
    verifyAllHandled("files with a changed chunk in an image entry");
    QVERIFY(m_nRefused > 0);
}

void TestLayoutCorruptFile::changedImageBytes()
{
    startCounting();
    QRandomGenerator random(m_nSeed ^ 0x504e47u);
    const Entries images = m_savedEntries.mid(1);
    for (int i = 0; i < 2 * m_nChangedFiles; ++i) {
        const auto& entry = images.at(i % images.size());
        // Half of them as they are, where the chunks' checksums catch most; half with the
        // checksums put right, so that the decoder meets the damage.
        const bool bChecksums = i % 2 == 1;
        const QByteArray png = bChecksums
            ? withChangedChunkData(entry.second, random)
            : FileDamage::withRandomChanges(entry.second, {{0, kPngHeadCuts}}, kMaxChangesPerFile, random);
        tryEntry(QStringLiteral("%1 changed %2%3").arg(entry.first).arg(i).arg(bChecksums ? ", checksums right" : ""),
                 entry.first, png);
    }
    verifyAllHandled("files with changed bytes in an image entry");
    QCOMPARE(m_nRefused + m_nOpened, 2 * m_nChangedFiles);
}

void TestLayoutCorruptFile::refusedFilesLeaveTheWindowAlone()
{
    const auto& image = m_savedEntries.at(1);
    QVector<PngChunk> huge = pngChunks(image.second);
    headerField(0, 30000)(huge);
    headerField(4, 30000)(huge);
    const QVector<QPair<QString, QByteArray>> files{
        {"file cut in half", m_savedFile.left(m_savedFile.size() / 2)},
        {"not an archive", QByteArray("not a layout at all")},
        {"a good file", m_savedFile},
    };
    startCounting();
    for (const auto& file : files)
        tryFile(file.first, file.second, m_nSavedItems, true);
    const QVector<QPair<QString, QPair<QString, QByteArray>>> entries{
        {"layout.json not JSON", {kJsonEntry, "{\"format\":"}},
        {"an image announcing 30000 x 30000", {image.first, pngOf(huge)}},
        {"an image cut short", {image.first, image.second.left(100)}},
    };
    for (const auto& entry : entries)
        tryEntry(entry.first, entry.second.first, entry.second.second, true);
    const int nInWindow = m_nTriedInWindow;
    verifyAllHandled("files also opened in the window");
    QCOMPARE(m_nOpened, 1);
    QVERIFY(nInWindow >= files.size() + entries.size());
}

void TestLayoutCorruptFile::hugeAnnouncedImagesAreRefusedUndecoded_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<QString>("reason");
    // The sample's first image has four bytes a pixel.
    QTest::newRow("30000 x 30000, beyond the budget")
        << 30000 << 30000 << "the image \"images/0.png\" would take 3434 MiB of memory";
    QTest::newRow("11000 x 11000, within the budget")
        << 11000 << 11000 << "the image \"images/0.png\" cannot be used: its PNG data cannot be decoded";
    QTest::newRow("1000000 x 1") << 1000000 << 1 << "the image \"images/0.png\" cannot be used: its PNG data cannot be decoded";
}

// An image entry's header that announces more than its data holds is found out before the
// image is decoded: from the header when the size is beyond the budget, else as the rows run out.
void TestLayoutCorruptFile::hugeAnnouncedImagesAreRefusedUndecoded()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(QString, reason);
    Entries entries = m_savedEntries;
    QVector<PngChunk> chunks = pngChunks(entries.at(1).second);
    headerField(0, quint32(width))(chunks);
    headerField(4, quint32(height))(chunks);
    entries[1].second = pngOf(chunks);
    const QString strPath = m_scratch.filePath(QStringLiteral("announcing.vxlayout"));
    QFile file(strPath);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write(storedZip(entries)) > 0);
    file.close();

    const FileOutcome outcome = readFile(strPath, m_nSavedItems);
    QVERIFY(!outcome.bOpened);
    QVERIFY2(outcome.strReason.contains(reason), qPrintable(outcome.strReason));
    QVERIFY2(outcome.problems.isEmpty(), qPrintable(outcome.problems.join(QLatin1Char('\n'))));
    QVERIFY2(outcome.nPeakGrowth < kMaxPeakGrowthWhenRefused, qPrintable(QString::number(outcome.nPeakGrowth / kMiB)));
}

QTEST_MAIN(TestLayoutCorruptFile)
#include "tst_layout_corruptfile.moc"
