#pragma once

#include <QCoreApplication>
#include <QString>

class CVXSLayoutManager;
class CVXSLayoutView;

// Moves the view's selected item in the stacking order by one of the Z commands, as one
// undo step named for the command.
class CVXSLayoutZMove
{
    // The texts are the window's and are translated in its context.
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutWindow)
public:
    CVXSLayoutZMove(CVXSLayoutManager* pMngr, CVXSLayoutView& view);

    void apply(int nCommand) const;

private:
    static QString stepName(int nCommand);

    CVXSLayoutManager* m_pMngr = nullptr; // not owned
    CVXSLayoutView& m_view;
};
