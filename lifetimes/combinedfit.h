#pragma once

#include "leastsquares/profile.h"
#include "leastsquares/solutions.h"
#include "leastsquares/uncertainty.h"
#include "lifetimes/combinedproblem.h"
#include "lifetimes/errorratio.h"
#include "trust/judgement.h"

#include <array>
#include <optional>

namespace lifetimes
{

/// The fit of one model to intensities and lifetimes at once, or to one kind if the other is missing. All vectors go by
/// the slots of the model's constants.
struct CombinedFit {
    int model = 0;
    RelativeErrors weights{}; // of CombinedProblem; the estimated errors if each is estimated
    leastsquares::Minimum minimum{};
    std::array<leastsquares::Scatter, fit::kMaxParameters + 1> scatter{}; // of the residuals, by slot
    leastsquares::Uncertainty uncertainty{};
    /// Standard errors if the reference's lifetime tau0, by which k = KSV / tau0 is divided, errs as all lifetimes do.
    /// uncertainty holds for an exact tau0. Where quenching is strong, k depends little on tau0, and this one is
    /// smaller.
    fit::Parameters errorWithTau0{};
    RelativeErrors errors{};                         // of one intensity and one lifetime; 0 without a degree of freedom
    int observations = 0;                            // intensities and lifetimes
    int degreesOfFreedom = 0;                        // observations beyond constants and references
    std::optional<double> AICc{};                    // over all observations; compare it for one choice of errors only
    std::vector<leastsquares::Solution> solutions{}; // that the data cannot tell apart; this fit is the first
    trust::Judgement judgement{};

    bool isDetermined() const { return judgement.undetermined.empty(); }
};

/// Fits from many starts. The model must have a law for lifetimes, and there must be an observed kind.
///
/// With a typed ratio of errors AICc = n ln(S / n) + 2 k + 2 k (k + 1) / (n - k - 1) with the sum S of squared
/// residuals in units of the error of an intensity; k counts constants, references and the variance. If each error is
/// estimated, the first term is leastDeviance(), and k counts two variances.
CombinedFit fitTogether(const Measurements& measurements, int model, const ErrorRatio& ratio);

/// The same from one start, whose signs the constants keep.
CombinedFit fitFrom(const Measurements& measurements, int model, const ErrorRatio& ratio, const fit::Parameters& start);

/// The 95 percent intervals by likelihood, by slot; at the estimated errors if each is estimated.
std::array<leastsquares::Profile, fit::kMaxParameters + 1> profilesOf(const Measurements& measurements,
                                                                      const CombinedFit& fit);

/// The model's ratios of a kind at Q, M, on the scale of the observed ratios: multiplied by observed over fitted
/// reference.
std::vector<double> fittedRatios(const Measurements& measurements, const CombinedFit& fit, Kind kind,
                                 const std::vector<double>& Q);

/// ln observed minus ln fitted of the observations of a kind, in the order of Measurements::observed().
std::vector<double> relativeResiduals(const Measurements& measurements, const CombinedFit& fit, Kind kind);

} // namespace lifetimes
