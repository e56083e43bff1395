#include "VXSMdiSubWindow.h"

#include "VXSubWindowGeometry.h"

#include <QAction>
#include <QEvent>
#include <QMdiArea>
#include <QSignalBlocker>

CVXSMdiSubWindow::CVXSMdiSubWindow(QWidget* pParent, Qt::WindowFlags flags)
    : QMdiSubWindow(pParent, flags)
{
}

void CVXSMdiSubWindow::showWindow()
{
    if (QWidget* pContent = widget())
        pContent->show();
    // A window placed while the workspace was smaller comes back where it can be seen.
    const QMdiArea* pArea = mdiArea();
    if (pArea && !pArea->viewport()->rect().isEmpty() && !isMinimized())
        move(CVXSubWindowGeometry::keptInside(pArea->viewport()->rect(), size(), pos()));
    if (isMinimized())
        showNormal();
    else
        show();
    if (pArea)
        mdiArea()->setActiveSubWindow(this);
}

void CVXSMdiSubWindow::hideWindow()
{
    hide();
}

void CVXSMdiSubWindow::setWindowPosition(QPoint point)
{
    move(point);
}

void CVXSMdiSubWindow::setToggleAction(QAction* pAction)
{
    // Only what happens to the window from now on counts: a tool hands the entry over
    // while it is still building the window, before the entry's choice is carried out.
    m_pToggleAction = pAction;
}

bool CVXSMdiSubWindow::event(QEvent* pEvent)
{
    const bool bHandled = QMdiSubWindow::event(pEvent);
    switch (pEvent->type()) {
    case QEvent::Show:
    case QEvent::Hide:
    case QEvent::WindowStateChange:
        updateToggleAction();
        break;
    default:
        break;
    }
    return bHandled;
}

void CVXSMdiSubWindow::updateToggleAction()
{
    if (!m_pToggleAction)
        return;
    // The entry follows the window here; its toggled signal is for the user's choices.
    // Hidden means closed, not hidden along with the main window.
    const QSignalBlocker blocker(m_pToggleAction);
    m_pToggleAction->setChecked(!isHidden() && !isMinimized());
}
