#pragma once

#include "VXRecentFileList.h"

#include <QObject>

class QMenu;
class QWidget;

// File > Open Recent: the files of the recent list, newest first, and Clear Menu. A file
// that has gone since is dropped from the list with a note when it is chosen.
class CVXRecentFilesMenu : public QObject
{
    Q_OBJECT
public:
    // pParent also parents the note about a missing file.
    CVXRecentFilesMenu(CVXSSettings& settings, QWidget* pParent);

    // Adds the submenu to the menu.
    void addTo(QMenu* pMenu);

public slots:
    // The file was opened or saved: it goes first.
    void addFile(const QString& strPath);

signals:
    // The user chose a file that exists.
    void fileChosen(const QString& strPath);

private:
    // Fills the submenu from the list as it is now, which another host may have changed.
    void fill();
    void choose(const QString& strPath);
    // The entry's text: the file's name, or its whole path where two entries share the name.
    static QString entryText(int nIndex, const QString& strPath, const QStringList& paths);

    CVXRecentFileList m_list;
    QWidget* m_pParentWidget = nullptr;
    QMenu* m_pMenu = nullptr; // child of the menu it was added to
};
