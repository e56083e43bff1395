#pragma once

#include <QMainWindow>

class QAction;
class QBoxLayout;
class QComboBox;
class QFrame;
class QLabel;
class QMenu;
class QToolBar;
class QToolButton;
class QVBoxLayout;
class CVXSDataset;
class CVXSLayoutManager;
class CVXSLayoutView;
class CVXSSequenceDataset;

// The main window in which the user composes a layout page: the view in a framed area
// and one fixed toolbar. It keeps the tool state and forwards commands; the layout
// manager creates it and the view, hands both pointers in and performs the commands.
class CVXSLayoutWindow : public QMainWindow
{
    Q_OBJECT
public:
    explicit CVXSLayoutWindow(QWidget* pParent = nullptr, const char* pName = nullptr,
                              Qt::WindowFlags flags = Qt::WindowFlags());
    ~CVXSLayoutWindow() override;

    // The frame that holds the view.
    QFrame* viewContainer() const;
    QComboBox* layoutStyleCombo() const;

    virtual void initialize();

public slots:
    virtual void setLayoutManager(CVXSLayoutManager* pMngr);
    virtual void setLayoutView(CVXSLayoutView* pView);
    virtual void selChngLayoutStyle();
    virtual bool isDrawRectOn();
    virtual bool isDrawEllipseOn();
    virtual int isDrawArrowOn();
    virtual void onClickRectangleShapeBtn(bool bVal);
    virtual void onClickEllipseShapeBtn(bool bVal);
    virtual void onClickArrowShapeBtn(bool bVal);
    virtual void onSelectArrowToolPopup(QAction* pAction);
    virtual void setCursorStyle();
    virtual void onClickMultiLineEditText();
    virtual void onClickArrow();
    virtual void updateButtonStatus();
    virtual void onDatasetStatusChanged(CVXSDataset* pDataset);
    virtual void onSequenceStatusChanged(CVXSSequenceDataset* pDataset);

signals:
    void updateToolStatus();
    void copyToClipBoard(QString strContentName);

protected:
    QMenu* createPopupMenu() override;

private:
    void createToolBar();
    QAction* createAction(const char* pObjectName, const QString& text, const QString& iconPath, bool bCheckable);
    void createArrowTool();
    void createLayoutStyleBox();
    void setChecked(QAction* pAction, bool bChecked);
    void setArrowToolChecked(bool bChecked);

    QFrame* m_pLayoutFrame = nullptr;
    QAction* m_pDrawRectAction = nullptr;
    QAction* m_pDrawEllipseAction = nullptr;
    QAction* m_pDrawLineAction = nullptr;
    QAction* m_pDrawSingleArrowAction = nullptr;
    QAction* m_pDrawDoubleArrowAction = nullptr;
    QComboBox* m_pLayoutStyleCombo = nullptr;
    QToolBar* m_pToolBar = nullptr;
    QVBoxLayout* m_pCentralLayout = nullptr;
    QBoxLayout* m_pViewLayout = nullptr;
    QLabel* m_pLayoutStyleLabel = nullptr;
    int m_nArrowType = 0;
    QToolButton* m_pArrowToolBtn = nullptr;
    QMenu* m_pArrowMenu = nullptr;
    CVXSLayoutView* m_pView = nullptr;      // not owned
    CVXSLayoutManager* m_pMngr = nullptr;   // not owned
    int m_nCurLayoutStyle = 0;
    QAction* m_pArrowAction = nullptr;
};
