#pragma once

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

// Answers the next modal file dialogs, one answer each, in the order they open, and keeps
// what each showed. Lives on the test's stack; when it goes, answers not used are dropped.
// A dialog its answer leaves open is rejected.
class CFileDialogAnswers
{
public:
    explicit CFileDialogAnswers(const QList<FileDialogAnswer>& answers);
    ~CFileDialogAnswers();
    CFileDialogAnswers(const CFileDialogAnswers&) = delete;
    CFileDialogAnswers& operator=(const CFileDialogAnswers&) = delete;

    const QList<CSeenFileDialog>& seen() const;

private:
    void answerNext();

    QList<FileDialogAnswer> m_pending;
    QList<CSeenFileDialog> m_seen;
};

// Chooses the filter, types the file name (relative to the dialog's folder or absolute)
// and accepts it.
FileDialogAnswer chooseFile(const QString& strFilter, const QString& strFileName);
FileDialogAnswer cancelFileDialog();
