#pragma once

#include "decay/decayproblem.h"
#include "fit/gaussnewton.h"

namespace decay
{

/// The engine's fit of the decay curves of all samples, which ends as it does with the formulas as written.
///
/// The fast evaluation, which differs from them in the last digits only, serves where these have no influence: in
/// normal mode, while the curves miss the observations by more than rounding. A fit that comes nearer to them than any
/// measurement, that ends with a fault, or of which a constant wanders off, owes its end to the last digits and is done
/// again as written. In log mode constants that the data leave open always wander.
fit::Outcome fitCurves(DecayProblem& problem, const fit::Options& options, const fit::Parameters& start,
                       fit::Observer& observer);

} // namespace decay
