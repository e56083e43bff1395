#pragma once

#include <QDialog>

class QComboBox;
class QLineEdit;

// "Set Pixel Size": the width of one source pixel on the object, as a number and a unit.
// Values that are no number, 0 or less, or above a metre are refused with a message and the
// dialog stays open.
class CVXSPixelSizeDialog : public QDialog
{
    Q_OBJECT
public:
    // Shows dCurrentMm, the size the image has now (0 for none).
    explicit CVXSPixelSizeDialog(double dCurrentMm, QWidget* pParent = nullptr);

    // The size accepted, in mm.
    double pixelSizeMm() const;
    void accept() override;

private:
    QLineEdit* m_pValue = nullptr;
    QComboBox* m_pUnit = nullptr;
    double m_dMm = 0.0;
};
