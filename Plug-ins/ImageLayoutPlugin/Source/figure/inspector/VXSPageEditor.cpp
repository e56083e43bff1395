#include "figure/inspector/VXSPageEditor.h"

#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QSpinBox>
#include <QVBoxLayout>

#include <cmath>

namespace {

struct Preset
{
    double dValue;
    const char* pText;
};

// Widths of journal figures and of an A4 page.
const Preset WidthPresets[] = {
    {85.0, QT_TRANSLATE_NOOP("CVXSPageEditor", "85 mm (one column)")},
    {114.0, QT_TRANSLATE_NOOP("CVXSPageEditor", "114 mm (one and a half columns)")},
    {174.0, QT_TRANSLATE_NOOP("CVXSPageEditor", "174 mm (two columns)")},
    {210.0, QT_TRANSLATE_NOOP("CVXSPageEditor", "210 mm (A4 portrait)")},
};
const Preset DpiPresets[] = {
    {300, QT_TRANSLATE_NOOP("CVXSPageEditor", "300 dpi")},
    {600, QT_TRANSLATE_NOOP("CVXSPageEditor", "600 dpi")},
    {1200, QT_TRANSLATE_NOOP("CVXSPageEditor", "1200 dpi")},
};

template <size_t N>
void addPresets(QComboBox* pBox, const Preset (&presets)[N])
{
    for (const Preset& preset : presets)
        pBox->addItem(QCoreApplication::translate("CVXSPageEditor", preset.pText), preset.dValue);
    pBox->addItem(QCoreApplication::translate("CVXSPageEditor", "Custom"));
}

} // namespace

CVXSPageEditor::CVXSPageEditor(QWidget* pParent)
    : QWidget(pParent)
{
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    auto* pForm = new QFormLayout;
    pLayout->addLayout(pForm);

    m_pWidthPresets = new QComboBox(this);
    m_pWidthPresets->setObjectName(QStringLiteral("figureWidthPreset"));
    m_pWidth = new QDoubleSpinBox(this);
    m_pWidth->setObjectName(QStringLiteral("figureWidthMm"));
    m_pWidth->setRange(CVXSFigurePage::MinWidthMm, CVXSFigurePage::MaxWidthMm);
    m_pWidth->setDecimals(1);
    m_pWidth->setSuffix(tr(" mm"));
    m_pWidth->setKeyboardTracking(false);
    m_pDpiPresets = new QComboBox(this);
    m_pDpiPresets->setObjectName(QStringLiteral("figureDpiPreset"));
    m_pDpi = new QSpinBox(this);
    m_pDpi->setObjectName(QStringLiteral("figureDpi"));
    m_pDpi->setRange(CVXSFigurePage::MinDpi, CVXSFigurePage::MaxDpi);
    m_pDpi->setSuffix(tr(" dpi"));
    m_pDpi->setKeyboardTracking(false);
    m_pSize = new QLabel(this);
    m_pSize->setObjectName(QStringLiteral("figureSize"));
    fillPresets();
    pForm->addRow(tr("Figure width:"), m_pWidthPresets);
    pForm->addRow(QString(), m_pWidth);
    pForm->addRow(tr("Resolution:"), m_pDpiPresets);
    pForm->addRow(QString(), m_pDpi);
    pForm->addRow(tr("Size:"), m_pSize);

    m_pCommands = new QVBoxLayout;
    pLayout->addLayout(m_pCommands);

    connect(m_pWidthPresets, QOverload<int>::of(&QComboBox::activated), this,
            [this] { presetChosen(m_pWidthPresets, m_pWidth); });
    connect(m_pDpiPresets, QOverload<int>::of(&QComboBox::activated), this,
            [this] { presetChosen(m_pDpiPresets, m_pDpi); });
    connect(m_pWidth, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            [this] { edited(tr("Change Figure Width")); });
    connect(m_pDpi, QOverload<int>::of(&QSpinBox::valueChanged), this, [this] { edited(tr("Change Resolution")); });
}

void CVXSPageEditor::fillPresets()
{
    addPresets(m_pWidthPresets, WidthPresets);
    addPresets(m_pDpiPresets, DpiPresets);
}

void CVXSPageEditor::addCommand(QAction* pAction)
{
    auto* pButton = new QPushButton(pAction->text(), this);
    pButton->setObjectName(pAction->objectName() + QStringLiteral("Button"));
    connect(pButton, &QPushButton::clicked, pAction, &QAction::trigger);
    connect(pAction, &QAction::changed, pButton, [pButton, pAction] {
        pButton->setText(pAction->text());
        pButton->setEnabled(pAction->isEnabled());
    });
    pButton->setEnabled(pAction->isEnabled());
    m_pCommands->addWidget(pButton);
}

void CVXSPageEditor::showPage(const CVXSFigurePage& page, const QSizeF& pageUnits)
{
    const QScopedValueRollback<bool> showing(m_bShowing, true);
    m_page = page;
    m_pWidth->setValue(page.dWidthMm);
    m_pDpi->setValue(page.nDpi);
    selectPreset(m_pWidthPresets, page.dWidthMm);
    selectPreset(m_pDpiPresets, page.nDpi);
    const QSizeF mm = page.sizeMm(pageUnits);
    const int nHeightPixels = int(std::lround(mm.height() / 25.4 * page.nDpi));
    m_pSize->setText(tr("%1 x %2 mm, %3 x %4 pixels")
                         .arg(mm.width(), 0, 'f', 1)
                         .arg(mm.height(), 0, 'f', 1)
                         .arg(page.pixelWidth())
                         .arg(nHeightPixels));
}

void CVXSPageEditor::selectPreset(QComboBox* pPresets, double dValue)
{
    const int nIndex = pPresets->findData(dValue);
    pPresets->setCurrentIndex(nIndex >= 0 ? nIndex : pPresets->count() - 1);
}

void CVXSPageEditor::presetChosen(QComboBox* pPresets, QAbstractSpinBox* pBox)
{
    const QVariant value = pPresets->currentData();
    if (!value.isValid()) {
        // "Custom": the value is typed in the box below.
        pBox->setFocus();
        pBox->selectAll();
        return;
    }
    if (auto* pDouble = qobject_cast<QDoubleSpinBox*>(pBox))
        pDouble->setValue(value.toDouble());
    else if (auto* pInteger = qobject_cast<QSpinBox*>(pBox))
        pInteger->setValue(value.toInt());
}

void CVXSPageEditor::edited(const QString& strText)
{
    if (m_bShowing)
        return;
    CVXSFigurePage page = m_page;
    page.dWidthMm = m_pWidth->value();
    page.nDpi = m_pDpi->value();
    if (page != m_page)
        emit pageEdited(page, strText);
}
