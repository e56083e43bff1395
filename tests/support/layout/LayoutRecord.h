#pragma once

#include <figure/VXSFigurePage.h>
#include <undo/VXSLayoutItemState.h>
#include <undo/VXSLayoutSnapshot.h>

#include <QImage>
#include <QString>
#include <QVector>

class QGraphicsItem;
class CVXSLayoutManager;

// What a user could tell about a layout, taken at one moment: every layout item's state
// (lowest z first), the style laid out and shown, the view's top z, the cell counters, the
// selection, the figure the page becomes and the page as rendered. Two records are compared property by property.
class LayoutRecord
{
public:
    static LayoutRecord take(CVXSLayoutManager& manager);

    enum class Identity { Same, Any };
    // Empty when the records agree, else the differences found, one per line. With
    // Identity::Same the items must also be the very same objects (undo keeps them).
    QString differenceFrom(const LayoutRecord& other, Identity identity = Identity::Same) const;

    // Every item and the page, one line each, for comparing with a record of another process.
    QString describe() const;

    QVector<CVXSLayoutItemState> items;
    QVector<const QGraphicsItem*> identities;
    int nStyle = 0;
    int nShownStyle = 0;
    int nTopZ = 0;
    CVXSLayoutSnapshot::CellCounters cellCounters {};
    int nSelected = -1; // index into items
    CVXSFigurePage figurePage;
    QImage rendered;
};
