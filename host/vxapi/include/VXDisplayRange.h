#pragma once

#include "VxApiGlobal.h"

#include <QImage>
#include <QString>
#include <QStringList>

#include <limits>

// How the grey values of an image are shown and what they measure: the range of the
// quantity spread over the colour table (the display minimum at its first entry, the
// maximum at its last), the table's name, and the quantity and unit the values stand for,
// reached from the stored grey levels through the rescale (value = slope x level +
// intercept). Carried with an image as QImage text keys, so that a window hands it over
// with the picture it shows and a colour bar can be drawn for that picture later.
//
// The keys hold numbers in C notation ("1.5e+06", "-1024", "0.25"), the table's name as
// CVXColourTable names it ("viridis"), and text as it is (UTF-8 in files):
//   "Display Minimum", "Display Maximum"  the range, in the quantity's unit;
//   "Colour Table"                         "grey", "hot", "viridis", "magma", "inferno", "cividis";
//   "Quantity", "Unit"                     such as "Radiance" and "p/s/cm²/sr", each may be absent;
//   "Rescale Slope", "Rescale Intercept"   from grey level to quantity; absent means 1 and 0;
//   "Rescale Note"                         why a rescale found with the image was not used;
//   "Modality"                             as DICOM names it ("OT", "CR", "PT", ...; CVXImageProvenance).
class VXAPI_EXPORT CVXDisplayRange
{
public:
    static constexpr const char* Minimum = "Display Minimum";
    static constexpr const char* Maximum = "Display Maximum";
    static constexpr const char* ColourTable = "Colour Table";
    static constexpr const char* Quantity = "Quantity";
    static constexpr const char* Unit = "Unit";
    static constexpr const char* RescaleSlope = "Rescale Slope";
    static constexpr const char* RescaleIntercept = "Rescale Intercept";
    static constexpr const char* RescaleNote = "Rescale Note";
    // What Rescale Note says of a slope of 0, which would map every level onto one value.
    static constexpr const char* ZeroSlopeNote = "Rescale Slope 0 ignored; the stored values are shown";

    // Every key above but Modality, which the image's provenance carries.
    static QStringList keys();

    // What the image's keys say; keys missing or not holding a number leave their default
    // (no range, grey, no unit, no rescale).
    static CVXDisplayRange fromImage(const QImage& image);
    // Sets the keys that say something: the range only where there is one, the rescale only
    // where it is not 1 and 0 or a note explains it.
    void writeTo(QImage& image) const;

    // Without a range the image shows its whole data range, grey.
    bool hasRange() const;
    double minimum() const;
    double maximum() const;
    // Refused (false, nothing changed) unless both are finite and the minimum is below the maximum.
    bool setRange(double dMinimum, double dMaximum);
    void clearRange();

    // Always a known table's name; an unknown name sets grey.
    QString tableName() const;
    void setTableName(const QString& strName);

    QString quantity() const;
    void setQuantity(const QString& strQuantity);
    QString unit() const;
    void setUnit(const QString& strUnit);
    QString modality() const;
    void setModality(const QString& strModality);

    double slope() const;
    double intercept() const;
    // A slope of 0 would map every level onto one value, so it means no rescale (slope 1,
    // intercept 0), with ZeroSlopeNote as the reason. Numbers that are not finite are
    // ignored the same way, with their own note.
    void setRescale(double dSlope, double dIntercept);
    QString rescaleNote() const;
    // The quantity a stored grey level stands for.
    double valueOf(double dLevel) const;

    // Whether one range suits both images: the same modality and the same unit, images
    // without a unit (raw values) matching only each other.
    bool sharesScaleWith(const CVXDisplayRange& other) const;
    // "Radiance (p/s/cm²/sr)", the quantity or the unit alone, or empty.
    QString quantityLabel() const;

private:
    double m_dMinimum = std::numeric_limits<double>::quiet_NaN();
    double m_dMaximum = std::numeric_limits<double>::quiet_NaN();
    QString m_strTable = QStringLiteral("grey");
    QString m_strQuantity;
    QString m_strUnit;
    QString m_strModality;
    double m_dSlope = 1.0;
    double m_dIntercept = 0.0;
    QString m_strRescaleNote;
};
