#include "VXSubWindowGeometry.h"

#include <QMdiSubWindow>

void CVXSubWindowGeometry::resizeForContent(QMdiSubWindow* pSubWindow, const QSize& contentSize)
{
    const QMargins frame = pSubWindow->contentsMargins();
    pSubWindow->resize(contentSize + QSize(frame.left() + frame.right(), frame.top() + frame.bottom()));
}
