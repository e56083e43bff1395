#pragma once

#include <QWidget>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QPushButton;
class CVXSChildWindow;

// The controls of an image window's display range, in one row at its bottom edge: the
// colour table, the minimum and maximum in the image's unit, "Auto" for the whole data
// range and "Apply to All" for the other windows showing the same modality and unit.
class CVXSDisplayRangeBar : public QWidget
{
    Q_OBJECT
public:
    explicit CVXSDisplayRangeBar(CVXSChildWindow* pWindow);

private:
    // The controls as the window's range is.
    void showWindowRange();
    void applyControls();
    void applyAuto();
    void applyToAll();
    // Adapts the spin boxes' decimals to the size of the values.
    void setValueDecimals(double dMinimum, double dMaximum);
    void showMessage(const QString& strText, bool bProblem);

    CVXSChildWindow* m_pWindow = nullptr; // the parent
    QComboBox* m_pTable = nullptr;
    QDoubleSpinBox* m_pMinimum = nullptr;
    QDoubleSpinBox* m_pMaximum = nullptr;
    QLabel* m_pUnit = nullptr;
    QPushButton* m_pAuto = nullptr;
    QPushButton* m_pApplyToAll = nullptr;
    QLabel* m_pMessage = nullptr;
};
