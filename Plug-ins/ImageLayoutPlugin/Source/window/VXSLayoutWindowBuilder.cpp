#include "window/VXSLayoutWindowBuilder.h"

#include "VXSLayoutConstants.h"
#include "VXSLayoutWindow.h"

#include <QAction>
#include <QComboBox>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSizeGrip>
#include <QToolBar>
#include <QToolButton>

namespace {

QIcon normalIcon(const QString& strPath)
{
    QIcon icon;
    icon.addFile(strPath, QSize(), QIcon::Normal, QIcon::Off);
    return icon;
}

QIcon enabledDisabledIcon(const QString& strEnabledPath, const QString& strDisabledPath)
{
    QIcon icon = normalIcon(strEnabledPath);
    icon.addFile(strDisabledPath, QSize(), QIcon::Disabled, QIcon::Off);
    return icon;
}

QToolButton* createToolButton(QWidget* pParent, const char* pObjectName)
{
    auto* pButton = new QToolButton(pParent);
    pButton->setObjectName(QString::fromLatin1(pObjectName));
    return pButton;
}

void setActionTexts(QAction* pAction, const QString& strText, const QString& strToolTip, const char* pWhatsThis)
{
    pAction->setText(strText);
    // An empty tooltip leaves the action showing its text as the tooltip.
    pAction->setToolTip(strToolTip);
    // What's-this texts are set as they stand, untranslated.
    pAction->setWhatsThis(QString::fromLatin1(pWhatsThis));
}

} // namespace

CVXSLayoutWindowBuilder::CVXSLayoutWindowBuilder(CVXSLayoutWindow& window)
    : m_window(window)
{
}

void CVXSLayoutWindowBuilder::buildControls()
{
    buildCentralArea();
    createActions();
    createSizeGrip();
}

void CVXSLayoutWindowBuilder::buildCentralArea()
{
    CVXSLayoutWindow& w = m_window;
    auto* pCentral = new QWidget(&w);
    pCentral->setObjectName(QStringLiteral("centralWidget"));
    w.setCentralWidget(pCentral);
    w.m_pCentralLayout = new QVBoxLayout(pCentral);
    w.m_pCentralLayout->setContentsMargins(2, 2, 2, 2);
    w.m_pCentralLayout->setSpacing(3);
    w.m_pCentralGrid = new QGridLayout();
    w.m_pCentralLayout->addLayout(w.m_pCentralGrid);

    w.m_pLayoutFrame = new QFrame(pCentral);
    w.m_pLayoutFrame->setObjectName(QStringLiteral("m_pLayoutFrame"));
    w.m_pLayoutFrame->setMinimumSize(440, 330);
    w.m_pLayoutFrame->setFrameShape(QFrame::StyledPanel);
    w.m_pLayoutFrame->setFrameShadow(QFrame::Raised);
    w.m_pCentralGrid->addWidget(w.m_pLayoutFrame, 0, 0);

    w.m_pBottomLayout = new QHBoxLayout();
    buildAnnotationGroup(pCentral);
    w.m_pBottomLayout->addWidget(w.m_pAnnotationGroup);
    w.m_pCloseSpacer = new QSpacerItem(16, 30, QSizePolicy::Expanding, QSizePolicy::Minimum);
    w.m_pBottomLayout->addItem(w.m_pCloseSpacer);
    w.m_pCloseBtn = new QPushButton(QStringLiteral("m_pCloseBtn"), pCentral);
    w.m_pCloseBtn->setObjectName(QStringLiteral("m_pCloseBtn"));
    w.m_pBottomLayout->addWidget(w.m_pCloseBtn);
    w.m_pCentralGrid->addLayout(w.m_pBottomLayout, 1, 0);
}

