#include "progress/VXSLayoutProgress.h"

#include "progress/VXSLayoutWorkers.h"

#include <QEventLoop>
#include <QFutureWatcher>
#include <QProgressDialog>
#include <QTimer>
#include <QtConcurrent>

#include <limits>

int CVXSLayoutProgress::s_nShowAfterMs = DefaultShowAfterMs;

void CVXSLayoutProgress::setShowAfter(int nMs)
{
    s_nShowAfterMs = nMs;
}

bool CVXSLayoutProgress::run(QWidget* pParent, const QString& strLabel, bool bCancellable,
                             const std::function<void(const CancelFlag& cancelled)>& work)
{
    CancelFlag cancelled {false};
    // A busy bar: the work's length is not known ahead.
    QProgressDialog dialog(strLabel, bCancellable ? tr("Cancel") : QString(), 0, 0, pParent);
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setAutoReset(false);
    dialog.setAutoClose(false);
    // Shown by the timer below, not by progress values.
    dialog.setMinimumDuration(std::numeric_limits<int>::max());
    // Escape is Cancel where there is one; elsewhere it would only hide the dialog while
    // the work goes on.
    if (bCancellable)
        QObject::connect(&dialog, &QProgressDialog::canceled, &dialog, [&cancelled] { cancelled = true; });
    else
        QObject::connect(&dialog, &QDialog::rejected, &dialog, &QWidget::show);
    QTimer showTimer;
    showTimer.setSingleShot(true);
    QObject::connect(&showTimer, &QTimer::timeout, &dialog, &QWidget::show);

    QFutureWatcher<void> watcher;
    QEventLoop loop;
    QObject::connect(&watcher, &QFutureWatcher<void>::finished, &loop, &QEventLoop::quit);
    watcher.setFuture(QtConcurrent::run(CVXSLayoutWorkers::pool(), [&work, &cancelled] { work(cancelled); }));
    showTimer.start(s_nShowAfterMs);
    // Until the dialog shows, user input waits in the queue; once it shows, it is modal.
    while (!watcher.isFinished()) {
        loop.processEvents(QEventLoop::WaitForMoreEvents
                           | (dialog.isVisible() ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents));
    }
    return !cancelled;
}
