#include "studygrid/VXSStudyGridDialog.h"

#include <VXImageFileReader.h>
#include <VXImageProvenance.h>
#include <VXSChildWindow.h>
#include <VXSWorkspace.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

namespace {

// List entries of open images hold their index in the dialog's list of them; files hold none.
constexpr int OpenImageRole = Qt::UserRole;

// The keys offered for rows and columns; any other key of the images may be typed.
const char* const OfferedKeys[] = {CVXImageProvenance::PatientId,         CVXImageProvenance::AcquisitionDate,
                                   CVXImageProvenance::AcquisitionTime,   CVXImageProvenance::Modality,
                                   CVXImageProvenance::SeriesInstanceUid, CVXImageProvenance::StudyInstanceUid,
                                   CVXImageProvenance::Source};

// The number a range edit holds; NaN when it holds none.
double numberIn(const QLineEdit& edit)
{
    bool bOk = false;
    const double dValue = QLocale().toDouble(edit.text().trimmed(), &bOk);
    if (bOk)
        return dValue;
    // Numbers in C notation ("1.5e6") are taken whatever the language.
    const double dPlain = edit.text().trimmed().toDouble(&bOk);
    return bOk ? dPlain : std::nan("");
}

} // namespace

CVXSStudyGridDialog::CVXSStudyGridDialog(QWidget* pParent)
    : QDialog(pParent)
    , m_pFileList(new QListWidget(this))
    , m_pRowKeyCombo(keyCombo(QStringLiteral("m_pRowKeyCombo"), QLatin1String(CVXImageProvenance::PatientId), this))
    , m_pColumnKeyCombo(keyCombo(QStringLiteral("m_pColumnKeyCombo"), QLatin1String(CVXImageProvenance::AcquisitionDate),
                                 this))
    , m_pRangeCheck(new QCheckBox(tr("Given display range:"), this))
    , m_pMinimumEdit(new QLineEdit(this))
    , m_pMaximumEdit(new QLineEdit(this))
    , m_pColourBarCheck(new QCheckBox(tr("Colour bar"), this))
    , m_pProblemLabel(new QLabel(this))
{
    setObjectName(QStringLiteral("CVXSStudyGridDialog"));
    setWindowTitle(tr("New Study Grid"));
    m_pFileList->setObjectName(QStringLiteral("m_pFileList"));
    m_pFileList->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_pRangeCheck->setObjectName(QStringLiteral("m_pRangeCheck"));
    m_pMinimumEdit->setObjectName(QStringLiteral("m_pMinimumEdit"));
    m_pMaximumEdit->setObjectName(QStringLiteral("m_pMaximumEdit"));
    m_pColourBarCheck->setObjectName(QStringLiteral("m_pColourBarCheck"));
    m_pColourBarCheck->setChecked(true);
    m_pProblemLabel->setObjectName(QStringLiteral("m_pProblemLabel"));
    m_pProblemLabel->setWordWrap(true);

    auto* pAddBtn = new QPushButton(tr("Add Files..."), this);
    pAddBtn->setObjectName(QStringLiteral("m_pAddFilesBtn"));
    auto* pOpenBtn = new QPushButton(tr("Add Open Images"), this);
    pOpenBtn->setObjectName(QStringLiteral("m_pAddOpenImagesBtn"));
    auto* pRemoveBtn = new QPushButton(tr("Remove"), this);
    pRemoveBtn->setObjectName(QStringLiteral("m_pRemoveFilesBtn"));
    auto* pFileButtons = new QVBoxLayout;
    pFileButtons->addWidget(pAddBtn);
    pFileButtons->addWidget(pOpenBtn);
    pFileButtons->addWidget(pRemoveBtn);
    pFileButtons->addStretch();
    auto* pFiles = new QHBoxLayout;
    pFiles->addWidget(m_pFileList);
    pFiles->addLayout(pFileButtons);

    auto* pRange = new QHBoxLayout;
    pRange->addWidget(m_pRangeCheck);
    pRange->addWidget(m_pMinimumEdit);
    pRange->addWidget(new QLabel(tr("to"), this));
    pRange->addWidget(m_pMaximumEdit);

    auto* pForm = new QFormLayout;
    pForm->addRow(tr("Rows by:"), m_pRowKeyCombo);
    pForm->addRow(tr("Columns by:"), m_pColumnKeyCombo);

    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(new QLabel(tr("Images:"), this));
    pLayout->addLayout(pFiles);
    pLayout->addLayout(pForm);
    pLayout->addLayout(pRange);
    pLayout->addWidget(m_pColourBarCheck);
    pLayout->addWidget(m_pProblemLabel);
    pLayout->addWidget(pButtons);

    connect(pAddBtn, &QPushButton::clicked, this, &CVXSStudyGridDialog::onClickAddFiles);
    connect(pOpenBtn, &QPushButton::clicked, this, &CVXSStudyGridDialog::onClickAddOpenImages);
    connect(pRemoveBtn, &QPushButton::clicked, this, &CVXSStudyGridDialog::onClickRemoveFiles);
    connect(m_pRangeCheck, &QCheckBox::toggled, this, &CVXSStudyGridDialog::updateRangeEdits);
    connect(pButtons, &QDialogButtonBox::accepted, this, &CVXSStudyGridDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &CVXSStudyGridDialog::reject);
    updateRangeEdits();
}

