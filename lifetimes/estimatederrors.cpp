#include "lifetimes/estimatederrors.h"

#include "trust/requestedfit.h"

#include <algorithm>
#include <cmath>

namespace lifetimes
{
namespace
{

using ByKind = std::array<double, 2>;
using Blocks = std::array<ByKind, 2>; // one number for each block of a matrix of points

/// The points of a kind in a problem: the first one and the one after the last, from 0.
struct Block {
    std::size_t first, end;
};
Block blockOf(const CombinedProblem& problem, std::size_t kind)
{
    const auto intensities = static_cast<std::size_t>(problem.pointCount(Kind::Intensity));
    return kind == 0 ? Block{0, intensities} : Block{intensities, static_cast<std::size_t>(problem.pointCount())};
}

/// Sums over the blocks of term(i, k).
template <typename Term>
Blocks sumsOverBlocks(const CombinedProblem& problem, const Term& term)
{
    Blocks sums{};
    for (std::size_t a = 0; a < 2; ++a)
        for (std::size_t b = 0; b < 2; ++b)
            for (std::size_t i = blockOf(problem, a).first; i < blockOf(problem, a).end; ++i)
                for (std::size_t k = blockOf(problem, b).first; k < blockOf(problem, b).end; ++k)
                    sums[a][b] += term(i, k);
    return sums;
}

ByKind sumsOf(CombinedProblem& problem, const fit::Parameters& values)
{
    ByKind sums{};
    for (std::size_t kind = 0; kind < 2; ++kind)
        for (std::size_t i = blockOf(problem, kind).first; i < blockOf(problem, kind).end; ++i)
            sums[kind] += std::pow(problem.residual(static_cast<int>(i) + 1, values), 2);
    return sums;
}

ByKind countsOf(CombinedProblem& problem, const fit::Parameters&, const leastsquares::FreeSlots&)
{
    return {1.0 * problem.pointCount(Kind::Intensity), 1.0 * problem.pointCount(Kind::Lifetime)};
}

/// n - h of each kind; its reference takes 1 of h.
ByKind degreesOf(CombinedProblem& problem, const fit::Parameters& values, const leastsquares::FreeSlots& free)
{
    const auto hat = leastsquares::responsesOf(problem, values, free).ofPoints;
    ByKind degrees = countsOf(problem, values, free);
    for (std::size_t kind = 0; kind < 2; ++kind) {
        degrees[kind] -= 1;
        for (std::size_t i = blockOf(problem, kind).first; i < blockOf(problem, kind).end; ++i)
            degrees[kind] -= hat[i][i];
    }
    return degrees;
}

/// Fits again and again with errors of the last fit until they stay. divisorsOf: what the sums are divided by.
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

/// Covariance of the estimated variances relative to themselves: C = 2 T^-1 with the sums T of the squares of the
/// blocks of I - H, H being the hat matrix with the references' share 1 / n of each kind.
Blocks covarianceOfVariances(const CombinedProblem& problem, const std::vector<std::vector<double>>& hat)
{
    const auto T = sumsOverBlocks(problem, [&](std::size_t i, std::size_t k) {
        const Block block = blockOf(problem, i < blockOf(problem, 0).end ? 0 : 1);
        const bool sameKind = k >= block.first && k < block.end;
        const double reference = sameKind ? 1.0 / static_cast<double>(block.end - block.first) : 0;
        const double m = (i == k ? 1 : 0) - hat[i][k] - reference;
        return m * m;
    });
    const double half = (T[0][0] * T[1][1] - T[0][1] * T[1][0]) / 2;
    return {{{T[1][1] / half, -T[0][1] / half}, {-T[1][0] / half, T[0][0] / half}}};
}

/// The scatter of a constant whose relative response to the points is u. Its variance is v = v1 + v2 with the sums v of
/// u^2 over each kind, and becomes v + 2 (C11 v1 + C22 v2 - sum of C W) because the weights err, with the sums W of
/// u H u over the blocks.
leastsquares::Scatter scatterOf(const CombinedProblem& problem, const std::vector<std::vector<double>>& hat,
                                const std::vector<double>& u)
{
    const Blocks C = covarianceOfVariances(problem, hat);
    const Blocks squares = sumsOverBlocks(problem, [&](auto i, auto k) { return i == k ? u[i] * u[i] : 0; });
    const Blocks W = sumsOverBlocks(problem, [&](auto i, auto k) { return u[i] * hat[i][k] * u[k]; });
    const ByKind v{squares[0][0], squares[1][1]};
    double added = 0, spread = 0; // of the variance; v' C v
    for (std::size_t a = 0; a < 2; ++a)
        for (std::size_t b = 0; b < 2; ++b) {
            added += 2 * C[a][b] * ((a == b ? v[a] : 0) - W[a][b]);
            spread += v[a] * C[a][b] * v[b];
        }
    const double variance = v[0] + v[1];
    if (variance == 0) // the constant changes no point
        return leastsquares::weightedScatter(problem.pointCount());
    leastsquares::Scatter scatter = leastsquares::weightedScatter(2 * variance * variance / spread);
    scatter.variance = 1 + std::max(0.0, added / variance);
    return scatter;
}

} // namespace

EstimatedErrors estimateErrors(const Measurements& measurements, int model, const leastsquares::FreeSlots& free,
                               const fit::Parameters& start)
{
    EstimatedErrors found = reweighted(measurements, model, free, start, degreesOf);
    CombinedProblem problem(measurements, model, found.errors);
    found.minimum = leastsquares::descend(problem, found.minimum.values, free, trust::countedRanges(model));
    const fit::Parameters& values = found.minimum.values;
    const leastsquares::Responses responses = leastsquares::responsesOf(problem, values, free);
    for (const std::size_t slot : free)
        found.scatter[slot] = scatterOf(problem, responses.ofPoints, responses.ofValues[slot]);
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
