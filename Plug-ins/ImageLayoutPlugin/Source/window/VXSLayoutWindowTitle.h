#pragma once

#include <QPointer>
#include <QString>
#include <QUndoStack>

class QWidget;

// The layout window's title: the tool's name, then the layout file's name once the layout
// has one, and a * while changes are unsaved.
class CVXSLayoutWindowTitle
{
public:
    explicit CVXSLayoutWindowTitle(QWidget& window);
    ~CVXSLayoutWindowTitle();
    CVXSLayoutWindowTitle(const CVXSLayoutWindowTitle&) = delete;
    CVXSLayoutWindowTitle& operator=(const CVXSLayoutWindowTitle&) = delete;

    // The title follows the stack's saved state from now on.
    void follow(QUndoStack* pStack);
    // Empty for a layout never saved.
    void setDocumentName(const QString& strName);
    void update();

private:
    QWidget& m_window;
    QPointer<QUndoStack> m_pStack; // the layout manager's
    // Ends with the title, which goes before the window it is a member of.
    QMetaObject::Connection m_stackConnection;
    QString m_strDocumentName;
};
