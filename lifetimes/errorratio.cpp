#include "lifetimes/errorratio.h"

#include "fit/numbertext.h"

namespace lifetimes
{
namespace
{

constexpr std::size_t kFewest = 6;           // observations of each kind, so that four constants leave two to scatter
constexpr double kLeast = 0.01, kMost = 100; // typed ratios

} // namespace

bool canEstimateEach(const Measurements& measurements)
{
    return measurements.observed(Kind::Intensity).size() >= kFewest &&
           measurements.observed(Kind::Lifetime).size() >= kFewest;
}

std::optional<std::string> complaint(const ErrorRatio& ratio, const Measurements& measurements)
{
    if (ratio.eachEstimated && !canEstimateEach(measurements))
        return "Both errors can be estimated from six intensities and six lifetimes on, the reference's included.";
    if (!ratio.eachEstimated && !(ratio.typed >= kLeast && ratio.typed <= kMost))
        return "The error of a lifetime divided by that of an intensity must be a number from 0.01 to 100.";
    return std::nullopt;
}

std::string sentence(const ErrorRatio& ratio, const Measurements& measurements)
{
    if (!measurements.has(Kind::Lifetime))
        return "All intensities are taken to have the same relative error, the reference's included.";
    if (!measurements.has(Kind::Intensity))
        return "All lifetimes are taken to have the same relative error, the reference's included.";
    if (ratio.eachEstimated)
        return "All intensities are taken to have one relative error and all lifetimes another, the reference's "
               "included; both are estimated from the scatter.";
    return "All intensities are taken to have the same relative error, and all lifetimes " +
           (ratio.typed == 1 ? std::string("the same, too") : fit::plainText(ratio.typed) + " times this error") +
           "; the reference's are included.";
}

} // namespace lifetimes
