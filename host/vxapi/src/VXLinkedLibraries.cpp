#include "VXLinkedLibraries.h"

#include <dcmtk/config/osconfig.h>
#include <dcmtk/dcmdata/dcuid.h>
#include <zlib.h>

QVector<CVXLibraryInfo> CVXLinkedLibraries::hostLibraries()
{
    // DCMTK tells its version only to the compiler.
    return {
        {QStringLiteral("Qt"), QString::fromLatin1(qVersion()), QStringLiteral("LGPL-3.0-only")},
        {QStringLiteral("DCMTK"), QStringLiteral(OFFIS_DCMTK_VERSION), QStringLiteral("BSD-3-Clause")},
        {QStringLiteral("zlib"), QString::fromLatin1(zlibVersion()), QStringLiteral("Zlib")},
    };
}
