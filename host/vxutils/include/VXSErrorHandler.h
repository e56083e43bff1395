#pragma once

#include "VXStatus.h"
#include "VxUtilsGlobal.h"

#include <QString>

class QWidget;

// Reports a failed host operation to the user.
class VXUTILS_EXPORT CVXSErrorHandler
{
public:
    // A modal error box titled with the application name, showing the status's text
    // followed by strExtra when that is not empty.
    static void errorMessage(QWidget* pParent, tag_estatus status, QString strExtra);
};
