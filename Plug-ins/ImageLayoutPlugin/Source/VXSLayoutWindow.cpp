#include "VXSLayoutWindow.h"

#include "undo/VXSLayoutChange.h"
#include "VXSEditText.h"
#include "VXSLayoutConstants.h"
#include "VXSLayoutItemText.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"
#include "window/VXSLayoutDrawingTools.h"
#include "window/VXSLayoutImagePaster.h"
#include "window/VXSLayoutStyleCheck.h"
#include "window/VXSLayoutTextEditor.h"
#include "window/VXSLayoutTextPlacer.h"
#include "window/VXSLayoutUndoActions.h"
#include "window/VXSLayoutWindowBuilder.h"
#include "window/VXSLayoutZMove.h"

#include <VXSChildWindow.h>
#include <VXSMdiSubWindow.h>
#include <VXUtilityFns.h>

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QClipboard>
#include <QCloseEvent>
#include <QColorDialog>
#include <QComboBox>
#include <QFontDialog>
#include <QFrame>
#include <QGraphicsScene>
#include <QLineEdit>
#include <QMenu>
#include <QSizeGrip>
#include <QTimer>
#include <QToolButton>

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
    m_title.update();
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
    CVXSLayoutUndoActions::addTo(this, m_pMngr->undoStack());
    m_title.follow(m_pMngr->undoStack());
    m_pMultiLineTextBtn->setFocus();
}

QList<QKeySequence> CVXSLayoutWindow::undoShortcuts()
{
    return CVXSLayoutUndoActions::undoShortcuts();
}

QList<QKeySequence> CVXSLayoutWindow::redoShortcuts()
{
    return CVXSLayoutUndoActions::redoShortcuts();
}

void CVXSLayoutWindow::setDocumentName(const QString& strName)
{
    m_title.setDocumentName(strName);
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
    if (!CVXSLayoutImagePaster(m_pMngr, m_pView).hasRoom(m_pLayoutStyleCombo->currentIndex(), this))
        return false;
    drawingTools().switchAllOff();
    return true;
}

void CVXSLayoutWindow::addImageToLayout(QImage& image)
{
    image = image.convertToFormat(QImage::Format_ARGB32);
    CVXSLayoutImagePaster(m_pMngr, m_pView).add(image);
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
    QImage image = CVXSLayoutImagePaster::activeDatasetImage(
        [this](const QString& strTabName) { emit copyToClipBoard(strTabName); });
    addImageToLayout(image);
}

// ---- annotations -----------------------------------------------------------------

CVXSLayoutItemText* CVXSLayoutWindow::selectedTextItem() const
{
    QGraphicsItem* pItem = m_pView ? m_pView->currentItem() : nullptr;
    return pItem && pItem->type() == TextItemType ? static_cast<CVXSLayoutItemText*>(pItem) : nullptr;
}

void CVXSLayoutWindow::onAnnotationEnter()
{
    Q_ASSERT_X(m_pView != nullptr, "VXSLayoutWindow", "m_pView != NULL");
    if (!m_pView || !m_pView->scene())
        return;
    drawingTools().switchAllOff();
    const QString strText = m_pAnnotationEdit->text();
    if (CVXSLayoutItemText* pTextItem = selectedTextItem()) {
        CVXSLayoutTextEditor(m_pMngr, *m_pView, *pTextItem).setText(strText, m_nTextFlags, m_oAnnFont, m_oAnnColor);
        return;
    }
    if (strText.trimmed().isEmpty())
        return;
    CVXSLayoutChange change(m_pMngr, tr("Add Text"));
    CVXSLayoutTextPlacer(*m_pView).place(strText, m_oAnnFont, m_oAnnColor, m_nTextFlags);
}

void CVXSLayoutWindow::onClickAnnFont()
{
    CVXSLayoutItemText* pTextItem = selectedTextItem();
    if (!pTextItem && m_pAnnotationEdit->text().isEmpty())
        return;
    bool bAccepted = false;
    const QFont font = QFontDialog::getFont(&bAccepted, pTextItem ? pTextItem->getFont() : m_oAnnFont, this);
    if (!bAccepted)
        return;
    // Without a text item selected, the font is for the next one.
    m_oAnnFont = font;
    if (pTextItem)
        CVXSLayoutTextEditor(m_pMngr, *m_pView, *pTextItem).setFont(font);
}

void CVXSLayoutWindow::onClickAnnClr()
{
    CVXSLayoutItemText* pTextItem = selectedTextItem();
    if (!pTextItem && m_pAnnotationEdit->text().isEmpty())
        return;
    const QColor color = QColorDialog::getColor(pTextItem ? pTextItem->getColor() : m_oAnnColor, this);
    if (!color.isValid())
        return;
    // Without a text item selected, the colour is for the next one.
    m_oAnnColor = color;
    if (pTextItem)
        CVXSLayoutTextEditor(m_pMngr, *m_pView, *pTextItem).setColor(color);
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
    if (!CVXSLayoutStyleCheck(*m_pMngr).allows(nStyle, this)) {
        m_pLayoutStyleCombo->setCurrentIndex(m_nCurLayoutStyle);
        return;
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
    if (m_pView)
        m_pView->deleteSelected();
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

CVXSLayoutDrawingTools CVXSLayoutWindow::drawingTools() const
{
    return CVXSLayoutDrawingTools(*m_pDrawRectAction, *m_pDrawEllipseAction, *m_pArrowToolBtn, m_pView);
}

void CVXSLayoutWindow::onClickRectangleShapeBtn(bool bVal)
{
    drawingTools().toolToggled(m_pDrawRectAction, bVal);
}

void CVXSLayoutWindow::onClickEllipseShapeBtn(bool bVal)
{
    drawingTools().toolToggled(m_pDrawEllipseAction, bVal);
}

void CVXSLayoutWindow::onClickArrowShapeBtn(bool bVal)
{
    drawingTools().toolToggled(m_pArrowToolBtn, bVal);
}

void CVXSLayoutWindow::onSelectArrowToolPopup(QAction* pAction)
{
    // Each entry of the popup carries its kind; the button shows it with the entry's picture.
    if (m_pArrowMenu->actions().contains(pAction)) {
        m_nArrowType = pAction->data().toInt();
        m_pArrowToolBtn->setIcon(pAction->icon());
    }
    drawingTools().useArrowTool();
}

void CVXSLayoutWindow::onClickArrow()
{
    drawingTools().usePointer();
}

void CVXSLayoutWindow::setCursorStyle()
{
    drawingTools().updateCursor();
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
