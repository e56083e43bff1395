#pragma once

#include "undo/VXSLayoutSnapshot.h"

#include <QUndoCommand>
#include <QVector>

class CVXSLayoutManager;

// One user change of the layout on the undo stack: the items it added, removed or changed
// with their states before and after, and the page before and after. It is pushed after
// the change was made, so its first redo does nothing.
//
// Ownership: an item that is out of the scene on the command's current side (removed by a
// done command, added by an undone one) belongs to the command and dies with it. In a
// linear history exactly one command can be in that position for any item.
class CVXSLayoutChangeCommand : public QUndoCommand
{
public:
    CVXSLayoutChangeCommand(CVXSLayoutManager& manager, const CVXSLayoutSnapshot& before,
                            const CVXSLayoutSnapshot& after, const QString& strText);
    ~CVXSLayoutChangeCommand() override;

    void undo() override;
    void redo() override;

private:
    struct ItemChange
    {
        QGraphicsItem* pItem = nullptr;
        bool bBefore = false; // in the layout before the change
        bool bAfter = false;  // in the layout after it
        CVXSLayoutItemState before;
        CVXSLayoutItemState after;
    };

    void apply(bool bAfter);
    static CVXSLayoutSnapshot pageOnly(const CVXSLayoutSnapshot& snapshot);

    CVXSLayoutManager& m_manager;
    QVector<ItemChange> m_changes;
    // Only the page parts are kept here; the item states live in m_changes.
    CVXSLayoutSnapshot m_pageBefore;
    CVXSLayoutSnapshot m_pageAfter;
    bool m_bDone = true;
};
