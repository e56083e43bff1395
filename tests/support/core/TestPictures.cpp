#include "TestPictures.h"

QImage solidImage(QSize size, QColor color, QImage::Format format)
{
    QImage image(size, format);
    image.fill(color);
    return image;
}

QImage greyImage(QSize size, int nLevel, QImage::Format format)
{
    return solidImage(size, QColor(nLevel, nLevel, nLevel), format);
}
