#pragma once

#include <QColor>
#include <QToolButton>

// A button that shows a colour as a swatch and lets the user choose another, opacity included.
class CVXSColourButton : public QToolButton
{
    Q_OBJECT
public:
    CVXSColourButton(const QString& strObjectName, QWidget* pParent);

    QColor colour() const;
    // Shows the colour without announcing it.
    void setColour(const QColor& colour);

signals:
    void colourChosen(const QColor& colour);

private:
    void choose();

    QColor m_colour = Qt::black;
};
