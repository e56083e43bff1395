#pragma once

#include <QImage>

// Three bytes per pixel, as DICOM and PostScript (red first) and device-independent
// bitmaps (blue first) store them. rgb32 must be in QImage::Format_RGB32; pOut takes
// 3 x width bytes.
void vxsPackRgbRow(const QImage& rgb32, int y, uchar* pOut);
void vxsPackBgrRow(const QImage& rgb32, int y, uchar* pOut);
