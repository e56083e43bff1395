#pragma once

#include <QList>

class CVXSLayoutItemImage;

// The order panels are read in: images in grid cells by their cell index, then the free ones
// row by row from the top, each row from the left. Images whose tops lie within half the
// smaller of their heights of the row's first image are one row.
class CVXSPanelOrder
{
public:
    static QList<CVXSLayoutItemImage*> readingOrder(QList<CVXSLayoutItemImage*> images);

private:
    static QList<CVXSLayoutItemImage*> byRows(QList<CVXSLayoutItemImage*> images);
};
