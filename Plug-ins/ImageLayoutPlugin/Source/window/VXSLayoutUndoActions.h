#pragma once

#include <QCoreApplication>
#include <QKeySequence>
#include <QList>

class QUndoStack;
class QWidget;

// The layout window's Undo and Redo: actions of the window, not toolbar entries, made
// from the layout's undo stack; their keys work while the focus is in the window.
class CVXSLayoutUndoActions
{
    // The texts are the window's and are translated in its context.
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutWindow)
public:
    static void addTo(QWidget* pWindow, QUndoStack* pStack);
    static QList<QKeySequence> undoShortcuts();
    static QList<QKeySequence> redoShortcuts();
};
