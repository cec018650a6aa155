#pragma once

#include <string_view>

/// What users are told about the boxes that every model has.
namespace app
{

struct BoxGuide {
    std::string_view meaning;
    std::string_view unit; // empty: a plain number
};

inline constexpr BoxGuide kRadiusGuide{"radius of the probe; only the result r depends on it", "nm"};
inline constexpr BoxGuide kProbeGuide{"total concentration of the probe", "M"};
inline constexpr BoxGuide kToleranceGuide{
    "the fit ends when the sum of squares changes by less than this fraction in one iteration", ""};
inline constexpr BoxGuide kIterationGuide{"the fit stops after this many iterations", ""};
inline constexpr BoxGuide kFitRegionGuide{"the decays are followed down to this fraction of their initial intensity",
                                          ""};

} // namespace app
