#include "VXPreference.h"

#include "VXSSettings.h"

#include <QDir>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QStringList>

namespace {

QString settingsFilePath()
{
    const QString strFolder = QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation);
    QDir().mkpath(strFolder);
    return strFolder + QStringLiteral("/settings.ini");
}

// Whether a filter entry such as "JPEG Image (*.jpg *.jpeg)" offers the suffix.
bool filterEntryHasSuffix(const QString& strEntry, const QString& strSuffix)
{
    static const QRegularExpression patterns(QStringLiteral("\\(([^)]*)\\)"));
    const QString strWanted = QStringLiteral("*.") + strSuffix;
    const QStringList globs = patterns.match(strEntry).captured(1).split(QLatin1Char(' '),
                                                                           Qt::SkipEmptyParts);
    for (const QString& strGlob : globs) {
        if (strGlob.compare(strWanted, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

} // namespace

CVXSSettings* CVXPreference::getSettings()
{
    static CVXSSettings settings(settingsFilePath());
    return &settings;
}

void CVXPreference::modifySaveFilterByPreference(QString& strFilter)
{
    const QString strPreferred = getSettings()->getPreferredFormat();
    if (strPreferred.isEmpty())
        return;
    const QString strSeparator = QStringLiteral(";;");
    QStringList entries = strFilter.split(strSeparator);
    for (int i = 0; i < entries.size(); ++i) {
        if (filterEntryHasSuffix(entries.at(i), strPreferred)) {
            entries.move(i, 0);
            strFilter = entries.join(strSeparator);
            return;
        }
    }
}

void CVXPreference::setUsersPreferredFormat(QString strFormat)
{
    CVXSSettings* pSettings = getSettings();
    pSettings->setPreferredFormat(strFormat.toLower());
    pSettings->sync();
}
