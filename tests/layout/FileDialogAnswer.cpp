#include "FileDialogAnswer.h"

#include "ModalDialogAnswer.h"

#include <QFileDialog>
#include <QLineEdit>

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
        // Typed into the file name box: selectFile() would race the dialog's folder loading.
        auto* pNameEdit = pDialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        if (!pNameEdit) {
            qWarning("file dialog without a file name box");
            return;
        }
        pNameEdit->setText(strFileName);
        // Accepting as Enter in the file name box does. The Save button itself is no
        // good here: the dialog enables it only once its file system model has caught up
        // with the folder, which may take longer than a test should wait.
        QMetaObject::invokeMethod(pDialog, "accept");
    };
}

FileDialogAnswer cancelFileDialog()
{
    return [](QFileDialog* pDialog) { pDialog->reject(); };
}
