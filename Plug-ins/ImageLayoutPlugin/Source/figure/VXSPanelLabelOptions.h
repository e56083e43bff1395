#pragma once

#include "figure/VXSPanelLabel.h"

#include <QList>

class CVXSLayoutItemImage;

// How "Label Panels" letters the images: upper or lower case, bold, size and corner. The
// user's last choice is kept in the host's settings.
class CVXSPanelLabelOptions
{
public:
    // The stored choice; the defaults where none is stored or it is damaged.
    static CVXSPanelLabelOptions stored();
    void store() const;

    // The label of the nth panel, counting from 1.
    CVXSPanelLabel labelFor(int nPanel) const;
    // Letters the images in reading order (CVXSPanelOrder), replacing the letters they had.
    void letter(const QList<CVXSLayoutItemImage*>& images) const;

    bool operator==(const CVXSPanelLabelOptions& other) const;
    bool operator!=(const CVXSPanelLabelOptions& other) const { return !(*this == other); }

    bool bLowerCase = false;
    bool bBold = true;
    double dPoints = 12.0;
    int nCorner = CVXSPanelLabel::InsideTopLeft;
};
