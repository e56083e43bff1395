#include "studygrid/VXSStudyGrid.h"

#include "colourbar/VXSColourBar.h"
#include "figure/VXSImageSourceName.h"
#include "scene/VXSImageFit.h"
#include "scene/VXSLayoutPens.h"
#include "studygrid/VXSStudyGridPage.h"
#include "VXSLayoutConstants.h"

#include <VXImageFileReader.h>
#include <VXImageProvenance.h>
#include <VXImageWindowing.h>

#include <QFontMetricsF>
#include <QMap>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace VXSLayout;

namespace {

// The mark of a cell without an image.
const QColor MissingColour(160, 160, 160);

QString keyText(const QImage& picture, const QString& strKey)
{
    return picture.text(strKey).trimmed();
}

// "PT, Bq/ml" for the messages that tell images apart by what they measure.
QString scaleText(const CVXDisplayRange& range)
{
    const QString strModality = range.modality().isEmpty() ? CVXSStudyGrid::tr("no modality") : range.modality();
    const QString strUnit = range.unit().isEmpty() ? CVXSStudyGrid::tr("no unit") : range.unit();
    return strModality + QStringLiteral(", ") + strUnit;
}

CVXSLayoutItemState textState(const QString& strText, const QRectF& area, int nTextSize, const QColor& colour)
{
    CVXSLayoutItemState state;
    state.nType = TextItemType;
    state.strText = strText;
    state.font.setPixelSize(nTextSize);
    state.color = colour;
    state.nTextFlags = int(Qt::AlignHCenter | Qt::AlignTop);
    // Text hangs from the top of its item; the item is as high as a line and centred.
    const double dHeight = std::min(area.height(), QFontMetricsF(state.font).height() * 1.2);
    state.rect = QRectF(area.left(), area.center().y() - dHeight / 2.0, area.width(), dHeight);
    state.pen = VXSLayoutPens::thinBlack();
    return state;
}

} // namespace

CVXSStudyGrid::CVXSStudyGrid(const QString& strRowKey, const QString& strColumnKey)
    : m_rows(strRowKey)
    , m_columns(strColumnKey)
{
}

void CVXSStudyGrid::setRange(double dMinimum, double dMaximum)
{
    m_bRangeGiven = m_range.setRange(dMinimum, dMaximum);
}

void CVXSStudyGrid::setColourBar(bool bShown)
{
    m_bColourBar = bShown;
}

bool CVXSStudyGrid::build(const QVector<CVXImagePage>& pages, const QSize& pageSize)
{
    m_warnings.clear();
    m_strError.clear();
    m_document = CVXSLayoutDocument();
    if (!placeOnAxes(pages) || !checkSharedScale() || !findRange())
        return false;
    noteImagesWithoutLevels();
    fillCells();
    layOut(pageSize);
    return true;
}

QVector<CVXImagePage> CVXSStudyGrid::readFiles(const QStringList& paths, QStringList& errors)
{
    QVector<CVXImagePage> pages;
    for (const QString& strPath : paths) {
        QString strError;
        const QVector<CVXImagePage> read = CVXImageFileReader::readWithLevels(strPath, strError);
        if (read.isEmpty())
            errors << tr("Cannot read \"%1\": %2").arg(strPath, strError);
        else
            pages << read.first();
    }
    return pages;
}

CVXSLayoutDocument CVXSStudyGrid::document() const
{
    return m_document;
}

CVXDisplayRange CVXSStudyGrid::range() const
{
    return m_range;
}

int CVXSStudyGrid::rowCount() const
{
    return m_rows.count();
}

int CVXSStudyGrid::columnCount() const
{
    return m_columns.count();
}

QStringList CVXSStudyGrid::warnings() const
{
    return m_warnings;
}

QString CVXSStudyGrid::errorText() const
{
    return m_strError;
}

bool CVXSStudyGrid::fail(const QString& strError)
{
    m_strError = strError;
    return false;
}

