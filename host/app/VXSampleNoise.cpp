#include "VXSampleNoise.h"

#include <QtMath>

CVXSampleNoise::CVXSampleNoise(quint32 nSeed)
    : m_generator(nSeed)
{
}

double CVXSampleNoise::next(double dSigma)
{
    // The sum of four uniform values is close enough to normal for image noise and,
    // unlike std::normal_distribution, the same with every standard library.
    constexpr int kTerms = 4;
    double dSum = 0.0;
    for (int i = 0; i < kTerms; ++i)
        dSum += m_generator.generateDouble() - 0.5;
    // Each term has variance 1/12.
    return dSum * dSigma * qSqrt(12.0 / kTerms);
}
