#pragma once

#include "VXSViewState.h"
#include "VxApiGlobal.h"

#include <QImage>
#include <QWidget>

#include <memory>

class CVXSDataset;

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
    // window's title and its own size (CVXImageProvenance).
    virtual QImage grabImage(bool bGrabDisplayed);
    // Whether grabImage works while the window is minimized, for the grab mode given
    // (1: as displayed). False means the window must be restored first.
    virtual bool canGrabMinimized(int nGrabMode);

    const QImage& image() const;
    void setImage(const QImage& image);
    // The dataset shown: the window's image under the name the host gave it.
    CVXSDataset* dataset() const;

protected:
    void paintEvent(QPaintEvent* pEvent) override;
    // Tools hear of the closing while the dataset still exists.
    void closeEvent(QCloseEvent* pEvent) override;
    // The rectangle in which an image of this size is drawn, fitted and centred.
    QRect fittedRect(const QSize& imageSize) const;

private:
    std::unique_ptr<CVXSDataset> m_pDataset;
    CVXSViewState m_viewState;
};
