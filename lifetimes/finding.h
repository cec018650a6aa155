#pragma once

#include "lifetimes/mechanism.h"

#include <string>

namespace lifetimes
{

/// What quenches, and the sentence about it, which is never more certain than the data.
struct Finding {
    Mechanism mechanism = Mechanism::Open;
    std::string sentence;
};

/// fits: of all models with a law for lifetimes.
Finding findingOf(const Measurements& measurements, const std::vector<CombinedFit>& fits, const StaticFactor& factor);

} // namespace lifetimes
