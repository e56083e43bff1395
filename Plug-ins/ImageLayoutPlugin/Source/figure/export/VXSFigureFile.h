#pragma once

#include "figure/VXSFigurePage.h"
#include "output/VXSLayoutProvenance.h"

#include <VXSImageExporter.h>
#include <VXStatus.h>

#include <QCoreApplication>
#include <QImage>
#include <QSize>
#include <QSizeF>
#include <QString>

class CVXSLayoutManager;
class CVXSLayoutRenderer;

// The layout written as a figure of the page's width and resolution: raster files exactly
// round(width / 25.4 x dpi) pixels wide, the height in proportion to the page, carrying the
// resolution; PDF and SVG pages that wide on paper, text and shapes kept as vectors and
// images at their own resolution.
class CVXSFigureFile
{
    Q_DECLARE_TR_FUNCTIONS(CVXSFigureFile)
public:
    CVXSFigureFile(const CVXSLayoutManager& manager, const CVXSFigurePage& page);

    QSize pixelSize() const;
    // The PDF or SVG page's size in points.
    QSizeF paperSize() const;
    // The figure as a raster image at pixelSize(); null without a view or when it does not
    // fit in memory.
    QImage image() const;

    // Writes the file in the format its suffix names (any the exporter writes, pdf, svg);
    // false with status() and errorText() saying why.
    bool write(const QString& strPath,
               CVXSImageExporter::TiffCompression eCompression = CVXSImageExporter::TiffCompression::Deflate);
    tag_estatus status() const;
    QString errorText() const;
    // Where the written figure's images came from.
    CVXSLayoutProvenance::Keys provenance() const;

    static bool isVectorFile(const QString& strPath);

private:
    tag_estatus writeVector(CVXSImageExporter& exporter, const QString& strPath);
    tag_estatus writeRaster(CVXSImageExporter& exporter, QString strPath);
    CVXSLayoutRenderer renderer() const;
    CVXSLayoutProvenance provenanceOfPage() const;
    tag_estatus fail(tag_estatus status, const QString& strText);

    const CVXSLayoutManager& m_manager;
    CVXSFigurePage m_page;
    tag_estatus m_status = eSTATUS_SUCCESS;
    QString m_strError;
    CVXSLayoutProvenance::Keys m_provenance;
};
