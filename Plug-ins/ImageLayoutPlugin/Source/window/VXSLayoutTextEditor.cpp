#include "window/VXSLayoutTextEditor.h"

#include "undo/VXSLayoutChange.h"
#include "VXSLayoutItemText.h"
#include "VXSLayoutView.h"

#include <QGraphicsScene>

CVXSLayoutTextEditor::CVXSLayoutTextEditor(CVXSLayoutManager* pMngr, CVXSLayoutView& view, CVXSLayoutItemText& item)
    : m_pMngr(pMngr)
    , m_view(view)
    , m_item(item)
{
}

void CVXSLayoutTextEditor::setText(const QString& strText, Qt::Alignment textFlags, const QFont& font,
                                   const QColor& color) const
{
    if (strText.trimmed().isEmpty()) {
        m_view.deleteSelected();
        return;
    }
    CVXSLayoutChange change(m_pMngr, tr("Edit Text"));
    m_item.setText(strText);
    m_item.setTextFlags(textFlags);
    m_item.setFont(font);
    m_item.setColor(color);
    repaint();
    m_view.setSelectedItem(&m_item);
}

void CVXSLayoutTextEditor::setFont(const QFont& font) const
{
    CVXSLayoutChange change(m_pMngr, tr("Change Font"));
    m_item.setFont(font);
    repaint();
}

void CVXSLayoutTextEditor::setColor(const QColor& color) const
{
    CVXSLayoutChange change(m_pMngr, tr("Change Colour"));
    m_item.setColor(color);
    repaint();
}

void CVXSLayoutTextEditor::repaint() const
{
    m_view.scene()->update(m_item.boundingRect());
    m_view.showHandles(&m_item);
    m_view.scene()->update();
}
