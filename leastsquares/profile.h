#pragma once

#include "leastsquares/minimum.h"
#include "leastsquares/scatter.h"

#include <optional>

namespace leastsquares
{

/// A value of one parameter, and the least sum of squares that the other free parameters reach there.
struct ProfilePoint {
    double value = 0;
    double sumOfSquares = 0;
};

/// The profile of one parameter: the 95 percent interval by likelihood.
struct Profile {
    std::optional<double> low, high;  // none: the interval is open on this side
    std::vector<ProfilePoint> points; // ascending by value, the minimum among them; enough to draw a smooth curve
    std::optional<Minimum> lower;     // the walk met a sum so much lower that the data can tell
};

/// The least sum of squares at the ends of a 95 percent interval: the minimum + s2 t^2.
double highestSum(const Minimum& minimum, const Scatter& scatter);

/// Walks from the minimum to both sides along the valley of the least sums until the sum passes highestSum(). A
/// parameter keeps its sign: if even values next to 0 fit well enough, the interval is open towards 0. It is open
/// outwards if the end of the range fits well enough. range: of the size of this parameter; the others may take any
/// size. A parameter at 0 is taken as the least size of the range. Without errors in scatter both sides are open and
/// there are no points. For a law linear in its parameters this is the symmetrical interval, value -+ t times its
/// standard error. Method: D. M. Bates, D. G. Watts, Nonlinear Regression Analysis and its Applications (1988),
/// chapter 6.
Profile profileOf(fit::Problem& problem, const Minimum& minimum, const FreeSlots& free, std::size_t slot,
                  const Scatter& scatter, const Range& range = kAnySize);

} // namespace leastsquares
