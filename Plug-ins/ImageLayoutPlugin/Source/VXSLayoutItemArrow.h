#pragma once

#include "VXSLayoutConstants.h"

#include <QGraphicsRectItem>
#include <QPolygon>

// A straight line from a start to an end point, with an optional filled head at either
// end. The line is given by its two points; the item's rectangle only bounds repaints
// and picking.
class CVXSLayoutItemArrow : public QGraphicsRectItem
{
public:
    enum { Type = VXSLayout::ArrowItemType };

    // The points are seeded from the bounding rectangle: start its top-left, end its
    // bottom-right. The creator sets both head flags before the first paint.
    CVXSLayoutItemArrow(double x, double y, double width, double height);
    ~CVXSLayoutItemArrow() override;

    void setStartHead(bool bStartHead);
    void setEndHead(bool bEndHead);
    void setHeadLength(double dHeadLength);
    void setHeadWidthRatio(double dHeadWidthRatio);
    bool hasStartHead() const;
    bool hasEndHead() const;
    double headLength() const;
    double headWidthRatio() const;

    void getStartPoint(int& x, int& y) const;
    void getEndPoint(int& x, int& y) const;
    void setStartPoint(int x, int y);
    void setEndPoint(int x, int y);

    // Sets the rectangle to the points' bounding box widened by the arrow margin, so that
    // repaints and picking follow the line wherever its points are moved.
    void fitRectToPoints();

    // The triangle of a head with its tip at (tipX, tipY), pointing away from (tailX, tailY).
    QPolygon headPolygon(int tipX, int tipY, int tailX, int tailY) const;
    // Draws heads and line with the painter's current pen; also used by output rendering.
    void drawArrow(QPainter* pPainter);
    // Hit test: a slim hexagon along the line, as wide as a head's base, from the last paint.
    bool containsPoint(const QPoint& point) const;

    void paint(QPainter* pPainter, const QStyleOptionGraphicsItem* pOption, QWidget* pWidget) override;
    int type() const override;

private:
    int m_nIndex = -1;
    bool m_bStartHead = false;
    bool m_bEndHead = false;
    double m_dHeadLength = 0.0;
    double m_dHeadWidthRatio = 0.0;
    int m_nStartX = 0;
    int m_nStartY = 0;
    int m_nEndX = 0;
    int m_nEndY = 0;
    QPolygon m_oStartHeadPolygon;
    QPolygon m_oEndHeadPolygon;
};
