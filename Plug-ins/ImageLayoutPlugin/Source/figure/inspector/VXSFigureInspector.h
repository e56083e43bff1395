#pragma once

#include <QWidget>

class QLabel;
class QStackedWidget;
class CVXSColourBarEditor;
class CVXSFigureController;
class CVXSGeometryEditor;
class CVXSItemStyleEditor;
class CVXSPageEditor;

// The "Figure" inspector: the selected item's look, place and size, or the figure's size and
// resolution when nothing is selected. It shows what the controller's layout holds and hands
// every edit to the controller.
class CVXSFigureInspector : public QWidget
{
    Q_OBJECT
public:
    explicit CVXSFigureInspector(CVXSFigureController& controller, QWidget* pParent = nullptr);

    CVXSPageEditor* pageEditor() const;

private:
    void refresh();
    QWidget* buildItemPage();
    static QString kindName(int nType);

    CVXSFigureController& m_controller; // outlives the inspector: it deletes it
    QLabel* m_pTitle = nullptr;
    QStackedWidget* m_pPages = nullptr;
    CVXSPageEditor* m_pPageEditor = nullptr;
    CVXSItemStyleEditor* m_pStyleEditor = nullptr;
    CVXSGeometryEditor* m_pGeometryEditor = nullptr;
    CVXSColourBarEditor* m_pColourBarEditor = nullptr;
};
