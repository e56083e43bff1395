#include "figure/export/VXSFigureExportDialog.h"

#include "figure/export/VXSFigureFile.h"
#include "figure/properties/VXSFigurePresets.h"
#include "figure/properties/VXSPageEditor.h"
#include "output/VXSLayoutRenderer.h"
#include "VXSLayoutManager.h"
#include "VXSLayoutView.h"

#include <VXPreference.h>
#include <VXSErrorHandler.h>
#include <VXSMessageBox.h>
#include <VXSSettings.h>
#include <VXUtilityFns.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QDoubleSpinBox>
#include <QFileDialog>
#include <QFileInfo>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QSpinBox>

namespace {

struct Format
{
    const char* pName;
    const char* pSuffix;
};

const Format Formats[] = {{"PDF", "pdf"}, {"SVG", "svg"}, {"TIFF", "tif"}, {"PNG", "png"}};
constexpr int TiffFormat = 2;

// Wide enough to take any value typed, so that one out of range gets its message.
constexpr double MaxTypedWidth = 99999.9;
constexpr int MaxTypedDpi = 99999;

bool isFigureSuffix(const QString& strSuffix)
{
    for (const Format& format : Formats) {
        if (strSuffix == QLatin1String(format.pSuffix))
            return true;
    }
    return strSuffix == QLatin1String("tiff");
}

QString exportFolder()
{
    return CVXPreference::getSettings()->getRecentFilePath();
}

} // namespace

CVXSFigureExportDialog::CVXSFigureExportDialog(const CVXSLayoutManager& manager, const CVXSFigurePage& page,
                                               QWidget* pParent)
    : QDialog(pParent)
    , m_manager(manager)
{
    setObjectName(QStringLiteral("figureExportDialog"));
    setWindowTitle(tr("Export Figure"));
    auto* pForm = new QFormLayout(this);

    m_pWidthPresets = new QComboBox(this);
    m_pWidthPresets->setObjectName(QStringLiteral("exportWidthPreset"));
    CVXSFigurePresets::addWidths(m_pWidthPresets);
    m_pWidth = new QDoubleSpinBox(this);
    m_pWidth->setObjectName(QStringLiteral("exportWidthMm"));
    m_pWidth->setRange(0.0, MaxTypedWidth);
    m_pWidth->setDecimals(1);
    m_pWidth->setSuffix(tr(" mm"));
    m_pWidth->setValue(page.dWidthMm);
    m_pDpiPresets = new QComboBox(this);
    m_pDpiPresets->setObjectName(QStringLiteral("exportDpiPreset"));
    CVXSFigurePresets::addResolutions(m_pDpiPresets);
    m_pDpi = new QSpinBox(this);
    m_pDpi->setObjectName(QStringLiteral("exportDpi"));
    m_pDpi->setRange(0, MaxTypedDpi);
    m_pDpi->setSuffix(tr(" dpi"));
    m_pDpi->setValue(page.nDpi);
    m_pSize = new QLabel(this);
    m_pSize->setObjectName(QStringLiteral("exportSize"));
    m_pFormat = new QComboBox(this);
    m_pFormat->setObjectName(QStringLiteral("exportFormat"));
    addFormats();
    m_pCompression = new QComboBox(this);
    m_pCompression->setObjectName(QStringLiteral("exportTiffCompression"));
    m_pCompression->addItem(tr("LZW"), int(CVXSImageExporter::TiffCompression::Lzw));
    m_pCompression->addItem(tr("Deflate"), int(CVXSImageExporter::TiffCompression::Deflate));
    m_pFileName = new QLineEdit(QDir(exportFolder()).filePath(QStringLiteral("figure.pdf")), this);
    m_pFileName->setObjectName(QStringLiteral("exportFileName"));
    auto* pBrowse = new QPushButton(tr("Browse..."), this);
    pBrowse->setObjectName(QStringLiteral("exportBrowse"));
    auto* pFileRow = new QHBoxLayout;
    pFileRow->addWidget(m_pFileName);
    pFileRow->addWidget(pBrowse);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Cancel, this);
    QPushButton* pExport = pButtons->addButton(tr("Export"), QDialogButtonBox::AcceptRole);
    pExport->setObjectName(QStringLiteral("exportButton"));
    pExport->setDefault(true);

    pForm->addRow(tr("Figure width:"), m_pWidthPresets);
    pForm->addRow(QString(), m_pWidth);
    pForm->addRow(tr("Resolution:"), m_pDpiPresets);
    pForm->addRow(QString(), m_pDpi);
    pForm->addRow(tr("Size:"), m_pSize);
    pForm->addRow(tr("Format:"), m_pFormat);
    pForm->addRow(tr("TIFF compression:"), m_pCompression);
    pForm->addRow(tr("File:"), pFileRow);
    pForm->addRow(pButtons);

    CVXSFigurePresets::drive(m_pWidthPresets, m_pWidth);
    CVXSFigurePresets::drive(m_pDpiPresets, m_pDpi);
    connect(m_pWidth, QOverload<double>::of(&QDoubleSpinBox::valueChanged), this,
            &CVXSFigureExportDialog::valuesChanged);
    connect(m_pDpi, QOverload<int>::of(&QSpinBox::valueChanged), this, &CVXSFigureExportDialog::valuesChanged);
    connect(m_pFormat, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &CVXSFigureExportDialog::formatChanged);
    connect(pBrowse, &QPushButton::clicked, this, &CVXSFigureExportDialog::browse);
    connect(pButtons, &QDialogButtonBox::accepted, this, &CVXSFigureExportDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &CVXSFigureExportDialog::reject);
    valuesChanged();
    formatChanged();
}