QComboBox* CVXSStudyGridDialog::keyCombo(const QString& strName, const QString& strKey, QWidget* pParent)
{
    auto* pCombo = new QComboBox(pParent);
    pCombo->setObjectName(strName);
    pCombo->setEditable(true);
    for (const char* pKey : OfferedKeys)
        pCombo->addItem(QLatin1String(pKey));
    pCombo->setCurrentText(strKey);
    return pCombo;
}

void CVXSStudyGridDialog::onClickAddFiles()
{
    const QStringList chosen =
        QFileDialog::getOpenFileNames(this, tr("Study Images"), QString(), CVXImageFileReader::dialogFilter());
    setFiles(files() + chosen);
}

void CVXSStudyGridDialog::onClickAddOpenImages()
{
    const QMdiArea* pArea = CVXSWorkspace::instance()->mdiArea();
    const QList<QMdiSubWindow*> windows = pArea ? pArea->subWindowList(QMdiArea::CreationOrder) : QList<QMdiSubWindow*>();
    for (const QMdiSubWindow* pSubWindow : windows) {
        auto* pWindow = qobject_cast<CVXSChildWindow*>(pSubWindow->widget());
        // A sequence's frames are not one image each of a study.
        if (!pWindow || pWindow->isSequenceWindow())
            continue;
        auto* pItem = new QListWidgetItem(tr("Open image: %1").arg(pSubWindow->windowTitle()), m_pFileList);
        pItem->setData(OpenImageRole, m_openImages.size());
        m_openImages << pWindow->givenPage();
    }
}

void CVXSStudyGridDialog::onClickRemoveFiles()
{
    qDeleteAll(m_pFileList->selectedItems());
}

void CVXSStudyGridDialog::updateRangeEdits()
{
    m_pMinimumEdit->setEnabled(m_pRangeCheck->isChecked());
    m_pMaximumEdit->setEnabled(m_pRangeCheck->isChecked());
}

QStringList CVXSStudyGridDialog::files() const
{
    QStringList paths;
    for (int i = 0; i < m_pFileList->count(); ++i) {
        if (!m_pFileList->item(i)->data(OpenImageRole).isValid())
            paths << m_pFileList->item(i)->text();
    }
    return paths;
}

void CVXSStudyGridDialog::setFiles(const QStringList& files)
{
    // Open images listed stay; the files are listed once each after them.
    QStringList unique = files;
    unique.removeDuplicates();
    for (int i = m_pFileList->count() - 1; i >= 0; --i) {
        if (!m_pFileList->item(i)->data(OpenImageRole).isValid())
            delete m_pFileList->takeItem(i);
    }
    m_pFileList->addItems(unique);
}

QVector<CVXImagePage> CVXSStudyGridDialog::openImages() const
{
    QVector<CVXImagePage> pages;
    for (int i = 0; i < m_pFileList->count(); ++i) {
        const QVariant index = m_pFileList->item(i)->data(OpenImageRole);
        if (index.isValid())
            pages << m_openImages.value(index.toInt());
    }
    return pages;
}

QString CVXSStudyGridDialog::rowKey() const
{
    return m_pRowKeyCombo->currentText().trimmed();
}

QString CVXSStudyGridDialog::columnKey() const
{
    return m_pColumnKeyCombo->currentText().trimmed();
}

bool CVXSStudyGridDialog::hasRange() const
{
    return m_pRangeCheck->isChecked();
}

double CVXSStudyGridDialog::minimum() const
{
    return numberIn(*m_pMinimumEdit);
}

double CVXSStudyGridDialog::maximum() const
{
    return numberIn(*m_pMaximumEdit);
}

bool CVXSStudyGridDialog::hasColourBar() const
{
    return m_pColourBarCheck->isChecked();
}

QString CVXSStudyGridDialog::problem() const
{
    if (m_pFileList->count() == 0)
        return tr("Add the study's image files or open images.");
    if (rowKey().isEmpty() || columnKey().isEmpty())
        return tr("Choose the keys for the rows and the columns.");
    if (hasRange() && (!std::isfinite(minimum()) || !std::isfinite(maximum())))
        return tr("Give the display range as two numbers.");
    if (hasRange() && !(minimum() < maximum()))
        return tr("The display range's minimum has to be below its maximum.");
    return QString();
}

void CVXSStudyGridDialog::accept()
{
    // The dialog stays open with what is missing, so nothing chosen is lost.
    const QString strProblem = problem();
    m_pProblemLabel->setText(strProblem);
    if (strProblem.isEmpty())
        QDialog::accept();
}
