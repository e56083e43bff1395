#include "file/VXSOrphanedRecoveryCopy.h"

#include "file/VXSLayoutRecovery.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>

CVXSOrphanedRecoveryCopy::CVXSOrphanedRecoveryCopy(const QString& strPath, std::unique_ptr<QLockFile> pLock)
    : m_strPath(strPath)
    , m_pLock(std::move(pLock))
{
}

CVXSOrphanedRecoveryCopy::~CVXSOrphanedRecoveryCopy() = default;

std::unique_ptr<CVXSOrphanedRecoveryCopy> CVXSOrphanedRecoveryCopy::claimNewest(const QString& strFolder)
{
    const QFileInfoList copies = QDir(strFolder).entryInfoList({QStringLiteral("*.vxlayout")}, QDir::Files, QDir::Time);
    for (const QFileInfo& copy : copies) {
        const QString strPath = copy.absoluteFilePath();
        auto pLock = std::make_unique<QLockFile>(CVXSLayoutRecovery::lockFilePath(strPath));
        // The lock of a running session is never taken, however old it is; that of an ended
        // one is stale and replaced by this one's.
        pLock->setStaleLockTime(0);
        if (pLock->tryLock(0))
            return std::unique_ptr<CVXSOrphanedRecoveryCopy>(new CVXSOrphanedRecoveryCopy(strPath, std::move(pLock)));
    }
    return nullptr;
}

QString CVXSOrphanedRecoveryCopy::filePath() const
{
    return m_strPath;
}

QDateTime CVXSOrphanedRecoveryCopy::lastModified() const
{
    return QFileInfo(m_strPath).lastModified();
}

void CVXSOrphanedRecoveryCopy::remove() const
{
    QFile::remove(m_strPath);
}
