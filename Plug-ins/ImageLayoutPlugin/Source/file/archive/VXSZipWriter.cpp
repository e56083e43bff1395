#include "file/archive/VXSZipWriter.h"

CVXSZipWriter::CVXSZipWriter(const QString& strPath)
    : m_destination(strPath)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* pSource = m_destination.create(&error);
    if (pSource)
        m_pArchive = zip_open_from_source(pSource, ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (!m_pArchive) {
        zip_source_free(pSource);
        fail(&error);
    }
    zip_error_fini(&error);
}

CVXSZipWriter::~CVXSZipWriter()
{
    if (m_pArchive)
        zip_discard(m_pArchive);
}

bool CVXSZipWriter::add(const QString& strName, const QByteArray& data, bool bDeflate)
{
    if (!m_pArchive)
        return false;
    zip_source_t* pSource = zip_source_buffer(m_pArchive, data.constData(), zip_uint64_t(data.size()), 0);
    if (!pSource)
        return fail(zip_get_error(m_pArchive));
    const zip_int64_t nIndex = zip_file_add(m_pArchive, strName.toUtf8().constData(), pSource, ZIP_FL_ENC_UTF_8);
    if (nIndex < 0) {
        zip_source_free(pSource);
        return fail(zip_get_error(m_pArchive));
    }
    const zip_int32_t method = bDeflate ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
    if (zip_set_file_compression(m_pArchive, zip_uint64_t(nIndex), method, 0) != 0)
        return fail(zip_get_error(m_pArchive));
    return true;
}

bool CVXSZipWriter::commit()
{
    if (!m_pArchive)
        return false;
    if (zip_close(m_pArchive) != 0)
        return fail(zip_get_error(m_pArchive));
    // A closed archive is freed by libzip.
    m_pArchive = nullptr;
    return true;
}

bool CVXSZipWriter::fail(zip_error_t* pError)
{
    // The file system's own words say more than libzip's summary of them.
    m_strError = m_destination.errorText();
    if (m_strError.isEmpty())
        m_strError = QString::fromLocal8Bit(zip_error_strerror(pError));
    return false;
}
