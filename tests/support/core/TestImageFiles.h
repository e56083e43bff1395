#pragma once

#include <QImage>
#include <QSize>
#include <QString>
#include <QVector>

// Image files and pixels as the host tests need them, written into a folder the test owns.
class CTestImageFiles
{
public:
    // An uncompressed baseline TIFF with one 8-bit grey page per image given (the
    // images are converted to Grayscale8). Qt writes single pages only.
    static bool writeMultiPageTiff(const QString& strPath, const QVector<QImage>& pages);
    // The directories of a multi-page 8-bit grey TIFF announcing pages of these sizes,
    // without their pixels.
    static bool writeTiffWithoutPixels(const QString& strPath, const QVector<QSize>& pageSizes);
    // A BMP header announcing an image of this size, without the pixels.
    static bool writeBmpHeader(const QString& strPath, const QSize& size);
    // The first half of an existing file.
    static bool writeTruncatedCopy(const QString& strSourcePath, const QString& strPath);
    static bool writeBytes(const QString& strPath, const QByteArray& bytes);
    // The file's bytes; empty when it cannot be read.
    static QByteArray readBytes(const QString& strPath);
    // The image as Qt's own PNG writer writes it.
    static QByteArray qtPng(const QImage& image);

    // An image of the size, its left half one colour and its right half another, at the
    // full precision of the format (a grey format takes the colours' red channel).
    static QImage twoHalves(const QSize& size, QImage::Format format, const QColor& left, const QColor& right);
    // A grey of 16-bit precision.
    static QColor deepGrey(quint16 nLevel);
    // Whether each 8-bit channel is within the tolerance (lossy formats need one).
    static bool isNear(const QColor& actual, const QColor& expected, int nTolerance);
};
