#include "figure/export/VXSFigureFile.h"

#include "output/VXSLayoutRenderer.h"
#include "output/VXSLayoutVectorPage.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"

#include <QFileInfo>
#include <QPainter>

namespace {
constexpr double PointsPerMm = 72.0 / 25.4;
} // namespace

CVXSFigureFile::CVXSFigureFile(const CVXSLayoutManager& manager, const CVXSFigurePage& page)
    : m_manager(manager)
    , m_page(page)
{
}

CVXSLayoutRenderer CVXSFigureFile::renderer() const
{
    // The manager always has its view; the view's scene is the page.
    const CVXSLayoutView* pView = m_manager.getLayoutView();
    return CVXSLayoutRenderer(*pView->scene(), pView);
}

QSize CVXSFigureFile::pixelSize() const
{
    return m_page.pixelSize(renderer().pageSize());
}

QSizeF CVXSFigureFile::paperSize() const
{
    return m_page.sizeMm(renderer().pageSize()) * PointsPerMm;
}

QImage CVXSFigureFile::image() const
{
    const CVXSLayoutRenderer pageRenderer = renderer();
    const QSize size = pixelSize();
    QImage figure(size, QImage::Format_RGB32);
    QPainter painter;
    if (figure.isNull() || !painter.begin(&figure))
        return QImage();
    // The renderer lays the page out at whole scales: at the next one up, shrunk to the
    // figure's width as it draws, so that text and lines are drawn at the figure's own
    // resolution and the images reduced once more, smoothly.
    const int nPageWidth = pageRenderer.pageSize().width();
    const int nScale = qMax(1, (size.width() + nPageWidth - 1) / nPageWidth);
    const double dToFigure = double(size.width()) / pageRenderer.deviceSize(nScale).width();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.scale(dToFigure, dToFigure);
    pageRenderer.render(painter, nScale);
    painter.end();
    // Set after drawing: text is measured at the resolution raster pages are drawn at.
    const int nDotsPerMeter = qRound(m_page.nDpi / 0.0254);
    figure.setDotsPerMeterX(nDotsPerMeter);
    figure.setDotsPerMeterY(nDotsPerMeter);
    return provenanceOfPage().attachedTo(figure);
}

CVXSLayoutProvenance CVXSFigureFile::provenanceOfPage() const
{
    const CVXSLayoutView* pView = m_manager.getLayoutView();
    return CVXSLayoutProvenance(*pView->scene(), pView, m_manager.currentStyle(), renderer().pageSize());
}

bool CVXSFigureFile::isVectorFile(const QString& strPath)
{
    return CVXSLayoutVectorPage::isVectorSuffix(QFileInfo(strPath).suffix().toLower());
}

bool CVXSFigureFile::write(const QString& strPath, CVXSImageExporter::TiffCompression eCompression)
{
    m_status = eSTATUS_SUCCESS;
    m_strError.clear();
    m_provenance.clear();
    CVXSImageExporter exporter;
    exporter.setTiffCompression(eCompression);
    exporter.setResolution(m_page.nDpi);
    m_status = isVectorFile(strPath) ? writeVector(exporter, strPath) : writeRaster(exporter, strPath);
    if (m_status != eSTATUS_SUCCESS && m_strError.isEmpty())
        m_strError = exporter.errorText();
    return m_status == eSTATUS_SUCCESS;
}

tag_estatus CVXSFigureFile::writeVector(CVXSImageExporter& exporter, const QString& strPath)
{
    const CVXSLayoutRenderer pageRenderer = renderer();
    CVXSLayoutVectorPage page(pageRenderer);
    page.setPaperSize(paperSize());
    const QString strTitle = QFileInfo(strPath).completeBaseName();
    const bool bPdf = QFileInfo(strPath).suffix().toLower() == QLatin1String("pdf");
    const QByteArray data = bPdf ? page.pdf(m_page.nDpi, strTitle) : page.svg(strTitle);
    if (data.isEmpty())
        return fail(eSTATUS_FAILURE, QCoreApplication::translate("CVXSLayoutManager", "Image could not be created!"));
    const tag_estatus status = exporter.saveData(data, strPath);
    if (status == eSTATUS_SUCCESS)
        m_provenance = provenanceOfPage().keys();
    return status;
}

tag_estatus CVXSFigureFile::writeRaster(CVXSImageExporter& exporter, QString strPath)
{
    QImage figure = image();
    if (figure.isNull()) {
        const QSize size = pixelSize();
        return fail(eSTATUS_IMAGE_TOO_LARGE, tr("A figure of %1 x %2 pixels does not fit in memory. Choose a "
                                                "smaller width or resolution.")
                                                 .arg(size.width())
                                                 .arg(size.height()));
    }
    const tag_estatus status = exporter.saveImage(figure, strPath);
    if (status == eSTATUS_SUCCESS)
        m_provenance = CVXSLayoutProvenance::keysOf(figure);
    return status;
}

tag_estatus CVXSFigureFile::fail(tag_estatus status, const QString& strText)
{
    m_strError = strText;
    return status;
}

tag_estatus CVXSFigureFile::status() const
{
    return m_status;
}

QString CVXSFigureFile::errorText() const
{
    return m_strError;
}

CVXSLayoutProvenance::Keys CVXSFigureFile::provenance() const
{
    return m_provenance;
}
