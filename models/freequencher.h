#pragma once

#include <cmath>

namespace models
{

/// Quencher left free by a 1:1 complex with the probe: the positive root of K q^2 + (1 + K Cp - K x) q - x = 0.
/// x: total quencher, M. K: association constant, M^-1, not 0. Cp: total probe, M.
/// Returns M; 0 at x = 0, x at Cp = 0. Source: law of mass action with both mass balances.
inline double FreeQuencher(double x, double K, double Cp)
{
    const double b = 1.0 - K * x + K * Cp;
    return (-b + std::sqrt(b * b + 4.0 * K * x)) / (2.0 * K);
}

} // namespace models
