#include "preparation/replicates.h"

#include <cmath>
#include <numeric>

namespace preparation
{
namespace
{

template <class Deviation>
std::optional<Pooled> pooled(std::span<const Replicates> groups, Deviation deviationOf)
{
    double squares = 0;
    int freedom = 0;
    for (const Replicates& group : groups) {
        const double deviation = deviationOf(group);
        squares += (group.count - 1) * deviation * deviation;
        freedom += group.count - 1;
    }
    if (freedom == 0 || squares == 0)
        return std::nullopt;
    return Pooled{std::sqrt(squares / freedom), freedom};
}

} // namespace

Replicates replicatesOf(std::span<const double> readings)
{
    Replicates of{.count = static_cast<int>(readings.size())};
    of.mean = std::accumulate(readings.begin(), readings.end(), 0.0) / of.count;
    if (of.count < 2)
        return of;
    double squares = 0;
    for (const double reading : readings)
        squares += (reading - of.mean) * (reading - of.mean);
    of.deviation = std::sqrt(squares / (of.count - 1));
    return of;
}

std::optional<Pooled> pooledDeviation(std::span<const Replicates> groups)
{
    return pooled(groups, [](const Replicates& group) { return group.deviation; });
}

std::optional<Pooled> pooledRelativeDeviation(std::span<const Replicates> groups)
{
    return pooled(groups, [](const Replicates& group) { return group.deviation / group.mean; });
}

} // namespace preparation
