#pragma once

#include "trust/fitdetails.h"
#include "trust/ratiotask.h"
#include "trust/startsearch.h"

namespace trust
{

/// Why a constant is hardly that of a real system.
enum class Doubt {
    None,
    AboveDiffusionLimit, // a collisional rate constant beyond what diffusion in water allows
    Negative,
    Undetermined,
};

/// About the rate constant of diffusion between small molecules in water at 25 degrees C, M^-1 s^-1.
/// Source: J. R. Lakowicz, Principles of Fluorescence Spectroscopy, the Smoluchowski equation.
inline constexpr double kDiffusionLimit = 1e10;

/// One model on the data: where the engine ends from the start values found, or their minimum where it does not stay.
struct ComparedModel {
    int model = 0;
    bool engineStays = false;
    fit::Parameters start{};                             // values to type
    FitDetails details;                                  // of the fit from there
    std::array<Doubt, fit::kMaxParameters + 1> doubts{}; // by slot
    std::optional<double> differenceToBest;              // of AICc
};

/// Every model from its found start values, in the order of their numbers; none when cancelled. A model that has no
/// value for any start tried is left out. Fixed parameters keep their typed values.
std::vector<ComparedModel> compareModels(const RatioInput& input, const SearchProgress& progress = {});

} // namespace trust
