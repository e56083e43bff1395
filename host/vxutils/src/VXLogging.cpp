#include "VXLogging.h"

#include <QDir>
#include <QFile>
#include <QLibraryInfo>
#include <QLoggingCategory>
#include <QStandardPaths>

namespace {

const QString kConfigFile = QStringLiteral("qtlogging.ini");

// The qtlogging.ini files Qt reads, in its data folder and in the user's or the system's
// configuration folders.
bool hasLoggingConfigFile()
{
    const QString strInQtData = QDir(QLibraryInfo::location(QLibraryInfo::DataPath)).absoluteFilePath(kConfigFile);
    return QFile::exists(strInQtData)
        || !QStandardPaths::locate(QStandardPaths::GenericConfigLocation, QStringLiteral("QtProject/") + kConfigFile).isEmpty();
}

} // namespace

void CVXLogging::showWarningsAndErrorsOnly()
{
    if (!hasLoggingConfigFile())
        QLoggingCategory::setFilterRules(QStringLiteral("*.debug=false\n*.info=false"));
}
