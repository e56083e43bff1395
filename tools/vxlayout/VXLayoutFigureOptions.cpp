#include "VXLayoutFigureOptions.h"

#include <figure/VXSItemFigure.h>
#include <figure/VXSPanelLabelOptions.h>
#include <VXPixelSize.h>
#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutManager.h>

#include <QCommandLineParser>
#include <QGraphicsScene>

namespace {

QCommandLineOption panelLabelsOption()
{
    return QCommandLineOption(QStringLiteral("panel-labels"),
                              CVXLayoutFigureOptions::tr("Letter the images in reading order: A for A, B, C, "
                                                         "a for a, b, c."),
                              QStringLiteral("A|a"));
}

QCommandLineOption scaleBarOption()
{
    return QCommandLineOption(QStringLiteral("scale-bar"),
                              CVXLayoutFigureOptions::tr("Put a scale bar on every image: auto, or a length such "
                                                         "as 500um, 2mm, 0.5cm."),
                              QStringLiteral("auto|length"));
}

QCommandLineOption pixelSizeOption()
{
    return QCommandLineOption(QStringLiteral("pixel-size"),
                              CVXLayoutFigureOptions::tr("Pixel size of the images whose files state none, "
                                                         "e.g. 0.05mm."),
                              QStringLiteral("length"));
}

// The length of an option's value, or a message naming the option.
bool parseLength(const QString& strOption, const QString& strValue, double& dMm, QString& strError)
{
    QString strWhy;
    if (CVXPixelSize::parse(strValue, dMm, strWhy))
        return true;
    strError = CVXLayoutFigureOptions::tr("Bad --%1: %2").arg(strOption, strWhy);
    return false;
}

} // namespace

void CVXLayoutFigureOptions::addOptions(QCommandLineParser& parser)
{
    parser.addOption(panelLabelsOption());
    parser.addOption(scaleBarOption());
    parser.addOption(pixelSizeOption());
}

QString CVXLayoutFigureOptions::description()
{
    return tr("--panel-labels letters the images A, B, C ... (after Z: AA, AB ...) in cell order, or in\n"
              "\"Free style\" row by row from the top, each row from the left, bold, 12 points of an\n"
              "85 mm wide figure, inside each image's top left corner.\n"
              "--scale-bar draws a white bar in each image's bottom right corner, labelled with its\n"
              "length. It is measured from the file's pixel size: DICOM Pixel Spacing (else Imager\n"
              "Pixel Spacing), or a TIFF's resolution in pixels per inch or centimetre; --pixel-size\n"
              "gives it for files that state none. \"auto\" takes the largest of 1, 2, 5, 10, 20, 50 ...\n"
              "(in nm, um, mm or cm) not above a quarter of the image's width. A scale bar asked for an\n"
              "image without a pixel size is an error that names the file.\n");
}

bool CVXLayoutFigureOptions::parse(const QCommandLineParser& parser, QString& strError)
{
    if (parser.isSet(panelLabelsOption())) {
        const QString strCase = parser.value(panelLabelsOption());
        if (strCase != QLatin1String("A") && strCase != QLatin1String("a")) {
            strError = tr("Bad --panel-labels \"%1\": give A for A, B, C or a for a, b, c.").arg(strCase);
            return false;
        }
        m_bPanelLabels = true;
        m_bLowerCase = strCase == QLatin1String("a");
    }
    if (parser.isSet(scaleBarOption())) {
        m_bScaleBar = true;
        const QString strLength = parser.value(scaleBarOption());
        if (strLength != QLatin1String("auto")
            && !parseLength(QStringLiteral("scale-bar"), strLength, m_dBarLengthMm, strError))
            return false;
    }
    return !parser.isSet(pixelSizeOption())
        || parseLength(QStringLiteral("pixel-size"), parser.value(pixelSizeOption()), m_dPixelSizeMm, strError);
}

bool CVXLayoutFigureOptions::isRequested() const
{
    return m_bPanelLabels || m_bScaleBar || m_dPixelSizeMm > 0.0;
}

bool CVXLayoutFigureOptions::calibrate(const QStringList& paths, QVector<QImage>& images, QString& strError) const
{
    QStringList missing;
    for (int i = 0; i < images.size(); ++i) {
        if (CVXPixelSize::of(images[i]) > 0.0)
            continue;
        if (m_dPixelSizeMm > 0.0)
            CVXPixelSize::set(images[i], m_dPixelSizeMm);
        else if (m_bScaleBar)
            missing << tr("Cannot put a scale bar on \"%1\": the file states no pixel size; give one with "
                          "--pixel-size, e.g. --pixel-size 0.05mm.")
                           .arg(paths.value(i));
    }
    strError = missing.join(QLatin1Char('\n'));
    return missing.isEmpty();
}

void CVXLayoutFigureOptions::mark(CVXSLayoutManager& manager) const
{
    QList<CVXSLayoutItemImage*> images;
    const QList<QGraphicsItem*> items = manager.getScene()->items(Qt::AscendingOrder);
    for (QGraphicsItem* pItem : items) {
        if (pItem->type() == VXSLayout::ImageItemType)
            images << static_cast<CVXSLayoutItemImage*>(pItem);
    }
    for (CVXSLayoutItemImage* pImage : qAsConst(images)) {
        CVXSItemFigure figure = CVXSItemFigure::of(*pImage);
        figure.scaleBar.bShown = m_bScaleBar;
        figure.scaleBar.dLengthMm = m_dBarLengthMm;
        figure.applyTo(*pImage);
    }
    if (!m_bPanelLabels)
        return;
    CVXSPanelLabelOptions options;
    options.bLowerCase = m_bLowerCase;
    options.letter(images);
}
