#pragma once

#include "VXToolList.h"

#include <QObject>

class QMenuBar;
class QWidget;

// The Help menu: About, naming the version and the libraries of the host and its tools,
// and About Qt.
class CVXHelpMenu : public QObject
{
    Q_OBJECT
public:
    // tools is the host's list, read each time the box is shown; pWindow parents the
    // box and this object.
    CVXHelpMenu(const CVXToolList& tools, QMenuBar* pMenuBar, QWidget* pWindow);

private:
    void showAbout();

    const CVXToolList& m_tools;
    QWidget* m_pWindow = nullptr; // parent
};
