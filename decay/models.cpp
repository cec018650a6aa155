#include "decay/models.h"

#include "decay/freequencher.h"

#include <array>
#include <cmath>

namespace decay
{

Populations dynamicDecay(double Q, double kq2) { return {{{1.0, kq2 * Q}}}; }

Populations complexAndDynamicDecay(double Q, double Cp, double K, double kq1, double kq2)
{
    const double Qf = FreeQuencher(Q, K, Cp);
    return {{{1.0, kq2 * Qf}, {K * Qf, kq1}}, 1.0 + K * Qf};
}

Populations darkComplexDecay(double Q, double Cp, double K, double kq2)
{
    return {{{1.0, kq2 * FreeQuencher(Q, K, Cp)}}};
}

Populations complexDecay(double Q, double Cp, double K, double kq1)
{
    return complexAndDynamicDecay(Q, Cp, K, kq1, 0.0);
}

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

/// Poisson populations with mean m, of which the share p0 = exp(-m) has no quencher, up to a cumulative probability.
/// Numbers of quenchers whose m^j reaches 1e200 are left out, so that m^j does not overflow; a mean that is not a
/// number ends the series after its second term.
Populations poissonPopulations(double m, double p0, double kq1, double rateWithoutQuencher,
                               double cumulativeProbability, Evaluation evaluation)
{
    constexpr double kLargestPower = 1e200;
    Populations populations;
    populations.members.reserve(32);
    populations.members.push_back({p0, rateWithoutQuencher});
    double sum = p0;
    double j = 1.0;
    double power = m; // m^j
    double factorial = 1.0;
    do {
        const double pj = power * p0 / factorial;
        populations.members.push_back({pj, j * kq1});
        sum += pj;
        j += 1.0;
        factorial *= j;
        power = evaluation == Evaluation::Fast ? power * m : std::pow(m, j);
    } while (power < kLargestPower && sum < cumulativeProbability);
    return populations;
}

} // namespace

Populations poissonAndDynamicDecay(double Q, double K, double kq1, double kq2, Evaluation evaluation)
{
    const double p0 = std::exp(-K * Q);
    return poissonPopulations(K * Q, p0, kq1, kq2 * (p0 * Q), 0.99, evaluation);
}

Populations poissonDecay(double Q, double K, double kq1, Evaluation evaluation)
{
    constexpr double kShare = 0.95; // lower than with collisions, on purpose
    return poissonPopulations(K * Q, std::exp(-K * Q), kq1, 0.0, kShare, evaluation);
}

Populations twoSiteDecay(double Q, double F, double kq2, double kq22)
{
    const double f1 = 1.0 / (1.0 + F);
    return {{{f1, kq2 * Q}, {1.0 - f1, kq22 * Q}}};
}

Populations oneOfTwoSitesDecay(double Q, double F, double kq2) { return twoSiteDecay(Q, F, kq2, 0.0); }

