#pragma once

#include "VXToolList.h"

#include <VXImagePage.h>

#include <QImage>
#include <QMainWindow>
#include <QStringList>
#include <QVector>

class QActionGroup;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class CVXDocumentMenus;
class CVXFileOpener;
class CVXRecentFilesMenu;
class CVXSChildWindow;
class CVXToolPanels;
class CVXToolPluginBase;

// The host's main window: the MDI workspace with the image windows and tool windows,
// the File, Tools and Window menus, and the tools attached to it.
class CVXHostMainWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit CVXHostMainWindow(QWidget* pParent = nullptr);
    ~CVXHostMainWindow() override;

    QMdiArea* mdiArea() const;

    // Opens each file in an image window of its own, a multi-page file in a sequence
    // window. Files that cannot be read are reported together in one message, after the
    // lines given in failures. Returns the files opened.
    QStringList openImageFiles(const QStringList& paths, QStringList failures = QStringList());
    // Opens files of any kind: images as openImageFiles does, the tools' documents in
    // their tool's window; folders and files of other kinds are reported.
    void openFiles(const QStringList& paths);
    // Opens the files together, pages of multi-page files included, as one sequence.
    // If any file cannot be read, the sequence is not opened.
    void openSequenceFiles(const QStringList& paths);
    // Opens the built-in X-ray, luminescence and fluorescence samples.
    void openSamples();
    // Shows the window where the user left it last time, maximized on the first start.
    void showWithLastGeometry();
    // Loads the tool plugins of the folders and attaches each; files that are no tool
    // plugin are reported together in one message.
    void loadToolPlugins(const QStringList& folders);
    // Takes the tool's menu entry into the Tools menu (checking the entry builds the
    // tool on first use and shows or hides its window) and passes it the news about
    // the image and sequence windows. The main window owns the tool from now on; a tool
    // attached before is left as it is.
    void attachTool(CVXToolPluginBase* pTool);
    // Lets the tools offer what a session that ended abnormally left unsaved.
    void offerRecovery();
    // Shows the windows of the tools that hold documents, as checking their menu entries
    // does.
    void showDocumentTools();

protected:
    void closeEvent(QCloseEvent* pEvent) override;

private:
    QMenu* createFileMenu();
    void createEditMenu();
    void createToolsMenu();
    void createWindowMenu();
    void updateWindowMenu();
    void cascadeWindows();
    void tileWindows();
    // Visible sub-windows in the order they were opened.
    QList<QMdiSubWindow*> shownSubWindows() const;
    // Where new image windows may go: the viewport without the part a shown tool window
    // covers.
    QRect freeRoom() const;
    QAction* addMenuAction(QMenu* pMenu, const QString& strObjectName, const QString& strText);
    void chooseImageFiles();
    void chooseSequenceFiles();
    void addToolAction(QAction* pAction);
    // The file's pages; a file that cannot be read adds a line naming it and the reason
    // to failures.
    static QVector<CVXImagePage> readFile(const QString& strPath, QStringList& failures);
    // An image window for a single page, a sequence window for several or where asked for.
    static CVXSChildWindow* newImageWindow(const QVector<CVXImagePage>& pages, bool bSequence);
    void addImageWindow(CVXSChildWindow* pWindow, const QSize& imageSize, const QString& strTitle);
    QSize initialContentSize(const QSize& imageSize, const QSize& room) const;
    void placeNewWindow(QMdiSubWindow* pSubWindow, const QRect& room);
    void reportUnreadable(const QStringList& failures, const QString& strConsequence);

    QMdiArea* m_pArea = nullptr; // central widget
    CVXDocumentMenus* m_pDocumentMenus = nullptr; // child
    CVXFileOpener* m_pFileOpener = nullptr; // child
    CVXRecentFilesMenu* m_pRecentFiles = nullptr; // child
    CVXToolPanels* m_pToolPanels = nullptr; // child
    QMenu* m_pToolsMenu = nullptr;
    QMenu* m_pWindowMenu = nullptr;
    QActionGroup* m_pWindowList = nullptr; // child of the main window; one action per window
    // A tool deletes its windows, which live in the area, so the tools are deleted in the
    // destructor while the workspace still exists.
    CVXToolList m_tools;
};
