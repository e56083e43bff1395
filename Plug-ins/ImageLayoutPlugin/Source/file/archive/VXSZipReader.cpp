#include "file/archive/VXSZipReader.h"

#include <QFile>

#include <cerrno>
#include <cstring>

namespace {

constexpr qint64 kMiB = 1024 * 1024;

// Whole MiB, rounded up, for messages.
qint64 mebibytes(qint64 nBytes)
{
    return (nBytes + kMiB - 1) / kMiB;
}

} // namespace

CVXSZipReader::CVXSZipReader(const QString& strPath)
{
    int nError = ZIP_ER_OK;
    // The consistency checks compare every local header with the central directory, which
    // catches truncated and patched archives before their entries are trusted.
    m_pArchive = zip_open(QFile::encodeName(strPath).constData(), ZIP_RDONLY | ZIP_CHECKCONS, &nError);
    if (!m_pArchive)
        m_strError = openError(nError);
}

CVXSZipReader::~CVXSZipReader()
{
    if (m_pArchive)
        zip_discard(m_pArchive);
}

bool CVXSZipReader::read(const QString& strName, qint64 nMaxBytes, QByteArray& data)
{
    if (!m_pArchive)
        return false;
    const QByteArray name = strName.toUtf8();
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat(m_pArchive, name.constData(), 0, &stat) != 0)
        return fail(tr("the entry \"%1\" is missing").arg(strName));
    if (!(stat.valid & ZIP_STAT_SIZE) || stat.size > zip_uint64_t(nMaxBytes)) {
        return fail(tr("the entry \"%1\" would unpack to %2 MiB; at most %3 MiB are read")
                        .arg(strName)
                        .arg(mebibytes(qint64(qMin(stat.size, zip_uint64_t(1) << 60))))
                        .arg(mebibytes(nMaxBytes)));
    }
    // Callers keep nMaxBytes well below 2 GiB, so the size fits a byte array.
    data.resize(int(stat.size));
    zip_file_t* pFile = zip_fopen(m_pArchive, name.constData(), 0);
    if (!pFile)
        return failEntry(strName, zip_get_error(m_pArchive));
    const bool bRead = readOpened(pFile, strName, data);
    zip_fclose(pFile);
    if (!bRead)
        data.clear();
    return bRead;
}

bool CVXSZipReader::readOpened(zip_file_t* pFile, const QString& strName, QByteArray& data)
{
    if (zip_fread(pFile, data.data(), zip_uint64_t(data.size())) != data.size())
        return failEntry(strName, zip_file_get_error(pFile));
    // libzip checks the size and the checksum when it reaches the end of the entry.
    char extra = 0;
    if (zip_fread(pFile, &extra, 1) != 0)
        return failEntry(strName, zip_file_get_error(pFile));
    return true;
}

bool CVXSZipReader::fail(const QString& strError)
{
    m_strError = strError;
    return false;
}

bool CVXSZipReader::failEntry(const QString& strName, zip_error_t* pError)
{
    // An entry shorter or longer than its stated size reads without an error of libzip's.
    const QString strWhy = zip_error_code_zip(pError) == ZIP_ER_OK
                               ? tr("its size is not the one the archive gives")
                               : QString::fromLocal8Bit(zip_error_strerror(pError));
    return fail(tr("the entry \"%1\" is damaged (%2)").arg(strName, strWhy));
}

QString CVXSZipReader::openError(int nZipError)
{
    switch (nZipError) {
    case ZIP_ER_NOZIP:
        return tr("it is not a layout file (no zip archive), or its end is missing");
    case ZIP_ER_INCONS:
        return tr("the archive is damaged (its directory contradicts its entries)");
    // libzip's own words, "File already exists", would speak of the file being opened.
    case ZIP_ER_EXISTS:
        return tr("the archive is damaged (two of its entries have the same name)");
    case ZIP_ER_EOF:
        return tr("the archive is damaged (it is shorter than its directory says)");
    case ZIP_ER_OPEN:
    case ZIP_ER_READ:
    case ZIP_ER_SEEK:
        return QString::fromLocal8Bit(std::strerror(errno));
    default: {
        zip_error_t error;
        zip_error_init_with_code(&error, nZipError);
        const QString strError = QString::fromLocal8Bit(zip_error_strerror(&error));
        zip_error_fini(&error);
        return strError;
    }
    }
}
