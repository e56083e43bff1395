#include "window/VXSLayoutItemDeleter.h"

#include "undo/VXSLayoutChange.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"

#include <QGraphicsItem>
#include <QGraphicsScene>

namespace {
// Room around the item for what it drew beyond its rectangle.
constexpr int RepaintMargin = 40;
} // namespace

CVXSLayoutItemDeleter::CVXSLayoutItemDeleter(CVXSLayoutManager* pMngr, CVXSLayoutView& view)
    : m_pMngr(pMngr)
    , m_view(view)
{
}

void CVXSLayoutItemDeleter::deleteItem(QGraphicsItem* pItem) const
{
    const QRect dirty =
        pItem->boundingRect().toRect().adjusted(-RepaintMargin, -RepaintMargin, RepaintMargin, RepaintMargin);
    CVXSLayoutChange change(m_pMngr, tr("Delete"));
    if (m_pMngr)
        m_pMngr->removeLayoutItem(pItem);
    else
        delete pItem;
    if (m_view.scene())
        m_view.scene()->update(dirty);
    m_view.setCurrentItem(nullptr);
    m_view.setSelectedItem(nullptr);
    m_view.hideHandles();
}