void CVXSFigureExportDialog::addFormats()
{
    for (const Format& format : Formats)
        m_pFormat->addItem(QString::fromLatin1(format.pName), QString::fromLatin1(format.pSuffix));
}

CVXSFigurePage CVXSFigureExportDialog::figurePage() const
{
    CVXSFigurePage page;
    page.dWidthMm = m_pWidth->value();
    page.nDpi = m_pDpi->value();
    return page;
}

void CVXSFigureExportDialog::valuesChanged()
{
    const CVXSFigurePage page = figurePage();
    CVXSFigurePresets::select(m_pWidthPresets, page.dWidthMm);
    CVXSFigurePresets::select(m_pDpiPresets, page.nDpi);
    const CVXSLayoutView* pView = m_manager.getLayoutView();
    m_pSize->setText(CVXSPageEditor::sizeText(page, CVXSLayoutRenderer(*pView->scene(), pView).pageSize()));
}

QString CVXSFigureExportDialog::suffix() const
{
    return m_pFormat->currentData().toString();
}

void CVXSFigureExportDialog::formatChanged()
{
    m_pCompression->setEnabled(m_pFormat->currentIndex() == TiffFormat);
    // A name ending in another figure format's suffix follows the format chosen.
    const QString strName = m_pFileName->text();
    const QFileInfo info(strName);
    if (isFigureSuffix(info.suffix().toLower()))
        m_pFileName->setText(strName.left(strName.size() - info.suffix().size()) + suffix());
}

QString CVXSFigureExportDialog::fileFilter(int nFormat)
{
    return tr("%1 files (*.%2)").arg(QString::fromLatin1(Formats[nFormat].pName), QString::fromLatin1(Formats[nFormat].pSuffix));
}

void CVXSFigureExportDialog::browse()
{
    QStringList filters;
    for (int i = 0; i < m_pFormat->count(); ++i)
        filters << fileFilter(i);
    QString strFilter = fileFilter(m_pFormat->currentIndex());
    const QString strChosen = QFileDialog::getSaveFileName(this, tr("Export Figure"), filePath(),
                                                           filters.join(QStringLiteral(";;")), &strFilter,
                                                           QFileDialog::DontConfirmOverwrite);
    if (strChosen.isEmpty())
        return;
    m_pFileName->setText(strChosen);
    m_pFormat->setCurrentIndex(qMax(0, filters.indexOf(strFilter)));
}

QString CVXSFigureExportDialog::filePath() const
{
    QString strPath = m_pFileName->text().trimmed();
    if (strPath.isEmpty())
        return strPath;
    strPath = QDir(exportFolder()).absoluteFilePath(strPath);
    const QString strSuffix = QFileInfo(strPath).suffix().toLower();
    const bool bTiff = suffix() == QLatin1String("tif") && strSuffix == QLatin1String("tiff");
    if (strSuffix != suffix() && !bTiff)
        strPath += QLatin1Char('.') + suffix();
    return strPath;
}

QString CVXSFigureExportDialog::problem() const
{
    const CVXSFigurePage page = figurePage();
    if (page.dWidthMm < CVXSFigurePage::MinWidthMm || page.dWidthMm > CVXSFigurePage::MaxWidthMm)
        return tr("The figure width has to be from %1 to %2 mm; %3 mm cannot be exported.")
            .arg(CVXSFigurePage::MinWidthMm)
            .arg(CVXSFigurePage::MaxWidthMm)
            .arg(page.dWidthMm);
    if (page.nDpi < CVXSFigurePage::MinDpi || page.nDpi > CVXSFigurePage::MaxDpi)
        return tr("The resolution has to be from %1 to %2 dpi; %3 dpi cannot be exported.")
            .arg(CVXSFigurePage::MinDpi)
            .arg(CVXSFigurePage::MaxDpi)
            .arg(page.nDpi);
    if (filePath().isEmpty())
        return tr("Enter the name of the file to export the figure to.");
    if (QFileInfo(filePath()).isDir())
        return tr("%1 is a folder. Enter the name of a file.").arg(filePath());
    return QString();
}

void CVXSFigureExportDialog::accept()
{
    const QString strProblem = problem();
    if (!strProblem.isEmpty()) {
        CVXSMessageBox::warning(this, CVXUtilityFns::getAppName(), strProblem, QString());
        return;
    }
    const QString strPath = filePath();
    CVXPreference::getSettings()->setRecentFilePath(QFileInfo(strPath).absolutePath());
    if (mayReplace(strPath) && write(strPath))
        QDialog::accept();
}

bool CVXSFigureExportDialog::mayReplace(const QString& strPath)
{
    if (!QFileInfo::exists(strPath))
        return true;
    const int nAnswer = CVXSMessageBox::question(this, CVXUtilityFns::getAppName(),
                                                 tr("%1 exists already.\nReplace it?").arg(strPath),
                                                 QMessageBox::Yes,
                                                 QMessageBox::No | QMessageBox::Default | QMessageBox::Escape);
    return nAnswer == 0;
}

bool CVXSFigureExportDialog::write(const QString& strPath)
{
    CVXSFigureFile figure(m_manager, figurePage());
    const auto eCompression = CVXSImageExporter::TiffCompression(m_pCompression->currentData().toInt());
    if (figure.write(strPath, eCompression))
        return true;
    // The status's text comes first; the file and the reason follow it.
    CVXSErrorHandler::errorMessage(this, figure.status(), figure.errorText());
    return false;
}
