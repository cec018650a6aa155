#include "trust/verdict.h"

#include "trust/startsearch.h"

#include <algorithm>
#include <cmath>

namespace trust
{
namespace
{

std::string listed(std::span<const std::string> names)
{
    std::string text;
    for (std::size_t i = 0; i < names.size(); ++i) {
        if (i > 0)
            text += i + 1 == names.size() ? " and " : ", ";
        text += names[i];
    }
    return text;
}

/// The end of the same analysis with more iterations and a lower tolerance.
double sumOfLongerRun(const RequestedFit& requested, const analysis::Result& result)
{
    constexpr double kMoreIterations = 1000, kToleranceDivisor = 1000;
    analysis::Request longer = requested.request;
    longer.options.iterationLimit += kMoreIterations;
    longer.options.tolerance /= kToleranceDivisor;
    const double twice = 2 * result.iterations * requested.problem.pointCount() * (longer.options.parameterCount + 1);
    // The windows do not respond during this run, so a very long run is not repeated to its end.
    return runEngine({requested.problem, longer}, std::clamp(twice, kEvaluations, 4 * kEvaluations)).sumOfSquares;
}

/// On a plateau, where constants have no effect, no direction leads down although the best fit may be far lower.
bool isLowerElsewhere(const RequestedFit& requested, double sum)
{
    const std::vector<leastsquares::Solution> best = searchStart(requested).solutions;
    return !best.empty() && !leastsquares::equallyGood(sum, best.front().sumOfSquares, requested.problem.pointCount());
}

} // namespace

std::string verdictText(Verdict verdict, std::span<const std::string> undetermined)
{
    switch (verdict) {
    case Verdict::AtMinimum:
        return "at a minimum";
    case Verdict::StillMoving:
        return "still moving: raise the iteration limit or lower the tolerance";
    case Verdict::NotAMinimum:
        return "not a minimum: try other start values";
    case Verdict::Undetermined:
        return "the data do not determine " + listed(undetermined);
    case Verdict::NotDefined:
        return "the model cannot be evaluated at these constants";
    }
    return {};
}

Verdict judge(const RequestedFit& requested, const analysis::Result& result,
              const leastsquares::FreeSlots& undetermined)
{
    constexpr double kLower = 1 - 1e-6; // a change above rounding
    const double sum = leastsquares::sumOfSquares(requested.problem, result.values);
    if (!std::isfinite(sum))
        return Verdict::NotDefined;
    const double lowest = leastsquares::descend(requested.problem, result.values, requested.free()).sumOfSquares;
    if (leastsquares::equallyGood(sum, lowest, requested.problem.pointCount())) {
        if (undetermined.empty())
            return Verdict::AtMinimum;
        return isLowerElsewhere(requested, sum) ? Verdict::NotAMinimum : Verdict::Undetermined;
    }
    if (result.fitted && sumOfLongerRun(requested, result) < sum * kLower)
        return Verdict::StillMoving;
    return Verdict::NotAMinimum;
}

} // namespace trust
