#pragma once

#include "ModalWatch.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QFileDialog;

// What a modal file dialog showed when it was answered.
struct CSeenFileDialog
{
    QString m_strCaption;
    QString m_strDirectory;
    QStringList m_nameFilters;
};

using FileDialogAnswer = std::function<void(QFileDialog*)>;

// Answers the modal file dialogs that come while it lives, one answer each, in the order
// they open, and keeps what each showed. Lives on the test's stack. A dialog its answer
// leaves open is rejected; so is one beyond the answers, which counts as seen too.
class CFileDialogAnswers
{
public:
    explicit CFileDialogAnswers(const QList<FileDialogAnswer>& answers);

    const QList<CSeenFileDialog>& seen() const;

private:
    ModalAnswer recorded(const FileDialogAnswer& answer);
    QList<ModalAnswer> recorded(const QList<FileDialogAnswer>& answers);

    QList<CSeenFileDialog> m_seen;
    CModalWatch m_watch; // after the records its answers write to
};

// Chooses the filter, types the file name (relative to the dialog's folder or absolute)
// and accepts it.
FileDialogAnswer chooseFile(const QString& strFilter, const QString& strFileName);
// Types the file name into the dialog as it comes and accepts it.
FileDialogAnswer typeFileName(const QString& strFileName);
FileDialogAnswer cancelFileDialog();

// Answers the next modal file dialog, wherever it comes from; *pSeen (may be null) tells
// whether one came.
void answerNextFileDialog(FileDialogAnswer answer, bool* pSeen = nullptr);
