#pragma once

#include <VXLibraryInfo.h>

#include <QVector>

// The libraries the layout tool links beyond the host's: libzip and libpng for its files.
class CVXSLayoutLibraries
{
public:
    static QVector<CVXLibraryInfo> used();
};
