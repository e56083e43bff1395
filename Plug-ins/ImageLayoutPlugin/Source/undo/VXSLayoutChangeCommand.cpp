#include "undo/VXSLayoutChangeCommand.h"

#include "VXSLayoutManager.h"

#include <QGraphicsItem>
#include <QGraphicsScene>

CVXSLayoutChangeCommand::CVXSLayoutChangeCommand(CVXSLayoutManager& manager, const CVXSLayoutSnapshot& before,
                                                 const CVXSLayoutSnapshot& after, const QString& strText)
    : QUndoCommand(strText)
    , m_manager(manager)
    , m_pageBefore(pageOnly(before))
    , m_pageAfter(pageOnly(after))
{
    for (auto it = before.items.cbegin(); it != before.items.cend(); ++it) {
        const auto found = after.items.constFind(it.key());
        if (found == after.items.cend())
            m_changes.push_back({it.key(), true, false, it.value(), CVXSLayoutItemState()});
        else if (found.value() != it.value())
            m_changes.push_back({it.key(), true, true, it.value(), found.value()});
    }
    for (auto it = after.items.cbegin(); it != after.items.cend(); ++it) {
        if (!before.items.contains(it.key()))
            m_changes.push_back({it.key(), false, true, CVXSLayoutItemState(), it.value()});
    }
}

CVXSLayoutChangeCommand::~CVXSLayoutChangeCommand()
{
    for (const ItemChange& change : m_changes) {
        if (!(m_bDone ? change.bAfter : change.bBefore))
            delete change.pItem;
    }
}

CVXSLayoutSnapshot CVXSLayoutChangeCommand::pageOnly(const CVXSLayoutSnapshot& snapshot)
{
    CVXSLayoutSnapshot page = snapshot;
    page.items.clear();
    return page;
}

void CVXSLayoutChangeCommand::undo()
{
    apply(false);
    m_bDone = false;
}

void CVXSLayoutChangeCommand::redo()
{
    // The change is already made when the command is pushed.
    if (m_bDone)
        return;
    apply(true);
    m_bDone = true;
}

void CVXSLayoutChangeCommand::apply(bool bAfter)
{
    QGraphicsScene* pScene = m_manager.getScene();
    for (const ItemChange& change : m_changes) {
        const bool bPresent = bAfter ? change.bAfter : change.bBefore;
        if (!bPresent) {
            if (change.pItem->scene())
                pScene->removeItem(change.pItem);
            continue;
        }
        if (!change.pItem->scene())
            pScene->addItem(change.pItem);
        (bAfter ? change.after : change.before).applyTo(*change.pItem);
    }
    (bAfter ? m_pageAfter : m_pageBefore).restorePage(m_manager);
}
