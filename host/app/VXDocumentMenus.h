#pragma once

#include "VXToolList.h"

#include <QObject>

class QAction;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QUndoGroup;
class CVXToolPluginBase;

// The host's commands for tools that hold documents: Undo and Redo in the Edit menu,
// which follow the active tool window through an undo group, and Save Layout, Save Layout
// As and Open Layout in the File menu. The host knows the tools only by their interface.
class CVXDocumentMenus : public QObject
{
    Q_OBJECT
public:
    // tools is the host's list, read each time a command runs.
    CVXDocumentMenus(const CVXToolList& tools, QMdiArea* pArea, QObject* pParent);

    void addFileActions(QMenu* pFileMenu);
    void fillEditMenu(QMenu* pEditMenu);
    // Asks every tool about its unsaved changes; false when the user cancelled the quit.
    bool queryClose();
    // Lets every tool offer what an abnormal end left unsaved.
    void offerRecovery();
    // The file commands are there while some tool has documents.
    void updateFileActions();

signals:
    // A document was opened from or saved to this file through the File menu.
    void documentFileUsed(const QString& strPath);

private:
    // The tool whose window is active, else the first tool with documents.
    CVXToolPluginBase* targetTool() const;
    CVXToolPluginBase* toolOfSubWindow(const QMdiSubWindow* pSubWindow) const;
    void followActiveWindow(QMdiSubWindow* pSubWindow);
    void save(bool bChooseName);
    void open();
    // After a command succeeded: tells which file the tool's document now has.
    void announceFile(CVXToolPluginBase* pTool);
    QAction* addAction(QMenu* pMenu, const QString& strObjectName, const QString& strText);

    const CVXToolList& m_tools;
    QMdiArea* m_pArea = nullptr;
    QUndoGroup* m_pUndoGroup = nullptr; // child
    QAction* m_pSave = nullptr;
    QAction* m_pSaveAs = nullptr;
    QAction* m_pOpen = nullptr;
};
