#include "VXToolPluginLoader.h"

#include <VXToolPluginBase.h>

#include <QDir>
#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>
#include <QSet>

QStringList CVXToolPluginLoader::defaultFolders()
{
    const QString strAppDir = QCoreApplication::applicationDirPath();
    return {strAppDir + QStringLiteral("/plugins/tools"),
            QDir::cleanPath(strAppDir + QLatin1Char('/') + QStringLiteral(VX_BIN_TO_TOOL_PLUGIN_DIR))};
}

QVector<CVXToolPluginBase*> CVXToolPluginLoader::load(const QStringList& folders, QStringList& failures)
{
    QVector<CVXToolPluginBase*> plugins;
    QSet<QString> seen;
    for (const QString& strFolder : folders) {
        const QFileInfoList files = QDir(strFolder).entryInfoList(QDir::Files, QDir::Name);
        for (const QFileInfo& file : files) {
            const QString strPath = file.canonicalFilePath();
            if (seen.contains(strPath))
                continue;
            seen.insert(strPath);
            QString strError;
            if (CVXToolPluginBase* pPlugin = loadFile(strPath, strError))
                plugins << pPlugin;
            else
                failures << QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(strPath), strError);
        }
    }
    return plugins;
}

CVXToolPluginBase* CVXToolPluginLoader::loadFile(const QString& strPath, QString& strError)
{
    // The library stays loaded: the plugin's code must outlive its object.
    QPluginLoader loader(strPath);
    QObject* pObject = loader.instance();
    if (!pObject) {
        strError = loader.errorString();
        return nullptr;
    }
    if (auto* pPlugin = qobject_cast<CVXToolPluginBase*>(pObject)) {
        qDebug("Loaded the tool plugin %s", qPrintable(QDir::toNativeSeparators(strPath)));
        return pPlugin;
    }
    strError = tr("The plugin is not a tool plugin (its interface is \"%1\", tools need \"%2\").")
                   .arg(loader.metaData().value(QStringLiteral("IID")).toString(),
                        QStringLiteral(CVXToolPluginBase_iid));
    // Deletes the foreign object and lets its library go.
    loader.unload();
    return nullptr;
}
