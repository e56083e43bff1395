#pragma once

#include <QGroupBox>

class QComboBox;
class QLabel;
class CVXSColourBar;

// The selected colour bar: what it shows (range, table, title) and whether it stands upright
// or lies across, which the user may change.
class CVXSColourBarEditor : public QGroupBox
{
    Q_OBJECT
public:
    explicit CVXSColourBarEditor(QWidget* pParent = nullptr);

    void showBar(const CVXSColourBar& bar);

signals:
    void orientationEdited(Qt::Orientation orientation);

private:
    void edited();

    QLabel* m_pRange = nullptr;      // the widgets are children of the editor
    QComboBox* m_pOrientation = nullptr;
    bool m_bShowing = false;
};
