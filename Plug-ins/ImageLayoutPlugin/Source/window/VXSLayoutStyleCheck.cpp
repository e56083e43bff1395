#include "window/VXSLayoutStyleCheck.h"

#include "VXSLayoutConstants.h"
#include "VXSLayoutManager.h"

#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QGraphicsItem>
#include <QGraphicsScene>

#include <algorithm>

CVXSLayoutStyleCheck::CVXSLayoutStyleCheck(CVXSLayoutManager& mngr)
    : m_mngr(mngr)
{
}

bool CVXSLayoutStyleCheck::allows(int nStyle, QWidget* pParent) const
{
    if (nStyle == VXSLayout::FreeStyle || imageCount() <= m_mngr.getCellCount(nStyle))
        return true;
    CVXSMessageBox::warning(pParent, CVXUtilityFns::getAppName(),
                            tr("No. of images are more than the no. of expected cells!\n"
                               "Delete few images before changing the layout style."),
                            QString(), QString(), QString(), 0, -1);
    return false;
}

int CVXSLayoutStyleCheck::imageCount() const
{
    const QList<QGraphicsItem*> items = m_mngr.getScene()->items();
    return int(std::count_if(items.cbegin(), items.cend(),
                             [](const QGraphicsItem* pItem) { return pItem->type() == VXSLayout::ImageItemType; }));
}
