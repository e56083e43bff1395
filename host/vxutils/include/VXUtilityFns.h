#pragma once

#include "VxUtilsGlobal.h"

#include <QIcon>
#include <QString>

class QAction;

// Small application-wide helpers every plugin may use.
class VXUTILS_EXPORT CVXUtilityFns
{
public:
    // The host application's window icon.
    static const QIcon appIcon();
    // The host application's name, used as the title of message boxes.
    static QString getAppName();
    // The host's menu action with this object name, or null. Registered actions are
    // searched first, then the actions of every top-level widget.
    static QAction* getAction(QString strObjectName);
    // Makes an action that has no widget parent (a plugin's menu entry) findable by getAction.
    static void registerAction(QAction* pAction);
};
