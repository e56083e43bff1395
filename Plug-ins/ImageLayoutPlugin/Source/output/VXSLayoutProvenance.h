#pragma once

#include "VXSLayoutConstants.h"

#include <QImage>
#include <QMap>
#include <QSize>
#include <QString>
#include <QVector>

class QGraphicsScene;
class CVXSLayoutItemImage;
class CVXSLayoutView;

// Where a layout page's images came from. Gathers one block per image, lowest first: its
// cell, its place on the page and the image's own keys (CVXImageProvenance), each under
// "Image n <key>"; and for the page its style, size, the software and the date. Set as text
// keys on the rendered page, they go with it into every export format that has a place.
// The Methods paragraph phrases the same for a paper.
class CVXSLayoutProvenance
{
public:
    using Keys = QMap<QString, QString>;

    static constexpr const char* LayoutStyle = "Layout Style";
    static constexpr const char* Grid = "Grid";
    static constexpr const char* PageSize = "Page Size";
    static constexpr const char* Software = "Software";
    static constexpr const char* SoftwareVersion = "Software Version";
    static constexpr const char* Date = "Date";
    static constexpr const char* Cell = "Cell";
    static constexpr const char* Position = "Position";

    // pView tells its own items apart, as for CVXSLayoutRenderer; nStyle is the layout
    // style's number, pageSize the rendered page in layout units (the images on it count).
    CVXSLayoutProvenance(QGraphicsScene& scene, const CVXSLayoutView* pView, int nStyle, const QSize& pageSize);

    Keys keys() const;
    // The rendered page with keys() set on it, and its size in pixels.
    QImage attachedTo(QImage page) const;

    // The keys a figure carries (any image's text keys).
    static Keys keysOf(const QImage& figure);
    // One "Key: value" line per key: the page's first, then image by image.
    static QString describe(const Keys& keys);
    // A short Methods paragraph: one sentence for the figure, one per image naming its
    // file and frame, animal, date and series where they are known.
    static QString methodsParagraph(const Keys& keys);

private:
    QVector<CVXSLayoutItemImage*> imagesLowestFirst() const;
    void addImageKeys(Keys& keys, int nImage, CVXSLayoutItemImage* pImage) const;
    QString styleName() const;
    QString cellText(int nCell) const;
    static QStringList pageKeyOrder();
    static QString imageSentence(const Keys& keys, int nImage);

    QGraphicsScene& m_scene;
    const CVXSLayoutView* m_pView = nullptr;
    int m_nStyle = VXSLayout::FreeStyle;
    QSize m_pageSize;
};
