#pragma once

#include "lifetimes/measurements.h"

#include <optional>
#include <string>

namespace lifetimes
{

/// How the relative error of a lifetime compares with that of an intensity.
struct ErrorRatio {
    double typed = 1;           // error of a lifetime divided by that of an intensity
    bool eachEstimated = false; // both errors come from the scatter, and typed does not count
    bool operator==(const ErrorRatio&) const = default;
};

/// True if both errors can be estimated: there are at least six lifetimes and six intensities, reference included.
bool canEstimateEach(const Measurements& measurements);

/// What is wrong with a choice for these samples.
std::optional<std::string> complaint(const ErrorRatio& ratio, const Measurements& measurements);

/// One sentence that says what is assumed of these samples; the choice does not count if one kind is missing.
std::string sentence(const ErrorRatio& ratio, const Measurements& measurements);

} // namespace lifetimes
