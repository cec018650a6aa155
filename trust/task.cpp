#include "trust/task.h"

#include <algorithm>
#include <cmath>

namespace trust
{

Ranges sensibleRanges(int model)
{
    Ranges ranges = kAnySizes;
    std::size_t slot = 0;
    for (const models::Parameter& parameter : models::row(model).fitted())
        ranges[++slot] = {parameter.usual.low, parameter.usual.high};
    return ranges;
}

double between(const Range& range, double share) { return range.low * std::pow(range.high / range.low, share); }

fit::Parameters positiveStart(const Task& task)
{
    const Ranges sensible = sensibleRanges(task.model);
    fit::Parameters values = task.typed.values;
    for (const std::size_t slot : task.free())
        if (!(values[slot] > 0))
            values[slot] = between(sensible[slot], 0.5);
    return values;
}

bool equallyGood(double sum, double best, int pointCount)
{
    // a deviation of a millionth is far below what any instrument sees
    constexpr double kExactPerPoint = 1e-12;
    return sum <= std::max(best * (1 + kEquallyGood), kExactPerPoint * pointCount);
}

} // namespace trust
