#include "output/VXSLayoutOutputCommands.h"

#include "output/VXSExportFormats.h"
#include "output/VXSLayoutProvenance.h"
#include "output/VXSImageResampler.h"
#include "VXSLayoutItemImage.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"
#include "VXSLayoutWindow.h"
#include "progress/VXSLayoutProgress.h"

#include <VXPreference.h>
#include <VXSErrorHandler.h>
#include <VXSImageExporter.h>
#include <VXSMessageBox.h>
#include <VXSSettings.h>
#include <VXUtilityFns.h>

#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGraphicsScene>
#include <QGuiApplication>
#include <QMessageBox>
#include <QPainter>
#include <QPixmap>
#include <QPrintDialog>
#include <QPrinter>
#include <QtConcurrent>

#include <functional>
#include <utility>

CVXSLayoutOutputCommands::CVXSLayoutOutputCommands(const CVXSLayoutManager& manager, QPrinter& printer)
    : m_manager(manager)
    , m_printer(printer)
{
}

QImage CVXSLayoutOutputCommands::renderLayoutImage(double dScale) const
{
    const CVXSLayoutView* pView = m_manager.getLayoutView();
    if (!pView || !pView->scene())
        return QImage();
    const CVXSLayoutRenderer renderer(*pView->scene(), pView);
    QImage page = blankPage(renderer.deviceSize(dScale));
    if (page.isNull())
        return QImage();
    paintPage(renderer, renderer.pageItems(), dScale, page);
    return withProvenance(renderer, std::move(page));
}

QImage CVXSLayoutOutputCommands::renderWithProgress(double dScale, const QString& strLabel, bool bCancellable,
                                                    bool& bCancelled) const
{
    bCancelled = false;
    const CVXSLayoutView* pView = m_manager.getLayoutView();
    if (!pView || !pView->scene())
        return QImage();
    CVXSLayoutRenderer renderer(*pView->scene(), pView);
    // The page's pixels are taken first: a page too large for memory fails before any work.
    QImage page = blankPage(renderer.deviceSize(dScale));
    if (page.isNull())
        return QImage();
    // What the page shows is gathered here; the worker reduces the images, the costly part
    // of rendering large images, and draws the page, while the dialog holds the layout still.
    const QVector<QGraphicsItem*> items = renderer.pageItems();
    QVector<QPair<QImage, QSize>> sources;
    for (QGraphicsItem* pItem : items) {
        if (pItem->type() == VXSLayout::ImageItemType)
            sources.append({static_cast<CVXSLayoutItemImage*>(pItem)->getImage(),
                            CVXSLayoutRenderer::imageTarget(pItem, dScale).size()});
    }
    const bool bDone = CVXSLayoutProgress::run(
        m_manager.getLayoutWindow(), strLabel, bCancellable, [&](const CVXSLayoutProgress::CancelFlag& cancelled) {
            const std::function<QImage(const QPair<QImage, QSize>&)> reduce = [&cancelled](const QPair<QImage, QSize>& source) {
                return cancelled ? QImage() : CVXSImageResampler::scaled(source.first, source.second);
            };
            const QVector<QImage> images = QtConcurrent::blockingMapped<QVector<QImage>>(sources, reduce);
            if (cancelled)
                return;
            CVXSLayoutRenderer::ReducedImages reduced;
            for (int i = 0; i < sources.size(); ++i)
                reduced.insert(CVXSLayoutRenderer::reducedKey(sources[i].first, sources[i].second), images[i]);
            renderer.setReducedImages(reduced);
            paintPage(renderer, items, dScale, page);
        });
    bCancelled = !bDone;
    return bDone ? withProvenance(renderer, std::move(page)) : QImage();
}

QImage CVXSLayoutOutputCommands::blankPage(const QSize& size)
{
    // The format of the platform's pixmaps, on which output used to be drawn.
    return QImage(size, QPixmap(1, 1).toImage().format());
}

void CVXSLayoutOutputCommands::paintPage(const CVXSLayoutRenderer& renderer, const QVector<QGraphicsItem*>& items,
                                         double dScale, QImage& page)
{
    QPainter painter(&page);
    renderer.render(painter, dScale, items);
}

