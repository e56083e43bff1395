#include "undo/VXSLayoutUndoBook.h"

#include "undo/VXSLayoutChangeCommand.h"

#include <QGraphicsItem>
#include <QGraphicsScene>

CVXSLayoutUndoBook::CVXSLayoutUndoBook(CVXSLayoutManager& manager)
    : m_manager(manager)
{
}

CVXSLayoutUndoBook::~CVXSLayoutUndoBook()
{
    qDeleteAll(m_removedItems);
}

QUndoStack* CVXSLayoutUndoBook::stack()
{
    return &m_stack;
}

void CVXSLayoutUndoBook::begin()
{
    if (m_nDepth++ > 0)
        return;
    m_start = CVXSLayoutSnapshot::take(m_manager);
    m_nStartIndex = m_stack.index();
}

void CVXSLayoutUndoBook::end(const QString& strText)
{
    if (m_nDepth == 0 || --m_nDepth > 0)
        return;
    const CVXSLayoutSnapshot after = CVXSLayoutSnapshot::take(m_manager);
    // An undo or redo in the middle of the change left its start behind: the step cannot
    // be recorded against it.
    const bool bRecordable = m_stack.index() == m_nStartIndex;
    if (bRecordable && !after.sameLayout(m_start))
        m_stack.push(new CVXSLayoutChangeCommand(m_manager, m_start, after, strText));
    // Items the command took over were in the layout at the start; the others were made
    // and removed within the change, or cannot be brought back.
    for (QGraphicsItem* pItem : qAsConst(m_removedItems)) {
        if (!bRecordable || !m_start.items.contains(pItem))
            delete pItem;
    }
    m_removedItems.clear();
    m_start = CVXSLayoutSnapshot();
}

void CVXSLayoutUndoBook::discard(QGraphicsItem* pItem)
{
    if (m_nDepth == 0) {
        delete pItem;
        return;
    }
    if (pItem->scene())
        pItem->scene()->removeItem(pItem);
    m_removedItems.append(pItem);
}
