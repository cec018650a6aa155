#pragma once

#include "trust/fitdetails.h"
#include "trust/startsearch.h"

#include <span>

namespace trust
{

/// The reason why a constant is unlikely in a real system.
enum class Doubt {
    None,
    AboveDiffusionLimit, // a collisional rate constant above the diffusion limit in water
    Negative,
    Undetermined,
};

/// Approximate rate constant of diffusion-limited collisions of small molecules in water at 25 degrees C, M^-1 s^-1.
/// Source: J. R. Lakowicz, Principles of Fluorescence Spectroscopy, the Smoluchowski equation.
inline constexpr double kDiffusionLimit = 1e10;

/// The fit of one model: the end of the engine's run from the start values found, or the minimum if the engine leaves
/// it.
struct ComparedModel {
    int model = 0;
    bool engineStays = false;
    fit::Parameters start{};                             // values to type
    FitDetails details;                                  // of the fit from there
    std::array<Doubt, fit::kMaxParameters + 1> doubts{}; // by slot
    std::optional<double> differenceToBest;              // of AICc
};

/// Fits every request from the start values found for it, in the same order; empty if cancelled. A model that cannot be
/// evaluated at any start tried is omitted. Fixed parameters keep their typed values. requests: the same ratios with
/// different models. known: learns from the searches.
std::vector<ComparedModel> compareModels(std::span<const analysis::Request> requests, LeastSums& known,
                                         const SearchProgress& progress = {});

} // namespace trust
