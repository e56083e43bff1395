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

    // The content of the named tab as an image, null for an unknown name. It carries the
    // text keys of the frame shown (of all frames for the other tabs), the tab's title, the
    // frame's place in the sequence and the window's title (CVXImageProvenance).
    QImage tabImage(const QString& strTabName) const;
    // Copies the content of the named tab to the system clipboard; false for an unknown name.
    bool copyTabToClipboard(const QString& strTabName);

signals:
    void currentFrameChanged(int nIndex);

private:
    std::unique_ptr<CVXSSequenceDataset> m_pSequence;
    int m_nCurrentFrame = 0;
    QTabWidget* m_pTabs = nullptr; // child widget
};