void CVXSLayoutWindowBuilder::buildAnnotationGroup(QWidget* pParent)
{
    CVXSLayoutWindow& w = m_window;
    w.m_pAnnotationGroup = new QGroupBox(pParent);
    w.m_pAnnotationGroup->setObjectName(QStringLiteral("m_pAnnotationGroup"));
    auto* pGroupLayout = new QVBoxLayout(w.m_pAnnotationGroup);
    pGroupLayout->setSpacing(2);
    pGroupLayout->setContentsMargins(6, 6, 6, 6);
    w.m_pAnnotationGrid = new QGridLayout();
    w.m_pAnnotationGrid->setAlignment(Qt::AlignTop);
    pGroupLayout->addLayout(w.m_pAnnotationGrid);

    w.m_pAnnotationEdit = new QLineEdit(w.m_pAnnotationGroup);
    w.m_pAnnotationEdit->setObjectName(QStringLiteral("m_pAnnotationEdit"));
    w.m_pAnnotationEdit->setMinimumWidth(150);
    w.m_pAnnotationEdit->setMaximumSize(32767, 32767);
    w.m_pAnnotationGrid->addWidget(w.m_pAnnotationEdit, 0, 0);
    w.m_pAnnFontBtn = createToolButton(w.m_pAnnotationGroup, "m_pAnnFontBtn");
    w.m_pAnnotationGrid->addWidget(w.m_pAnnFontBtn, 0, 1);
    w.m_pAnnColorBtn = createToolButton(w.m_pAnnotationGroup, "m_pAnnColorBtn");
    w.m_pAnnotationGrid->addWidget(w.m_pAnnColorBtn, 0, 2);
    w.m_pMultiLineTextBtn = createToolButton(w.m_pAnnotationGroup, "m_pMultiLineTextBtn");
    w.m_pMultiLineTextBtn->setIcon(normalIcon(QStringLiteral(":/Resource/text.xpm")));
    w.m_pMultiLineTextBtn->setToolTip(tr("Multiline text edit"));
    w.m_pMultiLineTextBtn->setWhatsThis(
        QStringLiteral("<b>Multiline Text Edit:</b><br>Adds a new text item into the image layout.</br>"));
    w.m_pAnnotationGrid->addWidget(w.m_pMultiLineTextBtn, 0, 3);
}

QAction* CVXSLayoutWindowBuilder::createAction(const char* pObjectName)
{
    // Until languageChange names it, an action shows its member name.
    auto* pAction = new QAction(QString::fromLatin1(pObjectName), &m_window);
    pAction->setObjectName(QString::fromLatin1(pObjectName));
    return pAction;
}

void CVXSLayoutWindowBuilder::createActions()
{
    CVXSLayoutWindow& w = m_window;
    w.m_pPasteAction = createAction("m_pPasteAction");
    w.m_pExportAction = createAction("m_pExportAction");
    w.m_pPrintAction = createAction("m_pPrintAction");
    w.m_pNewAction = createAction("m_pNewAction");
    w.m_pDrawRectAction = createAction("m_pDrawRectAction");
    w.m_pDrawEllipseAction = createAction("m_pDrawEllipseAction");
    w.m_pDeleteAction = createAction("m_pDeleteAction");
    w.m_pDeleteAction->setIcon(QIcon(w.m_oDeleteIcon));
    w.m_pCopyAction = createAction("m_pCopyAction");
    // The pointer keeps its member name as text: languageChange leaves it alone.
    w.m_pArrowAction = createAction("m_pArrowAction");
    w.m_pArrowAction->setToolTip(tr("Pointer"));
    w.m_pArrowAction->setWhatsThis(
        QStringLiteral("<b>Pointer:</b><br>Reset mouse cursor back to Pointer/Picking mode.</br."));
}

void CVXSLayoutWindowBuilder::createSizeGrip()
{
    CVXSLayoutWindow& w = m_window;
    if (w.m_pSizeGrip)
        return;
    w.m_pSizeGrip = new QSizeGrip(&w);
    w.m_pSizeGrip->setObjectName(QStringLiteral("m_pSizeGrip"));
    w.m_pSizeGrip->setGeometry(0, 0, 12, 12);
}

