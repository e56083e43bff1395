#include "VXSChildWindow.h"

#include "VXSWorkspace.h"

#include <QPainter>
#include <QStyle>

namespace {
const QColor kBackground(32, 32, 32);
// Mode 1 of canGrabMinimized: the picture as drawn on screen.
constexpr int kGrabDisplayed = 1;
} // namespace

CVXSChildWindow::CVXSChildWindow(const QImage& image, QWidget* pParent)
    : QWidget(pParent)
    , m_image(image)
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
    return bGrabDisplayed ? grab().toImage() : m_image;
}

bool CVXSChildWindow::canGrabMinimized(int nGrabMode)
{
    // A minimized window is not drawn, so only the image itself can be taken.
    return nGrabMode != kGrabDisplayed;
}

const QImage& CVXSChildWindow::image() const
{
    return m_image;
}

void CVXSChildWindow::setImage(const QImage& image)
{
    m_image = image;
    update();
}

void CVXSChildWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kBackground);
    if (m_image.isNull())
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(fittedRect(m_image.size()), m_image);
}

QRect CVXSChildWindow::fittedRect(const QSize& imageSize) const
{
    if (imageSize.isEmpty())
        return QRect();
    return QStyle::alignedRect(layoutDirection(), Qt::AlignCenter,
                               imageSize.scaled(size(), Qt::KeepAspectRatio), rect());
}
