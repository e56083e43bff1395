#include "VXHostStartup.h"

#include "VXHostCommandLine.h"
#include "VXHostMainWindow.h"
#include "VXToolPluginLoader.h"

#include <VXUtilityFns.h>

#include <QAction>

void CVXHostStartup::run(CVXHostMainWindow& window, const CVXHostCommandLine& commandLine)
{
    window.loadToolPlugins(CVXToolPluginLoader::defaultFolders());
    if (commandLine.opensSamples())
        window.openSamples();
    if (QAction* pAction = CVXUtilityFns::getAction(QStringLiteral("Image Layout Window")))
        pAction->setChecked(true);
    window.openFiles(commandLine.files());
    window.offerRecovery();
}
