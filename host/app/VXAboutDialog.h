#pragma once

#include <VXLibraryInfo.h>

#include <QDialog>
#include <QVector>

// Help > About: the program's name, version and icon, and the libraries it uses with
// their versions and licences.
class CVXAboutDialog : public QDialog
{
    Q_OBJECT
public:
    CVXAboutDialog(const QVector<CVXLibraryInfo>& libraries, QWidget* pParent);

private:
    QWidget* createLibraryTable(const QVector<CVXLibraryInfo>& libraries);
};
