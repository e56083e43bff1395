#include "output/VXSLayoutProvenance.h"

#include "VXSLayoutConstants.h"
#include "VXSLayoutItemImage.h"
#include "scene/VXSLayoutStyles.h"
#include "VXSLayoutView.h"

#include <VXImageProvenance.h>

#include <QCoreApplication>
#include <QDateTime>
#include <QGraphicsScene>

namespace {

const QString kProduct = QStringLiteral("Vexor Image Layout");
// Sequence windows show a single frame on this tab; the others show all frames at once.
const QString kSingleFrameTab = QStringLiteral("Sequence View");

QString key(const char* pKey)
{
    return QString::fromLatin1(pKey);
}

QString sizeText(const QSize& size, const QString& strUnit)
{
    return QStringLiteral("%1 x %2 %3").arg(size.width()).arg(size.height()).arg(strUnit);
}

QString softwareName()
{
    const QString strProgram = QCoreApplication::applicationName();
    return strProgram.isEmpty() ? kProduct : QStringLiteral("%1 (%2)").arg(kProduct, strProgram);
}

// Local time with its offset, so that the date means the same anywhere.
QString now()
{
    const QDateTime local = QDateTime::currentDateTime();
    return local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODate);
}

} // namespace

CVXSLayoutProvenance::CVXSLayoutProvenance(QGraphicsScene& scene, const CVXSLayoutView* pView, int nStyle,
                                           const QSize& pageSize)
    : m_scene(scene)
    , m_pView(pView)
    , m_nStyle(nStyle)
    , m_pageSize(pageSize)
{
}

CVXSLayoutProvenance::Keys CVXSLayoutProvenance::keys() const
{
    Keys keys;
    keys.insert(key(LayoutStyle), styleName());
    if (VXSLayoutStyles::cellCount(m_nStyle) > 0) {
        const VXSLayoutStyles::Style& style = VXSLayoutStyles::Styles[m_nStyle];
        keys.insert(key(Grid), QStringLiteral("%1 x %2").arg(style.columns).arg(style.rows));
    }
    // The page as it was sized; the rendered page is one unit larger, its edges inclusive.
    keys.insert(key(PageSize), sizeText(m_scene.sceneRect().size().toSize(), QStringLiteral("layout units")));
    keys.insert(key(Software), softwareName());
    keys.insert(key(SoftwareVersion), QStringLiteral(VX_VERSION));
    keys.insert(key(Date), now());
    const QVector<CVXSLayoutItemImage*> images = imagesLowestFirst();
    keys.insert(key(CVXImageProvenance::ImageCount), QString::number(images.size()));
    for (int i = 0; i < images.size(); ++i)
        addImageKeys(keys, i + 1, images[i]);
    return keys;
}

QImage CVXSLayoutProvenance::attachedTo(QImage page) const
{
    if (page.isNull())
        return page;
    const Keys all = keys();
    for (auto it = all.cbegin(); it != all.cend(); ++it)
        page.setText(it.key(), it.value());
    page.setText(key(CVXImageProvenance::ImageSize), sizeText(page.size(), QStringLiteral("pixels")));
    return page;
}

CVXSLayoutProvenance::Keys CVXSLayoutProvenance::keysOf(const QImage& figure)
{
    Keys keys;
    for (const QString& strKey : figure.textKeys())
        keys.insert(strKey, figure.text(strKey));
    return keys;
}

QString CVXSLayoutProvenance::describe(const Keys& keys)
{
    QStringList order = pageKeyOrder();
    const int nImages = keys.value(key(CVXImageProvenance::ImageCount)).toInt();
    for (int n = 1; n <= nImages; ++n) {
        order << CVXImageProvenance::imageKey(n, key(Cell)) << CVXImageProvenance::imageKey(n, key(Position));
        for (const QString& strKey : CVXImageProvenance::keys())
            order << CVXImageProvenance::imageKey(n, strKey);
    }
    // Keys of other origin follow in the order of their names.
    for (const QString& strKey : keys.keys()) {
        if (!order.contains(strKey))
            order << strKey;
    }
    QString strText;
    for (const QString& strKey : order) {
        if (keys.contains(strKey))
            strText += strKey + QStringLiteral(": ") + keys.value(strKey).simplified() + QLatin1Char('\n');
    }
    return strText;
}

QString CVXSLayoutProvenance::methodsParagraph(const Keys& keys)
{
    const int nImages = keys.value(key(CVXImageProvenance::ImageCount)).toInt();
    const QString strGrid = keys.value(key(Grid));
    const QString strArrangement = strGrid.isEmpty() ? QStringLiteral("placed freely on the page")
                                                     : QStringLiteral("in a %1 grid").arg(strGrid);
    QStringList sentences;
    sentences << QStringLiteral("Figure assembled from %1 %2 %3%4")
                     .arg(nImages)
                     .arg(nImages == 1 ? QStringLiteral("image") : QStringLiteral("images"), strArrangement,
                          nImages > 0 ? QStringLiteral(":") : QStringLiteral("."));
    for (int n = 1; n <= nImages; ++n)
        sentences << imageSentence(keys, n);
    sentences << QStringLiteral("Assembled with %1 %2 on %3.")
                     .arg(keys.value(key(Software)), keys.value(key(SoftwareVersion)),
                          keys.value(key(Date)).left(10));
    return sentences.join(QLatin1Char(' ')) + QLatin1Char('\n');
}

