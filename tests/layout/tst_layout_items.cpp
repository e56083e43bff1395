#include "LayoutFixture.h"
#include "TestPictures.h"

#include <VXGeometry.h>
#include <VXSLayoutItemArrow.h>
#include <VXSLayoutItemEllipse.h>
#include <VXSLayoutItemGrid.h>
#include <VXSLayoutItemImage.h>
#include <VXSLayoutItemRectangle.h>
#include <VXSLayoutItemText.h>
#include <scene/VXSLayoutPens.h>

#include <QGraphicsScene>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainter>
#include <QtTest>

#include <cmath>
#include <memory>

namespace {

const QColor Background(255, 0, 0);

QImage canvas(int width = 200, int height = 120)
{
    return solidImage(QSize(width, height), Background);
}

void paintItem(QGraphicsItem* pItem, QImage* pCanvas)
{
    QPainter painter(pCanvas);
    pItem->paint(&painter, nullptr, nullptr);
}

// A paint device that keeps the filled polygons painted on it, in painting order, and
// draws nothing else: it shows exactly which head polygons an arrow painted.
class CPolygonRecorder : public QPaintDevice, public QPaintEngine
{
public:
    CPolygonRecorder()
        : QPaintEngine(QPaintEngine::AllFeatures)
    {
    }

    QList<QPolygon> polygons() const { return m_polygons; }

    QPaintEngine* paintEngine() const override { return const_cast<CPolygonRecorder*>(this); }
    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    void updateState(const QPaintEngineState&) override {}
    void drawPixmap(const QRectF&, const QPixmap&, const QRectF&) override {}
    void drawPolygon(const QPoint* pPoints, int nCount, PolygonDrawMode mode) override
    {
        if (mode != PolylineMode)
            m_polygons << QPolygon(QVector<QPoint>(pPoints, pPoints + nCount));
    }
    void drawPolygon(const QPointF* pPoints, int nCount, PolygonDrawMode mode) override
    {
        if (mode != PolylineMode)
            m_polygons << QPolygonF(QVector<QPointF>(pPoints, pPoints + nCount)).toPolygon();
    }
    Type type() const override { return User; }

protected:
    int metric(PaintDeviceMetric metric) const override
    {
        switch (metric) {
        case PdmWidth:
        case PdmHeight:
            return 200;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return 96;
        case PdmDepth:
            return 32;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(QPaintDevice::devicePixelRatioFScale());
        default:
            return 0;
        }
    }

private:
    QList<QPolygon> m_polygons;
};

// The head polygons the arrow stores when painted: start head first, then end head (both
// heads drawn, so that both show).
QList<QPolygon> paintedHeads(CVXSLayoutItemArrow* pArrow)
{
    CPolygonRecorder recorder;
    QPainter painter(&recorder);
    pArrow->paint(&painter, nullptr, nullptr);
    painter.end();
    return recorder.polygons();
}

// Number of pixels in the rectangle that differ from the background.
int inkIn(const QImage& image, const QRect& rect)
{
    int count = 0;
    const QRect r = rect & image.rect();
    for (int y = r.top(); y <= r.bottom(); ++y)
        for (int x = r.left(); x <= r.right(); ++x)
            count += image.pixelColor(x, y) != Background;
    return count;
}

// Left and right columns that hold ink; (-1, -1) for none.
QPair<int, int> inkColumns(const QImage& image)
{
    int first = -1;
    int last = -1;
    for (int x = 0; x < image.width(); ++x) {
        if (inkIn(image, QRect(x, 0, 1, image.height())) > 0) {
            if (first < 0)
                first = x;
            last = x;
        }
    }
    return qMakePair(first, last);
}

// Left half red, right half blue: tells upright from mirrored.
QImage twoToneImage()
{
    QImage image = solidImage(QSize(40, 20), Qt::blue);
    QPainter(&image).fillRect(0, 0, 20, 20, Qt::green);
    return image;
}

QPoint expectedCorner(int tipX, int tipY, int tailX, int tailY, double sign)
{
    const double length = 10.0;
    const double half = 0.75 * length / 2.0;
    const double dx = tailX - tipX;
    const double dy = tailY - tipY;
    const double len = std::hypot(dx, dy);
    const double angle = sign * std::atan2(half, length) * 57.29582574928754 * M_PI / 180.0;
    const double ux = dx / len;
    const double uy = dy / len;
    const double rx = ux * std::cos(angle) - uy * std::sin(angle);
    const double ry = ux * std::sin(angle) + uy * std::cos(angle);
    const double distance = std::hypot(half, length);
    return QPoint(int(tipX + distance * rx), int(tipY + distance * ry));
}

CVXSLayoutItemArrow* newArrow(QPoint start, QPoint end, bool bStartHead, bool bEndHead)
{
    auto* pArrow = new CVXSLayoutItemArrow(start.x(), start.y(), 0, 0);
    pArrow->setStartPoint(start.x(), start.y());
    pArrow->setEndPoint(end.x(), end.y());
    pArrow->setStartHead(bStartHead);
    pArrow->setEndHead(bEndHead);
    pArrow->setHeadLength(10.0);
    pArrow->setHeadWidthRatio(0.75);
    return pArrow;
}

} // namespace

