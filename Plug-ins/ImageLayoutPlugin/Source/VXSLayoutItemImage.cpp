#include "VXSLayoutItemImage.h"

#include "figure/VXSFigurePainter.h"
#include "scene/VXSLayoutItemGeometry.h"

#include <QPainter>

CVXSLayoutItemImage::CVXSLayoutItemImage(const QImage& image, QGraphicsItem* /*parent*/)
    : QGraphicsRectItem(nullptr)
    , m_image(image)
{
    setRect(QRectF(m_image.rect()));
}

CVXSLayoutItemImage::~CVXSLayoutItemImage() = default;

QImage& CVXSLayoutItemImage::getImage()
{
    return m_image;
}

const QImage& CVXSLayoutItemImage::image() const
{
    return m_image;
}

int CVXSLayoutItemImage::getCellIndex() const
{
    return m_nCellIndex;
}

void CVXSLayoutItemImage::setCellIndex(int nCellIndex)
{
    m_nCellIndex = nCellIndex;
}

bool CVXSLayoutItemImage::containsImagePixel(const QPoint& point) const
{
    const QRectF r = boundingRect();
    const int dx = point.x() - int(x());
    const int dy = point.y() - int(y());
    if (dx >= r.width() || dy >= r.height())
        return false;
    const int px = int(dx / r.width() * m_image.width() + 0.5);
    const int py = int(dy / r.height() * m_image.height() + 0.5);
    return m_image.valid(px, py);
}

const CVXSImageDisplayCache& CVXSLayoutItemImage::displayCache() const
{
    return m_displayCache;
}

void CVXSLayoutItemImage::setDisplayCache(const CVXSImageDisplayCache& cache)
{
    m_displayCache = cache;
}

void CVXSLayoutItemImage::paint(QPainter* pPainter, const QStyleOptionGraphicsItem*, QWidget*)
{
    const QRectF target = VXSLayoutItemGeometry::normalizedBoundingRect(*this);
    m_displayCache.draw(pPainter, target, m_image);
    CVXSFigurePainter().drawOver(*pPainter, *this, target);
}

int CVXSLayoutItemImage::type() const
{
    return Type;
}
