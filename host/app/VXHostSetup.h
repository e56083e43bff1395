#pragma once

// What every run of the host sets up around its application object.
class CVXHostSetup
{
public:
    // Before the application object exists: the names the settings and the desktop know
    // the host by, its version, and scaling for screens of high pixel density.
    static void beforeApplication();
    // Once the GUI application exists: the catalogues of the system language and the
    // window icon.
    static void afterApplication();
};