class TestLayoutItems : public QObject
{
    Q_OBJECT
private slots:
    void typeIds_data();
    void typeIds();
    void nullImageItemIsEmptyAndPaintsNothing();
    void imageItemTakesImageRect();
    void invertedImageRectPaintsUpright();
    void largeImageIsReducedByAreaAverage();
    void containsImagePixel_data();
    void containsImagePixel();
    void gridCellDrawsOnlyDashedFrame();
    void nullTextPaintsNothing();
    void textAlignment_data();
    void textAlignment();
    void textFlagsGainAlignTopOnPaint();
    void largerFontGivesLargerMetrics();
    void textIsClippedToItsRectangle();
    void rectangleUsesItsPenAndBrushInset();
    void narrowRectangleIsDrawnInverted();
    void ellipseHidesWhatLiesBeneath();
    void arrowSeedsPointsFromBoundingRect();
    void arrowHeadPolygon_data();
    void arrowHeadPolygon();
    void coincidentArrowHeadsCollapse();
    void arrowHeadsStartOff();
    void arrowWithEndHeadOnly();
    void arrowHitAreaNeedsAPaint();
    void rotatePointByNinetyDegrees();
};

void TestLayoutItems::typeIds_data()
{
    LayoutFixture::addItemKindRows();
    QTest::newRow("grid") << QByteArray("grid");
}

void TestLayoutItems::typeIds()
{
    QFETCH(QByteArray, kind);
    const QMap<QByteArray, int> typeIds = {{"image", 32784},     {"text", 32800},  {"ellipse", 32817},
                                           {"rectangle", 32818}, {"arrow", 32820}, {"grid", 32822}};
    std::unique_ptr<QGraphicsItem> item;
    if (kind == "image")
        item.reset(new CVXSLayoutItemImage(QImage(4, 4, QImage::Format_ARGB32)));
    else if (kind == "text")
        item.reset(new CVXSLayoutItemText(QStringLiteral("a")));
    else if (kind == "ellipse")
        item.reset(new CVXSLayoutItemEllipse(1, 2, 3, 4));
    else if (kind == "rectangle")
        item.reset(new CVXSLayoutItemRectangle(1, 2, 3, 4));
    else if (kind == "arrow")
        item.reset(new CVXSLayoutItemArrow(1, 2, 3, 4));
    else
        item.reset(new CVXSLayoutItemGrid());
    QVERIFY(!item->scene());
    QCOMPARE(item->type(), typeIds.value(kind));
    // Items set no flags, no z value and no parent of their own.
    QCOMPARE(item->flags(), QGraphicsItem::GraphicsItemFlags());
    QCOMPARE(item->zValue(), 0.0);
    QVERIFY(!item->parentItem());
}

