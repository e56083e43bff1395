#include "studygrid/VXSStudyGridPage.h"

#include <algorithm>

namespace {
// Shares of the page's shorter side or width.
constexpr double MarginShare = 0.02;
constexpr double LargestTextShare = 0.03;
constexpr double RowHeaderShare = 0.12;
constexpr double ColourBarShare = 0.12;
// Headers no larger than this share of a cell's shorter side, nor smaller than the least
// readable size.
constexpr double TextPerCell = 0.2;
constexpr double SmallestText = 5.0;
// The colour bar reaches at most this share of the page down.
constexpr double ColourBarHeightShare = 0.6;
// Room left around an image inside its cell, as a share of the cell.
constexpr double CellPadding = 0.03;
} // namespace

CVXSStudyGridPage::CVXSStudyGridPage(const QSize& pageSize, int nRows, int nColumns, bool bColourBar)
    : m_page(pageSize)
    , m_nRows(std::max(1, nRows))
    , m_nColumns(std::max(1, nColumns))
    , m_bColourBar(bColourBar)
    , m_dMargin(std::min(m_page.width(), m_page.height()) * MarginShare)
    , m_dRowHeaderWidth(m_page.width() * RowHeaderShare)
{
    const double dLargest = std::max(SmallestText, std::min(m_page.width(), m_page.height()) * LargestTextShare);
    placeGrid(dLargest);
    // Smaller cells take smaller headers, and the grid grows into the room they leave.
    const double dFitting = std::min(m_cell.width(), m_cell.height()) * TextPerCell;
    m_nTextSize = qRound(std::clamp(dFitting, SmallestText, dLargest));
    placeGrid(m_nTextSize);
}

void CVXSStudyGridPage::placeGrid(double dTextSize)
{
    const double dLeft = m_dMargin + m_dRowHeaderWidth;
    const double dTop = m_dMargin + 2.0 * dTextSize;
    const double dBar = m_bColourBar ? m_page.width() * ColourBarShare + m_dMargin : 0.0;
    m_grid = QRectF(dLeft, dTop, std::max(1.0, m_page.width() - dLeft - dBar - m_dMargin),
                    std::max(1.0, m_page.height() - dTop - m_dMargin));
    m_cell = QSizeF(m_grid.width() / m_nColumns, m_grid.height() / m_nRows);
}

QRectF CVXSStudyGridPage::cellRect(int nRow, int nColumn) const
{
    const QRectF cell(m_grid.left() + nColumn * m_cell.width(), m_grid.top() + nRow * m_cell.height(), m_cell.width(),
                      m_cell.height());
    const double dPadding = std::min(cell.width(), cell.height()) * CellPadding;
    return cell.adjusted(dPadding, dPadding, -dPadding, -dPadding);
}

QRectF CVXSStudyGridPage::rowHeaderRect(int nRow) const
{
    return QRectF(m_dMargin, m_grid.top() + nRow * m_cell.height(), m_dRowHeaderWidth, m_cell.height());
}

QRectF CVXSStudyGridPage::columnHeaderRect(int nColumn) const
{
    return QRectF(m_grid.left() + nColumn * m_cell.width(), m_dMargin, m_cell.width(), m_grid.top() - m_dMargin);
}

QRectF CVXSStudyGridPage::colourBarRect() const
{
    const double dWidth = m_page.width() * ColourBarShare;
    return QRectF(m_page.width() - m_dMargin - dWidth, m_grid.top(), dWidth,
                  std::min(m_grid.height(), m_page.height() * ColourBarHeightShare));
}

int CVXSStudyGridPage::textSize() const
{
    return m_nTextSize;
}
