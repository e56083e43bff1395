#pragma once

#include <QImage>
#include <QString>

#include <functional>

class CVXSChildWindow;

// Takes the current content of one of the host's image or sequence windows as an image:
// image windows and the "3D View" and "Sequence View" tabs are grabbed directly (a
// minimized sequence window is shown for the grab where it cannot grab minimized); any
// other tab comes through the clipboard, which the host fills on request.
class CVXSActiveDatasetGrabber
{
public:
    // Asks the host to put the named tab's content on the clipboard.
    using TabCopyRequest = std::function<void(const QString& strTabName)>;

    explicit CVXSActiveDatasetGrabber(TabCopyRequest requestTabCopy);

    QImage grab(CVXSChildWindow* pChild) const;

private:
    static QImage grabChildImage(CVXSChildWindow* pChild, bool bRestoreMinimized);
    QImage imageThroughClipboard(const QString& strTabName) const;

    TabCopyRequest m_requestTabCopy;
};
