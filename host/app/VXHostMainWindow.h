#pragma once

#include <QImage>
#include <QMainWindow>
#include <QStringList>
#include <QVector>

#include <memory>

class QMdiArea;
class QMenu;
class CVXBuiltinLayoutTool;
class CVXSChildWindow;
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
    // window. Files that cannot be read are reported together in one message.
    void openImageFiles(const QStringList& paths);
    // Opens the files together, pages of multi-page files included, as one sequence.
    // If any file cannot be read, the sequence is not opened.
    void openSequenceFiles(const QStringList& paths);
    // Opens the built-in X-ray, luminescence and fluorescence samples.
    void openSamples();
    // Takes the tool's menu entry into the Tools menu; checking the entry builds the
    // tool on first use and shows or hides its window.
    void attachTool(CVXToolPluginBase* pTool);

private:
    void createFileMenu();
    void createToolsMenu();
    void createWindowMenu();
    QAction* addMenuAction(QMenu* pMenu, const QString& strObjectName, const QString& strText);
    void chooseImageFiles();
    void chooseSequenceFiles();
    void addToolAction(QAction* pAction);
    // The file's pages; a file that cannot be read adds a line naming it and the reason
    // to failures.
    static QVector<QImage> readFile(const QString& strPath, QStringList& failures);
    void openFrames(const QVector<QImage>& frames, const QString& strTitle);
    void addImageWindow(CVXSChildWindow* pWindow, const QSize& imageSize, const QString& strTitle);
    QSize initialContentSize(const QSize& imageSize) const;
    void reportUnreadable(const QStringList& failures, const QString& strConsequence);

    QMdiArea* m_pArea = nullptr; // central widget
    QMenu* m_pToolsMenu = nullptr;
    // Deleted in the destructor while the workspace still exists.
    std::unique_ptr<CVXBuiltinLayoutTool> m_pLayoutTool;
};
