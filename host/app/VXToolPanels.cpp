#include "VXToolPanels.h"

#include <VXPreference.h>
#include <VXSSettings.h>
#include <VXToolPluginBase.h>

#include <QAction>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

CVXToolPanels::CVXToolPanels(QMainWindow& window, QMenu* pFileMenu, QAction* pFileEnd, QAction* pMenusBefore)
    : QObject(&window)
    , m_window(window)
    , m_pFileMenu(pFileMenu)
    , m_pFileEnd(pFileEnd)
    , m_pMenusBefore(pMenusBefore)
{
    m_pViewMenu = new QMenu(tr("&View"), window.menuBar());
    m_pViewMenu->setObjectName(QStringLiteral("menuView"));
    window.menuBar()->insertMenu(pMenusBefore, m_pViewMenu);
    // Nothing to show until a tool brings a panel.
    m_pViewMenu->menuAction()->setVisible(false);
}

void CVXToolPanels::attach(CVXToolPluginBase& tool)
{
    if (QWidget* pPanel = tool.panelWidget())
        addPanel(pPanel);
    const QList<QAction*> fileActions = tool.menuActions(QStringLiteral("File"));
    if (!fileActions.isEmpty()) {
        m_pFileMenu->insertActions(m_pFileEnd, fileActions);
        m_pFileMenu->insertSeparator(m_pFileEnd);
    }
    const QList<QAction*> figureActions = tool.menuActions(QStringLiteral("Figure"));
    if (!figureActions.isEmpty())
        figureMenu()->addActions(figureActions);
}

void CVXToolPanels::addPanel(QWidget* pPanel)
{
    auto* pDock = new QDockWidget(pPanel->windowTitle(), &m_window);
    pDock->setObjectName(QStringLiteral("dock_") + pPanel->objectName());
    pDock->setWidget(pPanel);
    m_window.addDockWidget(Qt::RightDockWidgetArea, pDock);
    // Hidden until the user shows it, then as the user left it: a panel takes room from the
    // workspace, which a small screen cannot spare.
    pDock->setVisible(CVXPreference::getSettings()->value(visibilityKey(pDock), false).toBool());
    m_docks.append(pDock);
    // The tool deletes its panel; the dock, empty then, goes with it.
    connect(pPanel, &QObject::destroyed, pDock, &QObject::deleteLater);
    connect(pDock, &QObject::destroyed, this, [this, pDock] { m_docks.removeOne(pDock); });
    QAction* pToggle = pDock->toggleViewAction();
    pToggle->setObjectName(QStringLiteral("actionShow_") + pPanel->objectName());
    m_pViewMenu->addAction(pToggle);
    m_pViewMenu->menuAction()->setVisible(true);
}

void CVXToolPanels::saveVisibility() const
{
    for (const QDockWidget* pDock : m_docks)
        CVXPreference::getSettings()->setValue(visibilityKey(pDock), pDock->isVisible());
}

QString CVXToolPanels::visibilityKey(const QDockWidget* pDock)
{
    return QStringLiteral("Panels/") + pDock->objectName() + QStringLiteral("/visible");
}

QMenu* CVXToolPanels::figureMenu()
{
    if (!m_pFigureMenu) {
        m_pFigureMenu = new QMenu(tr("F&igure"), m_window.menuBar());
        m_pFigureMenu->setObjectName(QStringLiteral("menuFigure"));
        m_window.menuBar()->insertMenu(m_pMenusBefore, m_pFigureMenu);
    }
    return m_pFigureMenu;
}
