#pragma once

#include "file/VXSLayoutDocument.h"
#include "studygrid/VXSStudyAxis.h"

#include <VXDisplayRange.h>
#include <VXImagePage.h>

#include <QCoreApplication>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QVector>

// A study laid out as a grid: one row per value of one text key of the images (an animal's
// "Patient ID"), one column per value of another (the "Acquisition Date", headed by days
// from the first), each cell the image with both values, all shown through one display
// range so that equal signals look equal in every cell, and one colour bar for that range.
// The result is a free-style layout document: headers, images, marked empty cells and
// the bar are ordinary items of the Image Layout window.
class CVXSStudyGrid
{
    Q_DECLARE_TR_FUNCTIONS(CVXSStudyGrid)
public:
    CVXSStudyGrid(const QString& strRowKey, const QString& strColumnKey);

    // The range all cells share; without one it spans every image's values.
    void setRange(double dMinimum, double dMaximum);
    void setColourBar(bool bShown);

    // Sorts the pages (as CVXImageFileReader::readWithLevels gives them, their text keys
    // saying where each belongs) into the grid and lays it out on a page of the size. False
    // with errorText() when no grid can be made: no image has both keys, the images measure
    // different things, a date is none. warnings() names images left out and cells given twice.
    bool build(const QVector<CVXImagePage>& pages, const QSize& pageSize);

    // The first page of each file, with its grey levels; errors gets one line for each file
    // that cannot be read.
    static QVector<CVXImagePage> readFiles(const QStringList& paths, QStringList& errors);

    CVXSLayoutDocument document() const;
    // The range the cells are shown through, with the first image's table, quantity and unit.
    CVXDisplayRange range() const;
    int rowCount() const;
    int columnCount() const;
    QStringList warnings() const;
    QString errorText() const;

private:
    bool placeOnAxes(const QVector<CVXImagePage>& pages);
    bool checkSharedScale();
    bool findRange();
    // Colour pictures have no grey levels; they are shown as they are, which the user is told.
    void noteImagesWithoutLevels();
    void fillCells();
    void layOut(const QSize& pageSize);
    QImage cellImage(int nPage, int nRow, int nColumn) const;
    static QImage levelsOf(const CVXImagePage& page);
    bool fail(const QString& strError);

    CVXSStudyAxis m_rows;
    CVXSStudyAxis m_columns;
    bool m_bRangeGiven = false;
    bool m_bColourBar = false;
    CVXDisplayRange m_range;
    // The pages that have both keys, and the page in each cell (-1 for none), row by row.
    QVector<CVXImagePage> m_pages;
    QVector<int> m_cells;
    CVXSLayoutDocument m_document;
    QStringList m_warnings;
    QString m_strError;
};
