#include "VXSWorkspace.h"

#include "VXSChildWindow.h"
#include "VXSSequenceWindow.h"
#include "VXUtilityFns.h"

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace {
CVXSChildWindow* childWindowOf(QMdiSubWindow* pWindow)
{
    return pWindow ? qobject_cast<CVXSChildWindow*>(pWindow->widget()) : nullptr;
}

// A closed window may linger until its deferred deletion; hidden means closed. A minimized
// sub-window hides its content too, yet the window is still open.
bool isOpenIn(const CVXSChildWindow* pChild, const QMdiArea* pArea)
{
    if (pChild->isVisibleTo(pArea))
        return true;
    const auto* pSubWindow = qobject_cast<const QMdiSubWindow*>(pChild->parentWidget());
    return pSubWindow && pSubWindow->isMinimized() && pSubWindow->isVisibleTo(pArea);
}
} // namespace

CVXSWorkspace* CVXSWorkspace::instance()
{
    // Queued connections and signal spies need the argument type of toolActionAnnounced.
    static const int s_nActionMetaType = qRegisterMetaType<QAction*>();
    Q_UNUSED(s_nActionMetaType)
    static CVXSWorkspace workspace;
    return &workspace;
}

void CVXSWorkspace::setMdiArea(QMdiArea* pArea)
{
    if (m_pArea)
        disconnect(m_pArea, nullptr, this, nullptr);
    m_pArea = pArea;
    m_pActiveChild = nullptr;
    if (pArea)
        connect(pArea, &QMdiArea::subWindowActivated, this, &CVXSWorkspace::onSubWindowActivated);
}

QMdiArea* CVXSWorkspace::mdiArea() const
{
    return m_pArea;
}

CVXSChildWindow* CVXSWorkspace::activeChildWindow() const
{
    if (!m_pArea)
        return nullptr;
    if (m_pActiveChild && isOpenIn(m_pActiveChild, m_pArea))
        return m_pActiveChild;
    return childWindowOf(m_pArea->currentSubWindow());
}

void CVXSWorkspace::announceToolAction(QAction* pAction, bool bEnabled, bool bChecked)
{
    if (!pAction)
        return;
    CVXUtilityFns::registerAction(pAction);
    pAction->setEnabled(bEnabled);
    pAction->setChecked(bChecked);
    emit toolActionAnnounced(pAction, bEnabled, bChecked);
}

void CVXSWorkspace::deliverPrintPixmap(const QPixmap& pixmap)
{
    emit printPixmapDelivered(pixmap);
}

void CVXSWorkspace::notifyToolWindowAdded(QMdiSubWindow* pSubWindow)
{
    emit toolWindowAdded(pSubWindow);
}

void CVXSWorkspace::notifyWindowOpened(CVXSChildWindow* pWindow)
{
    if (auto* pSequence = qobject_cast<CVXSSequenceWindow*>(pWindow))
        emit sequenceAdded(pSequence->sequenceDataset());
    else if (pWindow)
        emit datasetChanged(pWindow->dataset());
}

void CVXSWorkspace::notifyWindowChanged(CVXSChildWindow* pWindow)
{
    if (auto* pSequence = qobject_cast<CVXSSequenceWindow*>(pWindow))
        emit sequenceChanged(pSequence->sequenceDataset());
    else if (pWindow)
        emit datasetChanged(pWindow->dataset());
}

void CVXSWorkspace::notifyWindowClosed(CVXSChildWindow* pWindow)
{
    if (auto* pSequence = qobject_cast<CVXSSequenceWindow*>(pWindow))
        emit sequenceRemoved(pSequence->sequenceDataset());
    else if (pWindow)
        emit datasetRemoved(pWindow->dataset());
}

void CVXSWorkspace::onSubWindowActivated(QMdiSubWindow* pWindow)
{
    // Activating a tool window must not make the image window the user worked in inactive.
    if (CVXSChildWindow* pChild = childWindowOf(pWindow)) {
        m_pActiveChild = pChild;
        notifyWindowChanged(pChild);
    }
}
