#include "trust/enginestart.h"

#include "fit/numbertext.h"
#include "fit/realparameters.h"
#include "fit/vectorregisters.h"

#include <cmath>
#include <limits>

namespace trust
{
namespace
{

constexpr const char* kAllDigits = "0.000######e+0";

/// Presents a problem in real units to the engine, with logarithms in log mode.
class EngineView final : public fit::Problem
{
public:
    EngineView(fit::Problem& problem, int logMode) : m_problem(problem), m_logMode(logMode) {}
    int pointCount() const override { return m_problem.pointCount(); }
    double residual(int point, const fit::Parameters& a) override
    {
        return m_problem.residual(point, fit::realParameters(m_logMode, a));
    }
    int pointsAtOnce(int first) const override { return m_problem.pointsAtOnce(first); }
    void residuals(int first, const fit::Parameters& a, std::span<double> room) override
    {
        m_problem.residuals(first, fit::realParameters(m_logMode, a), room);
    }

private:
    fit::Problem& m_problem;
    int m_logMode;
};

/// Lets a run continue as long as its caller wants, but not beyond a limit.
class Patience final : public fit::Observer
{
public:
    Patience(double maxIterations, const KeepGoing& keepGoing) : m_maxIterations(maxIterations), m_keepGoing(keepGoing)
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

double evaluationsPerIteration(const fit::Problem& problem, const fit::Options& options)
{
    return static_cast<double>(problem.pointCount()) * (options.parameterCount + 1);
}

fit::Parameters engineParameters(const fit::Options& options, const fit::Parameters& values)
{
    fit::Parameters a = values;
    for (std::size_t j = 1; options.logMode == 1 && j < a.size(); ++j)
        a[j] = values[j] > 0 ? std::log(values[j]) : 0;
    return a;
}

class Trial
{
public:
    Trial(fit::Problem& problem, const fit::Options& options, const leastsquares::FreeSlots& free,
          const leastsquares::Minimum& minimum, const KeepGoing& keepGoing)
        : m_problem(problem), m_options(options), m_free(free), m_minimum(minimum), m_keepGoing(keepGoing)
    {
    }

    EngineStart result();

private:
    EngineStart tried(const fit::Parameters& values);
    fit::Parameters rounded(fit::Parameters values, const char* pattern) const;
    fit::Parameters briefly(const fit::Parameters& exact);
    bool improve(EngineStart& best, double step);
    bool mayTry() const { return m_evaluationsLeft > 0 && (!m_keepGoing || m_keepGoing()); }

    fit::Problem& m_problem;
    const fit::Options& m_options;
    const leastsquares::FreeSlots& m_free;
    const leastsquares::Minimum& m_minimum;
    double m_evaluationsLeft = kEvaluations;
    const KeepGoing& m_keepGoing;
};

/// Looks around the minimum for a start that ends lower: at first 50 % away, then closer.
EngineStart Trial::result()
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

bool Trial::improve(EngineStart& best, double step)
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

EngineStart Trial::tried(const fit::Parameters& values)
{
    const EngineRun run = runEngine(m_problem, m_options, values, m_evaluationsLeft, m_keepGoing);
    m_evaluationsLeft -= (run.outcome.iterations + 1) * evaluationsPerIteration(m_problem, m_options);
    return {.values = values,
            .sumOfSquares = leastsquares::sumOfSquares(m_problem, values),
            .reached = run.sumOfSquares,
            .leadsToMinimum =
                leastsquares::equallyGood(run.sumOfSquares, m_minimum.sumOfSquares, m_problem.pointCount())};
}

fit::Parameters Trial::rounded(fit::Parameters values, const char* pattern) const
{
    for (const std::size_t slot : m_free)
        values[slot] = fit::numberFrom(fit::formatNumber(values[slot], pattern));
    return values;
}

/// Uses as few digits as the sum of squares allows, because the boxes are narrow.
fit::Parameters Trial::briefly(const fit::Parameters& exact)
{
    constexpr double kShare = 0.1; // of the tolerance for equally good sums
    const double sum = leastsquares::sumOfSquares(m_problem, exact);
    for (const char* pattern : {"0.000e+0", "0.0000e+0", "0.00000e+0"}) {
        const fit::Parameters values = rounded(exact, pattern);
        if (leastsquares::equallyGood(sum + (leastsquares::sumOfSquares(m_problem, values) - sum) / kShare, sum,
                                      m_problem.pointCount()))
            return values;
    }
    return rounded(exact, kAllDigits);
}

} // namespace

EngineRun runEngine(fit::Problem& problem, const fit::Options& options, const fit::Parameters& start,
                    double maxEvaluations, const KeepGoing& keepGoing)
{
    EngineView view(problem, options.logMode);
    Patience patience(maxEvaluations / evaluationsPerIteration(problem, options), keepGoing);
    EngineRun run;
    run.outcome = fit::gaussNewton(view, options, engineParameters(options, start), patience);
    fit::clearUpperHalves(); // keepGoing let events run
    run.values = fit::realParameters(options.logMode, run.outcome.parameters);
    run.sumOfSquares = run.outcome.ending == fit::Ending::ArithmeticFault
                           ? std::numeric_limits<double>::infinity()
                           : leastsquares::sumOfSquares(problem, run.values);
    return run;
}

bool leadsToMinimum(fit::Problem& problem, const fit::Options& options, const fit::Parameters& start,
                    const leastsquares::Minimum& minimum, const KeepGoing& keepGoing)
{
    const double reached = runEngine(problem, options, start, kEvaluations, keepGoing).sumOfSquares;
    return leastsquares::equallyGood(reached, minimum.sumOfSquares, problem.pointCount());
}

EngineStart engineStart(fit::Problem& problem, const fit::Options& options, const leastsquares::FreeSlots& free,
                        const leastsquares::Minimum& minimum, const KeepGoing& keepGoing)
{
    return Trial(problem, options, free, minimum, keepGoing).result();
}

std::string startText(double value) { return fit::formatNumber(value, kAllDigits); }

} // namespace trust
