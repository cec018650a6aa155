#pragma once

#include "decay/decayproblem.h"
#include "fit/gaussnewton.h"

namespace decay
{

/// The engine's fit of the decay curves of all samples. It prints what the formulas as written print.
///
/// In normal mode the fit begins with the fast evaluation, whose intensities differ by rounding only, and begins again
/// as written as soon as that could show. In log mode constants that the data leave open always wander, and a tolerance
/// below the rounding of the sums leaves the end to the last digits: such fits are made as written from the beginning.
/// The observer is asked once for every iteration; the number of iterations that it is told never falls.
fit::Outcome fitCurves(DecayProblem& problem, const fit::Options& options, const fit::Parameters& start,
                       fit::Observer& observer);

} // namespace decay
