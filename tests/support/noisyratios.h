#pragma once

#include "models/catalogue.h"
#include "noise/noisefit.h"
#include "tests/support/publishedratios.h"

#include <QMetaType>

#include <random>
#include <vector>

namespace support
{

/// An experiment whose data determine every constant: lifetime 20 ns, probe 50e-6 M, quencher evenly up to 0.5 M.
struct NoiseCase {
    int model = 0;
    int samples = 0;
    fit::Parameters truth{};
};

inline std::vector<NoiseCase> noiseCases()
{
    return {{1, 7, {0, 1e9}},      {3, 7, {0, 4, 1e10}}, {4, 7, {0, 10, 5e8}},         {5, 7, {0, 10}},
            {7, 7, {0, 1.2, 2e9}}, {9, 7, {0, 4}},       {12, 12, {0, 0.5, 3e9, 5e7}}, {13, 7, {0, 0.6, 2e9}}};
}

/// Data sets in each case of a seeded study; VORLO_COVERAGE_SETS=<n> asks for more than usual.
inline int setsPerCase(int usual)
{
    const int asked = qEnvironmentVariableIntValue("VORLO_COVERAGE_SETS");
    return asked > 0 ? asked : usual;
}

/// Ratios with an error of 1 % of every intensity, of the typed relative errors, or of 1 % of the largest ratio on all
/// ratios but the reference's.
inline noise::RatioFit noisyRatios(const NoiseCase& of, const noise::Errors& errors, std::mt19937& generator)
{
    constexpr double kTau0 = 20e-9, kXmax = 0.5, kCp = 50e-6, kNoise = 0.01;
    std::normal_distribution<double> normal;
    const auto exact = [&](double x) { return models::ratio(of.model, x, {kTau0, kCp, of.truth}); };
    const auto intensity = [&](double x, int sample) {
        const double relative = errors.assumption == noise::Assumption::AsTyped ? errors.ofSample(sample) : kNoise;
        return (1 + relative * normal(generator)) / exact(x);
    };
    std::vector<double> Q, ratio;
    const double reference = intensity(0, 1);
    for (int i = 0; i < of.samples; ++i) {
        Q.push_back(kXmax * i / (of.samples - 1));
        if (errors.assumption == noise::Assumption::EqualOnRatios)
            ratio.push_back(i == 0 ? 1 : exact(Q.back()) + kNoise * exact(kXmax) * normal(generator));
        else
            ratio.push_back(i == 0 ? 1 : reference / intensity(Q.back(), i + 1));
    }
    return {ratioPoints(Q, ratio, kTau0), of.model, kCp,
            leastsquares::freeSlots(models::row(of.model).parameterCount(), {})};
}

} // namespace support

Q_DECLARE_METATYPE(support::NoiseCase)
