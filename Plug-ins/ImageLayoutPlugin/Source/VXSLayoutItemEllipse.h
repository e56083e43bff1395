#pragma once

#include "VXSLayoutConstants.h"

#include <QGraphicsEllipseItem>

// An ellipse drawn by the user: always a white disc with a thin black outline that hides
// what lies beneath it, whatever pen and brush the item carries.
class CVXSLayoutItemEllipse : public QGraphicsEllipseItem
{
public:
    enum { Type = VXSLayout::EllipseItemType };

    explicit CVXSLayoutItemEllipse(QGraphicsItem* parent = nullptr);
    CVXSLayoutItemEllipse(const QRectF& rect, QGraphicsItem* parent);
    CVXSLayoutItemEllipse(double x, double y, double width, double height);
    ~CVXSLayoutItemEllipse() override;

    void paint(QPainter* pPainter, const QStyleOptionGraphicsItem* pOption, QWidget* pWidget) override;
    int type() const override;

private:
    int m_nIndex = -1;
};
