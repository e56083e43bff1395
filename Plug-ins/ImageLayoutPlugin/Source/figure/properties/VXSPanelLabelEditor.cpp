#include "figure/properties/VXSPanelLabelEditor.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QScopedValueRollback>

CVXSPanelLabelEditor::CVXSPanelLabelEditor(QWidget* pParent)
    : QWidget(pParent)
{
    auto* pForm = new QFormLayout(this);
    pForm->setContentsMargins(0, 0, 0, 0);
    m_pCase = new QComboBox(this);
    m_pCase->setObjectName(QStringLiteral("panelLabelCase"));
    m_pCase->addItem(tr("A, B, C"));
    m_pCase->addItem(tr("a, b, c"));
    m_pBold = new QCheckBox(tr("Bold"), this);
    m_pBold->setObjectName(QStringLiteral("panelLabelBold"));
    m_pPoints = new QDoubleSpinBox(this);
    m_pPoints->setObjectName(QStringLiteral("panelLabelPoints"));
    m_pPoints->setRange(CVXSPanelLabel::MinPoints, CVXSPanelLabel::MaxPoints);
    m_pPoints->setDecimals(1);
    m_pPoints->setSuffix(tr(" pt"));
    m_pPoints->setKeyboardTracking(false);
    m_pCorner = new QComboBox(this);
    m_pCorner->setObjectName(QStringLiteral("panelLabelCorner"));
    m_pCorner->addItem(tr("Top left, inside the image"), int(CVXSPanelLabel::InsideTopLeft));
    m_pCorner->addItem(tr("Top left, above the image"), int(CVXSPanelLabel::OutsideTopLeft));
    pForm->addRow(tr("Letters:"), m_pCase);
    pForm->addRow(QString(), m_pBold);
    pForm->addRow(tr("Size:"), m_pPoints);
    pForm->addRow(tr("Place:"), m_pCorner);
    showStored();

    connect(m_pCase, QOverload<int>::of(&QComboBox::activated), this, &CVXSPanelLabelEditor::edited);
    connect(m_pCorner, QOverload<int>::of(&QComboBox::activated), this, &CVXSPanelLabelEditor::edited);
    connect(m_pBold, &QCheckBox::toggled, this, &CVXSPanelLabelEditor::edited);
    connect(m_pPoints, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &CVXSPanelLabelEditor::edited);
}

void CVXSPanelLabelEditor::showStored()
{
    const QScopedValueRollback<bool> showing(m_bShowing, true);
    const CVXSPanelLabelOptions options = CVXSPanelLabelOptions::stored();
    m_pCase->setCurrentIndex(options.bLowerCase ? 1 : 0);
    m_pBold->setChecked(options.bBold);
    m_pPoints->setValue(options.dPoints);
    m_pCorner->setCurrentIndex(m_pCorner->findData(options.nCorner));
}

void CVXSPanelLabelEditor::edited()
{
    if (m_bShowing)
        return;
    CVXSPanelLabelOptions options;
    options.bLowerCase = m_pCase->currentIndex() == 1;
    options.bBold = m_pBold->isChecked();
    options.dPoints = m_pPoints->value();
    options.nCorner = m_pCorner->currentData().toInt();
    options.store();
}
