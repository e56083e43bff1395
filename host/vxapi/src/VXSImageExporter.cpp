#include "VXSImageExporter.h"

#include "VXSDicomImageWriter.h"
#include "VXSEmfImageWriter.h"
#include "VXSEpsImageWriter.h"
#include "VXSQtImageWriter.h"
#include "VXSTiffImageWriter.h"
#include "VXSWmfImageWriter.h"

#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QRandomGenerator>

#include <cerrno>
#include <fcntl.h>
#include <memory>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr int kTemporaryNameAttempts = 16;

constexpr double kMetresPerInch = 0.0254;

// The writer for a file suffix, none when this build cannot write it.
std::unique_ptr<CVXSImageWriter> writerFor(const QString& strSuffix,
                                           CVXSImageExporter::TiffCompression eTiffCompression)
{
    static const QHash<QString, QByteArray> qtFormats = {
        {QStringLiteral("bmp"), "bmp"},
        {QStringLiteral("jpg"), "jpeg"},
        {QStringLiteral("jpeg"), "jpeg"},
        {QStringLiteral("png"), "png"},
    };
    const QString strLower = strSuffix.toLower();
    const QByteArray qtFormat = qtFormats.value(strLower);
    if (!qtFormat.isEmpty())
        return CVXSQtImageWriter::canWrite(qtFormat) ? std::make_unique<CVXSQtImageWriter>(qtFormat) : nullptr;
    if (strLower == QLatin1String("tif") || strLower == QLatin1String("tiff"))
        return std::make_unique<CVXSTiffImageWriter>(eTiffCompression);
    if (strLower == QLatin1String("dcm"))
        return std::make_unique<CVXSDicomImageWriter>();
    if (strLower == QLatin1String("eps"))
        return std::make_unique<CVXSEpsImageWriter>();
    if (strLower == QLatin1String("emf"))
        return std::make_unique<CVXSEmfImageWriter>();
    if (strLower == QLatin1String("wmf"))
        return std::make_unique<CVXSWmfImageWriter>();
    return nullptr;
}

// Writers report running out of memory by std::bad_alloc, from Qt's containers or their own.
tag_estatus encode(const CVXSImageWriter& writer, const QImage& image, QByteArray& data)
{
    try {
        return writer.encode(image, data);
    } catch (const std::bad_alloc&) {
        data.clear();
        return eSTATUS_OUT_OF_MEMORY;
    }
}

tag_estatus statusFromErrno(int nError)
{
    switch (nError) {
    case 0:
        return eSTATUS_SUCCESS;
    case EACCES:
    case EPERM:
    case EROFS:
        return eSTATUS_NO_PERMISSION;
    case ENOSPC:
    case EDQUOT:
        return eSTATUS_DISK_FULL;
    case ENOENT:
    case ENOTDIR:
    case EISDIR:
    case ENAMETOOLONG:
        return eSTATUS_INVALID_PATH;
    case ENOMEM:
        return eSTATUS_OUT_OF_MEMORY;
    default:
        return eSTATUS_WRITE_FAILED;
    }
}

// Writes all bytes, resuming after signals; 0 or the errno of the failure.
int writeAll(int fd, const QByteArray& data)
{
    const char* pNext = data.constData();
    qint64 nLeft = data.size();
    while (nLeft > 0) {
        const ssize_t nWritten = ::write(fd, pNext, size_t(nLeft));
        if (nWritten < 0) {
            if (errno == EINTR)
                continue;
            return errno;
        }
        pNext += nWritten;
        nLeft -= nWritten;
    }
    return 0;
}

// Devices and pipes cannot be replaced by a rename, so they get the bytes directly.
int writeInPlace(const QByteArray& path, const QByteArray& data)
{
    const int fd = ::open(path.constData(), O_WRONLY | O_CLOEXEC);
    if (fd < 0)
        return errno;
    int nError = writeAll(fd, data);
    if (::close(fd) != 0 && nError == 0)
        nError = errno;
    return nError;
}

