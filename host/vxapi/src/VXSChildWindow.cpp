#include "VXSChildWindow.h"

#include "VXColourTable.h"
#include "VXImageProvenance.h"
#include "VXImageWindowing.h"
#include "VXPixelSize.h"
#include "VXSDataset.h"
#include "VXSDisplayRangeBar.h"
#include "VXSWorkspace.h"

#include <QCloseEvent>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

namespace {
const QColor kBackground(32, 32, 32);
// Mode 1 of canGrabMinimized: the picture as drawn on screen.
constexpr int kGrabDisplayed = 1;
constexpr int kLevels8 = 256;

// The values of the darkest and brightest of these levels; a flat image gets half a level
// either side, so that its range still has a width.
bool valueExtent(const QVector<QImage>& levels, const CVXDisplayRange& calibration, double& dMinimum,
                 double& dMaximum)
{
    if (levels.isEmpty())
        return false;
    int nLow = std::numeric_limits<int>::max();
    int nHigh = std::numeric_limits<int>::min();
    for (const QImage& frame : levels) {
        const QPair<int, int> extent = CVXImageWindowing::levelExtent(frame);
        nLow = qMin(nLow, extent.first);
        nHigh = qMax(nHigh, extent.second);
    }
    const double dHalf = nLow == nHigh ? 0.5 : 0.0;
    const double dLow = calibration.valueOf(nLow - dHalf);
    const double dHigh = calibration.valueOf(nHigh + dHalf);
    dMinimum = qMin(dLow, dHigh);
    dMaximum = qMax(dLow, dHigh);
    return true;
}

} // namespace

CVXSChildWindow::CVXSChildWindow(const QImage& image, QWidget* pParent)
    : QWidget(pParent)
    , m_pDataset(std::make_unique<CVXSDataset>(QString(), image))
    , m_picture(image)
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
    QImage grabbed = bGrabDisplayed ? grab(contentRect()).toImage() : image();
    if (bGrabDisplayed) {
        CVXImageProvenance::copyKeys(image(), grabbed);
        // Shown at the window's scale, each grabbed pixel covers more (or less) of the object.
        const QRect fitted = fittedRect(image().size());
        if (CVXPixelSize::of(image()) > 0.0 && fitted.width() > 0)
            CVXPixelSize::set(grabbed, CVXPixelSize::of(image()) * image().width()
                                           / (fitted.width() * grabbed.devicePixelRatio()));
    }
    labelHandedOver(grabbed, m_picture, m_levels);
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
    m_picture = image;
    m_levels = QImage();
    showDisplayRange();
}

void CVXSChildWindow::setLevels(const QImage& levels)
{
    m_levels = CVXImageWindowing::isGreyLevels(levels) && levels.size() == m_picture.size() ? levels : QImage();
    // The default display shows the picture, whatever its levels.
    if (!isDefaultDisplay())
        showDisplayRange();
}

CVXSDataset* CVXSChildWindow::dataset() const
{
    return m_pDataset.get();
}

bool CVXSChildWindow::hasLevels() const
{
    const QVector<QImage> levels = levelImages();
    return !levels.isEmpty() && std::none_of(levels.cbegin(), levels.cend(), [](const QImage& frame) { return frame.isNull(); });
}

CVXDisplayRange CVXSChildWindow::displayRange() const
{
    return rangeShownFor(keyedPicture(), hasLevels() ? levelImages() : QVector<QImage>());
}

bool CVXSChildWindow::isDefaultDisplay() const
{
    return !m_chosen.hasRange();
}

bool CVXSChildWindow::dataRange(double& dMinimum, double& dMaximum) const
{
    return hasLevels() && valueExtent(levelImages(), CVXDisplayRange::fromImage(keyedPicture()), dMinimum, dMaximum);
}

bool CVXSChildWindow::setDisplayRange(double dMinimum, double dMaximum, const QString& strTable)
{
    CVXDisplayRange chosen;
    if (!hasLevels() || !CVXColourTable::isKnown(strTable) || !chosen.setRange(dMinimum, dMaximum))
        return false;
    chosen.setTableName(strTable);
    m_chosen = chosen;
    displayRangeWasChanged();
    return true;
}

void CVXSChildWindow::resetDisplayRange()
{
    m_chosen = CVXDisplayRange();
    displayRangeWasChanged();
}

bool CVXSChildWindow::isDisplayRangeBarVisible() const
{
    return m_pBar && !m_pBar->isHidden();
}

void CVXSChildWindow::setDisplayRangeBarVisible(bool bVisible)
{
    if (!m_pBar && !bVisible)
        return;
    if (!m_pBar)
        m_pBar = new CVXSDisplayRangeBar(this);
    m_pBar->setVisible(bVisible);
    layoutContent();
}

CVXImagePage CVXSChildWindow::givenPage() const
{
    return {m_picture, m_levels};
}

QVector<QImage> CVXSChildWindow::levelImages() const
{
    const QImage levels = levelsOf(m_picture, m_levels);
    return levels.isNull() ? QVector<QImage>() : QVector<QImage> {levels};
}

QImage CVXSChildWindow::keyedPicture() const
{
    return m_picture;
}

void CVXSChildWindow::showDisplayRange()
{
    m_pDataset->setImage(shownPicture(m_picture, m_levels));
    update();
}

void CVXSChildWindow::layoutContent()
{
    if (m_pBar) {
        const int nHeight = m_pBar->isHidden() ? 0 : m_pBar->sizeHint().height();
        m_pBar->setGeometry(0, height() - nHeight, width(), nHeight);
    }
    update();
}

