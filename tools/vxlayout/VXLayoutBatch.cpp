#include "VXLayoutBatch.h"
#include "VXLayoutStreamedSources.h"

#include "VXLayoutStudyGrid.h"

#include <figure/export/VXSFigureFile.h>
#include <VXImageFileReader.h>
#include <output/VXSExportFormats.h>
#include <VXSImageExporter.h>
#include <VXSLayoutConstants.h>
#include <VXSLayoutItemImage.h>
#include <output/VXSLayoutRenderer.h>
#include <output/VXSLayoutVectorPage.h>
#include <output/VXSLayoutProvenance.h>
#include <VXSLayoutView.h>
#include <VXSLayoutWindow.h>
#include <VXStatus.h>

#include <QComboBox>
#include <QFileInfo>
#include <QResizeEvent>
#include <QSaveFile>
#include <QtConcurrent>

namespace {

// The view keeps its scene this much smaller than itself (its frame).
const QSize ViewFrame(4, 4);

// The formats that carry a resolution: the raster files Qt writes, and PDF.
const QStringList DpiSuffixes = {QStringLiteral("bmp"), QStringLiteral("jpg"), QStringLiteral("png"),
                                 QStringLiteral("tif"), QStringLiteral("tiff"), QStringLiteral("pdf")};

QString suffixOf(const QString& strPath)
{
    return QFileInfo(strPath).suffix().toLower();
}

int dotsPerMeter(int nDpi)
{
    return qRound(nDpi / 0.0254);
}

struct DecodedFile
{
    QImage image;
    QString strError;
};

DecodedFile decodeFile(const QString& strPath)
{
    DecodedFile decoded;
    const QVector<QImage> pages = CVXImageFileReader::read(strPath, decoded.strError);
    if (!pages.isEmpty())
        decoded.image = pages.first();
    return decoded;
}

} // namespace

CVXLayoutBatch::CVXLayoutBatch()
    : m_manager(nullptr)
{
}

QStringList CVXLayoutBatch::styleNames() const
{
    const QComboBox* pCombo = m_manager.getLayoutWindow()->layoutStyleCombo();
    QStringList names;
    for (int i = 0; i < pCombo->count(); ++i)
        names << pCombo->itemText(i);
    return names;
}

bool CVXLayoutBatch::run(const CVXLayoutBatchOptions& options)
{
    m_strError.clear();
    m_strReport.clear();
    const bool bGrid = options.studyGrid().isRequested();
    // A figure's resolution sets its pixels in any format.
    const bool bFigure = options.figureSize().isRequested();
    if ((!bGrid && !chooseStyle(options.layoutStyle())) || !checkExportName(options.exportPath())
        || (!bFigure && !checkDpi(options.exportPath(), options.dpi()))
        || (!bGrid && !checkCellCount(options.inputPaths().size()))
        || !sizePage(options.sceneSize()) || !checkMethodsName(options.methodsPath(), options.exportPath()))
        return false;
    if (!placeSources(options, bFigure))
        return false;
    const bool bWritten = bFigure ? exportFigure(options.figureSize(), options.exportPath())
                                  : exportPage(options.exportPath(), options.dpi());
    return bWritten && writeMethods(options.methodsPath());
}

bool CVXLayoutBatch::placeSources(const CVXLayoutBatchOptions& options, bool bFigure)
{
    if (options.studyGrid().isRequested())
        return placeStudyGrid(options);
    // Vector pages and figures take every image at its own resolution, and marks measure the
    // sources; a plain raster page reads each image straight into its reduction.
    const bool bWholeImages = bFigure || options.figureMarks().isRequested()
                              || CVXSLayoutVectorPage::isVectorSuffix(suffixOf(options.exportPath()));
    if (!bWholeImages)
        return placeReducedImages(options.inputPaths());
    QVector<QImage> images;
    if (!readImages(options.inputPaths(), images)
        || !options.figureMarks().calibrate(options.inputPaths(), images, m_strError))
        return false;
    placeImages(images);
    options.figureMarks().mark(m_manager);
    return true;
}

QString CVXLayoutBatch::errorText() const
{
    return m_strError;
}

QString CVXLayoutBatch::reportLine() const
{
    return m_strReport;
}

QByteArray CVXLayoutBatch::provenance() const
{
    return CVXSLayoutProvenance::describe(m_provenance).toUtf8();
}

bool CVXLayoutBatch::chooseStyle(const QString& strStyle)
{
    CVXSLayoutWindow* pWindow = m_manager.getLayoutWindow();
    QComboBox* pCombo = pWindow->layoutStyleCombo();
    const int nStyle = pCombo->findText(strStyle);
    if (nStyle < 0) {
        m_strError = tr("Unknown layout style \"%1\". The layout styles are: %2.")
                         .arg(strStyle, CVXLayoutBatchOptions::quotedList(styleNames()));
        return false;
    }
    // As the user chooses it in the window's box.
    pCombo->setCurrentIndex(nStyle);
    pWindow->selChngLayoutStyle();
    return true;
}

