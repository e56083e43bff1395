#pragma once

#include <QCoreApplication>
#include <QStringList>
#include <QVector>

class CVXToolPluginBase;

// Finds the host's tool plugins: every file of a plugin folder is loaded as a Qt plugin
// and kept when its object is a CVXToolPluginBase.
class CVXToolPluginLoader
{
    Q_DECLARE_TR_FUNCTIONS(CVXToolPluginLoader)
public:
    // The folders the host looks in: plugins/tools next to the executable (the build
    // tree) and the host's folder in the library directory (an installed host).
    static QStringList defaultFolders();

    // The plugin objects of the files in the folders, each once. The caller owns them.
    // A file that is no tool plugin adds a line naming it and the reason to failures.
    static QVector<CVXToolPluginBase*> load(const QStringList& folders, QStringList& failures);

private:
    static CVXToolPluginBase* loadFile(const QString& strPath, QString& strError);
};
