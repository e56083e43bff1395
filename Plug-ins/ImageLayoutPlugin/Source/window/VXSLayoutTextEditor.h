#pragma once

#include <QColor>
#include <QCoreApplication>
#include <QFont>
#include <QString>

class CVXSLayoutItemText;
class CVXSLayoutManager;
class CVXSLayoutView;

// Changes a text item on the page, each change one undo step, and keeps the view's
// handles and selection in step: new text and format, another font or colour, or, when
// its text is emptied, its removal.
class CVXSLayoutTextEditor
{
    // The texts are the window's and are translated in its context.
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutWindow)
public:
    CVXSLayoutTextEditor(CVXSLayoutManager* pMngr, CVXSLayoutView& view, CVXSLayoutItemText& item);

    // A text of nothing but white space removes the item.
    void setText(const QString& strText, Qt::Alignment textFlags, const QFont& font, const QColor& color) const;
    void setFont(const QFont& font) const;
    void setColor(const QColor& color) const;

private:
    // After a change: the item's area, its handles, the page.
    void repaint() const;

    CVXSLayoutManager* m_pMngr = nullptr; // not owned
    CVXSLayoutView& m_view;
    CVXSLayoutItemText& m_item;
};
