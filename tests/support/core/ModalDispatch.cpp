#include "ModalDispatch.h"

#include "ModalWatch.h"

#include <QApplication>
#include <QEvent>
#include <QWidget>

#include <algorithm>

void CModalDispatch::add(CModalWatch* pWatch)
{
    CModalDispatch& dispatch = instance();
    if (dispatch.m_watches.isEmpty())
        qApp->installEventFilter(&dispatch);
    dispatch.m_watches.append(pWatch);
}

void CModalDispatch::remove(CModalWatch* pWatch)
{
    CModalDispatch& dispatch = instance();
    dispatch.m_watches.removeAll(pWatch);
    if (dispatch.m_watches.isEmpty() && qApp)
        qApp->removeEventFilter(&dispatch);
}

CModalDispatch& CModalDispatch::instance()
{
    // Never deleted, so that a watch ending at exit still finds it.
    static auto* s_pDispatch = new CModalDispatch;
    return *s_pDispatch;
}

bool CModalDispatch::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    // The window's own show, sent before it is put on the screen; the window system may
    // repeat it spontaneously.
    if (pEvent->type() != QEvent::Show || pEvent->spontaneous() || !pWatched->isWidgetType())
        return false;
    auto* pWidget = static_cast<QWidget*>(pWatched);
    if (!pWidget->isWindow() || !pWidget->isModal())
        return false;
    const auto newest = std::find_if(m_watches.rbegin(), m_watches.rend(),
                                     [pWidget](const CModalWatch* pWatch) { return pWatch->wants(pWidget); });
    if (newest != m_watches.rend())
        (*newest)->take(pWidget);
    return false;
}