bool CVXSStudyGrid::placeOnAxes(const QVector<CVXImagePage>& pages)
{
    m_pages.clear();
    QStringList withoutKeys;
    QStringList rowValues, columnValues, names;
    for (const CVXImagePage& page : pages) {
        const QString strRow = keyText(page.picture, m_rows.key());
        const QString strColumn = keyText(page.picture, m_columns.key());
        if (strRow.isEmpty() || strColumn.isEmpty()) {
            withoutKeys << CVXSImageSourceName::of(page.picture);
            continue;
        }
        m_pages << page;
        rowValues << strRow;
        columnValues << strColumn;
        names << CVXSImageSourceName::of(page.picture);
    }
    if (!withoutKeys.isEmpty()) {
        m_warnings << tr("Left out, without \"%1\" or \"%2\": %3.")
                          .arg(m_rows.key(), m_columns.key(), withoutKeys.join(QStringLiteral(", ")));
    }
    if (m_pages.isEmpty())
        return fail(tr("No image has both \"%1\" and \"%2\", so there is no grid to make.").arg(m_rows.key(), m_columns.key()));
    if (!m_rows.setValues(rowValues, names))
        return fail(m_rows.errorText());
    if (!m_columns.setValues(columnValues, names))
        return fail(m_columns.errorText());
    return true;
}

bool CVXSStudyGrid::checkSharedScale()
{
    // One range over images of different quantities would draw a false colour bar.
    QMap<QString, QStringList> groups;
    const CVXDisplayRange first = CVXDisplayRange::fromImage(m_pages.first().picture);
    bool bShared = true;
    for (const CVXImagePage& page : m_pages) {
        const CVXDisplayRange range = CVXDisplayRange::fromImage(page.picture);
        bShared = bShared && range.sharesScaleWith(first);
        groups[scaleText(range)] << CVXSImageSourceName::of(page.picture);
    }
    if (bShared)
        return true;
    QStringList parts;
    for (auto it = groups.cbegin(); it != groups.cend(); ++it)
        parts << tr("%1 (%2)").arg(it.value().join(QStringLiteral(", ")), it.key());
    return fail(tr("These images measure different things and cannot share one display range: %1.")
                    .arg(parts.join(QStringLiteral("; "))));
}

QImage CVXSStudyGrid::levelsOf(const CVXImagePage& page)
{
    if (!page.levels.isNull())
        return page.levels;
    return CVXImageWindowing::isGreyLevels(page.picture) ? page.picture : QImage();
}

void CVXSStudyGrid::noteImagesWithoutLevels()
{
    QStringList names;
    for (const CVXImagePage& page : qAsConst(m_pages)) {
        if (levelsOf(page).isNull())
            names << CVXSImageSourceName::of(page.picture);
    }
    if (!names.isEmpty()) {
        m_warnings << tr("Shown as they are, without grey levels to show through the shared range: %1.")
                          .arg(names.join(QStringLiteral(", ")));
    }
}

bool CVXSStudyGrid::findRange()
{
    const CVXDisplayRange first = CVXDisplayRange::fromImage(m_pages.first().picture);
    CVXDisplayRange shared = first;
    if (m_bRangeGiven) {
        shared.setRange(m_range.minimum(), m_range.maximum());
        m_range = shared;
        return true;
    }
    double dLow = std::numeric_limits<double>::infinity();
    double dHigh = -dLow;
    for (const CVXImagePage& page : qAsConst(m_pages)) {
        const QImage levels = levelsOf(page);
        const QPair<int, int> extent = CVXImageWindowing::levelExtent(levels);
        if (levels.isNull() || extent.second < extent.first)
            continue;
        const CVXDisplayRange range = CVXDisplayRange::fromImage(page.picture);
        for (double dValue : {range.valueOf(extent.first), range.valueOf(extent.second)}) {
            dLow = std::min(dLow, dValue);
            dHigh = std::max(dHigh, dValue);
        }
    }
    if (!std::isfinite(dLow))
        return fail(tr("None of the images has grey levels, so they cannot be shown through one display range."));

    // Images of one flat value still need a range around it.
    if (!(dHigh > dLow))
        dHigh = dLow + std::max(1.0, std::abs(dLow) * 0.01);
    shared.setRange(dLow, dHigh);
    m_range = shared;
    return true;
}

