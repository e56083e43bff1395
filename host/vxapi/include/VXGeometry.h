#pragma once

#include "VxApiGlobal.h"

// Rotates the vector (x, y) in place about the origin by dAngle degrees
// (counter-clockwise in a y-up system, clockwise on screen where y points down).
VXAPI_EXPORT void rotatePoint(double& x, double& y, double dAngle);
