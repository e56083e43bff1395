#include "figure/properties/VXSGeometryEditor.h"

#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>
#include <QScopedValueRollback>

namespace {
constexpr double MaxMm = 10000.0;
} // namespace

CVXSGeometryEditor::CVXSGeometryEditor(QWidget* pParent)
    : QWidget(pParent)
{
    auto* pGrid = new QGridLayout(this);
    pGrid->setContentsMargins(0, 0, 0, 0);
    m_pX = addBox(QStringLiteral("figureX"), tr("X:"), 0, 0);
    m_pY = addBox(QStringLiteral("figureY"), tr("Y:"), 0, 2);
    m_pWidth = addBox(QStringLiteral("figureWidth"), tr("Width:"), 1, 0);
    m_pHeight = addBox(QStringLiteral("figureHeight"), tr("Height:"), 1, 2);
    m_pWidth->setMinimum(0.01);
    m_pHeight->setMinimum(0.01);
}

QDoubleSpinBox* CVXSGeometryEditor::addBox(const QString& strObjectName, const QString& strLabel, int nRow,
                                           int nColumn)
{
    auto* pGrid = static_cast<QGridLayout*>(layout());
    auto* pBox = new QDoubleSpinBox(this);
    pBox->setObjectName(strObjectName);
    pBox->setRange(-MaxMm, MaxMm);
    pBox->setDecimals(2);
    pBox->setSuffix(tr(" mm"));
    pBox->setKeyboardTracking(false);
    pGrid->addWidget(new QLabel(strLabel, this), nRow, nColumn);
    pGrid->addWidget(pBox, nRow, nColumn + 1);
    connect(pBox, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &CVXSGeometryEditor::edited);
    return pBox;
}

void CVXSGeometryEditor::showGeometry(const QRectF& rectMm, bool bEditable)
{
    const QScopedValueRollback<bool> showing(m_bShowing, true);
    m_shown = rectMm;
    m_pX->setValue(rectMm.x());
    m_pY->setValue(rectMm.y());
    m_pWidth->setValue(rectMm.width());
    m_pHeight->setValue(rectMm.height());
    m_displayed = QRectF(m_pX->value(), m_pY->value(), m_pWidth->value(), m_pHeight->value());
    for (QDoubleSpinBox* pBox : {m_pX, m_pY, m_pWidth, m_pHeight})
        pBox->setEnabled(bEditable);
    setToolTip(bEditable ? QString() : tr("An image in a grid cell is fitted to its cell."));
}

void CVXSGeometryEditor::edited()
{
    if (m_bShowing)
        return;
    // The boxes round to two decimals; a box left as it was shown keeps the item's own value.
    const auto value = [](const QDoubleSpinBox* pBox, double dShown, double dExact) {
        return pBox->value() == dShown ? dExact : pBox->value();
    };
    const QRectF rect(value(m_pX, m_displayed.x(), m_shown.x()), value(m_pY, m_displayed.y(), m_shown.y()),
                      value(m_pWidth, m_displayed.width(), m_shown.width()),
                      value(m_pHeight, m_displayed.height(), m_shown.height()));
    if (rect != m_shown)
        emit geometryEdited(rect);
}
