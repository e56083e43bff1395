#pragma once

#include <QString>
#include <QVector>

// The pixel sizes a TIFF file's pages state through their X resolution and a resolution unit
// of inch or centimetre. Qt's reader folds them into whole dots per metre and gives every
// image a resolution, stated or not, so the tags are read here.
class CVXTiffPixelSize
{
public:
    // One value per page in mm, 0 for a page that states none; empty when the file is no TIFF.
    static QVector<double> ofPages(const QString& strPath);
};
