#pragma once

#include "figure/VXSFigurePage.h"
#include "figure/VXSItemStyle.h"

#include <QList>
#include <QObject>
#include <QPointer>
#include <QRectF>

class QAction;
class QGraphicsItem;
class QWidget;
class CVXSFigureProperties;
class CVXSFigureMarks;
class CVXSLayoutManager;

// The figure features of one layout: the panel the host shows in a dock, the commands the
// host puts into its menus, and every change they make, each one undo step of the layout.
class CVXSFigureController : public QObject
{
    Q_OBJECT
public:
    // The host's menus that take figure commands.
    static constexpr const char* FileMenu = "File";
    static constexpr const char* FigureMenu = "Figure";

    explicit CVXSFigureController(QObject* pParent = nullptr);
    ~CVXSFigureController() override;

    // The layout to work on; null while there is none.
    void setManager(CVXSLayoutManager* pManager);
    CVXSLayoutManager* manager() const;
    // The panel, made on first request. The host's dock holds it; it goes with the
    // controller.
    QWidget* panel();
    // The commands for a menu of the host (FileMenu, FigureMenu).
    QList<QAction*> menuActions(const QString& strMenu) const;
    // Adds a command to a menu of the host and to the panel's page.
    void addCommand(QAction* pAction, const QString& strMenu);

    // Panel letters, scale bars and pixel sizes, with their commands.
    CVXSFigureMarks* marks() const;

    QGraphicsItem* selectedItem() const;
    CVXSFigurePage page() const;
    // The page as output draws it, in layout units.
    QSizeF pageUnits() const;
    // Millimetres of the figure per layout unit.
    double mmPerUnit() const;
    // The item's place and size on the figure, in millimetres.
    QRectF geometryMm(const QGraphicsItem& item) const;

    // Each change is one undo step; none is made while the view follows a press to its
    // release (false), since the drag would take the change into its own step.
    bool applyStyle(const CVXSItemStyle& style, const QString& strText);
    bool setGeometryMm(const QRectF& rectMm);
    bool setPage(const CVXSFigurePage& page, const QString& strText);
    // Whether a change can be made now: there is a layout and the view follows no drag.
    bool canChange() const;
    // Turns the selected colour bar upright or across; its width and height trade places.
    bool setColourBarOrientation(Qt::Orientation orientation);
    // The selected shape's look becomes the one new shapes of its kind are drawn in.
    void useAsDefault();
    void resetDefaults();

signals:
    // The selection, the layout or the page changed: what the panel shows is out of date.
    void changed();

private:
    void repaint(QGraphicsItem* pItem) const;
    void placeItem(QGraphicsItem& item, const QRectF& rect) const;

    QPointer<CVXSLayoutManager> m_pManager;
    QPointer<CVXSFigureProperties> m_pPanel; // deleted with the controller
    QList<QMetaObject::Connection> m_connections;
    QList<QPair<QString, QAction*>> m_commands; // the actions are children of the controller
    CVXSFigureMarks* m_pMarks = nullptr;        // child of the controller
};
