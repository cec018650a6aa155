#pragma once

#include <cmath>

namespace models
{

/// 4 pi times 0.6022, Avogadro's number scaled for K in M^-1 and lengths in nm.
inline constexpr double kMolarSphere = 7.567461992;

/// The interaction radius (s^3 + 3 K / (4 pi N_A))^(1/3) in nm for an association constant K in M^-1 and a probe of
/// radius s in nm; 0 if the sum is not positive.
inline double interactionRadius(double K, double s)
{
    const double cube = s * s * s + 3 * K / kMolarSphere;
    return cube > 0 ? std::cbrt(cube) : 0;
}

/// The volume in nm^3 that K in M^-1 adds to the probe's own: K / N_A.
inline double interactionVolume(double K)
{
    constexpr double kFourPi = 12.566370614359172;
    return kFourPi * K / kMolarSphere;
}

} // namespace models
