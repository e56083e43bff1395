#include "VXStatus.h"

#include <QCoreApplication>

QString vxStatusText(tag_estatus status)
{
    switch (status) {
    case eSTATUS_SUCCESS:
        return QCoreApplication::translate("CVXStatus", "The operation completed successfully.");
    case eSTATUS_FAILURE:
        return QCoreApplication::translate("CVXStatus", "The operation failed.");
    case eSTATUS_NULL_IMAGE:
        return QCoreApplication::translate("CVXStatus", "There is no image to work with.");
    case eSTATUS_INVALID_PATH:
        return QCoreApplication::translate("CVXStatus",
                                           "The file name or its folder is not valid.");
    case eSTATUS_UNSUPPORTED_FORMAT:
        return QCoreApplication::translate("CVXStatus", "This file format is not supported.");
    case eSTATUS_NO_PERMISSION:
        return QCoreApplication::translate("CVXStatus",
                                           "You do not have permission to write to this location.");
    case eSTATUS_DISK_FULL:
        return QCoreApplication::translate("CVXStatus", "There is not enough space on the disk.");
    case eSTATUS_IMAGE_TOO_LARGE:
        return QCoreApplication::translate("CVXStatus",
                                           "The image is too large for this file format.");
    case eSTATUS_WRITE_FAILED:
        return QCoreApplication::translate("CVXStatus", "The file could not be written.");
    case eSTATUS_FILE_NOT_FOUND:
        return QCoreApplication::translate("CVXStatus", "The file could not be found.");
    case eSTATUS_READ_FAILED:
        return QCoreApplication::translate("CVXStatus", "The file could not be read.");
    case eSTATUS_OUT_OF_MEMORY:
        return QCoreApplication::translate("CVXStatus",
                                           "There is not enough memory to complete the operation.");
    case eSTATUS_PRINTER_NOT_STARTED:
        return QCoreApplication::translate("CVXStatus", "The printer could not be started.");
    }
    // Plugins may pass on codes of newer hosts; the number still helps support.
    return QCoreApplication::translate("CVXStatus", "An unknown error occurred (code %1).")
        .arg(static_cast<int>(status));
}
