#pragma once

#include <QObject>
#include <QSet>

class QMdiArea;
class QMdiSubWindow;
class CVXSSettings;

// Where the tools' windows appear in the workspace. A tool window comes back where the user
// left it in an earlier session, kept inside the workspace; on the first start it gets at
// least the size its content asks for, so that its toolbar shows whole. The geometry is
// stored in the host's settings, under the name of the tool's window, whenever the user
// moves or resizes the window.
class CVXToolWindowPlacement : public QObject
{
    Q_OBJECT
public:
    CVXToolWindowPlacement(CVXSSettings& settings, QMdiArea* pArea, QObject* pParent);

    // The settings key of the geometry of the tool window with this object name.
    static QString settingsKey(const QString& strWindowName);

protected:
    bool eventFilter(QObject* pWatched, QEvent* pEvent) override;

private:
    void watch(QMdiSubWindow* pSubWindow);
    // The first time the sub-window is shown: the geometry stored, or the one the tool gave
    // grown to what its content asks for; kept inside the workspace either way.
    void place(QMdiSubWindow* pSubWindow) const;
    void store(const QMdiSubWindow* pSubWindow) const;
    // Empty for a tool window without a name.
    static QString settingsKeyOf(const QMdiSubWindow* pSubWindow);
    // The workspace's visible part, or an invalid rectangle while it is not laid out yet.
    QRect room() const;

    CVXSSettings& m_settings;
    QMdiArea* m_pArea = nullptr; // the host's central widget
    // Watched sub-windows not shown yet; they belong to the area.
    QSet<const QObject*> m_unplaced;
};
