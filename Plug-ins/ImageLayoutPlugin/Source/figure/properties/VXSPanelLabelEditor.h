#pragma once

#include "figure/VXSPanelLabelOptions.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;

// How "Label Panels" letters the images, on the panel's figure page: upper or lower
// case, bold, size in points and corner. Each change is kept in the settings at once and
// used by the next "Label Panels".
class CVXSPanelLabelEditor : public QWidget
{
    Q_OBJECT
public:
    explicit CVXSPanelLabelEditor(QWidget* pParent = nullptr);

    // Shows the stored options.
    void showStored();

private:
    void edited();

    QComboBox* m_pCase = nullptr;
    QCheckBox* m_pBold = nullptr;
    QDoubleSpinBox* m_pPoints = nullptr;
    QComboBox* m_pCorner = nullptr;
    bool m_bShowing = false;
};
