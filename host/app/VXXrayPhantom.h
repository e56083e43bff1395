#pragma once

#include <QImage>

// A radiograph of a small-animal phantom lying prone, head at the top: soft tissue,
// lungs, skeleton and three calibration rods of rising density at the right.
class CVXXrayPhantom
{
public:
    // Raw detector counts, 512 x 768 pixels, Format_Grayscale16; dense matter is bright.
    static QImage render();
};
