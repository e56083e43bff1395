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
    // From now on a preset the user chooses sets the box's value; "Custom" gives the box the
    // focus.
    static void drive(QComboBox* pPresets, QAbstractSpinBox* pBox);

private:
    static void apply(QComboBox* pPresets, QAbstractSpinBox* pBox);
};
