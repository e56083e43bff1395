#include "VXLayoutFigureSize.h"

#include <figure/export/VXSFigureFile.h>

#include <QCommandLineParser>
#include <QRegularExpression>

QCommandLineOption CVXLayoutFigureSize::option()
{
    return QCommandLineOption(
        QStringLiteral("width-mm"),
        tr("Figure width on paper in millimetres, %1 to %2, for any format: raster files come out "
           "round(width / 25.4 x dpi) pixels wide at the resolution of --dpi (%3 without it), the "
           "height in proportion to the page; pdf and svg pages are that wide.")
            .arg(CVXSFigurePage::MinWidthMm)
            .arg(CVXSFigurePage::MaxWidthMm)
            .arg(CVXSFigurePage::DefaultDpi),
        QStringLiteral("N"));
}

bool CVXLayoutFigureSize::parse(const QCommandLineParser& parser, int nDpi)
{
    m_bRequested = parser.isSet(option());
    if (!m_bRequested)
        return true;
    const QString strValue = parser.value(option());
    static const QRegularExpression pattern(QStringLiteral("^\\d{1,5}(\\.\\d+)?$"));
    const double dWidth = pattern.match(strValue).hasMatch() ? strValue.toDouble() : 0.0;
    if (dWidth < CVXSFigurePage::MinWidthMm || dWidth > CVXSFigurePage::MaxWidthMm) {
        m_strError = tr("Bad --width-mm \"%1\": give the figure's width in millimetres from %2 to %3, e.g. 85.")
                         .arg(strValue)
                         .arg(CVXSFigurePage::MinWidthMm)
                         .arg(CVXSFigurePage::MaxWidthMm);
        return false;
    }
    m_page.dWidthMm = dWidth;
    m_page.nDpi = nDpi > 0 ? nDpi : CVXSFigurePage::DefaultDpi;
    return true;
}

bool CVXLayoutFigureSize::isRequested() const
{
    return m_bRequested;
}

CVXSFigurePage CVXLayoutFigureSize::page() const
{
    return m_page;
}

QString CVXLayoutFigureSize::errorText() const
{
    return m_strError;
}

QString CVXLayoutFigureSize::reportLine(const QString& strPath, const CVXSFigureFile& figure) const
{
    if (CVXSFigureFile::isVectorFile(strPath)) {
        const QSizeF paper = figure.paperSize();
        return tr("Wrote %1 (%2 x %3 points, %4 mm wide)")
            .arg(strPath)
            .arg(paper.width(), 0, 'f', 2)
            .arg(paper.height(), 0, 'f', 2)
            .arg(m_page.dWidthMm);
    }
    return tr("Wrote %1 (%2 x %3 pixels, %4 mm wide at %5 dpi)")
        .arg(strPath)
        .arg(figure.pixelSize().width())
        .arg(figure.pixelSize().height())
        .arg(m_page.dWidthMm)
        .arg(m_page.nDpi);
}
