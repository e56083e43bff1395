#include "OutsideProgram.h"
#include "TestPictures.h"

#include <VXImageProvenance.h>
#include <VXSImageExporter.h>

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

private:
    QString save(const QImage& image, const QString& strName);
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
    QTest::addColumn<QByteArray>("suffix");
    QTest::addColumn<Keys>("keys");
    for (const QByteArray& suffix : {QByteArray("png"), QByteArray("tif"), QByteArray("jpg")}) {
        for (const auto& row : valueRows())
            QTest::addRow("%s %s", suffix.constData(), row.first) << suffix << row.second;
    }
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

QTEST_MAIN(TestHostExportProvenance)
#include "tst_host_exportprovenance.moc"
