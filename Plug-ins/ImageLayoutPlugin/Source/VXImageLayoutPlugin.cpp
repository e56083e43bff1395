#include "VXImageLayoutPlugin.h"

#include "file/VXSLayoutFileCommands.h"
#include "host/VXSLayoutLibraries.h"
#include "colourbar/VXSColourBarCommand.h"
#include "host/VXSLayoutTranslator.h"
#include "studygrid/VXSStudyGridCommand.h"
#include "file/VXSLayoutRecovery.h"
#include "file/VXSOrphanedRecoveryCopy.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutWindow.h"

#include <VXSMdiSubWindow.h>
#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QClipboard>
#include <QDateTime>
#include <QLocale>
#include <QMessageBox>
#include <QGuiApplication>
#include <QPixmap>
#include <QUndoStack>

using namespace VXSLayout;

namespace {
// Tool type for which the host makes no menu entry.
constexpr int kToolTypeWithoutMenu = 5;
constexpr int kToolType = 3;
// The host's sub-window frame: title bar above, borders around.
constexpr int kTitleBarRise = 20;
constexpr int kFrameExtraWidth = 15;
constexpr int kFrameExtraHeight = 35;
} // namespace

CVXImageLayoutPlugin::CVXImageLayoutPlugin()
{
    // The figure commands, owned by the controller.
    new CVXSColourBarCommand(m_figure);
    new CVXSStudyGridCommand(m_figure, [this] {
        showToolWindow();
        return m_pLayoutMngr.data();
    });
}

CVXImageLayoutPlugin::~CVXImageLayoutPlugin()
{
    delete m_pLayoutMngr.data();
}

int CVXImageLayoutPlugin::getToolType()
{
    return kToolType;
}

QAction* CVXImageLayoutPlugin::getToolAction()
{
    if (getToolType() != kToolTypeWithoutMenu && !m_pToolAction) {
        // The host's menu shows the entry before the tool has built its window.
        CVXSLayoutTranslator::install();
        m_pToolAction = new QAction(QCoreApplication::translate(ToolNameContext, ToolName), this);
        m_pToolAction->setObjectName(QLatin1String(ToolName));
        m_pToolAction->setCheckable(true);
        m_pToolAction->setChecked(false);
        forwardToolPluginValidity(m_pToolAction, true, false);
    }
    return m_pToolAction;
}

QIcon CVXImageLayoutPlugin::getToolIcon()
{
    return QIcon();
}

QString CVXImageLayoutPlugin::getToolName()
{
    return QLatin1String(ToolName);
}

QString CVXImageLayoutPlugin::getToolDescription()
{
    return QString();
}

void CVXImageLayoutPlugin::resetTool()
{
    m_pLayoutMngr = nullptr;
    m_figure.setManager(nullptr);
}

void CVXImageLayoutPlugin::onToolActionToggled()
{
    if (!m_pLayoutMngr)
        return;
    const QAction* pAction = CVXUtilityFns::getAction(QLatin1String(ToolName));
    m_pLayoutMngr->showLayoutWindow(pAction && pAction->isChecked());
}

bool CVXImageLayoutPlugin::initializeTool()
{
    if (m_pLayoutMngr)
        return true;
    m_pLayoutMngr = new CVXSLayoutManager;
    m_pLayoutMngr->fileCommands()->enableRecovery();
    m_figure.setManager(m_pLayoutMngr);
    CVXSLayoutWindow* pWindow = m_pLayoutMngr->getLayoutWindow();
    connect(pWindow, &CVXSLayoutWindow::copyToClipBoard, this,
            &CVXImageLayoutPlugin::onSignalCopyContentToClipBoard);
    pWindow->setObjectName(QLatin1String(ToolName));
    signalAddWidgetToWorkspace(pWindow);
    auto* pSubWindow = qobject_cast<CVXSMdiSubWindow*>(pWindow->parentWidget());
    if (!pSubWindow)
        return true;
    pSubWindow->setWindowPosition(QPoint(pWindow->x(), pWindow->y() - kTitleBarRise));
    const QRect frame = pWindow->frameGeometry();
    pSubWindow->resize(frame.width() + kFrameExtraWidth, frame.height() + kFrameExtraHeight);
    pSubWindow->hideWindow();
    return true;
}

void CVXImageLayoutPlugin::onSignalGetPrintPixmap(bool)
{
    if (!m_pLayoutMngr)
        return;
    const QImage image = m_pLayoutMngr->renderLayoutImage(1.0);
    if (!image.isNull())
        shootPrintPixmap(QPixmap::fromImage(image));
}

bool CVXImageLayoutPlugin::hasDocuments()
{
    return true;
}

QUndoStack* CVXImageLayoutPlugin::undoStack()
{
    return m_pLayoutMngr ? m_pLayoutMngr->undoStack() : nullptr;
}

QWidget* CVXImageLayoutPlugin::documentWidget()
{
    return m_pLayoutMngr ? m_pLayoutMngr->getLayoutWindow() : nullptr;
}

bool CVXImageLayoutPlugin::saveDocument(bool bChooseName)
{
    showToolWindow();
    return m_pLayoutMngr && m_pLayoutMngr->fileCommands()->save(bChooseName);
}

