#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QSize>

// Pictures the tests and benchmarks make for themselves.

// An image of the size filled with one colour, in the given format.
QImage solidImage(QSize size, QColor color, QImage::Format format = QImage::Format_ARGB32);

// A grey image: red, green and blue all at the level.
QImage greyImage(QSize size, int nLevel, QImage::Format format);

// A grey circular zone plate of side x side pixels around the centre (in pixel coordinates,
// pixel (x, y) at x, y): the rings' frequency grows linearly with the distance and reaches
// the sampling limit side / 2 away from the centre.
QImage zonePlate(int nSide, QPointF centre, QImage::Format format = QImage::Format_RGB32);

// Opaque colour noise, the same for the same seed; compresses badly and shows every
// misplaced pixel.
QImage noiseImage(QSize size, quint32 nSeed);
