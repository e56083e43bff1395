#pragma once

#include "VXSLayoutConstants.h"
#include "figure/VXSFigurePage.h"
#include "undo/VXSLayoutItemState.h"

#include <QSize>
#include <QVector>

// A whole layout as a layout file holds it: the layout style (0 = "Free style"), the size of
// the page the items were placed on, every item, and the figure the page becomes.
class CVXSLayoutDocument
{
public:
    int nStyle = VXSLayout::FreeStyle;
    QSize pageSize;
    QVector<CVXSLayoutItemState> items;
    CVXSFigurePage figurePage;
};
