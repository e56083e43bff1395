#include "TestImageFiles.h"

#include <VXImageFileReader.h>
#include <VXSLayoutConstants.h>
#include <file/VXSLayoutDocumentCodec.h>
#include <file/VXSLayoutFile.h>
#include <file/VXSLayoutItemCodec.h>
#include <file/archive/VXSZipWriter.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGraphicsItem>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

#include <array>
#include <csignal>
#include <functional>
#include <memory>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <zlib.h>

using namespace VXSLayout;

namespace {

const QString kJsonEntry = QStringLiteral("layout.json");
const QString kNonAsciiText = QStringLiteral("L\u00e4sion \u2013 Maus \u5c0f\u9f20 \u2713");
const QString kNonAsciiProvenance = QStringLiteral("/daten/Gr\u00f6\u00dfe/\u5c0f\u9f20-\u00e4\u00f6\u00fc.dcm");

// Every formats whose bit patterns are all valid pixels is filled with noise directly; the
// others are made from noise in ARGB32.
QImage randomImage(QSize size, QImage::Format format, quint32 nSeed)
{
    QRandomGenerator random(nSeed);
    const QVector<QImage::Format> direct = {QImage::Format_ARGB32, QImage::Format_Grayscale8,
                                            QImage::Format_Grayscale16, QImage::Format_Indexed8,
                                            QImage::Format_RGB888, QImage::Format_Mono, QImage::Format_RGBA64};
    const bool bDirect = direct.contains(format);
    QImage image(size, bDirect ? format : QImage::Format_ARGB32);
    if (format == QImage::Format_Indexed8) {
        QVector<QRgb> colors;
        for (int i = 0; i < 256; ++i)
            colors.append(random.generate());
        image.setColorTable(colors);
    }
    if (format == QImage::Format_Mono)
        image.setColorTable({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    for (int y = 0; y < image.height(); ++y) {
        uchar* pLine = image.scanLine(y);
        for (int i = 0; i < image.bytesPerLine(); ++i)
            pLine[i] = uchar(random.bounded(256));
    }
    return bDirect ? image : image.convertToFormat(format);
}

QImage provenanceImage(QSize size, QImage::Format format, quint32 nSeed)
{
    QImage image = randomImage(size, format, nSeed);
    image.setText(QStringLiteral("SourceFile"), kNonAsciiProvenance);
    image.setText(QStringLiteral("StudyInstanceUID"), QStringLiteral("1.2.826.0.1.3680043.2.1125.1.42"));
    return image;
}

QString exact(double dValue)
{
    return QString::number(dValue, 'g', 17);
}

QPen pen(QColor color, double dWidth, Qt::PenStyle style, Qt::PenCapStyle cap, Qt::PenJoinStyle join)
{
    return QPen(QBrush(color), dWidth, style, cap, join);
}

CVXSLayoutItemState item(int nType, QRectF rect, double z)
{
    CVXSLayoutItemState state;
    state.nType = nType;
    state.rect = rect;
    state.z = z;
    state.pen = pen(QColor(0, 0, 0), 0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
    return state;
}

CVXSLayoutItemState imageItem(const QImage& image, QRectF rect, int nCell)
{
    CVXSLayoutItemState state = item(ImageItemType, rect, BaseZ + 1);
    state.image = image;
    state.nCellIndex = nCell;
    return state;
}

CVXSLayoutItemState arrowItem(QPoint start, QPoint end, bool bStartHead, bool bEndHead)
{
    const QRectF bounds = QRectF(start, end).normalized().adjusted(-ArrowMargin, -ArrowMargin, ArrowMargin, ArrowMargin);
    CVXSLayoutItemState state = item(ArrowItemType, bounds, 40);
    state.pen = pen(QColor(200, 30, 30), 2.5, Qt::DashLine, Qt::RoundCap, Qt::RoundJoin);
    state.startPoint = start;
    state.endPoint = end;
    state.bStartHead = bStartHead;
    state.bEndHead = bEndHead;
    state.dHeadLength = 12.5;
    state.dHeadWidthRatio = 0.6;
    return state;
}

// A layout with every kind of item and every property set away from its default.
CVXSLayoutDocument sampleDocument()
{
    const QImage shared = provenanceImage(QSize(24, 16), QImage::Format_RGB32, 1);
    CVXSLayoutDocument document;
    document.nStyle = 3;
    document.pageSize = QSize(800, 600);
    document.items.append(imageItem(shared, QRectF(40.5, 30.25, 320, 213.5), 0));
    document.items.append(imageItem(shared, QRectF(440, 30, 320.125, 213), 3));
    document.items.append(imageItem(randomImage(QSize(8, 6), QImage::Format_Grayscale16, 2), QRectF(1, 2, 3, 4), -1));
    CVXSLayoutItemState text = item(TextItemType, QRectF(100, 400, 250.75, 40), 35);
    text.strText = kNonAsciiText;
    text.font = QFont(QStringLiteral("DejaVu Serif"), 17, QFont::Bold, true);
    text.color = QColor(255, 64, 32, 128);
    text.nTextFlags = int(Qt::AlignRight | Qt::AlignBottom);
    text.pen = pen(QColor(10, 20, 30, 40), 1.5, Qt::DotLine, Qt::FlatCap, Qt::MiterJoin);
    text.brush = QBrush(QColor(250, 240, 10), Qt::Dense4Pattern);
    document.items.append(text);
    CVXSLayoutItemState rectangle = item(RectangleItemType, QRectF(-20, -10, 0.1 + 0.2, 1e-9), 31.5);
    rectangle.pen = pen(QColor(0, 0, 255), 3, Qt::DashDotLine, Qt::SquareCap, Qt::SvgMiterJoin);
    rectangle.brush = QBrush(QColor(0, 128, 0, 100));
    document.items.append(rectangle);
    CVXSLayoutItemState ellipse = item(EllipseItemType, QRectF(500, 300, 120, 80), -3.75);
    ellipse.pen = pen(QColor(255, 255, 255), 7, Qt::NoPen, Qt::RoundCap, Qt::BevelJoin);
    document.items.append(ellipse);
    document.items.append(arrowItem(QPoint(10, 20), QPoint(300, 200), false, false));
    document.items.append(arrowItem(QPoint(-50, 500), QPoint(60, 450), false, true));
    document.items.append(arrowItem(QPoint(700, 10), QPoint(650, 590), true, true));
    return document;
}

// What a failed read must leave as it was.
CVXSLayoutDocument untouchedDocument()
{
    CVXSLayoutDocument document;
    document.nStyle = 5;
    document.pageSize = QSize(123, 45);
    document.items.append(item(EllipseItemType, QRectF(1, 2, 3, 4), 77));
    return document;
}

QImage comparable(const QImage& image, QImage::Format format)
{
    return image.convertToFormat(format);
}

bool samePixels(const QImage& actual, const QImage& expected, QImage::Format format)
{
    return comparable(actual, format) == comparable(expected, format);
}

QStringList textKeysOf(const QImage& image)
{
    QStringList pairs;
    for (const QString& strKey : image.textKeys())
        pairs.append(strKey + QLatin1Char('=') + image.text(strKey));
    pairs.sort();
    return pairs;
}

void compareItem(const CVXSLayoutItemState& actual, const CVXSLayoutItemState& expected)
{
    QCOMPARE(actual.nType, expected.nType);
    QCOMPARE(exact(actual.rect.x()), exact(expected.rect.x()));
    QCOMPARE(exact(actual.rect.y()), exact(expected.rect.y()));
    QCOMPARE(exact(actual.rect.width()), exact(expected.rect.width()));
    QCOMPARE(exact(actual.rect.height()), exact(expected.rect.height()));
    QCOMPARE(exact(actual.z), exact(expected.z));
    QCOMPARE(actual.pen.color().rgba(), expected.pen.color().rgba());
    QCOMPARE(exact(actual.pen.widthF()), exact(expected.pen.widthF()));
    QCOMPARE(actual.pen.style(), expected.pen.style());
    QCOMPARE(actual.pen.capStyle(), expected.pen.capStyle());
    QCOMPARE(actual.pen.joinStyle(), expected.pen.joinStyle());
    QCOMPARE(actual.pen, expected.pen);
    QCOMPARE(actual.brush.color().rgba(), expected.brush.color().rgba());
    QCOMPARE(actual.brush.style(), expected.brush.style());
    QCOMPARE(actual.strText, expected.strText);
    QCOMPARE(actual.font.toString(), expected.font.toString());
    QCOMPARE(actual.font, expected.font);
    QCOMPARE(actual.color.rgba(), expected.color.rgba());
    QCOMPARE(actual.color.isValid(), expected.color.isValid());
    QCOMPARE(actual.nTextFlags, expected.nTextFlags);
    QCOMPARE(actual.startPoint, expected.startPoint);
    QCOMPARE(actual.endPoint, expected.endPoint);
    QCOMPARE(actual.bStartHead, expected.bStartHead);
    QCOMPARE(actual.bEndHead, expected.bEndHead);
    QCOMPARE(exact(actual.dHeadLength), exact(expected.dHeadLength));
    QCOMPARE(exact(actual.dHeadWidthRatio), exact(expected.dHeadWidthRatio));
    QCOMPARE(actual.nCellIndex, expected.nCellIndex);
    QCOMPARE(actual.image.size(), expected.image.size());
    QVERIFY(samePixels(actual.image, expected.image, QImage::Format_RGBA64));
    QCOMPARE(textKeysOf(actual.image), textKeysOf(expected.image));
}

QByteArray contentOf(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool writeBytes(const QString& strPath, const QByteArray& data)
{
    QFile file(strPath);
    return file.open(QIODevice::WriteOnly) && file.write(data) == data.size();
}

QStringList entriesOf(const QString& strFolder)
{
    return QDir(strFolder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                     QDir::Name);
}

struct ProcessResult
{
    int nExitCode = -1;
    QByteArray output;
    QByteArray errors;
};

ProcessResult run(const QString& strProgram, const QStringList& arguments)
{
    QProcess process;
    process.start(strProgram, arguments);
    ProcessResult result;
    if (!process.waitForFinished(30000))
        return result;
    result.nExitCode = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    result.output = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    return result;
}

// A zip archive of the entries, deflated or stored, made by way of a scratch file.
QByteArray zipBytes(const QVector<QPair<QString, QByteArray>>& entries, bool bDeflate = true)
{
    QTemporaryDir dir;
    const QString strPath = dir.filePath(QStringLiteral("scratch.zip"));
    CVXSZipWriter writer(strPath);
    for (const auto& entry : entries)
        writer.add(entry.first, entry.second, bDeflate);
    return writer.commit() ? contentOf(strPath) : QByteArray();
}


QByteArray smallPng()
{
    return CTestImageFiles::qtPng(randomImage(QSize(4, 3), QImage::Format_RGB32, 9));
}

// A PNG whose header announces width x height pixels, with a correct header checksum.
QByteArray pngAnnouncing(quint32 nWidth, quint32 nHeight)
{
    QByteArray png = smallPng();
    // Signature (8), chunk length (4), "IHDR" (4), then width and height.
    qToBigEndian(nWidth, png.data() + 16);
    qToBigEndian(nHeight, png.data() + 20);
    const quint32 nCrc = quint32(crc32(0, reinterpret_cast<const Bytef*>(png.constData() + 12), 17));
    qToBigEndian(nCrc, png.data() + 29);
    return png;
}

// Sets the length of the extra field in an entry's local header, which its data follows.
QByteArray withLocalExtraLength(QByteArray zip, const QByteArray& name, quint16 nLength)
{
    const QByteArray localSignature("PK\x03\x04", 4);
    for (int nAt = zip.indexOf(localSignature); nAt >= 0; nAt = zip.indexOf(localSignature, nAt + 1)) {
        if (zip.mid(nAt + 30, name.size()) == name)
            qToLittleEndian(nLength, zip.data() + nAt + 28);
    }
    return zip;
}

// Renames an entry, in its local header and in the central directory, to a name of the same
// length, as a hostile archive would; the name must occur nowhere else.
QByteArray withEntryRenamed(QByteArray zip, const QByteArray& from, const QByteArray& to)
{
    for (int nAt = zip.indexOf(from); nAt >= 0; nAt = zip.indexOf(from, nAt + 1))
        zip.replace(nAt, to.size(), to);
    return zip;
}

// Sets the uncompressed size of an entry in its local header and in the central directory,
// consistently, as a hostile archive would.
QByteArray withAnnouncedSize(QByteArray zip, const QByteArray& name, quint32 nSize)
{
    const QByteArray localSignature("PK\x03\x04", 4);
    const QByteArray centralSignature("PK\x01\x02", 4);
    for (int nAt = zip.indexOf(localSignature); nAt >= 0; nAt = zip.indexOf(localSignature, nAt + 1)) {
        if (zip.mid(nAt + 30, name.size()) == name)
            qToLittleEndian(nSize, zip.data() + nAt + 22);
    }
    for (int nAt = zip.indexOf(centralSignature); nAt >= 0; nAt = zip.indexOf(centralSignature, nAt + 1)) {
        if (zip.mid(nAt + 46, name.size()) == name)
            qToLittleEndian(nSize, zip.data() + nAt + 24);
    }
    return zip;
}

QJsonObject penJson()
{
    return QJsonObject{{"color", "#ff000000"}, {"width", 1}, {"style", 1}, {"cap", 16}, {"join", 64}};
}

QJsonObject brushJson()
{
    return QJsonObject{{"color", "#ff000000"}, {"style", 0}};
}

// A valid layout.json written by hand: an image, a text and an arrow.
QJsonObject baseJson()
{
    const QJsonObject image{{"kind", "image"}, {"rect", QJsonArray{10, 20, 100, 80}}, {"z", 26},
                            {"pen", penJson()},  {"brush", brushJson()},              {"image", "images/0.png"},
                            {"cell", 0}};
    const QJsonObject text{{"kind", "text"},
                           {"rect", QJsonArray{200, 20, 100, 30}},
                           {"z", 27},
                           {"pen", penJson()},
                           {"brush", brushJson()},
                           {"text", "Hallo"},
                           {"font", "DejaVu Sans,12,-1,5,50,0,0,0,0,0"},
                           {"color", "#ff0000ff"},
                           {"alignment", 33}};
    const QJsonObject arrow{{"kind", "arrow"},      {"rect", QJsonArray{10, 10, 220, 160}},
                            {"z", 28},              {"pen", penJson()},
                            {"brush", brushJson()}, {"start", QJsonArray{50, 50}},
                            {"end", QJsonArray{190, 130}}, {"startHead", false},
                            {"endHead", true},      {"headLength", 10},
                            {"headWidthRatio", 0.75}};
    return QJsonObject{{"format", "vxlayout"},
                       {"version", 1},
                       {"style", 1},
                       {"page", QJsonObject{{"width", 640}, {"height", 480}}},
                       {"items", QJsonArray{image, text, arrow}}};
}

QByteArray layoutFileWithJsonText(const QByteArray& json)
{
    return zipBytes({{kJsonEntry, json}, {QStringLiteral("images/0.png"), smallPng()}});
}

QByteArray layoutFile(const QJsonObject& json)
{
    return layoutFileWithJsonText(QJsonDocument(json).toJson(QJsonDocument::Compact));
}

QJsonObject with(const QString& strKey, const QJsonValue& value)
{
    QJsonObject json = baseJson();
    json.insert(strKey, value);
    return json;
}

QJsonObject without(const QString& strKey)
{
    QJsonObject json = baseJson();
    json.remove(strKey);
    return json;
}

QJsonObject withPage(int nWidth, int nHeight)
{
    return with(QStringLiteral("page"), QJsonObject{{"width", nWidth}, {"height", nHeight}});
}

// Item 0 is the image, 1 the text, 2 the arrow.
QJsonObject withItemValue(int nItem, const QString& strKey, const QJsonValue& value)
{
    QJsonObject json = baseJson();
    QJsonArray items = json.value(QStringLiteral("items")).toArray();
    QJsonObject changed = items.at(nItem).toObject();
    changed.insert(strKey, value);
    items.replace(nItem, changed);
    json.insert(QStringLiteral("items"), items);
    return json;
}

// The hand-written layout's item nItem (0 the image, 1 the text) nCopies times, in place of
// all items.
QJsonObject withRepeatedItem(int nItem, int nCopies)
{
    QJsonObject json = baseJson();
    const QJsonValue item = json.value(QStringLiteral("items")).toArray().at(nItem);
    QJsonArray items;
    for (int i = 0; i < nCopies; ++i)
        items.append(item);
    json.insert(QStringLiteral("items"), items);
    return json;
}

// Nine images announcing 11000 x 11000 pixels (462 MiB each once decoded): each one is within
// the budget of a single image, all of them together are not.
QByteArray nineLargeImages()
{
    QJsonObject json = baseJson();
    QJsonArray items = json.value(QStringLiteral("items")).toArray();
    const QJsonObject image = items.first().toObject();
    QVector<QPair<QString, QByteArray>> entries;
    for (int i = 0; i < 9; ++i) {
        const QString strEntry = QStringLiteral("images/%1.png").arg(i);
        QJsonObject item = image;
        item.insert(QStringLiteral("image"), strEntry);
        items.append(item);
        entries.append({strEntry, pngAnnouncing(11000, 11000)});
    }
    json.insert(QStringLiteral("items"), items);
    entries.append({kJsonEntry, QJsonDocument(json).toJson()});
    return zipBytes(entries);
}

// A damaged copy of an archive of stored entries: one byte inside the PNG data changed,
// headers intact.
QByteArray withDamagedImageData(QByteArray zip)
{
    const int nAt = zip.indexOf(QByteArray("IDAT"));
    if (nAt < 0)
        return QByteArray();
    zip[nAt + 6] = char(zip.at(nAt + 6) ^ 0x5a);
    return zip;
}

// Bytes this process has read through system calls so far.
qint64 bytesReadSoFar()
{
    QFile io(QStringLiteral("/proc/self/io"));
    if (!io.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray& line : io.readAll().split('\n')) {
        if (line.startsWith("rchar:"))
            return line.mid(6).trimmed().toLongLong();
    }
    return -1;
}

// What the format version 1 fixture holds, written out.
struct FixturePen
{
    QRgb color;
    double dWidth;
    Qt::PenStyle style;
    Qt::PenCapStyle cap;
    Qt::PenJoinStyle join;
};

struct FixtureBrush
{
    QRgb color;
    Qt::BrushStyle style;
};

struct FixtureItem
{
    int nType;
    std::array<double, 4> rect;
    double z;
    FixturePen pen;
    FixtureBrush brush;
};

struct FixtureArrow
{
    QPoint start;
    QPoint end;
    bool bStartHead;
    bool bEndHead;
    double dHeadLength;
    double dHeadWidthRatio;
};

FixturePen thinBlackPen()
{
    return {0xff000000, 0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin};
}

FixturePen oneWideBlackPen()
{
    return {0xff000000, 1, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin};
}

FixtureBrush noBrush()
{
    return {0xff000000, Qt::NoBrush};
}

void compareFixtureItem(const CVXSLayoutItemState& actual, const FixtureItem& expected)
{
    QCOMPARE(actual.nType, expected.nType);
    QCOMPARE(exact(actual.rect.x()), exact(expected.rect[0]));
    QCOMPARE(exact(actual.rect.y()), exact(expected.rect[1]));
    QCOMPARE(exact(actual.rect.width()), exact(expected.rect[2]));
    QCOMPARE(exact(actual.rect.height()), exact(expected.rect[3]));
    QCOMPARE(exact(actual.z), exact(expected.z));
    QCOMPARE(actual.pen.color().rgba(), expected.pen.color);
    QCOMPARE(exact(actual.pen.widthF()), exact(expected.pen.dWidth));
    QCOMPARE(actual.pen.style(), expected.pen.style);
    QCOMPARE(actual.pen.capStyle(), expected.pen.cap);
    QCOMPARE(actual.pen.joinStyle(), expected.pen.join);
    QCOMPARE(actual.brush.color().rgba(), expected.brush.color);
    QCOMPARE(actual.brush.style(), expected.brush.style);
}

bool mayWriteInto(const QString& strFolder)
{
    return ::access(QFile::encodeName(strFolder).constData(), W_OK) == 0;
}

} // namespace

class TestLayoutFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void roundTripKeepsEveryProperty();
    void itemsMadeFromTheFileMatchTheOriginals();
    void imagesStayLossless_data();
    void imagesStayLossless();
    void keysPngCannotHoldDoNotStopTheSave_data();
    void keysPngCannotHoldDoNotStopTheSave();
    void sharedImageIsStoredOnce();
    void independentReadersAcceptTheFile();
    void nonAsciiFileName();
    void emptyLayout();
    void handWrittenFileIsReadable();
    void filesAtTheLimitsAreReadable_data();
    void filesAtTheLimitsAreReadable();
    void badInputIsRefused_data();
    void badInputIsRefused();
    void unreadablePaths_data();
    void unreadablePaths();
    void hugeSparseFileFailsFast();
    void writeReplacesTheOldFile();
    void failedWriteKeepsTheOldFile_data();
    void failedWriteKeepsTheOldFile();
    void unsavableValuesAreRefused_data();
    void unsavableValuesAreRefused();
    void readsFormatVersion1Fixture();

private:
    QString path(const QString& strName) const { return m_pDir->filePath(strName); }
    // Reads a file that must be refused and checks the message and the document.
    void expectRefused(const QString& strPath, const QString& strReason);
    // Saves a layout of the one image and reads the image back; false with a warning when
    // the file could not be written or read.
    bool imageThroughFile(const QImage& image, QImage& readImage) const;

    std::unique_ptr<QTemporaryDir> m_pDir;
};

void TestLayoutFile::init()
{
    m_pDir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_pDir->isValid());
}

void TestLayoutFile::cleanup()
{
    m_pDir.reset();
}

void TestLayoutFile::expectRefused(const QString& strPath, const QString& strReason)
{
    CVXSLayoutDocument document = untouchedDocument();
    CVXSLayoutFile file;
    QVERIFY(!file.read(strPath, document));
    QVERIFY2(file.errorText().contains(strReason), qPrintable(file.errorText()));
    QVERIFY2(file.errorText().contains(QDir::toNativeSeparators(strPath)), qPrintable(file.errorText()));
    const CVXSLayoutDocument untouched = untouchedDocument();
    QCOMPARE(document.nStyle, untouched.nStyle);
    QCOMPARE(document.pageSize, untouched.pageSize);
    QCOMPARE(document.items.size(), untouched.items.size());
    QVERIFY(document.items.first() == untouched.items.first());
}

bool TestLayoutFile::imageThroughFile(const QImage& image, QImage& readImage) const
{
    CVXSLayoutDocument written;
    written.pageSize = QSize(100, 100);
    written.items.append(imageItem(image, QRectF(QPointF(0, 0), image.size()), -1));
    const QString strPath = path(QStringLiteral("image.vxlayout"));
    CVXSLayoutFile file;
    CVXSLayoutDocument read;
    if (!file.write(strPath, written) || !file.read(strPath, read)) {
        qWarning("%s", qPrintable(file.errorText()));
        return false;
    }
    readImage = read.items.at(0).image;
    return true;
}

void TestLayoutFile::roundTripKeepsEveryProperty()
{
    const CVXSLayoutDocument written = sampleDocument();
    CVXSLayoutFile file;
    QVERIFY2(file.write(path(QStringLiteral("layout.vxlayout")), written), qPrintable(file.errorText()));
    CVXSLayoutDocument read;
    QVERIFY2(file.read(path(QStringLiteral("layout.vxlayout")), read), qPrintable(file.errorText()));
    QCOMPARE(file.errorText(), QString());
    QCOMPARE(read.nStyle, written.nStyle);
    QCOMPARE(read.pageSize, written.pageSize);
    QCOMPARE(read.items.size(), written.items.size());
    for (int i = 0; i < written.items.size(); ++i) {
        compareItem(read.items.at(i), written.items.at(i));
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QStringLiteral("item %1 differs").arg(i)));
    }
    QCOMPARE(read.items.at(0).image.format(), QImage::Format_RGB32);
    QCOMPARE(read.items.at(2).image.format(), QImage::Format_Grayscale16);
}

