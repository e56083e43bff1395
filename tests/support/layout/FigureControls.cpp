#include "FigureControls.h"

#include <figure/VXSFigureController.h>

#include <QAction>

QAction* figureCommand(const CVXSFigureController& controller, const char* pObjectName, const char* pMenu)
{
    const QList<QAction*> actions = controller.menuActions(QLatin1String(pMenu));
    for (QAction* pAction : actions) {
        if (pAction->objectName() == QLatin1String(pObjectName))
            return pAction;
    }
    qWarning("no command %s", pObjectName);
    return nullptr;
}
