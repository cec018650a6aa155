#pragma once

#include "lifetimes/staticfactor.h"

#include <vector>

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

/// Models whose AICc exceeds the lowest by less than this describe the data about equally well: with as many constants,
/// the likelihood of the first is 20 times as high.
inline constexpr double kEquallyWell = 6;

struct Decision {
    Mechanism mechanism = Mechanism::Open;
    std::vector<int> models{};     // that describe the data about equally well, ascending
    bool staticHidden = false;     // open, because a static part could go unnoticed beside the collisions
    bool collisionsHidden = false; // open, because collisions could go unnoticed beside the static part
};

/// fits: of all models with a law for lifetimes. A model counts if the data determine its constants and if each
/// constant that a simpler model lacks lowers the sum of squares more than chance does in 95 % of cases
/// (leastsquares::nestedProbability). Open without samples that have both ratios.
Decision decide(const Measurements& measurements, const std::vector<CombinedFit>& fits, const StaticFactor& factor);

} // namespace lifetimes
