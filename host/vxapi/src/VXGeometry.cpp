#include "VXGeometry.h"

#include <QtMath>

void rotatePoint(double& x, double& y, double dAngle)
{
    const double dRadians = qDegreesToRadians(dAngle);
    const double dCos = std::cos(dRadians);
    const double dSin = std::sin(dRadians);
    const double dX = x * dCos - y * dSin;
    y = x * dSin + y * dCos;
    x = dX;
}
