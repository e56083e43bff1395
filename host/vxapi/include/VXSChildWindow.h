#pragma once

#include "VXDisplayRange.h"
#include "VXImagePage.h"
#include "VXSViewState.h"
#include "VxApiGlobal.h"

#include <QImage>
#include <QWidget>

#include <memory>

class CVXSDataset;
class CVXSDisplayRangeBar;

// An image window of the host: shows one image fitted to the window, aspect kept.
class VXAPI_EXPORT CVXSChildWindow : public QWidget
{
    Q_OBJECT
public:
    explicit CVXSChildWindow(const QImage& image = QImage(), QWidget* pParent = nullptr);
    ~CVXSChildWindow() override;

    // The image or sequence window the user worked in last, or null when the application
    // has no workspace or no open image window.
    static CVXSChildWindow* getActiveChildWnd();

    virtual bool isSequenceWindow();
    virtual CVXSViewState getViewState();
    void setViewState(const CVXSViewState& state);
    // The window's current content: with bGrabDisplayed the picture as drawn on screen,
    // otherwise the image at full resolution. Either carries the image's text keys, the
    // window's title and its own size (CVXImageProvenance), and for grey images the range,
    // colour table and unit they are shown with (CVXDisplayRange).
    virtual QImage grabImage(bool bGrabDisplayed);
    // Whether grabImage works while the window is minimized, for the grab mode given
    // (1: as displayed). False means the window must be restored first.
    virtual bool canGrabMinimized(int nGrabMode);

    // The picture shown at full resolution: the image given, or its grey levels through the
    // display range as RGB32 once one is set.
    const QImage& image() const;
    // A new image; a display range set stays and applies to it where it is grey.
    void setImage(const QImage& image);
    // The grey levels the image was made from (Grayscale8 or Grayscale16 of its size), for
    // images that cannot show them as they are; without them a Grayscale8 image is its own
    // levels. Set after the image.
    void setLevels(const QImage& levels);
    // The image as it was given, keys and all, with the grey levels set after it, for a tool
    // that shows it through a display range of its own.
    CVXImagePage givenPage() const;
    // The dataset shown: the window's image under the name the host gave it.
    CVXSDataset* dataset() const;

    // Whether the window shows grey levels, so that a display range can be set.
    bool hasLevels() const;
    // The range and table shown, with the unit and rescale the image's keys give: the range
    // chosen, or the one the default display amounts to (the range a DICOM file's window
    // names, or the whole data range stretched, grey). Without a range where the window has
    // no grey levels.
    CVXDisplayRange displayRange() const;
    // Whether no range was chosen, so the window shows its image as it was given.
    bool isDefaultDisplay() const;
    // The values of the darkest and brightest level shown, in the image's unit; false
    // without levels.
    bool dataRange(double& dMinimum, double& dMaximum) const;
    // Shows the levels from dMinimum (the table's first colour) to dMaximum (its last).
    // Refused, with nothing changed, without levels, for an unknown table, and unless both
    // are finite and the minimum is below the maximum.
    bool setDisplayRange(double dMinimum, double dMaximum, const QString& strTable);
    // Back to the default display.
    void resetDisplayRange();
    // The bar of controls for the display range at the window's bottom edge (the context
    // menu's "Display Range" shows and hides it). While it is shown, dragging over the
    // picture with the left button sets window and level: to the right widens the range,
    // downwards moves it up, each by the whole data range over the window's width or height.
    bool isDisplayRangeBarVisible() const;
    void setDisplayRangeBarVisible(bool bVisible);

signals:
    void displayRangeChanged();

protected:
    // The grey levels the display range applies to: one image per frame, null for a frame
    // without levels.
    virtual QVector<QImage> levelImages() const;
    // The picture whose keys give the unit and rescale.
    virtual QImage keyedPicture() const;
    // Shows the pictures anew after the display range changed.
    virtual void showDisplayRange();
    // Places the content in contentRect() after the bar was shown, hidden or resized.
    virtual void layoutContent();
    // The window without the bar.
    QRect contentRect() const;
    // The grey levels behind a picture: those given, or the picture's own where it is
    // 8-bit grey; null for a colour picture without levels.
    static QImage levelsOf(const QImage& picture, const QImage& levels);
    // What the chosen range and table make of a picture and its levels (setLevels); the
    // picture itself, keys and all, while there is no range or no levels.
    QImage shownPicture(const QImage& picture, const QImage& levels) const;
    // The range shown for a picture with these levels (see displayRange).
    CVXDisplayRange rangeShownFor(const QImage& picture, const QVector<QImage>& levels) const;
    // Marks an image of this picture as handed over; one with grey levels becomes RGB32
    // and carries the range shown.
    void labelHandedOver(QImage& image, const QImage& picture, const QImage& levels) const;
    void paintEvent(QPaintEvent* pEvent) override;
    void resizeEvent(QResizeEvent* pEvent) override;
    void contextMenuEvent(QContextMenuEvent* pEvent) override;
    void mousePressEvent(QMouseEvent* pEvent) override;
    void mouseMoveEvent(QMouseEvent* pEvent) override;
    void mouseReleaseEvent(QMouseEvent* pEvent) override;
    // Tools hear of the closing while the dataset still exists.
    void closeEvent(QCloseEvent* pEvent) override;
    // The rectangle in which an image of this size is drawn, fitted and centred.
    QRect fittedRect(const QSize& imageSize) const;

private:
    void displayRangeWasChanged();

    std::unique_ptr<CVXSDataset> m_pDataset;
    CVXSViewState m_viewState;
    // The image as given: shown while there is no range, and the keys of what is shown.
    QImage m_picture;
    QImage m_levels;
    // The range and table chosen; the unit and rescale come from the image.
    CVXDisplayRange m_chosen;
    CVXSDisplayRangeBar* m_pBar = nullptr; // child, made when first shown
    // Where a window and level drag started and the range shown then; no range while
    // no drag is under way.
    QPoint m_dragStart;
    CVXDisplayRange m_dragRange;
};
