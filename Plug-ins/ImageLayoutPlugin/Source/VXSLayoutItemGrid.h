#pragma once

#include "VXSLayoutConstants.h"

#include <QGraphicsRectItem>

class QGraphicsScene;

// The dashed placeholder frame of one cell of a grid layout style.
class CVXSLayoutItemGrid : public QGraphicsRectItem
{
public:
    enum { Type = VXSLayout::GridItemType };

    CVXSLayoutItemGrid();
    // Both arguments are ignored; the view places the frame itself.
    CVXSLayoutItemGrid(QGraphicsItem* parent, QGraphicsScene* scene);
    ~CVXSLayoutItemGrid() override;

    void paint(QPainter* pPainter, const QStyleOptionGraphicsItem* pOption, QWidget* pWidget) override;
    int type() const override;
};
