#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QString>
#include <QStringList>
#include <QVector>

class QCommandLineParser;
class CVXSLayoutManager;

// The figure marks vxlayout puts on a page: panel letters (--panel-labels A|a), scale bars
// (--scale-bar auto|<length>) and the pixel size of sources that state none
// (--pixel-size <length>).
class CVXLayoutFigureOptions
{
    Q_DECLARE_TR_FUNCTIONS(CVXLayoutFigureOptions)
public:
    static void addOptions(QCommandLineParser& parser);
    // What --help says about the options.
    static QString description();

    // False with strError set when a value is not usable.
    bool parse(const QCommandLineParser& parser, QString& strError);

    // Whether any mark or pixel size was asked for.
    bool isRequested() const;
    // Gives the images without a pixel size the one given; with a scale bar asked for,
    // false with strError naming every file still without one.
    bool calibrate(const QStringList& paths, QVector<QImage>& images, QString& strError) const;
    // Puts the letters and bars on the images of the layout.
    void mark(CVXSLayoutManager& manager) const;

private:
    bool m_bPanelLabels = false;
    bool m_bLowerCase = false;
    bool m_bScaleBar = false;
    double m_dBarLengthMm = 0.0; // 0: automatic
    double m_dPixelSizeMm = 0.0; // 0: none given
};
