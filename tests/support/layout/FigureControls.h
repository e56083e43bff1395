#pragma once

#include <figure/VXSFigureController.h>

#include <QString>
#include <QWidget>

class QAction;

// The figure panel's widgets and the figure commands by their object names, as the tests of
// the figure features reach them. A missing one is warned of and comes back null, so that
// the test fails where it uses it.
template <typename T>
T* panelControl(const QWidget& panel, const char* pName)
{
    auto* pControl = panel.findChild<T*>(QString::fromLatin1(pName));
    if (!pControl)
        qWarning("no control %s", pName);
    return pControl;
}

// A command of the host menu given (the Figure menu unless told).
QAction* figureCommand(const CVXSFigureController& controller, const char* pObjectName,
                       const char* pMenu = CVXSFigureController::FigureMenu);
