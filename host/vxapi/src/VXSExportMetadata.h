#pragma once

#include <QDateTime>
#include <QImage>
#include <QString>
#include <QStringList>

// What an image's text keys (see CVXImageProvenance) say about it as a whole, in the terms
// the export formats' standard fields take: its sources, a one-line description, the
// program that made it and when.
class CVXSExportMetadata
{
public:
    // The prefixes under which the image names its sources: none for an image from a single
    // source, "Image n " for each image of a layout figure.
    static QStringList sourcePrefixes(const QImage& image);
    // The file of every source named, in that order.
    static QStringList sources(const QImage& image);
    // "Image layout of 2 images: scan.dcm frame 2; photo.png", or "Exported from" the single
    // source; empty when the image names none.
    static QString description(const QImage& image);
    // The Software and Software Version keys, or this program's name.
    static QString software(const QImage& image);
    // The Date key, or now; with its offset from UTC.
    static QDateTime created(const QImage& image);
};
