#include "trust/judging.h"

#include "fit/numbertext.h"
#include "fit/vectorregisters.h"
#include "leastsquares/uncertainty.h"

#include <cmath>
#include <limits>

namespace trust
{
namespace
{

constexpr double kInfinity = std::numeric_limits<double>::infinity();

std::string timesText(double ratio)
{
    if (ratio < 2)
        return fit::formatNumber(100 * (ratio - 1), "0.0#") + " % above the least";
    return fit::formatNumber(ratio, ratio < 10 ? "0.0#" : ratio < 1e5 ? "0" : "0.0e+0") + " times the least";
}

std::string sumText(const Judgement& judgement)
{
    if (!std::isfinite(judgement.sumOfSquares) || !std::isfinite(judgement.leastSum))
        return "";
    return "the sum is " + timesText(judgement.sumOfSquares / judgement.leastSum) + ". ";
}

} // namespace

std::string sentence(const Judgement& judgement, int model)
{
    std::vector<std::string> names;
    for (const std::size_t slot : judgement.undetermined)
        names.push_back(models::parameter(model, slot).name());
    if (judgement.verdict == Verdict::NotAMinimum)
        return "not a minimum: " + sumText(judgement) + "Find Start Values";
    return verdictText(judgement.verdict, names);
}

Judging::Judging(analysis::Request request, analysis::Result result, LeastSums& known)
    : m_request(std::move(request)), m_result(std::move(result)), m_known(known)
{
}

bool Judging::advance(std::chrono::milliseconds)
{
    fit::clearUpperHalves();
    const std::unique_ptr<fit::Problem> problem = realProblem(m_request);
    const RequestedFit requested{*problem, m_request};
    m_judgement.sumOfSquares = leastsquares::sumOfSquares(*problem, m_result.values);
    if (!m_known.found(m_request))
        m_known.keep(m_request, searchStart(requested));
    const SearchResult found = *m_known.found(m_request);
    m_judgement.leastSum = found.solutions.empty() ? kInfinity : found.solutions.front().sumOfSquares;
    m_judgement.undetermined =
        leastsquares::uncertaintyOf(*problem, m_result.values, requested.free(), requested.countedPoints())
            .undetermined;
    m_judgement.verdict = judge(requested, m_result, m_judgement.undetermined);
    if (m_judgement.verdict == Verdict::StillMoving)
        m_judgement.advice = Advice::GoOn;
    if (m_judgement.verdict == Verdict::NotAMinimum || m_judgement.verdict == Verdict::NotDefined)
        m_judgement.advice = Advice::FindStartValues;
    return true;
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
