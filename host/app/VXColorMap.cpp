#include "VXColorMap.h"

#include <VXColourTable.h>

#include <QPainter>

void CVXColorMap::drawHotScale(QPainter& painter, const QRect& rect, int nTicks)
{
    if (rect.height() < 2)
        return;
    const CVXColourTable hot(QString::fromLatin1(CVXColourTable::Hot));
    for (int y = rect.top(); y <= rect.bottom(); ++y) {
        const double dValue = double(rect.bottom() - y) / (rect.height() - 1);
        painter.setPen(QColor(hot.colour(dValue)));
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
