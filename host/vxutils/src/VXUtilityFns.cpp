#include "VXUtilityFns.h"

#include <QAction>
#include <QApplication>
#include <QPointer>
#include <QVector>
#include <QWidget>

namespace {

// Plugins' actions live outside any widget; guarded so a deleted action is never returned.
QVector<QPointer<QAction>>& registeredActions()
{
    static QVector<QPointer<QAction>> actions;
    return actions;
}

QAction* findRegisteredAction(const QString& strObjectName)
{
    for (const QPointer<QAction>& pAction : registeredActions()) {
        if (pAction && pAction->objectName() == strObjectName)
            return pAction;
    }
    return nullptr;
}

QAction* findWidgetAction(const QString& strObjectName)
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget* pWidget : widgets) {
        if (QAction* pAction = pWidget->findChild<QAction*>(strObjectName))
            return pAction;
    }
    return nullptr;
}

} // namespace

const QIcon CVXUtilityFns::appIcon()
{
    return QApplication::windowIcon();
}

QString CVXUtilityFns::getAppName()
{
    return QGuiApplication::applicationDisplayName();
}

QAction* CVXUtilityFns::getAction(QString strObjectName)
{
    if (strObjectName.isEmpty())
        return nullptr;
    if (QAction* pAction = findRegisteredAction(strObjectName))
        return pAction;
    return findWidgetAction(strObjectName);
}

void CVXUtilityFns::registerAction(QAction* pAction)
{
    QVector<QPointer<QAction>>& actions = registeredActions();
    actions.removeAll(QPointer<QAction>());
    if (pAction && !actions.contains(pAction))
        actions.append(pAction);
}
