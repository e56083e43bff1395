#pragma once

#include <QColor>
#include <QCoreApplication>
#include <QJsonArray>
#include <QJsonObject>
#include <QString>

// Takes typed values out of JSON objects that may hold anything: each getter checks that the
// value is there, has the right type and lies in its range, and otherwise fails with a
// message naming the place (the context, e.g. "item 3") and the key.
class CVXSJsonReader
{
    Q_DECLARE_TR_FUNCTIONS(CVXSJsonReader)
public:
    explicit CVXSJsonReader(const QString& strContext);

    void setContext(const QString& strContext) { m_strContext = strContext; }
    bool number(const QJsonObject& object, const QString& strKey, double dMin, double dMax, double& dValue);
    bool integer(const QJsonObject& object, const QString& strKey, int nMin, int nMax, int& nValue);
    bool boolean(const QJsonObject& object, const QString& strKey, bool& bValue);
    bool string(const QJsonObject& object, const QString& strKey, int nMaxLength, QString& strValue);
    bool object(const QJsonObject& object, const QString& strKey, QJsonObject& value);
    bool array(const QJsonObject& object, const QString& strKey, QJsonArray& value);
    // A colour written as "#aarrggbb".
    bool color(const QJsonObject& object, const QString& strKey, QColor& value);
    // A list of exactly values.size() numbers, each in [dMin, dMax].
    bool numbers(const QJsonObject& object, const QString& strKey, double dMin, double dMax, QVector<double>& values);
    // A list of exactly values.size() whole numbers, each in [nMin, nMax].
    bool integers(const QJsonObject& object, const QString& strKey, int nMin, int nMax, QVector<int>& values);
    // Fails with a message of the caller's, prefixed by the context.
    bool fail(const QString& strError);
    QString errorText() const { return m_strError; }

private:
    bool value(const QJsonObject& object, const QString& strKey, QJsonValue& value);
    bool checkNumber(const QString& strKey, const QJsonValue& value, double dMin, double dMax);
    bool checkInteger(const QString& strKey, const QJsonValue& value, int nMin, int nMax);
    bool wrongType(const QString& strKey, const QString& strExpected);

    QString m_strContext;
    QString m_strError;
};
