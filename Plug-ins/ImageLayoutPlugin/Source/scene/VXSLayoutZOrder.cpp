#include "scene/VXSLayoutZOrder.h"

#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QPair>
#include <QSet>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <numeric>

using namespace VXSLayout;

namespace {

int roundedZ(const QGraphicsItem* pItem)
{
    return int(pItem->zValue() + 0.5);
}

bool isLayoutZ(const QGraphicsItem* pItem)
{
    return roundedZ(pItem) > BaseZ;
}

} // namespace

int CVXSLayoutZOrder::nextZ() const
{
    return m_topZ + 1;
}

int CVXSLayoutZOrder::topZ() const
{
    return m_topZ;
}

void CVXSLayoutZOrder::setTopZ(int nZ)
{
    m_topZ = nZ;
}

void CVXSLayoutZOrder::reset()
{
    m_topZ = BaseZ;
}

QList<QGraphicsItem*> CVXSLayoutZOrder::list(const QGraphicsScene* pScene)
{
    QList<QGraphicsItem*> list;
    if (!pScene)
        return list;
    QVector<QPair<int, QGraphicsItem*>> pairs;
    for (QGraphicsItem* pItem : pScene->items()) {
        if (pItem)
            pairs.append(qMakePair(int(pItem->zValue()), pItem));
    }
    std::sort(pairs.begin(), pairs.end(),
              [](const QPair<int, QGraphicsItem*>& a, const QPair<int, QGraphicsItem*>& b) { return a.first < b.first; });
    for (const auto& pair : pairs)
        list.append(pair.second);
    return list;
}

QVector<int> CVXSLayoutZOrder::placedValues(const QVector<qreal>& values)
{
    QSet<qreal> seen;
    bool bKept = true;
    for (const qreal z : values) {
        bKept = bKept && z > BaseZ && z == std::floor(z) && !seen.contains(z);
        seen.insert(z);
    }
    QVector<int> placed(values.size());
    if (bKept) {
        std::transform(values.cbegin(), values.cend(), placed.begin(), [](qreal z) { return int(z); });
        return placed;
    }
    QVector<int> order(values.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&values](int a, int b) { return values[a] < values[b]; });
    for (int nRank = 0; nRank < order.size(); ++nRank)
        placed[order[nRank]] = BaseZ + 1 + nRank;
    return placed;
}

int CVXSLayoutZOrder::reorder(const QGraphicsScene* pScene, QGraphicsItem* pItem, int nCommand,
                              const ViewItemTest& isViewItem)
{
    if (!pItem)
        return 16;
    const QList<QGraphicsItem*> entries = list(pScene);
    Q_ASSERT_X(entries.count() != 0, "VXSLayoutView", "zorderlist.count() != 0");

    // Find the item among the layout items, remembering the nearest one below it.
    int index = 0;
    QGraphicsItem* pBelow = nullptr;
    for (; index < entries.count(); ++index) {
        QGraphicsItem* pEntry = entries.at(index);
        if (!isLayoutZ(pEntry) || isViewItem(pEntry))
            continue;
        if (pEntry == pItem)
            break;
        pBelow = pEntry;
    }
    QGraphicsItem* pAbove = nullptr;
    if (index + 1 < entries.count()) {
        // Told apart by identity, not by z: a long session's items reach the marks' band.
        pAbove = entries.at(index + 1);
        if (isViewItem(pAbove))
            pAbove = nullptr;
    }

    const qreal z = pItem->zValue();
    switch (nCommand) {
    case BringForward:
        if (pAbove) {
            pItem->setZValue(pAbove->zValue());
            pAbove->setZValue(z);
        }
        break;
    case SendBackward:
        if (pBelow) {
            pItem->setZValue(pBelow->zValue());
            pBelow->setZValue(z);
        }
        break;
    case BringToFront:
        if (roundedZ(pItem) < m_topZ)
            pItem->setZValue(++m_topZ);
        break;
    case SendToBack: {
        // Every layout item below moves up one place; the item takes the lowest z.
        QGraphicsItem* pHolder = pItem;
        for (int i = 0; i < index; ++i) {
            QGraphicsItem* pEntry = entries.at(i);
            if (!isLayoutZ(pEntry) || isViewItem(pEntry))
                continue;
            pHolder->setZValue(pEntry->zValue());
            pHolder = pEntry;
        }
        pHolder->setZValue(z);
        break;
    }
    default:
        break;
    }
    return 0;
}