void CVXSLayoutWindowBuilder::connectControls()
{
    CVXSLayoutWindow& w = m_window;
    QObject::connect(w.m_pAnnColorBtn, &QToolButton::clicked, &w, &CVXSLayoutWindow::onClickAnnClr);
    QObject::connect(w.m_pAnnFontBtn, &QToolButton::clicked, &w, &CVXSLayoutWindow::onClickAnnFont);
    QObject::connect(w.m_pAnnotationEdit, &QLineEdit::returnPressed, &w, &CVXSLayoutWindow::onAnnotationEnter);
    QObject::connect(w.m_pCloseBtn, &QPushButton::clicked, &w, &CVXSLayoutWindow::onClickClose);
    QObject::connect(w.m_pPasteAction, &QAction::triggered, &w, &CVXSLayoutWindow::onClickClipBoardPaste);
    QObject::connect(w.m_pExportAction, &QAction::triggered, &w, &CVXSLayoutWindow::onClickExport);
    QObject::connect(w.m_pPrintAction, &QAction::triggered, &w, &CVXSLayoutWindow::onClickPrint);
    QObject::connect(w.m_pNewAction, &QAction::triggered, &w, &CVXSLayoutWindow::onClickNew);
    QObject::connect(w.m_pDrawRectAction, &QAction::toggled, &w, &CVXSLayoutWindow::onClickRectangleShapeBtn);
    QObject::connect(w.m_pDrawEllipseAction, &QAction::toggled, &w, &CVXSLayoutWindow::onClickEllipseShapeBtn);
    QObject::connect(w.m_pDeleteAction, &QAction::triggered, &w, &CVXSLayoutWindow::onClickDelete);
    QObject::connect(&w, &CVXSLayoutWindow::updateToolStatus, &w, &CVXSLayoutWindow::updateButtonStatus);
    QObject::connect(w.m_pCopyAction, &QAction::triggered, &w, &CVXSLayoutWindow::onCopyToClipboard);
    QObject::connect(w.m_pMultiLineTextBtn, &QToolButton::clicked, &w, &CVXSLayoutWindow::onClickMultiLineEditText);
    QObject::connect(w.m_pArrowAction, &QAction::triggered, &w, &CVXSLayoutWindow::onClickArrow);
}

void CVXSLayoutWindowBuilder::setTexts()
{
    CVXSLayoutWindow& w = m_window;
    w.m_pAnnotationGroup->setTitle(tr("Annotation"));
    w.m_pAnnotationGroup->setWhatsThis(QStringLiteral(
        "<b>Annotation: </b><br>To apply notes to an image, enter text in the annotation box and press Enter."
        "Drag the text to the location of interest in the image.</br>"));
    w.m_pCloseBtn->setText(tr("Close"));
    w.m_pCloseBtn->setWhatsThis(QStringLiteral("<b>Close:</b><br>Closes the image layout window.</br>"));
    // These three show their name only as a tooltip; "Action" appears where a toolbar
    // shows texts, in its overflow menu.
    setActionTexts(w.m_pPasteAction, tr("Action"), tr("Paste from Clipboard"),
                   "<b>Paste from Clipboard:</b><br>Paste the system clipboard contents into the current image "
                   "layout.</br>");
    setActionTexts(w.m_pExportAction, tr("Action"), tr("Export"),
                   "<b>Export:</b><br>Export the active Image Layout contents in the selected image format.</br>");
    setActionTexts(w.m_pPrintAction, tr("Action"), tr("Print"),
                   "<b>Print:</b><br>Print the current image layout contents.</br>");
    setActionTexts(w.m_pNewAction, tr("New"), QString(),
                   "<b>New:</b><br>Clear the active image layout contents and starts a new one.</br>");
    setActionTexts(w.m_pDrawRectAction, tr("Draw rectangle"), QString(),
                   "<b>Draw Rectangle:</b><br>Draw a Rectangle.</br>");
    setActionTexts(w.m_pDrawEllipseAction, tr("Draw Ellipse"), QString(),
                   "<b>Draw Ellipse:</b><br>Draw an Ellipse.</br>");
    setActionTexts(w.m_pDeleteAction, tr("Delete"), QString(), "<b>Delete:</b><br>Delete selected item/image.</br>");
    setActionTexts(w.m_pCopyAction, tr("Copy to Clipboard"), QString(),
                   "<b>Copy to Clipboard:</b><br>Copy the active image layout contents to the system clipboard.</br>");
}

void CVXSLayoutWindowBuilder::buildToolBar()
{
    CVXSLayoutWindow& w = m_window;
    createPasteActiveDatasetAction();
    setToolBarIcons();
    w.m_pToolBar = w.addToolBar(tr("Layout Toolbar"));
    w.m_pToolBar->setObjectName(QStringLiteral("Layout Toolbar"));
    w.m_pToolBar->setMovable(false);
    w.m_pToolBar->setFloatable(false);
    createArrowMenu();
    createMoveZMenu();
    w.m_pDeleteAction->setEnabled(false);
    createLayoutStyleBox();
    fillToolBar();
    setAnnotationButtons();
    setShortcuts();
    connectToolBar();
}