void TestLayoutFile::itemsMadeFromTheFileMatchTheOriginals()
{
    // The states the layout's own items give, as the program will save them.
    CVXSLayoutDocument captured;
    captured.nStyle = 3;
    captured.pageSize = QSize(800, 600);
    for (const CVXSLayoutItemState& state : sampleDocument().items) {
        const std::unique_ptr<QGraphicsItem> pItem(state.createItem());
        QVERIFY(pItem);
        captured.items.append(CVXSLayoutItemState::capture(*pItem));
    }
    CVXSLayoutFile file;
    QVERIFY2(file.write(path(QStringLiteral("items.vxlayout")), captured), qPrintable(file.errorText()));
    CVXSLayoutDocument read;
    QVERIFY2(file.read(path(QStringLiteral("items.vxlayout")), read), qPrintable(file.errorText()));
    QCOMPARE(read.items.size(), captured.items.size());
    for (int i = 0; i < read.items.size(); ++i) {
        const std::unique_ptr<QGraphicsItem> pItem(read.items.at(i).createItem());
        QVERIFY(pItem);
        CVXSLayoutItemState again = CVXSLayoutItemState::capture(*pItem);
        QVERIFY(samePixels(again.image, captured.items.at(i).image, QImage::Format_RGBA64));
        // States compare images by identity; the pixels are compared above.
        again.image = captured.items.at(i).image;
        QVERIFY2(again == captured.items.at(i), qPrintable(QStringLiteral("item %1 differs").arg(i)));
    }
}

