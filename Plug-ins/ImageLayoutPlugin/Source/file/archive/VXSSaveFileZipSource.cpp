#include "file/archive/VXSSaveFileZipSource.h"

#include <cerrno>

CVXSSaveFileZipSource::CVXSSaveFileZipSource(const QString& strPath)
    : m_file(strPath)
{
    zip_error_init(&m_error);
}

CVXSSaveFileZipSource::~CVXSSaveFileZipSource()
{
    zip_error_fini(&m_error);
}

zip_source_t* CVXSSaveFileZipSource::create(zip_error_t* pError)
{
    return zip_source_function_create(&CVXSSaveFileZipSource::callback, this, pError);
}

zip_int64_t CVXSSaveFileZipSource::callback(void* pUserData, void* pData, zip_uint64_t nLength,
                                            zip_source_cmd_t command)
{
    return static_cast<CVXSSaveFileZipSource*>(pUserData)->handle(pData, nLength, command);
}

zip_int64_t CVXSSaveFileZipSource::handle(void* pData, zip_uint64_t nLength, zip_source_cmd_t command)
{
    switch (command) {
    case ZIP_SOURCE_SUPPORTS:
        return ZIP_SOURCE_SUPPORTS_WRITABLE;
    case ZIP_SOURCE_STAT:
        // The archive is always written anew; libzip takes this answer for "no such file yet".
        zip_error_set(&m_error, ZIP_ER_READ, ENOENT);
        return -1;
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&m_error, pData, nLength);
    case ZIP_SOURCE_BEGIN_WRITE:
        // Unbuffered, so every write reaches the file at once and a full disk is reported by
        // the write that meets it, with the system's reason.
        return m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ? 0 : fail(ZIP_ER_OPEN);
    case ZIP_SOURCE_WRITE:
        return write(static_cast<const char*>(pData), qint64(nLength));
    case ZIP_SOURCE_SEEK_WRITE:
        return seek(pData, nLength);
    case ZIP_SOURCE_TELL_WRITE:
        return m_file.pos();
    case ZIP_SOURCE_COMMIT_WRITE:
        return m_file.commit() ? 0 : fail(ZIP_ER_WRITE);
    case ZIP_SOURCE_ROLLBACK_WRITE:
        return rollback();
    case ZIP_SOURCE_FREE:
    case ZIP_SOURCE_REMOVE:
        return 0;
    default:
        // Nothing is ever read back from an archive being written.
        zip_error_set(&m_error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

zip_int64_t CVXSSaveFileZipSource::write(const char* pData, qint64 nLength)
{
    // A write that stops part way carries no reason; the next one meets the error and tells it.
    for (qint64 nDone = 0; nDone < nLength;) {
        const qint64 nWritten = m_file.write(pData + nDone, nLength - nDone);
        if (nWritten <= 0)
            return fail(ZIP_ER_WRITE);
        nDone += nWritten;
    }
    return nLength;
}

zip_int64_t CVXSSaveFileZipSource::seek(void* pData, zip_uint64_t nLength)
{
    const zip_int64_t nOffset = zip_source_seek_compute_offset(zip_uint64_t(m_file.pos()), zip_uint64_t(m_file.size()),
                                                               pData, nLength, &m_error);
    if (nOffset < 0)
        return -1;
    return m_file.seek(nOffset) ? 0 : fail(ZIP_ER_SEEK);
}

zip_int64_t CVXSSaveFileZipSource::rollback()
{
    // A cancelled save file removes its temporary file when asked to commit.
    if (m_file.isOpen()) {
        m_file.cancelWriting();
        m_file.commit();
    }
    return 0;
}

zip_int64_t CVXSSaveFileZipSource::fail(int nZipError)
{
    if (m_strError.isEmpty())
        m_strError = m_file.errorString();
    zip_error_set(&m_error, nZipError, 0);
    return -1;
}
