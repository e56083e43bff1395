#include "VXDisplayRange.h"

#include "VXColourTable.h"
#include "VXImageProvenance.h"

#include <cmath>

namespace {

constexpr const char* kNotFiniteNote = "Rescale ignored: its slope or intercept is not a number";
// Enough digits that a range written and read back is the same range.
constexpr int kDigits = 12;

QString numberText(double dValue)
{
    return QString::number(dValue, 'g', kDigits);
}

// The key's number, or dDefault where it has none.
double numberKey(const QImage& image, const char* pszKey, double dDefault)
{
    bool bOk = false;
    const double dValue = image.text(QString::fromLatin1(pszKey)).trimmed().toDouble(&bOk);
    return bOk && std::isfinite(dValue) ? dValue : dDefault;
}

bool hasKey(const QImage& image, const char* pszKey)
{
    return !image.text(QString::fromLatin1(pszKey)).isEmpty();
}

} // namespace

QStringList CVXDisplayRange::keys()
{
    return {QString::fromLatin1(Minimum),      QString::fromLatin1(Maximum),
            QString::fromLatin1(ColourTable),  QString::fromLatin1(Quantity),
            QString::fromLatin1(Unit),         QString::fromLatin1(RescaleSlope),
            QString::fromLatin1(RescaleIntercept), QString::fromLatin1(RescaleNote)};
}

CVXDisplayRange CVXDisplayRange::fromImage(const QImage& image)
{
    CVXDisplayRange range;
    const double dNaN = std::numeric_limits<double>::quiet_NaN();
    range.setRange(numberKey(image, Minimum, dNaN), numberKey(image, Maximum, dNaN));
    range.setTableName(image.text(QString::fromLatin1(ColourTable)).trimmed());
    range.m_strQuantity = image.text(QString::fromLatin1(Quantity)).trimmed();
    range.m_strUnit = image.text(QString::fromLatin1(Unit)).trimmed();
    range.m_strModality = image.text(QString::fromLatin1(CVXImageProvenance::Modality)).trimmed();
    if (hasKey(image, RescaleSlope) || hasKey(image, RescaleIntercept))
        range.setRescale(numberKey(image, RescaleSlope, dNaN), numberKey(image, RescaleIntercept, 0.0));
    // A note found with the image still explains its rescale.
    if (range.m_strRescaleNote.isEmpty())
        range.m_strRescaleNote = image.text(QString::fromLatin1(RescaleNote)).trimmed();
    return range;
}

void CVXDisplayRange::writeTo(QImage& image) const
{
    if (hasRange()) {
        image.setText(QString::fromLatin1(Minimum), numberText(m_dMinimum));
        image.setText(QString::fromLatin1(Maximum), numberText(m_dMaximum));
    }
    image.setText(QString::fromLatin1(ColourTable), m_strTable);
    CVXImageProvenance::setKey(image, QString::fromLatin1(Quantity), m_strQuantity);
    CVXImageProvenance::setKey(image, QString::fromLatin1(Unit), m_strUnit);
    CVXImageProvenance::setKey(image, QString::fromLatin1(CVXImageProvenance::Modality), m_strModality);
    if (m_dSlope != 1.0 || m_dIntercept != 0.0 || !m_strRescaleNote.isEmpty()) {
        image.setText(QString::fromLatin1(RescaleSlope), numberText(m_dSlope));
        image.setText(QString::fromLatin1(RescaleIntercept), numberText(m_dIntercept));
    }
    CVXImageProvenance::setKey(image, QString::fromLatin1(RescaleNote), m_strRescaleNote);
}

bool CVXDisplayRange::hasRange() const
{
    return !std::isnan(m_dMinimum);
}

double CVXDisplayRange::minimum() const
{
    return m_dMinimum;
}

double CVXDisplayRange::maximum() const
{
    return m_dMaximum;
}

bool CVXDisplayRange::setRange(double dMinimum, double dMaximum)
{
    if (!std::isfinite(dMinimum) || !std::isfinite(dMaximum) || !(dMinimum < dMaximum))
        return false;
    m_dMinimum = dMinimum;
    m_dMaximum = dMaximum;
    return true;
}

void CVXDisplayRange::clearRange()
{
    m_dMinimum = m_dMaximum = std::numeric_limits<double>::quiet_NaN();
}

QString CVXDisplayRange::tableName() const
{
    return m_strTable;
}

void CVXDisplayRange::setTableName(const QString& strName)
{
    m_strTable = CVXColourTable(strName).name();
}

QString CVXDisplayRange::quantity() const
{
    return m_strQuantity;
}

void CVXDisplayRange::setQuantity(const QString& strQuantity)
{
    m_strQuantity = strQuantity;
}

QString CVXDisplayRange::unit() const
{
    return m_strUnit;
}

void CVXDisplayRange::setUnit(const QString& strUnit)
{
    m_strUnit = strUnit;
}

QString CVXDisplayRange::modality() const
{
    return m_strModality;
}

void CVXDisplayRange::setModality(const QString& strModality)
{
    m_strModality = strModality;
}

double CVXDisplayRange::slope() const
{
    return m_dSlope;
}

double CVXDisplayRange::intercept() const
{
    return m_dIntercept;
}

void CVXDisplayRange::setRescale(double dSlope, double dIntercept)
{
    m_dSlope = 1.0;
    m_dIntercept = 0.0;
    m_strRescaleNote.clear();
    if (!std::isfinite(dSlope) || !std::isfinite(dIntercept))
        m_strRescaleNote = QString::fromLatin1(kNotFiniteNote);
    else if (dSlope == 0.0)
        m_strRescaleNote = QString::fromLatin1(ZeroSlopeNote);
    else {
        m_dSlope = dSlope;
        m_dIntercept = dIntercept;
    }
}

QString CVXDisplayRange::rescaleNote() const
{
    return m_strRescaleNote;
}

double CVXDisplayRange::valueOf(double dLevel) const
{
    return m_dSlope * dLevel + m_dIntercept;
}

bool CVXDisplayRange::sharesScaleWith(const CVXDisplayRange& other) const
{
    return m_strModality == other.m_strModality && m_strUnit == other.m_strUnit;
}

QString CVXDisplayRange::quantityLabel() const
{
    if (m_strQuantity.isEmpty() || m_strUnit.isEmpty())
        return m_strQuantity + m_strUnit;
    return QStringLiteral("%1 (%2)").arg(m_strQuantity, m_strUnit);
}
