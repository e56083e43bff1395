#pragma once

#include "figure/VXSScaleBar.h"

#include <QWidget>

class QCheckBox;
class QComboBox;
class QDoubleSpinBox;
class QGraphicsItem;
class QLabel;
class QLineEdit;
class CVXSColourButton;

// The selected image's scale bar in the panel: on or off, automatic or a given length,
// corner, colour, thickness (in points of the figure) and label; and the pixel size it is
// measured from, with the way to set one.
class CVXSScaleBarEditor : public QWidget
{
    Q_OBJECT
public:
    explicit CVXSScaleBarEditor(QWidget* pParent = nullptr);

    // Shows the image's bar; dPointsPerUnit converts page units to points of the figure.
    void showImage(const QGraphicsItem& image, double dPointsPerUnit);

signals:
    // The user changed the bar; strText names the change for undo.
    void scaleBarEdited(const CVXSScaleBar& bar, const QString& strText);
    void setPixelSizeClicked();

private:
    void connectControls();
    void edited(const QString& strText);
    void lengthEdited();
    void enableControls();

    QCheckBox* m_pShown = nullptr;
    QCheckBox* m_pAuto = nullptr;
    QLineEdit* m_pLength = nullptr;
    QComboBox* m_pCorner = nullptr;
    CVXSColourButton* m_pColour = nullptr;
    QDoubleSpinBox* m_pThickness = nullptr;
    QCheckBox* m_pLabel = nullptr;
    QLabel* m_pPixelSize = nullptr;
    CVXSScaleBar m_bar;
    double m_dPointsPerUnit = 1.0;
    double m_dShownThickness = 0.0;
    bool m_bShowing = false;
};
