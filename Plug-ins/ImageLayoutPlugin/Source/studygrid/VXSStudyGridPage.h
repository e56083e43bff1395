#pragma once

#include <QRectF>
#include <QSize>

// Where the parts of a study grid go on the page: the row headers down the left, the
// column headers along the top, the cells between them and the colour bar on the right.
// Text sizes follow the cells, so that twenty columns still fit their headers.
class CVXSStudyGridPage
{
public:
    CVXSStudyGridPage(const QSize& pageSize, int nRows, int nColumns, bool bColourBar);

    QRectF cellRect(int nRow, int nColumn) const;
    QRectF rowHeaderRect(int nRow) const;
    QRectF columnHeaderRect(int nColumn) const;
    QRectF colourBarRect() const;
    // The headers' text size in page units.
    int textSize() const;

private:
    void placeGrid(double dTextSize);

    QSizeF m_page;
    int m_nRows = 1;
    int m_nColumns = 1;
    bool m_bColourBar = false;
    double m_dMargin = 0.0;
    QRectF m_grid;
    QSizeF m_cell;
    double m_dRowHeaderWidth = 0.0;
    int m_nTextSize = 1;
};
