#pragma once

#include <QWidget>

class QLabel;
class QStackedWidget;
class CVXSColourBarEditor;
class CVXSFigureController;
class CVXSGeometryEditor;
class CVXSItemStyleEditor;
class CVXSPageEditor;
class CVXSPanelLabelEditor;
class CVXSScaleBarEditor;

// The "Figure" panel: the selected item's look, place and size, or the figure's size and
// resolution when nothing is selected. It shows what the controller's layout holds and hands
// every edit to the controller.
class CVXSFigureProperties : public QWidget
{
    Q_OBJECT
public:
    explicit CVXSFigureProperties(CVXSFigureController& controller, QWidget* pParent = nullptr);

    CVXSPageEditor* pageEditor() const;

private:
    void refresh();
    QWidget* buildItemPage();
    QWidget* buildFigurePage();
    static QString kindName(int nType);

    CVXSFigureController& m_controller; // outlives the panel: it deletes it
    QLabel* m_pTitle = nullptr;
    QStackedWidget* m_pPages = nullptr;
    CVXSPageEditor* m_pPageEditor = nullptr;
    CVXSItemStyleEditor* m_pStyleEditor = nullptr;
    CVXSGeometryEditor* m_pGeometryEditor = nullptr;
    CVXSPanelLabelEditor* m_pPanelLabelEditor = nullptr;
    QWidget* m_pScaleBarGroup = nullptr;
    CVXSScaleBarEditor* m_pScaleBarEditor = nullptr;
    CVXSColourBarEditor* m_pColourBarEditor = nullptr;
};
