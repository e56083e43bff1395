#pragma once

#include <QtCore/qglobal.h>

#if defined(VXAPI_LIBRARY)
#define VXAPI_EXPORT Q_DECL_EXPORT
#else
#define VXAPI_EXPORT Q_DECL_IMPORT
#endif
