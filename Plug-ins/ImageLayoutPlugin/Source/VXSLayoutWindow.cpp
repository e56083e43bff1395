#include "VXSLayoutWindow.h"

#include "VXSLayoutConstants.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"

#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QBoxLayout>
#include <QComboBox>
#include <QFrame>
#include <QGraphicsItem>
#include <QLabel>
#include <QTimer>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

// The icons live in the static core library; naming the resource keeps the linker from
// dropping them.
static void initResources()
{
    Q_INIT_RESOURCE(ImageLayout);
}

CVXSLayoutWindow::CVXSLayoutWindow(QWidget* pParent, const char* pName, Qt::WindowFlags flags)
    : QMainWindow(pParent, flags)
{
    initResources();
    setObjectName(pName ? QString::fromLatin1(pName) : QStringLiteral("CVXSLayoutWindow"));
    setWindowTitle(tr("Image Layout Window"));

    auto* pCentral = new QWidget(this);
    setCentralWidget(pCentral);
    m_pCentralLayout = new QVBoxLayout(pCentral);
    m_pLayoutFrame = new QFrame(pCentral);
    m_pLayoutFrame->setObjectName(QStringLiteral("m_pLayoutFrame"));
    m_pLayoutFrame->setMinimumSize(440, 330);
    m_pLayoutFrame->setFrameShape(QFrame::StyledPanel);
    m_pLayoutFrame->setFrameShadow(QFrame::Raised);
    m_pCentralLayout->addWidget(m_pLayoutFrame);

    createToolBar();
    resize(QSize(621, 447).expandedTo(minimumSizeHint()));
}

CVXSLayoutWindow::~CVXSLayoutWindow() = default;

QAction* CVXSLayoutWindow::createAction(const char* pObjectName, const QString& text, const QString& iconPath,
                                        bool bCheckable)
{
    auto* pAction = new QAction(this);
    pAction->setObjectName(QString::fromLatin1(pObjectName));
    pAction->setText(text);
    pAction->setIcon(QIcon(iconPath));
    pAction->setCheckable(bCheckable);
    return pAction;
}

void CVXSLayoutWindow::createToolBar()
{
    m_pDrawRectAction = createAction("m_pDrawRectAction", tr("Draw rectangle"), QStringLiteral(":/Resource/rectangle.xpm"), true);
    m_pDrawRectAction->setWhatsThis(QStringLiteral("<b>Draw Rectangle:</b><br>Draw a Rectangle.</br>"));
    m_pDrawEllipseAction = createAction("m_pDrawEllipseAction", tr("Draw Ellipse"), QStringLiteral(":/Resource/ellipse.xpm"), true);
    m_pDrawEllipseAction->setWhatsThis(QStringLiteral("<b>Draw Ellipse:</b><br>Draw an Ellipse.</br>"));
    // The pointer action keeps its object name as text: it shows only as an icon.
    m_pArrowAction = createAction("m_pArrowAction", QStringLiteral("m_pArrowAction"), QStringLiteral(":/Resource/arrow1.xpm"), false);
    m_pArrowAction->setToolTip(QStringLiteral("Pointer"));
    m_pArrowAction->setWhatsThis(QStringLiteral("<b>Pointer:</b><br>Reset mouse cursor back to Pointer/Picking mode.</br."));

    m_pToolBar = addToolBar(QStringLiteral("Layout Toolbar"));
    m_pToolBar->setObjectName(QStringLiteral("Layout Toolbar"));
    m_pToolBar->setMovable(false);
    m_pToolBar->setFloatable(false);
    m_pToolBar->addAction(m_pDrawRectAction);
    m_pToolBar->addAction(m_pDrawEllipseAction);
    m_pToolBar->addSeparator();
    m_pToolBar->addAction(m_pArrowAction);
    m_pToolBar->addSeparator();
    createArrowTool();
    m_pToolBar->addWidget(m_pArrowToolBtn);
    m_pToolBar->addSeparator();
    createLayoutStyleBox();
    m_pToolBar->addWidget(m_pLayoutStyleLabel);
    m_pToolBar->addWidget(m_pLayoutStyleCombo);

    connect(m_pDrawRectAction, &QAction::toggled, this, &CVXSLayoutWindow::onClickRectangleShapeBtn);
    connect(m_pDrawEllipseAction, &QAction::toggled, this, &CVXSLayoutWindow::onClickEllipseShapeBtn);
    connect(m_pArrowAction, &QAction::triggered, this, &CVXSLayoutWindow::onClickArrow);
    connect(m_pArrowToolBtn, &QToolButton::toggled, this, &CVXSLayoutWindow::onClickArrowShapeBtn);
    connect(m_pArrowMenu, &QMenu::triggered, this, &CVXSLayoutWindow::onSelectArrowToolPopup);
    connect(m_pLayoutStyleCombo, QOverload<int>::of(&QComboBox::activated), this,
            &CVXSLayoutWindow::selChngLayoutStyle);
    setWindowIcon(CVXUtilityFns::appIcon());
}

