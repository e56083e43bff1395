#pragma once

#include <QCoreApplication>
#include <QImage>
#include <QString>

// How messages name an image of the layout: the file it came from (CVXImageProvenance's
// Source), with its frame in a file of several.
class CVXSImageSourceName
{
    Q_DECLARE_TR_FUNCTIONS(CVXSImageSourceName)
public:
    static QString of(const QImage& image);
};
