#pragma once

#include <QRandomGenerator>

// Normally distributed noise from a fixed seed, so every run draws the same samples.
class CVXSampleNoise
{
public:
    explicit CVXSampleNoise(quint32 nSeed);

    // The next value of a distribution with mean 0 and the given standard deviation.
    double next(double dSigma);

private:
    QRandomGenerator m_generator;
};
