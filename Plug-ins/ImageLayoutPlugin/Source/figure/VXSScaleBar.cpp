#include "figure/VXSScaleBar.h"

#include <cmath>

double CVXSScaleBar::autoLengthMm(double dWidthMm)
{
    if (!(dWidthMm > 0.0) || !std::isfinite(dWidthMm))
        return 0.0;
    const double dLimit = dWidthMm / 4.0;
    // A hair below the limit counts as the limit: a quarter of 80 mm is 20 mm, not 10.
    const double dDecade = std::pow(10.0, std::floor(std::log10(dLimit * (1.0 + 1e-9))));
    for (const double dStep : {5.0, 2.0, 1.0}) {
        if (dStep * dDecade <= dLimit * (1.0 + 1e-9))
            return dStep * dDecade;
    }
    return dDecade;
}

double CVXSScaleBar::lengthMm(double dWidthMm) const
{
    return dLengthMm > 0.0 ? dLengthMm : autoLengthMm(dWidthMm);
}

bool CVXSScaleBar::operator==(const CVXSScaleBar& other) const
{
    return bShown == other.bShown && dLengthMm == other.dLengthMm && nCorner == other.nCorner
        && colour == other.colour && dThickness == other.dThickness && bLabel == other.bLabel;
}