QImage CVXSLayoutOutputCommands::withProvenance(const CVXSLayoutRenderer& renderer, QImage page) const
{
    const CVXSLayoutView* pView = m_manager.getLayoutView();
    return CVXSLayoutProvenance(*pView->scene(), pView, m_manager.currentStyle(), renderer.pageSize())
        .attachedTo(std::move(page));
}

void CVXSLayoutOutputCommands::exportLayout() const
{
    while (exportOnce()) {
    }
}

bool CVXSLayoutOutputCommands::exportOnce() const
{
    QStringList filters;
    for (const VXSExportFormats::Format& format : VXSExportFormats::Formats)
        filters << QString::fromLatin1(format.pFilter);
    QString strFilter = filters.join(QStringLiteral(";;"));
    CVXPreference::modifySaveFilterByPreference(strFilter);
    CVXSSettings* pSettings = CVXPreference::getSettings();

    QString strSelectedFilter;
    const QString strChosen = QFileDialog::getSaveFileName(nullptr, tr("Export layout view as..."),
                                                           pSettings->getRecentFilePath(), strFilter,
                                                           &strSelectedFilter, QFileDialog::DontConfirmOverwrite);
    if (strChosen.isEmpty())
        return false;

    // Remembered before any check, also when this export is abandoned below.
    QString strFormat = strSelectedFilter.mid(strSelectedFilter.indexOf(QLatin1Char('.')) + 1);
    strFormat.remove(QLatin1Char(')'));
    CVXPreference::setUsersPreferredFormat(strFormat);
    pSettings->setRecentFilePath(QFileInfo(strChosen).absolutePath());

    const QString strFileName = withExtension(strChosen, strSelectedFilter);
    const QString strName = QFileInfo(strFileName).fileName();
    if (strName.length() > VXSExportFormats::MaxFileNameLength)
        return askForShorterName(strName);

    if (QFileInfo::exists(strFileName)) {
        const int nAnswer = CVXSMessageBox::information(
            m_manager.getLayoutView(), CVXUtilityFns::getAppName(),
            tr("File: ") + strFileName + tr(" exists in the specified path.\nOverwrite existing file?"),
            QMessageBox::Yes, QMessageBox::No | QMessageBox::Default, QMessageBox::Cancel | QMessageBox::Escape);
        if (nAnswer != 0)
            return nAnswer == 1;
    }
    writeImage(strFileName);
    return false;
}

QString CVXSLayoutOutputCommands::withExtension(QString strFileName, const QString& strSelectedFilter)
{
    const QString strSuffix = QFileInfo(strFileName).suffix().toLower();
    if (strSuffix.isEmpty() && strFileName.endsWith(QLatin1Char('.')))
        strFileName.chop(1);
    if (isSupportedExtension(strSuffix))
        return strFileName;
    // An unknown suffix is kept: plot.txt with the PNG filter becomes plot.txt.png.
    const QString strExtension = getExtensionForFilter(strSelectedFilter);
    if (!strExtension.isEmpty() && (strSuffix.isEmpty() || strSuffix != strExtension))
        strFileName += QLatin1Char('.') + strExtension;
    return strFileName;
}

bool CVXSLayoutOutputCommands::askForShorterName(const QString& strName) const
{
    const int nHalf = strName.length() / 2;
    const int nAnswer = CVXSMessageBox::information(
        m_manager.getLayoutView(), CVXUtilityFns::getAppName(),
        tr("The path you entered, \n' %1  \n %2 ',\nis too long. Enter a shorter path")
            .arg(strName.left(nHalf), strName.mid(nHalf)),
        QMessageBox::Ok | QMessageBox::Default);
    return nAnswer == 0;
}

void CVXSLayoutOutputCommands::writeImage(QString strFileName) const
{
    // Until the file is written the export may stop; writing it replaces the file at once.
    bool bCancelled = false;
    QImage image = renderWithProgress(VXSExportFormats::ExportScale, tr("Exporting the layout..."), true, bCancelled);
    if (bCancelled)
        return;
    if (image.isNull()) {
        CVXSMessageBox::error(m_manager.getLayoutView(), CVXUtilityFns::getAppName(),
                              tr("Image could not be created!"), QMessageBox::Ok);
        return;
    }
    CVXSImageExporter exporter;
    tag_estatus status = eSTATUS_SUCCESS;
    CVXSLayoutProgress::run(m_manager.getLayoutWindow(), tr("Exporting the layout..."), false,
                            [&](const CVXSLayoutProgress::CancelFlag&) { status = exporter.saveImage(image, strFileName); });
    // The status's text comes first; the file and the system's reason follow it.
    if (status != eSTATUS_SUCCESS)
        CVXSErrorHandler::errorMessage(m_manager.getLayoutView(), status, exporter.errorText());
}

