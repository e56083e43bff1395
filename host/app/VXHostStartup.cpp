#include "VXHostStartup.h"

#include "VXHostCommandLine.h"
#include "VXHostMainWindow.h"
#include "VXToolPluginLoader.h"

void CVXHostStartup::run(CVXHostMainWindow& window, const CVXHostCommandLine& commandLine)
{
    window.loadToolPlugins(CVXToolPluginLoader::defaultFolders());
    if (commandLine.opensSamples())
        window.openSamples();
    window.showDocumentTools();
    window.openFiles(commandLine.files());
    window.offerRecovery();
}
