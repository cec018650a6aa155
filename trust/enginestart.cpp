#include "trust/enginestart.h"

#include "fit/numbertext.h"

#include <algorithm>

namespace trust
{
namespace
{

constexpr const char* kAllDigits = "0.000######e+0";
constexpr double kFirstStride = 0.5, kLastStride = 1e-3;

} // namespace

StartFinder::StartFinder(const RequestedFit& requested, const leastsquares::Solution& solution)
    : m_requested(requested), m_free(requested.free()), m_solution(solution), m_tried(requested.request),
      m_stride(kFirstStride)
{
    tryFrom(briefly(solution.values));
}

void StartFinder::tryFrom(const fit::Parameters& values)
{
    m_tried.values = values;
    m_tried.quick = analysis::methodOf(m_tried) == models::Analysis::Decay;
    m_run.emplace(m_tried, m_evaluationsLeft);
}

bool StartFinder::step()
{
    if (m_stage == Stage::Done)
        return false;
    if (m_run->step())
        return true;
    m_evaluationsLeft -= m_run->evaluations();
    const EngineStart end = ended();
    if (end.leadsToMinimum && m_tried.quick) { // roundings may lead an analysis elsewhere
        m_tried.quick = false;
        m_run.emplace(m_tried);
        return true;
    }
    goOn(end);
    return m_stage != Stage::Done;
}

EngineStart StartFinder::ended() const
{
    const double reached = sumAtEnd(m_requested.problem, m_run->result());
    return {.values = m_tried.values,
            .sumOfSquares = leastsquares::sumOfSquares(m_requested.problem, m_tried.values),
            .reached = reached,
            .leadsToMinimum =
                leastsquares::equallyGood(reached, m_solution.lowestSum, m_requested.problem.pointCount())};
}

/// Decides on the next run after the present one has ended.
void StartFinder::goOn(const EngineStart& end)
{
    if (m_stage == Stage::OtherMode) {
        m_best.leadsInOtherMode = end.leadsToMinimum;
        m_stage = Stage::Done;
    } else if (m_stage == Stage::Around) {
        moveOn(end);
    } else {
        m_best = end;
        if (end.leadsToMinimum) {
            m_stage = Stage::Done;
        } else if (m_stage == Stage::Briefly) {
            m_atMinimum = end;
            m_stage = Stage::Exactly;
            tryFrom(rounded(m_solution.values, kAllDigits));
        } else if (m_free.empty()) { // there is nothing to move
            m_stage = Stage::Done;
        } else {
            m_centre = end;
            m_stage = Stage::Around;
            tryMoved();
        }
    }
}

/// Looks around the minimum for a start that ends lower: at first 50 % away, then closer.
void StartFinder::moveOn(const EngineStart& end)
{
    if (end.reached < m_best.reached)
        m_best = end;
    if (m_evaluationsLeft > 0 && ++m_move < 2 * m_free.size())
        return tryMoved();
    if (m_best.leadsToMinimum) {
        m_stage = Stage::Done;
        return;
    }
    m_stride = m_best.reached < m_centre.reached ? m_stride : m_stride / 2;
    m_centre = m_best;
    m_move = 0;
    if (m_evaluationsLeft > 0 && m_stride > kLastStride)
        tryMoved();
    else
        tryOtherMode();
}

void StartFinder::tryMoved()
{
    fit::Parameters moved = m_centre.values;
    const double factor = 1 + m_stride;
    moved[m_free[m_move / 2]] *= m_move % 2 == 0 ? factor : 1 / factor;
    tryFrom(rounded(moved, kAllDigits));
}

void StartFinder::tryOtherMode()
{
    m_best = m_atMinimum;
    m_stage = Stage::OtherMode;
    m_tried.options.logMode = m_tried.options.logMode == 1 ? 0 : 1;
    m_evaluationsLeft = kEvaluations;
    tryFrom(m_atMinimum.values);
}

fit::Parameters StartFinder::rounded(fit::Parameters values, const char* pattern) const
{
    for (const std::size_t slot : m_free)
        values[slot] = fit::numberFrom(fit::formatNumber(values[slot], pattern));
    return values;
}

/// Uses as few digits as the sum of squares allows, because the boxes are narrow.
fit::Parameters StartFinder::briefly(const fit::Parameters& exact) const
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

EngineStart engineStart(const RequestedFit& requested, const leastsquares::Solution& solution,
                        const KeepGoing& keepGoing)
{
    StartFinder finder(requested, solution);
    while (finder.step() && (!keepGoing || keepGoing())) {
    }
    return finder.found();
}

std::string startText(double value) { return fit::formatNumber(value, kAllDigits); }

} // namespace trust