void TestLayoutItems::nullImageItemIsEmptyAndPaintsNothing()
{
    CVXSLayoutItemImage item{QImage()};
    QCOMPARE(item.rect(), QRectF(0, 0, 0, 0));
    QCOMPARE(item.getCellIndex(), -1);
    QImage image = canvas();
    const QImage before = image;
    item.setRect(10, 10, 50, 50);
    paintItem(&item, &image);
    QCOMPARE(image, before);
    QVERIFY(!item.containsImagePixel(QPoint(20, 20)));
}

void TestLayoutItems::imageItemTakesImageRect()
{
    CVXSLayoutItemImage item(QImage(1, 20000, QImage::Format_ARGB32));
    QCOMPARE(item.rect(), QRectF(0, 0, 1, 20000));
    QCOMPARE(item.pos(), QPointF(0, 0));
    item.setCellIndex(7);
    QCOMPARE(item.getCellIndex(), 7);
    QCOMPARE(item.getImage().size(), QSize(1, 20000));
}

void TestLayoutItems::invertedImageRectPaintsUpright()
{
    CVXSLayoutItemImage item(twoToneImage());
    item.setPen(Qt::NoPen); // exact pixel edges for this check
    // Right edge dragged past the left one: (100, 10) .. (20, 50).
    item.setRect(QRectF(QPointF(100, 10), QPointF(20, 50)));
    QImage image = canvas();
    paintItem(&item, &image);
    QCOMPARE(image.pixelColor(25, 30), QColor(Qt::green));
    QCOMPARE(image.pixelColor(95, 30), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(15, 30), Background);
    QCOMPARE(image.pixelColor(105, 30), Background);
}

void TestLayoutItems::largeImageIsReducedByAreaAverage()
{
    // Alternating black and white columns average to mid grey when reduced; a
    // point-sampled reduction would show pure black or white stripes.
    QImage stripes(400, 400, QImage::Format_ARGB32);
    for (int x = 0; x < stripes.width(); ++x)
        QPainter(&stripes).fillRect(x, 0, 1, 400, x % 2 ? Qt::white : Qt::black);
    CVXSLayoutItemImage item(stripes);
    item.setPen(Qt::NoPen);
    item.setRect(10, 10, 50, 50);
    QImage image = canvas();
    paintItem(&item, &image);
    for (const QPoint p : {QPoint(12, 12), QPoint(30, 40), QPoint(57, 57)}) {
        const int grey = qGray(image.pixel(p));
        QVERIFY2(grey > 110 && grey < 145, qPrintable(QStringLiteral("grey %1 at %2,%3").arg(grey).arg(p.x()).arg(p.y())));
    }
    QCOMPARE(image.pixelColor(9, 30), Background);
    QCOMPARE(image.pixelColor(60, 30), Background);
}

void TestLayoutItems::containsImagePixel_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<bool>("expected");
    // Image 100 x 50 shown in (0, 0, 200, 100); the bounding rectangle adds half the pen.
    QTest::newRow("top-left pixel") << QPoint(0, 0) << true;
    QTest::newRow("centre") << QPoint(100, 50) << true;
    QTest::newRow("last shown pixel") << QPoint(199, 99) << true;
    QTest::newRow("right of image") << QPoint(201, 50) << false;
    QTest::newRow("far right") << QPoint(250, 50) << false;
    QTest::newRow("below image") << QPoint(100, 101) << false;
    QTest::newRow("far below") << QPoint(100, 300) << false;
    QTest::newRow("left of image") << QPoint(-5, 50) << false;
}

