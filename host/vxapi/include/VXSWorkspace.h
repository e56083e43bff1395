#pragma once

#include "VxApiGlobal.h"

#include <QObject>
#include <QPointer>

class QAction;
class QMdiArea;
class QMdiSubWindow;
class CVXSChildWindow;

// The host's workspace as the libraries see it: the MDI area the host application
// registered, the image window the user worked in last, and the tool actions
// announced by plugins. Without a registered MDI area the libraries still work:
// there is simply no active image window and widgets stay top-level.
class VXAPI_EXPORT CVXSWorkspace : public QObject
{
    Q_OBJECT
public:
    static CVXSWorkspace* instance();

    void setMdiArea(QMdiArea* pArea);
    QMdiArea* mdiArea() const;

    // The image or sequence window activated last and still open, or null.
    CVXSChildWindow* activeChildWindow() const;

    // Announces a plugin's menu action to the host application.
    void announceToolAction(QAction* pAction, bool bEnabled, bool bChecked);

signals:
    void toolActionAnnounced(QAction* pAction, bool bEnabled, bool bChecked);

private:
    CVXSWorkspace() = default;
    void onSubWindowActivated(QMdiSubWindow* pWindow);

    QPointer<QMdiArea> m_pArea;
    QPointer<CVXSChildWindow> m_pActiveChild;
};
