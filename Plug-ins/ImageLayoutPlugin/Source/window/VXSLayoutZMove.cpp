#include "window/VXSLayoutZMove.h"

#include "undo/VXSLayoutChange.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutView.h"

CVXSLayoutZMove::CVXSLayoutZMove(CVXSLayoutManager* pMngr, CVXSLayoutView& view)
    : m_pMngr(pMngr)
    , m_view(view)
{
}

void CVXSLayoutZMove::apply(int nCommand) const
{
    CVXSLayoutChange change(m_pMngr, stepName(nCommand));
    m_view.reorderZ(m_view.currentItem(), nCommand);
}

QString CVXSLayoutZMove::stepName(int nCommand)
{
    switch (nCommand) {
    case VXSLayout::BringToFront:
        return tr("Bring to Front");
    case VXSLayout::SendBackward:
        return tr("Send Backward");
    case VXSLayout::SendToBack:
        return tr("Send to Back");
    default:
        return tr("Bring Forward");
    }
}