void TestLayoutItems::containsImagePixel()
{
    QFETCH(QPoint, point);
    QFETCH(bool, expected);
    CVXSLayoutItemImage item(QImage(100, 50, QImage::Format_ARGB32));
    item.setRect(0, 0, 200, 100);
    QCOMPARE(item.containsImagePixel(point), expected);
}

void TestLayoutItems::gridCellDrawsOnlyDashedFrame()
{
    CVXSLayoutItemGrid cell;
    cell.setRect(20, 20, 150, 80);
    QImage image = canvas();
    paintItem(&cell, &image);
    // Along the top edge: light grey dashes with gaps that show the page.
    int grey = 0;
    int page = 0;
    for (int x = 22; x < 168; ++x) {
        const QColor c = image.pixelColor(x, 20);
        grey += c == QColor(192, 192, 192);
        page += c == Background;
    }
    QVERIFY2(grey > 30, qPrintable(QString::number(grey)));
    QVERIFY2(page > 15, qPrintable(QString::number(page)));
    // Nothing but the frame: inside and outside stay untouched.
    QCOMPARE(inkIn(image, QRect(24, 24, 142, 72)), 0);
    QCOMPARE(inkIn(image, QRect(0, 0, 200, 17)), 0);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            QVERIFY(c == Background || c == QColor(192, 192, 192));
        }
}

void TestLayoutItems::nullTextPaintsNothing()
{
    CVXSLayoutItemText item{QString()};
    item.setRect(10, 10, 150, 60);
    QImage image = canvas();
    paintItem(&item, &image);
    QCOMPARE(inkIn(image, image.rect()), 0);
    // A null text leaves the flags alone too.
    QCOMPARE(item.getTextFlags(), Qt::Alignment());

    item.setText(QStringLiteral("Label"));
    paintItem(&item, &image);
    QVERIFY(inkIn(image, image.rect()) > 0);
}

void TestLayoutItems::textAlignment_data()
{
    QTest::addColumn<int>("flags");
    QTest::addColumn<int>("expectedCentre");
    // The box spans x 10 .. 189.
    QTest::newRow("left") << int(Qt::AlignLeft) << -1;
    QTest::newRow("centre") << int(Qt::AlignHCenter) << 100;
    QTest::newRow("right") << int(Qt::AlignRight) << 1;
}

void TestLayoutItems::textAlignment()
{
    QFETCH(int, flags);
    QFETCH(int, expectedCentre);
    CVXSLayoutItemText item(QStringLiteral("Wm"));
    item.setPen(Qt::NoPen);
    item.setRect(10, 10, 180, 100);
    item.setColor(Qt::black);
    item.setTextFlags(Qt::Alignment(flags));
    QImage image = canvas();
    paintItem(&item, &image);

    const QPair<int, int> columns = inkColumns(image);
    QVERIFY(columns.first >= 10 && columns.second <= 189);
    if (expectedCentre < 0)
        QVERIFY2(columns.first <= 13, qPrintable(QString::number(columns.first)));
    else if (expectedCentre == 1)
        QVERIFY2(columns.second >= 185, qPrintable(QString::number(columns.second)));
    else
        QVERIFY2(std::abs((columns.first + columns.second) / 2 - expectedCentre) <= 2,
                 qPrintable(QStringLiteral("%1..%2").arg(columns.first).arg(columns.second)));
    // The text hangs from the top of its box.
    const int lineHeight = item.getFontMetrics().height();
    QVERIFY(inkIn(image, QRect(10, 10, 180, lineHeight)) > 0);
    QCOMPARE(inkIn(image, QRect(10, 10 + lineHeight + 1, 180, 100 - lineHeight - 1)), 0);
    QCOMPARE(image.pixelColor(columns.first, 10 + lineHeight / 2).alpha(), 255);
}