void TestLayoutFile::imagesStayLossless_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<int>("readFormat");
    QTest::addColumn<int>("compareFormat");
    QTest::newRow("RGB32") << int(QImage::Format_RGB32) << int(QImage::Format_RGB32) << int(QImage::Format_ARGB32);
    QTest::newRow("ARGB32") << int(QImage::Format_ARGB32) << int(QImage::Format_ARGB32) << int(QImage::Format_ARGB32);
    QTest::newRow("ARGB32 premultiplied") << int(QImage::Format_ARGB32_Premultiplied) << int(QImage::Format_ARGB32)
                                          << int(QImage::Format_ARGB32_Premultiplied);
    QTest::newRow("Grayscale8") << int(QImage::Format_Grayscale8) << int(QImage::Format_Grayscale8)
                                << int(QImage::Format_Grayscale8);
    QTest::newRow("Grayscale16") << int(QImage::Format_Grayscale16) << int(QImage::Format_Grayscale16)
                                 << int(QImage::Format_Grayscale16);
    QTest::newRow("Indexed8") << int(QImage::Format_Indexed8) << int(QImage::Format_Indexed8)
                              << int(QImage::Format_ARGB32);
    QTest::newRow("RGB888") << int(QImage::Format_RGB888) << int(QImage::Format_RGB32) << int(QImage::Format_ARGB32);
    QTest::newRow("Mono") << int(QImage::Format_Mono) << int(QImage::Format_Mono) << int(QImage::Format_ARGB32);
    QTest::newRow("RGBA64") << int(QImage::Format_RGBA64) << int(QImage::Format_RGBA64) << int(QImage::Format_RGBA64);
}

