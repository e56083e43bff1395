#include "ModalDialogAnswer.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QTimer>

namespace {

constexpr int kWaitForDialogMs = 5000;
constexpr int kPollMs = 10;

// Parent of the waiting answers' timers, so that they can be stopped together.
QObject& pendingAnswers()
{
    static QObject s_pending;
    return s_pending;
}

} // namespace

void answerNextModalDialog(const QMetaObject& kind, ModalDialogAnswer answer, bool* pSeen)
{
    if (pSeen)
        *pSeen = false;
    auto* pTimer = new QTimer(&pendingAnswers()); // deletes itself once it answered or gave up
    const QDeadlineTimer deadline(kWaitForDialogMs);
    const char* pClassName = kind.className();
    QObject::connect(pTimer, &QTimer::timeout, [pTimer, pClassName, answer, deadline, pSeen] {
        QWidget* pModal = QApplication::activeModalWidget();
        auto* pDialog = pModal && pModal->inherits(pClassName) ? qobject_cast<QDialog*>(pModal) : nullptr;
        if (!pDialog && !deadline.hasExpired())
            return;
        pTimer->stop();
        pTimer->deleteLater();
        if (!pDialog)
            return;
        if (pSeen)
            *pSeen = true;
        answer(pDialog);
        if (pDialog->isVisible())
            pDialog->reject();
    });
    pTimer->start(kPollMs);
}

void cancelPendingDialogAnswers()
{
    qDeleteAll(pendingAnswers().findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly));
}

void rejectDialog(QDialog* pDialog)
{
    pDialog->reject();
}