QVector<CVXSLayoutItemImage*> CVXSLayoutProvenance::imagesLowestFirst() const
{
    // The items the renderer draws on the page, in the order it draws them.
    const QList<QGraphicsItem*> items = m_scene.items(QRectF(QPointF(0, 0), QSizeF(m_pageSize)),
                                                      Qt::IntersectsItemShape, Qt::AscendingOrder);
    QVector<CVXSLayoutItemImage*> images;
    for (QGraphicsItem* pItem : items) {
        if (pItem->type() == VXSLayout::ImageItemType && !(m_pView && m_pView->isAuxiliaryItem(pItem)))
            images << static_cast<CVXSLayoutItemImage*>(pItem);
    }
    return images;
}

void CVXSLayoutProvenance::addImageKeys(Keys& keys, int nImage, CVXSLayoutItemImage* pImage) const
{
    const QString strCell = cellText(pImage->getCellIndex());
    if (!strCell.isEmpty())
        keys.insert(CVXImageProvenance::imageKey(nImage, key(Cell)), strCell);
    const QRect place = pImage->mapRectToScene(pImage->rect()).normalized().toRect();
    keys.insert(CVXImageProvenance::imageKey(nImage, key(Position)),
                QStringLiteral("x %1, y %2, %3").arg(place.x()).arg(place.y()).arg(sizeText(place.size(),
                                                                                   QStringLiteral("layout units"))));
    const QImage& image = pImage->getImage();
    for (const QString& strKey : CVXImageProvenance::keys()) {
        const QString strValue = image.text(strKey);
        if (!strValue.isEmpty())
            keys.insert(CVXImageProvenance::imageKey(nImage, strKey), strValue);
    }
}

QString CVXSLayoutProvenance::styleName() const
{
    // The names of the layout-style box, untranslated so that they read the same everywhere.
    if (VXSLayoutStyles::cellCount(m_nStyle) < 0)
        return QStringLiteral("Free style");
    const VXSLayoutStyles::Style& style = VXSLayoutStyles::Styles[m_nStyle];
    return QStringLiteral("Layout %1x%2").arg(style.columns).arg(style.rows);
}

QString CVXSLayoutProvenance::cellText(int nCell) const
{
    if (nCell < 0 || nCell >= VXSLayoutStyles::cellCount(m_nStyle))
        return QString();
    const int nColumns = VXSLayoutStyles::Styles[m_nStyle].columns;
    return QStringLiteral("%1, row %2, column %3").arg(nCell + 1).arg(nCell / nColumns + 1).arg(nCell % nColumns + 1);
}

QStringList CVXSLayoutProvenance::pageKeyOrder()
{
    return {key(LayoutStyle), key(Grid),     key(PageSize),        key(CVXImageProvenance::ImageSize),
            key(CVXImageProvenance::ImageCount), key(Software), key(SoftwareVersion), key(Date)};
}

QString CVXSLayoutProvenance::imageSentence(const Keys& keys, int nImage)
{
    const auto value = [&](const char* pKey) {
        return keys.value(CVXImageProvenance::imageKey(nImage, key(pKey))).simplified();
    };
    const QString strCell = value(Cell);
    const QString strImage = QStringLiteral("Image %1 (%2)")
                                 .arg(nImage)
                                 .arg(strCell.isEmpty() ? QStringLiteral("placed freely")
                                                        : QStringLiteral("cell %1").arg(strCell));
    const QString strSource = value(CVXImageProvenance::Source);
    if (strSource.isEmpty())
        return strImage + QStringLiteral(" has no recorded source.");
    QString strShown = strSource;
    const QString strTab = value(CVXImageProvenance::Tab);
    if (!strTab.isEmpty() && strTab != kSingleFrameTab)
        strShown = QStringLiteral("the %1 of %2").arg(strTab, strSource);
    else if (!value(CVXImageProvenance::Frame).isEmpty())
        strShown = QStringLiteral("frame %1 of %2").arg(value(CVXImageProvenance::Frame), strSource);
    QStringList details;
    if (!value(CVXImageProvenance::PatientId).isEmpty())
        details << QStringLiteral("animal %1").arg(value(CVXImageProvenance::PatientId));
    if (!value(CVXImageProvenance::AcquisitionDate).isEmpty())
        details << QStringLiteral("acquired %1 %2")
                       .arg(value(CVXImageProvenance::AcquisitionDate), value(CVXImageProvenance::AcquisitionTime))
                       .trimmed();
    if (!value(CVXImageProvenance::SeriesInstanceUid).isEmpty())
        details << QStringLiteral("series %1").arg(value(CVXImageProvenance::SeriesInstanceUid));
    const QString strDetails = details.isEmpty() ? QString() : QStringLiteral(" (%1)").arg(details.join(QStringLiteral(", ")));
    return QStringLiteral("%1 shows %2%3.").arg(strImage, strShown, strDetails);
}
