#pragma once

#include "noise/noisefit.h"

#include <vector>

namespace noise
{

/// A fit without one of its samples, compared with the fit of all.
struct LeftOut {
    int sample = 0;                         // 1 is the reference
    fit::Parameters values{};               // fitted to the others
    leastsquares::FreeSlots undetermined{}; // the constants that the others do not determine
    /// Of the constant that moves most, in units of its standard error in the whole fit; 0: no constant that the whole
    /// data determine.
    std::size_t slot = 0;
    double influence = 0;    // by how many of these errors; infinity: the others do not determine this constant
    double outlyingness = 0; // the drop of the sum of squares
};

/// One row for each sample that counts, in their order: without the reference if it is taken as exact. None if a fit
/// without a sample had fewer samples than constants, or if the fit of all is not defined. Method: R. D. Cook, S.
/// Weisberg, Residuals and Influence in Regression (1982); every fit is made anew.
std::vector<LeftOut> leaveOneOut(const NoiseFit& fitted, const RatioFit& ratioFit);

} // namespace noise
