#include "VXSLayoutWindow.h"

#include "host/VXSActiveDatasetGrabber.h"
#include "VXSEditText.h"
#include "undo/VXSLayoutChange.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutItemText.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"
#include "window/VXSLayoutWindowBuilder.h"
#include "window/VXSLayoutZMove.h"

#include <VXSChildWindow.h>
#include <VXSMdiSubWindow.h>
#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QCloseEvent>
#include <QColorDialog>
#include <QComboBox>
#include <QFontDialog>
#include <QFontMetrics>
#include <QFrame>
#include <QGraphicsScene>
#include <QLineEdit>
#include <QMenu>
#include <QSizeGrip>
#include <QTimer>
#include <QUndoStack>
#include <QToolButton>

#include <cstdlib>

using namespace VXSLayout;

namespace {

// The delete icon: a red cross outlined in black, 16 x 16, as PNG.
const unsigned char DeleteIconPng[] = {
    0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a, 0x00, 0x00, 0x00, 0x0d, 0x49, 0x48, 0x44, 0x52,
    0x00, 0x00, 0x00, 0x10, 0x00, 0x00, 0x00, 0x10, 0x02, 0x03, 0x00, 0x00, 0x00, 0x62, 0x9d, 0x17,
    0xf2, 0x00, 0x00, 0x00, 0x0c, 0x50, 0x4c, 0x54, 0x45, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0xd0,
    0x10, 0x10, 0xff, 0x80, 0x80, 0x7f, 0x8d, 0xc4, 0x22, 0x00, 0x00, 0x00, 0x01, 0x74, 0x52, 0x4e,
    0x53, 0x00, 0x40, 0xe6, 0xd8, 0x66, 0x00, 0x00, 0x00, 0x3e, 0x49, 0x44, 0x41, 0x54, 0x78, 0xda,
    0x63, 0x60, 0x00, 0x01, 0x46, 0x07, 0x46, 0x07, 0x06, 0xb6, 0x09, 0x6c, 0x13, 0x18, 0xa4, 0x96,
    0x48, 0x2d, 0x61, 0x90, 0x7a, 0x99, 0xbd, 0x84, 0x81, 0x6d, 0xd7, 0xba, 0x09, 0x0c, 0x8c, 0xeb,
    0x76, 0x39, 0x30, 0x30, 0x64, 0xbf, 0x64, 0x80, 0x10, 0x60, 0x2e, 0x58, 0x02, 0xac, 0x04, 0xac,
    0x18, 0xac, 0x0d, 0x6c, 0x00, 0x08, 0x00, 0x00, 0x2b, 0x0e, 0x14, 0x6f, 0x3d, 0x1d, 0x2a, 0x67,
    0x00, 0x00, 0x00, 0x00, 0x49, 0x45, 0x4e, 0x44, 0xae, 0x42, 0x60, 0x82,
};

// Where a text wider or taller than the page may start.
constexpr int OversizeTextRange = 10;
constexpr int TextPadding = 5;
constexpr int DeleteRepaintMargin = 40;

// A random start in [0, nFreeRange). One pseudo-random number is drawn per call, also
// when the text fits exactly (range 0), which then starts at 0.
int randomStart(int nFreeRange)
{
    const int nRandom = std::rand();
    if (nFreeRange < 0)
        return nRandom % OversizeTextRange;
    return nFreeRange == 0 ? 0 : nRandom % nFreeRange;
}

} // namespace

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
    m_oDeleteIcon.loadFromData(DeleteIconPng, sizeof(DeleteIconPng), "PNG");
    setObjectName(pName ? QString::fromLatin1(pName) : QStringLiteral("CVXSLayoutWindow"));
    setMinimumSize(450, 447);

    CVXSLayoutWindowBuilder builder(*this);
    builder.buildControls();
    languageChange();
    resize(QSize(621, 447).expandedTo(minimumSizeHint()));
    builder.connectControls();
    createToolBar();
}

