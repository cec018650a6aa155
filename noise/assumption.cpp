#include "noise/assumption.h"

#include <algorithm>
#include <cmath>

namespace noise
{

double Errors::ofSample(int sample) const
{
    if (assumption != Assumption::AsTyped)
        return 1;
    return typed.size() == 1 ? typed.front() : typed[static_cast<std::size_t>(sample - 1)];
}

std::optional<std::string> complaint(const Errors& errors, int samples)
{
    if (errors.assumption != Assumption::AsTyped)
        return std::nullopt;
    if (errors.typed.size() != 1 && errors.typed.size() != static_cast<std::size_t>(samples))
        return "Please type one relative error for all samples, or one for each of the " + std::to_string(samples) +
               " samples.";
    if (!std::all_of(errors.typed.begin(), errors.typed.end(), [](double e) { return e > 0 && std::isfinite(e); }))
        return "Every relative error must be above 0: no instrument is exact.";
    return std::nullopt;
}

std::string sentence(const Errors& errors)
{
    switch (errors.assumption) {
    case Assumption::EqualOnRatios:
        return "All ratios are taken to scatter alike, and the reference to be exact; it is not counted.";
    case Assumption::Proportional:
        return "All intensities, the reference's included, are taken to have the same relative error.";
    case Assumption::AsTyped:
        return errors.known
                   ? "The intensities, the reference's included, are taken to have the typed relative errors."
                   : "The intensities, the reference's included, are taken to err in proportion to the typed relative "
                     "errors; the scatter about the fit says how much.";
    }
    return {};
}

} // namespace noise
