#include "TestPictures.h"

#include <QRandomGenerator>

#include <cmath>

QImage solidImage(QSize size, QColor color, QImage::Format format)
{
    QImage image(size, format);
    image.fill(color);
    return image;
}

QImage greyImage(QSize size, int nLevel, QImage::Format format)
{
    return solidImage(size, QColor(nLevel, nLevel, nLevel), format);
}

QImage zonePlate(int nSide, QPointF centre, QImage::Format format)
{
    QImage image(nSide, nSide, QImage::Format_RGB32);
    const double k = M_PI / nSide;
    for (int y = 0; y < nSide; ++y) {
        auto* pLine = reinterpret_cast<QRgb*>(image.scanLine(y));
        const double dy2 = (y - centre.y()) * (y - centre.y());
        for (int x = 0; x < nSide; ++x) {
            const double r2 = (x - centre.x()) * (x - centre.x()) + dy2;
            const int nGrey = int(std::lround(127.5 + 127.5 * std::cos(k * r2)));
            pLine[x] = qRgb(nGrey, nGrey, nGrey);
        }
    }
    return image.convertToFormat(format);
}

QImage noiseImage(QSize size, quint32 nSeed)
{
    QImage image(size, QImage::Format_RGB32);
    QRandomGenerator random(nSeed);
    for (int y = 0; y < size.height(); ++y) {
        auto* pLine = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < size.width(); ++x)
            pLine[x] = 0xff000000u | (random.generate() & 0xffffffu);
    }
    return image;
}
