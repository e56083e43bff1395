#include "VXRecentFilesMenu.h"

#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QDir>
#include <QFileInfo>
#include <QMenu>
#include <QMessageBox>

CVXRecentFilesMenu::CVXRecentFilesMenu(CVXSSettings& settings, QWidget* pParent)
    : QObject(pParent)
    , m_list(settings)
    , m_pParentWidget(pParent)
{
}

void CVXRecentFilesMenu::addTo(QMenu* pMenu)
{
    m_pMenu = pMenu->addMenu(tr("Open &Recent"));
    m_pMenu->setObjectName(QStringLiteral("menuOpenRecent"));
    m_pMenu->menuAction()->setObjectName(QStringLiteral("actionOpenRecent"));
    connect(m_pMenu, &QMenu::aboutToShow, this, &CVXRecentFilesMenu::fill);
    fill();
}

void CVXRecentFilesMenu::addFile(const QString& strPath)
{
    m_list.add(strPath);
}

void CVXRecentFilesMenu::fill()
{
    m_pMenu->clear();
    const QStringList paths = m_list.paths();
    for (int i = 0; i < paths.size(); ++i) {
        const QString strPath = paths.at(i);
        QAction* pAction = m_pMenu->addAction(entryText(i, strPath, paths));
        pAction->setObjectName(QStringLiteral("actionRecentFile%1").arg(i + 1));
        pAction->setData(strPath);
        pAction->setStatusTip(QDir::toNativeSeparators(strPath));
        connect(pAction, &QAction::triggered, this, [this, strPath] { choose(strPath); });
    }
    m_pMenu->addSeparator();
    QAction* pClear = m_pMenu->addAction(tr("&Clear Menu"));
    pClear->setObjectName(QStringLiteral("actionClearRecentFiles"));
    pClear->setEnabled(!paths.isEmpty());
    // The menu is filled anew when it is shown next; the action must not go while it fires.
    connect(pClear, &QAction::triggered, this, [this] { m_list.clear(); });
}

void CVXRecentFilesMenu::choose(const QString& strPath)
{
    if (QFileInfo::exists(strPath)) {
        emit fileChosen(strPath);
        return;
    }
    m_list.remove(strPath);
    CVXSMessageBox::information(m_pParentWidget, CVXUtilityFns::getAppName(),
                                tr("%1 no longer exists. It was removed from the recent files.")
                                    .arg(QDir::toNativeSeparators(strPath)),
                                QMessageBox::Ok);
}

QString CVXRecentFilesMenu::entryText(int nIndex, const QString& strPath, const QStringList& paths)
{
    const QString strName = QFileInfo(strPath).fileName();
    int nSameName = 0;
    for (const QString& strOther : paths)
        nSameName += QFileInfo(strOther).fileName() == strName ? 1 : 0;
    const QString strShown = nSameName > 1 ? QDir::toNativeSeparators(strPath) : strName;
    // The numbers 1 to 9 are the entries' keys; an ampersand in a name stays an ampersand.
    const QString strNumber = nIndex < 9 ? QStringLiteral("&%1").arg(nIndex + 1) : QString::number(nIndex + 1);
    return strNumber + QLatin1Char(' ') + QString(strShown).replace(QLatin1Char('&'), QStringLiteral("&&"));
}
