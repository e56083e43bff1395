#include "VXSMdiSubWindow.h"

#include <QMdiArea>

CVXSMdiSubWindow::CVXSMdiSubWindow(QWidget* pParent, Qt::WindowFlags flags)
    : QMdiSubWindow(pParent, flags)
{
}

void CVXSMdiSubWindow::showWindow()
{
    if (QWidget* pContent = widget())
        pContent->show();
    show();
    if (QMdiArea* pArea = mdiArea())
        pArea->setActiveSubWindow(this);
}

void CVXSMdiSubWindow::hideWindow()
{
    hide();
}

void CVXSMdiSubWindow::setWindowPosition(QPoint point)
{
    move(point);
}
