#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>

class QLockFile;
class CVXSLayoutManager;

// The recovery copy of a layout with unsaved changes: written every 30 seconds and after
// every tenth change while changes are unsaved, into the recovery folder of the user's data
// folder; removed once the layout is saved and when the program ends normally, so that a copy
// found at start means its session ended abnormally. The copy is written in the background,
// from the layout as it was when the write began (the images are shared, never changed once
// placed), so that large layouts do not stall the window; the file appears whole or not at all.
// Every running program keeps its own copy, named with its process id, and holds a lock file
// beside it while the copy exists: a copy whose lock is held belongs to a program that is
// still running and is never offered or removed by another (CVXSOrphanedRecoveryCopy).
class CVXSLayoutRecovery : public QObject
{
    Q_OBJECT
public:
    static constexpr int DefaultIntervalMs = 30000;
    static constexpr int ChangesPerCopy = 10;

    explicit CVXSLayoutRecovery(CVXSLayoutManager& manager);
    // Waits for a write under way, then removes the copy.
    ~CVXSLayoutRecovery() override;

    // The folder of the copies of every session.
    static QString folder();
    // This session's copy; empty until it is first written.
    QString filePath() const;
    // The lock file that marks a copy as its running session's.
    static QString lockFilePath(const QString& strCopyPath);
    void setInterval(int nMilliseconds);
    // Starts writing the copy; while a write is under way, another follows it.
    void saveCopy();

private:
    void onHistoryChanged();
    void onCleanChanged(bool bClean);
    void onTimer();
    void startWrite();
    void onWritten();
    void removeCopy();
    // Takes the lock that marks this session's copy; picks another name when this process
    // holds that one already (a second layout) or the name's lock cannot be had.
    bool lockOwnCopy();

    CVXSLayoutManager& m_manager;
    QTimer m_timer;
    int m_nChangesSinceCopy = 0;
    // The write under way; its result is empty or the reason it failed.
    QFutureWatcher<QString> m_writing;
    bool m_bAnotherCopy = false;
    QString m_strPath;
    // Held while this session's copy may exist; its file goes with the lock.
    std::unique_ptr<QLockFile> m_pLock;
};
