#include "VXSChildWindow.h"

#include "VXImageProvenance.h"
#include "VXSDataset.h"
#include "VXSWorkspace.h"

#include <QCloseEvent>

#include <QPainter>
#include <QStyle>

namespace {
const QColor kBackground(32, 32, 32);
// Mode 1 of canGrabMinimized: the picture as drawn on screen.
constexpr int kGrabDisplayed = 1;
} // namespace

CVXSChildWindow::CVXSChildWindow(const QImage& image, QWidget* pParent)
    : QWidget(pParent)
    , m_pDataset(std::make_unique<CVXSDataset>(QString(), image))
{
}

CVXSChildWindow::~CVXSChildWindow() = default;

CVXSChildWindow* CVXSChildWindow::getActiveChildWnd()
{
    return CVXSWorkspace::instance()->activeChildWindow();
}

bool CVXSChildWindow::isSequenceWindow()
{
    return false;
}

CVXSViewState CVXSChildWindow::getViewState()
{
    return m_viewState;
}

void CVXSChildWindow::setViewState(const CVXSViewState& state)
{
    m_viewState = state;
    update();
}

QImage CVXSChildWindow::grabImage(bool bGrabDisplayed)
{
    QImage grabbed = bGrabDisplayed ? grab().toImage() : image();
    if (bGrabDisplayed)
        CVXImageProvenance::copyKeys(image(), grabbed);
    CVXImageProvenance::markHandedOver(grabbed, CVXImageProvenance::windowTitleOf(this));
    return grabbed;
}

bool CVXSChildWindow::canGrabMinimized(int nGrabMode)
{
    // A minimized window is not drawn, so only the image itself can be taken.
    return nGrabMode != kGrabDisplayed;
}

const QImage& CVXSChildWindow::image() const
{
    return m_pDataset->image();
}

void CVXSChildWindow::setImage(const QImage& image)
{
    m_pDataset->setImage(image);
    update();
}

CVXSDataset* CVXSChildWindow::dataset() const
{
    return m_pDataset.get();
}

void CVXSChildWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kBackground);
    const QImage& shown = image();
    if (shown.isNull())
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(fittedRect(shown.size()), shown);
}

void CVXSChildWindow::closeEvent(QCloseEvent* pEvent)
{
    QWidget::closeEvent(pEvent);
    if (pEvent->isAccepted())
        CVXSWorkspace::instance()->notifyWindowClosed(this);
}

QRect CVXSChildWindow::fittedRect(const QSize& imageSize) const
{
    if (imageSize.isEmpty())
        return QRect();
    return QStyle::alignedRect(layoutDirection(), Qt::AlignCenter,
                               imageSize.scaled(size(), Qt::KeepAspectRatio), rect());
}
