#pragma once

#include "leastsquares/scatter.h"
#include "leastsquares/uncertainty.h"
#include "lifetimes/combinedproblem.h"

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

/// One sentence that says what is assumed.
std::string sentence(const ErrorRatio& ratio);

/// A fit in which each kind of observation has its own error, estimated from the scatter.
struct EstimatedErrors {
    leastsquares::Minimum minimum{}; // of the residuals in units of these errors
    RelativeErrors errors{};
    std::array<leastsquares::Scatter, fit::kMaxParameters + 1> scatter{}; // of each constant, by slot
};

/// The errors s of both kinds for which s^2 = S / (n - h) with the sum S of squared relative residuals of a kind, its
/// number n, and its leverage h: the trace of its block of the hat matrix, its reference included. For a linear law
/// these are the estimates of restricted maximum likelihood. The interval of a constant takes Student's t with
/// v^2 / sum (v_kind^2 / (n - h)) degrees of freedom, v_kind being the share of a kind in its variance v.
/// Sources: H. D. Patterson, R. Thompson, Biometrika 58 (1971) 545; F. E. Satterthwaite, Biometrics Bull. 2 (1946) 110.
EstimatedErrors estimateErrors(const Measurements& measurements, int model, const leastsquares::FreeSlots& free,
                               const fit::Parameters& start);

/// The least n1 ln(S1 / n1) + n2 ln(S2 / n2) over all constants, 1 and 2 being intensities and lifetimes: -2 ln L of
/// independent normal relative errors with one variance for each kind, without terms that all models share.
double leastDeviance(const Measurements& measurements, int model, const leastsquares::FreeSlots& free,
                     const fit::Parameters& start);

} // namespace lifetimes
