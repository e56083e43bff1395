#include "ModalDialogAnswer.h"

#include "ModalWatch.h"

namespace {

// Parent of the waiting answers, so that they can be stopped together. Never deleted: an
// answer left at exit must not outlive the dispatch it is registered with.
QObject& pendingAnswers()
{
    static auto* s_pPending = new QObject;
    return *s_pPending;
}

} // namespace

void answerNextModalDialog(const QMetaObject& kind, ModalDialogAnswer answer, bool* pSeen)
{
    if (pSeen)
        *pSeen = false;
    const ModalAnswer dialogAnswer = [answer, pSeen](QWidget* pModal) {
        if (pSeen)
            *pSeen = true;
        if (auto* pDialog = qobject_cast<QDialog*>(pModal))
            answer(pDialog);
    };
    auto* pWatch = new CModalWatch(kind, {dialogAnswer}, {}, CModalWatch::Lasting::UntilAnswered);
    pWatch->setParent(&pendingAnswers());
}

void cancelPendingDialogAnswers()
{
    qDeleteAll(pendingAnswers().findChildren<CModalWatch*>(QString(), Qt::FindDirectChildrenOnly));
}

void rejectDialog(QDialog* pDialog)
{
    pDialog->reject();
}
