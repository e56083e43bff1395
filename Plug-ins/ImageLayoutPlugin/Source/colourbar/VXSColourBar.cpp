#include "colourbar/VXSColourBar.h"

#include <VXDisplayRange.h>

CVXSColourBar CVXSColourBar::fromRange(const CVXDisplayRange& range, Qt::Orientation orientation)
{
    CVXSColourBar bar;
    if (!range.hasRange())
        return bar;
    bar.dMinimum = range.minimum();
    bar.dMaximum = range.maximum();
    bar.strTable = range.tableName();
    bar.strTitle = range.quantityLabel();
    bar.orientation = orientation;
    return bar;
}

bool CVXSColourBar::isShown() const
{
    return !strTable.isEmpty();
}

bool CVXSColourBar::operator==(const CVXSColourBar& other) const
{
    return dMinimum == other.dMinimum && dMaximum == other.dMaximum && strTable == other.strTable
        && strTitle == other.strTitle && orientation == other.orientation;
}
