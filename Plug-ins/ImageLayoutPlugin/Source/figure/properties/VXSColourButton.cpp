#include "figure/properties/VXSColourButton.h"

#include <QColorDialog>
#include <QPainter>
#include <QPixmap>

namespace {
constexpr int SwatchWidth = 28;
constexpr int SwatchHeight = 14;
} // namespace

CVXSColourButton::CVXSColourButton(const QString& strObjectName, QWidget* pParent)
    : QToolButton(pParent)
{
    setObjectName(strObjectName);
    setIconSize(QSize(SwatchWidth, SwatchHeight));
    setColour(m_colour);
    connect(this, &QToolButton::clicked, this, &CVXSColourButton::choose);
}

QColor CVXSColourButton::colour() const
{
    return m_colour;
}

void CVXSColourButton::setColour(const QColor& colour)
{
    m_colour = colour;
    QPixmap swatch(iconSize());
    swatch.fill(Qt::white);
    QPainter painter(&swatch);
    // A checkered half shows through what is not opaque.
    painter.fillRect(QRect(swatch.width() / 2, 0, swatch.width() / 2, swatch.height()), QBrush(Qt::gray, Qt::Dense4Pattern));
    painter.fillRect(swatch.rect(), colour);
    painter.setPen(Qt::darkGray);
    painter.drawRect(swatch.rect().adjusted(0, 0, -1, -1));
    painter.end();
    setIcon(QIcon(swatch));
    setToolTip(colour.name(QColor::HexArgb));
}

void CVXSColourButton::choose()
{
    const QColor chosen = QColorDialog::getColor(m_colour, this, QString(), QColorDialog::ShowAlphaChannel);
    if (!chosen.isValid() || chosen == m_colour)
        return;
    setColour(chosen);
    emit colourChosen(chosen);
}
