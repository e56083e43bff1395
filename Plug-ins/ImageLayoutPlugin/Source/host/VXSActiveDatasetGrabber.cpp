#include "host/VXSActiveDatasetGrabber.h"

#include <VXSChildWindow.h>
#include <VXSSequenceWindow.h>

#include <QClipboard>
#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QThread>

namespace {

// Tabs of a sequence window whose content can be grabbed directly.
const QString ProjectionTabName = QStringLiteral("3D View");
const QString SequenceTabName = QStringLiteral("Sequence View");
// How long the host gets to put a tab's content on the clipboard.
constexpr unsigned long ClipboardWaitMs = 200;
// canGrabMinimized's mode for the picture as drawn.
constexpr int GrabDisplayedMode = 1;

// The widget whose window state says whether the child is minimized: its MDI frame.
QWidget* childFrame(CVXSChildWindow* pChild)
{
    if (auto* pSubWindow = qobject_cast<QMdiSubWindow*>(pChild->parentWidget()))
        return pSubWindow;
    return pChild;
}

} // namespace

CVXSActiveDatasetGrabber::CVXSActiveDatasetGrabber(TabCopyRequest requestTabCopy)
    : m_requestTabCopy(std::move(requestTabCopy))
{
}

QImage CVXSActiveDatasetGrabber::grab(CVXSChildWindow* pChild) const
{
    auto* pSequence = pChild->isSequenceWindow() ? qobject_cast<CVXSSequenceWindow*>(pChild) : nullptr;
    if (!pSequence)
        return grabChildImage(pChild, false);
    const QString strTabName = pSequence->getCurrentTabName();
    if (strTabName.compare(ProjectionTabName, Qt::CaseInsensitive) == 0
        || strTabName.compare(SequenceTabName, Qt::CaseInsensitive) == 0)
        return grabChildImage(pSequence, true);
    return imageThroughClipboard(strTabName);
}

QImage CVXSActiveDatasetGrabber::grabChildImage(CVXSChildWindow* pChild, bool bRestoreMinimized)
{
    const bool bGrabDisplayed = pChild->getViewState().m_bGrabDisplayed;
    QWidget* pFrame = childFrame(pChild);
    if (!bRestoreMinimized || !pFrame->isMinimized() || pChild->canGrabMinimized(GrabDisplayedMode))
        return pChild->grabImage(bGrabDisplayed);
    // A minimized window draws nothing: show it for the grab and minimize it again.
    pFrame->setWindowState((pFrame->windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
    const QImage image = pChild->grabImage(bGrabDisplayed);
    pFrame->showMinimized();
    return image;
}

QImage CVXSActiveDatasetGrabber::imageThroughClipboard(const QString& strTabName) const
{
    // The host puts the tab's content on the clipboard; what the user had there is put back.
    QClipboard* pClipboard = QGuiApplication::clipboard();
    const QImage savedImage = pClipboard->image();
    const QString strSavedText = savedImage.isNull() ? pClipboard->text() : QString();
    m_requestTabCopy(strTabName);
    QThread::msleep(ClipboardWaitMs);
    const QImage image = pClipboard->image();
    if (!savedImage.isNull())
        pClipboard->setImage(savedImage);
    else if (!strSavedText.isEmpty())
        pClipboard->setText(strSavedText);
    else
        pClipboard->clear();
    return image;
}
