#pragma once

#include <QDateTime>
#include <QString>

#include <memory>

class QLockFile;

// A recovery copy left by a session that is no longer running (CVXSLayoutRecovery), claimed
// by this one: while the object lives it holds the copy's lock, so that a program starting
// at the same time neither offers nor removes the same copy.
class CVXSOrphanedRecoveryCopy
{
public:
    ~CVXSOrphanedRecoveryCopy();

    // The newest copy in the folder whose session has ended and that no other program has
    // claimed; null when there is none. A copy without a lock file has no session either.
    static std::unique_ptr<CVXSOrphanedRecoveryCopy> claimNewest(const QString& strFolder);

    QString filePath() const;
    QDateTime lastModified() const;
    // Removes the copy; its lock file goes with this object.
    void remove() const;

private:
    CVXSOrphanedRecoveryCopy(const QString& strPath, std::unique_ptr<QLockFile> pLock);

    QString m_strPath;
    std::unique_ptr<QLockFile> m_pLock; // locked
};
