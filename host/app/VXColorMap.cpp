#include "VXColorMap.h"

#include <QPainter>
#include <QtGlobal>

namespace {

// Each channel ramps up over its own part of the scale, red first, blue last.
int ramp(double dValue, double dStart, double dLength)
{
    return qRound(qBound(0.0, (dValue - dStart) / dLength, 1.0) * 255.0);
}

} // namespace

QRgb CVXColorMap::hot(double dValue)
{
    const double dClamped = qBound(0.0, dValue, 1.0);
    return qRgb(ramp(dClamped, 0.0, 0.375), ramp(dClamped, 0.375, 0.375), ramp(dClamped, 0.75, 0.25));
}

void CVXColorMap::drawHotScale(QPainter& painter, const QRect& rect, int nTicks)
{
    if (rect.height() < 2)
        return;
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        const double dValue = double(rect.bottom() - y) / (rect.height() - 1);
        painter.setPen(QColor(hot(dValue)));
        painter.drawLine(rect.left(), y, rect.right(), y);
    }
    painter.setPen(Qt::white);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect.adjusted(-1, -1, 0, 0));
    for (int i = 0; i < nTicks; ++i) {
        const int y = rect.top() + qRound(double(i) * (rect.height() - 1) / qMax(1, nTicks - 1));
        painter.drawLine(rect.right() + 1, y, rect.right() + 5, y);
    }
}
