#pragma once

#include "leastsquares/scatter.h"
#include "leastsquares/uncertainty.h"
#include "lifetimes/combinedproblem.h"

namespace lifetimes
{

/// A fit in which each kind of observation has its own error, estimated from the scatter.
struct EstimatedErrors {
    leastsquares::Minimum minimum{}; // of the residuals in units of these errors
    RelativeErrors errors{};
    std::array<leastsquares::Scatter, fit::kMaxParameters + 1> scatter{}; // of each constant, by slot
};

/// The errors s of both kinds for which s^2 = S / (n - h) with the sum S of squared relative residuals of a kind, its
/// number n, and its leverage h: the trace of its block of the hat matrix H, its reference included. For a linear law
/// these are the estimates of restricted maximum likelihood. The variance v of a constant is widened for the errors of
/// these weights, and its interval takes Student's t with 2 v^2 / (v' C v) degrees of freedom, with the shares of both
/// kinds in v and the covariance C of the estimated variances.
/// Sources: H. D. Patterson, R. Thompson, Biometrika 58 (1971) 545; F. E. Satterthwaite, Biometrics Bull. 2 (1946) 110;
/// M. G. Kenward, J. H. Roger, Biometrics 53 (1997) 983.
EstimatedErrors estimateErrors(const Measurements& measurements, int model, const leastsquares::FreeSlots& free,
                               const fit::Parameters& start);

/// The least n1 ln(S1 / n1) + n2 ln(S2 / n2) over all constants, 1 and 2 being intensities and lifetimes: -2 ln L of
/// independent normal relative errors with one variance for each kind, without terms that all models share.
double leastDeviance(const Measurements& measurements, int model, const leastsquares::FreeSlots& free,
                     const fit::Parameters& start);

} // namespace lifetimes
