#pragma once

#include "VxApiGlobal.h"

#include <QObject>
#include <QPointer>

class QAction;
class QMdiArea;
class QMdiSubWindow;
class QPixmap;
class CVXSChildWindow;
class CVXSDataset;
class CVXSSequenceDataset;

// The host's workspace as the libraries see it: the MDI area the host application
// registered, the image window the user worked in last, the tool actions announced by
// plugins, and the news about the datasets of the image and sequence windows. Without a registered MDI area the libraries still work:
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
    // Hands a tool's picture for printing to the host application.
    void deliverPrintPixmap(const QPixmap& pixmap);
    // A tool put a window into the workspace, in this sub-window; the host places it when
    // it is first shown.
    void notifyToolWindowAdded(QMdiSubWindow* pSubWindow);

    // The host tells about its image and sequence windows; tools hear it as the dataset
    // and sequence signals below. Activation is noticed here already.
    void notifyWindowOpened(CVXSChildWindow* pWindow);
    void notifyWindowChanged(CVXSChildWindow* pWindow);
    void notifyWindowClosed(CVXSChildWindow* pWindow);

signals:
    void toolActionAnnounced(QAction* pAction, bool bEnabled, bool bChecked);
    void printPixmapDelivered(const QPixmap& pixmap);
    void toolWindowAdded(QMdiSubWindow* pSubWindow);

    void datasetChanged(CVXSDataset* pDataset);
    void datasetRemoved(CVXSDataset* pDataset);
    void sequenceAdded(CVXSSequenceDataset* pDataset);
    void sequenceChanged(CVXSSequenceDataset* pDataset);
    void sequenceRemoved(CVXSSequenceDataset* pDataset);

private:
    CVXSWorkspace() = default;
    void onSubWindowActivated(QMdiSubWindow* pWindow);

    QPointer<QMdiArea> m_pArea;
    QPointer<CVXSChildWindow> m_pActiveChild;
};
