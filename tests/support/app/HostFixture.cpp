#include "HostFixture.h"

#include <VXHostMainWindow.h>
#include <VXToolPluginLoader.h>
#include <VXSChildWindow.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QMdiArea>
#include <QMdiSubWindow>

#include <algorithm>

namespace {
// Tools' windows are main windows of their own; the layout window is known by its title.
const QString kLayoutWindowName = QStringLiteral("Image Layout Window");
// The view keeps its cell frames below and its highlight and handles above these.
constexpr double kLowestItemZ = 26;
constexpr double kHighlightZ = 999;
} // namespace

CHostFixture::CHostFixture()
    : m_pWindow(std::make_unique<CVXHostMainWindow>())
{
    m_pWindow->resize(1200, 900);
    m_pWindow->show();
    // The tests run from the build tree's bin folder, next to the host's plugin folder.
    m_pWindow->loadToolPlugins(CVXToolPluginLoader::defaultFolders());
}

CHostFixture::~CHostFixture() = default;

CVXHostMainWindow* CHostFixture::window() const
{
    return m_pWindow.get();
}

QMdiArea* CHostFixture::area() const
{
    return m_pWindow->mdiArea();
}

QAction* CHostFixture::action(const QString& strObjectName) const
{
    if (QAction* pAction = m_pWindow->findChild<QAction*>(strObjectName))
        return pAction;
    return CVXUtilityFns::getAction(strObjectName);
}

QList<QMdiSubWindow*> CHostFixture::imageSubWindows() const
{
    QList<QMdiSubWindow*> windows;
    const QList<QMdiSubWindow*> all = area()->subWindowList(QMdiArea::CreationOrder);
    for (QMdiSubWindow* pSubWindow : all) {
        if (!pSubWindow->isHidden() && qobject_cast<CVXSChildWindow*>(pSubWindow->widget()))
            windows << pSubWindow;
    }
    return windows;
}

QStringList CHostFixture::imageWindowTitles() const
{
    QStringList titles;
    const QList<QMdiSubWindow*> windows = imageSubWindows();
    for (const QMdiSubWindow* pSubWindow : windows)
        titles << pSubWindow->windowTitle();
    return titles;
}

CVXSChildWindow* CHostFixture::imageWindow(int nIndex) const
{
    const QList<QMdiSubWindow*> windows = imageSubWindows();
    return nIndex < windows.size() ? qobject_cast<CVXSChildWindow*>(windows[nIndex]->widget()) : nullptr;
}

QMdiSubWindow* CHostFixture::layoutSubWindow() const
{
    // Hidden sub-windows count too, so look at the children rather than the area's list.
    const QList<QMdiSubWindow*> all = area()->findChildren<QMdiSubWindow*>();
    for (QMdiSubWindow* pSubWindow : all) {
        if (pSubWindow->widget() && pSubWindow->widget()->objectName() == kLayoutWindowName)
            return pSubWindow;
    }
    return nullptr;
}

int CHostFixture::layoutItemCount() const
{
    const QMdiSubWindow* pSubWindow = layoutSubWindow();
    if (!pSubWindow)
        return -1;
    const QList<QGraphicsItem*> items = pSubWindow->widget()->findChild<QGraphicsView*>()->scene()->items();
    return int(std::count_if(items.cbegin(), items.cend(), [](const QGraphicsItem* pItem) {
        return pItem->zValue() >= kLowestItemZ && pItem->zValue() < kHighlightZ && pItem->isVisible();
    }));
}
