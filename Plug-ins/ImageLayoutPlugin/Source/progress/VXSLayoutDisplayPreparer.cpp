#include "progress/VXSLayoutDisplayPreparer.h"

#include "progress/VXSLayoutProgress.h"
#include "scene/VXSImageDisplayCache.h"
#include "scene/VXSLayoutItemGeometry.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutView.h"

#include <QGraphicsScene>
#include <QtConcurrent>

#include <functional>

namespace {

// One item's copy, made from what the item holds at the start.
struct Preparation
{
    CVXSLayoutItemImage* pItem = nullptr; // owned by the scene
    QImage source;
    QTransform transform;
    QRectF target;
    CVXSImageDisplayCache cache;
};

} // namespace

void CVXSLayoutDisplayPreparer::prepare(CVXSLayoutView& view, const QString& strLabel)
{
    QVector<Preparation> preparations;
    for (QGraphicsItem* pSceneItem : view.scene()->items()) {
        if (pSceneItem->type() != VXSLayout::ImageItemType)
            continue;
        auto* pItem = static_cast<CVXSLayoutItemImage*>(pSceneItem);
        // As the view paints the item: through its device transform, into its rectangle.
        const QTransform transform = pItem->deviceTransform(view.viewportTransform());
        const QRectF target = VXSLayoutItemGeometry::normalizedBoundingRect(*pItem);
        if (CVXSImageDisplayCache::isWorthPreparing(pItem->image(), transform, target))
            preparations.append({pItem, pItem->image(), transform, target, pItem->displayCache()});
    }
    if (preparations.isEmpty())
        return;
    QWidget* pViewport = view.viewport();
    pViewport->setUpdatesEnabled(false);
    CVXSLayoutProgress::run(view.window(), strLabel, false, [&preparations](const CVXSLayoutProgress::CancelFlag&) {
        const std::function<void(Preparation&)> make = [](Preparation& preparation) {
            preparation.cache.prepare(preparation.source, preparation.transform, preparation.target);
        };
        QtConcurrent::blockingMap(preparations, make);
    });
    for (const Preparation& preparation : qAsConst(preparations))
        preparation.pItem->setDisplayCache(preparation.cache);
    pViewport->setUpdatesEnabled(true);
}
