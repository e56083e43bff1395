#include "VXSubWindowGeometry.h"

#include <QMdiSubWindow>

void CVXSubWindowGeometry::resizeForContent(QMdiSubWindow* pSubWindow, const QSize& contentSize)
{
    pSubWindow->resize(contentSize + frameExtent(pSubWindow));
}

QSize CVXSubWindowGeometry::frameExtent(const QMdiSubWindow* pSubWindow)
{
    const QMargins frame = pSubWindow->contentsMargins();
    return QSize(frame.left() + frame.right(), frame.top() + frame.bottom());
}

QPoint CVXSubWindowGeometry::keptInside(const QRect& room, const QSize& size, const QPoint& wanted)
{
    const int nX = qMax(room.left(), qMin(wanted.x(), room.right() + 1 - size.width()));
    const int nY = qMax(room.top(), qMin(wanted.y(), room.bottom() + 1 - size.height()));
    return QPoint(nX, nY);
}
