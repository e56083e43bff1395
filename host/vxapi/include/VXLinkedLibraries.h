#pragma once

#include "VXLibraryInfo.h"
#include "VxApiGlobal.h"

#include <QVector>

// The libraries the host itself links, for the About box; tools name theirs through
// CVXToolPluginBase::toolLibraries.
class VXAPI_EXPORT CVXLinkedLibraries
{
public:
    static QVector<CVXLibraryInfo> hostLibraries();
};
