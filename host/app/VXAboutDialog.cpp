#include "VXAboutDialog.h"

#include <VXUtilityFns.h>
#include <VXVersion.h>

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
constexpr int kIconSide = 64;
} // namespace

CVXAboutDialog::CVXAboutDialog(const QVector<CVXLibraryInfo>& libraries, QWidget* pParent)
    : QDialog(pParent)
{
    setObjectName(QStringLiteral("CVXAboutDialog"));
    setWindowTitle(tr("About %1").arg(CVXUtilityFns::getAppName()));

    auto* pIcon = new QLabel(this);
    pIcon->setObjectName(QStringLiteral("iconLabel"));
    // High-DPI pixmaps give the label the icon at the screen's density.
    pIcon->setPixmap(CVXUtilityFns::appIcon().pixmap(kIconSide, kIconSide));
    auto* pTitle = new QLabel(QStringLiteral("<h2>%1</h2>%2<br>%3")
                                  .arg(CVXUtilityFns::getAppName().toHtmlEscaped(),
                                       tr("Version %1").arg(QStringLiteral(VX_VERSION_STRING)).toHtmlEscaped(),
                                       tr("Pre-clinical optical and X-ray imaging.").toHtmlEscaped()),
                              this);
    pTitle->setObjectName(QStringLiteral("titleLabel"));
    auto* pHeading = new QHBoxLayout;
    pHeading->addWidget(pIcon, 0, Qt::AlignTop);
    pHeading->addWidget(pTitle, 1);

    auto* pLibrariesLabel = new QLabel(tr("This program uses these libraries (licences by their SPDX identifiers):"), this);
    pLibrariesLabel->setWordWrap(true);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(pButtons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* pLayout = new QVBoxLayout(this);
    pLayout->addLayout(pHeading);
    pLayout->addWidget(pLibrariesLabel);
    pLayout->addWidget(createLibraryTable(libraries));
    pLayout->addWidget(pButtons);
}

QWidget* CVXAboutDialog::createLibraryTable(const QVector<CVXLibraryInfo>& libraries)
{
    auto* pTable = new QTableWidget(libraries.size(), 3, this);
    pTable->setObjectName(QStringLiteral("libraryTable"));
    pTable->setHorizontalHeaderLabels({tr("Library"), tr("Version"), tr("Licence")});
    pTable->verticalHeader()->hide();
    pTable->setEditTriggers(QAbstractItemView::NoEditTriggers);
    pTable->setSelectionMode(QAbstractItemView::NoSelection);
    for (int nRow = 0; nRow < libraries.size(); ++nRow) {
        const CVXLibraryInfo& library = libraries.at(nRow);
        const QString cells[] = {library.m_strName, library.m_strVersion, library.m_strLicence};
        for (int nColumn = 0; nColumn < 3; ++nColumn)
            pTable->setItem(nRow, nColumn, new QTableWidgetItem(cells[nColumn]));
    }
    pTable->resizeColumnsToContents();
    pTable->horizontalHeader()->setStretchLastSection(true);
    return pTable;
}
