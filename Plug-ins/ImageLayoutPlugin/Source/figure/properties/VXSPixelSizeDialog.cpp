#include "figure/properties/VXSPixelSizeDialog.h"

#include <VXPixelSize.h>
#include <VXSMessageBox.h>
#include <VXUtilityFns.h>

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>

namespace {

// The units offered, with their size in mm.
const QPair<QString, double> Units[] = {
    {QStringLiteral("nm"), 1e-6},
    {QStringLiteral("\u00b5m"), 1e-3},
    {QStringLiteral("mm"), 1.0},
    {QStringLiteral("cm"), 10.0},
};

// The number as typed, in the user's way of writing numbers or with a point.
bool readNumber(const QString& strText, double& dValue)
{
    bool bOk = false;
    dValue = QLocale().toDouble(strText.trimmed(), &bOk);
    if (!bOk)
        dValue = QLocale::c().toDouble(strText.trimmed(), &bOk);
    return bOk;
}

} // namespace

CVXSPixelSizeDialog::CVXSPixelSizeDialog(double dCurrentMm, QWidget* pParent)
    : QDialog(pParent)
{
    setObjectName(QStringLiteral("pixelSizeDialog"));
    setWindowTitle(tr("Set Pixel Size"));
    auto* pLayout = new QVBoxLayout(this);
    pLayout->addWidget(new QLabel(tr("The width of one pixel of the image's source on the object:"), this));
    auto* pRow = new QHBoxLayout;
    m_pValue = new QLineEdit(this);
    m_pValue->setObjectName(QStringLiteral("pixelSizeValue"));
    m_pUnit = new QComboBox(this);
    m_pUnit->setObjectName(QStringLiteral("pixelSizeUnit"));
    for (const auto& unit : Units)
        m_pUnit->addItem(unit.first, unit.second);
    pRow->addWidget(m_pValue);
    pRow->addWidget(m_pUnit);
    pLayout->addLayout(pRow);
    auto* pButtons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    pLayout->addWidget(pButtons);
    connect(pButtons, &QDialogButtonBox::accepted, this, &CVXSPixelSizeDialog::accept);
    connect(pButtons, &QDialogButtonBox::rejected, this, &CVXSPixelSizeDialog::reject);

    // The size the image has, in µm below a millimetre, else in mm.
    const bool bMicrons = dCurrentMm < 1.0;
    m_pUnit->setCurrentIndex(bMicrons ? 1 : 2);
    if (dCurrentMm > 0.0)
        m_pValue->setText(QLocale().toString(dCurrentMm / m_pUnit->currentData().toDouble(), 'g', 10));
}

double CVXSPixelSizeDialog::pixelSizeMm() const
{
    return m_dMm;
}

void CVXSPixelSizeDialog::accept()
{
    double dValue = 0.0;
    QString strWhy;
    if (!readNumber(m_pValue->text(), dValue))
        strWhy = tr("\"%1\" is not a number.").arg(m_pValue->text());
    else if (!CVXPixelSize::isUsable(dValue * m_pUnit->currentData().toDouble()))
        strWhy = tr("The pixel size has to be more than 0 and at most 1 m; %1 %2 is not.")
                     .arg(m_pValue->text().trimmed(), m_pUnit->currentText());
    if (!strWhy.isEmpty()) {
        CVXSMessageBox::warning(this, CVXUtilityFns::getAppName(), strWhy, QString());
        m_pValue->setFocus();
        m_pValue->selectAll();
        return;
    }
    m_dMm = dValue * m_pUnit->currentData().toDouble();
    QDialog::accept();
}
