#pragma once

#include "VxUtilsGlobal.h"

#include <QString>

class CVXSSettings;

// Access to the user's preferences of the host application.
class VXUTILS_EXPORT CVXPreference
{
public:
    // The host's settings; one object per process, created on first use.
    static CVXSSettings* getSettings();
    // Moves the entry of a ";;"-separated file dialog filter that matches the user's
    // preferred format to the front, so the dialog offers it first.
    static void modifySaveFilterByPreference(QString& strFilter);
    // Remembers the format (a suffix such as "png") the user chose.
    static void setUsersPreferredFormat(QString strFormat);
};