void TestLayoutItems::textFlagsGainAlignTopOnPaint()
{
    CVXSLayoutItemText item(QStringLiteral("text"));
    item.setRect(0, 0, 100, 40);
    item.setTextFlags(Qt::AlignRight | Qt::AlignBottom);
    QImage image = canvas();
    paintItem(&item, &image);
    QCOMPARE(item.getTextFlags(), Qt::AlignRight | Qt::AlignBottom | Qt::AlignTop);
    item.setTextFlags(Qt::AlignHCenter);
    paintItem(&item, &image);
    QCOMPARE(item.getTextFlags(), Qt::AlignHCenter | Qt::AlignTop);
}

void TestLayoutItems::largerFontGivesLargerMetrics()
{
    CVXSLayoutItemText item(QStringLiteral("text"));
    QCOMPARE(item.getFont(), QApplication::font());
    QCOMPARE(item.getColor(), QColor(0, 0, 0, 255));
    const int before = item.getFontMetrics().height();
    QFont big = item.getFont();
    big.setPointSize(big.pointSize() * 3);
    item.setFont(big);
    QCOMPARE(item.getFont(), big);
    QVERIFY2(item.getFontMetrics().height() > 2 * before,
             qPrintable(QStringLiteral("%1 -> %2").arg(before).arg(item.getFontMetrics().height())));
    QCOMPARE(item.getFontMetrics().height(), QFontMetrics(big).height());
}

void TestLayoutItems::textIsClippedToItsRectangle()
{
    CVXSLayoutItemText item(QStringLiteral("A long line that does not fit\nsecond line\nthird line"));
    item.setPen(Qt::NoPen);
    item.setRect(10, 10, 60, 20);
    QImage image = canvas();
    paintItem(&item, &image);
    QVERIFY(inkIn(image, QRect(10, 10, 60, 20)) > 0);
    QCOMPARE(inkIn(image, QRect(70, 0, 130, 120)), 0);
    QCOMPARE(inkIn(image, QRect(0, 30, 200, 90)), 0);
}

void TestLayoutItems::rectangleUsesItsPenAndBrushInset()
{
    CVXSLayoutItemRectangle item(20, 20, 100, 60);
    item.setBrush(QBrush(Qt::yellow));
    item.setPen(QPen(QBrush(Qt::blue), 0));
    QImage image = canvas();
    paintItem(&item, &image);
    // Edges moved one unit inwards: outline at 21 and 119, fill inside, nothing at 20.
    QCOMPARE(image.pixelColor(21, 50), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(119, 50), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(70, 21), QColor(Qt::blue));
    QCOMPARE(image.pixelColor(70, 50), QColor(Qt::yellow));
    QCOMPARE(image.pixelColor(20, 50), Background);
    QCOMPARE(image.pixelColor(120, 50), Background);
}

void TestLayoutItems::narrowRectangleIsDrawnInverted()
{
    CVXSLayoutItemRectangle item(40, 40, 1, 30);
    item.setBrush(QBrush(Qt::yellow));
    item.setPen(QPen(QBrush(Qt::blue), 0));
    QImage image = canvas();
    paintItem(&item, &image);

    // The inner rectangle runs from x 41 back to x 40: width -1.
    QImage expected = canvas();
    {
        QPainter painter(&expected);
        painter.setBrush(QBrush(Qt::yellow));
        painter.setPen(QPen(QBrush(Qt::blue), 0));
        painter.drawRect(QRectF(QPointF(41, 41), QPointF(40, 69)));
    }
    QCOMPARE(image, expected);
    QVERIFY(inkIn(image, QRect(39, 40, 4, 31)) > 0);
}

