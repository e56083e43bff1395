#pragma once

#include "VXLibraryInfo.h"
#include "VxApiGlobal.h"

#include <QIcon>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QVector>

class QAction;
class QPixmap;
class QUndoStack;
class QWidget;
class CVXSDataset;
class CVXSSequenceDataset;

// Base class of every tool plugin the host loads. The host calls the virtual slots;
// a plugin overrides what it needs and calls the protected services.
class VXAPI_EXPORT CVXToolPluginBase : public QObject
{
    Q_OBJECT
public:
    CVXToolPluginBase();
    ~CVXToolPluginBase() override;

    // Puts the widget into a new CVXSMdiSubWindow of the host's workspace; afterwards the
    // widget's parent widget is that sub-window, and the tool's menu action (if it was
    // announced) stays checked while the sub-window is shown. When the sub-window is first
    // shown the host may still move and resize it (to where the user left it last time).
    // Without a workspace the widget stays as it is.
    void addWidgetToWorkspace(QWidget* pWidget);
    // Takes the tool's menu action into the host's menus, enabled and checked as given.
    void updateToolPluginValidity(QAction* pAction, bool bEnabled, bool bChecked);
    // Hands the host the picture it asked for with onSignalGetPrintPixmap.
    void shootPrintPixmap(const QPixmap& pixmap);
    // Has the host copy the named content of the active image window (for a sequence
    // window, the tab of that name) to the system clipboard.
    void shootCopyToClipBoard(QString strContentName);

    // A tool whose window holds a document the user edits and keeps in files. The host's
    // Edit and File menus act on the tool window that is active through these; they are
    // plain functions, not slots, and the defaults describe a tool without documents.
    // Whether the tool has documents at all.
    virtual bool hasDocuments();
    // The undo history of the tool's document, null while there is none.
    virtual QUndoStack* undoStack();
    // The widget the tool put into the workspace, null while there is none.
    virtual QWidget* documentWidget();
    // Saves the document, under a name the user chooses first when bChooseName is set or
    // when it has none yet; false when nothing was saved.
    virtual bool saveDocument(bool bChooseName);
    // Lets the user choose a file and opens it in place of the document; false when
    // nothing was opened.
    virtual bool openDocument();
    // Opens the named file in place of the document (asking first about what would be
    // lost, as openDocument does); a file that cannot be read is reported to the user.
    // False when nothing was opened.
    virtual bool openDocumentFile(const QString& strPath);
    // The file the document was last saved to or opened from; empty while it has none.
    virtual QString documentFilePath();
    // The suffixes (without dot, lower case) of the files openDocumentFile opens.
    virtual QStringList documentFileSuffixes();
    // Before the host quits: asks about unsaved changes; false when the user cancelled.
    virtual bool queryClose();
    // At start: offers what a session that ended abnormally left unsaved.
    virtual void offerRecovery();
    // The libraries the tool links beyond the host's, for the host's About box.
    virtual QVector<CVXLibraryInfo> toolLibraries();
    // A panel the host shows in a dock beside the workspace (its window title names the
    // dock), or null. The tool keeps it and deletes it when it goes.
    virtual QWidget* panelWidget();
    // Commands for a menu of the host: "File", or "Figure" (a menu the host makes for them).
    // The tool owns the actions.
    virtual QList<QAction*> menuActions(const QString& strMenu);

public slots:
    virtual int getToolType();
    virtual QAction* getToolAction();
    virtual QIcon getToolIcon();
    virtual QString getToolName();
    virtual QString getToolDescription();
    virtual void resetTool();
    virtual void onToolActionToggled();
    virtual bool initializeTool();
    virtual bool isToolAvailable();
    virtual void forwardToolPluginValidity(QAction* pAction, bool bEnabled, bool bChecked);
    virtual bool canUnloadTool();
    virtual bool hasPreferenceWidget();
    virtual QWidget* getPreferenceWidget();

    virtual void onSignalDatasetChanged(CVXSDataset* pDataset);
    virtual void onSignalSequenceChanged(CVXSSequenceDataset* pDataset);
    virtual void onSignalDatasetRemoved(CVXSDataset* pDataset);
    virtual void onSignalSequenceAdded(CVXSSequenceDataset* pDataset);
    virtual void onSignalSequenceRemoved(CVXSSequenceDataset* pDataset);
    virtual void signalAddWidgetToWorkspace(QWidget* pWidget);
    virtual void onSignalCopyContentToClipBoard(QString strContentName);
    virtual void onSignalCopyToClipboard(QString strWindowName);

    virtual void onSignalROIModified(QString strRoiName);
    virtual void onSignalROIDeleted();
    virtual void onSignalupdateROIList();
    virtual void onAdvancedOptionChanged(bool bAdvanced);
    virtual void onSignalGetPrintPixmap(bool bColor);
    virtual void onSignalSaveToArchiva();
    virtual void onSignalUpdatePluginMenu(QString strMenuName);

private:
    QPointer<QAction> m_pAnnouncedAction; // owned by the derived tool
};

#define CVXToolPluginBase_iid "com.Halvard.Vexor.CVXToolPluginBase/1.0"
Q_DECLARE_INTERFACE(CVXToolPluginBase, CVXToolPluginBase_iid)
