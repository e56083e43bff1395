#include "VXSampleData.h"

#include "VXAnimalPhoto.h"
#include "VXColorMap.h"
#include "VXXrayPhantom.h"

#include <VXColourTable.h>
#include <VXImageProvenance.h>

#include <QPainter>
#include <QtMath>

namespace {

const QSize kLuminescenceSize(480, 640);
const QSize kFluorescenceSize(320, 320);
constexpr quint32 kLuminescenceSeed = 1202;
constexpr quint32 kFluorescenceSeed = 1203;

// Names the sample as the image's source, so that figures made from it say so.
QImage named(QImage image, const QString& strSample)
{
    image.setText(QString::fromLatin1(CVXImageProvenance::Source), strSample);
    return image;
}

QRgb hot(double dSignal)
{
    static const CVXColourTable s_hot(QString::fromLatin1(CVXColourTable::Hot));
    return s_hot.colour(dSignal);
}

double gaussian(const QPointF& point, const QPointF& centre, double dSigma)
{
    const QPointF d = point - centre;
    return qExp(-QPointF::dotProduct(d, d) / (2.0 * dSigma * dSigma));
}

QRgb blend(QRgb base, QRgb over, double dAlpha)
{
    auto mix = [dAlpha](int nBase, int nOver) { return qRound(nBase + (nOver - nBase) * dAlpha); };
    return qRgb(mix(qRed(base), qRed(over)), mix(qGreen(base), qGreen(over)), mix(qBlue(base), qBlue(over)));
}

QRgb addLight(QRgb base, QRgb light)
{
    return qRgb(qMin(255, qRed(base) + qRed(light)), qMin(255, qGreen(base) + qGreen(light)),
                qMin(255, qBlue(base) + qBlue(light)));
}

// A tumour on the flank and a weaker metastasis near the shoulder, normalised to 0..1.
double tumourSignal(const QPointF& point)
{
    return qMin(1.0, gaussian(point, QPointF(280, 400), 38) + 0.45 * gaussian(point, QPointF(200, 270), 20));
}

// How much dye the organ holds at time t (0..1): a gamma-variate bolus peaking at 0.35.
double uptake(double t)
{
    const double dRelative = t / 0.35;
    return dRelative * dRelative * qExp(2.0 * (1.0 - dRelative));
}

QImage fluorescenceFrame(double dAmplitude, quint32 nSeed)
{
    // Excitation light is filtered out, so only a faint image of the animal remains.
    QImage frame = CVXAnimalPhoto::render(kFluorescenceSize, 0.3, nSeed);
    for (int y = 0; y < frame.height(); ++y) {
        auto* pLine = reinterpret_cast<QRgb*>(frame.scanLine(y));
        for (int x = 0; x < frame.width(); ++x) {
            const double dSignal = dAmplitude * gaussian(QPointF(x, y), QPointF(175, 190), 28);
            pLine[x] = addLight(pLine[x], hot(dSignal));
        }
    }
    return frame;
}

} // namespace

QImage CVXSampleData::xrayPhantom()
{
    return named(CVXXrayPhantom::render(), QStringLiteral("Sample X-ray phantom (generated)"));
}

QImage CVXSampleData::luminescence()
{
    // Below this the camera sees only noise, so the overlay leaves the photograph clear.
    constexpr double kThreshold = 0.1;
    QImage image = CVXAnimalPhoto::render(kLuminescenceSize, 1.0, kLuminescenceSeed);
    for (int y = 0; y < image.height(); ++y) {
        auto* pLine = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const double dSignal = tumourSignal(QPointF(x, y));
            if (dSignal < kThreshold)
                continue;
            const double dAlpha = 0.9 * qMin(1.0, (dSignal - kThreshold) / kThreshold);
            pLine[x] = blend(pLine[x], hot(0.2 + 0.8 * dSignal), dAlpha);
        }
    }
    {
        QPainter painter(&image);
        CVXColorMap::drawHotScale(painter, QRect(440, 120, 16, 400), 5);
    }
    return named(image, QStringLiteral("Sample luminescence image (generated)"));
}

QVector<QImage> CVXSampleData::fluorescenceSequence(int nFrames)
{
    QVector<QImage> frames;
    for (int i = 0; i < nFrames; ++i) {
        const double t = nFrames > 1 ? double(i) / (nFrames - 1) : 0.0;
        QImage frame = named(fluorescenceFrame(uptake(t), kFluorescenceSeed + quint32(i)),
                             QStringLiteral("Sample fluorescence sequence (generated)"));
        frame.setText(QString::fromLatin1(CVXImageProvenance::Frame), QString::number(i + 1));
        frame.setText(QString::fromLatin1(CVXImageProvenance::FrameCount), QString::number(nFrames));
        frames.append(frame);
    }
    return frames;
}
