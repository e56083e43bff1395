#pragma once

#include "VXSChildWindow.h"
#include "VxApiGlobal.h"

#include <QVector>

#include <memory>

class QTabWidget;
class CVXSSequenceDataset;

// A sequence window of the host: frames of a multi-frame file or a set of images,
// shown on the tabs "Sequence View" (the current frame), "3D View" (a projection of the
// whole stack) and "Thumbnails" (all frames side by side).
class VXAPI_EXPORT CVXSSequenceWindow : public CVXSChildWindow
{
    Q_OBJECT
public:
    explicit CVXSSequenceWindow(const QVector<QImage>& frames, QWidget* pParent = nullptr);
    ~CVXSSequenceWindow() override;

    bool isSequenceWindow() override;
    QImage grabImage(bool bGrabDisplayed) override;

    // The title of the current tab.
    QString getCurrentTabName() const;
    // Makes the tab with this title (any letter case) current; false if there is none.
    bool setCurrentTab(const QString& strTabName);

    int frameCount() const;
    int currentFrame() const;
    void setCurrentFrame(int nIndex);
    // The frames shown, under the name the host gave them.
    CVXSSequenceDataset* sequenceDataset() const;
    // The grey levels each frame was made from (CVXSChildWindow::setLevels), in frame order;
    // a null image where a frame is its own levels or has none.
    void setFrameLevels(const QVector<QImage>& levels);

    // The content of the named tab as an image, null for an unknown name. It carries the
    // text keys of the frame shown (of all frames for the other tabs), the tab's title, the
    // frame's place in the sequence and the window's title (CVXImageProvenance).
    QImage tabImage(const QString& strTabName) const;
    // Copies the content of the named tab to the system clipboard; false for an unknown name.
    bool copyTabToClipboard(const QString& strTabName);

signals:
    void currentFrameChanged(int nIndex);

protected:
    QVector<QImage> levelImages() const override;
    QImage keyedPicture() const override;
    // The three tabs show the frames through the display range, the projection the
    // brightest level of each pixel.
    void showDisplayRange() override;
    void layoutContent() override;

private:
    QImage shownFrame(int nIndex) const;
    // The frames as given, or as shown through the display range.
    QVector<QImage> framePictures(bool bShown) const;
    QImage projection(const QVector<QImage>& shown) const;
    // An image of a tab showing all frames at once, handed over: with the range chosen,
    // where there is one, as RGB32.
    void labelAllFramesHandedOver(QImage& image) const;

    std::unique_ptr<CVXSSequenceDataset> m_pSequence;
    QVector<QImage> m_levels;
    int m_nCurrentFrame = 0;
    QTabWidget* m_pTabs = nullptr; // child widget
};
