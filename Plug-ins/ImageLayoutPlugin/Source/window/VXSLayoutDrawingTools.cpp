#include "window/VXSLayoutDrawingTools.h"

#include "VXSLayoutView.h"

#include <QAction>
#include <QToolButton>

CVXSLayoutDrawingTools::CVXSLayoutDrawingTools(QAction& rectangle, QAction& ellipse, QToolButton& arrow,
                                               CVXSLayoutView* pView)
    : m_rectangle(rectangle)
    , m_ellipse(ellipse)
    , m_arrow(arrow)
    , m_pView(pView)
{
}

void CVXSLayoutDrawingTools::toolToggled(const QObject* pTool, bool bOn) const
{
    if (bOn)
        switchOthersOff(pTool);
    updateCursor();
}

void CVXSLayoutDrawingTools::useArrowTool() const
{
    m_arrow.setChecked(true);
    switchOthersOff(&m_arrow);
    updateCursor();
}

void CVXSLayoutDrawingTools::switchAllOff() const
{
    switchOthersOff(nullptr);
}

void CVXSLayoutDrawingTools::usePointer() const
{
    // Only the first tool found on is switched off; at most one is on at a time.
    if (m_arrow.isChecked())
        m_arrow.setChecked(false);
    else if (m_ellipse.isChecked())
        m_ellipse.setChecked(false);
    else if (m_rectangle.isChecked())
        m_rectangle.setChecked(false);
    if (m_pView)
        m_pView->unsetCursor();
}

void CVXSLayoutDrawingTools::updateCursor() const
{
    if (!m_pView)
        return;
    if (m_arrow.isChecked() || m_ellipse.isChecked() || m_rectangle.isChecked())
        m_pView->setCursor(Qt::CrossCursor);
    else
        m_pView->unsetCursor();
}

void CVXSLayoutDrawingTools::switchOthersOff(const QObject* pTool) const
{
    // Setting a control to the state it has sends no toggle.
    if (pTool != &m_rectangle)
        m_rectangle.setChecked(false);
    if (pTool != &m_ellipse)
        m_ellipse.setChecked(false);
    if (pTool != &m_arrow)
        m_arrow.setChecked(false);
}
