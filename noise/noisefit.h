#pragma once

#include "leastsquares/profile.h"
#include "leastsquares/uncertainty.h"
#include "noise/assumption.h"
#include "sternvolmer/ratiopoints.h"

#include <cmath>
#include <memory>
#include <span>

namespace noise
{

/// A model to be fitted to ratios; some of its constants may be fixed.
struct RatioFit {
    sternvolmer::RatioPoints points;
    int model = 0;
    double Cp = 0; // total probe, M
    leastsquares::FreeSlots free;
    leastsquares::Ranges ranges = leastsquares::kAnySizes; // of sizes, in which profiles look for an end
};

/// The constants of an analysis, which weighs all ratios alike, with the standard errors that they have under an
/// assumption.
struct AnalysedConstants {
    fit::Parameters values{};
    fit::Parameters standardError{}; // infinity: not determined; NaN: nothing tells the scatter
    fit::Parameters halfWidth{};     // of the symmetrical 95 percent interval; same rule
    leastsquares::Matrix4 correlation{};
    std::vector<double> residualError{}; // expected, of the ratio of each sample; 0 for the reference
    leastsquares::FreeSlots differing{}; // more than two standard errors from the constants fitted under the assumption
};

/// A fit under an assumption.
struct NoiseFit {
    Errors errors;
    leastsquares::Minimum minimum{}; // the least sum of the residuals that belong to the assumption
    leastsquares::Scatter scatter{}; // of these residuals
    leastsquares::Uncertainty uncertainty{};
    int samples = 0;              // with the reference
    std::optional<double> AICc{}; // none with too few samples; compare it under one assumption only
    /// Of so large a sum or a larger one; only for known errors, and if a degree of freedom is left.
    std::optional<double> chiSquareProbability{};
    AnalysedConstants analysed{};

    /// False if a ratio is not positive and its logarithm is needed.
    bool isDefined() const { return std::isfinite(minimum.sumOfSquares); }
    /// Known errors need no degree of freedom.
    bool hasErrors() const { return scatter.quantile > 0; }
    /// The deviations are so small that no instrument detects them: their scatter is that of roundings.
    bool isExact() const;
};

/// The least-squares problem under an assumption; it takes values in their real units.
std::unique_ptr<fit::Problem> problemUnder(const RatioFit& ratioFit, const Errors& errors);

/// Fits from the analysed values. Another start counts only if the data can tell its lower sum from this one: otherwise
/// constants that can be exchanged would exchange their names. There are as many degrees of freedom as quenched samples
/// beyond the free constants, because the reference either does not count or determines its own intensity.
///
/// AICc = n ln(S / n) + 2 k + 2 k (k + 1) / (n - k - 1); k counts constants, the reference's intensity and the
/// variance, as far as they are fitted; a sum that no instrument tells from 0 counts as such a sum. For known errors it
/// is S + 2 k, because the last term corrects for a fitted variance.
NoiseFit fitUnder(const Errors& errors, const RatioFit& ratioFit, const fit::Parameters& analysed,
                  std::span<const fit::Parameters> otherStarts = {});

/// Profiles of the free constants, by slot. If a profile meets a noticeably lower sum, the fit moves there first.
std::array<leastsquares::Profile, fit::kMaxParameters + 1> profilesOf(NoiseFit& fitted, const RatioFit& ratioFit);

} // namespace noise
