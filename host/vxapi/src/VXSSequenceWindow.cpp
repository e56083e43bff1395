#include "VXSSequenceWindow.h"

#include "VXImageProvenance.h"
#include "VXImageWindowing.h"
#include "VXPixelSize.h"
#include "VXSSequenceDataset.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QPainter>
#include <QStyle>
#include <QTabWidget>
#include <QVBoxLayout>
#include <QtMath>

#include <algorithm>

namespace {

// Plugins address the tabs by these titles, so they are not translated.
const QString kSequenceTab = QStringLiteral("Sequence View");
const QString kProjectionTab = QStringLiteral("3D View");
const QString kThumbnailTab = QStringLiteral("Thumbnails");

constexpr int kThumbnailMaxSide = 128;
constexpr int kThumbnailGap = 4;

QImage firstValidFrame(const QVector<QImage>& frames)
{
    for (const QImage& frame : frames) {
        if (!frame.isNull())
            return frame;
    }
    return QImage();
}

void keepBrighterPixels(QImage& projection, const QImage& layer)
{
    for (int y = 0; y < projection.height(); ++y) {
        auto* pOut = reinterpret_cast<QRgb*>(projection.scanLine(y));
        const auto* pIn = reinterpret_cast<const QRgb*>(layer.constScanLine(y));
        for (int x = 0; x < projection.width(); ++x) {
            pOut[x] = qRgba(qMax(qRed(pOut[x]), qRed(pIn[x])), qMax(qGreen(pOut[x]), qGreen(pIn[x])),
                            qMax(qBlue(pOut[x]), qBlue(pIn[x])), qMax(qAlpha(pOut[x]), qAlpha(pIn[x])));
        }
    }
}

// Brightest value along the stack per pixel; frames of another size are scaled to the first.
QImage maximumIntensityProjection(const QVector<QImage>& frames)
{
    const QSize size = firstValidFrame(frames).size();
    if (size.isEmpty())
        return QImage();
    QImage projection(size, QImage::Format_ARGB32);
    projection.fill(Qt::transparent);
    for (const QImage& frame : frames) {
        if (frame.isNull())
            continue;
        const QImage layer = frame.size() == projection.size()
                                 ? frame
                                 : frame.scaled(projection.size(), Qt::IgnoreAspectRatio,
                                                Qt::SmoothTransformation);
        keepBrighterPixels(projection, layer.convertToFormat(QImage::Format_ARGB32));
    }
    return projection;
}

QSize thumbnailSize(const QVector<QImage>& frames)
{
    QSize size = firstValidFrame(frames).size();
    if (size.width() > kThumbnailMaxSide || size.height() > kThumbnailMaxSide)
        size.scale(kThumbnailMaxSide, kThumbnailMaxSide, Qt::KeepAspectRatio);
    return size.expandedTo(QSize(1, 1));
}

// The brightest level of each pixel along the stack; null unless all frames share one size
// and grey format.
QImage brightestLevels(const QVector<QImage>& levels)
{
    QImage brightest = levels.value(0);
    for (const QImage& frame : levels) {
        if (frame.size() != brightest.size() || frame.format() != brightest.format())
            return QImage();
        const bool bDeep = frame.format() == QImage::Format_Grayscale16;
        for (int y = 0; y < frame.height(); ++y) {
            uchar* pOut = brightest.scanLine(y);
            const uchar* pIn = frame.constScanLine(y);
            for (int x = 0; x < frame.width(); ++x) {
                if (bDeep)
                    reinterpret_cast<quint16*>(pOut)[x] = qMax(reinterpret_cast<quint16*>(pOut)[x],
                                                               reinterpret_cast<const quint16*>(pIn)[x]);
                else
                    pOut[x] = qMax(pOut[x], pIn[x]);
            }
        }
    }
    return brightest;
}

// All frames in a near-square grid, each fitted into a cell of the first frame's proportions.
QImage thumbnailMontage(const QVector<QImage>& frames)
{
    if (firstValidFrame(frames).isNull())
        return QImage();
    const QSize cell = thumbnailSize(frames);
    const int nColumns = qCeil(qSqrt(frames.size()));
    const int nRows = (frames.size() + nColumns - 1) / nColumns;
    QImage montage(nColumns * (cell.width() + kThumbnailGap) + kThumbnailGap,
                   nRows * (cell.height() + kThumbnailGap) + kThumbnailGap,
                   QImage::Format_ARGB32);
    montage.fill(Qt::black);
    QPainter painter(&montage);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    for (int i = 0; i < frames.size(); ++i) {
        const QRect cellRect(QPoint(kThumbnailGap + (i % nColumns) * (cell.width() + kThumbnailGap),
                                    kThumbnailGap + (i / nColumns) * (cell.height() + kThumbnailGap)),
                             cell);
        const QImage& frame = frames.at(i);
        if (!frame.isNull()) {
            painter.drawImage(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter,
                                                  frame.size().scaled(cell, Qt::KeepAspectRatio),
                                                  cellRect),
                              frame);
        }
    }
    return montage;
}

