#pragma once

#include "file/VXSLayoutDocument.h"
#include "file/VXSLayoutDocumentCodec.h"

#include <QCoreApplication>
#include <QString>

#include <atomic>

class CVXSZipReader;

// Layout files (.vxlayout): a zip archive holding layout.json (style, page size, items) and
// every image once, losslessly, as PNG under images/. Writing replaces the file atomically;
// reading trusts nothing in the file and changes the document only when all of it is good.
class CVXSLayoutFile
{
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutFile)
public:
    static constexpr int FormatVersion = CVXSLayoutDocumentCodec::FormatVersion;
    // layout.json is refused above this size; real ones take a few KiB per item.
    static constexpr qint64 MaxJsonBytes = qint64(16) * 1024 * 1024;
    // All images of a file together may take this much memory once decoded; each one at
    // most what the host's image file reader allows.
    static constexpr qint64 MaxTotalImageBytes = qint64(4) * 1024 * 1024 * 1024;

    // Saves the document; false with errorText() when it could not be saved, in which case
    // the file is as it was before.
    bool write(const QString& strPath, const CVXSLayoutDocument& document);
    // Reads the file into document; false with errorText() when it cannot be read, in which
    // case document is left untouched.
    bool read(const QString& strPath, CVXSLayoutDocument& document);
    // Why the last write or read failed, naming the file.
    QString errorText() const { return m_strError; }
    // From now on a write or read stops, failing, soon after the flag is set; a write then
    // leaves the file as it was. The flag must outlive them.
    void setCancelFlag(const std::atomic_bool* pCancelled) { m_pCancelled = pCancelled; }

private:
    bool writeTo(const QString& strPath, const CVXSLayoutDocument& document);
    bool readFrom(const QString& strPath, CVXSLayoutDocument& document);
    bool checkTarget(const QString& strPath);
    bool checkSource(const QString& strPath);
    bool checkImageBytes(qint64 nBytes, qint64& nTotal, const QString& strWhat);
    bool readJson(CVXSZipReader& archive, QJsonObject& object);
    bool readImages(CVXSZipReader& archive, const QVector<QString>& entries, CVXSLayoutDocument& document);
    bool fail(const QString& strReason);
    bool isCancelled() const;

    QString m_strError;
    const std::atomic_bool* m_pCancelled = nullptr;
};
