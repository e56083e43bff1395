#pragma once

#include <dcmtk/dcmdata/dctagkey.h>

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

// A synthetic imaging study as DICOM files: animals ("Patient ID") imaged on several days
// ("Acquisition Date"), each image of one known level throughout, with a rescale and a unit.
class CTestStudyFiles
{
public:
    static constexpr int kAnimals = 3;
    static constexpr int kDays = 4;
    static constexpr int kDaysApart = 7;
    static constexpr double kSlope = 0.5;
    static constexpr double kIntercept = 10.0;
    static const char* const kUnit;
    static const char* const kModality;

    // "M1", "M2", ...
    static QString animal(int nAnimal);
    // "20240101", a week apart.
    static QByteArray date(int nDay);
    // The stored level of an animal's image on a day: 1000 x (1 + animal + day), so that
    // animal 0 on day 1 equals animal 1 on day 0.
    static int level(int nAnimal, int nDay);
    static QString fileName(int nAnimal, int nDay);

    // One image of the given size with its keys; further attributes (written last, so they
    // may replace these) change a file for a case.
    static bool writeImage(const QString& strPath, int nAnimal, int nDay, int nLevel, int nSide = 16,
                           const std::vector<std::pair<DcmTagKey, QByteArray>>& extra = {});
    // The whole study into the folder, one file per animal and day; the paths, or empty
    // when a file could not be written.
    static QStringList writeStudy(const QString& strFolder);
};
