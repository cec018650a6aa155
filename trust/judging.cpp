#include "trust/judging.h"

#include "fit/vectorregisters.h"
#include "leastsquares/uncertainty.h"

#include <algorithm>
#include <cmath>

namespace trust
{
namespace
{

constexpr double kMoreIterations = 1000, kToleranceDivisor = 1000,
                 kMostEvaluations = 4 * kEvaluations; // of the longer run

/// 1 to 9 times a power of ten, or a little more than asked.
double roundedUp(double iterations)
{
    const double decade = std::pow(10, std::floor(std::log10(std::max(iterations, 1.0))));
    return std::ceil(iterations / decade) * decade;
}

} // namespace

Judging::Judging(analysis::Request request, analysis::Result result, LeastSums& known)
    : m_request(std::move(request)), m_result(std::move(result)), m_known(known),
      m_problem(realProblem(m_request)), m_requested{*m_problem, m_request}
{
    m_judgement.options = m_request.options;
    m_judgement.sumOfSquares = sumAtEnd(*m_problem, m_result);
    m_judgement.leastSum = m_judgement.sumOfSquares;
    if (m_requested.free().empty()) {
        m_stage = Stage::Done;
        m_judgement.verdict = std::isfinite(m_judgement.sumOfSquares) ? Verdict::NothingFree : Verdict::NotDefined;
    } else {
        m_search.emplace(m_requested, m_known);
    }
}

bool Judging::advance(std::chrono::milliseconds budget)
{
    using Clock = std::chrono::steady_clock;
    const Clock::time_point end = Clock::now() + budget;
    fit::clearUpperHalves(); // events have run
    while (step())
        if (Clock::now() >= end)
            return false;
    return true;
}

bool Judging::step()
{
    switch (m_stage) {
    case Stage::Search:
        if (!m_search->step())
            endSearch();
        break;
    case Stage::Descend:
        if (!m_descent->step())
            endDescent();
        break;
    case Stage::GoOn:
        if (!m_longerRun->step())
            endLongerRun();
        break;
    case Stage::FindStart:
        if (!m_startFinder->step())
            endFindStart();
        break;
    case Stage::Done:
        break;
    }
    return m_stage != Stage::Done;
}

void Judging::endSearch()
{
    m_known.keep(m_request, m_search->minima());
    leastsquares::Ranges ranges = countedRanges(m_request.model);
    for (const std::size_t slot : m_requested.free()) {
        const double size = std::abs(m_result.values[slot]);
        constexpr double kAround = 10; // of a constant of unusual size
        if (size < ranges[slot].low)
            ranges[slot].low = size / kAround;
        if (size > ranges[slot].high)
            ranges[slot].high = size * kAround;
    }
    m_descent.emplace(*m_problem, m_result.values, m_requested.free(), ranges);
    m_stage = Stage::Descend;
    if (!std::isfinite(m_judgement.sumOfSquares)) {
        m_judgement.verdict = Verdict::NotDefined;
        findStart();
    }
}

bool Judging::atLeast(double sum) const
{
    return leastsquares::equallyGood(sum, m_judgement.leastSum, m_problem->pointCount());
}

void Judging::endDescent()
{
    const leastsquares::Minimum downhill = m_descent->reached();
    m_known.offer(m_request, downhill);
    Judgement& judgement = m_judgement;
    const double knownLeast = m_known.leastSum(m_request);
    judgement.unusual = !leastsquares::equallyGood(knownLeast, downhill.sumOfSquares, m_problem->pointCount());
    judgement.leastSum = std::min(knownLeast, downhill.sumOfSquares);
    judgement.leastIsExact = leastsquares::equallyGood(judgement.leastSum, 0, m_problem->pointCount());
    const bool stopped = m_result.fitted && m_result.ending == fit::Ending::Stopped;
    if (atLeast(judgement.sumOfSquares)) {
        judgement.verdict = verdictAtLeast();
        m_stage = Stage::Done;
    } else {
        const bool atBottom =
            leastsquares::equallyGood(judgement.sumOfSquares, downhill.sumOfSquares, m_problem->pointCount());
        const bool flat =
            !leastsquares::uncertaintyOf(*m_problem, m_result.values, m_requested.free(), m_requested.countedPoints())
                 .undetermined.empty();
        judgement.verdict = atBottom && !flat ? Verdict::LocalMinimum : Verdict::NotAMinimum;
        judgement.likely =
            analysis::methodOf(m_request) == models::Analysis::SternVolmer &&
            judgement.sumOfSquares <= leastsquares::regionLimit(judgement.leastSum, m_requested.countedPoints(),
                                                                static_cast<int>(m_requested.free().size()));
        if (m_result.fitted && !stopped)
            goOn(m_result.ending == fit::Ending::LimitExceeded, m_result.ending != fit::Ending::LimitExceeded);
        else
            findStart();
    }
    if (stopped)
        judgement.verdict = Verdict::Stopped;
}

/// What the data determine is looked up at the nearest of the solutions, not where the fit happened to end.
Verdict Judging::verdictAtLeast()
{
    double nearest = std::numeric_limits<double>::infinity();
    for (const leastsquares::Solution& solution : knownSolutions(m_requested, m_known)) {
        double distance = 0;
        for (const std::size_t slot : m_requested.free())
            distance += std::abs(std::log(std::abs(solution.values[slot] / m_result.values[slot])));
        if (atLeast(solution.sumOfSquares) && !(distance >= nearest)) {
            nearest = distance;
            m_judgement.undetermined = solution.undetermined;
        }
    }
    if (!m_judgement.undetermined.empty())
        return Verdict::Undetermined;
    const bool tested = m_requested.countedPoints() > static_cast<int>(m_requested.free().size());
    return tested ? Verdict::AtMinimum : Verdict::Untested;
}

/// Runs the same analysis with a higher limit, a lower tolerance, or both.
void Judging::goOn(bool raiseLimit, bool lowerTolerance)
{
    m_judgement.raiseLimit = raiseLimit;
    m_judgement.lowerTolerance = lowerTolerance;
    m_longer = m_request;
    m_longer.quick = analysis::methodOf(m_request) == models::Analysis::Decay;
    m_longer.options.iterationLimit += kMoreIterations;
    if (lowerTolerance)
        m_longer.options.tolerance /= kToleranceDivisor;
    m_longerRun.emplace(m_longer, kMostEvaluations);
    m_stage = Stage::GoOn;
}

void Judging::endLongerRun()
{
    const analysis::Result longer = m_longerRun->result();
    const bool helps = m_judgement.lowerTolerance || longer.iterations > m_request.options.iterationLimit;
    if (helps && atLeast(sumAtEnd(*m_problem, longer))) {
        if (m_longer.quick) { // roundings may lead an analysis elsewhere
            m_longer.quick = false;
            m_longerRun.emplace(m_longer, kMostEvaluations);
            return;
        }
        m_judgement.verdict = Verdict::StillMoving;
        m_judgement.advice = Advice::GoOn;
        m_judgement.raiseLimit = longer.iterations > m_request.options.iterationLimit;
        if (m_judgement.raiseLimit)
            m_judgement.options.iterationLimit = roundedUp(longer.iterations);
        if (m_judgement.lowerTolerance)
            m_judgement.options.tolerance /= kToleranceDivisor;
        m_stage = Stage::Done;
    } else if (!m_judgement.lowerTolerance) {
        goOn(true, true);
    } else {
        findStart();
    }
}

void Judging::findStart()
{
    const std::vector<leastsquares::Solution> solutions =
        m_judgement.unusual ? std::vector<leastsquares::Solution>{} : knownSolutions(m_requested, m_known);
    m_stage = solutions.empty() ? Stage::Done : Stage::FindStart;
    if (solutions.empty())
        return;
    m_judgement.leastValues = solutions.front().values;
    m_startFinder.emplace(m_requested, solutions.front());
}

void Judging::endFindStart()
{
    const EngineStart& found = m_startFinder->found();
    m_judgement.advice = found.leadsToMinimum     ? Advice::FindStartValues
                         : found.leadsInOtherMode ? Advice::OtherMode
                                                  : Advice::Calculate;
    m_stage = Stage::Done;
}

Judgement judged(const analysis::Request& request, const analysis::Result& result, LeastSums& known)
{
    constexpr std::chrono::milliseconds kSlice{10};
    Judging judging(request, result, known);
    while (!judging.advance(kSlice)) {
    }
    return judging.judgement();
}

} // namespace trust
