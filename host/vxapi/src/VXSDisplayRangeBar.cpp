#include "VXSDisplayRangeBar.h"

#include "VXColourTable.h"
#include "VXSChildWindow.h"
#include "VXSDisplayRangeSharing.h"

#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalBlocker>

#include <cmath>

namespace {

// Far beyond any measured value, so that the spin boxes never cut one off.
constexpr double kValueLimit = 1e12;
constexpr int kMostDecimals = 6;
// Significant digits shown for a range's width.
constexpr int kSignificantDigits = 4;

QDoubleSpinBox* valueBox(const QString& strObjectName, QWidget* pParent)
{
    auto* pBox = new QDoubleSpinBox(pParent);
    pBox->setObjectName(strObjectName);
    pBox->setRange(-kValueLimit, kValueLimit);
    // Typed numbers take effect on Enter or when the box is left, not at every digit.
    pBox->setKeyboardTracking(false);
    return pBox;
}

QPushButton* barButton(const QString& strObjectName, const QString& strText, QWidget* pParent)
{
    auto* pButton = new QPushButton(strText, pParent);
    pButton->setObjectName(strObjectName);
    pButton->setAutoDefault(false);
    return pButton;
}

} // namespace

CVXSDisplayRangeBar::CVXSDisplayRangeBar(CVXSChildWindow* pWindow)
    : QWidget(pWindow)
    , m_pWindow(pWindow)
    , m_pTable(new QComboBox(this))
    , m_pMinimum(valueBox(QStringLiteral("displayRangeMinimum"), this))
    , m_pMaximum(valueBox(QStringLiteral("displayRangeMaximum"), this))
    , m_pUnit(new QLabel(this))
    , m_pAuto(barButton(QStringLiteral("displayRangeAuto"), tr("Auto"), this))
    , m_pApplyToAll(barButton(QStringLiteral("displayRangeApplyToAll"), tr("Apply to All"), this))
    , m_pMessage(new QLabel(this))
{
    setObjectName(QStringLiteral("displayRangeBar"));
    setAutoFillBackground(true);
    m_pTable->setObjectName(QStringLiteral("displayRangeTable"));
    m_pTable->setToolTip(tr("Colour table"));
    for (const QString& strName : CVXColourTable::names())
        m_pTable->addItem(CVXColourTable::displayName(strName), strName);
    m_pMinimum->setToolTip(tr("Value shown with the table's first colour"));
    m_pMaximum->setToolTip(tr("Value shown with the table's last colour"));
    m_pUnit->setObjectName(QStringLiteral("displayRangeUnit"));
    m_pAuto->setToolTip(tr("The whole range of the image's values"));
    m_pApplyToAll->setToolTip(tr("The same range and colour table for every open window of the same modality and unit"));
    m_pMessage->setObjectName(QStringLiteral("displayRangeMessage"));
    m_pMessage->setWordWrap(true);

    // The range and its unit on one row, the buttons and what they report on the next, so
    // that large values and long units keep their room in a small window.
    auto* pLayout = new QGridLayout(this);
    pLayout->setContentsMargins(4, 2, 4, 2);
    pLayout->setVerticalSpacing(2);
    auto* pRangeRow = new QHBoxLayout;
    pRangeRow->addWidget(m_pTable);
    pRangeRow->addWidget(m_pMinimum);
    pRangeRow->addWidget(new QLabel(QStringLiteral("\u2013"), this));
    pRangeRow->addWidget(m_pMaximum);
    pRangeRow->addWidget(m_pUnit, 1);
    auto* pButtonRow = new QHBoxLayout;
    pButtonRow->addWidget(m_pAuto);
    pButtonRow->addWidget(m_pApplyToAll);
    pButtonRow->addWidget(m_pMessage, 1);
    pLayout->addLayout(pRangeRow, 0, 0);
    pLayout->addLayout(pButtonRow, 1, 0);

    connect(m_pTable, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &CVXSDisplayRangeBar::applyControls);
    connect(m_pMinimum, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &CVXSDisplayRangeBar::applyControls);
    connect(m_pMaximum, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this, &CVXSDisplayRangeBar::applyControls);
    connect(m_pAuto, &QPushButton::clicked, this, &CVXSDisplayRangeBar::applyAuto);
    connect(m_pApplyToAll, &QPushButton::clicked, this, &CVXSDisplayRangeBar::applyToAll);
    connect(m_pWindow, &CVXSChildWindow::displayRangeChanged, this, &CVXSDisplayRangeBar::showWindowRange);
    showWindowRange();
}

