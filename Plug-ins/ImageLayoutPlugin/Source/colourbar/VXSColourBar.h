#pragma once

#include <QString>
#include <Qt>

class CVXDisplayRange;

// What a colour bar shows: the display range of the images it stands for, spread over their
// colour table, and the quantity with its unit as its title. Kept with a rectangle item
// (CVXSItemFigure), which then draws the bar instead of its outline.
class CVXSColourBar
{
public:
    // The bar of a range; one without minimum and maximum gives no bar.
    static CVXSColourBar fromRange(const CVXDisplayRange& range, Qt::Orientation orientation = Qt::Vertical);

    // An item without a colour bar has an empty table name.
    bool isShown() const;

    bool operator==(const CVXSColourBar& other) const;
    bool operator!=(const CVXSColourBar& other) const { return !(*this == other); }

    double dMinimum = 0.0;
    double dMaximum = 1.0;
    QString strTable;  // as CVXColourTable names it; empty: no bar
    QString strTitle;  // "Radiance (p/s/cm²/sr)"
    Qt::Orientation orientation = Qt::Vertical;
};
