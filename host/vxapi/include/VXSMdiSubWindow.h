#pragma once

#include "VxApiGlobal.h"

#include <QMdiSubWindow>
#include <QPointer>

class QAction;

// A sub-window of the host's MDI workspace. Tools put their windows into one of these.
class VXAPI_EXPORT CVXSMdiSubWindow : public QMdiSubWindow
{
    Q_OBJECT
public:
    explicit CVXSMdiSubWindow(QWidget* pParent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

    // Shows the sub-window with its content, restored if it was minimized, and makes it
    // the active one.
    void showWindow();
    // Hides the sub-window; its content is kept.
    void hideWindow();
    // Moves the sub-window to the point, in workspace coordinates.
    void setWindowPosition(QPoint point);

    // The checkable menu entry that shows this sub-window: from now on it is checked
    // exactly while the sub-window is shown and not minimized, so that choosing it
    // again brings a minimized window back.
    void setToggleAction(QAction* pAction);

protected:
    bool event(QEvent* pEvent) override;

private:
    void updateToggleAction();

    QPointer<QAction> m_pToggleAction; // owned by the tool that made it
};
