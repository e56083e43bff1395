#include "colourbar/VXSColourBarPainter.h"

#include "colourbar/VXSColourBarTicks.h"

#include <VXColourTable.h>

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

#include <algorithm>

namespace {
// The text size as a share of the bar's shorter side, and its bounds in page units.
constexpr double FontShare = 0.14;
constexpr double MinFontSize = 4.0;
constexpr double MaxFontSize = 40.0;
// The strip's thickness as a share of the bar's shorter side.
constexpr double StripShare = 0.3;
} // namespace

CVXSColourBarPainter::CVXSColourBarPainter(const CVXSColourBar& bar, const QRectF& rect)
    : m_bar(bar)
    , m_rect(rect.normalized())
    , m_dFontSize(std::clamp(std::min(m_rect.width(), m_rect.height()) * FontShare, MinFontSize, MaxFontSize))
{
}

QFont CVXSColourBarPainter::font() const
{
    QFont font;
    // Pixel sizes follow the painter's transform, so the text scales with the page.
    font.setPixelSize(std::max(1, qRound(m_dFontSize)));
    return font;
}

double CVXSColourBarPainter::titleHeight() const
{
    return m_bar.strTitle.isEmpty() ? 0.0 : QFontMetricsF(font()).height() * 1.5;
}

QRectF CVXSColourBarPainter::stripRect() const
{
    const double dHalfText = QFontMetricsF(font()).height() / 2.0;
    const QRectF body = m_rect.adjusted(0.0, titleHeight(), 0.0, 0.0);
    if (m_bar.orientation == Qt::Vertical) {
        const double dThickness = std::max(1.0, body.width() * StripShare);
        return QRectF(body.left(), body.top() + dHalfText, dThickness, std::max(1.0, body.height() - 2.0 * dHalfText));
    }
    const double dThickness = std::max(1.0, (body.height() - 2.0 * dHalfText) * 0.5);
    const double dSide = QFontMetricsF(font()).averageCharWidth() * 3.0;
    return QRectF(body.left() + dSide, body.top(), std::max(1.0, body.width() - 2.0 * dSide), dThickness);
}

QPointF CVXSColourBarPainter::placeOf(double dValue) const
{
    const QRectF strip = stripRect();
    const double dShare = (dValue - m_bar.dMinimum) / (m_bar.dMaximum - m_bar.dMinimum);
    if (m_bar.orientation == Qt::Vertical)
        return QPointF(strip.right(), strip.bottom() - dShare * strip.height());
    return QPointF(strip.left() + dShare * strip.width(), strip.bottom());
}

void CVXSColourBarPainter::draw(QPainter& painter) const
{
    if (!m_bar.isShown() || !(m_bar.dMaximum > m_bar.dMinimum))
        return;
    painter.save();
    painter.setFont(font());
    painter.setPen(QPen(Qt::black, 0.0));
    if (!m_bar.strTitle.isEmpty())
        painter.drawText(QRectF(m_rect.left(), m_rect.top(), m_rect.width(), titleHeight()),
                         Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, m_bar.strTitle);
    drawStrip(painter);
    drawTicks(painter);
    painter.restore();
}

void CVXSColourBarPainter::drawStrip(QPainter& painter) const
{
    const QVector<QRgb>& entries = CVXColourTable(m_bar.strTable).entries();
    const bool bVertical = m_bar.orientation == Qt::Vertical;
    QImage strip(bVertical ? 1 : entries.size(), bVertical ? entries.size() : 1, QImage::Format_RGB32);
    for (int i = 0; i < entries.size(); ++i) {
        // The lowest value at the bottom of a vertical bar, on the left of a horizontal one.
        if (bVertical)
            strip.setPixel(0, entries.size() - 1 - i, entries[i]);
        else
            strip.setPixel(i, 0, entries[i]);
    }
    const QRectF rect = stripRect();
    painter.drawImage(rect, strip);
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect);
}

void CVXSColourBarPainter::drawTicks(QPainter& painter) const
{
    const CVXSColourBarTicks ticks(m_bar.dMinimum, m_bar.dMaximum);
    const double dTick = m_dFontSize * 0.4;
    const double dTextHeight = QFontMetricsF(font()).height();
    for (double dValue : ticks.values()) {
        const QPointF at = placeOf(dValue);
        const QString strLabel = ticks.label(dValue);
        if (m_bar.orientation == Qt::Vertical) {
            painter.drawLine(at, at + QPointF(dTick, 0.0));
            painter.drawText(QRectF(at.x() + dTick * 1.5, at.y() - dTextHeight / 2.0,
                                    m_rect.right() - at.x() - dTick * 1.5, dTextHeight),
                             Qt::AlignLeft | Qt::AlignVCenter, strLabel);
        } else {
            painter.drawLine(at, at + QPointF(0.0, dTick));
            const double dWidth = m_rect.width();
            painter.drawText(QRectF(at.x() - dWidth / 2.0, at.y() + dTick * 1.5, dWidth, dTextHeight),
                             Qt::AlignHCenter | Qt::AlignTop, strLabel);
        }
    }
}
