#pragma once

#include <QStringList>

#include <vector>

// The figures a benchmark measures against its targets, each printed with its target and
// "met" or "MISSED"; the program's exit status follows allMet().
class CBenchTargets
{
public:
    void report(const char* pWhat, double value, double target, bool bAtMost, const char* pUnit = "");
    void notMeasured(const char* pWhat, const char* pWhy);
    bool allMet() const;
    // Prints the closing line and gives the exit status.
    int finish() const;

    static double median(std::vector<double> values);
    // The number after --runs among the arguments, at least 1; nDefault without one.
    static int runs(const QStringList& arguments, int nDefault);

private:
    bool m_bAllMet = true;
};
