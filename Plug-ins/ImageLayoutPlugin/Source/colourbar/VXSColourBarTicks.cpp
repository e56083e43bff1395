#include "colourbar/VXSColourBarTicks.h"

#include <cmath>

namespace {
// Beyond these magnitudes labels are written with an exponent.
constexpr double LargestPlain = 1e5;
constexpr double SmallestPlain = 1e-3;
} // namespace

CVXSColourBarTicks::CVXSColourBarTicks(double dMinimum, double dMaximum)
    : m_dMinimum(dMinimum)
    , m_dMaximum(dMaximum)
    , m_dStep(roundStep(dMaximum - dMinimum))
{
}

double CVXSColourBarTicks::roundStep(double dSpan)
{
    if (!(dSpan > 0.0) || !std::isfinite(dSpan))
        return 1.0;
    // Of the round steps near the span's fifth, the one whose tick count is nearest the one wanted.
    const double dPower = std::pow(10.0, std::floor(std::log10(dSpan / WantedTicks)));
    double dBest = dPower;
    for (double dFactor : {1.0, 2.0, 5.0, 10.0}) {
        const double dStep = dFactor * dPower;
        if (std::abs(dSpan / dStep - WantedTicks) < std::abs(dSpan / dBest - WantedTicks))
            dBest = dStep;
    }
    return dBest;
}

QVector<double> CVXSColourBarTicks::values() const
{
    QVector<double> ticks;
    // A little slack so that a range ending on a round value gets its end tick.
    const double dSlack = m_dStep * 1e-9;
    for (double dTick = std::ceil((m_dMinimum - dSlack) / m_dStep); dTick * m_dStep <= m_dMaximum + dSlack; ++dTick) {
        const double dValue = dTick * m_dStep;
        ticks.append(std::abs(dValue) < dSlack ? 0.0 : dValue);
    }
    return ticks;
}

QString CVXSColourBarTicks::label(double dValue) const
{
    const double dLargest = std::max(std::abs(m_dMinimum), std::abs(m_dMaximum));
    if (dLargest >= LargestPlain || m_dStep < SmallestPlain)
        return QString::number(dValue, 'g', 3);
    const int nDecimals = std::max(0, int(-std::floor(std::log10(m_dStep) + 1e-9)));
    return QString::number(dValue, 'f', nDecimals);
}

double CVXSColourBarTicks::step() const
{
    return m_dStep;
}