void TestLayoutFile::imagesStayLossless()
{
    QFETCH(int, format);
    QFETCH(int, readFormat);
    QFETCH(int, compareFormat);
    const QImage image = provenanceImage(QSize(67, 41), QImage::Format(format), quint32(format));
    QImage readImage;
    QVERIFY(imageThroughFile(image, readImage));
    QCOMPARE(int(readImage.format()), readFormat);
    QCOMPARE(readImage.size(), image.size());
    QVERIFY(samePixels(readImage, image, QImage::Format(compareFormat)));
    QCOMPARE(readImage.text(QStringLiteral("SourceFile")), kNonAsciiProvenance);
    QCOMPARE(textKeysOf(readImage), textKeysOf(image));
}

void TestLayoutFile::keysPngCannotHoldDoNotStopTheSave_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("RGB32, own encoder") << int(QImage::Format_RGB32);
    QTest::newRow("Indexed8, Qt's writer") << int(QImage::Format_Indexed8);
}

void TestLayoutFile::keysPngCannotHoldDoNotStopTheSave()
{
    QFETCH(int, format);
    // PNG keywords are Latin-1 without leading, trailing or double spaces; libpng stops on others.
    QImage image = provenanceImage(QSize(16, 16), QImage::Format(format), 5);
    image.setText(QStringLiteral("   "), QStringLiteral("blank key"));
    image.setText(QStringLiteral(" Study\tUID "), QStringLiteral("1.2.3"));
    image.setText(QStringLiteral("\u5c0f\u9f20"), QStringLiteral("mouse"));
    QImage readImage;
    QVERIFY(imageThroughFile(image, readImage));
    QVERIFY(samePixels(readImage, image, QImage::Format_ARGB32));
    QCOMPARE(textKeysOf(readImage),
             (QStringList{QStringLiteral("?\?=mouse"), QStringLiteral("SourceFile=") + kNonAsciiProvenance,
                          QStringLiteral("Study UID=1.2.3"),
                          QStringLiteral("StudyInstanceUID=1.2.826.0.1.3680043.2.1125.1.42")}));
}

void TestLayoutFile::sharedImageIsStoredOnce()
{
    const CVXSLayoutDocument written = sampleDocument();
    QCOMPARE(written.items.at(0).image.cacheKey(), written.items.at(1).image.cacheKey());
    const QString strPath = path(QStringLiteral("shared.vxlayout"));
    CVXSLayoutFile file;
    QVERIFY2(file.write(strPath, written), qPrintable(file.errorText()));
    const ProcessResult listing = run(QStringLiteral("zipinfo"), {QStringLiteral("-1"), strPath});
    QCOMPARE(listing.nExitCode, 0);
    QCOMPARE(listing.output.trimmed().split('\n'),
             (QList<QByteArray>{"layout.json", "images/0.png", "images/1.png"}));
    // Read back, the two items share one image again.
    CVXSLayoutDocument read;
    QVERIFY2(file.read(strPath, read), qPrintable(file.errorText()));
    QCOMPARE(read.items.at(0).image.cacheKey(), read.items.at(1).image.cacheKey());
    QVERIFY(read.items.at(0).image.cacheKey() != read.items.at(2).image.cacheKey());
}