CVXSLayoutWindow::~CVXSLayoutWindow() = default;

void CVXSLayoutWindow::languageChange()
{
    updateWindowTitle();
    CVXSLayoutWindowBuilder(*this).setTexts();
}

void CVXSLayoutWindow::createToolBar()
{
    m_nTextFlags = Qt::AlignLeft;
    m_pView = nullptr;
    m_pMngr = nullptr;
    CVXSLayoutWindowBuilder(*this).buildToolBar();
    setWindowIcon(CVXUtilityFns::appIcon());
    m_nCurLayoutStyle = 0;
    emit updateToolStatus();
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
    auto* pViewLayout = new QBoxLayout(QBoxLayout::LeftToRight, m_pLayoutFrame);
    pViewLayout->addWidget(m_pView, 0);
    connect(m_pView, &CVXSLayoutView::selectionChanged, this, &CVXSLayoutWindow::onLayoutItemSelectionChange);
    m_pEditTextDlg = new CVXSEditText(m_pView, "Edit Text", true, Qt::WindowFlags());
    setContentsMargins(5, 5, 5, 5);
    // The toolbar and these margins came after the window was sized; grow it so that the
    // frame keeps its minimum size.
    resize(size().expandedTo(minimumSizeHint()));
    connect(m_pEditTextDlg, &CVXSEditText::updateAnnotation, this, &CVXSLayoutWindow::updateAnnotation);
    connect(m_pEditTextDlg, &CVXSEditText::updateLayoutText, this, &CVXSLayoutWindow::updateLayoutText);
    connect(m_pEditTextDlg, &QDialog::rejected, this, &CVXSLayoutWindow::restoreAnnotationText);
    createUndoActions();
    m_pMultiLineTextBtn->setFocus();
}

void CVXSLayoutWindow::createUndoActions()
{
    QUndoStack* pStack = m_pMngr->undoStack();
    // Window actions, not toolbar entries; their shortcuts work while the focus is in here.
    m_pUndoAction = pStack->createUndoAction(this, tr("Undo"));
    m_pUndoAction->setObjectName(QStringLiteral("m_pUndoAction"));
    m_pUndoAction->setShortcuts(undoShortcuts());
    m_pRedoAction = pStack->createRedoAction(this, tr("Redo"));
    m_pRedoAction->setObjectName(QStringLiteral("m_pRedoAction"));
    m_pRedoAction->setShortcuts(redoShortcuts());
    for (QAction* pAction : {m_pUndoAction, m_pRedoAction}) {
        pAction->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(pAction);
    }
    connect(pStack, &QUndoStack::cleanChanged, this, &CVXSLayoutWindow::updateWindowTitle);
}

QList<QKeySequence> CVXSLayoutWindow::undoShortcuts()
{
    return {QKeySequence(Qt::CTRL | Qt::Key_Z)};
}

QList<QKeySequence> CVXSLayoutWindow::redoShortcuts()
{
    return {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)};
}

void CVXSLayoutWindow::setDocumentName(const QString& strName)
{
    m_strDocumentName = strName;
    updateWindowTitle();
}

void CVXSLayoutWindow::updateWindowTitle()
{
    QString strTitle = QCoreApplication::translate(ToolNameContext, ToolName);
    if (!m_strDocumentName.isEmpty())
        strTitle += QStringLiteral(" - ") + m_strDocumentName;
    if (m_pMngr && !m_pMngr->undoStack()->isClean())
        strTitle += QLatin1Char('*');
    setWindowTitle(strTitle);
}

void CVXSLayoutWindow::setLayoutManager(CVXSLayoutManager* pMngr)
{
    m_pMngr = pMngr;
}

void CVXSLayoutWindow::setLayoutView(CVXSLayoutView* pView)
{
    m_pView = pView;
}

// ---- simple forwarding -----------------------------------------------------------

