#pragma once

#include <figure/VXSFigurePage.h>

#include <QCommandLineOption>
#include <QCoreApplication>
#include <QString>

class QCommandLineParser;
class CVXSFigureFile;

// --width-mm: the page written as a figure of that width on paper, at the resolution --dpi
// gives (the figure page's default without it). Raster files come out exactly
// round(width / 25.4 x dpi) pixels wide and carry the resolution; pdf and svg pages are that
// wide.
class CVXLayoutFigureSize
{
    Q_DECLARE_TR_FUNCTIONS(CVXLayoutFigureSize)
public:
    static QCommandLineOption option();

    // Reads --width-mm from the parsed command line; nDpi is --dpi's value, 0 when none was
    // given. False with errorText() set when the width is not usable.
    bool parse(const QCommandLineParser& parser, int nDpi);
    bool isRequested() const;
    CVXSFigurePage page() const;
    QString errorText() const;

    // The line vxlayout prints for the figure written to the file.
    QString reportLine(const QString& strPath, const CVXSFigureFile& figure) const;

private:
    bool m_bRequested = false;
    CVXSFigurePage m_page;
    QString m_strError;
};
