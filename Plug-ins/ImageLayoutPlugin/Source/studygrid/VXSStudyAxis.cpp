#include "studygrid/VXSStudyAxis.h"

#include <algorithm>

namespace {

// The run of digits or of other characters that starts at nAt.
QStringRef runAt(const QString& strText, int nAt)
{
    const bool bDigits = strText[nAt].isDigit();
    int nEnd = nAt;
    while (nEnd < strText.size() && strText[nEnd].isDigit() == bDigits)
        ++nEnd;
    return strText.midRef(nAt, nEnd - nAt);
}

// Animals named M2 and M10 come in that order: runs of digits compare as numbers.
bool naturalLess(const QString& a, const QString& b)
{
    int i = 0;
    int j = 0;
    while (i < a.size() && j < b.size()) {
        const QStringRef runA = runAt(a, i);
        const QStringRef runB = runAt(b, j);
        const bool bNumbers = runA.at(0).isDigit() && runB.at(0).isDigit();
        // Leading zeros aside, a longer number is the larger one.
        const int nOrder = bNumbers && runA.size() != runB.size() && runA.toULongLong() != runB.toULongLong()
                               ? (runA.toULongLong() < runB.toULongLong() ? -1 : 1)
                               : runA.compare(runB);
        if (nOrder != 0)
            return nOrder < 0;
        i += runA.size();
        j += runB.size();
    }
    return a.size() - i < b.size() - j;
}

} // namespace

CVXSStudyAxis::CVXSStudyAxis(const QString& strKey)
    : m_strKey(strKey)
{
}

QString CVXSStudyAxis::key() const
{
    return m_strKey;
}

bool CVXSStudyAxis::isDateAxis() const
{
    return m_strKey.endsWith(QLatin1String("Date"), Qt::CaseInsensitive);
}

QDate CVXSStudyAxis::dateOf(const QString& strValue)
{
    const QDate date = QDate::fromString(strValue.trimmed(), Qt::ISODate);
    return date.isValid() ? date : QDate::fromString(strValue.trimmed(), QStringLiteral("yyyyMMdd"));
}

bool CVXSStudyAxis::setValues(const QStringList& values, const QStringList& names)
{
    m_values = values;
    m_values.removeDuplicates();
    m_headers.clear();
    m_strError.clear();
    if (!isDateAxis()) {
        std::sort(m_values.begin(), m_values.end(), naturalLess);
        m_headers = m_values;
        return true;
    }
    QStringList undated;
    for (int i = 0; i < values.size(); ++i) {
        if (!dateOf(values[i]).isValid())
            undated << QStringLiteral("%1 (\"%2\")").arg(names.value(i), values[i]);
    }
    if (!undated.isEmpty()) {
        m_strError = tr("These images' \"%1\" is not a date (give it as 2024-03-01 or 20240301): %2.")
                         .arg(m_strKey, undated.join(QStringLiteral(", ")));
        return false;
    }
    std::sort(m_values.begin(), m_values.end(),
              [](const QString& a, const QString& b) { return dateOf(a) < dateOf(b); });
    // Two spellings of one day would make two columns headed alike.
    m_values.erase(std::unique(m_values.begin(), m_values.end(),
                               [](const QString& a, const QString& b) { return dateOf(a) == dateOf(b); }),
                   m_values.end());
    const QDate first = m_values.isEmpty() ? QDate() : dateOf(m_values.first());
    for (const QString& strValue : qAsConst(m_values))
        m_headers << tr("Day %1").arg(first.daysTo(dateOf(strValue)));
    return true;
}

int CVXSStudyAxis::count() const
{
    return m_values.size();
}

int CVXSStudyAxis::indexOf(const QString& strValue) const
{
    if (!isDateAxis())
        return m_values.indexOf(strValue);
    const QDate date = dateOf(strValue);
    for (int i = 0; i < m_values.size(); ++i) {
        if (dateOf(m_values[i]) == date)
            return i;
    }
    return -1;
}

QString CVXSStudyAxis::value(int nIndex) const
{
    return m_values.value(nIndex);
}

QString CVXSStudyAxis::header(int nIndex) const
{
    return m_headers.value(nIndex);
}

QString CVXSStudyAxis::errorText() const
{
    return m_strError;
}
