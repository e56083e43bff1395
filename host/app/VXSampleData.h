#pragma once

#include <QImage>
#include <QVector>

// The built-in sample images, generated rather than shipped, so that every installation
// can show the workflow without data. Each call draws the same pixels. Every image names
// the sample as its source (text key CVXImageProvenance::Source); frames their number.
class CVXSampleData
{
public:
    // A 512 x 768 radiograph of a small-animal phantom with calibration rods, as raw
    // 16-bit detector counts (Grayscale16): bone attenuates more than soft tissue.
    static QImage xrayPhantom();
    // A 480 x 640 luminescence image: grey photograph of the animal, the signal in the
    // "hot" pseudo-colour scale on top and the scale bar at the right.
    static QImage luminescence();
    // Frames of 320 x 320 pixels of a fluorescent dye taken up and washed out by an
    // organ: the signal rises to a peak about a third of the way through, then decays.
    static QVector<QImage> fluorescenceSequence(int nFrames = 12);
};
