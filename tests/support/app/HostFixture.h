#pragma once

#include <QList>
#include <QStringList>

#include <memory>

class QAction;
class QMdiArea;
class QMdiSubWindow;
class CVXHostMainWindow;
class CVXSChildWindow;

// A shown host main window and what the tests look for in it.
class CHostFixture
{
public:
    CHostFixture();
    ~CHostFixture();

    CVXHostMainWindow* window() const;
    QMdiArea* area() const;
    // The main window's or a tool's action with this object name.
    QAction* action(const QString& strObjectName) const;

    // The open sub-windows holding image or sequence windows, oldest first.
    QList<QMdiSubWindow*> imageSubWindows() const;
    QStringList imageWindowTitles() const;
    CVXSChildWindow* imageWindow(int nIndex) const;
    // The sub-window of the Image Layout window, null before the tool was first used.
    QMdiSubWindow* layoutSubWindow() const;
    // The items of the layout the Image Layout window shows (not the view's own frames and
    // handles); -1 before the tool was first used.
    int layoutItemCount() const;

private:
    std::unique_ptr<CVXHostMainWindow> m_pWindow;
};
