#include "VXHelpMenu.h"

#include "VXAboutDialog.h"

#include <VXLinkedLibraries.h>
#include <VXToolPluginBase.h>
#include <VXUtilityFns.h>

#include <QApplication>
#include <QMenu>
#include <QMenuBar>

#include <algorithm>

CVXHelpMenu::CVXHelpMenu(const CVXToolList& tools, QMenuBar* pMenuBar, QWidget* pWindow)
    : QObject(pWindow)
    , m_tools(tools)
    , m_pWindow(pWindow)
{
    QMenu* pMenu = pMenuBar->addMenu(tr("&Help"));
    pMenu->setObjectName(QStringLiteral("menuHelp"));
    QAction* pAbout = pMenu->addAction(tr("&About %1").arg(CVXUtilityFns::getAppName()));
    pAbout->setObjectName(QStringLiteral("actionAbout"));
    pAbout->setMenuRole(QAction::AboutRole);
    connect(pAbout, &QAction::triggered, this, &CVXHelpMenu::showAbout);
    QAction* pAboutQt = pMenu->addAction(tr("About &Qt"));
    pAboutQt->setObjectName(QStringLiteral("actionAboutQt"));
    pAboutQt->setMenuRole(QAction::AboutQtRole);
    connect(pAboutQt, &QAction::triggered, qApp, &QApplication::aboutQt);
}

void CVXHelpMenu::showAbout()
{
    QVector<CVXLibraryInfo> libraries = CVXLinkedLibraries::hostLibraries();
    for (const std::unique_ptr<CVXToolPluginBase>& pTool : m_tools) {
        for (const CVXLibraryInfo& library : pTool->toolLibraries()) {
            const auto named = [&library](const CVXLibraryInfo& known) { return known.m_strName == library.m_strName; };
            if (std::none_of(libraries.cbegin(), libraries.cend(), named))
                libraries << library;
        }
    }
    CVXAboutDialog dialog(libraries, m_pWindow);
    dialog.exec();
}
