#include "VXBuiltinLayoutTool.h"

#include "VXSubWindowGeometry.h"

#include <VXSLayoutManager.h>
#include <VXSLayoutWindow.h>
#include <VXSMdiSubWindow.h>

#include <QAction>
#include <QMdiArea>
#include <QEvent>

namespace {
// Plugins and the layout window find the entry by this object name.
const QString kToolName = QStringLiteral("Image Layout Window");
} // namespace

CVXBuiltinLayoutTool::CVXBuiltinLayoutTool() = default;

CVXBuiltinLayoutTool::~CVXBuiltinLayoutTool()
{
    // The manager deletes the sub-window; none of its last events may reach a tool
    // that is half gone.
    if (m_pSubWindow)
        m_pSubWindow->removeEventFilter(this);
}

QAction* CVXBuiltinLayoutTool::getToolAction()
{
    if (!m_pToolAction) {
        m_pToolAction = new QAction(tr("Image Layout Window"), this);
        m_pToolAction->setObjectName(kToolName);
        m_pToolAction->setCheckable(true);
        updateToolPluginValidity(m_pToolAction, true, false);
    }
    return m_pToolAction;
}

QString CVXBuiltinLayoutTool::getToolName()
{
    return kToolName;
}

bool CVXBuiltinLayoutTool::initializeTool()
{
    if (m_pLayoutMngr)
        return true;
    m_pLayoutMngr = std::make_unique<CVXSLayoutManager>();
    CVXSLayoutWindow* pWindow = m_pLayoutMngr->getLayoutWindow();
    const QSize windowSize = pWindow->size();
    addWidgetToWorkspace(pWindow);
    m_pSubWindow = qobject_cast<CVXSMdiSubWindow*>(pWindow->parentWidget());
    if (!m_pSubWindow)
        return true;
    CVXSubWindowGeometry::resizeForContent(m_pSubWindow, windowSize);
    placeAtBottomRight(m_pSubWindow);
    m_pSubWindow->hideWindow();
    m_pSubWindow->installEventFilter(this);
    return true;
}

void CVXBuiltinLayoutTool::onToolActionToggled()
{
    if (m_pLayoutMngr && m_pToolAction)
        m_pLayoutMngr->showLayoutWindow(m_pToolAction->isChecked());
}

void CVXBuiltinLayoutTool::placeAtBottomRight(CVXSMdiSubWindow* pSubWindow)
{
    // Image windows fill the workspace from the top left; the layout window keeps out of their way.
    const QSize room = pSubWindow->mdiArea()->viewport()->size() - pSubWindow->size();
    pSubWindow->setWindowPosition(QPoint(qMax(0, room.width()), qMax(0, room.height())));
}

CVXSLayoutManager* CVXBuiltinLayoutTool::layoutManager() const
{
    return m_pLayoutMngr.get();
}

bool CVXBuiltinLayoutTool::eventFilter(QObject* pWatched, QEvent* pEvent)
{
    // Closing the sub-window only hides it; the menu entry follows what the user sees.
    const bool bShownOrHidden = pEvent->type() == QEvent::Show || pEvent->type() == QEvent::Hide;
    if (bShownOrHidden && pWatched == m_pSubWindow && m_pToolAction)
        m_pToolAction->setChecked(!m_pSubWindow->isHidden());
    return CVXToolPluginBase::eventFilter(pWatched, pEvent);
}
