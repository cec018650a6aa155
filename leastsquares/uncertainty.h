#pragma once

#include "leastsquares/minimum.h"
#include "leastsquares/scatter.h"

#include <span>
#include <vector>

namespace leastsquares
{

using Matrix4 = std::array<fit::Parameters, fit::kMaxParameters + 1>; // [row][column], slots as in fit::Parameters

/// Errors of fitted values from the scatter of the residuals. Slots of parameters that were not free hold 0.
struct Uncertainty {
    int degreesOfFreedom = 0;        // below 1: there are no errors, unless the scatter is known
    fit::Parameters standardError{}; // infinity: not determined
    fit::Parameters halfWidth{};     // of the 95 percent interval, same rule
    Matrix4 correlation{};           // 1 on the diagonal; 0 where a standard error is infinite
    FreeSlots undetermined;          // see below
};

/// From the covariance s2 (J'J)^-1, with the derivatives J at the values, which should be a least-squares minimum: the
/// scatter s2 is taken as equal at all points. A parameter is undetermined if its standard error is larger than the
/// parameter, or if changing it, alone or together with others, changes no point. Method: G. A. F. Seber, C. J. Wild,
/// Nonlinear Regression (1989), chapter 2.
Uncertainty uncertaintyOf(fit::Problem& problem, const fit::Parameters& values, const FreeSlots& free,
                          const Scatter& scatter);

/// The same with estimatedScatter() at the values. pointCount: number of points that could deviate.
Uncertainty uncertaintyOf(fit::Problem& problem, const fit::Parameters& values, const FreeSlots& free, int pointCount);

/// How far the least-squares values move, to first order, if the residuals change by shift: -(J'J)^-1 J' shift. Slots
/// as in Uncertainty; 0 for parameters in directions that change no point.
fit::Parameters responseTo(std::span<const double> shift, fit::Problem& problem, const fit::Parameters& values,
                           const FreeSlots& free);

/// How a fit follows its observations, to first order.
struct Responses {
    std::array<std::vector<double>, fit::kMaxParameters + 1> ofValues{}; // relative, by slot: (J'J)^-1 J'
    std::vector<std::vector<double>> ofPoints; // hat matrix, [fitted][observed]: J (J'J)^-1 J'
};
Responses responsesOf(fit::Problem& problem, const fit::Parameters& values, const FreeSlots& free);

/// Standard errors of an unweighted fit if the observations err in another way.
struct PropagatedErrors {
    fit::Parameters ofParameters{};  // slots as in Uncertainty; infinity: not determined
    std::vector<double> ofResiduals; // of each point
    Matrix4 correlation{};           // of the values, as in Uncertainty
};

/// With the covariance S = diag(own^2) + common common' of the observations, the covariance of the values is A J'S J A
/// with A = (J'J)^-1, that of the residuals M S M' with M = 1 - J A J'. own, common: of each point, in its unit, its
/// own error and its share of an error that all points have in common.
PropagatedErrors propagatedErrors(fit::Problem& problem, const fit::Parameters& values, const FreeSlots& free,
                                  std::span<const double> own, std::span<const double> common);

} // namespace leastsquares