void CVXSLayoutOutputCommands::printLayout(int nPrintMode) const
{
    QPrintDialog dialog(&m_printer, nullptr);
    dialog.setMinMax(1, 1);
    if (dialog.exec() != QDialog::Accepted)
        return;

    QPainter painter;
    if (!painter.begin(&m_printer)) {
        CVXSErrorHandler::errorMessage(m_manager.getLayoutWindow(), eSTATUS_PRINTER_NOT_STARTED, QString());
        return;
    }
    // The printer has started: the page is printed to its end.
    bool bCancelled = false;
    const QImage image = renderWithProgress(VXSExportFormats::PrintScale, tr("Printing the layout..."), false, bCancelled);
    // Half an inch of margin on every side.
    const int nMarginX = m_printer.logicalDpiX() / 2;
    const int nMarginY = m_printer.logicalDpiY() / 2;
    const QSize size = printedSize(image.size(), m_printer, m_manager.getLayoutView(), nPrintMode);
    painter.drawRect(nMarginX - 2, nMarginY - 2, size.width() + 4, size.height() + 4);
    painter.drawImage(QRect(QPoint(nMarginX, nMarginY), size), image);
    painter.end();
}

QSize CVXSLayoutOutputCommands::printedSize(const QSize& imageSize, QPrinter& printer, const QWidget* pScreenWidget,
                                            int nPrintMode)
{
    if (imageSize.isEmpty())
        return QSize(0, 0);
    if (nPrintMode == 1) {
        // The size the page has on screen; without a view the screen is taken as the printer.
        const int nScreenDpiX = pScreenWidget ? pScreenWidget->logicalDpiX() : printer.logicalDpiX();
        const int nScreenDpiY = pScreenWidget ? pScreenWidget->logicalDpiY() : printer.logicalDpiY();
        return QSize(imageSize.width() * printer.logicalDpiX() / nScreenDpiX,
                     imageSize.height() * printer.logicalDpiY() / nScreenDpiY);
    }
    const double dPageWidth = printer.widthMM() / 25.4 * printer.logicalDpiX();
    const double dPageHeight = printer.heightMM() / 25.4 * printer.logicalDpiY();
    const int nMarginX = printer.logicalDpiX() / 2;
    const int nMarginY = printer.logicalDpiY() / 2;
    const double f = qMin((dPageWidth - 2 * nMarginX) / imageSize.width(),
                          (dPageHeight - 2 * nMarginY) / imageSize.height());
    return QSize(int(imageSize.width() * f + 0.5), int(imageSize.height() * f + 0.5));
}

void CVXSLayoutOutputCommands::copyToClipboard() const
{
    const QImage image = renderLayoutImage(VXSExportFormats::ClipboardScale);
    if (image.isNull())
        return;
    // Trimming one pixel all round drops the black top and left lines of the page.
    const QRect r = image.rect();
    QGuiApplication::clipboard()->setImage(image.copy(QRect(QPoint(r.left() + 1, r.top() + 1),
                                                            QPoint(r.right() - 1, r.bottom() - 1))),
                                           QClipboard::Clipboard);
}

bool CVXSLayoutOutputCommands::isSupportedExtension(const QString& strSuffix)
{
    for (const char* pSuffix : VXSExportFormats::AcceptedSuffixes) {
        if (strSuffix == QLatin1String(pSuffix))
            return true;
    }
    return false;
}

QString CVXSLayoutOutputCommands::getExtensionForFilter(const QString& strFilter)
{
    for (const VXSExportFormats::Format& format : VXSExportFormats::Formats) {
        if (strFilter == QLatin1String(format.pFilter))
            return QString::fromLatin1(format.pSuffix);
    }
    return QString();
}
