#include "figure/properties/VXSColourBarEditor.h"

#include "colourbar/VXSColourBar.h"
#include "colourbar/VXSColourBarTicks.h"

#include <VXColourTable.h>

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>

CVXSColourBarEditor::CVXSColourBarEditor(QWidget* pParent)
    : QGroupBox(tr("Colour bar"), pParent)
    , m_pRange(new QLabel(this))
    , m_pOrientation(new QComboBox(this))
{
    setObjectName(QStringLiteral("colourBarEditor"));
    m_pRange->setObjectName(QStringLiteral("colourBarRangeLabel"));
    m_pRange->setWordWrap(true);
    m_pOrientation->setObjectName(QStringLiteral("colourBarOrientationCombo"));
    m_pOrientation->addItem(tr("Vertical"), int(Qt::Vertical));
    m_pOrientation->addItem(tr("Horizontal"), int(Qt::Horizontal));
    auto* pLayout = new QFormLayout(this);
    pLayout->addRow(m_pRange);
    pLayout->addRow(tr("Orientation:"), m_pOrientation);
    connect(m_pOrientation, qOverload<int>(&QComboBox::currentIndexChanged), this, &CVXSColourBarEditor::edited);
}

void CVXSColourBarEditor::showBar(const CVXSColourBar& bar)
{
    m_bShowing = true;
    const CVXSColourBarTicks ticks(bar.dMinimum, bar.dMaximum);
    m_pRange->setText(tr("%1 to %2, %3").arg(ticks.label(bar.dMinimum), ticks.label(bar.dMaximum),
                                            CVXColourTable::displayName(bar.strTable))
                      + (bar.strTitle.isEmpty() ? QString() : QStringLiteral("\n") + bar.strTitle));
    m_pOrientation->setCurrentIndex(m_pOrientation->findData(int(bar.orientation)));
    m_bShowing = false;
}

void CVXSColourBarEditor::edited()
{
    if (!m_bShowing)
        emit orientationEdited(Qt::Orientation(m_pOrientation->currentData().toInt()));
}
