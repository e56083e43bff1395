#include "VXAppIcon.h"

#include "VXColorMap.h"

#include <QPainter>
#include <QRadialGradient>

QIcon CVXAppIcon::create()
{
    QIcon icon;
    for (int nSide : {16, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(render(nSide));
    return icon;
}

QPixmap CVXAppIcon::render(int nSide)
{
    QPixmap pixmap(nSide, nSide);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF frame(0.5, 0.5, nSide - 1.0, nSide - 1.0);
    const double dCorner = nSide * 0.18;

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(24, 34, 52));
    painter.drawRoundedRect(frame, dCorner, dCorner);

    const QPointF centre = frame.center();
    QRadialGradient glow(centre + QPointF(nSide * 0.08, nSide * 0.06), nSide * 0.3);
    glow.setColorAt(0, QColor(CVXColorMap::hot(1.0)));
    glow.setColorAt(0.4, QColor(CVXColorMap::hot(0.6)));
    glow.setColorAt(1, QColor(CVXColorMap::hot(0.15)));
    painter.setBrush(glow);
    painter.setPen(QPen(QColor(200, 215, 235), qMax(1.0, nSide * 0.06)));
    painter.drawEllipse(centre, nSide * 0.32, nSide * 0.32);
    return pixmap;
}
