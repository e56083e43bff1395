#pragma once

#include "VXLayoutBatchOptions.h"

#include <VXSLayoutManager.h>
#include <VXStatus.h>
#include <output/VXSLayoutProvenance.h>

#include <QCoreApplication>
#include <QImage>
#include <QString>
#include <QStringList>
#include <QVector>

class CVXSLayoutItemImage;

// Builds one layout page from image files and exports it, through the layout manager
// with its window and view (never shown), the layout items and the host's exporter: the
// page is the one the Image Layout window would export with the same images pasted.
class CVXLayoutBatch
{
    Q_DECLARE_TR_FUNCTIONS(CVXLayoutBatch)
public:
    CVXLayoutBatch();

    // The names of the layout styles, in the order of the Layout Style box.
    QStringList styleNames() const;

    // Checks everything before any file is read, then reads, lays out and writes. On
    // failure errorText() says why and no file is written.
    bool run(const CVXLayoutBatchOptions& options);
    QString errorText() const;
    // One line for the file written.
    QString reportLine() const;
    // Where the written page's images came from: one "Key: value" line per key, UTF-8.
    QByteArray provenance() const;

private:
    bool chooseStyle(const QString& strStyle);
    bool checkExportName(const QString& strPath);
    bool checkCellCount(int nImages);
    bool checkDpi(const QString& strPath, int nDpi);
    bool checkMethodsName(const QString& strPath, const QString& strExportPath);
    bool writeMethods(const QString& strPath);
    bool sizePage(const QSize& sceneSize);
    static void deliverPendingResize(QWidget* pWidget);
    bool readImages(const QStringList& paths, QVector<QImage>& images);
    void placeImages(const QVector<QImage>& images);
    // The item for an image of the size, placed as a paste places it; its picture may follow.
    CVXSLayoutItemImage* placeImage(const QImage& image, const QSize& size);
    // Places the images of raster pages, each holding only its picture reduced to its place.
    bool placeReducedImages(const QStringList& paths);
    bool placeStudyGrid(const CVXLayoutBatchOptions& options);
    // The page's images: a study grid, whole images, or images reduced to their places.
    bool placeSources(const CVXLayoutBatchOptions& options, bool bFigure);
    bool exportPage(QString strPath, int nDpi);
    bool exportVectorPage(const QString& strPath, int nDpi);
    bool exportFigure(const CVXLayoutFigureSize& size, const QString& strPath);
    // Keeps the reason an export failed for errorText(); always false.
    bool failedToWrite(const QString& strPath, tag_estatus status, const QString& strDetail);

    CVXSLayoutManager m_manager;
    QString m_strError;
    QString m_strReport;
    CVXSLayoutProvenance::Keys m_provenance;
};
