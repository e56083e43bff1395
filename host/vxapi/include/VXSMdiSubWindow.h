#pragma once

#include "VxApiGlobal.h"

#include <QMdiSubWindow>

// A sub-window of the host's MDI workspace. Tools put their windows into one of these.
class VXAPI_EXPORT CVXSMdiSubWindow : public QMdiSubWindow
{
    Q_OBJECT
public:
    explicit CVXSMdiSubWindow(QWidget* pParent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

    // Shows the sub-window with its content and makes it the active one.
    void showWindow();
    // Hides the sub-window; its content is kept.
    void hideWindow();
    // Moves the sub-window to the point, in workspace coordinates.
    void setWindowPosition(QPoint point);
};
