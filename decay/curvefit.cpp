#include "decay/curvefit.h"

#include <algorithm>

namespace decay
{
namespace
{

constexpr double kFinestTolerance = 1e-10; // far above the rounding of S / S_old in fits to measured data

/// Reports progress only beyond the iterations of an earlier run.
class LaterRun final : public fit::Observer
{
public:
    LaterRun(fit::Observer& observer, double reached) : m_observer(observer), m_reached(reached) {}

    void letEventsRun() override { m_observer.letEventsRun(); }
    bool keepGoing(double iterations) override { return m_observer.keepGoing(std::max(iterations, m_reached)); }

private:
    fit::Observer& m_observer;
    const double m_reached; // iterations
};

fit::Outcome fitFast(DecayProblem& problem, fit::Options options, const fit::Parameters& start, fit::Observer& observer)
{
    options.residualRounding = kFastRounding;
    problem.setEvaluation(models::Evaluation::Fast);
    const fit::Outcome outcome = fit::gaussNewton(problem, options, start, observer);
    problem.setEvaluation(models::Evaluation::AsWritten);
    return outcome;
}

/// A fault may come from an exponent with which the fast evaluation overflows or underflows, but not the formula.
bool stands(const fit::Outcome& fast)
{
    return fast.ending != fit::Ending::RoundingMatters && fast.ending != fit::Ending::ArithmeticFault;
}

} // namespace

fit::Outcome fitCurves(DecayProblem& problem, const fit::Options& options, const fit::Parameters& start,
                       fit::Observer& observer)
{
    double reached = 0;
    if (options.logMode != 1 && options.tolerance >= kFinestTolerance) {
        const fit::Outcome fast = fitFast(problem, options, start, observer);
        if (stands(fast))
            return fast;
        reached = fast.iterations;
    }
    LaterRun observed(observer, reached);
    return fit::gaussNewton(problem, options, start, observed);
}

} // namespace decay
