#include "VXSErrorHandler.h"

#include "VXSMessageBox.h"
#include "VXUtilityFns.h"

#include <QMessageBox>

void CVXSErrorHandler::errorMessage(QWidget* pParent, tag_estatus status, QString strExtra)
{
    QString strText = vxStatusText(status);
    if (!strExtra.isEmpty())
        strText += QLatin1Char('\n') + strExtra;
    CVXSMessageBox::error(pParent, CVXUtilityFns::getAppName(), strText,
                          QMessageBox::Ok | QMessageBox::Default | QMessageBox::Escape);
}
