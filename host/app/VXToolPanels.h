#pragma once

#include <QList>
#include <QObject>

class QAction;
class QDockWidget;
class QMainWindow;
class QMenu;
class CVXToolPluginBase;

// What tools add to the host's main window beyond their menu entry: their panels as docks
// beside the workspace, shown and hidden from the View menu, and their commands in the File
// menu and in a Figure menu made when a tool has commands for it.
class CVXToolPanels : public QObject
{
    Q_OBJECT
public:
    // pFileMenu takes the tools' file commands at its end, before pFileEnd; the View and Figure
    // menus go before pMenusBefore in the menu bar.
    CVXToolPanels(QMainWindow& window, QMenu* pFileMenu, QAction* pFileEnd, QAction* pMenusBefore);

    void attach(CVXToolPluginBase& tool);
    // Keeps which panels are shown for the next session; called when the window closes.
    void saveVisibility() const;

private:
    void addPanel(QWidget* pPanel);
    static QString visibilityKey(const QDockWidget* pDock);
    QMenu* figureMenu();

    QMainWindow& m_window; // parent
    QMenu* m_pFileMenu = nullptr;
    QAction* m_pFileEnd = nullptr;
    QAction* m_pMenusBefore = nullptr;
    QMenu* m_pViewMenu = nullptr;
    QMenu* m_pFigureMenu = nullptr; // made for the first figure command
    QList<QDockWidget*> m_docks;    // children of the window
};
