#include "models/decaylaws.h"

#include <cmath>

namespace models
{

Populations dynamicDecay(double Q, double kq2) { return {{{1.0, kq2 * Q}}}; }

Populations complexAndDynamicDecay(const Mixture& mix, double K, double kq1, double kq2)
{
    const double Qf = FreeQuencher(mix, K);
    return {{{1.0, kq2 * Qf}, {K * Qf, kq1}}, 1.0 + K * Qf};
}

Populations darkComplexDecay(const Mixture& mix, double K, double kq2) { return {{{1.0, kq2 * FreeQuencher(mix, K)}}}; }

Populations complexDecay(const Mixture& mix, double K, double kq1) { return complexAndDynamicDecay(mix, K, kq1, 0.0); }

Populations sphereAndDynamicDecay(double Q, double K, double kq1, double kq2)
{
    const double p0 = std::exp(-K * Q);
    return {{{p0, kq2 * (p0 * Q)}, {1.0 - p0, kq1}}};
}

Populations darkSphereDecay(double Q, double K, double kq2) { return {{{1.0, kq2 * (std::exp(-K * Q) * Q)}}}; }

Populations sphereDecay(double Q, double K, double kq1) { return sphereAndDynamicDecay(Q, K, kq1, 0.0); }

double Factorial(double x)
{
    double product = 1.0;
    for (double counter = 1.0; counter < x; counter += 1.0)
        product *= counter + 1.0;
    return product;
}

namespace
{

/// Where a Poisson series stops, and how its powers are calculated.
struct SeriesEnd {
    double cumulativeProbability;
    Evaluation evaluation;
};

/// Poisson populations with mean m, of which the first has no quencher. The series ends before m^j reaches 1e200, so
/// that m^j does not overflow; a mean that is NaN ends it after its second term.
Populations poissonPopulations(double m, const Population& first, double kq1, const SeriesEnd& end)
{
    constexpr double kLargestPower = 1e200;
    Populations populations;
    populations.members.reserve(32);
    populations.members.push_back(first);
    double sum = first.weight;
    double j = 1.0;
    double power = m; // m^j
    double factorial = 1.0;
    do {
        const double pj = power * first.weight / factorial;
        populations.members.push_back({pj, j * kq1});
        sum += pj;
        j += 1.0;
        factorial *= j;
        power = end.evaluation == Evaluation::Fast ? power * m : std::pow(m, j);
    } while (power < kLargestPower && sum < end.cumulativeProbability);
    return populations;
}

} // namespace

Populations poissonAndDynamicDecay(double Q, double K, double kq1, double kq2, Evaluation evaluation)
{
    const double p0 = std::exp(-K * Q);
    return poissonPopulations(K * Q, {p0, kq2 * (p0 * Q)}, kq1, {0.99, evaluation});
}

Populations poissonDecay(double Q, double K, double kq1, Evaluation evaluation)
{
    constexpr double kShare = 0.95; // lower than with collisions, on purpose
    return poissonPopulations(K * Q, {std::exp(-K * Q), 0.0}, kq1, {kShare, evaluation});
}

Populations twoSiteDecay(double Q, double F, double kq2, double kq22)
{
    const double f1 = 1.0 / (1.0 + F);
    return {{{f1, kq2 * Q}, {1.0 - f1, kq22 * Q}}};
}

Populations oneOfTwoSitesDecay(double Q, double F, double kq2) { return twoSiteDecay(Q, F, kq2, 0.0); }

} // namespace models
