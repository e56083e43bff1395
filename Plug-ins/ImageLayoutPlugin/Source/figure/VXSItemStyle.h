#pragma once

#include <QColor>
#include <QFont>

class QGraphicsItem;

// The look of one layout item as the Figure panel edits it. Rectangles and ellipses have
// an outline and a fill, lines and arrows a colour, width and head size, texts a colour, font
// and background, images a border. Widths are in units of the page; a width of 0 is the
// window's standard hairline. A transparent colour means none (no fill, no background, no
// border).
class CVXSItemStyle
{
public:
    // The look the item has: its own once styled, else the standard look of its kind (a
    // text's colour and font are always its own).
    static CVXSItemStyle of(const QGraphicsItem& item);
    // The layout window's standard look of a kind.
    static CVXSItemStyle standard(int nType);
    // Gives the item this look and marks it styled.
    void applyTo(QGraphicsItem& item) const;

    bool operator==(const CVXSItemStyle& other) const;
    bool operator!=(const CVXSItemStyle& other) const { return !(*this == other); }

    static constexpr double MaxLineWidth = 100.0;
    static constexpr double MinHeadSize = 1.0;
    static constexpr double MaxHeadSize = 500.0;

    QColor lineColour = Qt::black; // outline, line or border
    double dLineWidth = 0.0;
    QColor fillColour = Qt::white; // fill of shapes, background of texts
    double dHeadSize = 10.0;
    QColor textColour = Qt::black;
    QFont font;
};
