#pragma once

#include "host/VXSActiveDatasetGrabber.h"

#include <QCoreApplication>
#include <QImage>

class QWidget;
class CVXSLayoutManager;
class CVXSLayoutView;

// Puts an image into the layout as a new image item, into the first empty cell of a grid
// style or freely, and selects it with its handles shown.
class CVXSLayoutImagePaster
{
    // The texts are the window's and are translated in its context.
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutWindow)
public:
    // Either may be null; then nothing is pasted.
    CVXSLayoutImagePaster(CVXSLayoutManager* pMngr, CVXSLayoutView* pView);

    // In a grid style, whether a cell is still empty; when none is, says so over pParent.
    bool hasRoom(int nStyle, QWidget* pParent) const;
    // A null image adds nothing.
    void add(const QImage& image) const;
    // The current content of the host's active image or sequence window; null without one.
    static QImage activeDatasetImage(const CVXSActiveDatasetGrabber::TabCopyRequest& requestTabCopy);

private:
    CVXSLayoutManager* m_pMngr = nullptr; // not owned
    CVXSLayoutView* m_pView = nullptr;    // not owned
};
