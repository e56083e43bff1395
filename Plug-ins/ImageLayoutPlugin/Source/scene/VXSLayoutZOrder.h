#pragma once

#include "VXSLayoutConstants.h"

#include <QList>

#include <functional>

class QGraphicsItem;
class QGraphicsScene;

// The stacking order of the layout items: the z value the next item gets, and the four
// steps that move an item up or down among the other layout items. The view's own items
// (cell frames below, highlight and handles above) never take part.
class CVXSLayoutZOrder
{
public:
    int nextZ() const;
    int topZ() const;
    void setTopZ(int nZ);
    void reset();

    // All items of the scene, sorted by their z value cut to an int, lowest first.
    static QList<QGraphicsItem*> list(const QGraphicsScene* pScene);
    // Tells the view's own items (cell frames, highlight, handles) apart.
    using ViewItemTest = std::function<bool(QGraphicsItem*)>;

    // Applies a z command (bring forward, send backward, bring to front, send to back)
    // to the item; 16 when there is no item, else 0.
    int reorder(const QGraphicsScene* pScene, QGraphicsItem* pItem, int nCommand, const ViewItemTest& isViewItem);

private:
    int m_topZ = VXSLayout::BaseZ;
};
