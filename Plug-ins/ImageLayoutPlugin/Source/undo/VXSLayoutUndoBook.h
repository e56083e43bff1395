#pragma once

#include "undo/VXSLayoutSnapshot.h"

#include <QList>
#include <QString>
#include <QUndoStack>

class QGraphicsItem;
class CVXSLayoutManager;

// The undo history of one layout and the change being made now. Every user change of the
// layout runs between begin and end (CVXSLayoutChange does both); a change that altered the
// layout becomes one command with the text on the stack. Changes may nest; the outermost
// one counts.
class CVXSLayoutUndoBook
{
public:
    explicit CVXSLayoutUndoBook(CVXSLayoutManager& manager);
    ~CVXSLayoutUndoBook();
    CVXSLayoutUndoBook(const CVXSLayoutUndoBook&) = delete;
    CVXSLayoutUndoBook& operator=(const CVXSLayoutUndoBook&) = delete;

    QUndoStack* stack();
    void begin();
    void end(const QString& strText);
    // Takes over an item the layout gave up. During a change it is taken out of the scene
    // and kept, so that the change's command can bring it back; outside a change it is
    // deleted at once.
    void discard(QGraphicsItem* pItem);

private:
    CVXSLayoutManager& m_manager;
    // Its commands own the items that are out of the scene on their side of the history.
    QUndoStack m_stack;
    int m_nDepth = 0;
    int m_nStartIndex = 0;
    CVXSLayoutSnapshot m_start;
    // Given up during the open change; owned here until the change ends.
    QList<QGraphicsItem*> m_removedItems;
};
