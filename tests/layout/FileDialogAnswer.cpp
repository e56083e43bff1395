#include "FileDialogAnswer.h"

#include "FileDialogTyping.h"
#include "ModalDialogAnswer.h"

#include <QFileDialog>

CFileDialogAnswers::CFileDialogAnswers(const QList<FileDialogAnswer>& answers)
    : m_pending(answers)
{
    answerNext();
}

CFileDialogAnswers::~CFileDialogAnswers()
{
    // The waiting answer refers to this object.
    cancelPendingDialogAnswers();
}

const QList<CSeenFileDialog>& CFileDialogAnswers::seen() const
{
    return m_seen;
}

void CFileDialogAnswers::answerNext()
{
    if (m_pending.isEmpty())
        return;
    answerNextModalDialog(QFileDialog::staticMetaObject, [this](QDialog* pDialog) {
        auto* pFileDialog = static_cast<QFileDialog*>(pDialog);
        m_seen.append({pFileDialog->windowTitle(), pFileDialog->directory().absolutePath(),
                       pFileDialog->nameFilters()});
        m_pending.takeFirst()(pFileDialog);
        if (pFileDialog->isVisible())
            pFileDialog->reject();
        // Armed once this dialog is closed, so the next answer waits for a new one.
        answerNext();
    });
}

FileDialogAnswer chooseFile(const QString& strFilter, const QString& strFileName)
{
    return [strFilter, strFileName](QFileDialog* pDialog) {
        pDialog->selectNameFilter(strFilter);
        typeIntoFileDialog(pDialog, strFileName);
    };
}

FileDialogAnswer cancelFileDialog()
{
    return [](QFileDialog* pDialog) { pDialog->reject(); };
}
