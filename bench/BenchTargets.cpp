#include "BenchTargets.h"

#include <algorithm>
#include <cstdio>

void CBenchTargets::report(const char* pWhat, double value, double target, bool bAtMost, const char* pUnit)
{
    const bool bMet = bAtMost ? value <= target : value >= target;
    m_bAllMet = m_bAllMet && bMet;
    std::printf("  %-58s %8.3f%s (target %s %.2f%s): %s\n", pWhat, value, pUnit, bAtMost ? "<=" : ">=", target,
                pUnit, bMet ? "met" : "MISSED");
}

void CBenchTargets::notMeasured(const char* pWhat, const char* pWhy)
{
    m_bAllMet = false;
    std::printf("  %-58s NOT MEASURED: %s\n", pWhat, pWhy);
}

bool CBenchTargets::allMet() const
{
    return m_bAllMet;
}

int CBenchTargets::finish() const
{
    std::printf("%s\n", m_bAllMet ? "All targets met." : "Some targets MISSED or not measured.");
    return m_bAllMet ? 0 : 1;
}

double CBenchTargets::median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

int CBenchTargets::runs(const QStringList& arguments, int nDefault)
{
    const int nIndex = arguments.indexOf(QStringLiteral("--runs"));
    return nIndex >= 0 && nIndex + 1 < arguments.size() ? std::max(1, arguments[nIndex + 1].toInt()) : nDefault;
}
