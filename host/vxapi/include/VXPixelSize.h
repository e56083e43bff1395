#pragma once

#include "VxApiGlobal.h"

#include <QCoreApplication>
#include <QImage>
#include <QString>
#include <QVector>

// The width of one source pixel on the object, in millimetres, carried with an image as the
// text key "Pixel Size" (a plain number), so that scale bars can be measured wherever the
// image goes. The image readers set it from the file's own calibration; the user gives it
// for images without one.
class VXAPI_EXPORT CVXPixelSize
{
    Q_DECLARE_TR_FUNCTIONS(CVXPixelSize)
public:
    static constexpr const char* Key = "Pixel Size";
    // Above a metre per pixel a value is taken for a mistake.
    static constexpr double MaxMm = 1000.0;

    // The image's pixel size in mm, 0 when it carries none that is usable.
    static double of(const QImage& image);
    static void set(QImage& image, double dMm);
    // Whether the value is a pixel size or length that can be used: a number above 0, at
    // most a metre.
    static bool isUsable(double dMm);

    // A length with its unit ("0.05mm", "50 um", "50 µm", "0.5cm", "200nm") in mm; false
    // with strError saying why for anything else, for 0, negative values and values above
    // a metre.
    static bool parse(const QString& strText, double& dMm, QString& strError);
    // The value with its unit in mm (nm, µm, mm, cm or m); the factor of "mm" is 1.
    static bool unitFactor(const QString& strUnit, double& dMmPerUnit);
    // The length in the smallest unit (nm, µm, mm, cm) that keeps its number below 1000:
    // "20 mm", "500 µm".
    static QString text(double dMm);
    // Why a value is refused; empty when it is usable.
    static QString refusal(double dMm);
};
