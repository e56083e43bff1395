#include "file/VXSLayoutRecovery.h"

#include "file/VXSLayoutDocument.h"
#include "file/VXSLayoutFile.h"
#include "VXSLayoutManager.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QUndoStack>
#include <QtConcurrent>

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

QString CVXSLayoutRecovery::filePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
        + QStringLiteral("/recovery/layout.vxlayout");
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
    const QString strPath = filePath();
    if (!QDir().mkpath(QFileInfo(strPath).absolutePath())) {
        qWarning("The recovery folder %s cannot be made.", qPrintable(QFileInfo(strPath).absolutePath()));
        return;
    }
    const CVXSLayoutDocument document = m_manager.document();
    m_writing.setFuture(QtConcurrent::run([strPath, document] {
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
    QFile::remove(filePath());
}
