#pragma once

#include "decay/decayproblem.h"
#include "fit/gaussnewton.h"

namespace decay
{

/// The engine's fit of the decay curves of all samples. It prints what the formulas as written print.
///
/// In normal mode the fit begins with the fast evaluation, whose intensities differ only by rounding, and starts again
/// as written as soon as rounding could show in the result. Two kinds of fits are calculated as written from the
/// beginning: fits in log mode, where constants that the data do not determine always drift, and fits with a tolerance
/// below the rounding of the sums, where the last digits decide the end. The observer is called once for every
/// iteration; the number of iterations that it receives never falls.
fit::Outcome fitCurves(DecayProblem& problem, const fit::Options& options, const fit::Parameters& start,
                       fit::Observer& observer);

} // namespace decay
