#include "VXXrayPhantom.h"

#include "VXSampleNoise.h"

#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

namespace {

const QSize kPhantomSize(512, 768);
constexpr quint32 kPhantomSeed = 1201;

// Detector counts: what air gives, what one unit of drawn attenuation adds, and noise.
constexpr double kAirCounts = 2000.0;
constexpr double kCountsPerLevel = 150.0;
constexpr double kDetectorNoise = 250.0;

QColor level(int nLevel, int nAlpha = 255)
{
    return QColor(nLevel, nLevel, nLevel, nAlpha);
}

// An ellipse filled brighter in the middle, as a rounded body is thicker there.
void paintRoundedPart(QPainter& painter, const QPointF& centre, double rx, double ry, int nInner, int nOuter)
{
    painter.save();
    painter.translate(centre);
    painter.scale(1.0, ry / rx);
    QRadialGradient thickness(QPointF(0, 0), rx);
    thickness.setColorAt(0, level(nInner));
    thickness.setColorAt(1, level(nOuter));
    painter.setBrush(thickness);
    painter.drawEllipse(QPointF(0, 0), rx, rx);
    painter.restore();
}

// The left half of the paired structures; the caller mirrors it for the right half.
void paintLeftSoftTissue(QPainter& painter)
{
    painter.setBrush(level(60));
    painter.drawEllipse(QPointF(160, 270), 28, 16);
    painter.drawEllipse(QPointF(165, 570), 30, 22);
    // Air in the lungs lets more radiation through.
    painter.setBrush(level(35, 110));
    painter.drawEllipse(QPointF(222, 300), 32, 55);
}

void paintLeftBones(QPainter& painter)
{
    for (int i = 0; i < 8; ++i) {
        const double y = 245 + i * 17;
        const double dSpread = 85 - i * 3;
        QPainterPath rib(QPointF(246, y));
        rib.quadTo(256 - dSpread, y - 10, 256 - dSpread + 5, y + 40);
        painter.strokePath(rib, QPen(level(55), 3));
    }
    painter.setPen(QPen(level(60), 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(256, 235), QPointF(200, 250));
    painter.setPen(QPen(level(80), 6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(205, 255), QPointF(165, 280));
    painter.drawLine(QPointF(236, 605), QPointF(178, 575));
    painter.setPen(QPen(level(70), 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(165, 280), QPointF(150, 300));
    painter.drawLine(QPointF(178, 575), QPointF(160, 612));
    painter.setPen(QPen(level(70), 5));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(QPointF(232, 590), 18, 32);
    painter.setPen(Qt::NoPen);
}

void paintMirrored(QPainter& painter, void (*paintLeft)(QPainter&))
{
    paintLeft(painter);
    painter.save();
    painter.translate(kPhantomSize.width(), 0);
    painter.scale(-1, 1);
    paintLeft(painter);
    painter.restore();
}

QPainterPath tailPath()
{
    QPainterPath tail(QPointF(256, 600));
    tail.cubicTo(270, 690, 320, 700, 330, 760);
    return tail;
}

void paintSoftTissue(QPainter& painter)
{
    painter.setPen(Qt::NoPen);
    paintRoundedPart(painter, QPointF(256, 150), 62, 80, 85, 50);
    paintRoundedPart(painter, QPointF(256, 400), 105, 210, 95, 55);
    paintMirrored(painter, paintLeftSoftTissue);
    painter.strokePath(tailPath(), QPen(level(55), 14, Qt::SolidLine, Qt::RoundCap));
}

// Bones add their attenuation to the tissue around them.
void paintSkeleton(QPainter& painter)
{
    painter.setCompositionMode(QPainter::CompositionMode_Plus);
    painter.setPen(QPen(level(70), 6));
    painter.setBrush(level(25));
    painter.drawEllipse(QPointF(256, 145), 48, 64);
    painter.setPen(Qt::NoPen);
    painter.setBrush(level(85));
    for (int y = 215; y <= 600; y += 17)
        painter.drawRoundedRect(QRectF(245, y - 6, 22, 12), 3, 3);
    painter.setBrush(level(60));
    const QPainterPath tail = tailPath();
    for (double dAt = 0.1; dAt < 1.0; dAt += 0.07)
        painter.drawEllipse(tail.pointAtPercent(dAt), 4, 4);
    paintMirrored(painter, paintLeftBones);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

// Rods of known density beside the animal let the user check the grey scale.
void paintCalibrationRods(QPainter& painter)
{
    const int levels[] = {120, 170, 230};
    int x = 423;
    for (int nLevel : levels) {
        painter.setBrush(level(nLevel));
        painter.drawRoundedRect(QRectF(x, 100, 14, 560), 7, 7);
        x += 28;
    }
}

// A three-tap box filter along rows or columns.
void boxBlur(QVector<double>& values, int nWidth, int nHeight, bool bAlongRows)
{
    const QVector<double> source = values;
    const int nStep = bAlongRows ? 1 : nWidth;
    for (int y = 0; y < nHeight; ++y) {
        for (int x = 0; x < nWidth; ++x) {
            const bool bEdge = bAlongRows ? (x == 0 || x == nWidth - 1) : (y == 0 || y == nHeight - 1);
            const int i = y * nWidth + x;
            if (!bEdge)
                values[i] = (source[i - nStep] + source[i] + source[i + nStep]) / 3.0;
        }
    }
}

// Blurred a little, as the focal spot and the scintillator do, then read out with noise.
QImage detectorImage(const QImage& attenuation)
{
    const int nWidth = attenuation.width();
    const int nHeight = attenuation.height();
    QVector<double> values(nWidth * nHeight);
    for (int y = 0; y < nHeight; ++y) {
        for (int x = 0; x < nWidth; ++x)
            values[y * nWidth + x] = qRed(attenuation.pixel(x, y));
    }
    for (bool bAlongRows : {true, false, true, false})
        boxBlur(values, nWidth, nHeight, bAlongRows);
    CVXSampleNoise noise(kPhantomSeed);
    QImage counts(attenuation.size(), QImage::Format_Grayscale16);
    for (int y = 0; y < nHeight; ++y) {
        auto* pLine = reinterpret_cast<quint16*>(counts.scanLine(y));
        for (int x = 0; x < nWidth; ++x) {
            const double dCounts = kAirCounts + values[y * nWidth + x] * kCountsPerLevel + noise.next(kDetectorNoise);
            pLine[x] = quint16(qBound(0.0, dCounts, 65535.0));
        }
    }
    return counts;
}

} // namespace

QImage CVXXrayPhantom::render()
{
    QImage attenuation(kPhantomSize, QImage::Format_ARGB32_Premultiplied);
    attenuation.fill(Qt::black);
    QPainter painter(&attenuation);
    painter.setRenderHint(QPainter::Antialiasing);
    paintSoftTissue(painter);
    paintSkeleton(painter);
    paintCalibrationRods(painter);
    painter.end();
    return detectorImage(attenuation);
}