void CVXSStudyGrid::fillCells()
{
    m_cells.fill(-1, m_rows.count() * m_columns.count());
    QStringList duplicates;
    for (int i = 0; i < m_pages.size(); ++i) {
        const QImage& picture = m_pages[i].picture;
        const int nRow = m_rows.indexOf(keyText(picture, m_rows.key()));
        const int nColumn = m_columns.indexOf(keyText(picture, m_columns.key()));
        int& nCell = m_cells[nRow * m_columns.count() + nColumn];
        if (nCell < 0) {
            nCell = i;
            continue;
        }
        duplicates << tr("%1 and %2 are both %3, %4; the grid shows %1.")
                          .arg(CVXSImageSourceName::of(m_pages[nCell].picture), CVXSImageSourceName::of(picture), m_rows.header(nRow),
                               m_columns.header(nColumn));
    }
    m_warnings << duplicates;
}

QImage CVXSStudyGrid::cellImage(int nPage, int nRow, int nColumn) const
{
    const CVXImagePage& page = m_pages[nPage];
    CVXDisplayRange range = CVXDisplayRange::fromImage(page.picture);
    range.setRange(m_range.minimum(), m_range.maximum());
    range.setTableName(m_range.tableName());
    const QImage levels = levelsOf(page);
    // A colour picture has no levels to show through the range; it is shown as it is.
    QImage image = levels.isNull() ? page.picture : CVXImageWindowing::applyRange(levels, range);
    CVXImageProvenance::copyKeys(page.picture, image);
    if (!levels.isNull())
        range.writeTo(image);
    CVXImageProvenance::setKey(image, QString::fromLatin1(CVXImageProvenance::StudyRow),
                               tr("%1 %2").arg(m_rows.key(), m_rows.value(nRow)));
    const QString strColumn = tr("%1 %2").arg(m_columns.key(), m_columns.value(nColumn));
    CVXImageProvenance::setKey(image, QString::fromLatin1(CVXImageProvenance::StudyColumn),
                               m_columns.isDateAxis() ? tr("%1 (%2)").arg(strColumn, m_columns.header(nColumn)) : strColumn);
    return image;
}

void CVXSStudyGrid::layOut(const QSize& pageSize)
{
    const CVXSStudyGridPage page(pageSize, m_rows.count(), m_columns.count(), m_bColourBar);
    QVector<CVXSLayoutItemState>& items = m_document.items;
    m_document.nStyle = FreeStyle;
    m_document.pageSize = pageSize;
    for (int nRow = 0; nRow < m_rows.count(); ++nRow)
        items << textState(m_rows.header(nRow), page.rowHeaderRect(nRow), page.textSize(), Qt::black);
    for (int nColumn = 0; nColumn < m_columns.count(); ++nColumn)
        items << textState(m_columns.header(nColumn), page.columnHeaderRect(nColumn), page.textSize(), Qt::black);
    for (int nRow = 0; nRow < m_rows.count(); ++nRow) {
        for (int nColumn = 0; nColumn < m_columns.count(); ++nColumn) {
            const QRectF cell = page.cellRect(nRow, nColumn);
            const int nPage = m_cells[nRow * m_columns.count() + nColumn];
            CVXSLayoutItemState state;
            state.pen = VXSLayoutPens::thinBlack();
            if (nPage < 0) {
                state.nType = RectangleItemType;
                state.rect = cell;
                state.figure.bStyled = true;
                state.figure.lineColour = MissingColour;
                items << state << textState(tr("missing"), cell, page.textSize(), MissingColour);
                continue;
            }
            state.nType = ImageItemType;
            state.image = cellImage(nPage, nRow, nColumn);
            const QSizeF fitted = VXSImageFit::fitSize(state.image.width(), state.image.height(), cell.width(), cell.height());
            state.rect = QRectF(cell.center() - QPointF(fitted.width(), fitted.height()) / 2.0, fitted);
            items << state;
        }
    }
    if (m_bColourBar) {
        CVXSLayoutItemState bar;
        bar.nType = RectangleItemType;
        bar.rect = page.colourBarRect();
        bar.pen = VXSLayoutPens::thinBlack();
        bar.figure.colourBar = CVXSColourBar::fromRange(m_range);
        items << bar;
    }
    for (int i = 0; i < items.size(); ++i)
        items[i].z = BaseZ + 1 + i;
}
