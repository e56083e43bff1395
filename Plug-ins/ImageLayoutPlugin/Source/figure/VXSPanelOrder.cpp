#include "figure/VXSPanelOrder.h"

#include "scene/VXSLayoutItemGeometry.h"
#include "VXSLayoutItemImage.h"

#include <algorithm>

namespace {

QRectF placeOf(const CVXSLayoutItemImage* pImage)
{
    return VXSLayoutItemGeometry::geometryRect(*pImage).normalized();
}

bool inCell(const CVXSLayoutItemImage* pImage)
{
    return pImage->getCellIndex() >= 0;
}

} // namespace

QList<CVXSLayoutItemImage*> CVXSPanelOrder::readingOrder(QList<CVXSLayoutItemImage*> images)
{
    const auto firstFree = std::stable_partition(images.begin(), images.end(), inCell);
    std::stable_sort(images.begin(), firstFree, [](const CVXSLayoutItemImage* pA, const CVXSLayoutItemImage* pB) {
        return pA->getCellIndex() < pB->getCellIndex();
    });
    const QList<CVXSLayoutItemImage*> free = byRows(QList<CVXSLayoutItemImage*>(firstFree, images.end()));
    QList<CVXSLayoutItemImage*> ordered(images.begin(), firstFree);
    return ordered + free;
}

QList<CVXSLayoutItemImage*> CVXSPanelOrder::byRows(QList<CVXSLayoutItemImage*> images)
{
    std::stable_sort(images.begin(), images.end(), [](const CVXSLayoutItemImage* pA, const CVXSLayoutItemImage* pB) {
        return placeOf(pA).top() < placeOf(pB).top();
    });
    QList<CVXSLayoutItemImage*> ordered;
    auto rowStart = images.begin();
    while (rowStart != images.end()) {
        const QRectF first = placeOf(*rowStart);
        const auto rowEnd = std::find_if(rowStart, images.end(), [&first](const CVXSLayoutItemImage* pImage) {
            const QRectF place = placeOf(pImage);
            return place.top() - first.top() > qMin(first.height(), place.height()) / 2.0;
        });
        QList<CVXSLayoutItemImage*> row(rowStart, rowEnd);
        std::stable_sort(row.begin(), row.end(), [](const CVXSLayoutItemImage* pA, const CVXSLayoutItemImage* pB) {
            return placeOf(pA).left() < placeOf(pB).left();
        });
        ordered += row;
        rowStart = rowEnd;
    }
    return ordered;
}
