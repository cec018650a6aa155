#include "noise/noisefit.h"

#include "leastsquares/akaike.h"
#include "noise/logintensityproblem.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace noise
{
namespace
{

constexpr int kReferences = 1;

leastsquares::Scatter scatterOf(const RatioFit& ratioFit, const Errors& errors, double sumOfSquares)
{
    const int degreesOfFreedom = ratioFit.points.count - kReferences - static_cast<int>(ratioFit.free.size());
    if (!std::isfinite(sumOfSquares))
        return {.degreesOfFreedom = degreesOfFreedom};
    return errors.areKnown() ? leastsquares::knownScatter(degreesOfFreedom)
                             : leastsquares::estimatedScatter(sumOfSquares, degreesOfFreedom);
}

std::optional<double> criterion(const RatioFit& ratioFit, const Errors& errors, double sumOfSquares)
{
    const int n = ratioFit.points.count, p = static_cast<int>(ratioFit.free.size());
    const double sum = std::max(sumOfSquares, leastsquares::sumOfExactFit(n));
    if (errors.assumption == Assumption::EqualOnRatios)
        return leastsquares::correctedAkaike(sum, n - kReferences, p + 1);
    if (errors.areKnown())
        return std::isfinite(sumOfSquares) ? std::optional(sumOfSquares + 2 * (p + kReferences)) : std::nullopt;
    return leastsquares::correctedAkaike(sum, n, p + kReferences + 1);
}

/// Errors of all ratios: each sample has its own error, and all share the error of the reference, by which they are
/// divided. The ratio of the reference is 1 by definition and has no error. Unit: the deviation of the scatter.
struct RatioErrors {
    std::vector<double> own{0}, common{0};
};

RatioErrors ratioErrors(const RatioFit& ratioFit, const Errors& errors, const fit::Parameters& values)
{
    sternvolmer::RatioProblem ratios(ratioFit.points, ratioFit.model, 0, ratioFit.Cp);
    const sternvolmer::RatioSlots fitted = ratios.fittedValues(values);
    const bool equal = errors.assumption == Assumption::EqualOnRatios;
    RatioErrors found;
    for (int sample = 2; sample <= ratioFit.points.count; ++sample) {
        const double ratio = fitted[static_cast<std::size_t>(sample)];
        found.own.push_back(equal ? 1 : errors.ofSample(sample) * ratio);
        found.common.push_back(equal ? 0 : errors.ofSample(1) * ratio);
    }
    return found;
}

AnalysedConstants analysedUnder(const NoiseFit& fitted, const RatioFit& ratioFit, const fit::Parameters& values)
{
    constexpr double kFar = 2; // standard errors
    sternvolmer::RatioProblem ratios(ratioFit.points, ratioFit.model, 0, ratioFit.Cp);
    const RatioErrors observed = ratioErrors(ratioFit, fitted.errors, values);
    const leastsquares::PropagatedErrors propagated =
        leastsquares::propagatedErrors(ratios, values, ratioFit.free, observed.own, observed.common);
    const double deviation = std::sqrt(fitted.scatter.variance);
    const double unit = fitted.hasErrors() ? deviation : std::numeric_limits<double>::quiet_NaN();
    AnalysedConstants analysed{.values = values, .correlation = propagated.correlation};
    for (const double error : propagated.ofResiduals)
        analysed.residualError.push_back(deviation * error);
    for (const std::size_t slot : ratioFit.free) {
        const double error = propagated.ofParameters[slot];
        analysed.standardError[slot] = std::isinf(error) ? error : unit * error; // 0 times infinity is no number
        analysed.halfWidth[slot] = fitted.scatter.quantile * analysed.standardError[slot];
        const double distance = std::abs(values[slot] - fitted.minimum.values[slot]);
        if (fitted.hasErrors() && !fitted.isExact() && distance > kFar * analysed.standardError[slot])
            analysed.differing.push_back(slot);
    }
    return analysed;
}

/// The fit at a minimum.
NoiseFit fitAt(const Errors& errors, const RatioFit& ratioFit, const leastsquares::Minimum& minimum,
               const fit::Parameters& analysed)
{
    NoiseFit fitted{.errors = errors, .minimum = minimum, .samples = ratioFit.points.count};
    const std::unique_ptr<fit::Problem> problem = problemUnder(ratioFit, errors);
    fitted.scatter = scatterOf(ratioFit, errors, minimum.sumOfSquares);
    fitted.uncertainty = leastsquares::uncertaintyOf(*problem, minimum.values, ratioFit.free, fitted.scatter);
    fitted.AICc = criterion(ratioFit, errors, minimum.sumOfSquares);
    if (errors.areKnown() && fitted.isDefined() && fitted.scatter.degreesOfFreedom > 0)
        fitted.chiSquareProbability =
            leastsquares::chiSquareProbability(minimum.sumOfSquares, fitted.scatter.degreesOfFreedom);
    fitted.analysed = analysedUnder(fitted, ratioFit, analysed);
    return fitted;
}

} // namespace

bool NoiseFit::isExact() const
{
    const double unit = errors.smallest(); // of the residuals
    return minimum.sumOfSquares * unit * unit < leastsquares::sumOfExactFit(samples);
}

std::unique_ptr<fit::Problem> problemUnder(const RatioFit& ratioFit, const Errors& errors)
{
    if (errors.assumption == Assumption::EqualOnRatios)
        return std::make_unique<sternvolmer::RatioProblem>(ratioFit.points, ratioFit.model, 0, ratioFit.Cp);
    return std::make_unique<LogIntensityProblem>(ratioFit.points, ratioFit.model, ratioFit.Cp, errors);
}

NoiseFit fitUnder(const Errors& errors, const RatioFit& ratioFit, const fit::Parameters& analysed,
                  std::span<const fit::Parameters> otherStarts)
{
    const std::unique_ptr<fit::Problem> problem = problemUnder(ratioFit, errors);
    leastsquares::Minimum lowest = leastsquares::descend(*problem, analysed, ratioFit.free);
    for (const fit::Parameters& start : otherStarts) {
        const leastsquares::Minimum other = leastsquares::descend(*problem, start, ratioFit.free);
        const leastsquares::Scatter scatter = scatterOf(ratioFit, errors, other.sumOfSquares);
        if (lowest.sumOfSquares > leastsquares::highestSum(other, scatter) &&
            !leastsquares::equallyGood(lowest.sumOfSquares, other.sumOfSquares, problem->pointCount()))
            lowest = other;
    }
    return fitAt(errors, ratioFit, lowest, analysed);
}

std::array<leastsquares::Profile, fit::kMaxParameters + 1> profilesOf(NoiseFit& fitted, const RatioFit& ratioFit)
{
    constexpr int kMostMoves = 3;
    std::array<leastsquares::Profile, fit::kMaxParameters + 1> profiles;
    const std::unique_ptr<fit::Problem> problem = problemUnder(ratioFit, fitted.errors);
    int moves = 0;
    for (std::size_t i = 0; i < ratioFit.free.size();) {
        const std::size_t slot = ratioFit.free[i++];
        profiles[slot] = leastsquares::profileOf(*problem, fitted.minimum, ratioFit.free, slot, fitted.scatter,
                                                 ratioFit.ranges[slot]);
        if (!profiles[slot].lower || moves++ == kMostMoves)
            continue;
        const leastsquares::Minimum lower =
            leastsquares::descend(*problem, profiles[slot].lower->values, ratioFit.free);
        fitted = fitAt(fitted.errors, ratioFit, lower, fitted.analysed.values);
        i = 0; // calculate all profiles again
    }
    return profiles;
}

} // namespace noise
