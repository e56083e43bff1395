#pragma once

#include <QList>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>

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

// Answers the next modal file dialogs, one answer each, in the order they open. Lives on
// the test's stack: answers not used when it goes are dropped, so that no answer meant for
// one test reaches the dialog of the next. A dialog the answer leaves open is rejected.
class CFileDialogAnswers
{
public:
    explicit CFileDialogAnswers(const QList<FileDialogAnswer>& answers);
    ~CFileDialogAnswers();

    const QList<CSeenFileDialog>& seen() const;

private:
    void poll();

    QList<FileDialogAnswer> m_pending;
    QList<CSeenFileDialog> m_seen;
    QTimer m_timer;
};

// Chooses the filter, types the file name (relative to the dialog's folder or absolute)
// and presses the dialog's Save button.
FileDialogAnswer chooseFile(const QString& strFilter, const QString& strFileName);
FileDialogAnswer cancelFileDialog();