bool CVXLayoutBatch::checkExportName(const QString& strPath)
{
    const QFileInfo info(strPath);
    if (!m_manager.isSupportedExtension(suffixOf(strPath)) && !CVXSLayoutVectorPage::isVectorSuffix(suffixOf(strPath))) {
        QStringList suffixes;
        for (const char* pSuffix : VXSExportFormats::AcceptedSuffixes)
            suffixes << QLatin1Char('.') + QString::fromLatin1(pSuffix);
        suffixes << QStringLiteral(".pdf") << QStringLiteral(".svg");
        m_strError = tr("Cannot export to \"%1\": the file name has to end in one of %2 (in any case).")
                         .arg(strPath, suffixes.join(QStringLiteral(", ")));
        return false;
    }
    if (info.fileName().length() > VXSExportFormats::MaxFileNameLength) {
        m_strError = tr("Cannot export to \"%1\": the file name is longer than %2 characters.")
                         .arg(strPath)
                         .arg(VXSExportFormats::MaxFileNameLength);
        return false;
    }
    return true;
}

bool CVXLayoutBatch::checkDpi(const QString& strPath, int nDpi)
{
    if (nDpi == 0 || DpiSuffixes.contains(suffixOf(strPath)))
        return true;
    m_strError = tr("--dpi applies to .bmp, .jpg, .png, .tif and .pdf files; \"%1\" has no resolution to set.")
                     .arg(QFileInfo(strPath).fileName());
    return false;
}

bool CVXLayoutBatch::checkMethodsName(const QString& strPath, const QString& strExportPath)
{
    if (strPath.isEmpty())
        return true;
    const QFileInfo info(strPath);
    if (info.absoluteFilePath() == QFileInfo(strExportPath).absoluteFilePath()) {
        m_strError = tr("The Methods paragraph cannot go to \"%1\": that is the output file.").arg(strPath);
        return false;
    }
    // Checked before anything is written, so that a bad name leaves no figure without its text.
    const QFileInfo folder(info.absolutePath());
    if (info.isDir() || !folder.isDir() || !folder.isWritable()) {
        m_strError = tr("Cannot write the Methods paragraph to \"%1\": no writable file there.").arg(strPath);
        return false;
    }
    return true;
}

bool CVXLayoutBatch::writeMethods(const QString& strPath)
{
    if (strPath.isEmpty())
        return true;
    QSaveFile file(strPath);
    if (!file.open(QIODevice::WriteOnly)
        || file.write(CVXSLayoutProvenance::methodsParagraph(m_provenance).toUtf8()) < 0 || !file.commit()) {
        m_strError = tr("Wrote the figure, but cannot write the Methods paragraph to \"%1\": %2")
                         .arg(strPath, file.errorString());
        return false;
    }
    return true;
}

bool CVXLayoutBatch::checkCellCount(int nImages)
{
    const int nStyle = m_manager.currentStyle();
    const int nCells = m_manager.getCellCount(nStyle);
    if (nStyle == VXSLayout::FreeStyle || nImages <= nCells)
        return true;
    const QString strCells = nCells == 1 ? tr("1 cell") : tr("%1 cells").arg(nCells);
    m_strError = tr("%1 image files given, but \"%2\" has %3 only.")
                     .arg(nImages)
                     .arg(m_manager.getLayoutWindow()->layoutStyleCombo()->itemText(nStyle), strCells);
    return false;
}

bool CVXLayoutBatch::sizePage(const QSize& sceneSize)
{
    // The view sets its scene to its own size less its frame, and the cells follow the
    // view's size.
    CVXSLayoutView* pView = m_manager.getLayoutView();
    pView->resize(sceneSize + ViewFrame);
    deliverPendingResize(pView);
    deliverPendingResize(pView->viewport());
    if (pView->scene()->sceneRect() != QRectF(QPointF(0, 0), QSizeF(sceneSize))) {
        m_strError = tr("The page could not be given the size %1 x %2.").arg(sceneSize.width()).arg(sceneSize.height());
        return false;
    }
    return true;
}

void CVXLayoutBatch::deliverPendingResize(QWidget* pWidget)
{
    // Qt holds the resize event of a widget that was never shown back until it is shown;
    // deliver it as showing would. The view hears of its size through its viewport's event.
    QResizeEvent event(pWidget->size(), QSize());
    QCoreApplication::sendEvent(pWidget, &event);
    pWidget->setAttribute(Qt::WA_PendingResizeEvent, false);
}

bool CVXLayoutBatch::readImages(const QStringList& paths, QVector<QImage>& images)
{
    // Decoding is the costly part of reading and runs on every core.
    const QVector<DecodedFile> decoded = QtConcurrent::blockingMapped<QVector<DecodedFile>>(paths, decodeFile);
    QStringList errors;
    for (int i = 0; i < paths.size(); ++i) {
        const QImage& image = decoded[i].image;
        if (image.isNull()) {
            errors << tr("Cannot read \"%1\": %2").arg(paths[i], decoded[i].strError);
            continue;
        }
        qDebug("Read %s: %d x %d pixels", qPrintable(paths[i]), image.width(), image.height());
        images << image;
    }
    m_strError = errors.join(QLatin1Char('\n'));
    return errors.isEmpty();
}

