#pragma once

#include "VxApiGlobal.h"

#include <QString>

class QIODevice;

// Goes through PNG data with libpng the way a decoder does, keeping one row at a time, before
// Qt's decoder gets it: that one leaves libpng's errors to libpng, which prints them on the
// terminal next to our own message, and it takes the memory of the whole image before it
// finds that the data cannot fill it. Data that passes here decodes without either.
class VXAPI_EXPORT CVXPngCheck
{
public:
    // True when the device's data starts with the PNG signature; reads nothing.
    static bool isPng(QIODevice& device);
    // Reads from the device's position through the chunks before the image data; false
    // when they are damaged. Enough to trust the size and format the header tells.
    static bool headerIsIntact(QIODevice& device);
    // Reads from the device's position through every row and the chunks after them; false
    // when anything a decoder needs is damaged or missing. The header's size must have been
    // found acceptable first: a row of it is held in memory.
    static bool dataIsIntact(QIODevice& device);
    // Qt's own words for image data that cannot be read, as its image reader says them.
    static QString damagedText();
};