void CVXSLayoutWindowBuilder::createPasteActiveDatasetAction()
{
    CVXSLayoutWindow& w = m_window;
    w.m_pPasteActiveDSetAction = new QAction(tr("Paste Active Dataset"), &w);
    w.m_pPasteActiveDSetAction->setObjectName(QStringLiteral("m_pPasteActiveDSetAction"));
    w.m_pPasteActiveDSetAction->setIcon(normalIcon(QStringLiteral(":/Resource/PasteActiveDataset.xpm")));
    w.m_pPasteActiveDSetAction->setToolTip(tr("Paste from active dataset"));
    w.m_pPasteActiveDSetAction->setWhatsThis(QStringLiteral(
        "<b>Paste From Active Dataset:</b><br>Paste active image/sequence window contents into the current "
        "image layout.</br>"));
}

void CVXSLayoutWindowBuilder::setToolBarIcons()
{
    CVXSLayoutWindow& w = m_window;
    w.m_pNewAction->setIcon(normalIcon(QStringLiteral(":/Resource/filenew.xpm")));
    w.m_pPasteAction->setIcon(normalIcon(QStringLiteral(":/Resource/paste.xpm")));
    w.m_pDrawRectAction->setIcon(normalIcon(QStringLiteral(":/Resource/rectangle.xpm")));
    w.m_pDrawRectAction->setCheckable(true);
    w.m_pDrawEllipseAction->setIcon(normalIcon(QStringLiteral(":/Resource/ellipse.xpm")));
    w.m_pDrawEllipseAction->setCheckable(true);
    w.m_pExportAction->setIcon(enabledDisabledIcon(QStringLiteral(":/Resource/filesave_enabled.xpm"),
                                                   QStringLiteral(":/Resource/filesave_disabled.xpm")));
    w.m_pPrintAction->setIcon(enabledDisabledIcon(QStringLiteral(":/Resource/fileprint_enabled.xpm"),
                                                  QStringLiteral(":/Resource/fileprint_disabled.xpm")));
    w.m_pCopyAction->setIcon(enabledDisabledIcon(QStringLiteral(":/Resource/filecopy_enabled.xpm"),
                                                 QStringLiteral(":/Resource/filecopy_disabled.xpm")));
    w.m_pArrowAction->setIcon(normalIcon(QStringLiteral(":/Resource/arrow1.xpm")));
}

QToolButton* CVXSLayoutWindowBuilder::createPopupButton(const char* pObjectName, QMenu* pMenu,
                                                        const QString& strIconPath)
{
    QToolButton* pButton = createToolButton(m_window.m_pToolBar, pObjectName);
    pButton->setMenu(pMenu);
    pButton->setPopupMode(QToolButton::MenuButtonPopup);
    pButton->setIcon(normalIcon(strIconPath));
    return pButton;
}

QMenu* CVXSLayoutWindowBuilder::createPopup(const char* pObjectName, std::initializer_list<PopupEntry> entries)
{
    auto* pMenu = new QMenu(&m_window);
    pMenu->setObjectName(QString::fromLatin1(pObjectName));
    for (const PopupEntry& entry : entries) {
        auto* pAction = new QAction(entry.pText ? tr(entry.pText) : QString(), pMenu);
        pAction->setObjectName(QString::fromLatin1(entry.pObjectName));
        pAction->setData(entry.nValue);
        pAction->setIcon(normalIcon(QString::fromLatin1(entry.pIconPath)));
        pAction->setWhatsThis(QString::fromLatin1(entry.pWhatsThis));
        // Each entry goes in above the one made before it, so the menu lists them in reverse.
        const QList<QAction*> above = pMenu->actions();
        pMenu->insertAction(above.isEmpty() ? nullptr : above.first(), pAction);
        m_window.*entry.pMember = pAction;
    }
    pMenu->setActiveAction(m_window.*entries.begin()->pMember);
    return pMenu;
}

