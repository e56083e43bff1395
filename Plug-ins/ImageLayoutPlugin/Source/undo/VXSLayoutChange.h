#pragma once

#include <QPointer>
#include <QString>

class CVXSLayoutManager;

// One user change of the layout for the length of a scope: it begins on construction and
// ends, becoming an undo step with the text when the layout changed, on destruction.
// Without a manager it does nothing.
class CVXSLayoutChange
{
public:
    CVXSLayoutChange(CVXSLayoutManager* pManager, const QString& strText);
    ~CVXSLayoutChange();
    CVXSLayoutChange(const CVXSLayoutChange&) = delete;
    CVXSLayoutChange& operator=(const CVXSLayoutChange&) = delete;

    // For changes whose kind shows only on the way.
    void setText(const QString& strText);

private:
    QPointer<CVXSLayoutManager> m_pManager;
    QString m_strText;
};
