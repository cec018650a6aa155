#pragma once

#include <optional>

namespace leastsquares
{

/// The smallest number of observations for which there is a criterion with k fitted constants.
constexpr int observationsForAkaike(int k) { return k + 2; }

/// Akaike's criterion for small samples: n ln(S / n) + 2 k + 2 k (k + 1) / (n - k - 1) for n observations and k fitted
/// constants, the variance among them; none if n is too small.
/// Source: C. M. Hurvich, C.-L. Tsai, Biometrika 76 (1989) 297.
std::optional<double> correctedAkaike(double sumOfSquares, int n, int k);

} // namespace leastsquares
