#pragma once

#include "VXSLayoutConstants.h"
#include "scene/VXSLayoutHandles.h"
#include "scene/VXSLayoutZOrder.h"
#include "undo/VXSLayoutGesture.h"

#include <QGraphicsView>
#include <QList>
#include <QPointF>
#include <QString>

class CVXSLayoutItemGrid;
class CVXSLayoutManager;
class CVXSLayoutWindow;

// The graphics view on which the layout page is shown and edited. It owns the
// selection handles, the grid-cell frames and the cell highlight, keeps the one
// selected item, and turns mouse and keyboard input into picking, moving, resizing,
// drawing, dropping into cells and deleting.
class CVXSLayoutView : public QGraphicsView
{
    Q_OBJECT
public:
    CVXSLayoutView(QGraphicsScene* pScene, QWidget* pParent = nullptr);
    ~CVXSLayoutView() override;

    void setLayoutManager(CVXSLayoutManager* pManager);
    CVXSLayoutManager* layoutManager() const;

    // The selected layout item (also the item being drawn), or null.
    QGraphicsItem* currentItem() const;
    // Makes the item the selected one without announcing it.
    void setCurrentItem(QGraphicsItem* pItem);
    // Announces the item as the selection (emits selectionChanged).
    void setSelectedItem(QGraphicsItem* pItem);
    // Hides the handles, makes the item the selected one, shows its handles and announces
    // it; null clears the selection.
    void selectItem(QGraphicsItem* pItem);
    void clearSelection();
    // Takes the item out of the layout through the manager, which frees an image's cell and
    // keeps the item for undo; without a manager the item is deleted. A selected item is
    // forgotten without announcing it.
    void deleteItem(QGraphicsItem* pItem);
    // Deletes the selected item as one change, repaints where it was and clears the
    // selection (announced before the handles go).
    void deleteSelected();
    // How a new item appears: it becomes the selected item, gets its handles, the page is
    // repainted and the selection announced.
    void presentNewItem(QGraphicsItem* pItem);

    void hideHandles();
    void showHandles(QGraphicsItem* pItem);
    int handleIndex(QGraphicsItem* pItem) const;
    bool isCellHighlight(QGraphicsItem* pItem) const;
    // Whether the item is one of the view's own: a handle, a cell frame or the highlight.
    bool isAuxiliaryItem(QGraphicsItem* pItem) const;
    // Whether a press is followed to its release now (a move, a resize, a drawing).
    bool isGestureOpen() const;
    void showCells(int nStyle);
    void showCell(int nIndex);
    void hideCells();

    int nextZ() const;
    int topZ() const;
    void setTopZ(int nZ);
    void resetTopZ();
    int maxZ() const;
    QList<QGraphicsItem*> zOrderList() const;
    int reorderZ(QGraphicsItem* pItem, int nCommand);

    // The grid cell an image is being dragged over; -1 for none.
    int targetCell() const;

signals:
    void selectionChanged(QGraphicsItem* pSelectedItem);

protected:
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    void mouseDoubleClickEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void keyPressEvent(QKeyEvent* pEvent) override;
    bool event(QEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;

private:
    QPointF scenePoint(const QMouseEvent* pEvent) const;
    CVXSLayoutWindow* layoutWindow() const;
    bool isDrawingToolOn() const;
    // The topmost layout item of those under the point; arrows only near their line.
    QGraphicsItem* pickItem(const QList<QGraphicsItem*>& items, const QPointF& point) const;
    void updateScene(const QRectF& rect);
    void updateWholeScene();

    void startDrawing(QGraphicsItem* pItem);
    void drawRectangle(const QPointF& point);
    void drawEllipse(const QPointF& point);
    void growDrawnItem(int nType, const QPointF& point);
    void drawArrow(const QPointF& point, int nKind);
    void moveSelected(QPointF point);
    void resizeSelected(const QPointF& point);
    void releaseSelected();
    void dropImage();
    static QString drawingText(const QGraphicsItem* pItem);
    void normalizeSelected();

    QGraphicsItem* m_pSelectedItem = nullptr; // owned by the scene
    QPointF m_dragPoint;
    QPointF m_pressPoint;
    int m_targetCell = -1;
    CVXSLayoutManager* m_pManager = nullptr;
    CVXSLayoutHandles m_handles;
    // The cell frames are the view's own: it adds them to the scene and deletes them.
    CVXSLayoutItemGrid* m_cells[VXSLayout::MaxCellCount] = {};
    int m_ellipseOrigin[2] = {0, 0};
    int m_activeHandle = 0;
    bool m_bImageResized = false;
    bool m_bDrawing = false;
    // A press, the moves and the release are one change of the layout for undo.
    CVXSLayoutGesture m_gesture;
    CVXSLayoutZOrder m_zOrder;
};
