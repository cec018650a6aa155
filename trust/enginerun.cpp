#include "trust/enginerun.h"

#include "fit/realparameters.h"
#include "leastsquares/minimum.h"

#include <limits>

namespace trust
{
EngineRun::EngineRun(const analysis::Request& request, double maxEvaluations)
    : m_problem(analysis::engineProblem(request)), m_logMode(request.options.logMode),
      m_evaluationsPerIteration(static_cast<double>(m_problem->pointCount()) * (request.options.parameterCount + 1)),
      m_limit(maxEvaluations / m_evaluationsPerIteration),
      m_run(*m_problem, analysis::engineOptions(request), analysis::startParameters(request))
{
}

double EngineRun::evaluations() const { return (m_run.outcome().iterations + 1) * m_evaluationsPerIteration; }

analysis::Result EngineRun::result() const
{
    const fit::Outcome& outcome = m_run.outcome();
    return {.parameters = outcome.parameters,
            .values = fit::realParameters(m_logMode, outcome.parameters),
            .fitted = true,
            .status = static_cast<int>(outcome.status),
            .iterations = outcome.iterations,
            .ending = outcome.ending,
            .fault = outcome.ending == fit::Ending::ArithmeticFault};
}

analysis::Result runEngine(const analysis::Request& request, const KeepGoing& keepGoing)
{
    EngineRun run(request);
    while (run.step() && (!keepGoing || keepGoing())) {
    }
    return run.result();
}

double sumAtEnd(fit::Problem& problem, const analysis::Result& result)
{
    return result.fault ? std::numeric_limits<double>::infinity() : leastsquares::sumOfSquares(problem, result.values);
}

} // namespace trust
