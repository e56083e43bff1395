#pragma once

#include <QDialog>

#include <functional>

using ModalDialogAnswer = std::function<void(QDialog*)>;

// Answers the next modal dialog of the given class (or a subclass) that is shown, once it is
// the active modal widget; a dialog the answer leaves open is rejected so that no test hangs.
// *pSeen (may be null) tells whether one came. The answer waits until it is used or cancelled.
void answerNextModalDialog(const QMetaObject& kind, ModalDialogAnswer answer, bool* pSeen = nullptr);

// Stops every answer still waiting for its dialog, so that none meant for one test reaches
// a dialog of the next (their records live on the finished test's stack). The leak check
// every cleanup() runs calls it.
void cancelPendingDialogAnswers();

// The answer that cancels: the dialog is rejected.
void rejectDialog(QDialog* pDialog);