namespace
{

struct Arguments {
    double Q;
    double Cp;
    double p1, p2, p3;
    Evaluation evaluation;
};

struct LawRow {
    Populations (*populations)(const Arguments&) = nullptr;
    Composition composition = Composition::None;
};

constexpr Populations (*kTwoSites)(const Arguments&) = [](const Arguments& v) {
    return twoSiteDecay(v.Q, v.p1, v.p2, v.p3);
};
constexpr Populations (*kOneOfTwoSites)(const Arguments&) = [](const Arguments& v) {
    return oneOfTwoSitesDecay(v.Q, v.p1, v.p2);
};

// Row number = model number.
constexpr std::array<LawRow, 16> kLaws{{
    {},
    {[](const Arguments& v) { return dynamicDecay(v.Q, v.p1); }, Composition::Shared},
    {[](const Arguments& v) { return complexAndDynamicDecay(v.Q, v.Cp, v.p1, v.p2, v.p3); }, Composition::Shared},
    {[](const Arguments& v) { return darkComplexDecay(v.Q, v.Cp, v.p1, v.p2); }, Composition::Shared},
    {[](const Arguments& v) { return complexDecay(v.Q, v.Cp, v.p1, v.p2); }, Composition::Shared},
    {},
    {[](const Arguments& v) { return sphereAndDynamicDecay(v.Q, v.p1, v.p2, v.p3); }, Composition::Shared},
    {[](const Arguments& v) { return darkSphereDecay(v.Q, v.p1, v.p2); }, Composition::Shared},
    {[](const Arguments& v) { return sphereDecay(v.Q, v.p1, v.p2); }, Composition::Shared},
    {},
    {[](const Arguments& v) { return poissonAndDynamicDecay(v.Q, v.p1, v.p2, v.p3, v.evaluation); },
     Composition::PoissonSeries},
    {[](const Arguments& v) { return poissonDecay(v.Q, v.p1, v.p2, v.evaluation); }, Composition::PoissonSeries},
    {kTwoSites, Composition::Sites},
    {kOneOfTwoSites, Composition::Sites},
    {kTwoSites, Composition::Shared},
    {kOneOfTwoSites, Composition::Shared},
}};

/// The row of any number at all; row 0 has no law.
const LawRow& lawOf(int model)
{
    const auto row = static_cast<std::size_t>(model);
    return model >= 0 && row < kLaws.size() ? kLaws[row] : kLaws[0];
}

/// One pair of brackets for each component, with all populations in it.
Brackets sharedComponents(const Populations& populations, const Reference& reference)
{
    Brackets brackets;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.components); ++k) {
        Bracket& bracket = brackets.emplace_back(Bracket{reference.A[k] / populations.total, {}});
        for (const Population& population : populations.members)
            bracket.sum.push_back({population.weight, reference.Rate[k] + population.addedRate});
    }
    return brackets;
}

Brackets poissonTerms(const Populations& populations, const Reference& reference)
{
    Brackets brackets;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.components); ++k)
        for (const Population& population : populations.members)
            brackets.push_back({population.weight * reference.A[k], {{1.0, reference.Rate[k] + population.addedRate}}});
    return brackets;
}

Brackets siteTerms(const Populations& sites, const Reference& reference)
{
    if (reference.components != 1 && reference.components != 2)
        return {};
    const auto last = static_cast<std::size_t>(reference.components);
    const Population& first = sites.members[0];
    const Population& second = sites.members[1];
    return {Bracket{first.weight, {{1.0, reference.Rate[1] + first.addedRate}}},
            Bracket{second.weight, {{1.0, reference.Rate[last] + second.addedRate}}}};
}

} // namespace

Composition compositionOf(int model) { return lawOf(model).composition; }

Populations populationsOf(int model, double Q, double Cp, const fit::Parameters& p, Evaluation evaluation)
{
    const LawRow& law = lawOf(model);
    return law.populations == nullptr ? Populations{} : law.populations({Q, Cp, p[1], p[2], p[3], evaluation});
}

Reference referenceOf(const SampleRecord& record) { return {record.NComp, record.A, record.Rate}; }

Brackets bracketsOf(Composition composition, const Populations& populations, const Reference& reference)
{
    switch (composition) {
    case Composition::Shared:
        return sharedComponents(populations, reference);
    case Composition::PoissonSeries:
        return poissonTerms(populations, reference);
    case Composition::Sites:
        return siteTerms(populations, reference);
    case Composition::None:
        break;
    }
    return {};
}

double intensityAt(const MultiExponential& decay, double t)
{
    double sum = 0;
    for (const Exponential& term : decay)
        sum += term.amplitude * std::exp(-term.rate * t);
    return sum;
}

double intensityAt(const Brackets& decay, double t)
{
    double total = 0;
    for (const auto& [factor, sum] : decay)
        total += factor * intensityAt(sum, t);
    return total;
}

Brackets bracketsOf(int model, double Q, const Reference& reference, double Cp, const fit::Parameters& p)
{
    return bracketsOf(compositionOf(model), populationsOf(model, Q, Cp, p), reference);
}

MultiExponential quenchedDecay(int model, double Q, const Reference& reference, double Cp, const fit::Parameters& p)
{
    MultiExponential decay;
    for (const auto& [factor, sum] : bracketsOf(model, Q, reference, Cp, p))
        for (const Exponential& term : sum)
            decay.push_back({factor * term.amplitude, term.rate});
    return decay;
}

double intensity(int model, double t, double Q, const Reference& reference, double Cp, const fit::Parameters& p)
{
    return intensityAt(bracketsOf(model, Q, reference, Cp, p), t);
}

} // namespace decay
