#include "OutsideProgram.h"
#include "TestPictures.h"

#include <VXImageProvenance.h>
#include <VXSImageExporter.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QtEndian>
#include <QtTest>

namespace {

using Keys = QMap<QString, QString>;

constexpr char kSecondaryCapture[] = "1.2.840.10008.5.1.4.1.1.7";

QString imageKey(int nImage, const char* pKey)
{
    return CVXImageProvenance::imageKey(nImage, QString::fromLatin1(pKey));
}

// A UID of the longest form, 64 characters, different for every n.
QString longUid(int n)
{
    const QString strStem = QStringLiteral("1.2.826.0.1.3680043.10.1234.");
    const QString strTail = QStringLiteral(".%1").arg(n);
    return strStem + QString(64 - strStem.size() - strTail.size(), QLatin1Char('9')) + strTail;
}

// A layout figure's keys with the given images' sources; each source from DICOM carries its UIDs.
Keys figureKeys(const QVector<Keys>& images)
{
    Keys keys = {{QStringLiteral("Layout Style"), QStringLiteral("Layout 2x1")},
                 {QString::fromLatin1(CVXImageProvenance::ImageCount), QString::number(images.size())}};
    for (int n = 1; n <= images.size(); ++n) {
        for (auto it = images[n - 1].cbegin(); it != images[n - 1].cend(); ++it)
            keys.insert(CVXImageProvenance::imageKey(n, it.key()), it.value());
    }
    return keys;
}

Keys dicomSource(const QString& strFile, const QString& strInstanceUid)
{
    return {{QString::fromLatin1(CVXImageProvenance::Source), strFile},
            {QString::fromLatin1(CVXImageProvenance::SopClassUid), QString::fromLatin1(kSecondaryCapture)},
            {QString::fromLatin1(CVXImageProvenance::SopInstanceUid), strInstanceUid},
            {QString::fromLatin1(CVXImageProvenance::PatientId), QStringLiteral("Mouse-17")}};
}

Keys typicalFigure()
{
    return figureKeys({dicomSource(QStringLiteral("scan.dcm"), QStringLiteral("1.2.3.4.5")),
                       {{QString::fromLatin1(CVXImageProvenance::Source), QStringLiteral("photo.png")}}});
}

Keys sixteenDicomSources()
{
    QVector<Keys> images;
    for (int n = 1; n <= 16; ++n)
        images << dicomSource(QStringLiteral("frame%1.dcm").arg(n), longUid(n));
    return figureKeys(images);
}

// Sources whose names XML has to escape.
Keys markupFigure()
{
    return figureKeys({{{QString::fromLatin1(CVXImageProvenance::Source), QStringLiteral("a<b>&\"c\" 'd'.png")}},
                       {{QString::fromLatin1(CVXImageProvenance::Source), QStringLiteral("]]> <!-- x -->.dcm")},
                        {QString::fromLatin1(CVXImageProvenance::PatientId), QStringLiteral("tab\there")}}});
}

Keys valueFigure(const QString& strValue)
{
    Keys source = dicomSource(QStringLiteral("scan.dcm"), QStringLiteral("1.2.3.4.5"));
    source.insert(QString::fromLatin1(CVXImageProvenance::PatientId), strValue);
    return figureKeys({source});
}

// The figures every format is tried with, by row name.
QVector<QPair<const char*, Keys>> valueRows()
{
    return {{"typical", typicalFigure()},
            {"no metadata", Keys()},
            {"non-ascii", valueFigure(QString::fromUtf8("Maus-Ä \u6CE8 \U0001F42D"))},
            {"10000 characters", valueFigure(QString(10000, QLatin1Char('x')))},
            {"16 dicom sources", sixteenDicomSources()}};
}

// The figures the XMP packet is tried with, by row name.
QVector<QPair<const char*, Keys>> xmpRows()
{
    QVector<QPair<const char*, Keys>> rows;
    for (const auto& row : valueRows()) {
        if (!row.second.isEmpty())
            rows << row;
    }
    rows.append({"markup in names", markupFigure()});
    return rows;
}

// Our XMP property for a key: its name without spaces.
QString propertyOf(const QString& strKey)
{
    return QString(strKey).remove(QLatin1Char(' '));
}

// The file of every image, in order.
QStringList sourcesOf(const Keys& keys)
{
    QStringList sources;
    const int nImages = keys.value(QString::fromLatin1(CVXImageProvenance::ImageCount)).toInt();
    for (int n = 1; n <= nImages; ++n)
        sources << keys.value(imageKey(n, CVXImageProvenance::Source));
    return sources;
}

// A JSON value as text, lists of one item as that item; exiftool writes numbers as numbers.
QStringList textsOf(const QJsonValue& value)
{
    QStringList texts;
    for (const QVariant& item : value.isArray() ? value.toArray().toVariantList() : QVariantList{value.toVariant()})
        texts << item.toString();
    return texts;
}

// Each figure in each raster format that carries text, as rows "suffix figure".
void addRasterRows(const QVector<QPair<const char*, Keys>>& figures)
{
    QTest::addColumn<QByteArray>("suffix");
    QTest::addColumn<Keys>("keys");
    for (const QByteArray& suffix : {QByteArray("png"), QByteArray("tif"), QByteArray("jpg")}) {
        for (const auto& row : figures)
            QTest::addRow("%s %s", suffix.constData(), row.first) << suffix << row.second;
    }
}

QImage keyedImage(const Keys& keys)
{
    QImage image = solidImage(QSize(41, 29), QColor(200, 120, 40));
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        image.setText(it.key(), it.value());
    return image;
}

// The output is parsed: standard error is kept apart.
OutsideProgram runTool(const QString& strProgram, const QStringList& arguments)
{
    return OutsideProgram(strProgram, arguments, OutsideProgram::Errors::Apart);
}

QByteArray contentOf(const QString& strPath)
{
    QFile file(strPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// "Key: value" as exiftool names what each format holds.
QStringList expectedExiftoolLines(const QByteArray& suffix, const Keys& keys)
{
    QStringList lines;
    for (auto it = keys.cbegin(); it != keys.cend(); ++it) {
        const QString strLine = it.key() + QStringLiteral(": ") + it.value();
        if (suffix == "png")
            lines << QString(it.key()).remove(QLatin1Char(' ')) + QStringLiteral(": ") + it.value();
        else if (suffix == "jpg")
            lines << QStringLiteral("Comment: ") + strLine;
        else
            lines << strLine;
    }
    return lines;
}

QStringList exiftoolArguments(const QByteArray& suffix, const QString& strPath)
{
    if (suffix == "png")
        return {QStringLiteral("-a"), QStringLiteral("-S"), QStringLiteral("-PNG:all"), strPath};
    if (suffix == "jpg")
        return {QStringLiteral("-a"), QStringLiteral("-S"), QStringLiteral("-Comment"), strPath};
    return {QStringLiteral("-b"), QStringLiteral("-ImageDescription"), strPath};
}

// The referenced SOP instances of the Source Image Sequence, as dcmdump prints them.
QStringList referencedInstances(const QByteArray& dump)
{
    QStringList uids;
    for (const QByteArray& line : dump.split('\n')) {
        if (line.trimmed().startsWith("(0008,1155)")) {
            const int nOpen = line.indexOf('[');
            uids << QString::fromLatin1(line.mid(nOpen + 1, line.indexOf(']') - nOpen - 1));
        }
    }
    return uids;
}

// Walks the EMF records; the data of every EMR_COMMENT, or a failure when a record is bad.
bool emfComments(const QByteArray& emf, QStringList& comments)
{
    qint64 nOffset = 0;
    while (nOffset + 8 <= emf.size()) {
        const auto* p = reinterpret_cast<const uchar*>(emf.constData() + nOffset);
        const quint32 nType = qFromLittleEndian<quint32>(p);
        const quint32 nSize = qFromLittleEndian<quint32>(p + 4);
        if (nSize < 8 || nSize % 4 != 0 || nOffset + nSize > emf.size())
            return false;
        if (nType == 70)
            comments << QString::fromUtf8(emf.mid(int(nOffset) + 12, int(qFromLittleEndian<quint32>(p + 8))));
        nOffset += nSize;
        if (nType == 14)
            return nOffset == emf.size();
    }
    return false;
}

// Walks the WMF records after the placeable and standard headers; the data of every
// MFCOMMENT escape, or a failure when a record is bad.
bool wmfComments(const QByteArray& wmf, QStringList& comments)
{
    qint64 nOffset = 22 + 18;
    while (nOffset + 6 <= wmf.size()) {
        const auto* p = reinterpret_cast<const uchar*>(wmf.constData() + nOffset);
        const qint64 nBytes = qint64(qFromLittleEndian<quint32>(p)) * 2;
        const quint16 nFunction = qFromLittleEndian<quint16>(p + 4);
        if (nBytes < 6 || nOffset + nBytes > wmf.size())
            return false;
        if (nFunction == 0x0626 && qFromLittleEndian<quint16>(p + 6) == 0x000F)
            comments << QString::fromUtf8(wmf.mid(int(nOffset) + 10, qFromLittleEndian<quint16>(p + 8)));
        nOffset += nBytes;
        if (nFunction == 0)
            return nOffset == wmf.size();
    }
    return false;
}

} // namespace

class TestHostExportProvenance : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();

    void readBackByExiftool_data();
    void readBackByExiftool();
    void jpegCommentTooLongIsCut();
    void dicomReferencesItsSources_data();
    void dicomReferencesItsSources();
    void dicomLongTextIsCut();
    void epsCarriesEscapedComments_data();
    void epsCarriesEscapedComments();
    void metafilesCarryCommentRecords_data();
    void metafilesCarryCommentRecords();
    void bmpWritesWithoutKeys();
    void xmpReadBackByExiftool_data();
    void xmpReadBackByExiftool();
    void xmpPacketParsedByXmllint_data();
    void xmpPacketParsedByXmllint();
    void pngXmpComesBeforeTheTextChunks();
    void tiffXmpInItsTag();
    void longXmpCutOnlyForJpeg_data();
    void longXmpCutOnlyForJpeg();
    void noKeysNoXmp_data();
    void noKeysNoXmp();

private:
    QString save(const QImage& image, const QString& strName);
    // What exiftool reads of the file's XMP, as JSON; structures whole when asked.
    static QJsonObject exiftoolXmp(const QString& strPath, bool bStructures);
    // The XMP packet exiftool finds in the file, written to a file of its own for xmllint.
    QString extractedPacket(const QString& strPath);
    // What exiftool reports of the picture without keys, which is no provenance.
    QStringList plainExiftoolLines(const QByteArray& suffix);

    QTemporaryDir m_dir;
    QHash<QByteArray, QStringList> m_plainExiftoolLines;
};

void TestHostExportProvenance::initTestCase()
{
    QVERIFY(m_dir.isValid());
}

QString TestHostExportProvenance::save(const QImage& image, const QString& strName)
{
    QImage toSave = image;
    QString strPath = m_dir.filePath(strName);
    return CVXSImageExporter().saveImage(toSave, strPath) == eSTATUS_SUCCESS ? strPath : QString();
}

QStringList TestHostExportProvenance::plainExiftoolLines(const QByteArray& suffix)
{
    if (!m_plainExiftoolLines.contains(suffix)) {
        const QString strPath = save(keyedImage(Keys()), QStringLiteral("plain.") + QString::fromLatin1(suffix));
        const OutsideProgram plain = runTool(QStringLiteral("exiftool"), exiftoolArguments(suffix, strPath));
        m_plainExiftoolLines.insert(suffix, QString::fromUtf8(plain.output()).split(QLatin1Char('\n'), Qt::SkipEmptyParts));
    }
    return m_plainExiftoolLines.value(suffix);
}

void TestHostExportProvenance::readBackByExiftool_data()
{
    addRasterRows(valueRows());
}

void TestHostExportProvenance::readBackByExiftool()
{
    VX_REQUIRE_PROGRAM("exiftool");
    QFETCH(QByteArray, suffix);
    QFETCH(Keys, keys);
    const QString strPath = save(keyedImage(keys), QStringLiteral("figure.") + QString::fromLatin1(suffix));
    QVERIFY(!strPath.isEmpty());

    const OutsideProgram read = runTool(QStringLiteral("exiftool"), exiftoolArguments(suffix, strPath));

    QVERIFY2(read.succeeded(), qPrintable(read.report()));
    QStringList lines = QString::fromUtf8(read.output()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& strPlain : plainExiftoolLines(suffix))
        lines.removeOne(strPlain);
    const QStringList expected = expectedExiftoolLines(suffix, keys);
    for (const QString& strLine : expected)
        QVERIFY2(lines.contains(strLine), qPrintable(strLine.left(200)));
    QCOMPARE(lines.size(), expected.size());
}

void TestHostExportProvenance::jpegCommentTooLongIsCut()
{
    VX_REQUIRE_PROGRAM("exiftool");
    const QString strPatient = QString::fromLatin1(CVXImageProvenance::PatientId);
    // Two bytes a character, so that a cut at the byte limit would fall inside one.
    const QString strPath = save(keyedImage({{strPatient, QString(40000, QChar(0xC4))}}), QStringLiteral("long.jpg"));
    QVERIFY(!strPath.isEmpty());

    const OutsideProgram read = runTool(QStringLiteral("exiftool"), {QStringLiteral("-b"), QStringLiteral("-Comment"), strPath});

    QVERIFY2(read.succeeded(), qPrintable(read.report()));
    QVERIFY(read.output().size() <= 65533);
    const QString strComment = QString::fromUtf8(read.output());
    QVERIFY(strComment.startsWith(strPatient + QStringLiteral(": ") + QChar(0xC4)));
    QVERIFY(strComment.endsWith(QStringLiteral("\u00C4 [truncated]")));
}

void TestHostExportProvenance::dicomReferencesItsSources_data()
{
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<QStringList>("references");
    QTest::newRow("typical") << typicalFigure() << QStringList({QStringLiteral("1.2.3.4.5")});
    QTest::newRow("no metadata") << Keys() << QStringList();
    QTest::newRow("non-ascii") << valueFigure(QString::fromUtf8("Maus-Ä \u6CE8 \U0001F42D"))
                               << QStringList({QStringLiteral("1.2.3.4.5")});
    QTest::newRow("10000 characters") << valueFigure(QString(10000, QLatin1Char('x')))
                                      << QStringList({QStringLiteral("1.2.3.4.5")});
    QStringList sixteen;
    for (int n = 1; n <= 16; ++n)
        sixteen << longUid(n);
    QTest::newRow("16 dicom sources") << sixteenDicomSources() << sixteen;
    Keys broken = typicalFigure();
    broken.insert(imageKey(1, CVXImageProvenance::SopInstanceUid), QStringLiteral("not a uid"));
    QTest::newRow("invalid uid left out") << broken << QStringList();
}

void TestHostExportProvenance::dicomReferencesItsSources()
{
    VX_REQUIRE_PROGRAM("dcmdump");
    VX_REQUIRE_PROGRAM("dciodvfy");
    QFETCH(Keys, keys);
    QFETCH(QStringList, references);
    const QString strPath = save(keyedImage(keys), QStringLiteral("figure.dcm"));
    QVERIFY(!strPath.isEmpty());

    const OutsideProgram dump = runTool(QStringLiteral("dcmdump"), {QStringLiteral("-Un"), QStringLiteral("+U8"), strPath});
    const OutsideProgram validation = runTool(QStringLiteral("dciodvfy"), {strPath});

    QVERIFY2(dump.succeeded(), qPrintable(dump.report()));
    QCOMPARE(referencedInstances(dump.output()), references);
    QCOMPARE(dump.output().count(QByteArray("(0008,1150) UI [") + kSecondaryCapture + ']'), references.size());
    QCOMPARE(dump.output().contains("(0020,4000)"), !keys.isEmpty());
    QCOMPARE(dump.output().contains("(0008,2111)"), !keys.isEmpty());
    QVERIFY2(validation.finished(), qPrintable(validation.report()));
    QVERIFY2(validation.report().contains("SCImage"), qPrintable(validation.report()));
    QVERIFY2(!validation.report().contains("Error"), qPrintable(validation.report()));
}

void TestHostExportProvenance::dicomLongTextIsCut()
{
    VX_REQUIRE_PROGRAM("dcmdump");
    const QString strPath = save(keyedImage(valueFigure(QString(20000, QChar(0xC4)))), QStringLiteral("long.dcm"));
    QVERIFY(!strPath.isEmpty());

    const OutsideProgram dump = runTool(QStringLiteral("dcmdump"),
                                 {QStringLiteral("+L"), QStringLiteral("+P"), QStringLiteral("0020,4000"), QStringLiteral("+U8"), strPath});

    QVERIFY2(dump.succeeded(), qPrintable(dump.report()));
    // LT holds 10240 characters; dcmdump prints the length in bytes of the Latin-1 value.
    QVERIFY2(dump.output().contains("# 10240,"), dump.output().right(100).constData());
    QVERIFY2(dump.output().contains("\xC3\x84 [truncated]"), dump.output().right(100).constData());
}

void TestHostExportProvenance::epsCarriesEscapedComments_data()
{
    QTest::addColumn<Keys>("keys");
    QTest::addColumn<QByteArray>("expectedLine");
    QTest::newRow("typical") << typicalFigure() << QByteArray("%%VXProvenance: Image 1 Source: scan.dcm");
    QTest::newRow("no metadata") << Keys() << QByteArray("%%EndComments");
    QTest::newRow("non-ascii") << valueFigure(QString::fromUtf8("Maus-Ä ) showpage \\"))
                               << QByteArray("%%VXProvenance: Image 1 Patient ID: Maus-\\303\\204 ) showpage \\134");
    QTest::newRow("line break") << valueFigure(QStringLiteral("a\nshowpage"))
                                << QByteArray("%%VXProvenance: Image 1 Patient ID: a showpage");
    QTest::newRow("10000 characters") << valueFigure(QString(10000, QLatin1Char('x')))
                                      << QByteArray("%%+ ") + QByteArray(251, 'x');
    QTest::newRow("16 dicom sources") << sixteenDicomSources()
                                      << "%%VXProvenance: Image 16 SOP Instance UID: " + longUid(16).toLatin1();
}

void TestHostExportProvenance::epsCarriesEscapedComments()
{
    VX_REQUIRE_PROGRAM("grep");
    VX_REQUIRE_PROGRAM("gs");
    QFETCH(Keys, keys);
    QFETCH(QByteArray, expectedLine);
    const QString strPath = save(keyedImage(keys), QStringLiteral("figure.eps"));
    QVERIFY(!strPath.isEmpty());

    const OutsideProgram found = runTool(QStringLiteral("grep"), {QStringLiteral("-c"), QStringLiteral("-F"), QStringLiteral("-x"),
                                                           QString::fromLatin1(expectedLine), strPath});
    const OutsideProgram tooLong = runTool(QStringLiteral("grep"), {QStringLiteral("-c"), QStringLiteral("^.\\{256,\\}"), strPath});
    const OutsideProgram provenance = runTool(QStringLiteral("grep"), {QStringLiteral("-c"), QStringLiteral("^%%VXProvenance: "), strPath});
    const OutsideProgram render = runTool(QStringLiteral("gs"), {QStringLiteral("-q"), QStringLiteral("-dSAFER"),
                                                          QStringLiteral("-dBATCH"), QStringLiteral("-dNOPAUSE"),
                                                          QStringLiteral("-sDEVICE=nullpage"), strPath});

    QVERIFY2(found.succeeded() && found.output().trimmed().toInt() >= 1, qPrintable(found.report()));
    QCOMPARE(tooLong.output().trimmed(), QByteArray("0"));
    QCOMPARE(provenance.output().trimmed().toInt(), keys.size());
    // The comments stay comments: the page is drawn without a PostScript error.
    QVERIFY2(render.succeeded() && render.output().isEmpty() && render.errors().isEmpty(), qPrintable(render.report()));
}

void TestHostExportProvenance::metafilesCarryCommentRecords_data()
{
    QTest::addColumn<QByteArray>("suffix");
    QTest::addColumn<Keys>("keys");
    for (const QByteArray& suffix : {QByteArray("emf"), QByteArray("wmf")}) {
        for (const auto& row : valueRows())
            QTest::addRow("%s %s", suffix.constData(), row.first) << suffix << row.second;
    }
}

void TestHostExportProvenance::metafilesCarryCommentRecords()
{
    QFETCH(QByteArray, suffix);
    QFETCH(Keys, keys);
    const bool bEmf = suffix == "emf";
    if (bEmf)
        VX_REQUIRE_PROGRAM("emf2svg-conv");
    else
        VX_REQUIRE_PROGRAM("wmf2svg");
    const QString strPath = save(keyedImage(keys), QStringLiteral("figure.") + QString::fromLatin1(suffix));
    QVERIFY(!strPath.isEmpty());

    QStringList comments;
    QVERIFY(bEmf ? emfComments(contentOf(strPath), comments) : wmfComments(contentOf(strPath), comments));
    const QString strSvg = m_dir.filePath(QStringLiteral("figure.svg"));
    const OutsideProgram convert = bEmf ? runTool(QStringLiteral("emf2svg-conv"), {QStringLiteral("-i"), strPath,
                                                                              QStringLiteral("-o"), strSvg})
                                 : runTool(QStringLiteral("wmf2svg"), {QStringLiteral("-o"), strSvg, strPath});

    QStringList expected;
    for (auto it = keys.cbegin(); it != keys.cend(); ++it)
        expected << it.key() + QStringLiteral(": ") + it.value();
    QCOMPARE(comments, expected);
    // Readers still draw the picture.
    QVERIFY2(convert.succeeded(), qPrintable(convert.report()));
    QVERIFY(contentOf(strSvg).contains("<svg"));
}

void TestHostExportProvenance::bmpWritesWithoutKeys()
{
    const QImage image = keyedImage(typicalFigure());
    const QString strPath = save(image, QStringLiteral("figure.bmp"));
    QVERIFY(!strPath.isEmpty());
    QCOMPARE(QImage(strPath).convertToFormat(QImage::Format_RGB32), image.convertToFormat(QImage::Format_RGB32));
}

QJsonObject TestHostExportProvenance::exiftoolXmp(const QString& strPath, bool bStructures)
{
    // -b: long values whole, not as a note on their length.
    QStringList arguments = {QStringLiteral("-XMP:all"), QStringLiteral("-j"), QStringLiteral("-b")};
    if (bStructures)
        arguments << QStringLiteral("-struct");
    const OutsideProgram read = runTool(QStringLiteral("exiftool"), arguments << strPath);
    if (!read.succeeded())
        qWarning("%s", qPrintable(read.report()));
    return QJsonDocument::fromJson(read.output()).array().at(0).toObject();
}

QString TestHostExportProvenance::extractedPacket(const QString& strPath)
{
    const OutsideProgram read = runTool(QStringLiteral("exiftool"), {QStringLiteral("-b"), QStringLiteral("-XMP"), strPath});
    const QString strPacket = strPath + QStringLiteral(".xmp");
    QFile file(strPacket);
    if (!read.succeeded() || read.output().isEmpty() || !file.open(QIODevice::WriteOnly) || file.write(read.output()) < 0)
        return QString();
    return strPacket;
}

void TestHostExportProvenance::xmpReadBackByExiftool_data()
{
    addRasterRows(xmpRows());
}

void TestHostExportProvenance::xmpReadBackByExiftool()
{
    VX_REQUIRE_PROGRAM("exiftool");
    QFETCH(QByteArray, suffix);
    QFETCH(Keys, keys);
    const QDate before = QDate::currentDate();
    const QString strPath = save(keyedImage(keys), QStringLiteral("xmp.") + QString::fromLatin1(suffix));
    QVERIFY(!strPath.isEmpty());

    const QJsonObject structured = exiftoolXmp(strPath, true);
    const QJsonObject flat = exiftoolXmp(strPath, false);

    // Dublin Core's source and our plain list hold every file, whole and in order; the plain
    // list reads so without asking for structures.
    const QStringList sources = sourcesOf(keys);
    QCOMPARE(textsOf(structured.value(QStringLiteral("Source"))), sources);
    QCOMPARE(textsOf(flat.value(QStringLiteral("Sources"))), sources);
    // One structure per image, with every key of the image.
    const QJsonArray images = structured.value(QStringLiteral("Image")).toArray();
    QCOMPARE(images.size(), sources.size());
    for (int n = 1; n <= images.size(); ++n) {
        const QString strPrefix = CVXImageProvenance::imageKey(n, QString());
        const QJsonObject image = images.at(n - 1).toObject();
        int nKeys = 0;
        for (auto it = keys.cbegin(); it != keys.cend(); ++it) {
            if (!it.key().startsWith(strPrefix))
                continue;
            ++nKeys;
            const QString strProperty = propertyOf(it.key().mid(strPrefix.size()));
            QCOMPARE(textsOf(image.value(strProperty)), QStringList{it.value()});
        }
        QCOMPARE(image.size(), nKeys);
    }
    // The figure's own keys, and the standard fields.
    QCOMPARE(textsOf(structured.value(QStringLiteral("LayoutStyle"))), QStringList{QStringLiteral("Layout 2x1")});
    QCOMPARE(textsOf(structured.value(QStringLiteral("Images"))), QStringList{QString::number(sources.size())});
    const QString strDescription = structured.value(QStringLiteral("Description")).toString();
    QVERIFY2(strDescription.startsWith(QStringLiteral("Image layout of %1 image").arg(sources.size())),
             qPrintable(strDescription));
    QVERIFY2(strDescription.endsWith(sources.last()), qPrintable(strDescription));
    const QString strDate = textsOf(structured.value(QStringLiteral("Date"))).value(0);
    QVERIFY2(strDate.startsWith(before.toString(QStringLiteral("yyyy:MM:dd")))
                 || strDate.startsWith(QDate::currentDate().toString(QStringLiteral("yyyy:MM:dd"))),
             qPrintable(strDate));
    QCOMPARE(structured.value(QStringLiteral("CreatorTool")).toString(), QCoreApplication::applicationName());
}

void TestHostExportProvenance::xmpPacketParsedByXmllint_data()
{
    QTest::addColumn<QString>("fileName");
    for (const char* pName : {"sixteen.png", "sixteen.tif", "sixteen.jpg"})
        QTest::newRow(pName) << QString::fromLatin1(pName);
}

void TestHostExportProvenance::xmpPacketParsedByXmllint()
{
    VX_REQUIRE_PROGRAM("exiftool");
    VX_REQUIRE_PROGRAM("xmllint");
    QFETCH(QString, fileName);
    Keys keys = sixteenDicomSources();
    keys.insert(imageKey(3, CVXImageProvenance::Source), QStringLiteral("a<b>&\"c\".dcm"));
    const QString strPath = save(keyedImage(keys), fileName);
    QVERIFY(!strPath.isEmpty());

    const QString strPacket = extractedPacket(strPath);
    QVERIFY(!strPacket.isEmpty());
    const OutsideProgram lint = runTool(QStringLiteral("xmllint"), {QStringLiteral("--noout"), strPacket});
    const QString strDcSource = QStringLiteral("//*[namespace-uri()='http://purl.org/dc/elements/1.1/' and local-name()='source']"
                                               "/*/*[local-name()='li']");
    const OutsideProgram count = runTool(QStringLiteral("xmllint"), {QStringLiteral("--xpath"), QStringLiteral("count(%1)").arg(strDcSource), strPacket});
    const OutsideProgram third = runTool(QStringLiteral("xmllint"), {QStringLiteral("--xpath"), QStringLiteral("string((%1)[3])").arg(strDcSource), strPacket});

    QVERIFY2(lint.succeeded() && lint.output().isEmpty() && lint.errors().isEmpty(), qPrintable(lint.report()));
    QCOMPARE(count.output().trimmed(), QByteArray("16"));
    QCOMPARE(third.output().trimmed(), QByteArray("a<b>&\"c\".dcm"));
    // UTF-8 in its wrapper, in our own namespace.
    const QByteArray packet = contentOf(strPacket).trimmed();
    QVERIFY(packet.startsWith("<?xpacket begin=\"\xEF\xBB\xBF\" id=\"W5M0MpCehiHzreSzNTczkc9d\"?>"));
    QVERIFY(packet.endsWith("<?xpacket end=\"w\"?>"));
    QVERIFY(packet.contains("xmlns:vx=\"http://ns.vexor.example/provenance/1.0/\""));
}

void TestHostExportProvenance::pngXmpComesBeforeTheTextChunks()
{
    // Some readers take only the first 50 text chunks; sixteen images make 66.
    VX_REQUIRE_PROGRAM("pngcheck");
    const QString strPath = save(keyedImage(sixteenDicomSources()), QStringLiteral("chunks.png"));
    QVERIFY(!strPath.isEmpty());

    const OutsideProgram check = runTool(QStringLiteral("pngcheck"), {QStringLiteral("-v"), strPath});

    QVERIFY2(check.succeeded(), qPrintable(check.report()));
    QStringList chunks;
    for (const QByteArray& line : check.output().split('\n')) {
        if (line.startsWith("  chunk "))
            chunks << QString::fromLatin1(line.mid(8, 4));
    }
    QCOMPARE(chunks.mid(0, 2), (QStringList{QStringLiteral("IHDR"), QStringLiteral("iTXt")}));
    QCOMPARE(chunks.count(QStringLiteral("iTXt")), 1);
    QCOMPARE(chunks.count(QStringLiteral("tEXt")) + chunks.count(QStringLiteral("zTXt")), sixteenDicomSources().size());
    QVERIFY2(check.output().contains("keyword: XML:com.adobe.xmp\n    uncompressed, no language tag"), check.output().constData());
}

void TestHostExportProvenance::tiffXmpInItsTag()
{
    VX_REQUIRE_PROGRAM("tiffinfo");
    const QString strPath = save(keyedImage(typicalFigure()), QStringLiteral("tag.tif"));
    QVERIFY(!strPath.isEmpty());

    const OutsideProgram info = runTool(QStringLiteral("tiffinfo"), {strPath});

    QVERIFY2(info.succeeded(), qPrintable(info.report()));
    QVERIFY2(info.output().contains("  XMLPacket (XMP Metadata):\n"), info.output().constData());
    QVERIFY2(info.output().contains("<rdf:li>scan.dcm</rdf:li>"), info.output().constData());
}

void TestHostExportProvenance::longXmpCutOnlyForJpeg_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<bool>("cut");
    QTest::newRow("jpg: one segment") << QStringLiteral("long.jpg") << true;
    QTest::newRow("png") << QStringLiteral("long.png") << false;
    QTest::newRow("tif") << QStringLiteral("long.tif") << false;
}

