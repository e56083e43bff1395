#pragma once

#include "VxUtilsGlobal.h"

#include <QString>

// Status codes reported by the host's services (image writing, printing, reading).
// The numbers are part of the host's interface: plugins pass them on unchanged.
enum tag_estatus {
    eSTATUS_SUCCESS = 0,
    eSTATUS_FAILURE = 1,
    eSTATUS_NULL_IMAGE = 2,
    eSTATUS_INVALID_PATH = 3,
    eSTATUS_UNSUPPORTED_FORMAT = 4,
    eSTATUS_NO_PERMISSION = 5,
    eSTATUS_DISK_FULL = 6,
    eSTATUS_IMAGE_TOO_LARGE = 7,
    eSTATUS_WRITE_FAILED = 8,
    eSTATUS_FILE_NOT_FOUND = 9,
    eSTATUS_READ_FAILED = 10,
    eSTATUS_OUT_OF_MEMORY = 11,
    eSTATUS_PRINTER_NOT_STARTED = 43
};

// The user-facing explanation of a status, translated in the "CVXStatus" context.
VXUTILS_EXPORT QString vxStatusText(tag_estatus status);
