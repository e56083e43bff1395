#pragma once

#include <QImage>

// One page of an image file as the host opens it: the picture shown by default and, where
// that picture was made from grey levels it cannot show as they are (16 bits, a DICOM
// file's stored values), those levels, for a display range to be set on them.
struct CVXImagePage
{
    QImage picture;
    // Grayscale8 or Grayscale16 of the picture's size; null where the picture is its own
    // levels (8-bit grey) or has none (colour).
    QImage levels;
};
