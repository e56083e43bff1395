#include "figure/VXSFigurePage.h"

#include <QGraphicsScene>
#include <QVariant>

#include <cmath>

namespace {
const char* const FigurePageProperty = "vxFigurePage";
constexpr double MmPerInch = 25.4;
} // namespace

CVXSFigurePage CVXSFigurePage::of(const QGraphicsScene& scene)
{
    const QVariant value = scene.property(FigurePageProperty);
    return value.isValid() ? value.value<CVXSFigurePage>() : CVXSFigurePage();
}

void CVXSFigurePage::applyTo(QGraphicsScene& scene) const
{
    scene.setProperty(FigurePageProperty, QVariant::fromValue(*this));
}

double CVXSFigurePage::mmPerUnit(double dPageWidth) const
{
    return dPageWidth > 0 ? dWidthMm / dPageWidth : 0.0;
}

QSizeF CVXSFigurePage::sizeMm(const QSizeF& page) const
{
    const double dScale = mmPerUnit(page.width());
    return QSizeF(dWidthMm, page.height() * dScale);
}

int CVXSFigurePage::pixelWidth() const
{
    return int(std::lround(dWidthMm / MmPerInch * nDpi));
}

QSize CVXSFigurePage::pixelSize(const QSizeF& page) const
{
    const int nWidth = pixelWidth();
    return QSize(nWidth, page.width() > 0 ? int(std::lround(nWidth * page.height() / page.width())) : 0);
}

bool CVXSFigurePage::operator==(const CVXSFigurePage& other) const
{
    return dWidthMm == other.dWidthMm && nDpi == other.nDpi;
}
