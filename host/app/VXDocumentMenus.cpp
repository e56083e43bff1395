#include "VXDocumentMenus.h"

#include <VXToolPluginBase.h>

#include <QAction>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QMenu>
#include <QUndoGroup>
#include <QUndoStack>

CVXDocumentMenus::CVXDocumentMenus(const Tools& tools, QMdiArea* pArea, QObject* pParent)
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
    m_pSave->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
    m_pSaveAs = addAction(pFileMenu, QStringLiteral("actionSaveLayoutAs"), tr("Save Layout &As..."));
    m_pSaveAs->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_S));
    connect(m_pOpen, &QAction::triggered, this, &CVXDocumentMenus::open);
    connect(m_pSave, &QAction::triggered, this, [this] { save(false); });
    connect(m_pSaveAs, &QAction::triggered, this, [this] { save(true); });
    connect(pFileMenu, &QMenu::aboutToShow, this, &CVXDocumentMenus::updateFileActions);
    updateFileActions();
}

void CVXDocumentMenus::fillEditMenu(QMenu* pEditMenu)
{
    // No shortcuts here: the tool windows' own Undo and Redo have them while they have
    // the focus, and one key must not mean two actions.
    QAction* pUndo = m_pUndoGroup->createUndoAction(pEditMenu, tr("&Undo"));
    pUndo->setObjectName(QStringLiteral("actionUndo"));
    QAction* pRedo = m_pUndoGroup->createRedoAction(pEditMenu, tr("&Redo"));
    pRedo->setObjectName(QStringLiteral("actionRedo"));
    pEditMenu->addAction(pUndo);
    pEditMenu->addAction(pRedo);
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
    if (CVXToolPluginBase* pTool = targetTool())
        pTool->saveDocument(bChooseName);
}

void CVXDocumentMenus::open()
{
    if (CVXToolPluginBase* pTool = targetTool())
        pTool->openDocument();
}
