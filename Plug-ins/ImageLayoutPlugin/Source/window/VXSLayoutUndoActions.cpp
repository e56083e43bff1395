#include "window/VXSLayoutUndoActions.h"

#include <QAction>
#include <QUndoStack>
#include <QWidget>

void CVXSLayoutUndoActions::addTo(QWidget* pWindow, QUndoStack* pStack)
{
    // Both are children of the window.
    QAction* pUndo = pStack->createUndoAction(pWindow, tr("Undo"));
    pUndo->setObjectName(QStringLiteral("m_pUndoAction"));
    pUndo->setShortcuts(undoShortcuts());
    QAction* pRedo = pStack->createRedoAction(pWindow, tr("Redo"));
    pRedo->setObjectName(QStringLiteral("m_pRedoAction"));
    pRedo->setShortcuts(redoShortcuts());
    for (QAction* pAction : {pUndo, pRedo}) {
        pAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        pWindow->addAction(pAction);
    }
}

QList<QKeySequence> CVXSLayoutUndoActions::undoShortcuts()
{
    return {QKeySequence(Qt::CTRL | Qt::Key_Z)};
}

QList<QKeySequence> CVXSLayoutUndoActions::redoShortcuts()
{
    return {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)};
}
