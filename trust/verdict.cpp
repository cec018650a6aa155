#include "trust/verdict.h"

#include "trust/task.h"

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

/// Where the same analysis would have ended with more iterations and a lower tolerance.
double sumOfLongerRun(fit::Problem& problem, const FinishedFit& finished)
{
    constexpr double kMoreIterations = 1000, kToleranceDivisor = 1000;
    fit::Options options = finished.options;
    options.iterationLimit += kMoreIterations;
    options.tolerance /= kToleranceDivisor;
    const double twice = 2 * finished.iterations * problem.pointCount() * (options.parameterCount + 1);
    // Windows stand still meanwhile: a run that was longer still is not repeated to its end.
    return runEngine(problem, options, finished.start, std::clamp(twice, kEvaluations, 4 * kEvaluations)).sumOfSquares;
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
        return "the model has no value for these constants";
    }
    return {};
}

Verdict judge(fit::Problem& problem, const FinishedFit& finished, const FreeSlots& undetermined)
{
    const double sum = sumOfSquares(problem, finished.values);
    if (!std::isfinite(sum))
        return Verdict::NotDefined;
    const FreeSlots free = freeSlots(finished.options.parameterCount, finished.options.fix);
    const double lowest = descend(problem, finished.values, free).sumOfSquares;
    if (equallyGood(sum, lowest, problem.pointCount()))
        return undetermined.empty() ? Verdict::AtMinimum : Verdict::Undetermined;
    if (!finished.calculated && equallyGood(sumOfLongerRun(problem, finished) / (1 - kEquallyGood), sum, 0))
        return Verdict::StillMoving;
    return Verdict::NotAMinimum;
}

} // namespace trust