QRect CVXSChildWindow::contentRect() const
{
    return isDisplayRangeBarVisible() ? rect().adjusted(0, 0, 0, -m_pBar->height()) : rect();
}

QImage CVXSChildWindow::levelsOf(const QImage& picture, const QImage& levels)
{
    if (!levels.isNull())
        return levels;
    return picture.format() == QImage::Format_Grayscale8 ? picture : QImage();
}

QImage CVXSChildWindow::shownPicture(const QImage& picture, const QImage& levels) const
{
    const QImage greyLevels = levelsOf(picture, levels);
    if (!m_chosen.hasRange() || greyLevels.isNull())
        return picture;
    const CVXDisplayRange range = rangeShownFor(picture, {greyLevels});
    QImage shown = CVXImageWindowing::applyRange(greyLevels, range);
    CVXImageProvenance::copyKeys(picture, shown);
    range.writeTo(shown);
    return shown;
}

CVXDisplayRange CVXSChildWindow::rangeShownFor(const QImage& picture, const QVector<QImage>& levels) const
{
    CVXDisplayRange range = CVXDisplayRange::fromImage(picture);
    range.setTableName(m_chosen.tableName());
    if (m_chosen.hasRange()) {
        range.setRange(m_chosen.minimum(), m_chosen.maximum());
        return range;
    }
    // The default shows the range the picture's keys name (a DICOM file's window), an
    // 8-bit picture's own levels as they are, and deeper levels stretched from darkest to
    // brightest.
    double dMinimum = 0.0;
    double dMaximum = 0.0;
    const bool bOwnLevels = levels.size() == 1 && levels.first().cacheKey() == picture.cacheKey();
    if (range.hasRange() || levels.isEmpty())
        return range;
    if (bOwnLevels)
        range.setRange(range.valueOf(0), range.valueOf(kLevels8 - 1));
    else if (valueExtent(levels, range, dMinimum, dMaximum))
        range.setRange(dMinimum, dMaximum);
    return range;
}

void CVXSChildWindow::labelHandedOver(QImage& image, const QImage& picture, const QImage& levels) const
{
    const QImage greyLevels = levelsOf(picture, levels);
    if (!image.isNull() && !greyLevels.isNull()) {
        // What is handed over is a picture; its levels stay behind.
        image = image.convertToFormat(QImage::Format_RGB32);
        rangeShownFor(picture, {greyLevels}).writeTo(image);
    }
    CVXImageProvenance::markHandedOver(image, CVXImageProvenance::windowTitleOf(this));
}

void CVXSChildWindow::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(contentRect(), kBackground);
    const QImage& shown = image();
    if (shown.isNull())
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(fittedRect(shown.size()), shown);
}

void CVXSChildWindow::resizeEvent(QResizeEvent* pEvent)
{
    QWidget::resizeEvent(pEvent);
    layoutContent();
}

void CVXSChildWindow::contextMenuEvent(QContextMenuEvent* pEvent)
{
    QMenu menu(this);
    QAction* pBarAction = menu.addAction(tr("Display Range"));
    pBarAction->setObjectName(QStringLiteral("actionDisplayRange"));
    pBarAction->setCheckable(true);
    pBarAction->setChecked(isDisplayRangeBarVisible());
    connect(pBarAction, &QAction::toggled, this, &CVXSChildWindow::setDisplayRangeBarVisible);
    menu.exec(pEvent->globalPos());
}

void CVXSChildWindow::mousePressEvent(QMouseEvent* pEvent)
{
    if (pEvent->button() != Qt::LeftButton || !isDisplayRangeBarVisible() || !hasLevels()) {
        QWidget::mousePressEvent(pEvent);
        return;
    }
    m_dragStart = pEvent->pos();
    m_dragRange = displayRange();
}

void CVXSChildWindow::mouseMoveEvent(QMouseEvent* pEvent)
{
    double dLowest = 0.0;
    double dHighest = 0.0;
    const QRect content = contentRect();
    if (!m_dragRange.hasRange() || !dataRange(dLowest, dHighest) || content.isEmpty()) {
        QWidget::mouseMoveEvent(pEvent);
        return;
    }
    const double dSpan = dHighest - dLowest;
    const QPoint moved = pEvent->pos() - m_dragStart;
    // The range never gets narrower than a thousandth of the data's.
    const double dWidth = qMax(m_dragRange.maximum() - m_dragRange.minimum() + moved.x() * dSpan / content.width(),
                               dSpan / 1000.0);
    const double dCentre = (m_dragRange.minimum() + m_dragRange.maximum()) / 2.0 + moved.y() * dSpan / content.height();
    setDisplayRange(dCentre - dWidth / 2.0, dCentre + dWidth / 2.0, m_dragRange.tableName());
}

void CVXSChildWindow::mouseReleaseEvent(QMouseEvent* pEvent)
{
    if (!m_dragRange.hasRange()) {
        QWidget::mouseReleaseEvent(pEvent);
        return;
    }
    m_dragRange = CVXDisplayRange();
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
    const QRect content = contentRect();
    return QStyle::alignedRect(layoutDirection(), Qt::AlignCenter, imageSize.scaled(content.size(), Qt::KeepAspectRatio),
                               content);
}

void CVXSChildWindow::displayRangeWasChanged()
{
    showDisplayRange();
    emit displayRangeChanged();
    // Tools that show this window's image take it anew.
    CVXSWorkspace::instance()->notifyWindowChanged(this);
}
