#pragma once

#include "lifetimes/measurements.h"
#include "tests/support/publishedratios.h"

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

} // namespace support