void TestLayoutFile::independentReadersAcceptTheFile()
{
    const QString strPath = path(QStringLiteral("standard.vxlayout"));
    CVXSLayoutFile file;
    QVERIFY2(file.write(strPath, sampleDocument()), qPrintable(file.errorText()));
    // unzip checks every entry's checksum.
    const ProcessResult test = run(QStringLiteral("unzip"), {QStringLiteral("-t"), strPath});
    QVERIFY2(test.nExitCode == 0, test.output.constData());
    QVERIFY(test.output.contains("No errors detected"));
    // unzip -p layout.json | python3 -m json.tool
    QProcess unzip;
    QProcess python;
    unzip.setStandardOutputProcess(&python);
    unzip.start(QStringLiteral("unzip"), {QStringLiteral("-p"), strPath, kJsonEntry});
    python.start(QStringLiteral("python3"), {QStringLiteral("-m"), QStringLiteral("json.tool")});
    QVERIFY(unzip.waitForFinished(30000));
    QVERIFY(python.waitForFinished(30000));
    QCOMPARE(unzip.exitCode(), 0);
    QVERIFY2(python.exitCode() == 0, python.readAllStandardError().constData());
    const QJsonObject json = QJsonDocument::fromJson(python.readAllStandardOutput()).object();
    QCOMPARE(json.value(QStringLiteral("format")).toString(), QStringLiteral("vxlayout"));
    QCOMPARE(json.value(QStringLiteral("version")).toInt(), CVXSLayoutDocumentCodec::FormatVersion);
    QCOMPARE(json.value(QStringLiteral("style")).toInt(), 3);
    QCOMPARE(json.value(QStringLiteral("page")).toObject().value(QStringLiteral("width")).toInt(), 800);
    const QJsonArray items = json.value(QStringLiteral("items")).toArray();
    QCOMPARE(items.size(), 9);
    QCOMPARE(items.at(3).toObject().value(QStringLiteral("text")).toString(), kNonAsciiText);
    QCOMPARE(items.at(4).toObject().value(QStringLiteral("pen")).toObject().value(QStringLiteral("color")).toString(),
             QStringLiteral("#ff0000ff"));
    // The images are PNG files that pass pngcheck, text chunks included.
    for (const QString& strEntry : {QStringLiteral("images/0.png"), QStringLiteral("images/1.png")}) {
        const ProcessResult png = run(QStringLiteral("unzip"), {QStringLiteral("-p"), strPath, strEntry});
        QCOMPARE(png.nExitCode, 0);
        const QString strPng = path(QStringLiteral("extracted.png"));
        QVERIFY(writeBytes(strPng, png.output));
        const ProcessResult check = run(QStringLiteral("pngcheck"), {QStringLiteral("-vt"), strPng});
        QVERIFY2(check.nExitCode == 0, check.output.constData());
        QVERIFY2(check.output.contains("No errors detected"), check.output.constData());
        if (strEntry.endsWith(QLatin1String("0.png"))) {
            QVERIFY2(check.output.contains("24-bit RGB"), check.output.constData());
            QVERIFY2(check.output.contains("keyword: SourceFile"), check.output.constData());
            QVERIFY2(check.output.contains("keyword: StudyInstanceUID"), check.output.constData());
        } else {
            QVERIFY2(check.output.contains("8 x 6 image, 16-bit grayscale"), check.output.constData());
        }
    }
}

void TestLayoutFile::nonAsciiFileName()
{
    const QString strName = QStringLiteral("Auswertung-\u00e4\u00f6\u00fc-\u5c0f\u9f20.vxlayout");
    CVXSLayoutFile file;
    QVERIFY2(file.write(path(strName), sampleDocument()), qPrintable(file.errorText()));
    QCOMPARE(entriesOf(m_pDir->path()), QStringList{strName});
    CVXSLayoutDocument read;
    QVERIFY2(file.read(path(strName), read), qPrintable(file.errorText()));
    QCOMPARE(read.items.size(), sampleDocument().items.size());
}

void TestLayoutFile::emptyLayout()
{
    CVXSLayoutDocument written;
    written.nStyle = 8;
    written.pageSize = QSize(1, 100000);
    CVXSLayoutFile file;
    QVERIFY2(file.write(path(QStringLiteral("empty.vxlayout")), written), qPrintable(file.errorText()));
    CVXSLayoutDocument read = untouchedDocument();
    QVERIFY2(file.read(path(QStringLiteral("empty.vxlayout")), read), qPrintable(file.errorText()));
    QCOMPARE(read.nStyle, 8);
    QCOMPARE(read.pageSize, QSize(1, 100000));
    QCOMPARE(read.items.size(), 0);
}

void TestLayoutFile::handWrittenFileIsReadable()
{
    // The base of the refused rows below reads well, so each row fails for its own reason.
    QVERIFY(writeBytes(path(QStringLiteral("base.vxlayout")), layoutFile(baseJson())));
    CVXSLayoutDocument read;
    CVXSLayoutFile file;
    QVERIFY2(file.read(path(QStringLiteral("base.vxlayout")), read), qPrintable(file.errorText()));
    QCOMPARE(read.nStyle, 1);
    QCOMPARE(read.pageSize, QSize(640, 480));
    QCOMPARE(read.items.size(), 3);
    QCOMPARE(read.items.at(0).image.size(), QSize(4, 3));
    QCOMPARE(read.items.at(1).strText, QStringLiteral("Hallo"));
    QCOMPARE(read.items.at(1).nTextFlags, int(Qt::AlignLeft | Qt::AlignTop));
    QCOMPARE(read.items.at(2).endPoint, QPoint(190, 130));
}

void TestLayoutFile::filesAtTheLimitsAreReadable_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("items");
    QTest::newRow("10000 items") << layoutFile(withRepeatedItem(1, 10000)) << 10000;
    QTest::newRow("255 images in one cell") << layoutFile(withRepeatedItem(0, 255)) << 255;
}

// The limits above refuse only what lies beyond them.
void TestLayoutFile::filesAtTheLimitsAreReadable()
{
    QFETCH(QByteArray, content);
    QFETCH(int, items);
    const QString strPath = path(QStringLiteral("limits.vxlayout"));
    QVERIFY(writeBytes(strPath, content));
    CVXSLayoutDocument read;
    CVXSLayoutFile file;
    QVERIFY2(file.read(strPath, read), qPrintable(file.errorText()));
    QCOMPARE(read.items.size(), items);
}

