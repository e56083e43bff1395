#pragma once

#include "figure/VXSFigurePage.h"

#include <QWidget>

class QAction;
class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QSpinBox;
class QVBoxLayout;

// The figure the page becomes, shown in the panel while nothing is selected: its width in
// millimetres (with the usual journal widths as presets) and its resolution, and the figure
// commands as buttons.
class CVXSPageEditor : public QWidget
{
    Q_OBJECT
public:
    explicit CVXSPageEditor(QWidget* pParent = nullptr);

    // The page's size in layout units gives the figure's height and pixel count.
    void showPage(const CVXSFigurePage& page, const QSizeF& pageUnits);
    // A button for the command, below the values.
    void addCommand(QAction* pAction);
    // "85.0 x 68.0 mm, 1004 x 803 pixels": the figure of a page of the size in layout units.
    static QString sizeText(const CVXSFigurePage& page, const QSizeF& pageUnits);

signals:
    void pageEdited(const CVXSFigurePage& page, const QString& strText);

private:
    void fillPresets();
    void edited(const QString& strText);

    QComboBox* m_pWidthPresets = nullptr;
    QDoubleSpinBox* m_pWidth = nullptr;
    QComboBox* m_pDpiPresets = nullptr;
    QSpinBox* m_pDpi = nullptr;
    QLabel* m_pSize = nullptr;
    QVBoxLayout* m_pCommands = nullptr;
    CVXSFigurePage m_page;
    bool m_bShowing = false;
};
