#pragma once

#include "figure/VXSFigureController.h"

#include <VXToolPluginBase.h>

#include <QPointer>

class QAction;
class CVXSLayoutManager;

// The Image Layout tool as the host sees it: one checkable menu entry, "Image Layout
// Window", that builds the layout window on first use, puts it into the host's workspace
// and shows or hides it; it passes the host's dataset news on to the window and serves
// the host's clipboard and print picture requests.
class CVXImageLayoutPlugin : public CVXToolPluginBase
{
    Q_OBJECT
    Q_INTERFACES(CVXToolPluginBase)
public:
    CVXImageLayoutPlugin();
    ~CVXImageLayoutPlugin() override;

    int getToolType() override;
    QAction* getToolAction() override;
    QIcon getToolIcon() override;
    QString getToolName() override;
    QString getToolDescription() override;
    void resetTool() override;
    void onToolActionToggled() override;
    bool initializeTool() override;
    // The host prints the layout as it is shown, at its own size.
    void onSignalGetPrintPixmap(bool bColor) override;

    // The layout as a document for the host's Edit and File menus.
    bool hasDocuments() override;
    QUndoStack* undoStack() override;
    QWidget* documentWidget() override;
    bool saveDocument(bool bChooseName) override;
    bool openDocument() override;
    bool openDocumentFile(const QString& strPath) override;
    QString documentFilePath() override;
    QStringList documentFileSuffixes() override;
    bool queryClose() override;
    void offerRecovery() override;
    QVector<CVXLibraryInfo> toolLibraries() override;
    // The figure features: the panel and the figure commands.
    QWidget* panelWidget() override;
    QList<QAction*> menuActions(const QString& strMenu) override;

    // Null before first use and after resetTool.
    CVXSLayoutManager* layoutManager() const;

public slots:
    void onSignalDatasetChanged(CVXSDataset* pDataset) override;
    void onSignalSequenceChanged(CVXSSequenceDataset* pDataset) override;
    void onSignalDatasetRemoved(CVXSDataset* pDataset) override;
    void onSignalSequenceAdded(CVXSSequenceDataset* pDataset) override;
    void onSignalSequenceRemoved(CVXSSequenceDataset* pDataset) override;
    void signalAddWidgetToWorkspace(QWidget* pWidget) override;
    void onSignalCopyContentToClipBoard(QString strContentName) override;
    void onSignalCopyToClipboard(QString strWindowName) override;

private:
    void relayDatasetStatus(CVXSDataset* pDataset);
    void relaySequenceStatus(CVXSSequenceDataset* pDataset);
    // Builds the window on first use and shows it, checking the menu entry.
    void showToolWindow();

    QAction* m_pToolAction = nullptr; // child of the plugin
    // Owned by the plugin; deleting it deletes the window's sub-window in the workspace.
    QPointer<CVXSLayoutManager> m_pLayoutMngr;
    CVXSFigureController m_figure;
};
