#pragma once

#include <QString>
#include <QVector>

// Where a colour bar's ticks go: at round values (1, 2 or 5 times a power of ten apart),
// about five of them over the range, each with its label.
class CVXSColourBarTicks
{
public:
    static constexpr int WantedTicks = 5;

    CVXSColourBarTicks(double dMinimum, double dMaximum);

    // The tick values inside the range, lowest first.
    QVector<double> values() const;
    // "0", "2.5", "1.5e+06": as many decimals as the step needs, no more.
    QString label(double dValue) const;
    double step() const;

private:
    static double roundStep(double dSpan);

    double m_dMinimum = 0.0;
    double m_dMaximum = 1.0;
    double m_dStep = 1.0;
};