void TestLayoutItems::ellipseHidesWhatLiesBeneath()
{
    QGraphicsScene scene(0, 0, 200, 120);
    auto* pImage = new CVXSLayoutItemImage(solidImage(QSize(200, 120), Qt::magenta));
    scene.addItem(pImage);
    pImage->setRect(0, 0, 200, 120);
    auto* pEllipse = new CVXSLayoutItemEllipse(40, 20, 120, 80);
    // Its own colours are ignored.
    pEllipse->setBrush(Qt::green);
    pEllipse->setPen(QPen(Qt::green, 5));
    pEllipse->setZValue(1);
    scene.addItem(pEllipse);

    QImage image = canvas();
    {
        QPainter painter(&image);
        scene.render(&painter, QRectF(0, 0, 200, 120), QRectF(0, 0, 200, 120));
    }
    QCOMPARE(image.pixelColor(100, 60), QColor(Qt::white));
    QCOMPARE(image.pixelColor(60, 60), QColor(Qt::white));
    QCOMPARE(image.pixelColor(10, 60), QColor(Qt::magenta));
    // A thin black outline on the inset ellipse, no green anywhere.
    int black = 0;
    for (int x = 38; x < 46; ++x)
        black += qGray(image.pixel(x, 60)) < 80;
    QVERIFY(black >= 1 && black <= 3);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            QVERIFY(image.pixelColor(x, y) != QColor(Qt::green));
}

void TestLayoutItems::arrowSeedsPointsFromBoundingRect()
{
    CVXSLayoutItemArrow arrow(10, 20, 100, 50);
    int x = 0;
    int y = 0;
    // The default pen adds half a unit all round, truncated toward zero.
    arrow.getStartPoint(x, y);
    QCOMPARE(QPoint(x, y), QPoint(9, 19));
    arrow.getEndPoint(x, y);
    QCOMPARE(QPoint(x, y), QPoint(110, 70));
    arrow.setStartPoint(1, 2);
    arrow.setEndPoint(3, 4);
    arrow.getStartPoint(x, y);
    QCOMPARE(QPoint(x, y), QPoint(1, 2));
    arrow.getEndPoint(x, y);
    QCOMPARE(QPoint(x, y), QPoint(3, 4));
}

void TestLayoutItems::arrowHeadPolygon_data()
{
    QTest::addColumn<QPoint>("tip");
    QTest::addColumn<QPoint>("tail");
    QTest::newRow("pointing right") << QPoint(100, 50) << QPoint(0, 50);
    QTest::newRow("pointing up") << QPoint(30, 10) << QPoint(30, 110);
    QTest::newRow("diagonal") << QPoint(80, 80) << QPoint(13, 27);
}

void TestLayoutItems::arrowHeadPolygon()
{
    QFETCH(QPoint, tip);
    QFETCH(QPoint, tail);
    std::unique_ptr<CVXSLayoutItemArrow> arrow(newArrow(tail, tip, false, true));
    const QPolygon head = arrow->headPolygon(tip.x(), tip.y(), tail.x(), tail.y());
    QCOMPARE(head.size(), 3);
    QCOMPARE(head[0], tip);
    QCOMPARE(head[1], expectedCorner(tip.x(), tip.y(), tail.x(), tail.y(), +1));
    QCOMPARE(head[2], expectedCorner(tip.x(), tip.y(), tail.x(), tail.y(), -1));
    // An isosceles triangle about 10 long with a base about 7.5 wide.
    const QPointF baseMid = (QPointF(head[1]) + QPointF(head[2])) / 2;
    QVERIFY(std::abs(QLineF(QPointF(tip), baseMid).length() - 10.0) < 1.5);
    QVERIFY(std::abs(QLineF(QPointF(head[1]), QPointF(head[2])).length() - 7.5) < 1.5);
}