void TestHostExportProvenance::longXmpCutOnlyForJpeg()
{
    VX_REQUIRE_PROGRAM("exiftool");
    VX_REQUIRE_PROGRAM("xmllint");
    QFETCH(QString, fileName);
    QFETCH(bool, cut);
    // 80000 bytes of UTF-8, more than a JPEG segment holds.
    const QString strPatient = QString(40000, QChar(0xC4));
    const QString strPath = save(keyedImage(valueFigure(strPatient)), fileName);
    QVERIFY(!strPath.isEmpty());

    const QJsonObject xmp = exiftoolXmp(strPath, true);
    const QString strPacket = extractedPacket(strPath);
    QVERIFY(!strPacket.isEmpty());
    const OutsideProgram lint = runTool(QStringLiteral("xmllint"), {QStringLiteral("--noout"), strPacket});

    QVERIFY2(lint.succeeded(), qPrintable(lint.report()));
    const QString strRead = xmp.value(QStringLiteral("Image")).toArray().at(0).toObject().value(QStringLiteral("PatientID")).toString();
    if (cut) {
        QVERIFY(QFileInfo(strPacket).size() <= 65535 - 2 - 29);
        QVERIFY2(strRead.endsWith(QStringLiteral("\u00C4 [truncated]")), qPrintable(strRead.right(40)));
        QVERIFY(strRead.size() > 10000);
    } else {
        QCOMPARE(strRead, strPatient);
    }
    // Short values stay whole.
    QCOMPARE(textsOf(xmp.value(QStringLiteral("Source"))), QStringList{QStringLiteral("scan.dcm")});
}

void TestHostExportProvenance::noKeysNoXmp_data()
{
    QTest::addColumn<QString>("fileName");
    for (const char* pName : {"plain.png", "plain.tif", "plain.jpg"})
        QTest::newRow(pName) << QString::fromLatin1(pName);
}

void TestHostExportProvenance::noKeysNoXmp()
{
    VX_REQUIRE_PROGRAM("exiftool");
    QFETCH(QString, fileName);
    const QString strPath = save(keyedImage(Keys()), fileName);
    QVERIFY(!strPath.isEmpty());

    const QJsonObject xmp = exiftoolXmp(strPath, true);

    QCOMPARE(xmp.keys(), QStringList{QStringLiteral("SourceFile")});
}

QTEST_MAIN(TestHostExportProvenance)
#include "tst_host_exportprovenance.moc"
