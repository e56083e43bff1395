#include "FileDialogAnswer.h"

#include "FileDialogTyping.h"
#include "ModalDialogAnswer.h"

#include <QFileDialog>

CFileDialogAnswers::CFileDialogAnswers(const QList<FileDialogAnswer>& answers)
    : m_watch(QFileDialog::staticMetaObject, recorded(answers), recorded(cancelFileDialog()))
{
}

const QList<CSeenFileDialog>& CFileDialogAnswers::seen() const
{
    return m_seen;
}

ModalAnswer CFileDialogAnswers::recorded(const FileDialogAnswer& answer)
{
    return [this, answer](QWidget* pModal) {
        auto* pDialog = qobject_cast<QFileDialog*>(pModal);
        m_seen.append({pDialog->windowTitle(), pDialog->directory().absolutePath(), pDialog->nameFilters()});
        answer(pDialog);
    };
}

QList<ModalAnswer> CFileDialogAnswers::recorded(const QList<FileDialogAnswer>& answers)
{
    QList<ModalAnswer> modalAnswers;
    for (const FileDialogAnswer& answer : answers)
        modalAnswers << recorded(answer);
    return modalAnswers;
}

FileDialogAnswer chooseFile(const QString& strFilter, const QString& strFileName)
{
    return [strFilter, strFileName](QFileDialog* pDialog) {
        pDialog->selectNameFilter(strFilter);
        typeIntoFileDialog(pDialog, strFileName);
    };
}

FileDialogAnswer typeFileName(const QString& strFileName)
{
    return [strFileName](QFileDialog* pDialog) { typeIntoFileDialog(pDialog, strFileName); };
}

FileDialogAnswer cancelFileDialog()
{
    return [](QFileDialog* pDialog) { pDialog->reject(); };
}

void answerNextFileDialog(FileDialogAnswer answer, bool* pSeen)
{
    answerNextModalDialog(
        QFileDialog::staticMetaObject,
        [answer](QDialog* pDialog) { answer(static_cast<QFileDialog*>(pDialog)); }, pSeen);
}
