#pragma once

#include <QColor>
#include <QImage>
#include <QSize>

// Pictures the tests and benchmarks make for themselves.

// An image of the size filled with one colour, in the given format.
QImage solidImage(QSize size, QColor color, QImage::Format format = QImage::Format_ARGB32);

// A grey image: red, green and blue all at the level.
QImage greyImage(QSize size, int nLevel, QImage::Format format);
