#pragma once

#include "VXSLayoutConstants.h"

#include "scene/VXSImageDisplayCache.h"

#include <QGraphicsRectItem>
#include <QImage>

// An image placed on the layout page, optionally occupying one grid cell.
// Its geometry is its rectangle; the image is stretched to fill it.
class CVXSLayoutItemImage : public QGraphicsRectItem
{
public:
    enum { Type = VXSLayout::ImageItemType };

    // The rectangle starts as the image's own (0, 0, width, height); parent is ignored.
    explicit CVXSLayoutItemImage(const QImage& image, QGraphicsItem* parent = nullptr);
    ~CVXSLayoutItemImage() override;

    QImage& getImage();
    const QImage& image() const;
    int getCellIndex() const;
    void setCellIndex(int nCellIndex);
    // Whether the scene point lies on a pixel of the image as shown.
    bool containsImagePixel(const QPoint& point) const;

    // The screen-sized copy as painting through the device transform would make it, made
    // elsewhere (CVXSLayoutDisplayPreparer), so that the first paint costs one blit.
    const CVXSImageDisplayCache& displayCache() const;
    void setDisplayCache(const CVXSImageDisplayCache& cache);

    void paint(QPainter* pPainter, const QStyleOptionGraphicsItem* pOption, QWidget* pWidget) override;
    int type() const override;

private:
    QImage m_image;
    int m_nCellIndex = -1;
    // Screen-sized copy of m_image, so that large sources paint fast and without moiré.
    CVXSImageDisplayCache m_displayCache;
};
