#include "undo/VXSLayoutChange.h"

#include "VXSLayoutManager.h"

CVXSLayoutChange::CVXSLayoutChange(CVXSLayoutManager* pManager, const QString& strText)
    : m_pManager(pManager)
    , m_strText(strText)
{
    if (m_pManager)
        m_pManager->beginChange();
}

CVXSLayoutChange::~CVXSLayoutChange()
{
    if (m_pManager)
        m_pManager->endChange(m_strText);
}

void CVXSLayoutChange::setText(const QString& strText)
{
    m_strText = strText;
}