void CVXSDisplayRangeBar::showWindowRange()
{
    const CVXDisplayRange range = m_pWindow->displayRange();
    const bool bLevels = m_pWindow->hasLevels() && range.hasRange();
    for (QWidget* pControl : {static_cast<QWidget*>(m_pTable), static_cast<QWidget*>(m_pMinimum),
                              static_cast<QWidget*>(m_pMaximum), static_cast<QWidget*>(m_pAuto),
                              static_cast<QWidget*>(m_pApplyToAll)})
        pControl->setEnabled(bLevels);
    if (!bLevels) {
        showMessage(tr("A colour image: its colours are shown as they are, without a display range."), false);
        return;
    }
    const QSignalBlocker tableBlocker(m_pTable);
    const QSignalBlocker minimumBlocker(m_pMinimum);
    const QSignalBlocker maximumBlocker(m_pMaximum);
    m_pTable->setCurrentIndex(m_pTable->findData(range.tableName()));
    setValueDecimals(range.minimum(), range.maximum());
    m_pMinimum->setValue(range.minimum());
    m_pMaximum->setValue(range.maximum());
    m_pUnit->setText(range.quantityLabel().isEmpty() ? tr("(raw values)") : range.quantityLabel());
    m_pUnit->setToolTip(range.rescaleNote().isEmpty()
                            ? QString()
                            : tr("The image's rescale was not used (%1).").arg(range.rescaleNote()));
}

void CVXSDisplayRangeBar::applyControls()
{
    const double dMinimum = m_pMinimum->value();
    const double dMaximum = m_pMaximum->value();
    if (!(dMinimum < dMaximum)) {
        const QString strRefusal = tr("The minimum (%1) must be below the maximum (%2); the display range was left as it was.")
                                       .arg(m_pMinimum->textFromValue(dMinimum), m_pMaximum->textFromValue(dMaximum));
        showWindowRange();
        showMessage(strRefusal, true);
        return;
    }
    m_pWindow->setDisplayRange(dMinimum, dMaximum, m_pTable->currentData().toString());
    showMessage(QString(), false);
}

void CVXSDisplayRangeBar::applyAuto()
{
    double dMinimum = 0.0;
    double dMaximum = 0.0;
    if (m_pWindow->dataRange(dMinimum, dMaximum))
        m_pWindow->setDisplayRange(dMinimum, dMaximum, m_pTable->currentData().toString());
    showMessage(QString(), false);
}

void CVXSDisplayRangeBar::applyToAll()
{
    const CVXSDisplayRangeSharing sharing(m_pWindow);
    if (sharing.skipped().isEmpty()) {
        showMessage(sharing.appliedText(), false);
        return;
    }
    showMessage(QString(), false);
    CVXSMessageBox::information(m_pWindow, CVXUtilityFns::getAppName(), sharing.report(), QMessageBox::Ok);
}

void CVXSDisplayRangeBar::setValueDecimals(double dMinimum, double dMaximum)
{
    // Enough decimals to tell a hundredth of the range's width apart.
    const double dWidth = qAbs(dMaximum - dMinimum);
    const int nDecimals = dWidth > 0.0 ? kSignificantDigits - 1 - int(std::floor(std::log10(dWidth))) : 2;
    for (QDoubleSpinBox* pBox : {m_pMinimum, m_pMaximum})
        pBox->setDecimals(qBound(0, nDecimals, kMostDecimals));
}

void CVXSDisplayRangeBar::showMessage(const QString& strText, bool bProblem)
{
    m_pMessage->setText(strText);
    m_pMessage->setStyleSheet(bProblem ? QStringLiteral("color: #d02020;") : QString());
}
