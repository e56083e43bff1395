#pragma once

#include "figure/VXSFigurePage.h"

#include <VXSImageExporter.h>

#include <QDialog>

class QComboBox;
class QDoubleSpinBox;
class QLabel;
class QLineEdit;
class QSpinBox;
class CVXSLayoutManager;

// "Export Figure": asks for the figure's width (journal presets or typed), its resolution, the
// format (PDF, SVG, TIFF with its compression, PNG) and the file, then writes the layout as
// that figure. Values out of range and files that cannot be written are said in a message,
// and the dialog stays open with everything as it was.
class CVXSFigureExportDialog : public QDialog
{
    Q_OBJECT
public:
    // Starts from the figure page's width and resolution.
    CVXSFigureExportDialog(const CVXSLayoutManager& manager, const CVXSFigurePage& page, QWidget* pParent = nullptr);

    // The file the figure goes to: the name given, in the recent export folder when it names
    // none, ending in the format's suffix.
    QString filePath() const;
    CVXSFigurePage figurePage() const;

    // Checks the values and writes the file; closes only when it is written.
    void accept() override;

private:
    void addFormats();
    void valuesChanged();
    void formatChanged();
    void browse();
    // Why the values cannot be exported, empty when they can.
    QString problem() const;
    bool mayReplace(const QString& strPath);
    bool write(const QString& strPath);
    QString suffix() const;
    static QString fileFilter(int nFormat);

    const CVXSLayoutManager& m_manager;
    QComboBox* m_pWidthPresets = nullptr;
    QDoubleSpinBox* m_pWidth = nullptr;
    QComboBox* m_pDpiPresets = nullptr;
    QSpinBox* m_pDpi = nullptr;
    QLabel* m_pSize = nullptr;
    QComboBox* m_pFormat = nullptr;
    QComboBox* m_pCompression = nullptr;
    QLineEdit* m_pFileName = nullptr;
};
