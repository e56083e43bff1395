#pragma once

#include "figure/VXSItemFigure.h"

#include <QList>

#include <functional>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QRectF>

class QAction;
class QGraphicsItem;
class QGraphicsScene;
class QWidget;
class CVXSFigureController;
class CVXSLayoutItemImage;

// The marks a figure puts on its images: panel letters and calibrated scale bars, and the
// pixel size a scale bar is measured from where the source gives none. Gives the controller
// the commands "Label Panels", "Add Scale Bar", "Remove Scale Bar" and "Set Pixel Size…";
// every change is one undo step of the layout.
class CVXSFigureMarks : public QObject
{
    Q_OBJECT
public:
    explicit CVXSFigureMarks(CVXSFigureController& controller);

    // Letters every image of the layout in reading order (CVXSPanelOrder) with the stored
    // options (CVXSPanelLabelOptions); letters given before are replaced. A layout without
    // images gets a message and no change.
    bool labelPanels();
    // Scale bars on or off for the selected image, or for every image while nothing is
    // selected. Images without a pixel size get none, and a message says so.
    bool setScaleBarsShown(bool bShown);
    // The selected image's scale bar as the panel edits it.
    bool setScaleBar(const CVXSScaleBar& bar, const QString& strText);
    // Asks the user for the selected images' pixel size and gives it to them.
    bool askPixelSize();
    bool setPixelSize(double dMm);

    // The images a command works on: the selected one, or every image while nothing is
    // selected.
    QList<CVXSLayoutItemImage*> targets() const;
    // The layout's images, lowest first.
    QList<CVXSLayoutItemImage*> images() const;
    // "a.dcm has no pixel size; …" for images without one; empty when all have one.
    static QString missingPixelSizeText(const QList<CVXSLayoutItemImage*>& images);

private:
    using FigureChange = QPair<QGraphicsItem*, CVXSItemFigure>;

    QAction* addCommand(const QString& strText, const char* pObjectName);
    bool apply(const QList<FigureChange>& changes, const QString& strText);
    // Runs change as one undo step named strText, unless the layout cannot change now.
    bool apply(const std::function<void()>& change, const QString& strText);
    void tell(const QString& strText) const;
    QWidget* dialogParent() const;
    bool hasOutsideLetters() const;
    void watchScene();
    void sceneChanged(const QList<QRectF>& regions);

    CVXSFigureController& m_controller; // owns this object
    QAction* m_pLabelPanels = nullptr;  // the actions are children of this object
    QAction* m_pAddScaleBar = nullptr;
    QAction* m_pRemoveScaleBar = nullptr;
    QAction* m_pSetPixelSize = nullptr;
    QPointer<QGraphicsScene> m_pWatchedScene;
    QMetaObject::Connection m_sceneConnection;
};
