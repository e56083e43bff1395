#include "figure/properties/VXSFigurePresets.h"

#include <QComboBox>
#include <QCoreApplication>
#include <QDoubleSpinBox>
#include <QSpinBox>

namespace {

struct Preset
{
    double dValue;
    const char* pText;
};

// The texts were the page editor's first and keep its translations.
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

void CVXSFigurePresets::addWidths(QComboBox* pPresets)
{
    addPresets(pPresets, WidthPresets);
}

void CVXSFigurePresets::addResolutions(QComboBox* pPresets)
{
    addPresets(pPresets, DpiPresets);
}

void CVXSFigurePresets::select(QComboBox* pPresets, double dValue)
{
    const int nIndex = pPresets->findData(dValue);
    pPresets->setCurrentIndex(nIndex >= 0 ? nIndex : pPresets->count() - 1);
}

void CVXSFigurePresets::drive(QComboBox* pPresets, QAbstractSpinBox* pBox)
{
    QObject::connect(pPresets, QOverload<int>::of(&QComboBox::activated), pBox, [pPresets, pBox] { apply(pPresets, pBox); });
}

void CVXSFigurePresets::apply(QComboBox* pPresets, QAbstractSpinBox* pBox)
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
