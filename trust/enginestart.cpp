#include "trust/enginestart.h"

#include "fit/numbertext.h"
#include "fit/vectorregisters.h"

#include <limits>

namespace trust
{
namespace
{

constexpr const char* kAllDigits = "0.000######e+0";

/// Lets a run continue as long as its caller wants, but not beyond a limit.
class IterationLimit final : public fit::Observer
{
public:
    IterationLimit(double maxIterations, const KeepGoing& keepGoing)
        : m_maxIterations(maxIterations), m_keepGoing(keepGoing)
    {
    }
    void letEventsRun() override {}
    bool keepGoing(double iterations) override
    {
        return iterations < m_maxIterations && (!m_keepGoing || m_keepGoing());
    }

private:
    double m_maxIterations;
    const KeepGoing& m_keepGoing;
};

double evaluationsPerIteration(const RequestedFit& requested)
{
    return static_cast<double>(requested.problem.pointCount()) * (requested.request.options.parameterCount + 1);
}

analysis::Request startingFrom(analysis::Request request, const fit::Parameters& values)
{
    request.values = values;
    return request;
}

class StartFinder
{
public:
    StartFinder(const RequestedFit& requested, const leastsquares::Minimum& minimum, const KeepGoing& keepGoing)
        : m_requested(requested), m_free(requested.free()), m_minimum(minimum), m_keepGoing(keepGoing)
    {
    }

    EngineStart result();

private:
    EngineStart tried(const fit::Parameters& values);
    fit::Parameters rounded(fit::Parameters values, const char* pattern) const;
    fit::Parameters briefly(const fit::Parameters& exact);
    bool improve(EngineStart& best, double step);
    bool mayTry() const { return m_evaluationsLeft > 0 && (!m_keepGoing || m_keepGoing()); }

    const RequestedFit& m_requested;
    const leastsquares::FreeSlots m_free;
    const leastsquares::Minimum& m_minimum;
    double m_evaluationsLeft = kEvaluations;
    const KeepGoing& m_keepGoing;
};

/// Looks around the minimum for a start that ends lower: at first 50 % away, then closer.
EngineStart StartFinder::result()
{
    const EngineStart atMinimum = tried(briefly(m_minimum.values));
    EngineStart best = atMinimum;
    if (!best.leadsToMinimum)
        best = tried(rounded(m_minimum.values, kAllDigits));
    for (double step = 0.5; !best.leadsToMinimum && step > 1e-3 && mayTry();)
        if (!improve(best, step))
            step /= 2;
    return best.leadsToMinimum ? best : atMinimum;
}

bool StartFinder::improve(EngineStart& best, double step)
{
    const EngineStart centre = best;
    for (const std::size_t slot : m_free)
        for (const double factor : {1 + step, 1 / (1 + step)}) {
            if (!mayTry())
                return false;
            fit::Parameters moved = centre.values;
            moved[slot] *= factor;
            const EngineStart trial = tried(rounded(moved, kAllDigits));
            if (trial.reached < best.reached)
                best = trial;
        }
    return best.reached < centre.reached;
}

EngineStart StartFinder::tried(const fit::Parameters& values)
{
    const analysis::Request request = startingFrom(m_requested.request, values);
    const EngineRun run = runEngine({m_requested.problem, request}, m_evaluationsLeft, m_keepGoing);
    m_evaluationsLeft -= (run.result.iterations + 1) * evaluationsPerIteration(m_requested);
    return {.values = values,
            .sumOfSquares = leastsquares::sumOfSquares(m_requested.problem, values),
            .reached = run.sumOfSquares,
            .leadsToMinimum =
                leastsquares::equallyGood(run.sumOfSquares, m_minimum.sumOfSquares, m_requested.problem.pointCount())};
}

fit::Parameters StartFinder::rounded(fit::Parameters values, const char* pattern) const
{
    for (const std::size_t slot : m_free)
        values[slot] = fit::numberFrom(fit::formatNumber(values[slot], pattern));
    return values;
}

/// Uses as few digits as the sum of squares allows, because the boxes are narrow.
fit::Parameters StartFinder::briefly(const fit::Parameters& exact)
{
    constexpr double kShare = 0.1; // of what counts as equally good
    const double sum = leastsquares::sumOfSquares(m_requested.problem, exact);
    for (const char* pattern : {"0.000e+0", "0.0000e+0", "0.00000e+0"}) {
        const fit::Parameters values = rounded(exact, pattern);
        if (leastsquares::equallyGood(sum + (leastsquares::sumOfSquares(m_requested.problem, values) - sum) / kShare,
                                      sum, m_requested.problem.pointCount()))
            return values;
    }
    return rounded(exact, kAllDigits);
}

} // namespace

EngineRun runEngine(const RequestedFit& requested, double maxEvaluations, const KeepGoing& keepGoing)
{
    analysis::Request request = requested.request;
    request.quick = true; // a start need not be exact
    IterationLimit limit(maxEvaluations / evaluationsPerIteration(requested), keepGoing);
    EngineRun run{analysis::run(request, limit)};
    fit::clearUpperHalves(); // keepGoing has let events run
    run.sumOfSquares = run.result.ending == fit::Ending::ArithmeticFault
                           ? std::numeric_limits<double>::infinity()
                           : leastsquares::sumOfSquares(requested.problem, run.result.values);
    return run;
}

bool leadsToMinimum(const RequestedFit& requested, const leastsquares::Minimum& minimum, const KeepGoing& keepGoing)
{
    const double reached = runEngine(requested, kEvaluations, keepGoing).sumOfSquares;
    return leastsquares::equallyGood(reached, minimum.sumOfSquares, requested.problem.pointCount());
}

EngineStart engineStart(const RequestedFit& requested, const leastsquares::Minimum& minimum, const KeepGoing& keepGoing)
{
    return StartFinder(requested, minimum, keepGoing).result();
}

std::string startText(double value) { return fit::formatNumber(value, kAllDigits); }

} // namespace trust
