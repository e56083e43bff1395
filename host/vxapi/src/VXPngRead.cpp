#include "VXPngRead.h"

#include <QIODevice>

namespace {

void readFromDevice(png_structp pPng, png_bytep pData, png_size_t nLength)
{
    auto* pDevice = static_cast<QIODevice*>(png_get_io_ptr(pPng));
    if (pDevice->read(reinterpret_cast<char*>(pData), qint64(nLength)) != qint64(nLength))
        png_error(pPng, "Read Error");
}

[[noreturn]] void stopReading(png_structp pPng, png_const_charp)
{
    png_longjmp(pPng, 1);
}

void dropWarning(png_structp, png_const_charp)
{
}

} // namespace

png_structp VXPngRead::create(QIODevice& device, png_infop* ppInfo)
{
    png_structp pPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, &stopReading, &dropWarning);
    *ppInfo = pPng ? png_create_info_struct(pPng) : nullptr;
    if (!*ppInfo) {
        png_destroy_read_struct(&pPng, nullptr, nullptr);
        return nullptr;
    }
    png_set_read_fn(pPng, &device, &readFromDevice);
    return pPng;
}

void VXPngRead::trustChunkChecksums(png_structp pPng)
{
    png_set_option(pPng, PNG_IGNORE_ADLER32, PNG_OPTION_ON);
}

bool VXPngRead::readInfo(png_structp pPng, png_infop pInfo)
{
    if (setjmp(png_jmpbuf(pPng)))
        return false;
    png_read_info(pPng, pInfo);
    return true;
}

bool VXPngRead::updateInfo(png_structp pPng, png_infop pInfo)
{
    if (setjmp(png_jmpbuf(pPng)))
        return false;
    png_read_update_info(pPng, pInfo);
    return true;
}

bool VXPngRead::readRows(png_structp pPng, png_bytepp ppRows, int nRows)
{
    if (setjmp(png_jmpbuf(pPng)))
        return false;
    png_read_rows(pPng, ppRows, nullptr, png_uint_32(nRows));
    return true;
}

bool VXPngRead::readAllRows(png_structp pPng, png_infop pInfo, png_bytep pRow)
{
    if (setjmp(png_jmpbuf(pPng)))
        return false;
    const int nPasses = png_set_interlace_handling(pPng);
    png_read_update_info(pPng, pInfo);
    const png_uint_32 nHeight = png_get_image_height(pPng, pInfo);
    for (int nPass = 0; nPass < nPasses; ++nPass) {
        for (png_uint_32 nRow = 0; nRow < nHeight; ++nRow)
            png_read_row(pPng, pRow, nullptr);
    }
    return true;
}

bool VXPngRead::readEnd(png_structp pPng, png_infop pEndInfo)
{
    if (setjmp(png_jmpbuf(pPng)))
        return false;
    png_read_end(pPng, pEndInfo);
    return true;
}
