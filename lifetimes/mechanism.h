#pragma once

#include "lifetimes/staticfactor.h"

#include <string>

namespace lifetimes
{

/// What quenches, as far as the data tell.
enum class Mechanism {
    Open,            // several describe the data about equally well, or too few data
    Collisions,      // s = 1
    Complex,         // a dark complex; the lifetime does not change
    Sphere,          // a dark sphere, likewise
    ComplexOrSphere, // one or the other
    ComplexAndCollisions,
    SphereAndCollisions,
    ComplexOrSphereAndCollisions,
    TwoSites,         // s = 1, and both ratios bend downwards
    NotOnePopulation, // s < 1
};

struct Finding {
    Mechanism mechanism = Mechanism::Open;
    std::string sentence; // never more certain than the data
};

/// Models whose AICc exceeds the lowest by less than this describe the data about equally well.
inline constexpr double kEquallyWell = 6;

/// fits: of all models with a law for lifetimes. A model counts if the data determine its constants and if each
/// constant that a simpler model lacks lowers the sum of squares more than chance does in 95 % of cases
/// (leastsquares::nestedProbability).
Finding findingOf(const Measurements& measurements, const std::vector<CombinedFit>& fits, const StaticFactor& factor);

} // namespace lifetimes
