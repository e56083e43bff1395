#include "VXPngCheck.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QIODevice>

#include <png.h>

namespace {

const QByteArray kSignature("\x89PNG\r\n\x1a\n", 8);

void readFromDevice(png_structp pPng, png_bytep pData, png_size_t nLength)
{
    auto* pDevice = static_cast<QIODevice*>(png_get_io_ptr(pPng));
    if (pDevice->read(reinterpret_cast<char*>(pData), qint64(nLength)) != qint64(nLength))
        png_error(pPng, "Read Error");
}

// libpng's errors end the reading silently, its warnings are dropped: the caller reports
// once, in its own words.
[[noreturn]] void stopReading(png_structp pPng, png_const_charp)
{
    png_longjmp(pPng, 1);
}

void dropWarning(png_structp, png_const_charp)
{
}

// libpng reports errors by longjmp, so these frames hold no object with a destructor.
bool readHeader(png_structp pPng, png_infop pInfo)
{
    if (setjmp(png_jmpbuf(pPng)))
        return false;
    png_read_info(pPng, pInfo);
    return true;
}

bool readRows(png_structp pPng, png_infop pInfo, png_bytep pRow)
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
    png_read_end(pPng, pInfo);
    return true;
}

// Rows come without transformations, so the row buffer has the header's row size.
bool readImageData(png_structp pPng, png_infop pInfo)
{
    QByteArray row(int(png_get_rowbytes(pPng, pInfo)), Qt::Uninitialized);
    return readRows(pPng, pInfo, reinterpret_cast<png_bytep>(row.data()));
}

bool readPng(QIODevice& device, bool bImageData)
{
    png_structp pPng = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, &stopReading, &dropWarning);
    png_infop pInfo = pPng ? png_create_info_struct(pPng) : nullptr;
    bool bIntact = false;
    if (pInfo) {
        png_set_read_fn(pPng, &device, &readFromDevice);
        bIntact = readHeader(pPng, pInfo) && (!bImageData || readImageData(pPng, pInfo));
    }
    png_destroy_read_struct(&pPng, &pInfo, nullptr);
    return bIntact;
}

} // namespace

bool CVXPngCheck::isPng(QIODevice& device)
{
    return device.peek(kSignature.size()) == kSignature;
}

bool CVXPngCheck::headerIsIntact(QIODevice& device)
{
    return readPng(device, false);
}

bool CVXPngCheck::dataIsIntact(QIODevice& device)
{
    return readPng(device, true);
}

QString CVXPngCheck::damagedText()
{
    return QCoreApplication::translate("QImageReader", "Unable to read image data");
}