void CVXSLayoutWindow::createArrowTool()
{
    m_pArrowMenu = new QMenu(this);
    m_pArrowMenu->setObjectName(QStringLiteral("m_pArrowMenu"));
    m_pDrawLineAction = createAction("m_pDrawLineAction", QString(), QStringLiteral(":/Resource/line.xpm"), false);
    m_pDrawLineAction->setWhatsThis(QStringLiteral("Draw Line"));
    m_pDrawSingleArrowAction = createAction("m_pDrawSingleArrowAction", QString(),
                                            QStringLiteral(":/Resource/singleHeadArrow.xpm"), false);
    m_pDrawSingleArrowAction->setWhatsThis(QStringLiteral("Draw Single Headed Arrow"));
    m_pDrawDoubleArrowAction = createAction("m_pDrawDoubleArrowAction", QString(),
                                            QStringLiteral(":/Resource/doubleHeadArrow.xpm"), false);
    m_pDrawDoubleArrowAction->setWhatsThis(QStringLiteral("Draw Double Headed Arrow"));
    // Each entry goes in above the previous one: double-headed, single-headed, line.
    m_pArrowMenu->addAction(m_pDrawLineAction);
    m_pArrowMenu->insertAction(m_pDrawLineAction, m_pDrawSingleArrowAction);
    m_pArrowMenu->insertAction(m_pDrawSingleArrowAction, m_pDrawDoubleArrowAction);
    m_pArrowMenu->setActiveAction(m_pDrawLineAction);

    m_pArrowToolBtn = new QToolButton(m_pToolBar);
    m_pArrowToolBtn->setObjectName(QStringLiteral("m_pArrowToolBtn"));
    m_pArrowToolBtn->setMenu(m_pArrowMenu);
    m_pArrowToolBtn->setPopupMode(QToolButton::MenuButtonPopup);
    m_pArrowToolBtn->setIcon(QIcon(QStringLiteral(":/Resource/line.xpm")));
    m_pArrowToolBtn->setToolTip(tr("Draw Line/Arrow"));
    m_pArrowToolBtn->setWhatsThis(QStringLiteral("<b>Draw Line/Arrow:</b><br>Set the Arrow/Line option.</br>"));
    m_pArrowToolBtn->setCheckable(true);
}

void CVXSLayoutWindow::createLayoutStyleBox()
{
    m_pLayoutStyleLabel = new QLabel(QStringLiteral("Layout Style TextBox"), m_pToolBar);
    m_pLayoutStyleLabel->setObjectName(QStringLiteral("m_pLayoutStyleLabel"));
    m_pLayoutStyleLabel->setText(tr("Layout Style : "));
    m_pLayoutStyleLabel->setWhatsThis(QStringLiteral(
        "<b>Layout Style:</b><br>Sets a predefined image layout option. For example a 2x2 layout provides 4 "
        "separate areas to arrange images and items. A different image can be pasted into each layout area.</br>"));

    m_pLayoutStyleCombo = new QComboBox(m_pToolBar);
    m_pLayoutStyleCombo->setObjectName(QStringLiteral("m_pLayoutStyleCombo"));
    m_pLayoutStyleCombo->clear();
    m_pLayoutStyleCombo->addItems({tr("Free style"), tr("Layout 1x1"), tr("Layout 2x1"), tr("Layout 2x2"),
                                   tr("Layout 3x2"), tr("Layout 3x3"), tr("Layout 4x2"), tr("Layout 4x3"),
                                   tr("Layout 4x4")});
}

QFrame* CVXSLayoutWindow::viewContainer() const
{
    return m_pLayoutFrame;
}

QComboBox* CVXSLayoutWindow::layoutStyleCombo() const
{
    return m_pLayoutStyleCombo;
}

void CVXSLayoutWindow::initialize()
{
    Q_ASSERT_X(m_pMngr != nullptr, "VXSLayoutWindow", "m_pMngr != NULL");
    Q_ASSERT_X(m_pView != nullptr, "VXSLayoutWindow", "m_pView != NULL");
    m_pViewLayout = new QBoxLayout(QBoxLayout::LeftToRight, m_pLayoutFrame);
    m_pViewLayout->addWidget(m_pView, 0);
    setContentsMargins(5, 5, 5, 5);
}

void CVXSLayoutWindow::setLayoutManager(CVXSLayoutManager* pMngr)
{
    m_pMngr = pMngr;
}

void CVXSLayoutWindow::setLayoutView(CVXSLayoutView* pView)
{
    m_pView = pView;
}

