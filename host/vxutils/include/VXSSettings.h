#pragma once

#include "VxUtilsGlobal.h"

#include <QSettings>
#include <QString>
#include <QVariant>

// The host's persistent settings, kept in an INI file so that every run of the host
// (and every test, through QStandardPaths' test mode) uses a well-defined location.
class VXUTILS_EXPORT CVXSSettings
{
public:
    explicit CVXSSettings(const QString& strFilePath);

    // The folder last used for saving; the user's pictures folder until one is chosen.
    // Always an existing folder (see folder()).
    QString getRecentFilePath() const;
    void setRecentFilePath(QString strPath);

    // The file format (suffix such as "png") the user chose last; empty until chosen.
    QString getPreferredFormat() const;
    void setPreferredFormat(QString strFormat);

    // The folder stored under strKey while it exists; else the pictures folder if there is
    // one, else the home folder. File dialogs start here.
    QString folder(const QString& strKey) const;

    QVariant value(const QString& strKey, const QVariant& defaultValue = QVariant()) const;
    void setValue(const QString& strKey, const QVariant& value);
    void remove(const QString& strKey);

    QString fileName() const;
    // Writes pending changes to disk.
    void sync();

private:
    QSettings m_settings;
};
