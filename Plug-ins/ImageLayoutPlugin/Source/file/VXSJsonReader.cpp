#include "file/VXSJsonReader.h"

#include <QRegularExpression>

#include <cmath>

namespace {

// Numbers in messages: whole numbers without an exponent, others as short as exact enough.
QString shown(double dValue)
{
    return QString::number(dValue, 'g', 12);
}

} // namespace

CVXSJsonReader::CVXSJsonReader(const QString& strContext)
    : m_strContext(strContext)
{
}

bool CVXSJsonReader::number(const QJsonObject& object, const QString& strKey, double dMin, double dMax,
                            double& dValue)
{
    QJsonValue found;
    if (!value(object, strKey, found) || !checkNumber(strKey, found, dMin, dMax))
        return false;
    dValue = found.toDouble();
    return true;
}

bool CVXSJsonReader::integer(const QJsonObject& object, const QString& strKey, int nMin, int nMax, int& nValue)
{
    QJsonValue found;
    if (!value(object, strKey, found) || !checkInteger(strKey, found, nMin, nMax))
        return false;
    nValue = int(found.toDouble());
    return true;
}

bool CVXSJsonReader::boolean(const QJsonObject& object, const QString& strKey, bool& bValue)
{
    QJsonValue found;
    if (!value(object, strKey, found))
        return false;
    if (!found.isBool())
        return wrongType(strKey, tr("true or false"));
    bValue = found.toBool();
    return true;
}

bool CVXSJsonReader::string(const QJsonObject& object, const QString& strKey, int nMaxLength, QString& strValue)
{
    QJsonValue found;
    if (!value(object, strKey, found))
        return false;
    if (!found.isString())
        return wrongType(strKey, tr("text"));
    const QString strFound = found.toString();
    if (strFound.size() > nMaxLength)
        return fail(tr("\"%1\" is longer than %2 characters").arg(strKey).arg(nMaxLength));
    strValue = strFound;
    return true;
}

bool CVXSJsonReader::object(const QJsonObject& object, const QString& strKey, QJsonObject& value)
{
    QJsonValue found;
    if (!this->value(object, strKey, found))
        return false;
    if (!found.isObject())
        return wrongType(strKey, tr("an object"));
    value = found.toObject();
    return true;
}

bool CVXSJsonReader::array(const QJsonObject& object, const QString& strKey, QJsonArray& value)
{
    QJsonValue found;
    if (!this->value(object, strKey, found))
        return false;
    if (!found.isArray())
        return wrongType(strKey, tr("a list"));
    value = found.toArray();
    return true;
}

bool CVXSJsonReader::color(const QJsonObject& object, const QString& strKey, QColor& value)
{
    static const QRegularExpression argb(QStringLiteral("^#[0-9A-Fa-f]{8}$"));
    QString strColor;
    if (!string(object, strKey, 9, strColor))
        return false;
    if (!argb.match(strColor).hasMatch())
        return wrongType(strKey, tr("a colour written as #aarrggbb"));
    value = QColor(strColor);
    return true;
}

bool CVXSJsonReader::numbers(const QJsonObject& object, const QString& strKey, double dMin, double dMax,
                             QVector<double>& values)
{
    QJsonArray list;
    if (!array(object, strKey, list))
        return false;
    if (list.size() != values.size())
        return wrongType(strKey, tr("a list of %1 numbers").arg(values.size()));
    for (int i = 0; i < list.size(); ++i) {
        if (!checkNumber(strKey, list.at(i), dMin, dMax))
            return false;
        values[i] = list.at(i).toDouble();
    }
    return true;
}

bool CVXSJsonReader::integers(const QJsonObject& object, const QString& strKey, int nMin, int nMax,
                              QVector<int>& values)
{
    QJsonArray list;
    if (!array(object, strKey, list))
        return false;
    if (list.size() != values.size())
        return wrongType(strKey, tr("a list of %1 whole numbers").arg(values.size()));
    for (int i = 0; i < list.size(); ++i) {
        if (!checkInteger(strKey, list.at(i), nMin, nMax))
            return false;
        values[i] = int(list.at(i).toDouble());
    }
    return true;
}

bool CVXSJsonReader::fail(const QString& strError)
{
    m_strError = tr("%1: %2").arg(m_strContext, strError);
    return false;
}

bool CVXSJsonReader::value(const QJsonObject& object, const QString& strKey, QJsonValue& value)
{
    value = object.value(strKey);
    if (value.isUndefined())
        return fail(tr("\"%1\" is missing").arg(strKey));
    return true;
}

bool CVXSJsonReader::checkNumber(const QString& strKey, const QJsonValue& value, double dMin, double dMax)
{
    if (!value.isDouble() || !std::isfinite(value.toDouble()))
        return wrongType(strKey, tr("a number"));
    const double dValue = value.toDouble();
    if (dValue < dMin || dValue > dMax)
        return fail(tr("\"%1\" is %2, outside %3 to %4").arg(strKey, shown(dValue), shown(dMin), shown(dMax)));
    return true;
}

bool CVXSJsonReader::checkInteger(const QString& strKey, const QJsonValue& value, int nMin, int nMax)
{
    if (!checkNumber(strKey, value, nMin, nMax))
        return false;
    if (value.toDouble() != std::floor(value.toDouble()))
        return wrongType(strKey, tr("a whole number"));
    return true;
}

bool CVXSJsonReader::wrongType(const QString& strKey, const QString& strExpected)
{
    return fail(tr("\"%1\" must be %2").arg(strKey, strExpected));
}
