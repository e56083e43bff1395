#include "file/VXSLayoutFileCommands.h"

#include "file/VXSLayoutDocument.h"
#include "file/VXSLayoutFile.h"
#include "VXSLayoutManager.h"
#include "file/VXSLayoutRecovery.h"
#include "progress/VXSLayoutDisplayPreparer.h"
#include "progress/VXSLayoutProgress.h"
#include "VXSLayoutView.h"
#include "VXSLayoutWindow.h"

#include <VXPreference.h>
#include <VXSMessageBox.h>
#include <VXSSettings.h>
#include <VXUtilityFns.h>

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMessageBox>
#include <QUndoStack>

namespace {
const QString kFolderKey = QStringLiteral("ImageLayout/layoutFolder");
enum UnsavedAnswer { SaveAnswer = 0, DiscardAnswer = 1, CancelAnswer = 2 };
} // namespace

CVXSLayoutFileCommands::CVXSLayoutFileCommands(CVXSLayoutManager& manager)
    : m_manager(manager)
{
}

CVXSLayoutFileCommands::~CVXSLayoutFileCommands()
{
    delete m_pRecovery;
}

QString CVXSLayoutFileCommands::filePath() const
{
    return m_strPath;
}

void CVXSLayoutFileCommands::setFilePath(const QString& strPath)
{
    m_strPath = strPath;
    if (CVXSLayoutWindow* pWindow = m_manager.getLayoutWindow())
        pWindow->setDocumentName(strPath.isEmpty() ? QString() : QFileInfo(strPath).fileName());
}

void CVXSLayoutFileCommands::prepareDisplay(const QString& strLabel)
{
    if (CVXSLayoutView* pView = m_manager.getLayoutView())
        CVXSLayoutDisplayPreparer::prepare(*pView, strLabel);
}

void CVXSLayoutFileCommands::reportError(const QString& strWhat, const QString& strWhy)
{
    CVXSMessageBox::error(m_manager.getLayoutWindow(), CVXUtilityFns::getAppName(), strWhat + QLatin1Char('\n') + strWhy,
                          QMessageBox::Ok);
}

QString CVXSLayoutFileCommands::chooseSaveName()
{
    CVXSSettings* pSettings = CVXPreference::getSettings();
    // The layout's own file is proposed while its folder still exists.
    const bool bOwnFolder = !m_strPath.isEmpty() && QFileInfo(m_strPath).absoluteDir().exists();
    const QString strStart = bOwnFolder ? m_strPath : pSettings->folder(kFolderKey);
    QString strPath = QFileDialog::getSaveFileName(m_manager.getLayoutWindow(), tr("Save Layout As"), strStart,
                                                   tr("Layouts (*.vxlayout)"));
    if (strPath.isEmpty())
        return QString();
    if (QFileInfo(strPath).suffix().compare(QLatin1String(Suffix), Qt::CaseInsensitive) != 0)
        strPath += QLatin1Char('.') + QLatin1String(Suffix);
    pSettings->setValue(kFolderKey, QFileInfo(strPath).absolutePath());
    return strPath;
}

bool CVXSLayoutFileCommands::save(bool bChooseName)
{
    const QString strPath = bChooseName || m_strPath.isEmpty() ? chooseSaveName() : m_strPath;
    return !strPath.isEmpty() && saveTo(strPath);
}

bool CVXSLayoutFileCommands::saveTo(const QString& strPath)
{
    // The images are packed on a worker thread, from a copy of the layout as it stands.
    const CVXSLayoutDocument document = m_manager.document();
    CVXSLayoutFile file;
    bool bWritten = false;
    const bool bDone = CVXSLayoutProgress::run(m_manager.getLayoutWindow(), tr("Saving the layout..."), true,
                                               [&](const CVXSLayoutProgress::CancelFlag& cancelled) {
                                                   file.setCancelFlag(&cancelled);
                                                   bWritten = file.write(strPath, document);
                                               });
    if (!bDone)
        return false;
    if (!bWritten) {
        reportError(tr("The layout could not be saved."), file.errorText());
        return false;
    }
    m_manager.undoStack()->setClean();
    setFilePath(QFileInfo(strPath).absoluteFilePath());
    return true;
}

bool CVXSLayoutFileCommands::open()
{
    CVXSSettings* pSettings = CVXPreference::getSettings();
    const QString strPath = QFileDialog::getOpenFileName(m_manager.getLayoutWindow(), tr("Open Layout"),
                                                         pSettings->folder(kFolderKey),
                                                         tr("Layouts (*.vxlayout)"));
    if (strPath.isEmpty())
        return false;
    pSettings->setValue(kFolderKey, QFileInfo(strPath).absolutePath());
    return openFile(strPath);
}

bool CVXSLayoutFileCommands::readDocument(const QString& strPath, CVXSLayoutDocument& document,
                                          const QString& strFailure)
{
    CVXSLayoutFile file;
    bool bRead = false;
    CVXSLayoutDocument loaded;
    // Read on a worker thread; a cancelled read leaves the document as it was.
    const bool bDone = CVXSLayoutProgress::run(m_manager.getLayoutWindow(), tr("Opening the layout..."), true,
                                               [&](const CVXSLayoutProgress::CancelFlag& cancelled) {
                                                   file.setCancelFlag(&cancelled);
                                                   bRead = file.read(strPath, loaded);
                                               });
    if (bDone && bRead)
        document = loaded;
    else if (bDone)
        reportError(strFailure, file.errorText());
    return bDone && bRead;
}

bool CVXSLayoutFileCommands::openFile(const QString& strPath)
{
    CVXSLayoutDocument document;
    if (!readDocument(strPath, document, tr("The layout could not be opened.")))
        return false;
    if (!m_manager.isEmpty() && !m_manager.confirmClear())
        return false;
    m_manager.replaceLayout(document);
    setFilePath(QFileInfo(strPath).absoluteFilePath());
    prepareDisplay(tr("Opening the layout..."));
    return true;
}

bool CVXSLayoutFileCommands::openNew(const CVXSLayoutDocument& document)
{
    if (!m_manager.isEmpty() && !m_manager.confirmClear())
        return false;
    m_manager.replaceLayout(document);
    setFilePath(QString());
    return true;
}

bool CVXSLayoutFileCommands::queryClose()
{
    if (m_manager.undoStack()->isClean())
        return true;
    const int nAnswer = CVXSMessageBox::warning(m_manager.getLayoutWindow(), CVXUtilityFns::getAppName(),
                                                tr("The layout has unsaved changes.\nDo you want to save them?"),
                                                tr("Save"), tr("Discard"), tr("Cancel"), SaveAnswer, CancelAnswer);
    if (nAnswer == SaveAnswer)
        return save(false);
    return nAnswer == DiscardAnswer;
}

void CVXSLayoutFileCommands::enableRecovery()
{
    if (!m_pRecovery)
        m_pRecovery = new CVXSLayoutRecovery(m_manager);
}

CVXSLayoutRecovery* CVXSLayoutFileCommands::recovery() const
{
    return m_pRecovery;
}

bool CVXSLayoutFileCommands::restoreRecovery(const QString& strPath)
{
    CVXSLayoutDocument document;
    if (!readDocument(strPath, document, tr("The layout could not be restored.")))
        return false;
    m_manager.replaceLayout(document);
    setFilePath(QString());
    prepareDisplay(tr("Opening the layout..."));
    // Nothing to undo, but unsaved: quitting asks again, and the copy stays until saved.
    m_manager.undoStack()->resetClean();
    if (m_pRecovery)
        m_pRecovery->saveCopy();
    return true;
}
