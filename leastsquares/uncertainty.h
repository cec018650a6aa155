#pragma once

#include "leastsquares/minimum.h"

namespace leastsquares
{

using Matrix4 = std::array<fit::Parameters, fit::kMaxParameters + 1>; // [row][column], slots as in fit::Parameters

/// Errors of fitted values from the scatter of the residuals. Slots of parameters that were not free hold 0.
struct Uncertainty {
    int degreesOfFreedom = 0;        // below 1: there are no errors
    fit::Parameters standardError{}; // infinity: not determined
    fit::Parameters halfWidth{};     // of the 95 percent interval, same rule
    Matrix4 correlation{};           // 1 on the diagonal; 0 where a standard error is infinite
    FreeSlots undetermined;          // see below
};

/// From the covariance s2 (J'J)^-1, with the derivatives J at the values, which should be a least-squares minimum, and
/// s2 = sum of squares / degrees of freedom: the scatter is taken as equal at all points. pointCount: number of points
/// that could deviate. A parameter is undetermined if its standard error is larger than the parameter, or if changing
/// it, alone or together with others, changes no point. Method: G. A. F. Seber, C. J. Wild, Nonlinear Regression
/// (1989), chapter 2, with Student's t.
Uncertainty uncertaintyOf(fit::Problem& problem, const fit::Parameters& values, const FreeSlots& free, int pointCount);

} // namespace leastsquares