void TestLayoutItems::coincidentArrowHeadsCollapse()
{
    // Painted once with its points apart, the arrow holds real heads and can be hit.
    std::unique_ptr<CVXSLayoutItemArrow> arrow(newArrow(QPoint(40, 40), QPoint(140, 40), true, true));
    const QList<QPolygon> apart = paintedHeads(arrow.get());
    QCOMPARE(apart.count(), 2);
    QCOMPARE(apart[0], arrow->headPolygon(40, 40, 140, 40));
    QCOMPARE(apart[1], arrow->headPolygon(140, 40, 40, 40));
    QVERIFY(arrow->containsPoint(QPoint(90, 40)));

    // Painted again with both points on one spot, both stored heads collapse to it and
    // the hit test built from them takes nothing, not even that spot.
    arrow->setEndPoint(40, 40);
    const QPolygon point({QPoint(40, 40), QPoint(40, 40), QPoint(40, 40)});
    QCOMPARE(paintedHeads(arrow.get()), (QList<QPolygon>{point, point}));
    for (const QPoint& probe : {QPoint(40, 40), QPoint(41, 40), QPoint(90, 40), QPoint(140, 40)})
        QVERIFY2(!arrow->containsPoint(probe), qPrintable(QStringLiteral("%1, %2").arg(probe.x()).arg(probe.y())));
}

void TestLayoutItems::arrowHeadsStartOff()
{
    CVXSLayoutItemArrow arrow(20, 60, 160, 0);
    QVERIFY(!arrow.hasStartHead());
    QVERIFY(!arrow.hasEndHead());
    // Painted before anyone chose heads: a plain line, no head filled at either end.
    arrow.setStartPoint(20, 60);
    arrow.setEndPoint(180, 60);
    arrow.setHeadLength(10.0);
    arrow.setHeadWidthRatio(0.75);
    QImage image = canvas();
    paintItem(&arrow, &image);
    QCOMPARE(inkIn(image, QRect(26, 54, 1, 13)), 1);
    QCOMPARE(inkIn(image, QRect(174, 54, 1, 13)), 1);
}

void TestLayoutItems::arrowWithEndHeadOnly()
{
    std::unique_ptr<CVXSLayoutItemArrow> arrow(newArrow(QPoint(20, 60), QPoint(180, 60), false, true));
    QImage image = canvas();
    paintItem(arrow.get(), &image);
    // A filled black head at the end: its width shows a few pixels before the tip.
    int blackAtEnd = 0;
    for (int y = 54; y <= 66; ++y)
        blackAtEnd += image.pixelColor(174, y) == QColor(Qt::black);
    QVERIFY2(blackAtEnd >= 4, qPrintable(QString::number(blackAtEnd)));
    // Only the line at the start.
    int blackAtStart = 0;
    for (int y = 54; y <= 66; ++y)
        blackAtStart += image.pixelColor(26, y) == QColor(Qt::black);
    QCOMPARE(blackAtStart, 1);
    // The hit area is pointed at both ends and as wide as a head's base all along.
    QVERIFY(arrow->containsPoint(QPoint(24, 61)));
    QVERIFY(arrow->containsPoint(QPoint(100, 62)));
    QVERIFY(arrow->containsPoint(QPoint(176, 59)));
    QVERIFY(!arrow->containsPoint(QPoint(24, 63)));
    QVERIFY(!arrow->containsPoint(QPoint(100, 66)));
    QVERIFY(!arrow->containsPoint(QPoint(15, 60)));
    QVERIFY(!arrow->containsPoint(QPoint(185, 60)));
}

void TestLayoutItems::arrowHitAreaNeedsAPaint()
{
    std::unique_ptr<CVXSLayoutItemArrow> arrow(newArrow(QPoint(20, 60), QPoint(180, 60), true, true));
    QVERIFY(!arrow->containsPoint(QPoint(100, 60)));
    QImage image = canvas();
    paintItem(arrow.get(), &image);
    QVERIFY(arrow->containsPoint(QPoint(100, 60)));
}

void TestLayoutItems::rotatePointByNinetyDegrees()
{
    double x = 1.0;
    double y = 0.0;
    rotatePoint(x, y, 90.0);
    QVERIFY(std::abs(x) < 1e-12);
    QVERIFY(std::abs(y - 1.0) < 1e-12);
}

QTEST_MAIN(TestLayoutItems)
#include "tst_layout_items.moc"
