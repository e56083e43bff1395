#pragma once

#include <QImage>
#include <QRect>

class QPainter;
class QTransform;
class QRectF;

// Draws an image reduced to the size it covers on the device. Reductions are area
// averages (no moiré from fine detail), and the result is kept, so repaints of an
// unchanged item cost one blit however large the source is. A power-of-two reduction
// of the source is kept as well, so that a changing size (resizing by a handle) is
// served from a source at most twice the target instead of the full image.
class CVXSImageDisplayCache
{
public:
    // Draws all of source into target, given in the painter's current coordinates.
    void draw(QPainter* pPainter, const QRectF& target, const QImage& source);
    // Makes ahead, on any thread, what draw would make for the source drawn through the
    // transform into target, so that drawing it there costs one blit from the start.
    void prepare(const QImage& source, const QTransform& transform, const QRectF& target);
    // Whether preparing takes noticeable time: the source is far larger than its place.
    static bool isWorthPreparing(const QImage& source, const QTransform& transform, const QRectF& target);

private:
    const QImage& scaledTo(const QImage& source, const QSize& size);
    void updateLevel(const QImage& source, int nLevel);

    qint64 m_nSourceKey = 0;
    int m_nLevel = -1;
    QImage m_level;  // source halved m_nLevel times
    QImage m_scaled; // m_level scaled to the size last drawn
};
