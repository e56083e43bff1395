#pragma once

#include <array>
#include <cstdint>

// Cell geometry of the grid layout styles, in percent of the view's width and height.
namespace VXSLayoutStyles {

struct Band
{
    std::int8_t from;
    std::int8_t to;
};

struct Style
{
    int columns;
    int rows;
    std::array<Band, 4> columnBands;
    std::array<Band, 4> rowBands;
};

// Index = style number; style 0 ("Free style") has no cells. The bands are deliberately
// uneven ("Layout 2x1" sits in 20-60 % of the height, "Layout 4x2" leaves 30-70 % empty).
constexpr std::array<Style, 9> Styles = {{
    {0, 0, {}, {}},
    {1, 1, {{{5, 95}}}, {{{5, 95}}}},
    {2, 1, {{{5, 45}, {55, 95}}}, {{{20, 60}}}},
    {2, 2, {{{5, 45}, {55, 95}}}, {{{5, 45}, {55, 95}}}},
    {3, 2, {{{3, 33}, {35, 65}, {67, 97}}}, {{{10, 40}, {60, 90}}}},
    {3, 3, {{{3, 33}, {35, 65}, {67, 97}}}, {{{3, 33}, {35, 65}, {67, 97}}}},
    {4, 2, {{{4, 24}, {28, 48}, {52, 72}, {76, 96}}}, {{{10, 30}, {70, 90}}}},
    {4, 3, {{{4, 24}, {28, 48}, {52, 72}, {76, 96}}}, {{{10, 30}, {40, 60}, {70, 90}}}},
    {4, 4, {{{4, 24}, {28, 48}, {52, 72}, {76, 96}}}, {{{4, 24}, {28, 48}, {52, 72}, {76, 96}}}},
}};

// Number of cells of a style; -1 for "Free style" and unknown styles.
constexpr int cellCount(int style)
{
    if (style < 1 || style >= int(Styles.size()))
        return -1;
    return Styles[style].columns * Styles[style].rows;
}

struct CellPercent
{
    int left;
    int top;
    int right;
    int bottom;
};

// Percent rectangle of a cell; cells are numbered row by row from the top-left.
// The caller checks 0 <= cell < cellCount(style).
constexpr CellPercent cellPercent(int style, int cell)
{
    const Style& s = Styles[style];
    const Band& column = s.columnBands[cell % s.columns];
    const Band& row = s.rowBands[cell / s.columns];
    return {column.from, row.from, column.to, row.to};
}

} // namespace VXSLayoutStyles