void CVXSLayoutWindow::onClickClose()
{
    close();
}

void CVXSLayoutWindow::onClickExport()
{
    if (m_pMngr)
        m_pMngr->exportLayout();
}

void CVXSLayoutWindow::onClickPrint()
{
    if (m_pMngr)
        m_pMngr->printLayout(m_pView, 0);
}

void CVXSLayoutWindow::onClickNew()
{
    if (m_pMngr)
        m_pMngr->clearLayout();
}

void CVXSLayoutWindow::onCopyToClipboard()
{
    if (m_pMngr)
        m_pMngr->copyToClipboard();
    setCursorStyle();
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

// ---- pasting images --------------------------------------------------------------

bool CVXSLayoutWindow::canPasteImage()
{
    if (m_pMngr && m_pLayoutStyleCombo->currentIndex() != 0 && m_pMngr->getFirstEmptyCell(true) == -1) {
        CVXSMessageBox::warning(this, CVXUtilityFns::getAppName(),
                                tr("There is no cell currently empty! Delete one or more images to continue."),
                                QString(), QString(), QString(), 0, -1);
        return false;
    }
    switchDrawingToolsOff();
    return true;
}

void CVXSLayoutWindow::addImageToLayout(QImage& image)
{
    image = image.convertToFormat(QImage::Format_ARGB32);
    QGraphicsScene* pScene = m_pView ? m_pView->scene() : nullptr;
    if (pScene && m_pMngr && !image.isNull()) {
        CVXSLayoutChange change(m_pMngr, tr("Paste Image"));
        auto* pItem = new CVXSLayoutItemImage(image, nullptr);
        pScene->addItem(pItem);
        m_pMngr->addImageItem(pItem, true);
        m_pView->setCurrentItem(pItem);
        m_pView->showHandles(pItem);
        pScene->update();
        m_pView->setSelectedItem(pItem);
    }
    setCursorStyle();
}

void CVXSLayoutWindow::onClickClipBoardPaste()
{
    if (!canPasteImage())
        return;
    QImage image = QGuiApplication::clipboard()->image();
    addImageToLayout(image);
}

void CVXSLayoutWindow::onClickActiveDSetPaste()
{
    if (!canPasteImage())
        return;
    QImage image;
    if (CVXSChildWindow* pChild = CVXSChildWindow::getActiveChildWnd())
        image = CVXSActiveDatasetGrabber([this](const QString& strTabName) { emit copyToClipBoard(strTabName); })
                    .grab(pChild);
    addImageToLayout(image);
}

// ---- annotations -----------------------------------------------------------------

QGraphicsItem* CVXSLayoutWindow::selectedTextItem() const
{
    QGraphicsItem* pItem = m_pView ? m_pView->currentItem() : nullptr;
    return pItem && pItem->type() == TextItemType ? pItem : nullptr;
}

void CVXSLayoutWindow::updateWholeScene()
{
    if (m_pView && m_pView->scene())
        m_pView->scene()->update();
}

void CVXSLayoutWindow::onAnnotationEnter()
{
    Q_ASSERT_X(m_pView != nullptr, "VXSLayoutWindow", "m_pView != NULL");
    if (!m_pView || !m_pView->scene())
        return;
    switchDrawingToolsOff();
    const QString strText = m_pAnnotationEdit->text();
    const bool bEmpty = strText.trimmed().isEmpty();

    CVXSLayoutChange change(m_pMngr, tr("Add Text"));
    if (QGraphicsItem* pSelected = selectedTextItem()) {
        auto* pTextItem = static_cast<CVXSLayoutItemText*>(pSelected);
        m_pView->scene()->update(pTextItem->boundingRect());
        if (bEmpty) {
            change.setText(tr("Delete"));
            m_pMngr->removeLayoutItem(pTextItem);
            m_pView->setCurrentItem(nullptr);
            m_pView->setSelectedItem(nullptr);
            m_pView->hideHandles();
            return;
        }
        change.setText(tr("Edit Text"));
        pTextItem->setText(strText);
        pTextItem->setTextFlags(m_nTextFlags);
        pTextItem->setFont(m_oAnnFont);
        pTextItem->setColor(m_oAnnColor);
        m_pView->showHandles(pTextItem);
        updateWholeScene();
        m_pView->setSelectedItem(pTextItem);
        return;
    }
    if (!bEmpty)
        createTextItem(strText);
}

void CVXSLayoutWindow::createTextItem(const QString& strText)
{
    QGraphicsScene* pScene = m_pView->scene();
    auto* pItem = new CVXSLayoutItemText(strText, nullptr, pScene);
    pScene->addItem(pItem);
    pItem->setFont(m_oAnnFont);
    pItem->setColor(m_oAnnColor);
    pItem->setTextFlags(m_nTextFlags);

    const QRect page = pScene->sceneRect().toRect();
    const QRect extent = QFontMetrics(pItem->getFont()).boundingRect(page.x(), page.y(), page.width(), page.height(),
                                                                     int(m_nTextFlags), strText);
    const int nWidth = extent.width() + TextPadding;
    const int nHeight = extent.height() + TextPadding;
    // A text larger than the page starts within its first units; y is drawn first.
    const int y = randomStart(page.height() - nHeight);
    const int x = randomStart(page.width() - nWidth);
    pItem->setRect(x, y, nWidth, nHeight);

    const int z = m_pView->nextZ();
    pItem->setZValue(z);
    m_pView->setTopZ(z);
    pItem->show();
    pScene->update(pItem->boundingRect());
    m_pView->setCurrentItem(pItem);
    m_pView->showHandles(pItem);
    updateWholeScene();
    m_pView->setSelectedItem(pItem);
}

void CVXSLayoutWindow::repaintChangedText(QGraphicsItem* pTextItem)
{
    m_pView->scene()->update(pTextItem->boundingRect());
    m_pView->showHandles(pTextItem);
    updateWholeScene();
}

void CVXSLayoutWindow::onClickAnnFont()
{
    if (QGraphicsItem* pSelected = selectedTextItem()) {
        auto* pTextItem = static_cast<CVXSLayoutItemText*>(pSelected);
        bool bAccepted = false;
        const QFont font = QFontDialog::getFont(&bAccepted, pTextItem->getFont(), this);
        if (!bAccepted)
            return;
        CVXSLayoutChange change(m_pMngr, tr("Change Font"));
        m_oAnnFont = font;
        pTextItem->setFont(font);
        repaintChangedText(pTextItem);
        return;
    }
    if (m_pAnnotationEdit->text().isEmpty())
        return;
    bool bAccepted = false;
    const QFont font = QFontDialog::getFont(&bAccepted, m_oAnnFont, this);
    if (bAccepted)
        m_oAnnFont = font;
}

void CVXSLayoutWindow::onClickAnnClr()
{
    if (QGraphicsItem* pSelected = selectedTextItem()) {
        auto* pTextItem = static_cast<CVXSLayoutItemText*>(pSelected);
        const QColor color = QColorDialog::getColor(pTextItem->getColor(), this);
        if (!color.isValid())
            return;
        CVXSLayoutChange change(m_pMngr, tr("Change Colour"));
        m_oAnnColor = color;
        pTextItem->setColor(color);
        repaintChangedText(pTextItem);
        return;
    }
    if (m_pAnnotationEdit->text().isEmpty())
        return;
    const QColor color = QColorDialog::getColor(m_oAnnColor, this);
    if (color.isValid())
        m_oAnnColor = color;
}

void CVXSLayoutWindow::onClickMultiLineEditText()
{
    if (!m_pEditTextDlg)
        return;
    m_strTextBeforeEdit = m_pAnnotationEdit->text();
    m_pEditTextDlg->setTextData(m_strTextBeforeEdit, m_nTextFlags, m_oAnnFont, m_oAnnColor);
    m_pEditTextDlg->show();
}

void CVXSLayoutWindow::restoreAnnotationText()
{
    // The dialog sent the text live while it was typed; a cancelled edit takes it back.
    m_pAnnotationEdit->setText(m_strTextBeforeEdit);
}

void CVXSLayoutWindow::updateAnnotation(Qt::Alignment textFlags, QFont& oFont, QColor& oColor)
{
    m_oAnnFont = oFont;
    m_oAnnColor = oColor;
    m_nTextFlags = textFlags;
    onAnnotationEnter();
}

void CVXSLayoutWindow::updateLayoutText(QString& strText)
{
    m_pAnnotationEdit->setText(strText);
}

// ---- layout style and deleting ---------------------------------------------------

void CVXSLayoutWindow::selChngLayoutStyle()
{
    const int nStyle = m_pLayoutStyleCombo->currentIndex();
    if (nStyle == m_nCurLayoutStyle)
        return;
    Q_ASSERT_X(m_pMngr != nullptr, "VXSLayoutWindow", "m_pMngr");
    if (!m_pMngr)
        return;
    const int nCells = m_pMngr->getCellCount(nStyle);
    if (nStyle != 0) {
        int nImages = 0;
        const QList<QGraphicsItem*> items = m_pMngr->getScene()->items();
        for (const QGraphicsItem* pItem : items) {
            if (pItem->type() == ImageItemType)
                ++nImages;
        }
        if (nImages > nCells) {
            CVXSMessageBox::warning(this, CVXUtilityFns::getAppName(),
                                    tr("No. of images are more than the no. of expected cells!\n"
                                       "Delete few images before changing the layout style."),
                                    QString(), QString(), QString(), 0, -1);
            m_pLayoutStyleCombo->setCurrentIndex(m_nCurLayoutStyle);
            return;
        }
    }
    // Undo records the style laid out, which is still the old one here.
    CVXSLayoutChange change(m_pMngr, tr("Change Layout Style"));
    m_nCurLayoutStyle = nStyle;
    m_pMngr->relayoutItems(false);
}

int CVXSLayoutWindow::layoutStyle() const
{
    return m_nCurLayoutStyle;
}

void CVXSLayoutWindow::restoreLayoutStyle(int nStyle)
{
    const QSignalBlocker blocker(m_pLayoutStyleCombo);
    m_pLayoutStyleCombo->setCurrentIndex(nStyle);
    m_nCurLayoutStyle = nStyle;
}

void CVXSLayoutWindow::onClickDelete()
{
    QGraphicsItem* pItem = m_pView ? m_pView->currentItem() : nullptr;
    if (!pItem)
        return;
    const QRect dirty = pItem->boundingRect().toRect().adjusted(-DeleteRepaintMargin, -DeleteRepaintMargin,
                                                                 DeleteRepaintMargin, DeleteRepaintMargin);
    CVXSLayoutChange change(m_pMngr, tr("Delete"));
    if (m_pMngr)
        m_pMngr->removeLayoutItem(pItem);
    else
        delete pItem;
    if (m_pView->scene())
        m_pView->scene()->update(dirty);
    m_pView->setCurrentItem(nullptr);
    m_pView->setSelectedItem(nullptr);
    m_pView->hideHandles();
}

// ---- tools -----------------------------------------------------------------------

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
    return m_pArrowToolBtn->isChecked() ? m_nArrowType : NoArrowTool;
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

void CVXSLayoutWindow::switchDrawingToolsOff()
{
    setChecked(m_pDrawRectAction, false);
    setChecked(m_pDrawEllipseAction, false);
    setArrowToolChecked(false);
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
    // Each entry of the popup carries its kind; the button shows it with the entry's picture.
    if (m_pArrowMenu->actions().contains(pAction)) {
        m_nArrowType = pAction->data().toInt();
        m_pArrowToolBtn->setIcon(pAction->icon());
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

void CVXSLayoutWindow::onSelMoveZType(QAction* pActionItem)
{
    m_pCurMoveZAction = pActionItem;
    const bool bZEntry = m_pMoveZMenu->actions().contains(pActionItem);
    m_pMoveZBtn->setIcon(bZEntry ? pActionItem->icon() : QIcon());
    onClickMoveZ();
}

void CVXSLayoutWindow::onClickMoveZ()
{
    // Each entry of the popup carries its command. Before any choice the button moves one
    // step forward, although it shows the "Bring to front" picture.
    const bool bChosen = m_pMoveZMenu->actions().contains(m_pCurMoveZAction);
    if (m_pView)
        CVXSLayoutZMove(m_pMngr, *m_pView).apply(bChosen ? m_pCurMoveZAction->data().toInt() : BringForward);
}

// ---- status ----------------------------------------------------------------------

void CVXSLayoutWindow::updateButtonStatus()
{
    // The view keeps its own auxiliary items in the scene; more means the page has content.
    const bool bHasContent =
        m_pView && m_pView->scene() && m_pView->scene()->items().count() > AuxiliaryItemCount;
    m_pExportAction->setEnabled(bHasContent);
    m_pPrintAction->setEnabled(bHasContent);
    m_pCopyAction->setEnabled(bHasContent);
    m_pPasteActiveDSetAction->setEnabled(CVXSChildWindow::getActiveChildWnd() != nullptr);
}

void CVXSLayoutWindow::onLayoutItemSelectionChange(QGraphicsItem* pSelItem)
{
    const bool bText = pSelItem && pSelItem->type() == TextItemType;
    if (bText) {
        const auto* pTextItem = static_cast<const CVXSLayoutItemText*>(pSelItem);
        m_pAnnotationEdit->setText(pTextItem->getText());
        m_oAnnFont = pTextItem->getFont();
        m_oAnnColor = pTextItem->getColor();
        m_nTextFlags = pTextItem->getTextFlags();
    } else {
        m_pAnnotationEdit->clear();
        m_oAnnFont = QApplication::font();
        m_oAnnColor = QColor(0, 0, 0, 255);
        m_nTextFlags = Qt::AlignLeft;
    }
    if (m_pEditTextDlg) {
        m_pEditTextDlg->setTextData(bText ? m_pAnnotationEdit->text() : QString(),
                                    bText ? m_nTextFlags : Qt::Alignment(), m_oAnnFont, m_oAnnColor);
    }
    m_pDeleteAction->setEnabled(pSelItem != nullptr);
    m_pMoveZBtn->setEnabled(pSelItem != nullptr);
    emit updateToolStatus();
}

// ---- window events ---------------------------------------------------------------

void CVXSLayoutWindow::closeEvent(QCloseEvent* pEvent)
{
    // Closing only hides the window; its layout stays for the next time it is shown.
    if (QAction* pMenuAction = CVXUtilityFns::getAction(QLatin1String(ToolName)))
        pMenuAction->setChecked(false);
    pEvent->ignore();
    if (auto* pSubWindow = qobject_cast<CVXSMdiSubWindow*>(parentWidget()))
        pSubWindow->hideWindow();
    else
        hide();
}

void CVXSLayoutWindow::resizeEvent(QResizeEvent* pEvent)
{
    m_pSizeGrip->move(width() - m_pSizeGrip->width(), height() - m_pSizeGrip->height());
    QMainWindow::resizeEvent(pEvent);
}

void CVXSLayoutWindow::changeEvent(QEvent* pEvent)
{
    if (pEvent->type() == QEvent::WindowStateChange)
        m_pSizeGrip->setVisible(!isMaximized());
    QMainWindow::changeEvent(pEvent);
}

QMenu* CVXSLayoutWindow::createPopupMenu()
{
    return nullptr;
}
