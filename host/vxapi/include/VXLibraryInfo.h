#pragma once

#include <QString>

// A library the program links, as the About box names it.
struct CVXLibraryInfo
{
    QString m_strName;
    // The version in use, read from the library where it tells it at run time.
    QString m_strVersion;
    // The licence's SPDX identifier, which reads the same in every language.
    QString m_strLicence;
};
