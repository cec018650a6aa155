#pragma once

#include "lifetimes/combinedproblem.h"
#include "tests/support/publishedratios.h"

#include <cmath>
#include <random>
#include <vector>

namespace support
{

/// The published set with its lifetimes, ns, from the same source as the ratios.
inline lifetimes::Measurements acridoneMeasurements()
{
    const PublishedRatios ratios = acridoneRatios();
    const std::vector<double> tau{17.6, 3.9, 1.8, 0.95, 0.64, 0.39, 0.25};
    lifetimes::Measurements measurements{.samples = {}, .components = {{1, 17.6e-9}}, .Cp = 50e-6};
    for (std::size_t i = 0; i < tau.size(); ++i)
        measurements.samples.push_back({ratios.Q[i], 16580 / ratios.ratio[i], tau[i] * 1e-9, tau[i] * 1e-9});
    return measurements;
}

/// An experiment to simulate.
struct PairedCase {
    int model = 0;
    fit::Parameters truth{};
    std::vector<double> Q{};         // M, the reference first
    double tau0 = 20e-9, Cp = 50e-6; // s, M
    lifetimes::RelativeErrors errors{0.01, 0.01};
};

/// Intensities and lifetimes with normal relative errors, the reference's included.
inline lifetimes::Measurements simulated(const PairedCase& of, std::mt19937& generator)
{
    std::normal_distribution<double> normal;
    lifetimes::Measurements exact{.samples = {{0, 1000, of.tau0, of.tau0}}, .components = {{1, of.tau0}}, .Cp = of.Cp};
    const auto ratios = [&](lifetimes::Kind kind) {
        return lifetimes::modelRatios(exact, of.model, kind, of.Q, of.truth);
    };
    const std::vector<double> intensity = ratios(lifetimes::Kind::Intensity),
                              lifetime = ratios(lifetimes::Kind::Lifetime);
    lifetimes::Measurements measured{.samples = {}, .components = exact.components, .Cp = of.Cp};
    for (std::size_t i = 0; i < of.Q.size(); ++i) {
        const double Phi = 1000 / intensity[i] * std::exp(of.errors.intensity * normal(generator));
        const double tau = of.tau0 / lifetime[i] * std::exp(of.errors.lifetime * normal(generator));
        measured.samples.push_back({of.Q[i], Phi, tau, tau});
    }
    measured.components.front().lifetime = measured.tau0();
    return measured;
}

} // namespace support
