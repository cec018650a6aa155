#include "fit/gaussnewton.h"

#include "fit/normalequations.h"
#include "fit/roundingwatch.h"
#include "fit/safelog10.h"
#include "fit/vectorregisters.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>

namespace fit
{
namespace
{

double log10OrZero(double x) { return SafeLog10(x).value_or(0); }

/// Reduces a magnitude above 1e25 to just below 1e25 and keeps its digits.
double heldInNormalMode(double a)
{
    constexpr double kLimit = 1e25;
    if (std::abs(a) > kLimit)
        return a / std::pow(10, std::floor(log10OrZero(std::abs(a)) - 24));
    return a;
}

/// Sets a natural logarithm above 50 to 10, and multiplies one below -50 by 10^-0.25 until it is between -10 and -17.8.
/// The two sides differ deliberately.
double heldInLogMode(double a)
{
    constexpr double kLimit = 50;
    if (a > kLimit)
        return a / std::pow(10, log10OrZero(a) - 1);
    if (a < -kLimit)
        return a / std::pow(10, std::floor(4 * (log10OrZero(-a) - 1)) / 4);
    return a;
}

} // namespace

/// The state of a running fit. Its predicates tell whether the run ends here, and store how it ends.
class GaussNewton::Run
{
public:
    Run(Problem& problem, const Options& options, const Parameters& start)
        : m_problem(problem), m_options(options), m_watch(options.residualRounding)
    {
        m_pass.pointCount = problem.pointCount();
        m_pass.parameterCount = options.parameterCount;
        assert(options.parameterCount >= 1 && options.parameterCount <= kMaxParameters);
        m_outcome.parameters = start;
    }

    const Outcome& outcome() const { return m_outcome; }
    bool iterate(Observer& observer);

private:
    void linearise();
    bool roundingMatters();
    bool converged();
    bool solverFailed();
    void update();
    void keepInRange();
    void countUpdate() { ++m_outcome.iterations; }
    bool faulty();
    bool stopRequested();
    bool limitExceeded();
    bool stoppedBy(Observer& observer);
    int parameterCount() const { return m_options.parameterCount; }
    Vector7 derivativeSteps() const;
    bool realParametersFinite() const;
    bool endIf(bool condition, Ending ending);