// The tabs showing all frames at once carry what the frames have in common: every key all
// of them hold with one value, and the sources of all of them.
QImage withKeysOfAllFrames(QImage image, const QVector<QImage>& frames)
{
    if (image.isNull() || frames.isEmpty())
        return image;
    const QImage& first = frames.first();
    for (const QString& strKey : first.textKeys()) {
        const QString strValue = first.text(strKey);
        if (std::all_of(frames.cbegin(), frames.cend(),
                        [&](const QImage& frame) { return frame.text(strKey) == strValue; }))
            image.setText(strKey, strValue);
    }
    QStringList sources;
    for (const QImage& frame : frames) {
        const QString strSource = frame.text(QString::fromLatin1(CVXImageProvenance::Source));
        if (!strSource.isEmpty() && !sources.contains(strSource))
            sources << strSource;
    }
    CVXImageProvenance::setKey(image, QString::fromLatin1(CVXImageProvenance::Source),
                               sources.join(QStringLiteral(", ")));
    return image;
}

int tabIndexOf(const QTabWidget* pTabs, const QString& strTabName)
{
    for (int i = 0; i < pTabs->count(); ++i) {
        if (pTabs->tabText(i).compare(strTabName, Qt::CaseInsensitive) == 0)
            return i;
    }
    return -1;
}

CVXSChildWindow* tabPage(const QTabWidget* pTabs, int nIndex)
{
    return qobject_cast<CVXSChildWindow*>(pTabs->widget(nIndex));
}

} // namespace

CVXSSequenceWindow::CVXSSequenceWindow(const QVector<QImage>& frames, QWidget* pParent)
    : CVXSChildWindow(QImage(), pParent)
    , m_pSequence(std::make_unique<CVXSSequenceDataset>(QString(), frames))
    , m_pTabs(new QTabWidget(this))
{
    // The pages hold the tab images, computed anew only when the display range changes.
    for (const QString& strTab : {kSequenceTab, kProjectionTab, kThumbnailTab}) {
        auto* pPage = new CVXSChildWindow;
        // The window's own menu, with its display range, serves every tab.
        pPage->setContextMenuPolicy(Qt::NoContextMenu);
        m_pTabs->addTab(pPage, strTab);
    }
    showDisplayRange();
    auto* pLayout = new QVBoxLayout(this);
    pLayout->setContentsMargins(0, 0, 0, 0);
    pLayout->addWidget(m_pTabs);
}

CVXSSequenceWindow::~CVXSSequenceWindow() = default;

bool CVXSSequenceWindow::isSequenceWindow()
{
    return true;
}

QImage CVXSSequenceWindow::grabImage(bool bGrabDisplayed)
{
    const QImage tab = tabImage(getCurrentTabName());
    if (!bGrabDisplayed)
        return tab;
    QImage grabbed = m_pTabs->currentWidget()->grab().toImage();
    CVXImageProvenance::copyKeys(tab, grabbed);
    // The tab shows the frame at a scale of its own, which a scale bar cannot know.
    grabbed.setText(QString::fromLatin1(CVXPixelSize::Key), QString());
    CVXImageProvenance::markHandedOver(grabbed, CVXImageProvenance::windowTitleOf(this));
    return grabbed;
}

QString CVXSSequenceWindow::getCurrentTabName() const
{
    return m_pTabs->tabText(m_pTabs->currentIndex());
}

bool CVXSSequenceWindow::setCurrentTab(const QString& strTabName)
{
    const int nIndex = tabIndexOf(m_pTabs, strTabName);
    if (nIndex < 0)
        return false;
    m_pTabs->setCurrentIndex(nIndex);
    return true;
}

int CVXSSequenceWindow::frameCount() const
{
    return m_pSequence->frameCount();
}

int CVXSSequenceWindow::currentFrame() const
{
    return m_nCurrentFrame;
}

void CVXSSequenceWindow::setCurrentFrame(int nIndex)
{
    if (nIndex < 0 || nIndex >= frameCount() || nIndex == m_nCurrentFrame)
        return;
    m_nCurrentFrame = nIndex;
    tabPage(m_pTabs, tabIndexOf(m_pTabs, kSequenceTab))->setImage(shownFrame(nIndex));
    emit currentFrameChanged(nIndex);
}

