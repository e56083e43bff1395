#include "VXPixelSize.h"

#include <QRegularExpression>

#include <cmath>
#include <iterator>

namespace {

struct Unit
{
    const char* pName;
    double dMm;
};

// The units a length is written in, smallest first.
const Unit WrittenUnits[] = {{"nm", 1e-6}, {"\u00b5m", 1e-3}, {"mm", 1.0}, {"cm", 10.0}};

} // namespace

double CVXPixelSize::of(const QImage& image)
{
    bool bOk = false;
    const double dMm = image.text(QString::fromLatin1(Key)).toDouble(&bOk);
    return bOk && isUsable(dMm) ? dMm : 0.0;
}

void CVXPixelSize::set(QImage& image, double dMm)
{
    image.setText(QString::fromLatin1(Key), QString::number(dMm, 'g', 12));
}

bool CVXPixelSize::isUsable(double dMm)
{
    return std::isfinite(dMm) && dMm > 0.0 && dMm <= MaxMm;
}

bool CVXPixelSize::unitFactor(const QString& strUnit, double& dMmPerUnit)
{
    const QString strName = strUnit.trimmed().toLower();
    if (strName == QLatin1String("um") || strName == QStringLiteral("\u03bcm")) // ASCII u and Greek mu
        return unitFactor(QStringLiteral("\u00b5m"), dMmPerUnit);
    if (strName == QLatin1String("m")) {
        dMmPerUnit = 1000.0;
        return true;
    }
    for (const Unit& unit : WrittenUnits) {
        if (strName == QString::fromUtf8(unit.pName)) {
            dMmPerUnit = unit.dMm;
            return true;
        }
    }
    return false;
}

bool CVXPixelSize::parse(const QString& strText, double& dMm, QString& strError)
{
    static const QRegularExpression pattern(QStringLiteral("^\\s*([-+]?(?:\\d+\\.?\\d*|\\.\\d+)(?:[eE][-+]?\\d+)?)\\s*(\\S+)\\s*$"));
    const QRegularExpressionMatch match = pattern.match(strText);
    double dFactor = 0.0;
    bool bNumber = false;
    const double dValue = match.hasMatch() ? match.captured(1).toDouble(&bNumber) : 0.0;
    if (!bNumber || !unitFactor(match.captured(2), dFactor)) {
        strError = tr("\"%1\" is not a length: give a number and a unit (nm, um, mm, cm), e.g. 0.05mm.").arg(strText);
        return false;
    }
    strError = refusal(dValue * dFactor);
    if (!strError.isEmpty()) {
        strError = QStringLiteral("\"%1\": %2").arg(strText, strError);
        return false;
    }
    dMm = dValue * dFactor;
    return true;
}

QString CVXPixelSize::refusal(double dMm)
{
    if (!std::isfinite(dMm))
        return tr("not a number.");
    if (dMm <= 0.0)
        return tr("the length has to be more than 0.");
    if (dMm > MaxMm)
        return tr("the length has to be 1 m or less.");
    return QString();
}

QString CVXPixelSize::text(double dMm)
{
    // The smallest unit the length is less than 1000 of: "20 mm", not "2 cm".
    const Unit* pUnit = std::end(WrittenUnits) - 1;
    for (const Unit& unit : WrittenUnits) {
        if (dMm / unit.dMm < 999.5) {
            pUnit = &unit;
            break;
        }
    }
    const double dValue = dMm / pUnit->dMm;
    // Up to three decimals where the length is not whole, without trailing zeros.
    QString strNumber = QString::number(dValue, 'f', 3);
    while (strNumber.contains(QLatin1Char('.')) && (strNumber.endsWith(QLatin1Char('0')) || strNumber.endsWith(QLatin1Char('.'))))
        strNumber.chop(1);
    return strNumber + QLatin1Char(' ') + QString::fromUtf8(pUnit->pName);
}
