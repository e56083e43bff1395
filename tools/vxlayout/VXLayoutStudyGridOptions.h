#pragma once

#include <QCoreApplication>
#include <QString>

class QCommandLineParser;

// The options that make vxlayout build a study grid (--rows-by, --columns-by, --range,
// --colour-bar) instead of filling a layout style with the images in the order given.
class CVXLayoutStudyGridOptions
{
    Q_DECLARE_TR_FUNCTIONS(CVXLayoutStudyGridOptions)
public:
    static void addOptions(QCommandLineParser& parser);
    // False with errorText() set when the grid's options are not usable.
    bool parse(const QCommandLineParser& parser);

    // Whether a grid was asked for (--rows-by and --columns-by).
    bool isRequested() const;
    QString rowKey() const;
    QString columnKey() const;
    bool hasRange() const;
    double minimum() const;
    double maximum() const;
    bool hasColourBar() const;
    QString errorText() const;

private:
    bool parseRange(const QString& strValue);

    QString m_strRowKey;
    QString m_strColumnKey;
    bool m_bRange = false;
    double m_dMinimum = 0.0;
    double m_dMaximum = 0.0;
    bool m_bColourBar = false;
    QString m_strError;
};
