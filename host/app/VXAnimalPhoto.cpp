#include "VXAnimalPhoto.h"

#include "VXSampleNoise.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>

namespace {
constexpr double kSensorNoise = 3.0;
} // namespace

QImage CVXAnimalPhoto::render(const QSize& size, double dBrightness, quint32 nSeed)
{
    QImage image(size, QImage::Format_RGB32);
    paintStage(image);
    paintMouse(image);
    applyBrightnessAndNoise(image, dBrightness, nSeed);
    return image;
}

void CVXAnimalPhoto::paintStage(QImage& image)
{
    QPainter painter(&image);
    QLinearGradient light(0, 0, 0, image.height());
    light.setColorAt(0, QColor(70, 70, 70));
    light.setColorAt(1, QColor(40, 40, 40));
    painter.fillRect(image.rect(), light);
}

void CVXAnimalPhoto::paintMouse(QImage& image)
{
    const double w = image.width();
    const double h = image.height();
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);

    painter.setPen(QPen(QColor(150, 150, 150), w * 0.025, Qt::SolidLine, Qt::RoundCap));
    QPainterPath tail(QPointF(0.5 * w, 0.8 * h));
    tail.cubicTo(0.52 * w, 0.92 * h, 0.66 * w, 0.9 * h, 0.7 * w, 0.99 * h);
    painter.drawPath(tail);

    // Fur catches more light along the back than at the flanks.
    QRadialGradient fur(QPointF(0.5 * w, 0.45 * h), 0.35 * h);
    fur.setColorAt(0, QColor(190, 190, 190));
    fur.setColorAt(1, QColor(120, 120, 120));
    painter.setPen(Qt::NoPen);
    painter.setBrush(fur);
    painter.drawEllipse(QPointF(0.5 * w, 0.55 * h), 0.2 * w, 0.28 * h);
    painter.drawEllipse(QPointF(0.5 * w, 0.22 * h), 0.12 * w, 0.12 * h);
    painter.drawEllipse(QPointF(0.4 * w, 0.13 * h), 0.05 * w, 0.05 * w);
    painter.drawEllipse(QPointF(0.6 * w, 0.13 * h), 0.05 * w, 0.05 * w);

    painter.setBrush(QColor(30, 30, 30));
    painter.drawEllipse(QPointF(0.45 * w, 0.2 * h), 0.012 * w, 0.012 * w);
    painter.drawEllipse(QPointF(0.55 * w, 0.2 * h), 0.012 * w, 0.012 * w);
}

void CVXAnimalPhoto::applyBrightnessAndNoise(QImage& image, double dBrightness, quint32 nSeed)
{
    CVXSampleNoise noise(nSeed);
    for (int y = 0; y < image.height(); ++y) {
        auto* pLine = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int nGrey = qBound(0, qRound(qGray(pLine[x]) * dBrightness + noise.next(kSensorNoise)), 255);
            pLine[x] = qRgb(nGrey, nGrey, nGrey);
        }
    }
}
