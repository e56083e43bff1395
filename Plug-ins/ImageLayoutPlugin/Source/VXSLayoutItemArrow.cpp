#include "VXSLayoutItemArrow.h"

#include "VXSLayoutConstants.h"
#include "figure/VXSFigurePainter.h"
#include "scene/VXSLayoutPens.h"

#include <VXGeometry.h>

#include <QPainter>
#include <QRegion>

#include <cmath>

namespace {
// 180 / 3.14159 taken in single precision; the head's half angle in degrees is formed
// with this factor.
constexpr double DegreesPerRadian = 57.29582574928754;
} // namespace

CVXSLayoutItemArrow::CVXSLayoutItemArrow(double x, double y, double width, double height)
    : QGraphicsRectItem(x, y, width, height, nullptr)
{
    const QRectF b = boundingRect();
    m_nStartX = int(b.left());
    m_nStartY = int(b.top());
    m_nEndX = int(b.right());
    m_nEndY = int(b.bottom());
}

CVXSLayoutItemArrow::~CVXSLayoutItemArrow() = default;

void CVXSLayoutItemArrow::setStartHead(bool bStartHead)
{
    m_bStartHead = bStartHead;
}

void CVXSLayoutItemArrow::setEndHead(bool bEndHead)
{
    m_bEndHead = bEndHead;
}

void CVXSLayoutItemArrow::setHeadLength(double dHeadLength)
{
    m_dHeadLength = dHeadLength;
}

void CVXSLayoutItemArrow::setHeadWidthRatio(double dHeadWidthRatio)
{
    m_dHeadWidthRatio = dHeadWidthRatio;
}

bool CVXSLayoutItemArrow::hasStartHead() const
{
    return m_bStartHead;
}

bool CVXSLayoutItemArrow::hasEndHead() const
{
    return m_bEndHead;
}

double CVXSLayoutItemArrow::headLength() const
{
    return m_dHeadLength;
}

double CVXSLayoutItemArrow::headWidthRatio() const
{
    return m_dHeadWidthRatio;
}

void CVXSLayoutItemArrow::getStartPoint(int& x, int& y) const
{
    x = m_nStartX;
    y = m_nStartY;
}

void CVXSLayoutItemArrow::getEndPoint(int& x, int& y) const
{
    x = m_nEndX;
    y = m_nEndY;
}

void CVXSLayoutItemArrow::setStartPoint(int x, int y)
{
    m_nStartX = x;
    m_nStartY = y;
}

void CVXSLayoutItemArrow::setEndPoint(int x, int y)
{
    m_nEndX = x;
    m_nEndY = y;
}

void CVXSLayoutItemArrow::fitRectToPoints()
{
    const int margin = VXSLayout::ArrowMargin;
    setRect(QRectF(QPointF(qMin(m_nStartX, m_nEndX) - margin, qMin(m_nStartY, m_nEndY) - margin),
                   QPointF(qMax(m_nStartX, m_nEndX) + margin, qMax(m_nStartY, m_nEndY) + margin)));
}

QPolygon CVXSLayoutItemArrow::headPolygon(int tipX, int tipY, int tailX, int tailY) const
{
    const double dx = double(tailX) - tipX;
    const double dy = double(tailY) - tipY;
    const double len = std::sqrt(dx * dx + dy * dy);
    QPoint cornerA(tipX, tipY);
    QPoint cornerB(tailX, tailY);
    if (len > 0.0) {
        const double ux = dx / len;
        const double uy = dy / len;
        const double halfWidth = m_dHeadWidthRatio * m_dHeadLength / 2.0;
        const double cornerDistance = std::sqrt(halfWidth * halfWidth + m_dHeadLength * m_dHeadLength);
        const double halfAngle = std::atan2(halfWidth, m_dHeadLength) * DegreesPerRadian;

        double ax = ux;
        double ay = uy;
        rotatePoint(ax, ay, halfAngle);
        cornerA = QPoint(int(tipX + cornerDistance * ax), int(tipY + cornerDistance * ay));

        double bx = ux;
        double by = uy;
        rotatePoint(bx, by, -halfAngle);
        cornerB = QPoint(int(tipX + cornerDistance * bx), int(tipY + cornerDistance * by));
    }
    return QPolygon({QPoint(tipX, tipY), cornerA, cornerB});
}

void CVXSLayoutItemArrow::drawArrow(QPainter* pPainter)
{
    // Heads in the line's colour: black for the standard pen.
    pPainter->setBrush(QBrush(pPainter->pen().color(), Qt::SolidPattern));
    m_oStartHeadPolygon = headPolygon(m_nStartX, m_nStartY, m_nEndX, m_nEndY);
    if (m_bStartHead)
        pPainter->drawPolygon(m_oStartHeadPolygon, Qt::OddEvenFill);
    m_oEndHeadPolygon = headPolygon(m_nEndX, m_nEndY, m_nStartX, m_nStartY);
    if (m_bEndHead)
        pPainter->drawPolygon(m_oEndHeadPolygon, Qt::OddEvenFill);
    pPainter->drawLine(m_nStartX, m_nStartY, m_nEndX, m_nEndY);
}

bool CVXSLayoutItemArrow::containsPoint(const QPoint& point) const
{
    if (m_oStartHeadPolygon.size() != 3 || m_oEndHeadPolygon.size() != 3)
        return false;
    const QPolygon outline({m_oStartHeadPolygon[1], m_oStartHeadPolygon[0], m_oStartHeadPolygon[2],
                            m_oEndHeadPolygon[1], m_oEndHeadPolygon[0], m_oEndHeadPolygon[2]});
    return QRegion(outline, Qt::OddEvenFill).contains(point);
}

void CVXSLayoutItemArrow::paint(QPainter* pPainter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (CVXSFigurePainter().drawShape(*pPainter, *this))
        return;
    pPainter->setPen(VXSLayoutPens::thinBlack());
    drawArrow(pPainter);
}

int CVXSLayoutItemArrow::type() const
{
    return Type;
}
