#include "VXSLayoutRenderer.h"

#include "VXSImageResampler.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemArrow.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutItemText.h"
#include "VXSLayoutView.h"

#include <QGraphicsScene>
#include <QPainter>
#include <QtConcurrent>

#include <functional>

using namespace VXSLayout;

namespace {

// Pens of the output: one device pixel on screen-sized pages, two units on larger ones.
QPen outputPen(double dScale)
{
    return QPen(QBrush(QColor(0, 0, 0, 255)), dScale <= 1.0 ? 0 : 2, Qt::SolidLine, Qt::SquareCap,
                Qt::BevelJoin);
}

// The item's bounding rectangle moved inwards by nInset on every side and scaled by the
// whole-number scale, edges inclusive.
QRect insetScaledRect(const QGraphicsItem* pItem, int nInset, int nScale)
{
    const QRectF b = pItem->boundingRect();
    return QRect(QPoint(int((b.left() + nInset) * nScale), int((b.top() + nInset) * nScale)),
                 QPoint(int((b.right() - nInset) * nScale), int((b.bottom() - nInset) * nScale)));
}

// An image item's picture and the device rectangle it fills.
struct PlacedImage
{
    QRect target;
    QImage image;
};

// The picture of each image item among the items, in their order, scaled to its place (the
// inset of 2 leaves out the item's frame). Reducing large images is the costly part of
// output, so it runs on every core before anything is drawn; the pixels are the same as
// one after the other.
QVector<PlacedImage> placedImages(const QVector<QGraphicsItem*>& items, int nScale)
{
    QVector<PlacedImage> placed;
    for (QGraphicsItem* pItem : items) {
        if (pItem->type() == ImageItemType)
            placed.push_back({insetScaledRect(pItem, 2, nScale), static_cast<CVXSLayoutItemImage*>(pItem)->getImage()});
    }
    const std::function<PlacedImage(const PlacedImage&)> scale = [](const PlacedImage& source) {
        return PlacedImage {source.target, CVXSImageResampler::scaled(source.image, source.target.size())};
    };
    return QtConcurrent::blockingMapped<QVector<PlacedImage>>(placed, scale);
}

} // namespace

CVXSLayoutRenderer::CVXSLayoutRenderer(QGraphicsScene& scene, const CVXSLayoutView* pView)
    : m_scene(scene)
    , m_pView(pView)
{
}

QSize CVXSLayoutRenderer::pageSize() const
{
    return QSize(int(m_scene.width() + 1.0), int(m_scene.height() + 1.0));
}

QSize CVXSLayoutRenderer::deviceSize(double dScale) const
{
    const QSize page = pageSize();
    return QSize(int(page.width() * dScale), int(page.height() * dScale));
}

void CVXSLayoutRenderer::render(QPainter& painter, double dScale) const
{
    // The default pen outlines the white page; its right and bottom edges fall outside
    // the device, leaving the black line along the top and the left.
    const QSize device = deviceSize(dScale);
    painter.setBrush(QBrush(QColor(255, 255, 255, 255)));
    painter.drawRect(0, 0, device.width(), device.height());
    painter.setPen(outputPen(dScale));

    const QSize page = pageSize();
    const QList<QGraphicsItem*> items = m_scene.items(QRectF(0, 0, page.width(), page.height()),
                                                      Qt::IntersectsItemShape, Qt::DescendingOrder);
    const QVector<QGraphicsItem*> lowestFirst(items.crbegin(), items.crend());
    const QVector<PlacedImage> images = placedImages(lowestFirst, int(dScale));
    auto image = images.cbegin();
    for (QGraphicsItem* pItem : lowestFirst) {
        if (pItem->type() != ImageItemType) {
            drawItem(painter, pItem, dScale);
        } else {
            const PlacedImage& placed = *image++;
            if (!placed.image.isNull())
                painter.drawImage(placed.target.topLeft(), placed.image);
        }
    }
}

void CVXSLayoutRenderer::drawItem(QPainter& painter, QGraphicsItem* pItem, double dScale) const
{
    const int nScale = int(dScale);
    switch (pItem->type()) {
    case ArrowItemType:
    case TextItemType:
        drawScaled(painter, dScale, pItem);
        break;
    case RectangleItemType:
        if (!m_pView || !m_pView->isAuxiliaryItem(pItem))
            painter.drawRect(insetScaledRect(pItem, 1, nScale));
        break;
    case EllipseItemType:
        painter.drawEllipse(insetScaledRect(pItem, 1, nScale));
        break;
    default:
        break;
    }
}

void CVXSLayoutRenderer::drawScaled(QPainter& painter, double dScale, QGraphicsItem* pItem)
{
    painter.save();
    painter.resetTransform();
    painter.scale(dScale, dScale);
    if (pItem->type() == ArrowItemType) {
        static_cast<CVXSLayoutItemArrow*>(pItem)->drawArrow(&painter);
    } else {
        auto* pText = static_cast<CVXSLayoutItemText*>(pItem);
        const QRectF b = pText->boundingRect();
        const QRect textRect(QPoint(int(b.left()), int(b.top())), QPoint(int(b.right()), int(b.bottom())));
        const QString strText = pText->getText();
        if (!strText.isNull()) {
            painter.setFont(pText->getFont());
            painter.setPen(pText->getColor());
            painter.drawText(textRect, int(pText->getTextFlags()), strText);
        }
    }
    painter.restore();
}
