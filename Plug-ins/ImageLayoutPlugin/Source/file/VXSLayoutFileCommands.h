#pragma once

#include <QCoreApplication>
#include <QPointer>
#include <QString>

class CVXSLayoutDocument;
class CVXSLayoutManager;
class CVXSLayoutRecovery;

// Keeping a layout in files: Save, Save As and Open with their dialogs and messages, the
// question about unsaved changes before the program ends, and the recovery copy.
class CVXSLayoutFileCommands
{
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutFileCommands)
public:
    static constexpr const char* Suffix = "vxlayout";

    explicit CVXSLayoutFileCommands(CVXSLayoutManager& manager);
    ~CVXSLayoutFileCommands();
    CVXSLayoutFileCommands(const CVXSLayoutFileCommands&) = delete;
    CVXSLayoutFileCommands& operator=(const CVXSLayoutFileCommands&) = delete;

    // Saves to the layout's file; asks for a name first when bChooseName is set or the
    // layout has no file yet. False when nothing was saved.
    bool save(bool bChooseName);
    bool saveTo(const QString& strPath);
    // Lets the user choose a layout file and opens it; false when nothing was opened.
    bool open();
    // Opens the file in place of the layout, after the New question when the layout is not
    // empty. A file that cannot be read is reported and the layout stays as it is.
    bool openFile(const QString& strPath);
    // A layout made by a command (a study grid) in place of the current one, as a new
    // document without a file; false when the user keeps the current layout.
    bool openNew(const CVXSLayoutDocument& document);
    // Save, Discard or Cancel when there are unsaved changes; false for Cancel.
    bool queryClose();
    // The file the layout was last saved to or opened from; empty for a new layout.
    QString filePath() const;

    // From now on a copy of unsaved changes is kept for the next start after a crash.
    void enableRecovery();
    CVXSLayoutRecovery* recovery() const;
    // Puts the recovered layout in place; it counts as unsaved and has no file.
    bool restoreRecovery(const QString& strPath);

private:
    QString chooseSaveName();
    // Reads the file; a file that cannot be read is reported under the failure's text.
    bool readDocument(const QString& strPath, CVXSLayoutDocument& document, const QString& strFailure);
    void reportError(const QString& strWhat, const QString& strWhy);
    // The opened layout's large images made ready for the screen before it is painted.
    void prepareDisplay(const QString& strLabel);
    void setFilePath(const QString& strPath);

    CVXSLayoutManager& m_manager;
    QString m_strPath;
    CVXSLayoutRecovery* m_pRecovery = nullptr; // owned
};
