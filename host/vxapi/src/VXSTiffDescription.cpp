#include "VXSTiffDescription.h"

#include <QtEndian>

#include <limits>
#include <map>

namespace {

constexpr int kHeaderSize = 8;
constexpr int kEntrySize = 12;
constexpr quint16 kImageDescription = 270;
constexpr quint16 kAsciiType = 2;
// Values of up to four bytes sit in the entry itself.
constexpr quint32 kInlineBytes = 4;

// Reads and writes the file's numbers in its own byte order.
class TiffBytes
{
public:
    explicit TiffBytes(QByteArray& data)
        : m_data(data)
        , m_bBigEndian(data.startsWith("MM"))
    {
    }

    quint16 read16(qint64 nOffset) const
    {
        const auto* p = reinterpret_cast<const uchar*>(m_data.constData() + nOffset);
        return m_bBigEndian ? qFromBigEndian<quint16>(p) : qFromLittleEndian<quint16>(p);
    }
    quint32 read32(qint64 nOffset) const
    {
        const auto* p = reinterpret_cast<const uchar*>(m_data.constData() + nOffset);
        return m_bBigEndian ? qFromBigEndian<quint32>(p) : qFromLittleEndian<quint32>(p);
    }
    static QByteArray bytes16(quint16 nValue, bool bBigEndian)
    {
        QByteArray out(2, '\0');
        bBigEndian ? qToBigEndian(nValue, out.data()) : qToLittleEndian(nValue, out.data());
        return out;
    }
    static QByteArray bytes32(quint32 nValue, bool bBigEndian)
    {
        QByteArray out(4, '\0');
        bBigEndian ? qToBigEndian(nValue, out.data()) : qToLittleEndian(nValue, out.data());
        return out;
    }
    bool isBigEndian() const { return m_bBigEndian; }

private:
    QByteArray& m_data;
    bool m_bBigEndian = false;
};

bool isClassicTiff(const QByteArray& data)
{
    return data.size() >= kHeaderSize && (data.startsWith("II*\0") || data.startsWith(QByteArray("MM\0*", 4)));
}

} // namespace

bool CVXSTiffDescription::insert(QByteArray& tiff, const QByteArray& description)
{
    if (!isClassicTiff(tiff))
        return false;
    const TiffBytes in(tiff);
    const bool bBig = in.isBigEndian();
    const quint32 nDirectory = in.read32(4);
    if (qint64(nDirectory) + 2 > tiff.size())
        return false;
    const int nEntries = in.read16(nDirectory);
    const qint64 nNextOffset = qint64(nDirectory) + 2 + qint64(nEntries) * kEntrySize;
    if (nNextOffset + 4 > tiff.size())
        return false;
    // Entries sorted by tag, as readers expect; an older description is replaced.
    std::map<quint16, QByteArray> entries;
    for (int i = 0; i < nEntries; ++i) {
        const qint64 nEntry = qint64(nDirectory) + 2 + qint64(i) * kEntrySize;
        entries[in.read16(nEntry)] = tiff.mid(int(nEntry), kEntrySize);
    }
    const QByteArray text = description + '\0';
    const quint32 nTextOffset = quint32(tiff.size() + (tiff.size() & 1));
    const quint32 nNewDirectory = nTextOffset + quint32(text.size() + (text.size() & 1));
    const qint64 nFinalSize = qint64(nNewDirectory) + 2 + qint64(entries.size() + 1) * kEntrySize + 4;
    if (nFinalSize > std::numeric_limits<quint32>::max() || nFinalSize > std::numeric_limits<int>::max())
        return false;
    QByteArray value = quint32(text.size()) <= kInlineBytes ? text.leftJustified(kInlineBytes, '\0')
                                                             : TiffBytes::bytes32(nTextOffset, bBig);
    entries[kImageDescription] = TiffBytes::bytes16(kImageDescription, bBig) + TiffBytes::bytes16(kAsciiType, bBig)
                                 + TiffBytes::bytes32(quint32(text.size()), bBig) + value;
    QByteArray appended = tiff.size() & 1 ? QByteArray(1, '\0') : QByteArray();
    appended += text.size() & 1 ? text + '\0' : text;
    appended += TiffBytes::bytes16(quint16(entries.size()), bBig);
    for (const auto& entry : entries)
        appended += entry.second;
    appended += tiff.mid(int(nNextOffset), 4);
    tiff += appended;
    tiff.replace(4, 4, TiffBytes::bytes32(nNewDirectory, bBig));
    return true;
}