// A new hidden file next to the target, so the final rename stays on one file system.
// Returns the descriptor, or -1 with errno set.
int createTemporaryBeside(const QString& strTarget, QByteArray& temporaryPath)
{
    const QFileInfo target(strTarget);
    const QString strStem = target.absolutePath() + QStringLiteral("/.") + target.fileName();
    for (int nAttempt = 0; nAttempt < kTemporaryNameAttempts; ++nAttempt) {
        const QString strSuffix = QString::number(QRandomGenerator::global()->generate(), 16);
        temporaryPath = QFile::encodeName(strStem + QLatin1Char('.') + strSuffix + QStringLiteral(".tmp"));
        const int fd = ::open(temporaryPath.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (fd >= 0 || errno != EEXIST)
            return fd;
    }
    return -1;
}

// Writes a complete temporary file, then renames it over the target: readers see the old
// file or the new one, never a partial one. pExisting is the target's status if it exists.
int replaceAtomically(const QString& strTarget, const QByteArray& data, const struct stat* pExisting)
{
    QByteArray temporaryPath;
    const int fd = createTemporaryBeside(strTarget, temporaryPath);
    if (fd < 0)
        return errno;
    // Best effort: some file systems have no permission bits; the new content matters more.
    if (pExisting && ::fchmod(fd, pExisting->st_mode & 07777) != 0)
        qWarning("Could not keep the permissions of %s", qPrintable(strTarget));
    int nError = writeAll(fd, data);
    if (nError == 0 && ::fsync(fd) != 0)
        nError = errno;
    if (::close(fd) != 0 && nError == 0)
        nError = errno;
    if (nError == 0 && ::rename(temporaryPath.constData(), QFile::encodeName(strTarget).constData()) != 0)
        nError = errno;
    if (nError != 0)
        ::unlink(temporaryPath.constData());
    return nError;
}

// A symbolic link stays a link: the file it points to gets the new content.
QString resolvedTarget(const QString& strPath)
{
    const QFileInfo info(strPath);
    const QString strCanonical = info.isSymLink() ? info.canonicalFilePath() : QString();
    return strCanonical.isEmpty() ? strPath : strCanonical;
}

int writeFile(const QString& strPath, const QByteArray& data)
{
    const QString strTarget = resolvedTarget(strPath);
    const QByteArray encodedTarget = QFile::encodeName(strTarget);
    struct stat existing = {};
    if (::stat(encodedTarget.constData(), &existing) != 0)
        return replaceAtomically(strTarget, data, nullptr);
    if (!S_ISREG(existing.st_mode))
        return writeInPlace(encodedTarget, data);
    return replaceAtomically(strTarget, data, &existing);
}

} // namespace

CVXSImageExporter::CVXSImageExporter() = default;

CVXSImageExporter::~CVXSImageExporter() = default;

tag_estatus CVXSImageExporter::saveImage(QImage& image, QString& strFilePath)
{
    m_strErrorText.clear();
    if (image.isNull())
        return fail(eSTATUS_NULL_IMAGE, strFilePath, tr("there is no image to write"));
    if (strFilePath.isEmpty())
        return fail(eSTATUS_INVALID_PATH, strFilePath, tr("no file name was given"));
    const QString strSuffix = QFileInfo(strFilePath).suffix();
    const std::unique_ptr<CVXSImageWriter> pWriter = writerFor(strSuffix, m_eTiffCompression);
    if (!pWriter)
        return fail(eSTATUS_UNSUPPORTED_FORMAT, strFilePath,
                    tr("the file name does not end in the suffix of a format this program writes"));
    const QString strFormat = strSuffix.toUpper();
    QByteArray data;
    const tag_estatus encoded = encode(*pWriter, withResolution(image), data);
    switch (encoded) {
    case eSTATUS_SUCCESS:
        return saveData(data, strFilePath);
    case eSTATUS_IMAGE_TOO_LARGE:
        return fail(encoded, strFilePath, tr("%1 x %2 pixels are more than a %3 file holds")
                                              .arg(image.width()).arg(image.height()).arg(strFormat));
    case eSTATUS_OUT_OF_MEMORY:
        return fail(encoded, strFilePath, qt_error_string(ENOMEM));
    default:
        return fail(encoded, strFilePath, tr("the %1 encoder failed").arg(strFormat));
    }
}

tag_estatus CVXSImageExporter::saveData(const QByteArray& data, const QString& strFilePath)
{
    m_strErrorText.clear();
    if (strFilePath.isEmpty())
        return fail(eSTATUS_INVALID_PATH, strFilePath, tr("no file name was given"));
    const int nError = writeFile(strFilePath, data);
    return nError == 0 ? eSTATUS_SUCCESS : fail(statusFromErrno(nError), strFilePath, qt_error_string(nError));
}

QString CVXSImageExporter::errorText() const
{
    return m_strErrorText;
}

void CVXSImageExporter::setTiffCompression(TiffCompression eCompression)
{
    m_eTiffCompression = eCompression;
}

CVXSImageExporter::TiffCompression CVXSImageExporter::tiffCompression() const
{
    return m_eTiffCompression;
}

void CVXSImageExporter::setResolution(int nDpi)
{
    m_nDpi = qMax(0, nDpi);
}

int CVXSImageExporter::resolution() const
{
    return m_nDpi;
}

bool CVXSImageExporter::isWritableSuffix(const QString& strSuffix)
{
    return writerFor(strSuffix, TiffCompression::Deflate) != nullptr;
}

QImage CVXSImageExporter::withResolution(const QImage& image) const
{
    const int nDotsPerMeter = qRound(m_nDpi / kMetresPerInch);
    if (m_nDpi == 0 || (image.dotsPerMeterX() == nDotsPerMeter && image.dotsPerMeterY() == nDotsPerMeter))
        return image;
    QImage resolved = image;
    resolved.setDotsPerMeterX(nDotsPerMeter);
    resolved.setDotsPerMeterY(nDotsPerMeter);
    return resolved;
}

tag_estatus CVXSImageExporter::fail(tag_estatus status, const QString& strFilePath, const QString& strReason)
{
    m_strErrorText = strFilePath.isEmpty() ? tr("Could not write the image: %1").arg(strReason)
                                           : tr("Could not write %1: %2").arg(strFilePath, strReason);
    return status;
}
