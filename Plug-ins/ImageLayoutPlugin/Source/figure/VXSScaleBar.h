#pragma once

#include <QColor>

// A scale bar on an image, measured from the image's pixel size each time it is drawn, so
// that it stays true wherever the image is moved, fitted or resized.
class CVXSScaleBar
{
public:
    enum Corner { BottomRight, BottomLeft, TopRight, TopLeft };
    static constexpr double MaxThickness = 100.0;

    // The largest length of the series 1, 2, 5, 10, 20, 50 … (and its tenths) that is not
    // above a quarter of the width, in mm; 0 for no width.
    static double autoLengthMm(double dWidthMm);
    // The bar's length on an image showing dWidthMm across: its own, or the automatic one.
    double lengthMm(double dWidthMm) const;

    bool operator==(const CVXSScaleBar& other) const;
    bool operator!=(const CVXSScaleBar& other) const { return !(*this == other); }

    bool bShown = false;
    double dLengthMm = 0.0; // 0: automatic
    int nCorner = BottomRight;
    QColor colour = Qt::white;
    double dThickness = 3.0; // in page units
    bool bLabel = true;
};
