#pragma once

#include <QObject>

class QAction;
class CVXSFigureController;

// "Export Figure...": in the host's File menu and on the panel's figure page, it opens the
// Export Figure dialog for the controller's layout, starting from the figure page's width and
// resolution. Made by the controller, whose child it is.
class CVXSFigureExportCommand : public QObject
{
    Q_OBJECT
public:
    explicit CVXSFigureExportCommand(CVXSFigureController& controller);

    QAction* action() const;

private:
    void exportFigure();
    void updateEnabled();

    CVXSFigureController& m_controller;
    QAction* m_pAction = nullptr; // child of the command
};