void TestLayoutFile::badInputIsRefused_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("reason");
    const QByteArray valid = layoutFile(baseJson());
    const QString noZip = QStringLiteral("it is not a layout file (no zip archive)");
    QTest::newRow("empty file") << QByteArray() << "it is empty";
    QTest::newRow("truncated file") << valid.left(valid.size() / 2) << noZip;
    QTest::newRow("end cut off") << valid.left(valid.size() - 10) << noZip;
    QByteArray random(4096, '\0');
    QRandomGenerator randomBytes(7);
    for (char& byte : random)
        byte = char(randomBytes.bounded(256));
    QTest::newRow("random bytes") << random << noZip;
    QTest::newRow("PNG renamed") << smallPng() << noZip;
    QTest::newRow("damaged image data") << withDamagedImageData(zipBytes({{kJsonEntry, QJsonDocument(baseJson()).toJson()},
                                                                          {QStringLiteral("images/0.png"), smallPng()}},
                                                                         false))
                                        << "the entry \"images/0.png\" is damaged (CRC error)";
    QTest::newRow("two entries of one name")
        << withEntryRenamed(zipBytes({{kJsonEntry, QJsonDocument(baseJson()).toJson()},
                                      {QStringLiteral("images/0.png"), smallPng()},
                                      {QStringLiteral("images/1.png"), smallPng()}}),
                            "images/1.png", "images/0.png")
        << "the archive is damaged (two of its entries have the same name)";
    QTest::newRow("no layout.json") << zipBytes({{QStringLiteral("images/0.png"), smallPng()}})
                                    << "the entry \"layout.json\" is missing";
    QTest::newRow("layout.json not JSON") << layoutFileWithJsonText("{\"format\": \"vxlayout\", ")
                                          << "layout.json is not valid JSON";
    QTest::newRow("layout.json a list") << layoutFileWithJsonText("[1, 2, 3]")
                                        << "layout.json does not hold a JSON object";
    QTest::newRow("layout.json over 16 MiB")
        << layoutFileWithJsonText(QByteArray(17 * 1024 * 1024, ' ') + "{}")
        << "the entry \"layout.json\" would unpack to 18 MiB; at most 16 MiB are read";
    const QString wrongFormat = QStringLiteral("layout.json does not name the format \"vxlayout\"");
    QTest::newRow("format missing") << layoutFile(without(QStringLiteral("format"))) << wrongFormat;
    QTest::newRow("format wrong") << layoutFile(with(QStringLiteral("format"), "vxlayout2")) << wrongFormat;
    QTest::newRow("newer version") << layoutFile(with(QStringLiteral("version"), 3))
                                   << "it was saved by a newer version of the program (layout format 3";
    QTest::newRow("version missing") << layoutFile(without(QStringLiteral("version")))
                                     << "layout.json: \"version\" is missing";
    QTest::newRow("version as text") << layoutFile(with(QStringLiteral("version"), "1"))
                                     << "layout.json: \"version\" must be a number";
    QTest::newRow("version 0") << layoutFile(with(QStringLiteral("version"), 0)) << "\"version\" is 0, outside 1 to";
    QTest::newRow("style 9") << layoutFile(with(QStringLiteral("style"), 9))
                             << "layout.json: \"style\" is 9, outside 0 to 8";
    QTest::newRow("style -1") << layoutFile(with(QStringLiteral("style"), -1)) << "\"style\" is -1, outside 0 to 8";
    QTest::newRow("style 1.5") << layoutFile(with(QStringLiteral("style"), 1.5)) << "\"style\" must be a whole number";
    QTest::newRow("page width 0") << layoutFile(withPage(0, 480)) << "\"width\" is 0, outside 1 to 100000";
    QTest::newRow("page height over 100000") << layoutFile(withPage(640, 100001))
                                             << "\"height\" is 100001, outside 1 to 100000";
    QTest::newRow("page missing") << layoutFile(without(QStringLiteral("page"))) << "\"page\" is missing";
    QTest::newRow("items not a list") << layoutFile(with(QStringLiteral("items"), 3)) << "\"items\" must be a list";
    QTest::newRow("item not an object") << layoutFile(with(QStringLiteral("items"), QJsonArray{1}))
                                        << "item 1: it is not an object";
    QTest::newRow("unknown kind") << layoutFile(withItemValue(1, QStringLiteral("kind"), "hexagon"))
                                  << "item 2: unknown kind \"hexagon\"";
    QTest::newRow("cell 300") << layoutFile(withItemValue(0, QStringLiteral("cell"), 300))
                              << "item 1: \"cell\" is 300, outside -1 to 15";
    QTest::newRow("cell -2") << layoutFile(withItemValue(0, QStringLiteral("cell"), -2))
                             << "item 1: \"cell\" is -2, outside -1 to 15";
    QTest::newRow("256 images in one cell") << layoutFile(withRepeatedItem(0, 256))
                                            << "layout.json: 256 images are in cell 0; a cell holds at most 255";
    QTest::newRow("10001 items") << layoutFile(withRepeatedItem(1, 10001))
                                 << "layout.json: it holds 10001 items; a layout file keeps at most 10000";
    QTest::newRow("negative width") << layoutFile(withItemValue(0, QStringLiteral("rect"), QJsonArray{0, 0, -5, 10}))
                                    << "item 1: \"rect\" has a negative width or height";
    QTest::newRow("negative height") << layoutFile(withItemValue(1, QStringLiteral("rect"), QJsonArray{0, 0, 5, -1}))
                                     << "item 2: \"rect\" has a negative width or height";
    QTest::newRow("rect of three") << layoutFile(withItemValue(1, QStringLiteral("rect"), QJsonArray{0, 0, 5}))
                                   << "item 2: \"rect\" must be a list of 4 numbers";
    QTest::newRow("x beyond a million")
        << layoutFile(withItemValue(0, QStringLiteral("rect"), QJsonArray{1000001, 0, 5, 5}))
        << "item 1: \"rect\" is 1000001, outside -1000000 to 1000000";
    QTest::newRow("arrow end beyond a million")
        << layoutFile(withItemValue(2, QStringLiteral("end"), QJsonArray{0, -2000000}))
        << "item 3: \"end\" is -2000000, outside -1000000 to 1000000";
    QTest::newRow("1e400") << layoutFileWithJsonText(QJsonDocument(baseJson()).toJson(QJsonDocument::Compact)
                                                         .replace("\"z\":26", "\"z\":1e400"))
                           << "layout.json is not valid JSON";
    QTest::newRow("1e300 as z") << layoutFileWithJsonText(QJsonDocument(baseJson()).toJson(QJsonDocument::Compact)
                                                              .replace("\"z\":26", "\"z\":1e300"))
                                << "item 1: \"z\" is 1e+300, outside -1000000000 to 1000000000";
    QTest::newRow("text for a number") << layoutFile(withItemValue(0, QStringLiteral("z"), "26"))
                                       << "item 1: \"z\" must be a number";
    QTest::newRow("text for a point") << layoutFile(withItemValue(2, QStringLiteral("start"), QJsonArray{"1", 2}))
                                      << "item 3: \"start\" must be a number";
    QTest::newRow("text for a flag") << layoutFile(withItemValue(2, QStringLiteral("endHead"), 1))
                                     << "item 3: \"endHead\" must be true or false";
    QTest::newRow("negative head length") << layoutFile(withItemValue(2, QStringLiteral("headLength"), -1))
                                          << "item 3: \"headLength\" is -1, outside 0 to 1000000";
    QTest::newRow("pen width -1")
        << layoutFile(withItemValue(1, QStringLiteral("pen"),
                                    QJsonObject{{"color", "#ff000000"}, {"width", -1}, {"style", 1}, {"cap", 16},
                                                {"join", 64}}))
        << "item 2: \"width\" is -1, outside 0 to 1000";
    QTest::newRow("pen cap 17")
        << layoutFile(withItemValue(1, QStringLiteral("pen"),
                                    QJsonObject{{"color", "#ff000000"}, {"width", 1}, {"style", 1}, {"cap", 17},
                                                {"join", 64}}))
        << "item 2: \"cap\" is 17, which is no such style";
    QTest::newRow("colour by name") << layoutFile(withItemValue(1, QStringLiteral("color"), "red"))
                                    << "item 2: \"color\" must be a colour written as #aarrggbb";
    QTest::newRow("gradient brush") << layoutFile(withItemValue(1, QStringLiteral("brush"),
                                                                QJsonObject{{"color", "#ff000000"}, {"style", 15}}))
                                    << "item 2: \"style\" is 15, outside 0 to 14";
    QTest::newRow("alignment beyond the flags") << layoutFile(withItemValue(1, QStringLiteral("alignment"), 0x200))
                                                << "item 2: \"alignment\" is 512, outside 0 to 511";
    QTest::newRow("text over 1 MiB")
        << layoutFile(withItemValue(1, QStringLiteral("text"), QString(1024 * 1024 + 1, QLatin1Char('x'))))
        << "item 2: \"text\" is longer than 1048576 characters";
    QTest::newRow("image entry missing") << layoutFile(withItemValue(0, QStringLiteral("image"), "images/7.png"))
                                         << "the entry \"images/7.png\" is missing";
    QTest::newRow("image entry not a PNG")
        << zipBytes({{kJsonEntry, QJsonDocument(baseJson()).toJson()}, {QStringLiteral("images/0.png"), "GIF89a..."}})
        << "the image \"images/0.png\" cannot be used: it is not a PNG image";
    QTest::newRow("image entry empty") << layoutFile(withItemValue(0, QStringLiteral("image"), ""))
                                       << "item 1: \"image\" names no entry";
    QTest::newRow("image entry layout.json") << layoutFile(withItemValue(0, QStringLiteral("image"), "layout.json"))
                                             << "the image \"layout.json\" cannot be used: it is not a PNG image";
    QTest::newRow("PNG announcing 100000 x 100000")
        << zipBytes({{kJsonEntry, QJsonDocument(baseJson()).toJson()},
                     {QStringLiteral("images/0.png"), pngAnnouncing(100000, 100000)}})
        << "the image \"images/0.png\" would take 38147 MiB of memory; a layout file keeps images of at most 512 MiB";
    QTest::newRow("images over 4 GiB together") << nineLargeImages()
                                                << "its images would take more than 4096 MiB of memory together";
    QTest::newRow("PNG header cut off")
        << zipBytes({{kJsonEntry, QJsonDocument(baseJson()).toJson()}, {QStringLiteral("images/0.png"), smallPng().left(20)}})
        << "the image \"images/0.png\" cannot be used: its PNG header is damaged";
    QTest::newRow("PNG data cut off")
        << zipBytes({{kJsonEntry, QJsonDocument(baseJson()).toJson()},
                     {QStringLiteral("images/0.png"), smallPng().left(smallPng().size() - 20)}})
        << "the image \"images/0.png\" cannot be used: its PNG data cannot be decoded";
    QTest::newRow("local header reaching past the end")
        << withLocalExtraLength(valid, "images/0.png", 0xffff)
        << "the archive is damaged (it is shorter than its directory says)";
    QTest::newRow("layout.json longer than announced")
        << withAnnouncedSize(valid, "layout.json", 100)
        << "the entry \"layout.json\" is damaged (its size is not the one the archive gives)";
    QTest::newRow("image entry shorter than announced")
        << withAnnouncedSize(valid, "images/0.png", 3000)
        << "the entry \"images/0.png\" is damaged (its size is not the one the archive gives)";
    QTest::newRow("image entry unpacking to 2 GiB") << withAnnouncedSize(valid, "images/0.png", 0x80000000u)
                                                    << "the entry \"images/0.png\" would unpack to 2048 MiB";
}

