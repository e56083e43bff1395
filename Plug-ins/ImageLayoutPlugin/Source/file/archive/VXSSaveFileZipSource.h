#pragma once

#include <QSaveFile>
#include <QString>

#include <zip.h>

// Where libzip writes a new archive: into a QSaveFile, so the target is replaced only once
// the archive is complete, and a failed or abandoned write leaves neither a partial target
// nor a temporary file behind.
class CVXSSaveFileZipSource
{
public:
    explicit CVXSSaveFileZipSource(const QString& strPath);
    ~CVXSSaveFileZipSource();
    CVXSSaveFileZipSource(const CVXSSaveFileZipSource&) = delete;
    CVXSSaveFileZipSource& operator=(const CVXSSaveFileZipSource&) = delete;

    // A libzip source writing into this object, which must outlive it; null with pError set
    // when libzip has no memory. An archive opened on it takes it over.
    zip_source_t* create(zip_error_t* pError);
    // Why the file could not be written, in the words of the file system; empty when the
    // file itself reported nothing.
    QString errorText() const { return m_strError; }

private:
    static zip_int64_t callback(void* pUserData, void* pData, zip_uint64_t nLength, zip_source_cmd_t command);
    zip_int64_t handle(void* pData, zip_uint64_t nLength, zip_source_cmd_t command);
    zip_int64_t write(const char* pData, qint64 nLength);
    zip_int64_t seek(void* pData, zip_uint64_t nLength);
    zip_int64_t rollback();
    zip_int64_t fail(int nZipError);

    QSaveFile m_file;
    zip_error_t m_error = {};
    QString m_strError;
};
