#pragma once

#include <png.h>

class QIODevice;

// libpng reading from a QIODevice, quietly: its errors end the call that met them, which
// then returns false, and its warnings are dropped, so that the caller reports once, in its
// own words. libpng reports errors by longjmp, so the calls that may meet one are made
// here, in frames that hold no object with a destructor.
namespace VXPngRead {

// A read struct with its info struct, reading from the device's position; null when libpng
// cannot start. Free with png_destroy_read_struct.
png_structp create(QIODevice& device, png_infop* ppInfo);
// Leaves out zlib's Adler-32 over the decoded bytes: each chunk's CRC-32 already guards what
// storage or transfer may damage, and the second pass costs a tenth of decoding a large
// source. Only a writer's own fault (a wrong Adler-32 under right CRCs) then goes unseen; the
// pixels are still the ones the stream holds. Layout files' images keep both checks.
void trustChunkChecksums(png_structp pPng);
// The chunks before the image data.
bool readInfo(png_structp pPng, png_infop pInfo);
// Applies the transformations set since readInfo.
bool updateInfo(png_structp pPng, png_infop pInfo);
// The next nRows rows of a non-interlaced image.
bool readRows(png_structp pPng, png_bytepp ppRows, int nRows);
// Every row of the image, interlaced or not, into one row buffer of the header's row size.
bool readAllRows(png_structp pPng, png_infop pInfo, png_bytep pRow);
// The chunks after the image data, to the end of the file.
bool readEnd(png_structp pPng, png_infop pEndInfo);

} // namespace VXPngRead
