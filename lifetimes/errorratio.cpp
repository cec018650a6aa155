#include "lifetimes/errorratio.h"

#include "fit/numbertext.h"
#include "trust/requestedfit.h"

#include <algorithm>
#include <cmath>

namespace lifetimes
{
namespace
{

constexpr std::array kKinds{Kind::Intensity, Kind::Lifetime};
constexpr std::size_t kFewest = 6;           // observations of each kind, so that four constants leave two to scatter
constexpr double kLeast = 0.01, kMost = 100; // typed ratios

using ByKind = std::array<double, 2>;

/// The points of a kind in a problem: the first one and the one after the last, from 0.
struct Block {
    std::size_t first, end;
};
Block blockOf(const CombinedProblem& problem, std::size_t kind)
{
    const auto intensities = static_cast<std::size_t>(problem.pointCount(Kind::Intensity));
    return kind == 0 ? Block{0, intensities} : Block{intensities, static_cast<std::size_t>(problem.pointCount())};
}

ByKind sumsOf(CombinedProblem& problem, const fit::Parameters& values)
{
    ByKind sums{};
    for (std::size_t kind = 0; kind < sums.size(); ++kind) {
        const Block block = blockOf(problem, kind);
        for (std::size_t i = block.first; i < block.end; ++i)
            sums[kind] += std::pow(problem.residual(static_cast<int>(i) + 1, values), 2);
    }
    return sums;
}

/// n - h of each kind.
ByKind degreesOf(CombinedProblem& problem, const fit::Parameters& values, const leastsquares::FreeSlots& free)
{
    const std::vector<double> own(static_cast<std::size_t>(problem.pointCount()), 1.0), common(own.size(), 0.0);
    const auto residual = leastsquares::propagatedErrors(problem, values, free, own, common).ofResiduals;
    ByKind degrees{};
    for (std::size_t kind = 0; kind < degrees.size(); ++kind) {
        const Block block = blockOf(problem, kind);
        for (std::size_t i = block.first; i < block.end; ++i)
            degrees[kind] += residual[i] * residual[i];
        degrees[kind] -= 1; // the reference
    }
    return degrees;
}

ByKind countsOf(CombinedProblem& problem, const fit::Parameters&, const leastsquares::FreeSlots&)
{
    return {1.0 * problem.pointCount(Kind::Intensity), 1.0 * problem.pointCount(Kind::Lifetime)};
}

/// Fits again and again with errors of the last fit until they stay. divisors: what the sums are divided by.
EstimatedErrors reweighted(const Measurements& measurements, int model, const leastsquares::FreeSlots& free,
                           const fit::Parameters& start, decltype(&degreesOf) divisorsOf)
{
    constexpr double kSame = 1e-8; // relative
    constexpr int kMostRounds = 200;
    constexpr double kExact = 1e-6; // no instrument errs by less
    EstimatedErrors found{.minimum = {start, 0}};
    for (int round = 0; round < kMostRounds; ++round) {
        CombinedProblem problem(measurements, model, found.errors);
        found.minimum = leastsquares::descend(problem, found.minimum.values, free, trust::countedRanges(model));
        const ByKind sums = sumsOf(problem, found.minimum.values);
        const ByKind divisors = divisorsOf(problem, found.minimum.values, free);
        const RelativeErrors before = found.errors;
        found.errors.intensity = std::max(kExact, before.intensity * std::sqrt(sums[0] / divisors[0]));
        found.errors.lifetime = std::max(kExact, before.lifetime * std::sqrt(sums[1] / divisors[1]));
        if (std::abs(found.errors.intensity / before.intensity - 1) < kSame &&
            std::abs(found.errors.lifetime / before.lifetime - 1) < kSame)
            break;
    }
    return found;
}

/// Variances of the constants by the scatter of one kind, by slot.
fit::Parameters variancesBy(CombinedProblem& problem, std::size_t kind, const fit::Parameters& values,
                            const leastsquares::FreeSlots& free)
{
    std::vector<double> own(static_cast<std::size_t>(problem.pointCount()), 0.0);
    const std::vector<double> common(own.size(), 0.0);
    const Block block = blockOf(problem, kind);
    for (std::size_t i = block.first; i < block.end; ++i)
        own[i] = 1;
    fit::Parameters variances = leastsquares::propagatedErrors(problem, values, free, own, common).ofParameters;
    for (double& error : variances)
        error *= error;
    return variances;
}

} // namespace

bool canEstimateEach(const Measurements& measurements)
{
    return std::all_of(kKinds.begin(), kKinds.end(),
                       [&](Kind kind) { return measurements.observed(kind).size() >= kFewest; });
}

std::optional<std::string> complaint(const ErrorRatio& ratio, const Measurements& measurements)
{
    if (ratio.eachEstimated && !canEstimateEach(measurements))
        return "Both errors can be estimated from six intensities and six lifetimes on, the reference's included.";
    if (!ratio.eachEstimated && !(ratio.typed >= kLeast && ratio.typed <= kMost))
        return "The error of a lifetime divided by that of an intensity must be a number from 0.01 to 100.";
    return std::nullopt;
}

std::string sentence(const ErrorRatio& ratio)
{
    if (ratio.eachEstimated)
        return "All intensities are taken to have one relative error and all lifetimes another, the reference's "
               "included; both are estimated from the scatter.";
    return "All intensities are taken to have the same relative error, and all lifetimes " +
           (ratio.typed == 1 ? std::string("the same, too") : fit::plainText(ratio.typed) + " times this error") +
           "; the reference's are included.";
}

EstimatedErrors estimateErrors(const Measurements& measurements, int model, const leastsquares::FreeSlots& free,
                               const fit::Parameters& start)
{
    EstimatedErrors found = reweighted(measurements, model, free, start, degreesOf);
    CombinedProblem problem(measurements, model, found.errors);
    found.minimum = leastsquares::descend(problem, found.minimum.values, free, trust::countedRanges(model));
    const fit::Parameters& values = found.minimum.values;
    const ByKind degrees = degreesOf(problem, values, free);
    const fit::Parameters byIntensity = variancesBy(problem, 0, values, free);
    const fit::Parameters byLifetime = variancesBy(problem, 1, values, free);
    for (const std::size_t slot : free) {
        const double a = byIntensity[slot], b = byLifetime[slot];
        const double total = (a + b) * (a + b) / (a * a / degrees[0] + b * b / degrees[1]);
        found.scatter[slot] =
            leastsquares::weightedScatter(std::isfinite(total) ? total : std::min(degrees[0], degrees[1]));
    }
    return found;
}

double leastDeviance(const Measurements& measurements, int model, const leastsquares::FreeSlots& free,
                     const fit::Parameters& start)
{
    const EstimatedErrors likeliest = reweighted(measurements, model, free, start, countsOf);
    const auto term = [&](Kind kind) {
        return 2 * static_cast<double>(measurements.observed(kind).size()) * std::log(likeliest.errors.of(kind));
    };
    return term(Kind::Intensity) + term(Kind::Lifetime);
}

} // namespace lifetimes
