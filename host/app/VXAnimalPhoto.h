#pragma once

#include <QImage>
#include <QSize>

// The grey photograph that optical images are overlaid on: a mouse lying on the imaging
// stage, seen from above, head at the top, centred in the picture.
class CVXAnimalPhoto
{
public:
    // dBrightness scales the picture: 1 for a lit photograph, less for frames taken in
    // the dark. The seed fixes the sensor noise.
    static QImage render(const QSize& size, double dBrightness, quint32 nSeed);

private:
    static void paintStage(QImage& image);
    static void paintMouse(QImage& image);
    static void applyBrightnessAndNoise(QImage& image, double dBrightness, quint32 nSeed);
};
