#pragma once

#include "figure/VXSItemFigure.h"

#include <QBrush>
#include <QColor>
#include <QFont>
#include <QImage>
#include <QPen>
#include <QPoint>
#include <QRectF>
#include <QString>

class QGraphicsItem;

// Everything that makes one layout item what it is, as a plain value: its kind, rectangle,
// z value, pen and brush, and the fields of its kind (text, font, colour and alignment;
// arrow points and heads; image and cell) and what the figure features added. Undo records items this way, and layout files
// are written from and read into it. The image is shared with the item, never copied.
class CVXSLayoutItemState
{
public:
    // The item's state; an item of no layout kind gives a state whose kind is 0.
    static CVXSLayoutItemState capture(const QGraphicsItem& item);
    // A new item of the state's kind with the state applied; null for an unknown kind.
    // The caller adds it to a scene.
    QGraphicsItem* createItem() const;
    // Gives an item of the same kind this state; an item of another kind is left alone.
    void applyTo(QGraphicsItem& item) const;

    bool operator==(const CVXSLayoutItemState& other) const;
    bool operator!=(const CVXSLayoutItemState& other) const { return !(*this == other); }

    int nType = 0;          // the item's type() number, VXSLayout::ImageItemType and so on
    QRectF rect;            // the item's rect(); for arrows it only bounds the line
    qreal z = 0;
    QPen pen;
    QBrush brush;
    // Text items.
    QString strText;
    QFont font;
    QColor color;
    int nTextFlags = 0;
    // Arrows and lines.
    QPoint startPoint;
    QPoint endPoint;
    bool bStartHead = false;
    bool bEndHead = false;
    double dHeadLength = 0.0;
    double dHeadWidthRatio = 0.0;
    // Image items.
    QImage image;
    int nCellIndex = -1;
    // What the figure features added (look, panel letter, scale bar).
    CVXSItemFigure figure;
};
