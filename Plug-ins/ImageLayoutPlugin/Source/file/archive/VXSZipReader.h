#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QString>

#include <zip.h>

// Reads entries of a zip archive that may be damaged or hostile: sizes are checked against
// a limit before anything is read, and an entry is only handed out whole and intact.
class CVXSZipReader
{
    Q_DECLARE_TR_FUNCTIONS(CVXSZipReader)
public:
    explicit CVXSZipReader(const QString& strPath);
    ~CVXSZipReader();
    CVXSZipReader(const CVXSZipReader&) = delete;
    CVXSZipReader& operator=(const CVXSZipReader&) = delete;

    // False with errorText() when the file is no zip archive or a damaged one.
    bool isOpen() const { return m_pArchive != nullptr; }
    // The entry's whole content; false with errorText() when it is missing, holds more
    // than nMaxBytes or is damaged.
    bool read(const QString& strName, qint64 nMaxBytes, QByteArray& data);
    QString errorText() const { return m_strError; }

private:
    bool readOpened(zip_file_t* pFile, const QString& strName, QByteArray& data);
    bool fail(const QString& strError);
    bool failEntry(const QString& strName, zip_error_t* pError);
    static QString openError(int nZipError);

    zip_t* m_pArchive = nullptr;
    QString m_strError;
};
