#include "VXSXmpPacket.h"

#include "VXSExportMetadata.h"
#include "VXSExportText.h"

#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QXmlStreamWriter>

namespace {

const QString kMetaNamespace = QStringLiteral("adobe:ns:meta/");
const QString kRdfNamespace = QStringLiteral("http://www.w3.org/1999/02/22-rdf-syntax-ns#");
const QString kDcNamespace = QStringLiteral("http://purl.org/dc/elements/1.1/");
const QString kXmpNamespace = QStringLiteral("http://ns.adobe.com/xap/1.0/");
const QString kVxNamespace = QString::fromLatin1(CVXSXmpPacket::Namespace);
// The structures of a figure's images, and the plain list of their files that readers
// show whole without asking for structures.
const QString kImages = QStringLiteral("Image");
const QString kSources = QStringLiteral("Sources");

using Keys = QMap<QString, QString>;

// A figure's own keys, and those of each image under "Image n ", by n.
struct SplitKeys {
    Keys figure;
    QMap<int, Keys> images;
};

SplitKeys splitKeys(const QImage& image)
{
    static const QRegularExpression imageKey(QStringLiteral("^Image ([1-9][0-9]*) (.+)$"));
    SplitKeys split;
    for (const QString& strKey : image.textKeys()) {
        const QRegularExpressionMatch match = imageKey.match(strKey);
        if (match.hasMatch())
            split.images[match.captured(1).toInt()].insert(match.captured(2), image.text(strKey));
        else
            split.figure.insert(strKey, image.text(strKey));
    }
    return split;
}

// "Study Instance UID" as StudyInstanceUID: ASCII letters, digits, '_', '-' and '.', each
// word capitalised, starting with a letter.
QString propertyName(const QString& strKey)
{
    QString strName;
    bool bWordStart = true;
    for (const QChar c : strKey) {
        const bool bNameChar = c.unicode() < 0x80 && (c.isLetterOrNumber() || c == QLatin1Char('_')
                                                      || c == QLatin1Char('-') || c == QLatin1Char('.'));
        if (bNameChar)
            strName += bWordStart ? c.toUpper() : c;
        bWordStart = !bNameChar;
    }
    if (strName.isEmpty() || !strName.at(0).isLetter())
        strName.prepend(QStringLiteral("Key"));
    return strName;
}

// Keys whose names come out alike get a number.
QString uniqueName(const QString& strKey, QSet<QString>& used)
{
    const QString strBase = propertyName(strKey);
    QString strName = strBase;
    for (int n = 2; used.contains(strName); ++n)
        strName = strBase + QLatin1Char('_') + QString::number(n);
    used.insert(strName);
    return strName;
}

// Writes the values as XML allows: other control characters than tab and line breaks
// become spaces; escaping is the writer's.
class PacketWriter
{
public:
    PacketWriter(QByteArray& packet, int nValueMax)
        : m_xml(&packet)
        , m_nValueMax(nValueMax)
    {
        m_xml.setAutoFormatting(true);
        m_xml.setAutoFormattingIndent(1);
    }

    QXmlStreamWriter& xml() { return m_xml; }

    void property(const QString& strNamespace, const QString& strName, const QString& strValue)
    {
        m_xml.writeTextElement(strNamespace, strName, text(strValue));
    }
    // An ordered list (rdf:Seq).
    void list(const QString& strNamespace, const QString& strName, const QStringList& values)
    {
        m_xml.writeStartElement(strNamespace, strName);
        m_xml.writeStartElement(kRdfNamespace, QStringLiteral("Seq"));
        for (const QString& strValue : values)
            m_xml.writeTextElement(kRdfNamespace, QStringLiteral("li"), text(strValue));
        m_xml.writeEndElement();
        m_xml.writeEndElement();
    }
    // A text in no particular language (rdf:Alt with its x-default item).
    void languageText(const QString& strNamespace, const QString& strName, const QString& strValue)
    {
        m_xml.writeStartElement(strNamespace, strName);
        m_xml.writeStartElement(kRdfNamespace, QStringLiteral("Alt"));
        m_xml.writeStartElement(kRdfNamespace, QStringLiteral("li"));
        m_xml.writeAttribute(QStringLiteral("xml:lang"), QStringLiteral("x-default"));
        m_xml.writeCharacters(text(strValue));
        m_xml.writeEndElement();
        m_xml.writeEndElement();
        m_xml.writeEndElement();
    }
    // Each key as a property of our namespace.
    void keys(const Keys& keys, QSet<QString> used)
    {
        for (auto it = keys.cbegin(); it != keys.cend(); ++it)
            property(kVxNamespace, uniqueName(it.key(), used), it.value());
    }
    // One structure per image, in order.
    void images(const QMap<int, Keys>& images)
    {
        if (images.isEmpty())
            return;
        m_xml.writeStartElement(kVxNamespace, kImages);
        m_xml.writeStartElement(kRdfNamespace, QStringLiteral("Seq"));
        for (const Keys& image : images) {
            m_xml.writeStartElement(kRdfNamespace, QStringLiteral("li"));
            m_xml.writeAttribute(kRdfNamespace, QStringLiteral("parseType"), QStringLiteral("Resource"));
            keys(image, {});
            m_xml.writeEndElement();
        }
        m_xml.writeEndElement();
        m_xml.writeEndElement();
    }

private:
    QString text(const QString& strValue) const
    {
        QString strText = QString::fromUtf8(CVXSExportText::fitted(strValue, m_nValueMax));
        for (QChar& c : strText) {
            const ushort u = c.unicode();
            if ((u < 0x20 && u != '\t' && u != '\n' && u != '\r') || u == 0xFFFE || u == 0xFFFF)
                c = QLatin1Char(' ');
        }
        return strText;
    }