void TestLayoutFile::badInputIsRefused()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, reason);
    const QString strPath = path(QStringLiteral("input.vxlayout"));
    QVERIFY(writeBytes(strPath, content));
    expectRefused(strPath, reason);
}

void TestLayoutFile::unreadablePaths_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("missing") << "missing.vxlayout" << "it does not exist";
    QTest::newRow("folder") << "folder.vxlayout" << "it is a folder";
    QTest::newRow("device") << "device.vxlayout" << "it is not a regular file";
    QTest::newRow("no name") << "" << "no file name was given";
}

void TestLayoutFile::unreadablePaths()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    QVERIFY(QDir(m_pDir->path()).mkdir(QStringLiteral("folder.vxlayout")));
    if (QFileInfo::exists(QStringLiteral("/dev/zero")))
        QVERIFY(QFile::link(QStringLiteral("/dev/zero"), path(QStringLiteral("device.vxlayout"))));
    else if (name.startsWith(QLatin1String("device")))
        QSKIP("this system has no /dev/zero");
    expectRefused(name.isEmpty() ? QString() : path(name), reason);
}

void TestLayoutFile::hugeSparseFileFailsFast()
{
    const QString strPath = path(QStringLiteral("huge.vxlayout"));
    QFile huge(strPath);
    QVERIFY(huge.open(QIODevice::WriteOnly));
    QVERIFY(huge.resize(qint64(2) * 1024 * 1024 * 1024));
    huge.close();
    const qint64 nReadBefore = bytesReadSoFar();
    expectRefused(strPath, QStringLiteral("it is not a layout file (no zip archive)"));
    if (nReadBefore < 0)
        QSKIP("this system has no /proc/self/io to count the bytes read");
    const qint64 nRead = bytesReadSoFar() - nReadBefore;
    QVERIFY2(nRead < 1024 * 1024, qPrintable(QStringLiteral("%1 bytes read").arg(nRead)));
}

void TestLayoutFile::writeReplacesTheOldFile()
{
    const QString strPath = path(QStringLiteral("layout.vxlayout"));
    QVERIFY(writeBytes(strPath, "an older layout"));
    QVERIFY(QFile::setPermissions(strPath, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup));
    CVXSLayoutFile file;
    QVERIFY2(file.write(strPath, sampleDocument()), qPrintable(file.errorText()));
    QCOMPARE(entriesOf(m_pDir->path()), QStringList{QStringLiteral("layout.vxlayout")});
    const QFile::Permissions unixBits = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner | QFile::ReadGroup
                                      | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther | QFile::WriteOther
                                      | QFile::ExeOther;
    QCOMPARE(QFile::permissions(strPath) & unixBits, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    CVXSLayoutDocument read;
    QVERIFY2(file.read(strPath, read), qPrintable(file.errorText()));
    QCOMPARE(read.items.size(), sampleDocument().items.size());
}

void TestLayoutFile::failedWriteKeepsTheOldFile_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("reason");
    QTest::newRow("name taken by a folder") << "folder" << "it is a folder";
    QTest::newRow("missing folder") << "missing" << "No such file or directory";
    QTest::newRow("device") << "device" << "it is not a regular file";
    QTest::newRow("system folder refusing files") << "sysfs" << "Permission denied";
    QTest::newRow("read-only folder") << "readonly" << "Permission denied";
    QTest::newRow("disk full") << "full" << "No space left on device";
    QTest::newRow("file size limit") << "limit" << "File too large";
}

void TestLayoutFile::failedWriteKeepsTheOldFile()
{
    QFETCH(QString, target);
    QFETCH(QString, reason);
    // Noise does not compress: its PNG takes about 480 KiB.
    CVXSLayoutDocument large = sampleDocument();
    large.items.append(imageItem(randomImage(QSize(400, 400), QImage::Format_RGB32, 3), QRectF(0, 0, 40, 40), 5));
    QString strFolder = path(QStringLiteral("work"));
    QVERIFY(QDir().mkpath(strFolder));
    QString strPath = strFolder + QStringLiteral("/layout.vxlayout");
    const QByteArray old("the user's earlier layout");
    QVERIFY(writeBytes(strPath, old));
    bool bOldFileKept = true;
    std::function<void()> undoSetup;
    const auto restore = qScopeGuard([&undoSetup] {
        if (undoSetup)
            undoSetup();
    });
    if (target == QLatin1String("folder")) {
        strPath = strFolder + QStringLiteral("/taken.vxlayout");
        QVERIFY(QDir(strFolder).mkdir(QStringLiteral("taken.vxlayout")));
    } else if (target == QLatin1String("missing")) {
        strPath = strFolder + QStringLiteral("/no/such/folder/layout.vxlayout");
    } else if (target == QLatin1String("device")) {
        if (!QFileInfo(QStringLiteral("/dev/full")).exists())
            QSKIP("this system has no /dev/full");
        strPath = strFolder + QStringLiteral("/full.vxlayout");
        QVERIFY(QFile::link(QStringLiteral("/dev/full"), strPath));
    } else if (target == QLatin1String("sysfs")) {
        // sysfs refuses new files (EACCES) even to root, unlike a folder without write permission.
        if (!QFileInfo(QStringLiteral("/sys/kernel")).isDir())
            QSKIP("this system has no sysfs under /sys");
        strFolder = QStringLiteral("/sys");
        strPath = QStringLiteral("/sys/vx_layout_file_test.vxlayout");
        bOldFileKept = false;
    } else if (target == QLatin1String("readonly")) {
        QVERIFY(QFile::setPermissions(strFolder, QFile::ReadOwner | QFile::ExeOwner));
        undoSetup = [strFolder] {
            QFile::setPermissions(strFolder, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        };
        if (mayWriteInto(strFolder))
            QSKIP("this user may write into read-only folders (root)");
    } else if (target == QLatin1String("full")) {
        // A small file system of its own fills up on the real write path.
        QVERIFY(QFile::remove(strPath));
        if (::mount("tmpfs", QFile::encodeName(strFolder).constData(), "tmpfs", 0, "size=256k") != 0)
            QSKIP("cannot mount a small file system here (needs root with the right to mount)");
        undoSetup = [strFolder] { ::umount2(QFile::encodeName(strFolder).constData(), MNT_DETACH); };
        QVERIFY(writeBytes(strPath, old));
    }
    const QStringList before = entriesOf(strFolder);

    CVXSLayoutFile file;
    bool bWritten = false;
    if (target == QLatin1String("limit")) {
        // Writes beyond 64 KiB fail with EFBIG, which the kernel raises on the same path as ENOSPC.
        rlimit previous = {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &previous), 0);
        rlimit limited = previous;
        limited.rlim_cur = 64 * 1024;
        const auto previousHandler = std::signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &limited), 0);
        bWritten = file.write(strPath, large);
        setrlimit(RLIMIT_FSIZE, &previous);
        std::signal(SIGXFSZ, previousHandler);
    } else {
        bWritten = file.write(strPath, large);
    }

    QVERIFY(!bWritten);
    QVERIFY2(file.errorText().startsWith(QStringLiteral("Cannot save \"%1\": ").arg(strPath)),
             qPrintable(file.errorText()));
    QVERIFY2(file.errorText().contains(reason), qPrintable(file.errorText()));
    QCOMPARE(entriesOf(strFolder), before);
    if (bOldFileKept)
        QCOMPARE(contentOf(strFolder + QStringLiteral("/layout.vxlayout")), old);
    if (target == QLatin1String("device"))
        QVERIFY(QFileInfo(QStringLiteral("/dev/full")).exists() && !QFileInfo(QStringLiteral("/dev/full")).isFile());
}

