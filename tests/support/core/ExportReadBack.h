#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <QStringList>

// Reads an exported page back to pixels the way others will read it: Qt's readers for bmp,
// jpg, png and tif, and outside programs for the rest (Ghostscript for eps, libwmf and
// emf2svg with librsvg for wmf and emf, dcmtk for dcm). The programs' intermediate files go
// beside the file.
class ExportReadBack
{
public:
    // The page as RGB32, or a null image with the reason in errorText(). The metafile
    // readers need the page's size: emf2svg cuts the last row and column off its canvas.
    QImage read(const QString& strPath, const QSize& size);
    QString errorText() const;

    // The programs read() needs for the suffix that are not installed.
    static QStringList missingPrograms(const QString& strSuffix);

private:
    QImage readEps(const QString& strPath);
    QImage readMetafile(const QString& strPath, const QString& strSuffix, const QSize& size);
    QImage readDicom(const QString& strPath);
    QImage readConverted(const QString& strPng);
    bool run(const QString& strProgram, const QStringList& arguments);

    QString m_strError;
};