bool CVXImageLayoutPlugin::openDocument()
{
    showToolWindow();
    return m_pLayoutMngr && m_pLayoutMngr->fileCommands()->open();
}

bool CVXImageLayoutPlugin::openDocumentFile(const QString& strPath)
{
    showToolWindow();
    return m_pLayoutMngr && m_pLayoutMngr->fileCommands()->openFile(strPath);
}

QString CVXImageLayoutPlugin::documentFilePath()
{
    return m_pLayoutMngr ? m_pLayoutMngr->fileCommands()->filePath() : QString();
}

QStringList CVXImageLayoutPlugin::documentFileSuffixes()
{
    return {QLatin1String(CVXSLayoutFileCommands::Suffix)};
}

bool CVXImageLayoutPlugin::queryClose()
{
    return !m_pLayoutMngr || m_pLayoutMngr->fileCommands()->queryClose();
}

void CVXImageLayoutPlugin::offerRecovery()
{
    // Once the user has worked on the layout, copies wait for a later start. A declined copy
    // is removed and the next one offered; copies of programs still running are never seen.
    while (!m_pLayoutMngr || (m_pLayoutMngr->isEmpty() && m_pLayoutMngr->undoStack()->count() == 0)) {
        const std::unique_ptr<CVXSOrphanedRecoveryCopy> pCopy =
            CVXSOrphanedRecoveryCopy::claimNewest(CVXSLayoutRecovery::folder());
        if (!pCopy)
            return;
        const int nAnswer = CVXSMessageBox::question(
            nullptr, CVXUtilityFns::getAppName(),
            tr("The Image Layout window was not closed normally.\nRestore the layout as it was on %1?")
                .arg(QLocale().toString(pCopy->lastModified(), QLocale::ShortFormat)),
            QMessageBox::Yes | QMessageBox::Default, QMessageBox::No | QMessageBox::Escape);
        if (nAnswer != 0) {
            pCopy->remove();
            continue;
        }
        showToolWindow();
        // Restored, the layout lives on in this session's own copy; a copy that cannot be
        // read is kept.
        if (m_pLayoutMngr && m_pLayoutMngr->fileCommands()->restoreRecovery(pCopy->filePath()))
            pCopy->remove();
        return;
    }
}

QVector<CVXLibraryInfo> CVXImageLayoutPlugin::toolLibraries()
{
    return CVXSLayoutLibraries::used();
}

void CVXImageLayoutPlugin::showToolWindow()
{
    initializeTool();
    if (QAction* pAction = getToolAction(); pAction && !pAction->isChecked())
        pAction->setChecked(true);
    if (m_pLayoutMngr)
        m_pLayoutMngr->showLayoutWindow(true);
}

QWidget* CVXImageLayoutPlugin::panelWidget()
{
    return m_figure.panel();
}

QList<QAction*> CVXImageLayoutPlugin::menuActions(const QString& strMenu)
{
    return m_figure.menuActions(strMenu);
}

CVXSLayoutManager* CVXImageLayoutPlugin::layoutManager() const
{
    return m_pLayoutMngr;
}

void CVXImageLayoutPlugin::onSignalDatasetChanged(CVXSDataset* pDataset)
{
    relayDatasetStatus(pDataset);
}

void CVXImageLayoutPlugin::onSignalSequenceChanged(CVXSSequenceDataset* pDataset)
{
    relaySequenceStatus(pDataset);
}

void CVXImageLayoutPlugin::onSignalDatasetRemoved(CVXSDataset* pDataset)
{
    relayDatasetStatus(pDataset);
}

void CVXImageLayoutPlugin::onSignalSequenceAdded(CVXSSequenceDataset* pDataset)
{
    relaySequenceStatus(pDataset);
}

void CVXImageLayoutPlugin::onSignalSequenceRemoved(CVXSSequenceDataset* pDataset)
{
    relaySequenceStatus(pDataset);
}

void CVXImageLayoutPlugin::signalAddWidgetToWorkspace(QWidget* pWidget)
{
    addWidgetToWorkspace(pWidget);
}

void CVXImageLayoutPlugin::onSignalCopyContentToClipBoard(QString strContentName)
{
    shootCopyToClipBoard(strContentName);
}

void CVXImageLayoutPlugin::onSignalCopyToClipboard(QString strWindowName)
{
    if (!m_pLayoutMngr || !m_pLayoutMngr->getLayoutWindow())
        return;
    if (strWindowName.toLower() != m_pLayoutMngr->getLayoutWindow()->objectName().toLower())
        return;
    const QImage image = m_pLayoutMngr->renderLayoutImage(1.0);
    if (!image.isNull())
        QGuiApplication::clipboard()->setImage(image);
}

void CVXImageLayoutPlugin::relayDatasetStatus(CVXSDataset* pDataset)
{
    if (m_pLayoutMngr && m_pLayoutMngr->getLayoutWindow())
        m_pLayoutMngr->getLayoutWindow()->onDatasetStatusChanged(pDataset);
}

void CVXImageLayoutPlugin::relaySequenceStatus(CVXSSequenceDataset* pDataset)
{
    if (m_pLayoutMngr && m_pLayoutMngr->getLayoutWindow())
        m_pLayoutMngr->getLayoutWindow()->onSequenceStatusChanged(pDataset);
}
