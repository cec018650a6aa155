#pragma once

#include <vector>

namespace plot
{

inline constexpr int kMaxSteps = 1000; // many more than a chart or table can show

/// first, first + step, ... up to and including last, in the direction of the step, by repeated addition. A value that
/// exceeds last only by the rounding of the additions still counts as last. At most kMaxSteps values; none for a step
/// that is zero or not finite.
std::vector<double> evenSteps(double first, double last, double step);

} // namespace plot
