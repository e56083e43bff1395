#pragma once

#include <QByteArray>

// Adds an ImageDescription (tag 270) to the first image of a classic TIFF file, which Qt's
// TIFF writer leaves out: the description and a copy of the image's directory with the
// tag added are appended, and the header points to the new directory. The old directory
// stays as unused bytes; everything it pointed to is shared.
class CVXSTiffDescription
{
public:
    // False, with the file unchanged, when it is no classic TIFF or would pass 4 GiB.
    static bool insert(QByteArray& tiff, const QByteArray& description);
};
