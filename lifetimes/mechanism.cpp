#include "lifetimes/mechanism.h"

#include "leastsquares/nestedtest.h"
#include "models/catalogue.h"

#include <algorithm>
#include <cmath>

namespace lifetimes
{
namespace
{

using Fits = std::vector<const CombinedFit*>;

/// True if the simpler model, fitted with the same weights, is rejected.
bool isRejected(const Measurements& measurements, const CombinedFit& simpler, const CombinedFit& fit)
{
    constexpr double kRare = 0.05;
    CombinedProblem problem(measurements, simpler.model, fit.weights);
    const auto free = leastsquares::freeSlots(models::row(simpler.model).parameterCount(), {});
    const double without = leastsquares::descend(problem, simpler.minimum.values, free).sumOfSquares;
    const double sum = std::max(fit.minimum.sumOfSquares, leastsquares::sumOfExactFit(fit.observations));
    return leastsquares::nestedProbability(without, sum, fit.degreesOfFreedom) < kRare;
}

bool needsItsConstants(const Measurements& measurements, const CombinedFit& fit, const std::vector<CombinedFit>& fits)
{
    const auto& limits = models::row(fit.model).limits;
    return std::all_of(fits.begin(), fits.end(), [&](const CombinedFit& simpler) {
        const bool isLimit = std::any_of(limits.begin(), limits.end(), [&](const models::Limit& limit) {
            return limit.vanishes && limit.model == simpler.model;
        });
        return !isLimit || isRejected(measurements, simpler, fit);
    });
}

/// The models that count, best first.
Fits describing(const Measurements& measurements, const std::vector<CombinedFit>& fits)
{
    Fits counted;
    for (const CombinedFit& fit : fits)
        if (fit.AICc && fit.degreesOfFreedom > 0 && fit.isDetermined() && needsItsConstants(measurements, fit, fits))
            counted.push_back(&fit);
    std::sort(counted.begin(), counted.end(), [](const auto* a, const auto* b) { return *a->AICc < *b->AICc; });
    return counted;
}

Mechanism mechanismOf(int model)
{
    const models::Model& row = models::row(model);
    if (row.uses(models::Box::F))
        return Mechanism::TwoSites;
    if (!row.uses(models::Box::K))
        return Mechanism::Collisions;
    if (row.uses(models::Box::kq2))
        return row.hasRadius ? Mechanism::SphereAndCollisions : Mechanism::ComplexAndCollisions;
    return row.hasRadius ? Mechanism::Sphere : Mechanism::Complex;
}

bool isStaticAlone(Mechanism mechanism)
{
    return mechanism == Mechanism::Complex || mechanism == Mechanism::Sphere || mechanism == Mechanism::ComplexOrSphere;
}

/// s = 1
bool isDynamicAlone(Mechanism mechanism)
{
    return mechanism == Mechanism::Collisions || mechanism == Mechanism::TwoSites;
}

/// What two models have in common.
Mechanism common(Mechanism a, Mechanism b)
{
    if (a == b)
        return a;
    const auto areBoth = [=](Mechanism complex, Mechanism sphere, Mechanism either) {
        const auto isOne = [=](Mechanism mechanism) {
            return mechanism == complex || mechanism == sphere || mechanism == either;
        };
        return isOne(a) && isOne(b);
    };
    using enum Mechanism;
    if (areBoth(Complex, Sphere, ComplexOrSphere))
        return ComplexOrSphere;
    if (areBoth(ComplexAndCollisions, SphereAndCollisions, ComplexOrSphereAndCollisions))
        return ComplexOrSphereAndCollisions;
    return Open;
}

/// True if a part of the quenching that is not negligible, as a logarithm, could have this slope without being noticed.
bool mayHide(const Slope& slope, const Measurements& measurements, const StaticFactor& factor)
{
    constexpr double kShare = 0.15;
    double quenching = 1;
    for (const StaticRow& row : factor.rows)
        quenching = std::max(quenching, measurements.ratio(Kind::Intensity, row.sample));
    return slope.largest() * factor.highestQ() > kShare * std::log(quenching);
}

} // namespace

Decision decide(const Measurements& measurements, const std::vector<CombinedFit>& fits, const StaticFactor& factor)
{
    if (factor.rows.empty())
        return {};
    if (factor.isBelowOne())
        return {.mechanism = Mechanism::NotOnePopulation};
    Decision decision;
    const Fits counted = describing(measurements, fits);
    for (const CombinedFit* fit : counted)
        if (*fit->AICc <= *counted.front()->AICc + kEquallyWell)
            decision.models.push_back(fit->model);
    if (counted.empty())
        return decision;
    decision.mechanism = mechanismOf(decision.models.front());
    for (const int model : decision.models)
        decision.mechanism = common(decision.mechanism, mechanismOf(model));
    decision.staticHidden = isDynamicAlone(decision.mechanism) && mayHide(factor.slope, measurements, factor);
    decision.collisionsHidden =
        isStaticAlone(decision.mechanism) && mayHide(factor.lifetimeSlope, measurements, factor);
    if (decision.staticHidden || decision.collisionsHidden)
        decision.mechanism = Mechanism::Open;
    std::sort(decision.models.begin(), decision.models.end());
    return decision;
}

} // namespace lifetimes