void CVXSLayoutWindow::selChngLayoutStyle()
{
    const int style = m_pLayoutStyleCombo->currentIndex();
    if (style == m_nCurLayoutStyle)
        return;
    Q_ASSERT_X(m_pMngr, "VXSLayoutWindow", "m_pMngr");
    const int cells = m_pMngr->getCellCount(style);
    if (style != 0 && m_pView && m_pView->scene()) {
        int images = 0;
        for (const QGraphicsItem* pItem : m_pView->scene()->items()) {
            if (pItem->type() == VXSLayout::ImageItemType)
                ++images;
        }
        if (images > cells) {
            CVXSMessageBox::warning(this, CVXUtilityFns::getAppName(),
                                    tr("No. of images are more than the no. of expected cells!\n"
                                       "Delete few images before changing the layout style."),
                                    QString(), QString(), QString(), 0, -1);
            m_pLayoutStyleCombo->setCurrentIndex(m_nCurLayoutStyle);
            return;
        }
    }
    m_nCurLayoutStyle = style;
    m_pMngr->relayoutItems(false);
}

bool CVXSLayoutWindow::isDrawRectOn()
{
    return m_pDrawRectAction->isChecked();
}

bool CVXSLayoutWindow::isDrawEllipseOn()
{
    return m_pDrawEllipseAction->isChecked();
}

int CVXSLayoutWindow::isDrawArrowOn()
{
    return m_pArrowToolBtn->isChecked() ? m_nArrowType : VXSLayout::NoArrowTool;
}

void CVXSLayoutWindow::setChecked(QAction* pAction, bool bChecked)
{
    if (pAction->isChecked() != bChecked)
        pAction->setChecked(bChecked);
}

void CVXSLayoutWindow::setArrowToolChecked(bool bChecked)
{
    if (m_pArrowToolBtn->isChecked() != bChecked)
        m_pArrowToolBtn->setChecked(bChecked);
}

void CVXSLayoutWindow::onClickRectangleShapeBtn(bool bVal)
{
    if (bVal) {
        setChecked(m_pDrawEllipseAction, false);
        setArrowToolChecked(false);
    }
    setCursorStyle();
}

void CVXSLayoutWindow::onClickEllipseShapeBtn(bool bVal)
{
    if (bVal) {
        setChecked(m_pDrawRectAction, false);
        setArrowToolChecked(false);
    }
    setCursorStyle();
}

void CVXSLayoutWindow::onClickArrowShapeBtn(bool bVal)
{
    if (bVal) {
        setChecked(m_pDrawEllipseAction, false);
        setChecked(m_pDrawRectAction, false);
    }
    setCursorStyle();
}

void CVXSLayoutWindow::onSelectArrowToolPopup(QAction* pAction)
{
    if (pAction == m_pDrawLineAction) {
        m_nArrowType = VXSLayout::LineTool;
        m_pArrowToolBtn->setIcon(QIcon(QStringLiteral(":/Resource/line.xpm")));
    } else if (pAction == m_pDrawSingleArrowAction) {
        m_nArrowType = VXSLayout::SingleArrowTool;
        m_pArrowToolBtn->setIcon(QIcon(QStringLiteral(":/Resource/singleHeadArrow.xpm")));
    } else if (pAction == m_pDrawDoubleArrowAction) {
        m_nArrowType = VXSLayout::DoubleArrowTool;
        m_pArrowToolBtn->setIcon(QIcon(QStringLiteral(":/Resource/doubleHeadArrow.xpm")));
    }
    setArrowToolChecked(true);
    setChecked(m_pDrawEllipseAction, false);
    setChecked(m_pDrawRectAction, false);
    setCursorStyle();
}

void CVXSLayoutWindow::onClickArrow()
{
    // Only the first tool found on is switched off; at most one is on at a time.
    if (m_pArrowToolBtn->isChecked())
        m_pArrowToolBtn->setChecked(false);
    else if (m_pDrawEllipseAction->isChecked())
        m_pDrawEllipseAction->setChecked(false);
    else if (m_pDrawRectAction->isChecked())
        m_pDrawRectAction->setChecked(false);
    if (m_pView)
        m_pView->unsetCursor();
}

void CVXSLayoutWindow::setCursorStyle()
{
    if (!m_pView)
        return;
    if (m_pArrowToolBtn->isChecked() || m_pDrawEllipseAction->isChecked() || m_pDrawRectAction->isChecked())
        m_pView->setCursor(Qt::CrossCursor);
    else
        m_pView->unsetCursor();
}

void CVXSLayoutWindow::onClickMultiLineEditText()
{
    // Opens the Edit Text dialog for the annotation text; the dialog comes with the
    // window's annotation tools.
}

void CVXSLayoutWindow::updateButtonStatus()
{
}

void CVXSLayoutWindow::onDatasetStatusChanged(CVXSDataset* /*pDataset*/)
{
    // The host is still changing its windows; look at them once it is done.
    QTimer::singleShot(0, this, &CVXSLayoutWindow::updateButtonStatus);
}

void CVXSLayoutWindow::onSequenceStatusChanged(CVXSSequenceDataset* /*pDataset*/)
{
    QTimer::singleShot(0, this, &CVXSLayoutWindow::updateButtonStatus);
}

QMenu* CVXSLayoutWindow::createPopupMenu()
{
    // No context menu: the toolbar cannot be hidden by the user.
    return nullptr;
}
