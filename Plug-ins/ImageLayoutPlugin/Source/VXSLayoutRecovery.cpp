#include "VXSLayoutRecovery.h"

#include "VXSLayoutFile.h"
#include "VXSLayoutManager.h"

#include <QDir>
#include <QFileInfo>
#include <QFile>
#include <QStandardPaths>
#include <QUndoStack>

CVXSLayoutRecovery::CVXSLayoutRecovery(CVXSLayoutManager& manager)
    : m_manager(manager)
{
    m_timer.setInterval(DefaultIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &CVXSLayoutRecovery::onTimer);
    connect(m_manager.undoStack(), &QUndoStack::indexChanged, this, &CVXSLayoutRecovery::onHistoryChanged);
    connect(m_manager.undoStack(), &QUndoStack::cleanChanged, this, &CVXSLayoutRecovery::onHistoryChanged);
}

CVXSLayoutRecovery::~CVXSLayoutRecovery()
{
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
    if (m_manager.undoStack()->isClean()) {
        m_timer.stop();
        m_nChangesSinceCopy = 0;
        removeCopy();
        return;
    }
    if (!m_timer.isActive())
        m_timer.start();
    if (++m_nChangesSinceCopy >= ChangesPerCopy)
        saveCopy();
}

void CVXSLayoutRecovery::onTimer()
{
    if (m_manager.undoStack()->isClean())
        m_timer.stop();
    else
        saveCopy();
}

bool CVXSLayoutRecovery::saveCopy()
{
    m_nChangesSinceCopy = 0;
    const QString strPath = filePath();
    if (!QDir().mkpath(QFileInfo(strPath).absolutePath())) {
        qWarning("The recovery folder %s cannot be made.", qPrintable(QFileInfo(strPath).absolutePath()));
        return false;
    }
    CVXSLayoutFile file;
    if (!file.write(strPath, m_manager.document())) {
        qWarning("The layout's recovery copy could not be written: %s", qPrintable(file.errorText()));
        return false;
    }
    return true;
}

void CVXSLayoutRecovery::removeCopy()
{
    QFile::remove(filePath());
}
