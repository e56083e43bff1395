#pragma once

#include <QCoreApplication>

class QGraphicsItem;
class CVXSLayoutManager;
class CVXSLayoutView;

// Takes an item off the page as one undo step, repaints where it was and leaves the view
// with nothing selected.
class CVXSLayoutItemDeleter
{
    // The texts are the window's and are translated in its context.
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutWindow)
public:
    // Without a manager the item is simply deleted.
    CVXSLayoutItemDeleter(CVXSLayoutManager* pMngr, CVXSLayoutView& view);

    void deleteItem(QGraphicsItem* pItem) const;

private:
    CVXSLayoutManager* m_pMngr = nullptr; // not owned
    CVXSLayoutView& m_view;
};
