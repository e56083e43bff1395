#include "host/VXSLayoutLibraries.h"

#include <png.h>
#include <zip.h>

QVector<CVXLibraryInfo> CVXSLayoutLibraries::used()
{
    return {
        {QStringLiteral("libzip"), QString::fromLatin1(zip_libzip_version()), QStringLiteral("BSD-3-Clause")},
        {QStringLiteral("libpng"), QString::fromLatin1(png_get_libpng_ver(nullptr)), QStringLiteral("libpng-2.0")},
    };
}
