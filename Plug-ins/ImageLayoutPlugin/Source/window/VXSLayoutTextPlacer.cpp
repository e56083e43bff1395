#include "window/VXSLayoutTextPlacer.h"

#include "VXSLayoutItemText.h"
#include "VXSLayoutView.h"

#include <QFontMetrics>
#include <QGraphicsScene>

#include <cstdlib>

namespace {
// Where a text wider or taller than the page may start.
constexpr int OversizeTextRange = 10;
constexpr int TextPadding = 5;
} // namespace

CVXSLayoutTextPlacer::CVXSLayoutTextPlacer(CVXSLayoutView& view)
    : m_view(view)
{
}

void CVXSLayoutTextPlacer::place(const QString& strText, const QFont& font, const QColor& color,
                                 Qt::Alignment textFlags) const
{
    QGraphicsScene* pScene = m_view.scene();
    auto* pItem = new CVXSLayoutItemText(strText, nullptr, pScene);
    pScene->addItem(pItem);
    pItem->setFont(font);
    pItem->setColor(color);
    pItem->setTextFlags(textFlags);

    const QRect page = pScene->sceneRect().toRect();
    const QRect extent = QFontMetrics(pItem->getFont()).boundingRect(page.x(), page.y(), page.width(), page.height(),
                                                                     int(textFlags), strText);
    const int nWidth = extent.width() + TextPadding;
    const int nHeight = extent.height() + TextPadding;
    // y is drawn first.
    const int y = randomStart(page.height() - nHeight);
    const int x = randomStart(page.width() - nWidth);
    pItem->setRect(x, y, nWidth, nHeight);

    const int z = m_view.nextZ();
    pItem->setZValue(z);
    m_view.setTopZ(z);
    pItem->show();
    pScene->update(pItem->boundingRect());
    m_view.presentNewItem(pItem);
}

int CVXSLayoutTextPlacer::randomStart(int nFreeRange)
{
    // One pseudo-random number is drawn per call, also when the text fits exactly
    // (range 0), which then starts at 0.
    const int nRandom = std::rand();
    if (nFreeRange < 0)
        return nRandom % OversizeTextRange;
    return nFreeRange == 0 ? 0 : nRandom % nFreeRange;
}
