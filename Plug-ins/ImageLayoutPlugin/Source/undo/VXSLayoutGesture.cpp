#include "undo/VXSLayoutGesture.h"

#include "VXSLayoutManager.h"

void CVXSLayoutGesture::begin(CVXSLayoutManager* pManager, const QString& strText)
{
    end();
    if (!pManager)
        return;
    pManager->beginChange();
    m_pManager = pManager;
    m_strText = strText;
}

void CVXSLayoutGesture::setText(const QString& strText)
{
    m_strText = strText;
}

void CVXSLayoutGesture::end()
{
    if (!m_pManager)
        return;
    CVXSLayoutManager* pManager = m_pManager;
    m_pManager = nullptr;
    pManager->endChange(m_strText);
}

bool CVXSLayoutGesture::isOpen() const
{
    return m_pManager != nullptr;
}
