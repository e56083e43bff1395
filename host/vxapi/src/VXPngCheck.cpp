#include "VXPngCheck.h"

#include "VXPngRead.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QIODevice>

namespace {

const QByteArray kSignature("\x89PNG\r\n\x1a\n", 8);

bool readPng(QIODevice& device, bool bImageData)
{
    png_infop pInfo = nullptr;
    png_structp pPng = VXPngRead::create(device, &pInfo);
    bool bIntact = pPng && VXPngRead::readInfo(pPng, pInfo);
    if (bIntact && bImageData) {
        // Rows come without transformations, so the row buffer has the header's row size.
        QByteArray row(int(png_get_rowbytes(pPng, pInfo)), Qt::Uninitialized);
        bIntact = VXPngRead::readAllRows(pPng, pInfo, reinterpret_cast<png_bytep>(row.data()))
                  && VXPngRead::readEnd(pPng, pInfo);
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
