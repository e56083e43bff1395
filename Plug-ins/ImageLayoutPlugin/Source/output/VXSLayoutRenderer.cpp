#include "output/VXSLayoutRenderer.h"

#include "figure/VXSFigurePainter.h"
#include "output/VXSImageResampler.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemArrow.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutItemText.h"
#include "VXSLayoutView.h"

#include <QGraphicsScene>
#include <QPaintEngine>
#include <QPainter>
#include <QtConcurrent>

#include <cmath>
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

// Text is measured at the resolution of raster pages on every device: a vector device's own
// resolution would make the same point size larger or smaller against the items around it.
QFont pageFont(QFont font, const QPaintDevice* pDevice)
{
    const int nPageDpi = CVXSLayoutRenderer::rasterDpi();
    const int nDeviceDpi = pDevice->logicalDpiY();
    if (font.pointSizeF() > 0 && nDeviceDpi != nPageDpi)
        font.setPointSizeF(font.pointSizeF() * nPageDpi / nDeviceDpi);
    return font;
}

// An image item's picture and the device rectangle it fills.
struct PlacedImage
{
    QRectF target;
    QImage image;
};

// The part of the picture that lands on the device, in whole source pixels, and the device
// rectangle that part fills: the picture keeps its own resolution, and what lies off the
// page is not carried along.
PlacedImage visiblePart(const PlacedImage& whole, const QRect& device)
{
    const QRect target = whole.target.toRect();
    const QRect visible = target & device;
    if (visible.isEmpty() || whole.image.isNull())
        return {};
    if (visible == target)
        return whole;
    const double dX = double(whole.image.width()) / target.width();
    const double dY = double(whole.image.height()) / target.height();
    const int nLeft = int(std::floor((visible.left() - target.left()) * dX));
    const int nTop = int(std::floor((visible.top() - target.top()) * dY));
    const int nRight = int(std::ceil((visible.right() + 1 - target.left()) * dX));
    const int nBottom = int(std::ceil((visible.bottom() + 1 - target.top()) * dY));
    const QRect source(QPoint(nLeft, nTop), QPoint(nRight - 1, nBottom - 1));
    return {QRectF(target.left() + nLeft / dX, target.top() + nTop / dY, source.width() / dX, source.height() / dY),
            whole.image.copy(source)};
}

// The picture of each image item among the items, in their order, with its place. For
// raster devices each is reduced to its place; reducing large images is the costly part of
// output, so it runs on every core before anything is drawn, and the pixels are the same as
// one after the other.
QVector<PlacedImage> placedImages(const QVector<QGraphicsItem*>& items, double dScale, const QRect& device, bool bReduce,
                                  const CVXSLayoutRenderer::ReducedImages& reduced)
{
    QVector<PlacedImage> placed;
    for (QGraphicsItem* pItem : items) {
        if (pItem->type() == ImageItemType)
            placed.push_back({CVXSLayoutRenderer::imageTarget(pItem, dScale),
                              static_cast<CVXSLayoutItemImage*>(pItem)->getImage()});
    }
    if (!bReduce) {
        for (PlacedImage& image : placed)
            image = visiblePart(image, device);
        return placed;
    }
    const std::function<PlacedImage(const PlacedImage&)> scale = [&reduced](const PlacedImage& source) {
        const QSize size = source.target.size().toSize();
        const auto found = reduced.constFind(CVXSLayoutRenderer::reducedKey(source.image, size));
        return PlacedImage {source.target,
                            found != reduced.constEnd() ? found.value() : CVXSImageResampler::scaled(source.image, size)};
    };
    return QtConcurrent::blockingMapped<QVector<PlacedImage>>(placed, scale);
}

// A picture of its place's size goes in pixel for pixel; any other is stretched to its place.
void drawPlaced(QPainter& painter, const PlacedImage& placed)
{
    if (placed.image.isNull())
        return;
    if (QSizeF(placed.image.size()) == placed.target.size())
        painter.drawImage(placed.target.topLeft(), placed.image);
    else
        painter.drawImage(placed.target, placed.image);
}

} // namespace

CVXSLayoutRenderer::CVXSLayoutRenderer(QGraphicsScene& scene, const CVXSLayoutView* pView)
    : m_scene(scene)
    , m_pView(pView)
{
}

