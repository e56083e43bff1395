#pragma once

class CVXHostCommandLine;
class CVXHostMainWindow;

// What the host does once its main window is up: attaches the tools, opens the samples
// and the Image Layout window, opens the files of the command line and lets the tools
// offer what an abnormal end left unsaved.
class CVXHostStartup
{
public:
    // Runs inside the event loop, so that the message boxes it may show end with it.
    static void run(CVXHostMainWindow& window, const CVXHostCommandLine& commandLine);
};