    QXmlStreamWriter m_xml;
    int m_nValueMax = 0;
};

} // namespace

QByteArray CVXSXmpPacket::of(const QImage& image, int nMaxBytes)
{
    if (image.textKeys().isEmpty())
        return QByteArray();
    const QByteArray whole = build(image, std::numeric_limits<int>::max());
    if (whole.size() <= nMaxBytes)
        return whole;
    // The longest cut that still fits; values shorter than the cut stay whole.
    QByteArray fitting;
    int nLow = CVXSExportText::truncationNote().size();
    int nHigh = whole.size();
    while (nLow <= nHigh) {
        const int nCut = nLow + (nHigh - nLow) / 2;
        const QByteArray packet = build(image, nCut);
        if (packet.size() <= nMaxBytes) {
            fitting = packet;
            nLow = nCut + 1;
        } else {
            nHigh = nCut - 1;
        }
    }
    return fitting;
}

QByteArray CVXSXmpPacket::build(const QImage& image, int nValueMax)
{
    QByteArray packet;
    PacketWriter writer(packet, nValueMax);
    QXmlStreamWriter& xml = writer.xml();
    // The wrapper lets readers find the packet in any file without knowing the format.
    xml.writeProcessingInstruction(QStringLiteral("xpacket"),
                                   QStringLiteral("begin=\"\uFEFF\" id=\"W5M0MpCehiHzreSzNTczkc9d\""));
    xml.writeNamespace(kMetaNamespace, QStringLiteral("x"));
    xml.writeStartElement(kMetaNamespace, QStringLiteral("xmpmeta"));
    xml.writeNamespace(kRdfNamespace, QStringLiteral("rdf"));
    xml.writeStartElement(kRdfNamespace, QStringLiteral("RDF"));
    xml.writeStartElement(kRdfNamespace, QStringLiteral("Description"));
    xml.writeNamespace(kDcNamespace, QStringLiteral("dc"));
    xml.writeNamespace(kXmpNamespace, QStringLiteral("xmp"));
    xml.writeNamespace(kVxNamespace, QStringLiteral("vx"));
    xml.writeAttribute(kRdfNamespace, QStringLiteral("about"), QString());

    const QStringList sources = CVXSExportMetadata::sources(image);
    if (!sources.isEmpty())
        writer.list(kDcNamespace, QStringLiteral("source"), sources);
    writer.list(kDcNamespace, QStringLiteral("date"), {CVXSExportMetadata::created(image).toString(Qt::ISODate)});
    const QString strDescription = CVXSExportMetadata::description(image);
    if (!strDescription.isEmpty())
        writer.languageText(kDcNamespace, QStringLiteral("description"), strDescription);
    const QString strSoftware = CVXSExportMetadata::software(image);
    if (!strSoftware.isEmpty())
        writer.property(kXmpNamespace, QStringLiteral("CreatorTool"), strSoftware);

    const SplitKeys split = splitKeys(image);
    writer.keys(split.figure, {kImages, kSources});
    if (!sources.isEmpty())
        writer.list(kVxNamespace, kSources, sources);
    writer.images(split.images);

    xml.writeEndDocument();
    xml.writeProcessingInstruction(QStringLiteral("xpacket"), QStringLiteral("end=\"w\""));
    return packet;
}
