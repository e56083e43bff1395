#pragma once

#include <QString>

class CVXSLayoutManager;

// A press, its moves and its release as one change of the layout for undo; the text names
// what the gesture turned out to be. A gesture still open when its owner goes is left so:
// ending it then would look at a layout half torn down.
class CVXSLayoutGesture
{
public:
    // Ends a gesture whose release never came, then begins one; nothing without a manager.
    void begin(CVXSLayoutManager* pManager, const QString& strText);
    void setText(const QString& strText);
    void end();
    bool isOpen() const;

private:
    CVXSLayoutManager* m_pManager = nullptr; // not owned; set while the gesture is open
    QString m_strText;
};
