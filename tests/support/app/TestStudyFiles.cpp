#include "TestStudyFiles.h"

#include "TestDicomFiles.h"

#include <dcmtk/dcmdata/dcdeftag.h>

#include <QDate>
#include <QDir>

const char* const CTestStudyFiles::kUnit = "BQML";
const char* const CTestStudyFiles::kModality = "PT";

QString CTestStudyFiles::animal(int nAnimal)
{
    return QStringLiteral("M%1").arg(nAnimal + 1);
}

QByteArray CTestStudyFiles::date(int nDay)
{
    return QDate(2024, 1, 1).addDays(nDay * kDaysApart).toString(QStringLiteral("yyyyMMdd")).toLatin1();
}

int CTestStudyFiles::level(int nAnimal, int nDay)
{
    return 1000 * (1 + nAnimal + nDay);
}

QString CTestStudyFiles::fileName(int nAnimal, int nDay)
{
    return QStringLiteral("%1-day%2.dcm").arg(animal(nAnimal)).arg(nDay * kDaysApart);
}

bool CTestStudyFiles::writeImage(const QString& strPath, int nAnimal, int nDay, int nLevel, int nSide,
                                 const std::vector<std::pair<DcmTagKey, QByteArray>>& extra)
{
    CTestDicomFiles::SHeader header;
    header.nBits = 16;
    header.size = QSize(nSide, nSide);
    header.attributes = {{DCM_PatientID, animal(nAnimal).toLatin1()},
                         {DCM_AcquisitionDate, date(nDay)},
                         {DCM_Modality, kModality},
                         {DCM_Units, kUnit},
                         {DCM_RescaleSlope, QByteArray::number(kSlope)},
                         {DCM_RescaleIntercept, QByteArray::number(kIntercept)}};
    header.attributes.insert(header.attributes.end(), extra.begin(), extra.end());
    return CTestDicomFiles::write(strPath, header, QVector<quint16>(nSide * nSide, quint16(nLevel)));
}

QStringList CTestStudyFiles::writeStudy(const QString& strFolder)
{
    QStringList paths;
    for (int nAnimal = 0; nAnimal < kAnimals; ++nAnimal) {
        for (int nDay = 0; nDay < kDays; ++nDay) {
            const QString strPath = QDir(strFolder).filePath(fileName(nAnimal, nDay));
            if (!writeImage(strPath, nAnimal, nDay, level(nAnimal, nDay)))
                return {};
            paths << strPath;
        }
    }
    return paths;
}
