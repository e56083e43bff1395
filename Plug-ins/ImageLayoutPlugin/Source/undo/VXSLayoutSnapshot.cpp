#include "undo/VXSLayoutSnapshot.h"

#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"
#include "VXSLayoutWindow.h"

#include <QGraphicsScene>

CVXSLayoutSnapshot CVXSLayoutSnapshot::take(const CVXSLayoutManager& manager)
{
    CVXSLayoutSnapshot snapshot;
    const CVXSLayoutView* pView = manager.getLayoutView();
    const CVXSLayoutWindow* pWindow = manager.getLayoutWindow();
    if (!pView || !pWindow)
        return snapshot;
    for (QGraphicsItem* pItem : manager.layoutItems())
        snapshot.items.insert(pItem, CVXSLayoutItemState::capture(*pItem));
    snapshot.nStyle = pWindow->layoutStyle();
    snapshot.nTopZ = pView->topZ();
    snapshot.cellCounters = manager.cellUseCounts();
    QGraphicsItem* pSelected = pView->currentItem();
    snapshot.pSelected = snapshot.items.contains(pSelected) ? pSelected : nullptr;
    if (const QGraphicsScene* pScene = pView->scene())
        snapshot.figurePage = CVXSFigurePage::of(*pScene);
    return snapshot;
}

bool CVXSLayoutSnapshot::sameLayout(const CVXSLayoutSnapshot& other) const
{
    return items == other.items && nStyle == other.nStyle && nTopZ == other.nTopZ
        && cellCounters == other.cellCounters && figurePage == other.figurePage;
}

void CVXSLayoutSnapshot::restorePage(CVXSLayoutManager& manager) const
{
    CVXSLayoutView* pView = manager.getLayoutView();
    CVXSLayoutWindow* pWindow = manager.getLayoutWindow();
    if (!pView || !pWindow)
        return;
    pWindow->restoreLayoutStyle(nStyle);
    pView->showCells(nStyle);
    pView->setTopZ(nTopZ);
    manager.setCellUseCounts(cellCounters);
    pView->selectItem(pSelected);
    if (QGraphicsScene* pScene = pView->scene()) {
        figurePage.applyTo(*pScene);
        pScene->update();
    }
}
