#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <QString>
#include <QTimer>

class CVXSLayoutManager;

// The recovery copy of a layout with unsaved changes: written every 30 seconds and after
// every tenth change while changes are unsaved, into the user's data folder; removed once the
// layout is saved and when the program ends normally, so that a copy found at start means
// the last session ended abnormally. The copy is written in the background, from the layout
// as it was when the write began (the images are shared, never changed once placed), so that
// large layouts do not stall the window; the file appears whole or not at all.
class CVXSLayoutRecovery : public QObject
{
    Q_OBJECT
public:
    static constexpr int DefaultIntervalMs = 30000;
    static constexpr int ChangesPerCopy = 10;

    explicit CVXSLayoutRecovery(CVXSLayoutManager& manager);
    // Waits for a write under way, then removes the copy.
    ~CVXSLayoutRecovery() override;

    static QString filePath();
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

    CVXSLayoutManager& m_manager;
    QTimer m_timer;
    int m_nChangesSinceCopy = 0;
    // The write under way; its result is empty or the reason it failed.
    QFutureWatcher<QString> m_writing;
    bool m_bAnotherCopy = false;
};
