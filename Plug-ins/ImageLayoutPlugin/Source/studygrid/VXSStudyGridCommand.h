#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class QAction;
class CVXSFigureController;
class CVXSLayoutManager;
class CVXSStudyGridDialog;

// "New Study Grid..." in the host's File menu: asks for a study's files and how to sort
// them (CVXSStudyGridDialog), builds the grid as vxlayout does (CVXSStudyGrid) and shows it
// as a new layout in the layout window.
class CVXSStudyGridCommand : public QObject
{
    Q_OBJECT
public:
    // showLayout shows the layout window, building it on first use, and gives its manager.
    // Adds its action to the controller's File menu; the controller owns the command.
    CVXSStudyGridCommand(CVXSFigureController& controller, std::function<CVXSLayoutManager*()> showLayout);

    QAction* action() const;
    // Asks, builds and shows; false when nothing was shown.
    bool newStudyGrid();
    // Builds the grid the dialog describes; messages go to the user.
    bool build(const CVXSStudyGridDialog& dialog);

private:
    void tell(const QString& strText) const;

    std::function<CVXSLayoutManager*()> m_showLayout;
    QAction* m_pAction = nullptr; // child of the command
};
