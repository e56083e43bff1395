#include "VXSLayoutItemText.h"

#include "figure/VXSFigurePainter.h"
#include "scene/VXSLayoutItemGeometry.h"

#include <QApplication>
#include <QPainter>

CVXSLayoutItemText::CVXSLayoutItemText(const QString& text, QGraphicsItem* /*parent*/, QGraphicsScene* /*scene*/)
    : QGraphicsRectItem(nullptr)
    , m_strText(text)
    , m_oFont(QApplication::font())
    , m_oFontMetrics(m_oFont)
{
}

CVXSLayoutItemText::~CVXSLayoutItemText() = default;

QString CVXSLayoutItemText::getText() const
{
    return m_strText;
}

void CVXSLayoutItemText::setText(const QString& text)
{
    m_strText = text;
}

void CVXSLayoutItemText::setColor(const QColor& color)
{
    m_oColor = color;
}

void CVXSLayoutItemText::setTextFlags(Qt::Alignment textFlags)
{
    m_textFlags = textFlags;
}

void CVXSLayoutItemText::setFont(const QFont& font)
{
    m_oFont = font;
    m_oFontMetrics = QFontMetrics(m_oFont);
}

QFont CVXSLayoutItemText::getFont() const
{
    return m_oFont;
}

QColor CVXSLayoutItemText::getColor() const
{
    return m_oColor;
}

Qt::Alignment CVXSLayoutItemText::getTextFlags() const
{
    return m_textFlags;
}

QFontMetrics CVXSLayoutItemText::getFontMetrics() const
{
    return m_oFontMetrics;
}

void CVXSLayoutItemText::paint(QPainter* pPainter, const QStyleOptionGraphicsItem*, QWidget*)
{
    const QRectF r = VXSLayoutItemGeometry::normalizedBoundingRect(*this);
    if (m_strText.isNull())
        return;
    CVXSFigurePainter().drawUnder(*pPainter, *this);
    pPainter->setFont(m_oFont);
    pPainter->setPen(m_oColor);
    // Lines hang from the top of the box; the flag stays set from the first paint on.
    m_textFlags |= Qt::AlignTop;
    pPainter->drawText(int(r.x()), int(r.y()), int(r.width()), int(r.height()), int(m_textFlags), m_strText);
}

int CVXSLayoutItemText::type() const
{
    return Type;
}
