#pragma once

#include "figure/VXSPanelLabel.h"
#include "figure/VXSScaleBar.h"
#include "colourbar/VXSColourBar.h"

#include <QColor>
#include <QMetaType>

class QGraphicsItem;
class QImage;

// What the figure features add to one layout item, kept with the item (in its data) so that
// undo, layout files and output carry it along with the item's own state.
class CVXSItemFigure
{
public:
    // The item's figure part; an item that never had one gives the default (nothing added).
    static CVXSItemFigure of(const QGraphicsItem& item);
    void applyTo(QGraphicsItem& item) const;

    // The width of one pixel of the source in mm: the user's, else the one the source
    // carries; 0 when neither is known.
    double pixelSizeMm(const QImage& source) const;

    bool operator==(const CVXSItemFigure& other) const;
    bool operator!=(const CVXSItemFigure& other) const { return !(*this == other); }

    // The item is drawn in the look below (CVXSItemStyle edits it) instead of the layout
    // window's standard look. The look is kept here, not in the item's pen: a pen's width
    // widens the item's bounding rectangle, from which moves and fitting are measured.
    bool bStyled = false;
    QColor lineColour;       // outline of shapes, line of arrows, border of images
    double dLineWidth = 0.0; // in page units; 0 is the standard hairline
    QColor fillColour;       // fill of shapes, background of texts

    // Images only.
    CVXSPanelLabel panelLabel;
    CVXSScaleBar scaleBar;
    // The width of a source pixel in mm as the user gave it, for an image whose source
    // states none; 0 while the user gave none. It goes before the source's own.
    double dPixelSizeMm = 0.0;
    // A rectangle with a colour bar draws the bar instead of its outline.
    CVXSColourBar colourBar;
};

Q_DECLARE_METATYPE(CVXSItemFigure)