void CVXSLayoutRenderer::setReducedImages(const ReducedImages& reduced)
{
    m_reduced = reduced;
}

QPair<qint64, quint64> CVXSLayoutRenderer::reducedKey(const QImage& image, const QSize& size)
{
    return {image.cacheKey(), quint64(quint32(size.width())) << 32 | quint32(size.height())};
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

QVector<QGraphicsItem*> CVXSLayoutRenderer::pageItems() const
{
    const QSize page = pageSize();
    const QList<QGraphicsItem*> items = m_scene.items(QRectF(0, 0, page.width(), page.height()),
                                                      Qt::IntersectsItemShape, Qt::DescendingOrder);
    return QVector<QGraphicsItem*>(items.crbegin(), items.crend());
}

void CVXSLayoutRenderer::render(QPainter& painter, double dScale) const
{
    render(painter, dScale, pageItems());
}

void CVXSLayoutRenderer::render(QPainter& painter, double dScale, const QVector<QGraphicsItem*>& lowestFirst) const
{
    // The default pen outlines the white page; its right and bottom edges fall outside
    // the device, leaving the black line along the top and the left.
    const QSize device = deviceSize(dScale);
    painter.setBrush(QBrush(QColor(255, 255, 255, 255)));
    painter.drawRect(0, 0, device.width(), device.height());
    painter.setPen(outputPen(dScale));

    const bool bRaster = painter.paintEngine() && painter.paintEngine()->type() == QPaintEngine::Raster;
    const QVector<PlacedImage> images = placedImages(lowestFirst, dScale, QRect(QPoint(0, 0), device), bRaster, m_reduced);
    auto image = images.cbegin();
    for (QGraphicsItem* pItem : lowestFirst) {
        if (pItem->type() != ImageItemType) {
            drawItem(painter, pItem, dScale);
            continue;
        }
        drawPlaced(painter, *image);
        drawFigure(painter, dScale, [&](const CVXSFigurePainter& figure) {
            figure.drawOver(painter, *pItem, QRectF(image->target.topLeft() / dScale, image->target.size() / dScale));
        });
        ++image;
    }
}

void CVXSLayoutRenderer::drawFigure(QPainter& painter, double dScale,
                                    const std::function<void(const CVXSFigurePainter&)>& draw)
{
    // In page units, on top of the painter's own transform.
    painter.save();
    painter.scale(dScale, dScale);
    draw(CVXSFigurePainter(dScale));
    painter.restore();
}

int CVXSLayoutRenderer::rasterDpi()
{
    // A new image takes the screen's resolution, as the pixmaps of the output do.
    return QImage(1, 1, QImage::Format_RGB32).logicalDpiY();
}

QRect CVXSLayoutRenderer::imageTarget(const QGraphicsItem* pItem, double dScale)
{
    // The inset of 2 leaves out the item's frame.
    return insetScaledRect(pItem, 2, int(dScale));
}

void CVXSLayoutRenderer::drawItem(QPainter& painter, QGraphicsItem* pItem, double dScale) const
{
    bool bStyled = false;
    drawFigure(painter, dScale, [&](const CVXSFigurePainter& figure) { bStyled = figure.drawShape(painter, *pItem); });
    if (bStyled)
        return;
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
    // On top of the painter's own transform, which maps the page onto a vector device.
    painter.save();
    painter.scale(dScale, dScale);
    if (pItem->type() == ArrowItemType) {
        static_cast<CVXSLayoutItemArrow*>(pItem)->drawArrow(&painter);
    } else {
        auto* pText = static_cast<CVXSLayoutItemText*>(pItem);
        const QRectF b = pText->boundingRect();
        const QRect textRect(QPoint(int(b.left()), int(b.top())), QPoint(int(b.right()), int(b.bottom())));
        const QString strText = pText->getText();
        if (!strText.isNull()) {
            CVXSFigurePainter(dScale).drawUnder(painter, *pText);
            painter.setFont(pageFont(pText->getFont(), painter.device()));
            painter.setPen(pText->getColor());
            painter.drawText(textRect, int(pText->getTextFlags()), strText);
        }
    }
    painter.restore();
}
