#pragma once

#include <QRectF>
#include <QWidget>

class QDoubleSpinBox;

// Where the selected item lies on the figure and how large it is, in millimetres.
class CVXSGeometryEditor : public QWidget
{
    Q_OBJECT
public:
    explicit CVXSGeometryEditor(QWidget* pParent = nullptr);

    // bEditable: an image fitted to its grid cell keeps the cell's place and size.
    void showGeometry(const QRectF& rectMm, bool bEditable);

signals:
    void geometryEdited(const QRectF& rectMm);

private:
    QDoubleSpinBox* addBox(const QString& strObjectName, const QString& strLabel, int nRow, int nColumn);
    void edited();

    QDoubleSpinBox* m_pX = nullptr;
    QDoubleSpinBox* m_pY = nullptr;
    QDoubleSpinBox* m_pWidth = nullptr;
    QDoubleSpinBox* m_pHeight = nullptr;
    QRectF m_shown;     // the item's own, in millimetres
    QRectF m_displayed; // as the boxes show it, rounded
    bool m_bShowing = false;
};
