#pragma once

#include "VxApiGlobal.h"

#include <QImage>
#include <QString>
#include <QStringList>

class QWidget;

// Where an image came from, carried with its pixels as QImage text keys (Qt's PNG writer
// stores them as text chunks), so that a figure can name the files, frames, animals and
// series it shows. The key names are stable: files written with them are read by others.
class VXAPI_EXPORT CVXImageProvenance
{
public:
    // Set by the image readers and the samples.
    static constexpr const char* Source = "Source";
    static constexpr const char* Frame = "Frame";
    static constexpr const char* FrameCount = "Frame Count";
    // DICOM attributes of the source.
    static constexpr const char* StudyInstanceUid = "Study Instance UID";
    static constexpr const char* SeriesInstanceUid = "Series Instance UID";
    static constexpr const char* SopInstanceUid = "SOP Instance UID";
    static constexpr const char* SopClassUid = "SOP Class UID";
    static constexpr const char* PatientId = "Patient ID";
    static constexpr const char* AcquisitionDate = "Acquisition Date";
    static constexpr const char* AcquisitionTime = "Acquisition Time";
    static constexpr const char* Modality = "Modality";
    static constexpr const char* PixelSpacing = "Pixel Spacing";
    // Set when a window hands an image over.
    static constexpr const char* Window = "Window";
    static constexpr const char* Tab = "Tab";
    static constexpr const char* SequenceFrame = "Sequence Frame";
    static constexpr const char* ImageSize = "Image Size";
    // Set when a study grid places the image: the row and column it stands in, as the
    // grid's key and the image's value ("Patient ID M1").
    static constexpr const char* StudyRow = "Study Row";
    static constexpr const char* StudyColumn = "Study Column";
    // A figure made of several images says how many it holds and carries each image's keys
    // under imageKey(n, key), n counting from 1 for the lowest image.
    static constexpr const char* ImageCount = "Images";
    // Set by the program that made a figure: its name, version and when it made it
    // (ISO 8601 with the offset from UTC).
    static constexpr const char* Software = "Software";
    static constexpr const char* SoftwareVersion = "Software Version";
    static constexpr const char* Date = "Date";

    // Every key of a single image above, in the order a reader best takes them in.
    static QStringList keys();
    // "Image 2 Source" for (2, "Source").
    static QString imageKey(int nImage, const QString& strKey);

    // Sets the key unless the value is empty.
    static void setKey(QImage& image, const QString& strKey, const QString& strValue);
    // Every text key of from, set on to.
    static void copyKeys(const QImage& from, QImage& to);
    // Sets Window and Image Size, as a window does when it hands the image to a tool.
    static void markHandedOver(QImage& image, const QString& strWindow);
    // Where a widget's image is shown: the title of the nearest window above it that has one.
    static QString windowTitleOf(const QWidget* pWidget);
};
