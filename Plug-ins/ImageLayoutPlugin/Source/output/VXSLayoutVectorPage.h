#pragma once

#include <QByteArray>
#include <QSize>
#include <QSizeF>
#include <QString>

class QPaintDevice;
class CVXSLayoutRenderer;

// The layout page as a vector file, PDF or SVG: shapes and text stay vectors, images go in
// at their own resolution. One scene unit is one point (1/72 inch), so a 1000 x 800 scene
// gives a page of 1001 x 801 points; the items lie where they lie on the exported raster
// page, which has ExportScale pixels per point.
class CVXSLayoutVectorPage
{
public:
    explicit CVXSLayoutVectorPage(const CVXSLayoutRenderer& renderer);

    // The page size in points.
    QSize pointSize() const;
    // The page printed at another size, in points (a figure of a given width, say): the
    // page is scaled to it as a whole. Without it one scene unit is one point.
    void setPaperSize(const QSizeF& points);
    QSizeF paperSize() const;
    // The PDF file; nDpi is the resolution its page is described in. Empty when the page
    // cannot be drawn.
    QByteArray pdf(int nDpi, const QString& strTitle) const;
    // The SVG file, its view box in the exported raster page's pixels. Empty when the page
    // cannot be drawn.
    QByteArray svg(const QString& strTitle) const;

    // Whether the suffix (lower case, no dot) names a vector format: pdf, svg.
    static bool isVectorSuffix(const QString& strSuffix);

private:
    bool paint(QPaintDevice& device, double dDevicePerPoint) const;
    // The paper's points per scene unit.
    double paperScale() const;

    const CVXSLayoutRenderer& m_renderer;
    QSizeF m_paperSize; // empty: the page's own size
};
