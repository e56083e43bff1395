#include "VXToolPluginBase.h"

#include "VXSChildWindow.h"
#include "VXSMdiSubWindow.h"
#include "VXSSequenceWindow.h"
#include "VXSWorkspace.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QMdiArea>

CVXToolPluginBase::CVXToolPluginBase() = default;

CVXToolPluginBase::~CVXToolPluginBase() = default;

void CVXToolPluginBase::addWidgetToWorkspace(QWidget* pWidget)
{
    if (!pWidget)
        return;
    QMdiArea* pArea = CVXSWorkspace::instance()->mdiArea();
    if (!pArea) {
        static bool s_bWarned = false;
        if (!s_bWarned)
            qWarning("No workspace registered; tool windows stay top-level.");
        s_bWarned = true;
        return;
    }
    auto* pSubWindow = new CVXSMdiSubWindow; // owned by the area once added
    pSubWindow->setWidget(pWidget);
    // Tools reuse their windows, so closing one only hides it.
    pSubWindow->setAttribute(Qt::WA_DeleteOnClose, false);
    pArea->addSubWindow(pSubWindow);
    pSubWindow->setToggleAction(m_pAnnouncedAction);
    CVXSWorkspace::instance()->notifyToolWindowAdded(pSubWindow);
}

void CVXToolPluginBase::updateToolPluginValidity(QAction* pAction, bool bEnabled, bool bChecked)
{
    m_pAnnouncedAction = pAction;
    CVXSWorkspace::instance()->announceToolAction(pAction, bEnabled, bChecked);
}

void CVXToolPluginBase::shootPrintPixmap(const QPixmap& pixmap)
{
    CVXSWorkspace::instance()->deliverPrintPixmap(pixmap);
}

void CVXToolPluginBase::shootCopyToClipBoard(QString strContentName)
{
    CVXSChildWindow* pChild = CVXSChildWindow::getActiveChildWnd();
    if (auto* pSequence = qobject_cast<CVXSSequenceWindow*>(pChild))
        pSequence->copyTabToClipboard(strContentName);
    else if (pChild)
        QGuiApplication::clipboard()->setImage(pChild->grabImage(false));
}

bool CVXToolPluginBase::hasDocuments()
{
    return false;
}

QUndoStack* CVXToolPluginBase::undoStack()
{
    return nullptr;
}

QWidget* CVXToolPluginBase::documentWidget()
{
    return nullptr;
}

bool CVXToolPluginBase::saveDocument(bool)
{
    return false;
}

bool CVXToolPluginBase::openDocument()
{
    return false;
}

bool CVXToolPluginBase::openDocumentFile(const QString&)
{
    return false;
}

QString CVXToolPluginBase::documentFilePath()
{
    return QString();
}

QStringList CVXToolPluginBase::documentFileSuffixes()
{
    return {};
}

bool CVXToolPluginBase::queryClose()
{
    return true;
}

void CVXToolPluginBase::offerRecovery()
{
}

QVector<CVXLibraryInfo> CVXToolPluginBase::toolLibraries()
{
    return {};
}

QWidget* CVXToolPluginBase::panelWidget()
{
    return nullptr;
}

QList<QAction*> CVXToolPluginBase::menuActions(const QString& /*strMenu*/)
{
    return {};
}

int CVXToolPluginBase::getToolType()
{
    return 0;
}

QAction* CVXToolPluginBase::getToolAction()
{
    return nullptr;
}

QIcon CVXToolPluginBase::getToolIcon()
{
    return QIcon();
}

QString CVXToolPluginBase::getToolName()
{
    return QString();
}

QString CVXToolPluginBase::getToolDescription()
{
    return QString();
}

void CVXToolPluginBase::resetTool()
{
}

void CVXToolPluginBase::onToolActionToggled()
{
}

bool CVXToolPluginBase::initializeTool()
{
    return false;
}

bool CVXToolPluginBase::isToolAvailable()
{
    return true;
}

void CVXToolPluginBase::forwardToolPluginValidity(QAction* pAction, bool bEnabled, bool bChecked)
{
    updateToolPluginValidity(pAction, bEnabled, bChecked);
}

bool CVXToolPluginBase::canUnloadTool()
{
    return true;
}

bool CVXToolPluginBase::hasPreferenceWidget()
{
    return false;
}

QWidget* CVXToolPluginBase::getPreferenceWidget()
{
    return nullptr;
}

void CVXToolPluginBase::onSignalDatasetChanged(CVXSDataset*)
{
}

void CVXToolPluginBase::onSignalSequenceChanged(CVXSSequenceDataset*)
{
}

void CVXToolPluginBase::onSignalDatasetRemoved(CVXSDataset*)
{
}

void CVXToolPluginBase::onSignalSequenceAdded(CVXSSequenceDataset*)
{
}

void CVXToolPluginBase::onSignalSequenceRemoved(CVXSSequenceDataset*)
{
}

void CVXToolPluginBase::signalAddWidgetToWorkspace(QWidget* pWidget)
{
    addWidgetToWorkspace(pWidget);
}

void CVXToolPluginBase::onSignalCopyContentToClipBoard(QString strContentName)
{
    shootCopyToClipBoard(strContentName);
}

void CVXToolPluginBase::onSignalCopyToClipboard(QString)
{
}

void CVXToolPluginBase::onSignalROIModified(QString)
{
}

void CVXToolPluginBase::onSignalROIDeleted()
{
}

void CVXToolPluginBase::onSignalupdateROIList()
{
}

void CVXToolPluginBase::onAdvancedOptionChanged(bool)
{
}

void CVXToolPluginBase::onSignalGetPrintPixmap(bool)
{
}

void CVXToolPluginBase::onSignalSaveToArchiva()
{
}

void CVXToolPluginBase::onSignalUpdatePluginMenu(QString)
{
}
