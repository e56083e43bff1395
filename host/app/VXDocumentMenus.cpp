#include "VXDocumentMenus.h"

#include <VXToolPluginBase.h>

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QUndoGroup>
#include <QUndoStack>

CVXDocumentMenus::CVXDocumentMenus(const CVXToolList& tools, QMdiArea* pArea, QObject* pParent)
    : QObject(pParent)
    , m_tools(tools)
    , m_pArea(pArea)
    , m_pUndoGroup(new QUndoGroup(this))
{
    connect(m_pArea, &QMdiArea::subWindowActivated, this, &CVXDocumentMenus::followActiveWindow);
}

QAction* CVXDocumentMenus::addAction(QMenu* pMenu, const QString& strObjectName, const QString& strText)
{
    QAction* pAction = pMenu->addAction(strText);
    pAction->setObjectName(strObjectName);
    return pAction;
}

void CVXDocumentMenus::addFileActions(QMenu* pFileMenu)
{
    m_pOpen = addAction(pFileMenu, QStringLiteral("actionOpenLayout"), tr("Open &Layout..."));
    m_pSave = addAction(pFileMenu, QStringLiteral("actionSaveLayout"), tr("Save La&yout"));
    m_pSave->setShortcut(QKeySequence::Save);
    m_pSaveAs = addAction(pFileMenu, QStringLiteral("actionSaveLayoutAs"), tr("Save Layout &As..."));
    m_pSaveAs->setShortcuts(QKeySequence::SaveAs);
    // Where the platform knows no key for it (Windows conventions), the usual one.
    if (m_pSaveAs->shortcuts().isEmpty())
        m_pSaveAs->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    connect(m_pOpen, &QAction::triggered, this, &CVXDocumentMenus::open);
    connect(m_pSave, &QAction::triggered, this, [this] { save(false); });
    connect(m_pSaveAs, &QAction::triggered, this, [this] { save(true); });
    connect(pFileMenu, &QMenu::aboutToShow, this, &CVXDocumentMenus::updateFileActions);
    updateFileActions();
}

void CVXDocumentMenus::fillEditMenu(QMenu* pEditMenu)
{
    QAction* pUndo = m_pUndoGroup->createUndoAction(pEditMenu, tr("&Undo"));
    pUndo->setObjectName(QStringLiteral("actionUndo"));
    QAction* pRedo = m_pUndoGroup->createRedoAction(pEditMenu, tr("&Redo"));
    pRedo->setObjectName(QStringLiteral("actionRedo"));
    // The menu shows the standard keys, but the keys belong to the tool windows' own Undo
    // and Redo, which act on the same history while the window has the focus: one key must
    // not mean two actions, which would leave both silent. Here the keys act only while the
    // menu itself has the focus.
    for (const auto& [pAction, key] : {std::pair(pUndo, QKeySequence::Undo), std::pair(pRedo, QKeySequence::Redo)}) {
        pAction->setShortcuts(key);
        pAction->setShortcutContext(Qt::WidgetShortcut);
        pEditMenu->addAction(pAction);
    }
}

bool CVXDocumentMenus::queryClose()
{
    for (const std::unique_ptr<CVXToolPluginBase>& pTool : m_tools) {
        if (!pTool->queryClose())
            return false;
    }
    return true;
}

void CVXDocumentMenus::offerRecovery()
{
    for (const std::unique_ptr<CVXToolPluginBase>& pTool : m_tools)
        pTool->offerRecovery();
}

CVXToolPluginBase* CVXDocumentMenus::toolOfSubWindow(const QMdiSubWindow* pSubWindow) const
{
    if (!pSubWindow || !pSubWindow->widget())
        return nullptr;
    for (const std::unique_ptr<CVXToolPluginBase>& pTool : m_tools) {
        if (pTool->hasDocuments() && pTool->documentWidget() == pSubWindow->widget())
            return pTool.get();
    }
    return nullptr;
}

CVXToolPluginBase* CVXDocumentMenus::targetTool() const
{
    if (CVXToolPluginBase* pActive = toolOfSubWindow(m_pArea->activeSubWindow()))
        return pActive;
    for (const std::unique_ptr<CVXToolPluginBase>& pTool : m_tools) {
        if (pTool->hasDocuments())
            return pTool.get();
    }
    return nullptr;
}

void CVXDocumentMenus::followActiveWindow(QMdiSubWindow* pSubWindow)
{
    CVXToolPluginBase* pTool = toolOfSubWindow(pSubWindow);
    QUndoStack* pStack = pTool ? pTool->undoStack() : nullptr;
    if (pStack && !m_pUndoGroup->stacks().contains(pStack))
        m_pUndoGroup->addStack(pStack);
    m_pUndoGroup->setActiveStack(pStack);
}

void CVXDocumentMenus::updateFileActions()
{
    const bool bDocuments = targetTool() != nullptr;
    for (QAction* pAction : {m_pOpen, m_pSave, m_pSaveAs})
        pAction->setEnabled(bDocuments);
}

void CVXDocumentMenus::save(bool bChooseName)
{
    CVXToolPluginBase* pTool = targetTool();
    if (pTool && pTool->saveDocument(bChooseName))
        announceFile(pTool);
}

void CVXDocumentMenus::open()
{
    CVXToolPluginBase* pTool = targetTool();
    if (pTool && pTool->openDocument())
        announceFile(pTool);
}

void CVXDocumentMenus::announceFile(CVXToolPluginBase* pTool)
{
    const QString strPath = pTool->documentFilePath();
    if (!strPath.isEmpty())
        emit documentFileUsed(strPath);
}
