#pragma once

#include "VxUtilsGlobal.h"

#include <QString>

class QWidget;

// Modal message boxes of the host. Buttons are QMessageBox::StandardButton values,
// optionally or-ed with QMessageBox::Default or QMessageBox::Escape; 0 means no button.
// Every function returns the index (0, 1 or 2) of the button pressed, -1 if none was.
class VXUTILS_EXPORT CVXSMessageBox
{
public:
    static int information(QWidget* pParent, const QString& strTitle, const QString& strText,
                           int nButton0, int nButton1 = 0, int nButton2 = 0);
    static int question(QWidget* pParent, const QString& strTitle, const QString& strText,
                        int nButton0, int nButton1 = 0, int nButton2 = 0);
    static int error(QWidget* pParent, const QString& strTitle, const QString& strText,
                     int nButton0, int nButton1 = 0, int nButton2 = 0);
    // Up to three buttons with the given texts; with all texts empty a single OK button.
    // nDefaultButton and nEscapeButton are button indices; -1 means none.
    static int warning(QWidget* pParent, const QString& strTitle, const QString& strText,
                       const QString& strButton0Text, const QString& strButton1Text = QString(),
                       const QString& strButton2Text = QString(), int nDefaultButton = 0,
                       int nEscapeButton = -1);
};
