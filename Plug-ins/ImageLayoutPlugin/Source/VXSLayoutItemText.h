#pragma once

#include "VXSLayoutConstants.h"

#include <QColor>
#include <QFont>
#include <QFontMetrics>
#include <QGraphicsRectItem>
#include <QString>

class QGraphicsScene;

// A text label: one font, one colour and one alignment for the whole (possibly
// multi-line) text, drawn at the top of the item's rectangle and clipped to it.
class CVXSLayoutItemText : public QGraphicsRectItem
{
public:
    enum { Type = VXSLayout::TextItemType };

    // parent and scene are ignored: the creator adds the item and sets its rectangle.
    CVXSLayoutItemText(const QString& text, QGraphicsItem* parent = nullptr, QGraphicsScene* scene = nullptr);
    ~CVXSLayoutItemText() override;

    QString getText() const;
    void setText(const QString& text);
    void setColor(const QColor& color);
    void setTextFlags(Qt::Alignment textFlags);
    // Also rebuilds the font metrics, which follow the font.
    void setFont(const QFont& font);

    QFont getFont() const;
    QColor getColor() const;
    Qt::Alignment getTextFlags() const;
    QFontMetrics getFontMetrics() const;

    void paint(QPainter* pPainter, const QStyleOptionGraphicsItem* pOption, QWidget* pWidget) override;
    int type() const override;

private:
    int m_nIndex = -1;
    QString m_strText;
    QFont m_oFont;
    QColor m_oColor = QColor(0, 0, 0, 255);
    Qt::Alignment m_textFlags;
    QFontMetrics m_oFontMetrics;
};
