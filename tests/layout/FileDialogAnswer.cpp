#include "FileDialogAnswer.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>

namespace {

constexpr int kPollMs = 10;
// Marks a dialog already answered, so the next answer waits for a new one.
const char* const kAnsweredProperty = "vxAnsweredByTest";

} // namespace

CFileDialogAnswers::CFileDialogAnswers(const QList<FileDialogAnswer>& answers)
    : m_pending(answers)
{
    QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
    m_timer.start(kPollMs);
}

CFileDialogAnswers::~CFileDialogAnswers() = default;

const QList<CSeenFileDialog>& CFileDialogAnswers::seen() const
{
    return m_seen;
}

void CFileDialogAnswers::poll()
{
    auto* pDialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (!pDialog || pDialog->property(kAnsweredProperty).toBool() || m_pending.isEmpty())
        return;
    pDialog->setProperty(kAnsweredProperty, true);
    m_seen.append({pDialog->windowTitle(), pDialog->directory().absolutePath(), pDialog->nameFilters()});
    m_pending.takeFirst()(pDialog);
    if (pDialog->isVisible())
        pDialog->reject();
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
