#include "scene/VXSImageDisplayCache.h"

#include <QPainter>
#include <QRectF>
#include <QTransform>

namespace {

// Targets beyond this size on the device (a strongly zoomed view) are drawn straight
// from the source rather than cached.
constexpr int MaxCachedSide = 8192;
// Sources of fewer pixels are reduced in a few milliseconds.
constexpr qint64 QuickSourcePixels = 1024 * 1024;

// Number of times the source can be halved and still cover the target in both directions.
int levelFor(const QSize& source, const QSize& target)
{
    int level = 0;
    while ((source.width() >> (level + 1)) >= target.width()
           && (source.height() >> (level + 1)) >= target.height())
        ++level;
    return level;
}

// The rectangle of device pixels covered by target, edges rounded independently so
// that neighbouring items tile without gaps.
QRect snappedDeviceRect(const QTransform& transform, const QRectF& target)
{
    const QRectF device = transform.mapRect(target);
    const int left = qRound(device.left());
    const int top = qRound(device.top());
    return QRect(left, top, qRound(device.right()) - left, qRound(device.bottom()) - top);
}

} // namespace

void CVXSImageDisplayCache::draw(QPainter* pPainter, const QRectF& target, const QImage& source)
{
    if (source.isNull() || target.isEmpty())
        return;

    const QTransform transform = pPainter->combinedTransform();
    const QRect device = snappedDeviceRect(transform, target);
    const bool simpleTransform = transform.type() <= QTransform::TxScale
        && transform.m11() > 0 && transform.m22() > 0;
    if (!simpleTransform || device.width() > MaxCachedSide || device.height() > MaxCachedSide) {
        pPainter->save();
        pPainter->setRenderHint(QPainter::SmoothPixmapTransform);
        pPainter->drawImage(target, source);
        pPainter->restore();
        return;
    }
    if (device.isEmpty())
        return;

    const QImage& scaled = scaledTo(source, device.size());
    pPainter->save();
    pPainter->setWorldMatrixEnabled(false);
    pPainter->setViewTransformEnabled(false);
    pPainter->drawImage(device.topLeft(), scaled);
    pPainter->restore();
}

void CVXSImageDisplayCache::prepare(const QImage& source, const QTransform& transform, const QRectF& target)
{
    const QRect device = snappedDeviceRect(transform, target);
    if (!source.isNull() && !device.isEmpty() && device.width() <= MaxCachedSide && device.height() <= MaxCachedSide)
        scaledTo(source, device.size());
}

bool CVXSImageDisplayCache::isWorthPreparing(const QImage& source, const QTransform& transform, const QRectF& target)
{
    const QRect device = snappedDeviceRect(transform, target);
    return qint64(source.width()) * source.height() > QuickSourcePixels && transform.type() <= QTransform::TxScale
           && device.width() < source.width() && device.height() < source.height();
}

const QImage& CVXSImageDisplayCache::scaledTo(const QImage& source, const QSize& size)
{
    if (source.cacheKey() != m_nSourceKey) {
        m_nSourceKey = source.cacheKey();
        m_nLevel = -1;
        m_level = QImage();
        m_scaled = QImage();
    }
    if (m_scaled.size() == size)
        return m_scaled;

    updateLevel(source, levelFor(source.size(), size));
    m_scaled = m_level.size() == size
        ? m_level
        : m_level.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (m_scaled.format() != QImage::Format_ARGB32_Premultiplied)
        m_scaled = m_scaled.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    return m_scaled;
}

void CVXSImageDisplayCache::updateLevel(const QImage& source, int nLevel)
{
    if (nLevel == m_nLevel)
        return;
    // Halve further from the level in hand when possible; go back to the source otherwise.
    if (m_nLevel < 0 || nLevel < m_nLevel) {
        m_level = source;
        m_nLevel = 0;
    }
    while (m_nLevel < nLevel) {
        const QSize half(qMax(1, m_level.width() / 2), qMax(1, m_level.height() / 2));
        m_level = m_level.scaled(half, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
        ++m_nLevel;
    }
}