void TestLayoutFile::unsavableValuesAreRefused_data()
{
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no page size") << 0 << "layout.json: \"width\" is -1, outside 1 to 100000";
    QTest::newRow("style 12") << 1 << "layout.json: \"style\" is 12, outside 0 to 8";
    QTest::newRow("custom dashes") << 2 << "item 5: \"style\" is 6, outside 0 to 5";
    QTest::newRow("cell 16") << 3 << "item 1: \"cell\" is 16, outside -1 to 15";
}

void TestLayoutFile::unsavableValuesAreRefused()
{
    QFETCH(int, field);
    QFETCH(QString, reason);
    CVXSLayoutDocument document = sampleDocument();
    if (field == 0)
        document.pageSize = QSize();
    else if (field == 1)
        document.nStyle = 12;
    else if (field == 2)
        document.items[4].pen.setDashPattern({1, 2, 3, 4});
    else
        document.items[0].nCellIndex = 16;
    const QString strPath = path(QStringLiteral("kept.vxlayout"));
    QVERIFY(writeBytes(strPath, "the user's earlier layout"));
    CVXSLayoutFile file;
    QVERIFY(!file.write(strPath, document));
    QVERIFY2(file.errorText().contains(QStringLiteral("the layout holds a value a layout file cannot keep (") + reason),
             qPrintable(file.errorText()));
    QCOMPARE(contentOf(strPath), QByteArray("the user's earlier layout"));
    QCOMPARE(entriesOf(m_pDir->path()), QStringList{QStringLiteral("kept.vxlayout")});
}

void TestLayoutFile::readsFormatVersion1Fixture()
{
    const QString strPath = QStringLiteral(VX_LAYOUT_TEST_DATA "/layout-v1.vxlayout");
    CVXSLayoutDocument read;
    CVXSLayoutFile file;
    QVERIFY2(file.read(strPath, read), qPrintable(file.errorText()));
    QCOMPARE(read.nStyle, 4);
    QCOMPARE(read.pageSize, QSize(640, 480));
    QCOMPARE(read.items.size(), 8);
    const QVector<FixtureItem> expected = {
        {ImageItemType, {19.25, 48, 192, 144}, 26, thinBlackPen(), noBrush()},
        {ImageItemType, {400.5, 300, 64, 64}, 27, thinBlackPen(), noBrush()},
        {TextItemType, {100, 400, 200, 30}, 30, thinBlackPen(), noBrush()},
        {RectangleItemType, {300.5, 20.25, 120, 60}, 31, {0xff0000ff, 3, Qt::DashLine, Qt::FlatCap, Qt::MiterJoin},
         {0x6400ff00, Qt::SolidPattern}},
        {EllipseItemType, {450, 100, 80, 50}, 32, {0xffff0000, 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin}, noBrush()},
        {ArrowItemType, {-30, -30, 270, 220}, 33, oneWideBlackPen(), noBrush()},
        {ArrowItemType, {10, 220, 280, 120}, 34, oneWideBlackPen(), noBrush()},
        {ArrowItemType, {460, 10, 180, 430}, 35, oneWideBlackPen(), noBrush()},
    };
    for (int i = 0; i < expected.size(); ++i) {
        compareFixtureItem(read.items.at(i), expected.at(i));
        if (QTest::currentTestFailed())
            QFAIL(qPrintable(QStringLiteral("item %1 differs").arg(i)));
    }

    const CVXSLayoutItemState& first = read.items.at(0);
    QCOMPARE(first.nCellIndex, 0);
    QCOMPARE(first.image.size(), QSize(3, 2));
    const QVector<QRgb> firstPixels = {0xff102030, 0xff405060, 0xff708090, 0xffa0b0c0, 0xffd0e0f0, 0xff010203};
    for (int i = 0; i < firstPixels.size(); ++i)
        QCOMPARE(first.image.pixel(i % 3, i / 3), firstPixels.at(i));
    QCOMPARE(first.image.textKeys(), QStringList{QStringLiteral("SourceFile")});
    QCOMPARE(first.image.text(QStringLiteral("SourceFile")), QStringLiteral("/daten/Gr\u00f6\u00dfe/\u5c0f\u9f20.dcm"));

    const CVXSLayoutItemState& second = read.items.at(1);
    QCOMPARE(second.nCellIndex, -1);
    QCOMPARE(second.image.format(), QImage::Format_Grayscale8);
    QCOMPARE(second.image.size(), QSize(2, 2));
    const QVector<int> secondLevels = {0, 85, 170, 255};
    for (int i = 0; i < secondLevels.size(); ++i)
        QCOMPARE(int(second.image.constScanLine(i / 2)[i % 2]), secondLevels.at(i));

    const CVXSLayoutItemState& text = read.items.at(2);
    QCOMPARE(text.strText, QStringLiteral("L\u00e4sion \u5c0f\u9f20 \u2713"));
    QCOMPARE(text.font.toString(), QStringLiteral("DejaVu Sans,14,-1,5,75,1,0,0,0,0"));
    QCOMPARE(text.font.family(), QStringLiteral("DejaVu Sans"));
    QCOMPARE(text.font.pointSize(), 14);
    QVERIFY(text.font.bold());
    QVERIFY(text.font.italic());
    QCOMPARE(text.color.rgba(), 0xc0ff8000u);
    QCOMPARE(text.nTextFlags, int(Qt::AlignHCenter | Qt::AlignVCenter));

    const QVector<FixtureArrow> arrows = {
        {{10, 10}, {200, 150}, false, false, 10, 0.75},
        {{50, 300}, {250, 260}, false, true, 12.5, 0.6},
        {{600, 50}, {500, 400}, true, true, 15, 1},
    };
    for (int i = 0; i < arrows.size(); ++i) {
        const CVXSLayoutItemState& arrow = read.items.at(5 + i);
        QCOMPARE(arrow.startPoint, arrows.at(i).start);
        QCOMPARE(arrow.endPoint, arrows.at(i).end);
        QCOMPARE(arrow.bStartHead, arrows.at(i).bStartHead);
        QCOMPARE(arrow.bEndHead, arrows.at(i).bEndHead);
        QCOMPARE(exact(arrow.dHeadLength), exact(arrows.at(i).dHeadLength));
        QCOMPARE(exact(arrow.dHeadWidthRatio), exact(arrows.at(i).dHeadWidthRatio));
    }
    // Fields of other kinds keep their defaults.
    QCOMPARE(read.items.at(3).strText, QString());
    QVERIFY(read.items.at(3).image.isNull());
    QCOMPARE(read.items.at(3).nCellIndex, -1);
    QCOMPARE(read.items.at(4).startPoint, QPoint());
}

QTEST_MAIN(TestLayoutFile)
#include "tst_layout_file.moc"
