#include "output/VXSLayoutVectorPage.h"

#include "output/VXSExportFormats.h"
#include "output/VXSLayoutRenderer.h"

#include <QBuffer>
#include <QCoreApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QSvgGenerator>

namespace {

constexpr int kPointsPerInch = 72;
constexpr double kMmPerInch = 25.4;

// The PDF writer gives the page's box in whole points, and a width in millimetres is rarely
// one; the exact size goes in its place, padded to the same length so that no offset moves.
QByteArray withExactMediaBox(QByteArray pdf, const QSizeF& points)
{
    const QByteArray key = "/MediaBox [0 0 ";
    const int nStart = pdf.indexOf(key);
    const int nEnd = nStart < 0 ? -1 : pdf.indexOf(']', nStart);
    if (nEnd < 0)
        return pdf;
    const int nFrom = nStart + key.size();
    const QByteArray exact = QByteArray::number(points.width(), 'f', 4) + ' ' + QByteArray::number(points.height(), 'f', 4);
    if (exact.size() <= nEnd - nFrom)
        pdf.replace(nFrom, nEnd - nFrom, exact.leftJustified(nEnd - nFrom, ' '));
    return pdf;
}

// Sets a length of the SVG's root element, the first element the generator writes: its
// own lengths come from a whole-number resolution.
void setRootLength(QByteArray& svg, const QByteArray& name, double dPoints)
{
    const QByteArray key = ' ' + name + "=\"";
    const int nStart = svg.indexOf(key, qMax(0, svg.indexOf("<svg")));
    const int nEnd = nStart < 0 ? -1 : svg.indexOf('"', nStart + key.size());
    if (nEnd < 0)
        return;
    const int nFrom = nStart + key.size();
    svg.replace(nFrom, nEnd - nFrom, QByteArray::number(dPoints * kMmPerInch / kPointsPerInch, 'g', 6) + "mm");
}

} // namespace

CVXSLayoutVectorPage::CVXSLayoutVectorPage(const CVXSLayoutRenderer& renderer)
    : m_renderer(renderer)
{
}

QSize CVXSLayoutVectorPage::pointSize() const
{
    return m_renderer.pageSize();
}

void CVXSLayoutVectorPage::setPaperSize(const QSizeF& points)
{
    m_paperSize = points;
}

QSizeF CVXSLayoutVectorPage::paperSize() const
{
    return m_paperSize.isEmpty() ? QSizeF(pointSize()) : m_paperSize;
}

double CVXSLayoutVectorPage::paperScale() const
{
    const int nWidth = pointSize().width();
    return nWidth > 0 ? paperSize().width() / nWidth : 1.0;
}

QByteArray CVXSLayoutVectorPage::pdf(int nDpi, const QString& strTitle) const
{
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setCreator(QCoreApplication::applicationName());
    writer.setTitle(strTitle);
    writer.setResolution(nDpi);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setPageSize(QPageSize(paperSize(), QPageSize::Point, QString(), QPageSize::ExactMatch));
    if (!paint(writer, double(nDpi) / kPointsPerInch * paperScale()))
        return QByteArray();
    return withExactMediaBox(data, paperSize());
}

QByteArray CVXSLayoutVectorPage::svg(const QString& strTitle) const
{
    QByteArray data;
    QBuffer buffer(&data);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setTitle(strTitle);
    const QSize device = m_renderer.deviceSize(VXSExportFormats::ExportScale);
    generator.setSize(device);
    generator.setViewBox(QRect(QPoint(0, 0), device));
    generator.setResolution(int(kPointsPerInch * VXSExportFormats::ExportScale));
    if (!paint(generator, VXSExportFormats::ExportScale))
        return QByteArray();
    // The view box keeps the raster page's pixels; the paper size says how large they print.
    setRootLength(data, "width", paperSize().width());
    setRootLength(data, "height", paperSize().height());
    return data;
}

bool CVXSLayoutVectorPage::isVectorSuffix(const QString& strSuffix)
{
    return strSuffix == QLatin1String("pdf") || strSuffix == QLatin1String("svg");
}

bool CVXSLayoutVectorPage::paint(QPaintDevice& device, double dDevicePerPoint) const
{
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    // Images keep their pixels: the PDF writer would otherwise store them as JPEG.
    painter.setRenderHint(QPainter::LosslessImageRendering);
    // The renderer lays the page out at the export scale; the device may have another.
    const double dToDevice = dDevicePerPoint / VXSExportFormats::ExportScale;
    painter.scale(dToDevice, dToDevice);
    m_renderer.render(painter, VXSExportFormats::ExportScale);
    return painter.end();
}
