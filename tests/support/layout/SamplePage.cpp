#include "SamplePage.h"

#include "LayoutFixture.h"

#include <VXSLayoutItemArrow.h>
#include <VXSLayoutItemText.h>
#include <VXSLayoutView.h>

#include <QGraphicsScene>

namespace {

void addText(LayoutFixture& fixture, const QString& strText, const QFont& font, const QColor& colour,
             const QPointF& topLeft)
{
    auto* pText = new CVXSLayoutItemText(strText);
    pText->setFont(font);
    pText->setColor(colour);
    pText->setRect(QRectF(topLeft, pText->getFontMetrics().size(0, strText)));
    fixture.scene()->addItem(pText);
    pText->setZValue(fixture.view()->nextZ());
    fixture.view()->setTopZ(int(pText->zValue()));
}

void addLine(LayoutFixture& fixture, const QRectF& span, bool bStartHead, bool bEndHead)
{
    auto* pArrow = static_cast<CVXSLayoutItemArrow*>(fixture.addItem("arrow", span));
    pArrow->setStartHead(bStartHead);
    pArrow->setEndHead(bEndHead);
}

} // namespace

QSize SamplePage::viewSize()
{
    return QSize(420, 310);
}

void SamplePage::fill(LayoutFixture& fixture, int nStyle)
{
    fixture.chooseStyle(nStyle);
    fixture.pasteImage(gradient());
    fixture.pasteImage(flat());
    fixture.pasteImage(bars());
    // Moved by the user so that it hangs over the page's right edge.
    fixture.addItem("image", QRectF(376, 110, 64, 40));
    fixture.addItem("rectangle", QRectF(236, 160, 80, 50));
    fixture.addItem("ellipse", QRectF(300, 24, 90, 56));
    addLine(fixture, QRectF(236, 236, 150, 0), false, false);
    addLine(fixture, QRectF(236, 258, 150, 0), false, true);
    addLine(fixture, QRectF(236, 280, 150, 0), true, true);
    const QStringList strings = texts();
    addText(fixture, strings[0], QFont(QStringLiteral("DejaVu Sans"), 9), Qt::black, QPointF(24, 4));
    addText(fixture, strings[1], QFont(QStringLiteral("DejaVu Sans"), 11, QFont::Bold), QColor(160, 20, 40),
            QPointF(330, 180));
}

QStringList SamplePage::texts()
{
    return {QStringLiteral("Lung 12 h"), QStringLiteral("Dose 2 Gy")};
}

QImage SamplePage::gradient()
{
    QImage image(320, 240, QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, qRgb(x * 255 / 319, y * 255 / 239, 255 - (x + y) * 255 / 558));
    }
    return image;
}

QImage SamplePage::flat()
{
    QImage image(100, 60, QImage::Format_RGB32);
    image.fill(QColor(240, 140, 20));
    return image;
}

QImage SamplePage::bars()
{
    QImage image(120, 90, QImage::Format_RGB32);
    for (int x = 0; x < image.width(); ++x) {
        const QRgb colour = (x / 20) % 2 ? qRgb(30, 60, 200) : qRgb(250, 250, 250);
        for (int y = 0; y < image.height(); ++y)
            image.setPixel(x, y, colour);
    }
    return image;
}
