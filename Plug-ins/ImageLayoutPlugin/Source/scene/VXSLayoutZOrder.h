#pragma once

#include "VXSLayoutConstants.h"

#include <QList>
#include <QVector>

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

    // The z values items placed from a layout file take: distinct whole numbers above BaseZ,
    // as the z steps need them. Values that are so already stay; otherwise the items keep
    // their order (the given order among equal values) and are numbered from BaseZ + 1.
    static QVector<int> placedValues(const QVector<qreal>& values);

    // Applies a z command (bring forward, send backward, bring to front, send to back)
    // to the item; 16 when there is no item, else 0.
    int reorder(const QGraphicsScene* pScene, QGraphicsItem* pItem, int nCommand, const ViewItemTest& isViewItem);

private:
    int m_topZ = VXSLayout::BaseZ;
};
