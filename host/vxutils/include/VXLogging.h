#pragma once

#include "VxUtilsGlobal.h"

// What the programs print of Qt's message log in everyday use: warnings and errors. Debug
// and info messages are still emitted (a message handler or a rule sees them); they show
// when the user asks for them with QT_LOGGING_RULES or a file named by QT_LOGGING_CONF,
// whose rules Qt lets override the program's, or with a qtlogging.ini, which decides alone
// since the program's rules would override it.
class VXUTILS_EXPORT CVXLogging
{
public:
    // For main, once the application object exists.
    static void showWarningsAndErrorsOnly();
};
