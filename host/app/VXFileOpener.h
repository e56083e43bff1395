#pragma once

#include "VXToolList.h"

#include <QObject>
#include <QStringList>

class CVXHostMainWindow;
class CVXToolPluginBase;

// Opens files of every kind the host knows, however they come (command line, drop, recent
// files, Open dialogs): images in windows of their own, the tools' documents in their
// tool's window. Folders and files of other kinds are reported with the unreadable images
// in one message; a tool reports its own documents that cannot be read.
class CVXFileOpener : public QObject
{
    Q_OBJECT
public:
    // tools is the host's list, read each time files are opened.
    CVXFileOpener(const CVXToolList& tools, CVXHostMainWindow* pWindow);

    // failures: lines about what could not even be named as a file (such as a dropped web
    // address), reported with the rest.
    void open(const QStringList& paths, QStringList failures = QStringList());
    // Lets the user choose files in an Open dialog that starts in the folder chosen from
    // last time; empty when cancelled.
    QStringList choose(const QString& strTitle, const QString& strFilter);

signals:
    // An image or document was opened from this file.
    void fileOpened(const QString& strPath);

private:
    CVXToolPluginBase* toolFor(const QString& strPath) const;
    // Why the host does not open the file at all, or empty when it may be an image.
    QString refusal(const QString& strPath) const;
    // "*.vxlayout" for each suffix of the tools' documents.
    QStringList documentPatterns() const;

    const CVXToolList& m_tools;
    CVXHostMainWindow* m_pWindow = nullptr; // parent
};
