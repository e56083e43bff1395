#pragma once

class QAbstractSpinBox;
class QComboBox;

// The usual figure widths (journal columns, A4) and resolutions, offered in a box above the
// spin box that holds the value; the last entry, "Custom", leaves the value to be typed.
class CVXSFigurePresets
{
public:
    static void addWidths(QComboBox* pPresets);
    static void addResolutions(QComboBox* pPresets);
    // Shows the preset of the value, "Custom" when none has it.
    static void select(QComboBox* pPresets, double dValue);
    // The chosen preset's value into the box; for "Custom" the box takes the focus.
    static void apply(QComboBox* pPresets, QAbstractSpinBox* pBox);
};
