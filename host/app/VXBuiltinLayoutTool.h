#pragma once

#include <VXToolPluginBase.h>

#include <QPointer>

#include <memory>

class CVXSLayoutManager;
class CVXSMdiSubWindow;

// The Image Layout tool built from the layout classes linked into the host, serving the
// host the way the layout plugin will once plugins are loaded: one checkable Tools entry,
// "Image Layout Window", that shows or hides the layout window in the workspace. The
// window is built on first use.
class CVXBuiltinLayoutTool : public CVXToolPluginBase
{
    Q_OBJECT
public:
    CVXBuiltinLayoutTool();
    ~CVXBuiltinLayoutTool() override;

    QAction* getToolAction() override;
    QString getToolName() override;
    bool initializeTool() override;
    void onToolActionToggled() override;

    // Null until the tool was first used.
    CVXSLayoutManager* layoutManager() const;

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    static void placeAtBottomRight(CVXSMdiSubWindow* pSubWindow);

    QAction* m_pToolAction = nullptr; // child of this tool
    // Deleting the manager deletes the window's sub-window, so the tool has to go
    // before the workspace does.
    std::unique_ptr<CVXSLayoutManager> m_pLayoutMngr;
    QPointer<CVXSMdiSubWindow> m_pSubWindow; // deleted by the layout manager
};
