#include "decay/quencheddecay.h"

#include <cmath>

namespace decay
{
namespace
{

/// One pair of brackets for each component, with all populations in it.
Brackets sharedComponents(const models::Populations& populations, const Reference& reference)
{
    Brackets brackets;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.components); ++k) {
        Bracket& bracket = brackets.emplace_back(Bracket{reference.A[k] / populations.total, {}});
        for (const models::Population& population : populations.members)
            bracket.sum.push_back({population.weight, reference.Rate[k] + population.addedRate});
    }
    return brackets;
}

Brackets poissonTerms(const models::Populations& populations, const Reference& reference)
{
    Brackets brackets;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(reference.components); ++k)
        for (const models::Population& population : populations.members)
            brackets.push_back({population.weight * reference.A[k], {{1.0, reference.Rate[k] + population.addedRate}}});
    return brackets;
}

Brackets siteTerms(const models::Populations& sites, const Reference& reference)
{
    if (reference.components != 1 && reference.components != 2)
        return {};
    const auto last = static_cast<std::size_t>(reference.components);
    const models::Population& first = sites.members[0];
    const models::Population& second = sites.members[1];
    return {Bracket{first.weight, {{1.0, reference.Rate[1] + first.addedRate}}},
            Bracket{second.weight, {{1.0, reference.Rate[last] + second.addedRate}}}};
}

} // namespace

Reference referenceOf(const SampleRecord& record) { return {record.NComp, record.A, record.Rate}; }

Brackets bracketsOf(models::Composition composition, const models::Populations& populations, const Reference& reference)
{
    switch (composition) {
    case models::Composition::Shared:
        return sharedComponents(populations, reference);
    case models::Composition::PoissonSeries:
        return poissonTerms(populations, reference);
    case models::Composition::Sites:
        return siteTerms(populations, reference);
    case models::Composition::None:
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

Brackets bracketsOf(int model, const models::DecayArguments& arguments, const Reference& reference)
{
    return bracketsOf(models::compositionOf(model), models::populationsOf(model, arguments), reference);
}

MultiExponential quenchedDecay(int model, const models::DecayArguments& arguments, const Reference& reference)
{
    MultiExponential decay;
    for (const auto& [factor, sum] : bracketsOf(model, arguments, reference))
        for (const Exponential& term : sum)
            decay.push_back({factor * term.amplitude, term.rate});
    return decay;
}

double intensity(int model, double t, const models::DecayArguments& arguments, const Reference& reference)
{
    return intensityAt(bracketsOf(model, arguments, reference), t);
}

} // namespace decay
