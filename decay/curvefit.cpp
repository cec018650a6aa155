#include "decay/curvefit.h"

#include <cmath>

namespace decay
{
namespace
{

constexpr double kNearest = 1e-4; // root mean square of intensities that begin with 1
constexpr double kFarthest = 100; // factor between the start and the end of a constant

/// Data that leave a constant open let it wander, and the last digits decide where to.
bool wandered(double start, double end)
{
    const double factor = std::abs(end / start);
    return !(factor < kFarthest && factor > 1 / kFarthest);
}

bool hangsOnLastDigits(const fit::Outcome& outcome, const fit::Options& options, const fit::Parameters& start,
                       int pointCount)
{
    switch (outcome.ending) {
    case fit::Ending::Stopped:
        return false;
    case fit::Ending::SolverFailed:
    case fit::Ending::ArithmeticFault:
        return true;
    case fit::Ending::Converged:
    case fit::Ending::LimitExceeded:
        break;
    }
    bool anyWandered = false;
    for (std::size_t j = 1; j <= static_cast<std::size_t>(options.parameterCount); ++j)
        anyWandered = anyWandered || wandered(start[j], outcome.parameters[j]);
    return anyWandered || outcome.residualSum < kNearest * kNearest * pointCount;
}

} // namespace

fit::Outcome fitCurves(DecayProblem& problem, const fit::Options& options, const fit::Parameters& start,
                       fit::Observer& observer)
{
    if (options.logMode != 1) {
        problem.setEvaluation(Evaluation::Fast);
        const fit::Outcome outcome = fit::gaussNewton(problem, options, start, observer);
        problem.setEvaluation(Evaluation::AsWritten);
        const bool stopped = !observer.keepGoing(outcome.iterations); // with the last update, too late for the engine
        if (stopped || !hangsOnLastDigits(outcome, options, start, problem.pointCount()))
            return outcome;
    }
    return fit::gaussNewton(problem, options, start, observer);
}

} // namespace decay
