#pragma once

#include <QCoreApplication>
#include <QString>

#include <atomic>
#include <functional>

class QWidget;

// Runs long work of the window on a worker thread while the GUI thread goes on painting.
// Input to the window waits meanwhile: at first it is held back, then a modal progress
// dialog shows with the label, and with Cancel where stopping the work is safe.
class CVXSLayoutProgress
{
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutProgress)
public:
    // Set from the GUI thread when the user presses Cancel; the work reads it.
    using CancelFlag = std::atomic_bool;
    // The dialog shows once the work takes longer than this; long enough that quick work
    // does not flash one.
    static constexpr int DefaultShowAfterMs = 800;

    // Returns once work has returned; false when the user pressed Cancel, whatever work
    // did then. work must not touch widgets or scene items: it gets what it needs by value.
    static bool run(QWidget* pParent, const QString& strLabel, bool bCancellable,
                    const std::function<void(const CancelFlag& cancelled)>& work);
    // From now on the dialog shows after this long (0: at once, as tests want it).
    static void setShowAfter(int nMs);

private:
    static int s_nShowAfterMs;
};
