#pragma once

#include "window/VXSLayoutWindowTitle.h"

#include <QColor>
#include <QFont>
#include <QKeySequence>
#include <QMainWindow>
#include <QPixmap>
#include <QString>

class QAction;
class QComboBox;
class QFrame;
class QGraphicsItem;
class QGridLayout;
class QGroupBox;
class QHBoxLayout;
class QImage;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QSizeGrip;
class QSpacerItem;
class QToolBar;
class QToolButton;
class QVBoxLayout;
class CVXSDataset;
class CVXSEditText;
class CVXSLayoutDrawingTools;
class CVXSLayoutItemText;
class CVXSLayoutManager;
class CVXSLayoutView;
class CVXSSequenceDataset;

// The main window in which the user composes a layout page: the view in a framed area,
// the annotation box with its buttons and one fixed toolbar with every command. It keeps
// the tool state and forwards commands; the layout manager creates it and the view,
// hands both pointers in and performs the commands.
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
    // The style the page is laid out in; the box may already show the next one while it
    // is being chosen.
    int layoutStyle() const;
    // Shows and takes the style without laying the page out again (undo, opening files).
    void restoreLayoutStyle(int nStyle);
    // The keys of the window's Undo and Redo.
    static QList<QKeySequence> undoShortcuts();
    static QList<QKeySequence> redoShortcuts();
    // The layout file's name for the title, empty for a layout never saved.
    void setDocumentName(const QString& strName);

    virtual void createToolBar();
    virtual void initialize();

    // In a grid style, whether a cell is still empty (warns when not); switches drawing off.
    bool canPasteImage();
    void addImageToLayout(QImage& image);

    // No context menu: the toolbar cannot be hidden by the user.
    QMenu* createPopupMenu() override;

public slots:
    virtual void onClickClose();
    virtual void setLayoutManager(CVXSLayoutManager* pMngr);
    virtual void setLayoutView(CVXSLayoutView* pView);
    virtual void onClickActiveDSetPaste();
    virtual void onAnnotationEnter();
    virtual void onLayoutItemSelectionChange(QGraphicsItem* pSelItem);
    virtual void onClickAnnFont();
    virtual void onClickAnnClr();
    virtual void onClickClipBoardPaste();
    virtual void onClickExport();
    virtual void onClickPrint();
    virtual void selChngLayoutStyle();
    virtual void onClickNew();
    virtual bool isDrawRectOn();
    virtual bool isDrawEllipseOn();
    virtual int isDrawArrowOn();
    virtual void onClickRectangleShapeBtn(bool bVal);
    virtual void onClickEllipseShapeBtn(bool bVal);
    virtual void onClickArrowShapeBtn(bool bVal);
    virtual void onSelectArrowToolPopup(QAction* pAction);
    virtual void onClickDelete();
    virtual void updateButtonStatus();
    virtual void onCopyToClipboard();
    virtual void setCursorStyle();
    virtual void onClickMoveZ();
    virtual void onSelMoveZType(QAction* pActionItem);
    virtual void onDatasetStatusChanged(CVXSDataset* pDataset);
    virtual void onSequenceStatusChanged(CVXSSequenceDataset* pDataset);
    virtual void onClickMultiLineEditText();
    virtual void updateAnnotation(Qt::Alignment textFlags, QFont& oFont, QColor& oColor);
    virtual void updateLayoutText(QString& strText);
    virtual void onClickArrow();
    virtual void languageChange();

signals:
    void updateToolStatus();
    void copyToClipBoard(QString strContentName);

protected:
    void resizeEvent(QResizeEvent* pEvent) override;
    void closeEvent(QCloseEvent* pEvent) override;
    void changeEvent(QEvent* pEvent) override;

private:
    // Fills the members and builds the window's controls.
    friend class CVXSLayoutWindowBuilder;

    CVXSLayoutDrawingTools drawingTools() const;
    // The text item selected in the view, or null.
    CVXSLayoutItemText* selectedTextItem() const;
    void restoreAnnotationText();

    QFrame* m_pLayoutFrame = nullptr;
    QGroupBox* m_pAnnotationGroup = nullptr;
    QLineEdit* m_pAnnotationEdit = nullptr;
    QToolButton* m_pAnnFontBtn = nullptr;
    QToolButton* m_pAnnColorBtn = nullptr;
    QPushButton* m_pCloseBtn = nullptr;
    QAction* m_pPasteAction = nullptr;
    QAction* m_pExportAction = nullptr;
    QAction* m_pPrintAction = nullptr;
    QAction* m_pNewAction = nullptr;
    QAction* m_pDrawRectAction = nullptr;
    QAction* m_pDrawEllipseAction = nullptr;
    QAction* m_pDeleteAction = nullptr;
    QAction* m_pCopyAction = nullptr;
    QAction* m_pDrawLineAction = nullptr;
    QAction* m_pDrawSingleArrowAction = nullptr;
    QAction* m_pDrawDoubleArrowAction = nullptr;
    QAction* m_pBringToFrontAction = nullptr;
    QAction* m_pBringForwardAction = nullptr;
    QAction* m_pSendBackwardAction = nullptr;
    QAction* m_pSendToBackAction = nullptr;
    QToolButton* m_pMultiLineTextBtn = nullptr;
    QComboBox* m_pLayoutStyleCombo = nullptr;
    QAction* m_pPasteActiveDSetAction = nullptr;
    QToolBar* m_pToolBar = nullptr;
    CVXSEditText* m_pEditTextDlg = nullptr; // child of the view
    QVBoxLayout* m_pCentralLayout = nullptr;
    QGridLayout* m_pCentralGrid = nullptr;
    QHBoxLayout* m_pBottomLayout = nullptr;
    QSpacerItem* m_pCloseSpacer = nullptr;   // owned by m_pBottomLayout
    QGridLayout* m_pAnnotationGrid = nullptr;
    QSizeGrip* m_pSizeGrip = nullptr;
    QLabel* m_pLayoutStyleLabel = nullptr;
    QColor m_oAnnColor = QColor(0, 0, 0, 255);
    QFont m_oAnnFont;
    Qt::Alignment m_nTextFlags = Qt::AlignLeft;
    int m_nArrowType = 0;
    QToolButton* m_pArrowToolBtn = nullptr;
    QMenu* m_pArrowMenu = nullptr;
    QAction* m_pCurMoveZAction = nullptr;
    QToolButton* m_pMoveZBtn = nullptr;
    QMenu* m_pMoveZMenu = nullptr;
    CVXSLayoutView* m_pView = nullptr;      // not owned
    CVXSLayoutManager* m_pMngr = nullptr;   // not owned
    int m_nCurLayoutStyle = 0;
    QAction* m_pArrowAction = nullptr;
    QPixmap m_oDeleteIcon;
    // The annotation box's text when the Edit Text dialog opened; Cancel puts it back.
    QString m_strTextBeforeEdit;
    CVXSLayoutWindowTitle m_title {*this};
};