void CVXSLayoutWindowBuilder::createArrowMenu()
{
    CVXSLayoutWindow& w = m_window;
    w.m_pArrowMenu = createPopup(
        "m_pArrowMenu",
        {{&CVXSLayoutWindow::m_pDrawLineAction, "m_pDrawLineAction", VXSLayout::LineTool, nullptr,
          ":/Resource/line.xpm", "Draw Line"},
         {&CVXSLayoutWindow::m_pDrawSingleArrowAction, "m_pDrawSingleArrowAction", VXSLayout::SingleArrowTool,
          nullptr, ":/Resource/singleHeadArrow.xpm", "Draw Single Headed Arrow"},
         {&CVXSLayoutWindow::m_pDrawDoubleArrowAction, "m_pDrawDoubleArrowAction", VXSLayout::DoubleArrowTool,
          nullptr, ":/Resource/doubleHeadArrow.xpm", "Draw Double Headed Arrow"}});

    w.m_pArrowToolBtn = createPopupButton("m_pArrowToolBtn", w.m_pArrowMenu, QStringLiteral(":/Resource/line.xpm"));
    w.m_pArrowToolBtn->setToolTip(tr("Draw Line/Arrow"));
    w.m_pArrowToolBtn->setWhatsThis(QStringLiteral("<b>Draw Line/Arrow:</b><br>Set the Arrow/Line option.</br>"));
    w.m_pArrowToolBtn->setCheckable(true);
}

void CVXSLayoutWindowBuilder::createMoveZMenu()
{
    CVXSLayoutWindow& w = m_window;
    w.m_pMoveZMenu = createPopup(
        "m_pMoveZMenu",
        {{&CVXSLayoutWindow::m_pBringToFrontAction, "m_pBringToFrontAction", VXSLayout::BringToFront,
          QT_TRANSLATE_NOOP("CVXSLayoutWindow", "Bring to front"), ":/Resource/thickUpAllArrow.xpm",
          "Moves the selected item to top of Z-order"},
         {&CVXSLayoutWindow::m_pBringForwardAction, "m_pBringForwardAction", VXSLayout::BringForward,
          QT_TRANSLATE_NOOP("CVXSLayoutWindow", "Bring forward"), ":/Resource/thickUpArrow.xpm",
          "Moves the selected item up the Z-order (by 1)"},
         {&CVXSLayoutWindow::m_pSendBackwardAction, "m_pSendBackwardAction", VXSLayout::SendBackward,
          QT_TRANSLATE_NOOP("CVXSLayoutWindow", "Send backward"), ":/Resource/thickDownArrow.xpm",
          "Moves the selected item down the Z-order (by 1)"},
         {&CVXSLayoutWindow::m_pSendToBackAction, "m_pSendToBackAction", VXSLayout::SendToBack,
          QT_TRANSLATE_NOOP("CVXSLayoutWindow", "Send to back"), ":/Resource/thickDownAllArrow.xpm",
          "Moves the selected item to bottom of Z-order"}});
    w.m_pCurMoveZAction = nullptr;

    w.m_pMoveZBtn = createPopupButton("m_pMoveZBtn", w.m_pMoveZMenu, QStringLiteral(":/Resource/thickUpAllArrow.xpm"));
    w.m_pMoveZBtn->setToolTip(tr("Move selected item in Z"));
    w.m_pMoveZBtn->setWhatsThis(QStringLiteral(
        "<b>Move Selected Item in Z:</b><br>Move the selected item to front or back as needed compared to other "
        "items to control its visibility and order of rendering.</br>"));
    w.m_pMoveZBtn->setCheckable(false);
    w.m_pMoveZBtn->setEnabled(false);
}

void CVXSLayoutWindowBuilder::createLayoutStyleBox()
{
    CVXSLayoutWindow& w = m_window;
    w.m_pLayoutStyleLabel = new QLabel(QStringLiteral("Layout Style TextBox"), w.m_pToolBar);
    w.m_pLayoutStyleLabel->setObjectName(QStringLiteral("m_pLayoutStyleLabel"));
    w.m_pLayoutStyleLabel->setText(tr("Layout Style : "));
    w.m_pLayoutStyleLabel->setWhatsThis(QStringLiteral(
        "<b>Layout Style:</b><br>Sets a predefined image layout option. For example a 2x2 layout provides 4 "
        "separate areas to arrange images and items. A different image can be pasted into each layout area.</br>"));

    w.m_pLayoutStyleCombo = new QComboBox(w.m_pToolBar);
    w.m_pLayoutStyleCombo->setObjectName(QStringLiteral("m_pLayoutStyleCombo"));
    w.m_pLayoutStyleCombo->clear();
    w.m_pLayoutStyleCombo->addItems({tr("Free style"), tr("Layout 1x1"), tr("Layout 2x1"), tr("Layout 2x2"),
                                     tr("Layout 3x2"), tr("Layout 3x3"), tr("Layout 4x2"), tr("Layout 4x3"),
                                     tr("Layout 4x4")});
}

