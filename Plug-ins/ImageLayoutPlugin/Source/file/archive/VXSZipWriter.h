#pragma once

#include "file/archive/VXSSaveFileZipSource.h"

#include <QByteArray>
#include <QString>

#include <zip.h>

// Writes a new zip archive in one go: entries are collected, then commit() writes them and
// replaces the target atomically. An archive not committed is discarded without a trace.
class CVXSZipWriter
{
public:
    explicit CVXSZipWriter(const QString& strPath);
    ~CVXSZipWriter();
    CVXSZipWriter(const CVXSZipWriter&) = delete;
    CVXSZipWriter& operator=(const CVXSZipWriter&) = delete;

    // Adds an entry, deflated or stored as it is (for data that is compressed already). The
    // data is not copied: it must stay unchanged until commit().
    bool add(const QString& strName, const QByteArray& data, bool bDeflate);
    // Writes the archive; false with errorText() when it could not be written.
    bool commit();
    QString errorText() const { return m_strError; }

private:
    bool fail(zip_error_t* pError);

    CVXSSaveFileZipSource m_destination;
    zip_t* m_pArchive = nullptr;
    QString m_strError;
};
