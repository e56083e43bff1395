#include "file/VXSLayoutRecovery.h"

#include "file/VXSLayoutDocument.h"
#include "file/VXSLayoutFile.h"
#include "VXSLayoutManager.h"
#include "progress/VXSLayoutWorkers.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLockFile>
#include <QStandardPaths>
#include <QUndoStack>
#include <QtConcurrent>

namespace {
// Layouts of one process beyond this many get no recovery copy of their own.
constexpr int kMostCopiesPerProcess = 100;
} // namespace

CVXSLayoutRecovery::CVXSLayoutRecovery(CVXSLayoutManager& manager)
    : m_manager(manager)
{
    m_timer.setInterval(DefaultIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &CVXSLayoutRecovery::onTimer);
    connect(&m_writing, &QFutureWatcher<QString>::finished, this, &CVXSLayoutRecovery::onWritten);
    connect(m_manager.undoStack(), &QUndoStack::indexChanged, this, &CVXSLayoutRecovery::onHistoryChanged);
    connect(m_manager.undoStack(), &QUndoStack::cleanChanged, this, &CVXSLayoutRecovery::onCleanChanged);
}

CVXSLayoutRecovery::~CVXSLayoutRecovery()
{
    m_writing.waitForFinished();
    removeCopy();
}

QString CVXSLayoutRecovery::folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + QStringLiteral("/recovery");
}

QString CVXSLayoutRecovery::filePath() const
{
    return m_strPath;
}

QString CVXSLayoutRecovery::lockFilePath(const QString& strCopyPath)
{
    return strCopyPath + QStringLiteral(".lock");
}

void CVXSLayoutRecovery::setInterval(int nMilliseconds)
{
    m_timer.setInterval(nMilliseconds);
}

void CVXSLayoutRecovery::onHistoryChanged()
{
    if (m_manager.undoStack()->isClean())
        return;
    if (!m_timer.isActive())
        m_timer.start();
    if (++m_nChangesSinceCopy >= ChangesPerCopy)
        saveCopy();
}

void CVXSLayoutRecovery::onCleanChanged(bool bClean)
{
    if (!bClean)
        return;
    m_timer.stop();
    m_nChangesSinceCopy = 0;
    m_bAnotherCopy = false;
    // A write under way is removed once it is done.
    removeCopy();
}

void CVXSLayoutRecovery::onTimer()
{
    if (m_manager.undoStack()->isClean())
        m_timer.stop();
    else
        saveCopy();
}

void CVXSLayoutRecovery::saveCopy()
{
    m_nChangesSinceCopy = 0;
    if (m_writing.isRunning()) {
        m_bAnotherCopy = true;
        return;
    }
    startWrite();
}

void CVXSLayoutRecovery::startWrite()
{
    if (!QDir().mkpath(folder())) {
        qWarning("The recovery folder %s cannot be made.", qPrintable(folder()));
        return;
    }
    if (!lockOwnCopy()) {
        qWarning("The layout's recovery copy cannot be locked in %s.", qPrintable(folder()));
        return;
    }
    const QString strPath = m_strPath;
    const CVXSLayoutDocument document = m_manager.document();
    m_writing.setFuture(QtConcurrent::run(CVXSLayoutWorkers::pool(), [strPath, document] {
        CVXSLayoutFile file;
        return file.write(strPath, document) ? QString() : file.errorText();
    }));
}

void CVXSLayoutRecovery::onWritten()
{
    const QString strError = m_writing.result();
    if (!strError.isEmpty())
        qWarning("The layout's recovery copy could not be written: %s", qPrintable(strError));
    if (m_manager.undoStack()->isClean()) {
        removeCopy();
        return;
    }
    if (m_bAnotherCopy) {
        m_bAnotherCopy = false;
        startWrite();
    }
}

void CVXSLayoutRecovery::removeCopy()
{
    if (m_strPath.isEmpty())
        return;
    QFile::remove(m_strPath);
    // A write under way would leave a copy without its lock; it is removed once done.
    if (!m_writing.isRunning() && m_pLock)
        m_pLock->unlock();
}

bool CVXSLayoutRecovery::lockOwnCopy()
{
    if (m_pLock && m_pLock->isLocked())
        return true;
    const QString strBase = folder() + QStringLiteral("/layout-%1").arg(QCoreApplication::applicationPid());
    for (int nCopy = 1; nCopy <= kMostCopiesPerProcess; ++nCopy) {
        const QString strPath = strBase + (nCopy == 1 ? QString() : QStringLiteral("-%1").arg(nCopy))
                                + QStringLiteral(".vxlayout");
        auto pLock = std::make_unique<QLockFile>(lockFilePath(strPath));
        // Only a lock whose process is gone is stale, however old it is.
        pLock->setStaleLockTime(0);
        if (pLock->tryLock(0)) {
            m_strPath = strPath;
            m_pLock = std::move(pLock);
            return true;
        }
    }
    return false;
}
