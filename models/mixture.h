#pragma once

#include <cmath>

namespace models
{

/// A solution of probe and quencher, as laws see it.
struct Mixture {
    double Q = 0;    // total quencher, M
    double Cp = 0;   // total probe, M
    double tau0 = 0; // lifetime of the probe without quencher, s; decay laws do not depend on it
};

/// Quencher left free by a 1:1 complex with the probe: the positive root q, M, of K q^2 + (1 + K Cp - K Q) q - Q = 0.
/// K: association constant, M^-1, not 0. Returns 0 at Q = 0, Q at Cp = 0. Source: law of mass action with both mass
/// balances.
inline double FreeQuencher(const Mixture& mix, double K)
{
    const double b = 1.0 - K * mix.Q + K * mix.Cp;
    return (-b + std::sqrt(b * b + 4.0 * K * mix.Q)) / (2.0 * K);
}

} // namespace models
