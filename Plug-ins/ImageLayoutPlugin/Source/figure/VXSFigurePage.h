#pragma once

#include <QMetaType>
#include <QSizeF>

class QGraphicsScene;

// The figure the page becomes: its printed width and resolution. Kept with the scene, so
// that undo and layout files carry it with the items.
class CVXSFigurePage
{
public:
    static constexpr double MinWidthMm = 1.0;
    static constexpr double MaxWidthMm = 2000.0;
    static constexpr int MinDpi = 72;
    static constexpr int MaxDpi = 2400;
    static constexpr int DefaultDpi = 300;
    // One column of a journal page.
    static constexpr double DefaultWidthMm = 85.0;

    static CVXSFigurePage of(const QGraphicsScene& scene);
    void applyTo(QGraphicsScene& scene) const;

    // Millimetres of the figure per unit of the page, for a page of the given width.
    double mmPerUnit(double dPageWidth) const;
    // The figure's size in millimetres for a page of the given size (aspect kept).
    QSizeF sizeMm(const QSizeF& page) const;
    // Pixels across the figure at its resolution: round(width / 25.4 x dpi).
    int pixelWidth() const;
    // The figure's pixels for a page of the given size: pixelWidth() across, the height in
    // proportion.
    QSize pixelSize(const QSizeF& page) const;

    bool operator==(const CVXSFigurePage& other) const;
    bool operator!=(const CVXSFigurePage& other) const { return !(*this == other); }

    double dWidthMm = DefaultWidthMm;
    int nDpi = DefaultDpi;
};

Q_DECLARE_METATYPE(CVXSFigurePage)