    Problem& m_problem;
    const Options m_options;
    RoundingWatch m_watch;
    Linearisation m_pass; // the first sum of squares is compared with 1, on purpose
    Vector7 m_step{};     // right-hand side, after the solution the step
    Outcome m_outcome;
};

void GaussNewton::Run::linearise()
{
    m_pass.steps = derivativeSteps();
    const NormalEquations equations = normalEquations(m_problem, m_outcome.parameters, m_pass.steps, parameterCount());
    m_pass.normal = equations.matrix;
    m_step = equations.rightSide;
    if (m_outcome.iterations > 0)
        m_pass.previousSum = m_pass.sum;
    m_pass.sum = equations.sumOfSquares;
}

/// An eighth of each parameter at first, halved with every iteration down to 1/128.
Vector7 GaussNewton::Run::derivativeSteps() const
{
    const double divisor = std::exp2(std::min(m_outcome.iterations, 4.0) + 3);
    Vector7 h{};
    for (int j = 1; j <= parameterCount(); ++j) {
        const double a = m_outcome.parameters[j];
        h[j] = (a == 0 && m_options.unitStepForZero ? 1 : a) / divisor;
    }
    return h;
}

bool GaussNewton::Run::roundingMatters()
{
    return endIf(m_watch.couldShow(m_pass, m_options.tolerance), Ending::RoundingMatters);
}

bool GaussNewton::Run::converged()
{
    return endIf(std::abs(1 - m_pass.ratio()) < m_options.tolerance, Ending::Converged);
}

/// Solves for the step. After a zero pivot beyond the first unknown, only the unknowns before it are solved again; the
/// others then move by the values that the first attempt left.
bool GaussNewton::Run::solverFailed()
{
    int info = 0;
    GaussianElimination(m_pass.normal, m_step, parameterCount(), info);
    if (info <= 1)
        return false; // a zero pivot of the first unknown is not retried: the step is the right-hand side
    m_outcome.status = Status::ZeroPivot;
    const int smaller = info - 1;
    GaussianElimination(m_pass.normal, m_step, smaller, info);
    return endIf(info > 0, Ending::SolverFailed);
}

void GaussNewton::Run::update()
{
    for (int j = 1; j <= parameterCount(); ++j) {
        if (m_options.fix[j] == 1)
            continue;
        double& a = m_outcome.parameters[j];
        if (m_options.aboveZero[j] == 1 && a + m_step[j] <= 0)
            a /= 2;
        else
            a += m_step[j];
    }
}

void GaussNewton::Run::keepInRange()
{
    for (int j = 1; j <= parameterCount(); ++j) {
        double& a = m_outcome.parameters[j];
        a = m_options.logMode == 1 ? heldInLogMode(a) : heldInNormalMode(a);
    }
}

/// Whether the model's parameters are finite, also when shifted: in log mode the model uses exp of them, and an
/// infinite parameter could vanish in a quotient.
bool GaussNewton::Run::realParametersFinite() const
{
    static const double kLargestLogarithm = std::log(std::numeric_limits<double>::max());
    if (m_options.logMode != 1)
        return true;
    for (int j = 1; j <= parameterCount(); ++j)
        if (m_outcome.parameters[j] + std::max(m_pass.steps[j], 0.0) > kLargestLogarithm)
            return false;
    return true;
}

/// The only place that checks for arithmetic faults: no data point, or a number of the run that is not finite.
bool GaussNewton::Run::faulty()
{
    bool finite = realParametersFinite() && m_pass.pointCount > 0 && std::isfinite(m_options.tolerance) &&
                  std::isfinite(m_pass.sum) && std::isfinite(m_pass.ratio());
    for (int j = 1; j <= parameterCount(); ++j) {
        finite = finite && std::isfinite(m_step[j]) && std::isfinite(m_outcome.parameters[j]);
        for (int k = j; k <= parameterCount(); ++k)
            finite = finite && std::isfinite(m_pass.normal[j][k]);
    }
    return endIf(!finite, Ending::ArithmeticFault);
}

bool GaussNewton::Run::stopRequested() { return endIf(StopRequested, Ending::Stopped); }

bool GaussNewton::Run::limitExceeded()
{
    const bool exceeded = m_outcome.iterations > m_options.iterationLimit;
    if (exceeded)
        m_outcome.status = Status::LimitExceeded;
    return endIf(exceeded, Ending::LimitExceeded);
}

bool GaussNewton::Run::stoppedBy(Observer& observer)
{
    return endIf(!observer.keepGoing(m_outcome.iterations), Ending::Stopped);
}

bool GaussNewton::Run::endIf(bool condition, Ending ending)
{
    if (condition)
        m_outcome.ending = ending;
    return condition;
}

bool GaussNewton::Run::iterate(Observer& observer)
{
    clearUpperHalves(); // events have run
    linearise();        // sum of squares, normal matrix, right-hand side
    if (faulty() || roundingMatters() || converged() || solverFailed() || faulty())
        return false;
    update();
    keepInRange();
    if (faulty())
        return false;
    countUpdate();
    observer.letEventsRun();
    return !(stopRequested() || limitExceeded() || stoppedBy(observer));
}

GaussNewton::GaussNewton(Problem& problem, const Options& options, const Parameters& start)
    : m_run(std::make_unique<Run>(problem, options, start))
{
}

GaussNewton::~GaussNewton() = default;

bool GaussNewton::iterate(Observer& observer) { return m_run->iterate(observer); }

const Outcome& GaussNewton::outcome() const { return m_run->outcome(); }

Outcome gaussNewton(Problem& problem, const Options& options, const Parameters& start, Observer& observer)
{
    GaussNewton run(problem, options, start);
    while (run.iterate(observer)) {
    }
    return run.outcome();
}

} // namespace fit
