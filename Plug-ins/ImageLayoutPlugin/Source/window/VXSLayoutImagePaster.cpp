#include "window/VXSLayoutImagePaster.h"

#include "progress/VXSLayoutDisplayPreparer.h"
#include "undo/VXSLayoutChange.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"

#include <VXSChildWindow.h>
#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QGraphicsScene>

CVXSLayoutImagePaster::CVXSLayoutImagePaster(CVXSLayoutManager* pMngr, CVXSLayoutView* pView)
    : m_pMngr(pMngr)
    , m_pView(pView)
{
}

bool CVXSLayoutImagePaster::hasRoom(int nStyle, QWidget* pParent) const
{
    if (!m_pMngr || nStyle == VXSLayout::FreeStyle || m_pMngr->getFirstEmptyCell(true) != -1)
        return true;
    CVXSMessageBox::warning(pParent, CVXUtilityFns::getAppName(),
                            tr("There is no cell currently empty! Delete one or more images to continue."),
                            QString(), QString(), QString(), 0, -1);
    return false;
}

void CVXSLayoutImagePaster::add(const QImage& image) const
{
    QGraphicsScene* pScene = m_pView ? m_pView->scene() : nullptr;
    if (!pScene || !m_pMngr || image.isNull())
        return;
    CVXSLayoutChange change(m_pMngr, tr("Paste Image"));
    auto* pItem = new CVXSLayoutItemImage(image, nullptr);
    pScene->addItem(pItem);
    m_pMngr->addImageItem(pItem, true);
    m_pView->presentNewItem(pItem);
    CVXSLayoutDisplayPreparer::prepare(*m_pView, tr("Pasting the image..."));
}

QImage CVXSLayoutImagePaster::activeDatasetImage(const CVXSActiveDatasetGrabber::TabCopyRequest& requestTabCopy)
{
    CVXSChildWindow* pChild = CVXSChildWindow::getActiveChildWnd();
    return pChild ? CVXSActiveDatasetGrabber(requestTabCopy).grab(pChild) : QImage();
}
