#pragma once

#include <QSize>

class QMdiSubWindow;

// Geometry of the workspace's sub-windows.
class CVXSubWindowGeometry
{
public:
    // Resizes the sub-window so that its content gets exactly contentSize. The sub-window
    // must already be in its area: only there does it know its frame.
    static void resizeForContent(QMdiSubWindow* pSubWindow, const QSize& contentSize);
};
