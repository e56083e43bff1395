#include "VXLayoutStudyGridOptions.h"

#include <QCommandLineParser>

#include <cmath>

namespace {

QCommandLineOption rowsOption()
{
    return QCommandLineOption(QStringLiteral("rows-by"),
                              CVXLayoutStudyGridOptions::tr("Study grid: one row per value of this image key, "
                                                            "e.g. \"Patient ID\"."),
                              QStringLiteral("key"));
}

QCommandLineOption columnsOption()
{
    return QCommandLineOption(QStringLiteral("columns-by"),
                              CVXLayoutStudyGridOptions::tr("Study grid: one column per value of this image key, "
                                                            "e.g. \"Acquisition Date\" (shown as Day 0, Day 7, ...)."),
                              QStringLiteral("key"));
}

QCommandLineOption rangeOption()
{
    return QCommandLineOption(QStringLiteral("range"),
                              CVXLayoutStudyGridOptions::tr("Study grid: the display range all cells share, in the "
                                                            "images' unit (default: all their values)."),
                              QStringLiteral("MIN:MAX"));
}

QCommandLineOption colourBarOption()
{
    return QCommandLineOption(QStringLiteral("colour-bar"),
                              CVXLayoutStudyGridOptions::tr("Study grid: add a colour bar for the shared range."));
}

bool readNumber(const QString& strText, double& dValue)
{
    bool bOk = false;
    dValue = strText.trimmed().toDouble(&bOk);
    return bOk && std::isfinite(dValue);
}

} // namespace

void CVXLayoutStudyGridOptions::addOptions(QCommandLineParser& parser)
{
    parser.addOption(rowsOption());
    parser.addOption(columnsOption());
    parser.addOption(rangeOption());
    parser.addOption(colourBarOption());
}

bool CVXLayoutStudyGridOptions::parse(const QCommandLineParser& parser)
{
    m_strRowKey = parser.value(rowsOption()).trimmed();
    m_strColumnKey = parser.value(columnsOption()).trimmed();
    m_bColourBar = parser.isSet(colourBarOption());
    const bool bGridOnly = parser.isSet(rangeOption()) || m_bColourBar;
    if (m_strRowKey.isEmpty() != m_strColumnKey.isEmpty() || (bGridOnly && m_strRowKey.isEmpty())) {
        m_strError = tr("A study grid needs both --rows-by and --columns-by, e.g. --rows-by \"Patient ID\" "
                        "--columns-by \"Acquisition Date\".");
        return false;
    }
    return !parser.isSet(rangeOption()) || parseRange(parser.value(rangeOption()));
}

bool CVXLayoutStudyGridOptions::parseRange(const QString& strValue)
{
    // The minimum may be negative ("-1000:3000"), so the colon is looked for after its sign.
    const int nColon = strValue.indexOf(QLatin1Char(':'), 1);
    if (nColon < 0 || !readNumber(strValue.left(nColon), m_dMinimum) || !readNumber(strValue.mid(nColon + 1), m_dMaximum)) {
        m_strError = tr("Bad --range \"%1\": give MIN:MAX as two numbers, e.g. 0:1.5e6.").arg(strValue);
        return false;
    }
    if (!(m_dMinimum < m_dMaximum)) {
        m_strError = tr("Bad --range \"%1\": the minimum has to be below the maximum.").arg(strValue);
        return false;
    }
    m_bRange = true;
    return true;
}

bool CVXLayoutStudyGridOptions::isRequested() const
{
    return !m_strRowKey.isEmpty();
}

QString CVXLayoutStudyGridOptions::rowKey() const
{
    return m_strRowKey;
}

QString CVXLayoutStudyGridOptions::columnKey() const
{
    return m_strColumnKey;
}

bool CVXLayoutStudyGridOptions::hasRange() const
{
    return m_bRange;
}

double CVXLayoutStudyGridOptions::minimum() const
{
    return m_dMinimum;
}

double CVXLayoutStudyGridOptions::maximum() const
{
    return m_dMaximum;
}

bool CVXLayoutStudyGridOptions::hasColourBar() const
{
    return m_bColourBar;
}

QString CVXLayoutStudyGridOptions::errorText() const
{
    return m_strError;
}
