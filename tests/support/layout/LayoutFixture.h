#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QList>
#include <QPoint>
#include <QRect>
#include <QSize>

class QAction;
class QGraphicsItem;
class QGraphicsScene;
class CVXSLayoutItemImage;
class CVXSLayoutManager;
class CVXSLayoutView;
class CVXSLayoutWindow;

// A layout manager with its window shown (offscreen) and helpers that act on it as a
// user would: mouse events go to the view's viewport through the window system layer.
class LayoutFixture
{
public:
    explicit LayoutFixture(QSize viewSize = QSize(1000, 500));
    ~LayoutFixture();

    CVXSLayoutManager* manager() const;
    CVXSLayoutWindow* window() const;
    CVXSLayoutView* view() const;
    QGraphicsScene* scene() const;

    // Fixes the view's size and waits until the view has been resized to it.
    void setViewSize(QSize size);
    // Chooses a layout style in the window's style box, as the user does.
    void chooseStyle(int nStyle);
    // Pastes an image the way the window does: a new image item in the scene, placed
    // by the manager.
    CVXSLayoutItemImage* pasteImage(const QImage& image);
    CVXSLayoutItemImage* pasteImage(QSize size, QColor color = Qt::darkCyan);
    // Adds a layout item of the kind ("image", "text", "rectangle", "ellipse", "arrow")
    // on top of the page, looking as the view would draw it. An arrow runs across the
    // middle of the rectangle from left to right.
    QGraphicsItem* addItem(const QByteArray& kind, const QRectF& rect);
    // The kinds addItem knows, and test data: a column "kind" with one row per kind,
    // named for it, leaving out the kinds given.
    static QList<QByteArray> itemKinds();
    static void addItemKindRows(const QList<QByteArray>& except = {});
    // Checks a toolbar action (found by object name) or the line/arrow tool of a kind.
    void triggerAction(const char* pObjectName);
    QAction* action(const char* pObjectName) const;
    void chooseArrowTool(int nKind);

    void press(QPoint pos, Qt::MouseButton button = Qt::LeftButton);
    void move(QPoint pos);
    void release(QPoint pos, Qt::MouseButton button = Qt::LeftButton);
    void doubleClick(QPoint pos);
    // Press at from, move in the given number of even steps to to, release there.
    void drag(QPoint from, QPoint to, int nSteps = 4);
    void keyClick(Qt::Key key);
    // Types the text into the annotation box in place of what it held, and presses Enter.
    void enterAnnotation(const QString& strText);

    // Renders what the view shows.
    QImage grabViewport() const;

private:
    CVXSLayoutManager* m_pManager = nullptr; // owned
};
