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

} // namespace

CVXSLayoutVectorPage::CVXSLayoutVectorPage(const CVXSLayoutRenderer& renderer)
    : m_renderer(renderer)
{
}

QSize CVXSLayoutVectorPage::pointSize() const
{
    return m_renderer.pageSize();
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
    writer.setPageSize(QPageSize(pointSize(), QString(), QPageSize::ExactMatch));
    if (!paint(writer, double(nDpi) / kPointsPerInch))
        return QByteArray();
    return data;
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
