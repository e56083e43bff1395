#pragma once

#include <QCoreApplication>
#include <QDate>
#include <QString>
#include <QStringList>
#include <QVector>

// One direction of a study grid: the values one text key takes over the images, in order,
// with the header each row or column gets. Dates (keys ending in "Date") are put in time
// order and headed by the days since the first ("Day 0", "Day 7"); other values are put in
// natural order (2 before 10) and headed by themselves.
class CVXSStudyAxis
{
    Q_DECLARE_TR_FUNCTIONS(CVXSStudyAxis)
public:
    explicit CVXSStudyAxis(const QString& strKey);

    QString key() const;
    bool isDateAxis() const;

    // Takes the values met, names[i] being where values[i] came from; false with
    // errorText() naming the sources when a date does not read as one.
    bool setValues(const QStringList& values, const QStringList& names);
    int count() const;
    // -1 for a value that was not given.
    int indexOf(const QString& strValue) const;
    QString value(int nIndex) const;
    QString header(int nIndex) const;
    QString errorText() const;

    // "2024-03-01" and "20240301"; an invalid date otherwise.
    static QDate dateOf(const QString& strValue);

private:
    QString m_strKey;
    QStringList m_values;
    QStringList m_headers;
    QString m_strError;
};
