#pragma once

#include "VXSLayoutConstants.h"
#include "figure/VXSFigurePage.h"
#include "undo/VXSLayoutItemState.h"

#include <QHash>

#include <array>
#include <cstdint>

class QGraphicsItem;
class CVXSLayoutManager;

// The layout as undo sees it at one moment: every layout item with its state, and the page
// around them: the layout style, the view's top z value, the cell use counters, the selected
// item and the figure the page becomes. The items are recorded by identity; their images are shared, not copied.
class CVXSLayoutSnapshot
{
public:
    using CellCounters = std::array<std::uint8_t, VXSLayout::CellCounterCount>;

    static CVXSLayoutSnapshot take(const CVXSLayoutManager& manager);

    // Whether the layout differs; the selection alone does not count as a change.
    bool sameLayout(const CVXSLayoutSnapshot& other) const;
    // Gives the manager, its view and window this page: style, top z, counters, selection.
    // The items must already be in the scene with their states.
    void restorePage(CVXSLayoutManager& manager) const;

    QHash<QGraphicsItem*, CVXSLayoutItemState> items;
    int nStyle = VXSLayout::FreeStyle;
    int nTopZ = VXSLayout::BaseZ;
    CellCounters cellCounters {};
    QGraphicsItem* pSelected = nullptr; // one of items, or null
    CVXSFigurePage figurePage;
};
