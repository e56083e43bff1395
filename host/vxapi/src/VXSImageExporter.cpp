#include "VXSImageExporter.h"

#include <QBuffer>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QImageWriter>
#include <QRandomGenerator>

#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

// libjpeg refuses larger images (JPEG_MAX_DIMENSION).
constexpr int kJpegMaxSide = 65500;
// libpng's default limit for width and height (PNG_USER_WIDTH_MAX, PNG_USER_HEIGHT_MAX).
constexpr int kPngMaxSide = 1000000;
constexpr int kTemporaryNameAttempts = 16;

// The Qt image writer for a file suffix, empty when this build cannot write it.
QByteArray writerFormatFor(const QString& strSuffix)
{
    static const QHash<QString, QByteArray> formats = {
        {QStringLiteral("bmp"), "bmp"},   {QStringLiteral("jpg"), "jpeg"},
        {QStringLiteral("jpeg"), "jpeg"}, {QStringLiteral("png"), "png"},
        {QStringLiteral("tif"), "tiff"},  {QStringLiteral("tiff"), "tiff"},
    };
    const QByteArray format = formats.value(strSuffix.toLower());
    return QImageWriter::supportedImageFormats().contains(format) ? format : QByteArray();
}

// BMP and TIFF hold whatever fits into a QImage.
int maxSideFor(const QByteArray& format)
{
    if (format == "jpeg")
        return kJpegMaxSide;
    if (format == "png")
        return kPngMaxSide;
    return INT_MAX;
}

tag_estatus encode(const QImage& image, const QByteArray& format, QByteArray& data)
{
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    QImageWriter writer(&buffer, format);
    if (writer.write(image))
        return eSTATUS_SUCCESS;
    return writer.error() == QImageWriter::UnsupportedFormatError ? eSTATUS_UNSUPPORTED_FORMAT
                                                                   : eSTATUS_WRITE_FAILED;
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
    if (image.isNull())
        return eSTATUS_NULL_IMAGE;
    if (strFilePath.isEmpty())
        return eSTATUS_INVALID_PATH;
    const QByteArray format = writerFormatFor(QFileInfo(strFilePath).suffix());
    if (format.isEmpty())
        return eSTATUS_UNSUPPORTED_FORMAT;
    if (qMax(image.width(), image.height()) > maxSideFor(format))
        return eSTATUS_IMAGE_TOO_LARGE;
    QByteArray data;
    const tag_estatus encoded = encode(image, format, data);
    if (encoded != eSTATUS_SUCCESS)
        return encoded;
    return statusFromErrno(writeFile(strFilePath, data));
}

bool CVXSImageExporter::isWritableSuffix(const QString& strSuffix)
{
    return !writerFormatFor(strSuffix).isEmpty();
}
