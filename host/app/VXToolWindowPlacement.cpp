#include "VXToolWindowPlacement.h"

#include <VXSSettings.h>
#include <VXSWorkspace.h>
#include <VXSubWindowGeometry.h>

#include <QEvent>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace {
// A workspace that has not been laid out yet reports a tiny viewport.
const QSize kSmallestRoom(200, 150);
const QString kKeyPrefix = QStringLiteral("ToolWindows/");
} // namespace

CVXToolWindowPlacement::CVXToolWindowPlacement(CVXSSettings& settings, QMdiArea* pArea, QObject* pParent)
    : QObject(pParent)
    , m_settings(settings)
    , m_pArea(pArea)
{
    connect(CVXSWorkspace::instance(), &CVXSWorkspace::toolWindowAdded, this, &CVXToolWindowPlacement::watch);
}

QString CVXToolWindowPlacement::settingsKey(const QString& strWindowName)
{
    return kKeyPrefix + strWindowName;
}

bool CVXToolWindowPlacement::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    // A sub-window being destroyed is no longer one, yet still sends events on its way out.
    auto* pSubWindow = qobject_cast<QMdiSubWindow*>(pWatched);
    if (!pSubWindow)
        return QObject::eventFilter(pWatched, pEvent);
    switch (pEvent->type()) {
    case QEvent::Show:
        // Show comes before the window is drawn, so it appears in its place at once.
        if (m_unplaced.remove(pSubWindow))
            place(pSubWindow);
        break;
    case QEvent::Move:
    case QEvent::Resize:
        // Only what the user sees counts, and only a window in its normal state: a tool sizes
        // its window while it is still hidden.
        if (pSubWindow->isVisible() && !pSubWindow->isMinimized() && !pSubWindow->isMaximized()
            && !pSubWindow->isShaded())
            store(pSubWindow);
        break;
    default:
        break;
    }
    return QObject::eventFilter(pWatched, pEvent);
}

void CVXToolWindowPlacement::watch(QMdiSubWindow* pSubWindow)
{
    if (pSubWindow->mdiArea() != m_pArea)
        return;
    m_unplaced.insert(pSubWindow);
    connect(pSubWindow, &QObject::destroyed, this, [this](QObject* pGone) { m_unplaced.remove(pGone); });
    pSubWindow->installEventFilter(this);
}

void CVXToolWindowPlacement::place(QMdiSubWindow* pSubWindow) const
{
    const QString strKey = settingsKeyOf(pSubWindow);
    const QRect stored = strKey.isEmpty() ? QRect() : m_settings.value(strKey).toRect();
    QRect wanted = stored;
    if (!stored.isValid()) {
        const QSize asked = pSubWindow->widget()->sizeHint() + CVXSubWindowGeometry::frameExtent(pSubWindow);
        wanted = QRect(pSubWindow->pos(), pSubWindow->size().expandedTo(asked));
    }
    const QRect inside = room();
    if (inside.isValid()) {
        const QSize size = wanted.size().boundedTo(inside.size()).expandedTo(pSubWindow->minimumSizeHint());
        wanted = QRect(CVXSubWindowGeometry::keptInside(inside, size, wanted.topLeft()), size);
    }
    pSubWindow->setGeometry(wanted);
}

void CVXToolWindowPlacement::store(const QMdiSubWindow* pSubWindow) const
{
    const QString strKey = settingsKeyOf(pSubWindow);
    if (!strKey.isEmpty())
        m_settings.setValue(strKey, pSubWindow->geometry());
}

QRect CVXToolWindowPlacement::room() const
{
    const QRect viewport = m_pArea->viewport()->rect();
    const bool bLaidOut = viewport.width() >= kSmallestRoom.width() && viewport.height() >= kSmallestRoom.height();
    return bLaidOut ? viewport : QRect();
}

QString CVXToolWindowPlacement::settingsKeyOf(const QMdiSubWindow* pSubWindow)
{
    const QWidget* pContent = pSubWindow->widget();
    return pContent && !pContent->objectName().isEmpty() ? settingsKey(pContent->objectName()) : QString();
}
