#include "VXSSettings.h"

#include <QDir>
#include <QStandardPaths>

namespace {
const QString kRecentFilePathKey = QStringLiteral("Export/RecentFilePath");
const QString kPreferredFormatKey = QStringLiteral("Export/PreferredFormat");

QString defaultSaveFolder()
{
    const QString strPictures = QStandardPaths::writableLocation(QStandardPaths::PicturesLocation);
    return strPictures.isEmpty() ? QDir::homePath() : strPictures;
}
} // namespace

CVXSSettings::CVXSSettings(const QString& strFilePath)
    : m_settings(strFilePath, QSettings::IniFormat)
{
}

QString CVXSSettings::getRecentFilePath() const
{
    return m_settings.value(kRecentFilePathKey, defaultSaveFolder()).toString();
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

QVariant CVXSSettings::value(const QString& strKey, const QVariant& defaultValue) const
{
    return m_settings.value(strKey, defaultValue);
}

void CVXSSettings::setValue(const QString& strKey, const QVariant& value)
{
    m_settings.setValue(strKey, value);
}

QString CVXSSettings::fileName() const
{
    return m_settings.fileName();
}

void CVXSSettings::sync()
{
    m_settings.sync();
}
