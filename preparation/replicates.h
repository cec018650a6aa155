#pragma once

#include <optional>
#include <span>
#include <vector>

namespace preparation
{

/// Repeated readings of one sample.
struct Replicates {
    double mean = 0;
    double deviation = 0; // standard deviation of one reading, sqrt(sum (x - mean)^2 / (n - 1)); 0 of a single reading
    int count = 0;
};
Replicates replicatesOf(std::span<const double> readings);

/// The deviation that all groups of readings share: sqrt(sum (n - 1) d^2 / sum (n - 1)).
struct Pooled {
    double deviation = 0;
    int freedom = 0; // sum of n - 1
};
/// Nullopt if no group has several readings, or if they do not scatter at all.
std::optional<Pooled> pooledDeviation(std::span<const Replicates> groups);
/// The same of the deviations divided by the means.
std::optional<Pooled> pooledRelativeDeviation(std::span<const Replicates> groups);

} // namespace preparation
