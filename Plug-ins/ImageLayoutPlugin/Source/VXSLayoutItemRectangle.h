#pragma once

#include "VXSLayoutConstants.h"

#include <QGraphicsRectItem>

// A rectangle drawn by the user; the view also uses it for its selection handles and
// cell highlight. Painted with the item's own pen and brush.
class CVXSLayoutItemRectangle : public QGraphicsRectItem
{
public:
    enum { Type = VXSLayout::RectangleItemType };

    explicit CVXSLayoutItemRectangle(QGraphicsItem* parent = nullptr);
    CVXSLayoutItemRectangle(const QRectF& rect, QGraphicsItem* parent);
    CVXSLayoutItemRectangle(int x, int y, int width, int height);
    ~CVXSLayoutItemRectangle() override;

    void paint(QPainter* pPainter, const QStyleOptionGraphicsItem* pOption, QWidget* pWidget) override;
    int type() const override;

private:
    int m_nIndex = -1;
};
