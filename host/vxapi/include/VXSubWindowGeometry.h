#pragma once

#include "VxApiGlobal.h"

#include <QPoint>
#include <QRect>
#include <QSize>

class QMdiSubWindow;

// Geometry of the workspace's sub-windows.
class VXAPI_EXPORT CVXSubWindowGeometry
{
public:
    // Resizes the sub-window so that its content gets exactly contentSize. The sub-window
    // must already be in its area: only there does it know its frame.
    static void resizeForContent(QMdiSubWindow* pSubWindow, const QSize& contentSize);
    // What the frame adds to the content's size.
    static QSize frameExtent(const QMdiSubWindow* pSubWindow);
    // The top-left position that keeps a window of this size inside the room, as close to
    // wanted as possible; a window larger than the room keeps its top-left corner in it.
    static QPoint keptInside(const QRect& room, const QSize& size, const QPoint& wanted);
};
