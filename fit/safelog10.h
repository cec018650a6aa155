#pragma once

#include <optional>

namespace fit
{

inline constexpr double kLn10 = 2.302585093; // ten digits on purpose: log10(1000) must come out just below 3

/// Base-10 logarithm of x as ln(x) / kLn10; empty for x <= 0 and for a NaN.
std::optional<double> SafeLog10(double x);

} // namespace fit
