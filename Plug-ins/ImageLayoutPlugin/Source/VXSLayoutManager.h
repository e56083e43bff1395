#pragma once

#include "VXSLayoutConstants.h"
#include "output/VXSLayoutOutputCommands.h"
#include "undo/VXSLayoutSnapshot.h"
#include "undo/VXSLayoutUndoBook.h"

#include <QGraphicsScene>
#include <QImage>
#include <QObject>
#include <QPointer>
#include <QPrinter>
#include <QRect>

#include <array>
#include <cstdint>
#include <memory>

class QGraphicsItem;
class CVXSLayoutDocument;
class CVXSLayoutFileCommands;
class CVXSLayoutItemImage;
class CVXSLayoutView;
class CVXSLayoutWindow;

// The layout document: owns the scene, creates the layout window and its view, keeps the
// book of which grid cell holds an image, places pasted images and lays the page out
// again when the style or the view size changes. The layout style is never stored here:
// it is always the current index of the window's layout-style box.
class CVXSLayoutManager : public QObject
{
    Q_OBJECT
public:
    // pParentWidget becomes the window's parent widget.
    explicit CVXSLayoutManager(QWidget* pParentWidget = nullptr);
    ~CVXSLayoutManager() override;

    CVXSLayoutWindow* getLayoutWindow() const;
    CVXSLayoutView* getLayoutView() const;
    QGraphicsScene* getScene();
    bool isWindowVisible() const;
    void showLayoutWindow(bool bShow);
    void editSelectedText();

    // The current layout style: the layout-style box's index, 0 without a window.
    int currentStyle() const;

    int addImageItem(CVXSLayoutItemImage* pItem, bool bUpdate);
    int getCellCount(int nStyle) const;
    int getFirstEmptyCell(bool bGridOnly) const;
    int getCellRect(int nCell, QRect& rect, bool bInPercent) const;
    int getCellAtPoint(QPointF& point, bool bInPercent) const;
    void setCellUsed(int nCell, bool bUsed);
    // How many images the cell's counter says it holds (0 = empty).
    int cellUseCount(int nCell) const;
    void relayoutItems(bool bKeepCells);
    void clearLayout();
    // Asks whether the layout may be cleared; true when the user agreed.
    bool confirmClear();
    bool isEmpty() const;

    // Layout files: the layout as a document, and a document put in place of the layout
    // (fitted to the page as it is now), which leaves nothing to undo.
    CVXSLayoutDocument document() const;
    void replaceLayout(const CVXSLayoutDocument& document);
    CVXSLayoutFileCommands* fileCommands() const;

    // The layout items in the scene, without the view's own items.
    QList<QGraphicsItem*> layoutItems() const;
    CVXSLayoutSnapshot::CellCounters cellUseCounts() const;
    void setCellUseCounts(const CVXSLayoutSnapshot::CellCounters& counters);

    // Undo, kept by CVXSLayoutUndoBook: a user change of the layout runs between
    // beginChange and endChange and becomes one step with the text.
    QUndoStack* undoStack();
    void beginChange();
    void endChange(const QString& strText);
    // Takes the item out of the layout: frees an image's cell and takes the item out of the
    // scene in place of deleting it, so that undo can put it back. Outside a change the
    // item is deleted.
    void removeLayoutItem(QGraphicsItem* pItem);

    // Output, made by CVXSLayoutOutputCommands: the page as a raster image at the scale
    // (1.0 is the scene's own size plus one), written to a file the user chooses, printed on
    // one page, copied to the clipboard.
    QImage renderLayoutImage(double dScale);
    void exportLayout();
    // nPrintMode 0 fits the page, 1 prints at the size shown; pParent is not used.
    void printLayout(QWidget* pParent, int nPrintMode);
    void copyToClipboard();
    bool isSupportedExtension(QString strSuffix);
    QString getExtensionForFilter(QString strFilter);

private:
    void centreWindow();
    void relayoutImage(CVXSLayoutItemImage* pImage, bool bKeepCells, int nStyle, double sx, double sy);
    void fitImageIntoCell(CVXSLayoutItemImage* pImage, int nCell);
    static void scaleItem(QGraphicsItem* pItem, double sx, double sy);
    static QRectF scaledRect(const QRectF& rect, double sx, double sy);
    // The coordinate scaled, kept within MaxCoordinate.
    static double scaled(double dCoordinate, double dScale);
    void removeAllItems();
    void placeDocumentItems(const CVXSLayoutDocument& document);
    void fitToPage(const QSizeF& documentPage);

    QGraphicsScene m_scene;
    QPointer<CVXSLayoutView> m_pLayoutView;     // owned by the window's widget tree
    QPointer<CVXSLayoutWindow> m_pLayoutWindow; // deleted with its parent widget, see destructor
    // One print set-up serves all print jobs while the plugin runs; m_output prints on it.
    QPrinter m_printer;
    CVXSLayoutSnapshot::CellCounters m_cellUseCount {};
    CVXSLayoutOutputCommands m_output {*this, m_printer};
    // Declared after the scene so that it goes first: it owns the items that are out of
    // the scene, waiting for undo or redo or for the open change to end.
    CVXSLayoutUndoBook m_undoBook {*this};
    std::unique_ptr<CVXSLayoutFileCommands> m_pFileCommands;
};
