#include "VXSSettings.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {
const QString kRecentFilePathKey = QStringLiteral("Export/RecentFilePath");
const QString kPreferredFormatKey = QStringLiteral("Export/PreferredFormat");

// A new machine has no Pictures folder yet: a file dialog started in a folder that does not
// exist would offer the folder's name as the file name.
QString defaultSaveFolder()
{
    const QString strPictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return !strPictures.isEmpty() && QFileInfo(strPictures).isDir() ? strPictures : QDir::homePath();
}
} // namespace

CVXSSettings::CVXSSettings(const QString& strFilePath)
    : m_settings(strFilePath, QSettings::IniFormat)
{
}

QString CVXSSettings::getRecentFilePath() const
{
    return folder(kRecentFilePathKey);
}

void CVXSSettings::setRecentFilePath(QString strPath)
{
    m_settings.setValue(kRecentFilePathKey, strPath);
}

QString CVXSSettings::getPreferredFormat() const
{
    return m_settings.value(kPreferredFormatKey).toString();
}

void CVXSSettings::setPreferredFormat(QString strFormat)
{
    if (strFormat.isEmpty())
        m_settings.remove(kPreferredFormatKey);
    else
        m_settings.setValue(kPreferredFormatKey, strFormat);
}

QString CVXSSettings::folder(const QString& strKey) const
{
    const QString strStored = m_settings.value(strKey).toString();
    return !strStored.isEmpty() && QFileInfo(strStored).isDir() ? strStored : defaultSaveFolder();
}

QVariant CVXSSettings::value(const QString& strKey, const QVariant& defaultValue) const
{
    return m_settings.value(strKey, defaultValue);
}

void CVXSSettings::setValue(const QString& strKey, const QVariant& value)
{
    m_settings.setValue(strKey, value);
}

void CVXSSettings::remove(const QString& strKey)
{
    m_settings.remove(strKey);
}

QString CVXSSettings::fileName() const
{
    return m_settings.fileName();
}

void CVXSSettings::sync()
{
    m_settings.sync();
}
