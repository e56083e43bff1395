#pragma once

#include <QString>

// A panel letter on an image ("A", "B", … "AA"), kept with the image so that it moves,
// resizes and re-lays out with it. Drawn inside the image's top left corner in white, or
// above the image in black, on the page.
class CVXSPanelLabel
{
public:
    enum Corner { InsideTopLeft, OutsideTopLeft };
    static constexpr double MinPoints = 4.0;
    static constexpr double MaxPoints = 72.0;

    // The letters of the nth panel, counting from 1: 1 A, 26 Z, 27 AA, 28 AB, 52 AZ, 53 BA.
    static QString letters(int nPanel, bool bLowerCase);

    bool isShown() const { return !strText.isEmpty(); }
    bool operator==(const CVXSPanelLabel& other) const;
    bool operator!=(const CVXSPanelLabel& other) const { return !(*this == other); }

    QString strText; // empty: no letter
    bool bBold = true;
    double dPoints = 12.0; // in points of the finished figure
    int nCorner = InsideTopLeft;
};
