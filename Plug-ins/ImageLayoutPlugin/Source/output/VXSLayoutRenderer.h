#pragma once

#include <QHash>
#include <QImage>
#include <QPair>
#include <QRect>
#include <QSize>
#include <QVector>

#include <functional>

class QGraphicsItem;
class QGraphicsScene;
class QPainter;
class CVXSFigurePainter;
class CVXSLayoutView;

// Draws the layout page for output: each item by its kind's own output rule, never the
// scene's own painting, so that cell frames, handles and other working marks of the view
// stay off the page. Works on any painter, raster or vector, so every output shares one
// drawing.
class CVXSLayoutRenderer
{
public:
    // Pictures already reduced to their places, by reducedKey().
    using ReducedImages = QHash<QPair<qint64, quint64>, QImage>;

    // pView tells its own items apart; it may be null when the scene holds none.
    CVXSLayoutRenderer(QGraphicsScene& scene, const CVXSLayoutView* pView);

    // Raster rendering takes an image's reduction from these where there is one, so that
    // the costly reductions can be made ahead, elsewhere (CVXSLayoutOutputCommands).
    void setReducedImages(const ReducedImages& reduced);
    static QPair<qint64, quint64> reducedKey(const QImage& image, const QSize& size);

    // The page in scene units: the scene's size plus one, truncated.
    QSize pageSize() const;
    // The page at the scale, in device pixels.
    QSize deviceSize(double dScale) const;
    // Fills deviceSize(dScale) white with a black top and left line, then draws the items
    // from the lowest to the topmost, in the painter's coordinates. On a raster device the
    // images are reduced to their places first, all at once on every core; on any other
    // (PDF, SVG) each goes in at its own resolution, cut to the part on the page, and the
    // shapes and text stay vectors.
    void render(QPainter& painter, double dScale) const;
    // The same with the page's items gathered ahead by pageItems() on the scene's thread, so
    // that the drawing may run on another while the scene stays as it is.
    void render(QPainter& painter, double dScale, const QVector<QGraphicsItem*>& lowestFirst) const;
    // The items on the page, from the lowest to the topmost.
    QVector<QGraphicsItem*> pageItems() const;

    // The resolution raster pages carry and measure their text at: the screen's.
    static int rasterDpi();
    // The device rectangle an image item's picture fills at the scale, edges inclusive: its
    // rectangle less the item's frame. A picture of this size goes onto the page as it is.
    static QRect imageTarget(const QGraphicsItem* pItem, double dScale);

private:
    void drawItem(QPainter& painter, QGraphicsItem* pItem, double dScale) const;
    static void drawScaled(QPainter& painter, double dScale, QGraphicsItem* pItem);
    // Runs draw with the painter in page units and a figure painter for the scale.
    static void drawFigure(QPainter& painter, double dScale, const std::function<void(const CVXSFigurePainter&)>& draw);

    QGraphicsScene& m_scene;
    const CVXSLayoutView* m_pView = nullptr;
    ReducedImages m_reduced;
};
