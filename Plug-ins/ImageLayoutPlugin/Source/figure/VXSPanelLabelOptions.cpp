#include "figure/VXSPanelLabelOptions.h"

#include "figure/VXSItemFigure.h"
#include "figure/VXSPanelOrder.h"
#include "VXSLayoutItemImage.h"

#include <VXPreference.h>
#include <VXSSettings.h>

namespace {

const QString kLowerCase = QStringLiteral("Figure/PanelLabels/lowerCase");
const QString kBold = QStringLiteral("Figure/PanelLabels/bold");
const QString kPoints = QStringLiteral("Figure/PanelLabels/points");
const QString kCorner = QStringLiteral("Figure/PanelLabels/corner");

} // namespace

CVXSPanelLabelOptions CVXSPanelLabelOptions::stored()
{
    const CVXSSettings* pSettings = CVXPreference::getSettings();
    CVXSPanelLabelOptions options;
    options.bLowerCase = pSettings->value(kLowerCase, options.bLowerCase).toBool();
    options.bBold = pSettings->value(kBold, options.bBold).toBool();
    const double dPoints = pSettings->value(kPoints, options.dPoints).toDouble();
    if (dPoints >= CVXSPanelLabel::MinPoints && dPoints <= CVXSPanelLabel::MaxPoints)
        options.dPoints = dPoints;
    const int nCorner = pSettings->value(kCorner, options.nCorner).toInt();
    if (nCorner == CVXSPanelLabel::InsideTopLeft || nCorner == CVXSPanelLabel::OutsideTopLeft)
        options.nCorner = nCorner;
    return options;
}

void CVXSPanelLabelOptions::store() const
{
    CVXSSettings* pSettings = CVXPreference::getSettings();
    pSettings->setValue(kLowerCase, bLowerCase);
    pSettings->setValue(kBold, bBold);
    pSettings->setValue(kPoints, dPoints);
    pSettings->setValue(kCorner, nCorner);
    pSettings->sync();
}

CVXSPanelLabel CVXSPanelLabelOptions::labelFor(int nPanel) const
{
    CVXSPanelLabel label;
    label.strText = CVXSPanelLabel::letters(nPanel, bLowerCase);
    label.bBold = bBold;
    label.dPoints = dPoints;
    label.nCorner = nCorner;
    return label;
}

void CVXSPanelLabelOptions::letter(const QList<CVXSLayoutItemImage*>& images) const
{
    const QList<CVXSLayoutItemImage*> ordered = CVXSPanelOrder::readingOrder(images);
    for (int i = 0; i < ordered.size(); ++i) {
        CVXSItemFigure figure = CVXSItemFigure::of(*ordered[i]);
        figure.panelLabel = labelFor(i + 1);
        figure.applyTo(*ordered[i]);
    }
}

bool CVXSPanelLabelOptions::operator==(const CVXSPanelLabelOptions& other) const
{
    return bLowerCase == other.bLowerCase && bBold == other.bBold && dPoints == other.dPoints
        && nCorner == other.nCorner;
}