void CVXSLayoutWindowBuilder::fillToolBar()
{
    CVXSLayoutWindow& w = m_window;
    QToolBar* pToolBar = w.m_pToolBar;
    pToolBar->addAction(w.m_pNewAction);
    pToolBar->addSeparator();
    pToolBar->addAction(w.m_pExportAction);
    pToolBar->addSeparator();
    pToolBar->addAction(w.m_pPasteActiveDSetAction);
    pToolBar->addAction(w.m_pCopyAction);
    pToolBar->addAction(w.m_pPasteAction);
    pToolBar->addSeparator();
    pToolBar->addAction(w.m_pDrawRectAction);
    pToolBar->addAction(w.m_pDrawEllipseAction);
    pToolBar->addSeparator();
    pToolBar->addAction(w.m_pArrowAction);
    pToolBar->addSeparator();
    pToolBar->addWidget(w.m_pArrowToolBtn);
    pToolBar->addSeparator();
    pToolBar->addWidget(w.m_pMoveZBtn);
    pToolBar->addSeparator();
    pToolBar->addAction(w.m_pDeleteAction);
    pToolBar->addSeparator();
    pToolBar->addAction(w.m_pPrintAction);
    pToolBar->addSeparator();
    pToolBar->addWidget(w.m_pLayoutStyleLabel);
    pToolBar->addWidget(w.m_pLayoutStyleCombo);
}

void CVXSLayoutWindowBuilder::setAnnotationButtons()
{
    CVXSLayoutWindow& w = m_window;
    w.m_pAnnFontBtn->setIcon(normalIcon(QStringLiteral(":/Resource/fontchange.xpm")));
    w.m_pAnnFontBtn->setToolTip(tr("Font"));
    w.m_pAnnFontBtn->setWhatsThis(
        QStringLiteral("<b>Font:</b><br>Sets font, font style and font size to the selected test item.</br>"));
    w.m_pAnnColorBtn->setIcon(normalIcon(QStringLiteral(":/Resource/fontcolor.xpm")));
    w.m_pAnnColorBtn->setToolTip(tr("Font color"));
    w.m_pAnnColorBtn->setWhatsThis(
        QStringLiteral("<b>Font Color:</b><br>Sets text color to the selected text item.</br>"));
}

void CVXSLayoutWindowBuilder::setShortcuts()
{
    CVXSLayoutWindow& w = m_window;
    w.m_pDeleteAction->setShortcut(QKeySequence(Qt::Key_Delete));
    w.m_pPasteAction->setShortcut(QKeySequence(tr("Ctrl+V")));
    w.m_pPrintAction->setShortcut(QKeySequence(tr("Ctrl+P")));
    w.m_pNewAction->setShortcut(QKeySequence(tr("Ctrl+N")));
}

void CVXSLayoutWindowBuilder::connectToolBar()
{
    CVXSLayoutWindow& w = m_window;
    QObject::connect(w.m_pPasteActiveDSetAction, &QAction::triggered, &w, &CVXSLayoutWindow::onClickActiveDSetPaste);
    QObject::connect(w.m_pArrowToolBtn, &QToolButton::toggled, &w, &CVXSLayoutWindow::onClickArrowShapeBtn);
    QObject::connect(w.m_pArrowMenu, &QMenu::triggered, &w, &CVXSLayoutWindow::onSelectArrowToolPopup);
    QObject::connect(w.m_pLayoutStyleCombo, QOverload<int>::of(&QComboBox::activated), &w,
                     &CVXSLayoutWindow::selChngLayoutStyle);
    QObject::connect(w.m_pMoveZBtn, &QToolButton::clicked, &w, &CVXSLayoutWindow::onClickMoveZ);
    QObject::connect(w.m_pMoveZMenu, &QMenu::triggered, &w, &CVXSLayoutWindow::onSelMoveZType);
}
