#pragma once

#include <QCoreApplication>
#include <QString>

// The export dialog's file types: filter text and the suffix it stands for, in the order
// the dialog lists them.
namespace VXSExportFormats {

struct Format {
    const char* pFilter;
    const char* pSuffix;
};

constexpr Format Formats[] = {
    {"Bitmap Image (*.bmp)", "bmp"},
    {"JPEG Image (*.jpg)", "jpg"},
    {"PNG Image (*.png)", "png"},
    {"Postscript Enhanced Metafile (*.eps)", "eps"},
    {"Tagged Image File Format (*.tif)", "tif"},
    {"Windows Metafile Format (*.wmf)", "wmf"},
    {"Enhanced Metafile Format (*.emf)", "emf"},
    {"DICOM Format (*.dcm)", "dcm"},
};

// Suffixes accepted as typed; "tiff" although no filter offers it.
constexpr const char* AcceptedSuffixes[] = {"bmp", "jpg", "png", "eps", "emf", "wmf", "tif", "tiff", "dcm"};

// A file name longer than this (without its folder) is refused.
constexpr int MaxFileNameLength = 185;

constexpr double ExportScale = 4.0;
constexpr double PrintScale = 2.0;
constexpr double ClipboardScale = 1.0;

} // namespace VXSExportFormats
