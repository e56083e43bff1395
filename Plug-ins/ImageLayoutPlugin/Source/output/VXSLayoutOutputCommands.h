#pragma once

#include "output/VXSLayoutRenderer.h"

#include <QCoreApplication>
#include <QImage>
#include <QSize>
#include <QString>

class QPrinter;
class QWidget;
class CVXSLayoutManager;

// The layout leaving the program: rendered to a raster image, exported to a file the user
// chooses with the export dialog and its checks, printed on one page, copied to the
// clipboard. The texts are the layout manager's and keep its translation context.
class CVXSLayoutOutputCommands
{
    Q_DECLARE_TR_FUNCTIONS(CVXSLayoutManager)
public:
    // Prints on the manager's printer, so that one print set-up serves every print job.
    CVXSLayoutOutputCommands(const CVXSLayoutManager& manager, QPrinter& printer);

    // The page as a raster image at the scale (1.0 is the scene's own size plus one);
    // null without a view or when the page does not fit in memory.
    QImage renderLayoutImage(double dScale) const;
    void exportLayout() const;
    // nPrintMode 0 fits the page, 1 prints at the size shown.
    void printLayout(int nPrintMode) const;
    void copyToClipboard() const;
    static bool isSupportedExtension(const QString& strSuffix);
    static QString getExtensionForFilter(const QString& strFilter);

private:
    // Pixels for a page of the size, null when it does not fit in memory.
    static QImage blankPage(const QSize& size);
    static void paintPage(const CVXSLayoutRenderer& renderer, const QVector<QGraphicsItem*>& items, double dScale,
                          QImage& page);
    // The page with the text keys of where its images came from.
    QImage withProvenance(const CVXSLayoutRenderer& renderer, QImage page) const;
    // The same page, its images reduced and the page drawn on a worker thread behind a
    // progress dialog with the label; null with bCancelled set when the user pressed Cancel.
    QImage renderWithProgress(double dScale, const QString& strLabel, bool bCancellable, bool& bCancelled) const;
    // One round of the export dialog; true when the user asked to choose again.
    bool exportOnce() const;
    static QString withExtension(QString strFileName, const QString& strSelectedFilter);
    bool askForShorterName(const QString& strName) const;
    // By value: the host's image writer takes the name by reference.
    void writeImage(QString strFileName) const;
    static QSize printedSize(const QSize& imageSize, QPrinter& printer, const QWidget* pScreenWidget,
                             int nPrintMode);

    const CVXSLayoutManager& m_manager;
    QPrinter& m_printer;
};