CVXSSequenceDataset* CVXSSequenceWindow::sequenceDataset() const
{
    return m_pSequence.get();
}

void CVXSSequenceWindow::setFrameLevels(const QVector<QImage>& levels)
{
    m_levels.clear();
    for (int i = 0; i < frameCount(); ++i) {
        const QImage frameLevels = levels.value(i);
        const bool bFits = CVXImageWindowing::isGreyLevels(frameLevels) && frameLevels.size() == m_pSequence->frame(i).size();
        m_levels.append(bFits ? frameLevels : QImage());
    }
    // The default display shows the frames, whatever their levels.
    if (!isDefaultDisplay())
        showDisplayRange();
}

QVector<QImage> CVXSSequenceWindow::levelImages() const
{
    QVector<QImage> levels;
    for (int i = 0; i < frameCount(); ++i)
        levels.append(levelsOf(m_pSequence->frame(i), m_levels.value(i)));
    return levels;
}

QImage CVXSSequenceWindow::keyedPicture() const
{
    return m_pSequence->frame(0);
}

void CVXSSequenceWindow::showDisplayRange()
{
    const QVector<QImage> shown = framePictures(true);
    const QVector<QImage> frames = framePictures(false);
    tabPage(m_pTabs, tabIndexOf(m_pTabs, kSequenceTab))->setImage(shown.value(m_nCurrentFrame));
    tabPage(m_pTabs, tabIndexOf(m_pTabs, kProjectionTab))->setImage(withKeysOfAllFrames(projection(shown), frames));
    tabPage(m_pTabs, tabIndexOf(m_pTabs, kThumbnailTab))->setImage(withKeysOfAllFrames(thumbnailMontage(shown), frames));
}

void CVXSSequenceWindow::layoutContent()
{
    CVXSChildWindow::layoutContent();
    // The tabs take the room the bar leaves.
    if (layout())
        layout()->setContentsMargins(0, 0, 0, height() - contentRect().height());
}

QImage CVXSSequenceWindow::shownFrame(int nIndex) const
{
    return shownPicture(m_pSequence->frame(nIndex), m_levels.value(nIndex));
}

QVector<QImage> CVXSSequenceWindow::framePictures(bool bShown) const
{
    QVector<QImage> pictures;
    for (int i = 0; i < frameCount(); ++i)
        pictures.append(bShown ? shownFrame(i) : m_pSequence->frame(i));
    return pictures;
}

QImage CVXSSequenceWindow::projection(const QVector<QImage>& shown) const
{
    // Through a range, the brightest level is projected and then coloured: colour tables
    // whose channels do not all rise would mix colours of different levels otherwise.
    const QImage brightest = isDefaultDisplay() ? QImage() : brightestLevels(levelImages());
    if (brightest.isNull())
        return maximumIntensityProjection(shown);
    return CVXImageWindowing::applyRange(brightest, displayRange());
}

void CVXSSequenceWindow::labelAllFramesHandedOver(QImage& image) const
{
    if (!isDefaultDisplay() && hasLevels()) {
        image = image.convertToFormat(QImage::Format_RGB32);
        displayRange().writeTo(image);
    }
    CVXImageProvenance::markHandedOver(image, CVXImageProvenance::windowTitleOf(this));
}

QImage CVXSSequenceWindow::tabImage(const QString& strTabName) const
{
    const int nIndex = tabIndexOf(m_pTabs, strTabName);
    if (nIndex < 0)
        return QImage();
    QImage image = tabPage(m_pTabs, nIndex)->image();
    if (image.isNull())
        return image;
    image.setText(QString::fromLatin1(CVXImageProvenance::Tab), m_pTabs->tabText(nIndex));
    if (m_pTabs->tabText(nIndex) != kSequenceTab) {
        labelAllFramesHandedOver(image);
        return image;
    }
    image.setText(QString::fromLatin1(CVXImageProvenance::SequenceFrame),
                  QStringLiteral("%1 of %2").arg(m_nCurrentFrame + 1).arg(frameCount()));
    labelHandedOver(image, m_pSequence->frame(m_nCurrentFrame), m_levels.value(m_nCurrentFrame));
    return image;
}

bool CVXSSequenceWindow::copyTabToClipboard(const QString& strTabName)
{
    if (tabIndexOf(m_pTabs, strTabName) < 0)
        return false;
    QGuiApplication::clipboard()->setImage(tabImage(strTabName));
    return true;
}
