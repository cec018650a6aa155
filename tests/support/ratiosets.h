#pragma once

#include "app/panelrequest.h"
#include "models/catalogue.h"
#include "tests/support/publishedratios.h"

#include <cmath>
#include <random>
#include <vector>

namespace support
{

/// The request of a panel for ratios, in normal mode.
inline analysis::Request ratioRequest(const app::PanelState& panel, const sternvolmer::RatioPoints& points)
{
    return app::requestOf(app::panelValues(panel), 0, {.data = points});
}

inline analysis::Request ratioRequest(const PublishedRatios& set, app::PanelState panel)
{
    panel.Cp = set.Cp;
    return ratioRequest(panel, ratioPoints(set));
}

/// The requests of the default panel for all models, in the order of their numbers.
inline std::vector<analysis::Request> allModels(const sternvolmer::RatioPoints& points)
{
    return app::requestsOfAllModels(app::panelValues({}), 0, {.data = points});
}

/// From the default panel with another model.
inline analysis::Request ratioRequest(int model, const sternvolmer::RatioPoints& points)
{
    return ratioRequest({.Model = model}, points);
}

inline analysis::Request acridone(const app::PanelState& panel) { return ratioRequest(acridoneRatios(), panel); }
inline analysis::Request acridone(int model) { return acridone({.Model = model}); }
inline analysis::Request hFis1(int model) { return ratioRequest(hFis1Ratios(), {.Model = model}); }

/// Ratios of a model, and the constants from which they were made.
struct SimulatedRatios {
    sternvolmer::RatioPoints points;
    fit::Parameters constants{};
};

/// Exact ratios of an experiment drawn at random: lifetimes 1..300 ns, constants over two decades around the values
/// that the concentrations can determine.
inline SimulatedRatios exactRatios(int model, std::mt19937& generator, int samples)
{
    const auto between = [&](double low, double high) {
        return low * std::pow(high / low, std::uniform_real_distribution<double>(0, 1)(generator));
    };
    const double tau0 = between(1e-9, 3e-7), Xmax = between(1e-3, 1);
    const double K = between(0.2, 10) / Xmax, F = between(0.1, 10);
    const double kq2 = between(0.2, 20) / (tau0 * Xmax), kq22 = kq2 / between(3, 100);
    // The Poisson laws have no ratio where K x kq1 tau0 passes 1.
    const double kq1 = model == 10 || model == 11 ? between(0.05, 0.8) / (tau0 * K * Xmax) : between(0.2, 50) / tau0;
    SimulatedRatios simulated;
    std::size_t slot = 0;
    for (const models::Parameter& parameter : models::row(model).fitted()) {
        const bool secondSite = model == 12 && parameter.box == models::Box::kq2;
        const bool firstSite = model >= 12 && parameter.box == models::Box::kq1;
        const double rate = secondSite ? kq22 : firstSite || parameter.box == models::Box::kq2 ? kq2 : kq1;
        const double constant = parameter.box == models::Box::K ? K : parameter.box == models::Box::F ? F : rate;
        simulated.constants[++slot] = constant;
    }
    std::vector<double> Q, ratio;
    for (int i = 0; i < samples; ++i) {
        Q.push_back(Xmax * i / (samples - 1));
        ratio.push_back(i == 0 ? 1 : models::ratio(model, Q.back(), {tau0, 50e-6, simulated.constants}));
    }
    simulated.points = ratioPoints(Q, ratio, tau0);
    return simulated;
}

/// The same drawn from a seed. noise: standard deviation relative to each ratio. The reference is 1.
inline SimulatedRatios simulatedRatios(int model, unsigned seed, int samples, double noise)
{
    std::mt19937 generator(1000 * static_cast<unsigned>(model) + seed);
    SimulatedRatios simulated = exactRatios(model, generator, samples);
    std::normal_distribution<double> error(0, noise);
    for (std::size_t i = 2; i <= static_cast<std::size_t>(samples); ++i)
        simulated.points.ratio[i] *= 1 + error(generator);
    return simulated;
}

} // namespace support
