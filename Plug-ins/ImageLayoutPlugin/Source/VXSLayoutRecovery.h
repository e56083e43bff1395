#pragma once

#include <QObject>
#include <QTimer>

class CVXSLayoutManager;

// The recovery copy of a layout with unsaved changes: written, atomically, every 30
// seconds and after every tenth change while changes are unsaved, into the user's data
// folder; removed once the layout is saved and when the program ends normally, so that a
// copy found at start means the last session ended abnormally.
class CVXSLayoutRecovery : public QObject
{
    Q_OBJECT
public:
    static constexpr int DefaultIntervalMs = 30000;
    static constexpr int ChangesPerCopy = 10;

    explicit CVXSLayoutRecovery(CVXSLayoutManager& manager);
    ~CVXSLayoutRecovery() override;

    static QString filePath();
    void setInterval(int nMilliseconds);
    // Writes the copy now; false when it could not be written.
    bool saveCopy();

private:
    void onHistoryChanged();
    void onTimer();
    void removeCopy();

    CVXSLayoutManager& m_manager;
    QTimer m_timer;
    int m_nChangesSinceCopy = 0;
};
