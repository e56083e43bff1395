#pragma once

#include "VXSLayoutConstants.h"

#include <QRectF>

class QGraphicsItem;
class QGraphicsScene;
class CVXSLayoutItemRectangle;

// The selection marks the view keeps in its scene: four corner handles for a free item
// (two, on the end points, for an arrow) and a highlight frame for an image in a cell.
class CVXSLayoutHandles
{
public:
    // Adds the handles and the highlight, all hidden, to the scene.
    explicit CVXSLayoutHandles(QGraphicsScene* pScene);
    ~CVXSLayoutHandles();
    CVXSLayoutHandles(const CVXSLayoutHandles&) = delete;
    CVXSLayoutHandles& operator=(const CVXSLayoutHandles&) = delete;

    // Hides the handles and the highlight.
    void hide();
    // nTopZ is the highest z a layout item may have: marks always stay above it.
    void show(QGraphicsItem* pItem, int nTopZ);
    // 1 to 4 for a handle, 0 for any other item.
    int indexOf(const QGraphicsItem* pItem) const;
    bool isHighlight(const QGraphicsItem* pItem) const;

private:
    void hideHandleItems();
    void place(int nIndex, qreal x, qreal y);
    void updateScene(const QRectF& rect);

    QGraphicsScene* m_pScene = nullptr;
    // The handles and the highlight are owned here: added to the scene and deleted here.
    CVXSLayoutItemRectangle* m_handles[VXSLayout::HandleCount] = {};
    CVXSLayoutItemRectangle* m_pCellHighlight = nullptr;
};
