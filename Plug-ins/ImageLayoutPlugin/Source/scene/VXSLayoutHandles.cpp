#include "scene/VXSLayoutHandles.h"

#include "VXSLayoutItemArrow.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutItemRectangle.h"
#include "scene/VXSLayoutPens.h"

#include <QGraphicsScene>

#include <algorithm>

using namespace VXSLayout;

CVXSLayoutHandles::CVXSLayoutHandles(QGraphicsScene* pScene)
    : m_pScene(pScene)
{
    for (CVXSLayoutItemRectangle*& pHandle : m_handles) {
        pHandle = new CVXSLayoutItemRectangle(nullptr);
        pScene->addItem(pHandle);
        pHandle->setRect(0, 0, HandleSize, HandleSize);
        pHandle->setBrush(QBrush(QColor(0, 0, 0, 255)));
        pHandle->setPen(VXSLayoutPens::thinBlack());
    }
    m_pCellHighlight = new CVXSLayoutItemRectangle(nullptr);
    m_pCellHighlight->setPen(QPen(QBrush(QColor(0, 255, 0, 255)), 0, Qt::DashLine, Qt::SquareCap, Qt::BevelJoin));
    pScene->addItem(m_pCellHighlight);
}

CVXSLayoutHandles::~CVXSLayoutHandles()
{
    for (CVXSLayoutItemRectangle*& pHandle : m_handles) {
        delete pHandle;
        pHandle = nullptr;
    }
    delete m_pCellHighlight;
    m_pCellHighlight = nullptr;
}

void CVXSLayoutHandles::updateScene(const QRectF& rect)
{
    if (m_pScene)
        m_pScene->update(rect);
}

void CVXSLayoutHandles::hideHandleItems()
{
    for (CVXSLayoutItemRectangle* pHandle : m_handles) {
        if (pHandle && pHandle->isVisible()) {
            updateScene(pHandle->boundingRect());
            pHandle->hide();
            updateScene(pHandle->boundingRect());
        }
    }
}

void CVXSLayoutHandles::hide()
{
    hideHandleItems();
    if (m_pCellHighlight && m_pCellHighlight->isVisible())
        m_pCellHighlight->hide();
}

int CVXSLayoutHandles::indexOf(const QGraphicsItem* pItem) const
{
    if (!pItem)
        return 0;
    const auto* pFound = std::find(std::begin(m_handles), std::end(m_handles), pItem);
    return pFound == std::end(m_handles) ? 0 : int(pFound - std::begin(m_handles)) + 1;
}

bool CVXSLayoutHandles::isHighlight(const QGraphicsItem* pItem) const
{
    return pItem && pItem == m_pCellHighlight;
}

void CVXSLayoutHandles::place(int nIndex, qreal x, qreal y)
{
    CVXSLayoutItemRectangle* pHandle = m_handles[nIndex];
    updateScene(pHandle->boundingRect());
    pHandle->setRect(x, y, HandleSize, HandleSize);
}

void CVXSLayoutHandles::show(QGraphicsItem* pItem, int nTopZ)
{
    if (!pItem || indexOf(pItem) != 0 || isHighlight(pItem))
        return;
    const QRectF b = pItem->boundingRect();
    const qreal half = HandleSize / 2;
    // The layout's top z only ever grows; once it reaches the marks' band, the marks move
    // up with it so that they never end up beneath the items they belong to.
    const int lift = qMax(0, nTopZ - (HighlightZ - 1));

    if (pItem->type() == ImageItemType && static_cast<CVXSLayoutItemImage*>(pItem)->getCellIndex() != -1) {
        // An image in a cell is not resized: it gets the cell highlight instead of handles.
        hideHandleItems();
        m_pCellHighlight->setRect(b);
        m_pCellHighlight->setZValue(HighlightZ + lift);
        m_pCellHighlight->show();
        return;
    }

    m_pCellHighlight->hide();
    if (pItem->type() == ArrowItemType) {
        int x = 0;
        int y = 0;
        const auto* pArrow = static_cast<CVXSLayoutItemArrow*>(pItem);
        pArrow->getStartPoint(x, y);
        place(0, x - half, y - half);
        pArrow->getEndPoint(x, y);
        place(1, x - half, y - half);
        // Only the end handle's z is set; the start handle keeps the z it last had.
        m_handles[1]->setZValue(HandleZ + lift);
        m_handles[1]->setZValue(HandleZ + lift + 1);
        m_handles[0]->show();
        m_handles[1]->show();
        return;
    }

    const QPointF corners[HandleCount] = {{b.left() + 1 - half, b.top() + 1 - half},
                                          {b.right() - 1 - half, b.top() + 1 - half},
                                          {b.right() - 1 - half, b.bottom() - 1 - half},
                                          {b.left() + 1 - half, b.bottom() - 1 - half}};
    for (int i = 0; i < HandleCount; ++i) {
        place(i, corners[i].x(), corners[i].y());
        m_handles[i]->setZValue(HandleZ + lift + i);
        m_handles[i]->show();
    }
}