void CVXLayoutBatch::placeImages(const QVector<QImage>& images)
{
    for (const QImage& image : images)
        placeImage(image, image.size());
}

CVXSLayoutItemImage* CVXLayoutBatch::placeImage(const QImage& image, const QSize& size)
{
    // As the window pastes: a new image item in the scene, placed by the manager by the
    // image's size.
    auto* pItem = new CVXSLayoutItemImage(image);
    pItem->setRect(QRectF(QPointF(0, 0), QSizeF(size)));
    m_manager.getScene()->addItem(pItem);
    m_manager.addImageItem(pItem, true);
    return pItem;
}

bool CVXLayoutBatch::placeReducedImages(const QStringList& paths)
{
    const QStringList reasons = CVXLayoutStreamedSources::place(
        paths, [this](const QSize& size) { return placeImage(QImage(), size); });
    QStringList errors;
    for (int i = 0; i < paths.size(); ++i) {
        if (!reasons[i].isEmpty())
            errors << tr("Cannot read \"%1\": %2").arg(paths[i], reasons[i]);
    }
    m_strError = errors.join(QLatin1Char('\n'));
    return errors.isEmpty();
}

bool CVXLayoutBatch::placeStudyGrid(const CVXLayoutBatchOptions& options)
{
    CVXLayoutStudyGrid grid;
    if (!grid.place(m_manager, options.studyGrid(), options.inputPaths())) {
        m_strError = grid.errorText();
        return false;
    }
    return true;
}

bool CVXLayoutBatch::exportPage(QString strPath, int nDpi)
{
    if (CVXSLayoutVectorPage::isVectorSuffix(suffixOf(strPath)))
        return exportVectorPage(strPath, nDpi);
    QImage page = m_manager.renderLayoutImage(VXSExportFormats::ExportScale);
    if (page.isNull()) {
        m_strError = tr("Image could not be created!");
        return false;
    }
    if (nDpi > 0) {
        page.setDotsPerMeterX(dotsPerMeter(nDpi));
        page.setDotsPerMeterY(dotsPerMeter(nDpi));
    }
    CVXSImageExporter exporter;
    const tag_estatus status = exporter.saveImage(page, strPath);
    if (status != eSTATUS_SUCCESS)
        return failedToWrite(strPath, status, exporter.errorText());
    m_provenance = CVXSLayoutProvenance::keysOf(page);
    m_strReport = tr("Wrote %1 (%2 x %3 pixels)").arg(strPath).arg(page.width()).arg(page.height());
    return true;
}

bool CVXLayoutBatch::exportVectorPage(const QString& strPath, int nDpi)
{
    const CVXSLayoutRenderer renderer(*m_manager.getScene(), m_manager.getLayoutView());
    const CVXSLayoutVectorPage page(renderer);
    const QString strTitle = QFileInfo(strPath).completeBaseName();
    // Without --dpi the page is described at the resolution raster files get.
    const int nPageDpi = nDpi > 0 ? nDpi : CVXSLayoutRenderer::rasterDpi();
    const QByteArray data = suffixOf(strPath) == QLatin1String("pdf") ? page.pdf(nPageDpi, strTitle) : page.svg(strTitle);
    if (data.isEmpty()) {
        m_strError = tr("Image could not be created!");
        return false;
    }
    CVXSImageExporter exporter;
    const tag_estatus status = exporter.saveData(data, strPath);
    if (status != eSTATUS_SUCCESS)
        return failedToWrite(strPath, status, exporter.errorText());
    m_provenance =
        CVXSLayoutProvenance(*m_manager.getScene(), m_manager.getLayoutView(), m_manager.currentStyle(), renderer.pageSize())
            .keys();
    m_strReport = tr("Wrote %1 (%2 x %3 points)").arg(strPath).arg(page.pointSize().width()).arg(page.pointSize().height());
    return true;
}

bool CVXLayoutBatch::exportFigure(const CVXLayoutFigureSize& size, const QString& strPath)
{
    CVXSFigureFile figure(m_manager, size.page());
    if (!figure.write(strPath))
        return failedToWrite(strPath, figure.status(), figure.errorText());
    m_provenance = figure.provenance();
    m_strReport = size.reportLine(strPath, figure);
    return true;
}

bool CVXLayoutBatch::failedToWrite(const QString& strPath, tag_estatus status, const QString& strDetail)
{
    // The status's text, then the exporter's detail with the system's own reason.
    m_strError = tr("Cannot write \"%1\": %2").arg(strPath, vxStatusText(status)) + QLatin1Char('\n') + strDetail;
    return false;
}
