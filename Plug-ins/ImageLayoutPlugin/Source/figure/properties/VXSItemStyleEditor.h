#pragma once

#include "figure/VXSItemStyle.h"

#include <QWidget>

class QCheckBox;
class QDoubleSpinBox;
class QGridLayout;
class QLabel;
class QPushButton;
class QSpinBox;
class CVXSColourButton;

// The look of the selected item in the Figure panel: outline and fill of shapes; colour,
// width and head size of lines and arrows; colour, font and background of texts; the border
// of images. Widths and sizes are shown in points of the finished figure.
class CVXSItemStyleEditor : public QWidget
{
    Q_OBJECT
public:
    explicit CVXSItemStyleEditor(QWidget* pParent = nullptr);

    // Shows the item's look; dPointsPerUnit converts page units to points of the figure.
    void showItem(const QGraphicsItem& item, double dPointsPerUnit);

signals:
    // The user changed the look; strText names the change for undo.
    void styleEdited(const CVXSItemStyle& style, const QString& strText);
    void useAsDefaultClicked();
    void resetDefaultsClicked();

private:
    enum Row { LineRow, FillRow, HeadRow, TextColourRow, FontRow, DefaultsRow, RowCount };

    void addRow(Row row, QWidget* pField);
    void showRows(int nType, bool bHeads);
    void setLabels(int nType);
    void connectControls();
    void edited(const QString& strText);
    void chooseFont();
    QColor fillColour() const;

    QGridLayout* m_pGrid = nullptr;
    QLabel* m_labels[RowCount] = {};
    QWidget* m_fields[RowCount] = {};
    QCheckBox* m_pLineOn = nullptr;
    CVXSColourButton* m_pLineColour = nullptr;
    QDoubleSpinBox* m_pLineWidth = nullptr;
    QCheckBox* m_pFillOn = nullptr;
    CVXSColourButton* m_pFillColour = nullptr;
    QSpinBox* m_pFillOpacity = nullptr;
    QDoubleSpinBox* m_pHeadSize = nullptr;
    CVXSColourButton* m_pTextColour = nullptr;
    QPushButton* m_pFont = nullptr;
    CVXSItemStyle m_style;
    int m_nType = 0;
    double m_dPointsPerUnit = 1.0;
    bool m_bShowing = false;
};
