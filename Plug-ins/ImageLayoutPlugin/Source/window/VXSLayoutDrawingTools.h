#pragma once

class QAction;
class QObject;
class QToolButton;
class CVXSLayoutView;

// The toolbar's three drawing tools, rectangle, ellipse and line/arrow, kept so that at
// most one of them is on; the view shows a cross cursor while one is.
class CVXSLayoutDrawingTools
{
public:
    // Without a view the cursor stays as it is.
    CVXSLayoutDrawingTools(QAction& rectangle, QAction& ellipse, QToolButton& arrow, CVXSLayoutView* pView);

    // After the user switched a tool's control on or off.
    void toolToggled(const QObject* pTool, bool bOn) const;
    // Switches the line/arrow tool on, the others off.
    void useArrowTool() const;
    void switchAllOff() const;
    // The Pointer: the tool that is on goes off, the cursor back to normal.
    void usePointer() const;
    void updateCursor() const;

private:
    void switchOthersOff(const QObject* pTool) const;

    QAction& m_rectangle;
    QAction& m_ellipse;
    QToolButton& m_arrow;
    CVXSLayoutView* m_pView = nullptr; // not owned
};
