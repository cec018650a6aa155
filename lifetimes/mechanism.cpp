#include "lifetimes/mechanism.h"

#include "fit/numbertext.h"
#include "leastsquares/nestedtest.h"
#include "models/catalogue.h"
#include "noise/constanttext.h"

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

/// "1.21 1.17 1.04 1.18 against 1.08 1.00 0.84 0.83"; of samples whose static factor differs from 1.
std::string levels(const StaticFactor& factor, bool complexFirst)
{
    std::string complex, sphere;
    for (const StaticRow& row : factor.rows)
        if (row.differsFromOne()) {
            complex += (complex.empty() ? "" : " ") + fit::formatNumber(row.perQ(), "0.00");
            sphere += (sphere.empty() ? "" : " ") + fit::formatNumber(row.logPerQ(), "0.00");
        }
    return complexFirst ? complex + " against " + sphere : sphere + " against " + complex;
}

/// "(0.02 ± 0.04) M⁻¹", with half of the 95 percent interval.
std::string slopeText(const Slope& slope)
{
    return noise::withError(slope.value, slope.halfWidth, noise::printedUnit(models::kPerMolar));
}

/// The largest value that a factor may have at the highest concentration, by its 95 percent interval.
double largest(const Slope& slope, const StaticFactor& factor)
{
    return factor.hasErrors ? std::exp(slope.largest() * factor.highestQ()) : INFINITY;
}

/// True if a part of the quenching that is not negligible, as a logarithm, could have this slope without being noticed.
bool mayHide(const Slope& slope, const Measurements& measurements, const StaticFactor& factor)
{
    constexpr double kShare = 0.15;
    double quenching = 1;
    for (const StaticRow& row : factor.rows)
        quenching = std::max(quenching, measurements.ratio(Kind::Intensity, row.sample));
    return std::log(largest(slope, factor)) > kShare * std::log(quenching);
}

std::string withoutPairs(const Measurements& measurements)
{
    if (measurements.has(Kind::Intensity))
        return "There are only intensities, which alone do not tell collisions from a complex or a sphere.";
    return "There are only lifetimes: they show collisions, but not whether a complex or a sphere lowers the intensity "
           "as well.";
}

std::string undecided(const Fits& fits)
{
    if (fits.empty())
        return "The data do not tell what quenches: they determine the constants of no model.";
    std::vector<int> numbers;
    for (const CombinedFit* fit : fits)
        numbers.push_back(fit->model);
    std::sort(numbers.begin(), numbers.end());
    std::string models;
    for (std::size_t i = 0; i < numbers.size(); ++i)
        models += (i == 0 ? "" : i + 1 == numbers.size() ? " and " : ", ") + std::to_string(numbers[i]);
    return "The data do not tell what quenches: Models " + models + " describe them about equally well.";
}

/// What could hide behind a mechanism, in a sentence; empty if nothing could.
std::string hiddenBehind(Mechanism mechanism, const Measurements& measurements, const StaticFactor& factor)
{
    if (isDynamicAlone(mechanism) && mayHide(factor.slope, measurements, factor))
        return "The data do not tell what quenches: collisions suffice, but a static factor of up to " +
               fit::formatNumber(largest(factor.slope, factor), "0.0") + " would not be noticed.";
    if (isStaticAlone(mechanism) && mayHide(factor.lifetimeSlope, measurements, factor))
        return "The data do not tell what quenches: a complex or a sphere suffices, but a ratio τ0/τ of up to " +
               fit::formatNumber(largest(factor.lifetimeSlope, factor), "0.0") + " would not be noticed.";
    return {};
}

/// The sentence of a mechanism that the data tell.
std::string sentence(Mechanism mechanism, const StaticFactor& factor)
{
    constexpr const char* kTransient = "; transient effects can look alike.";
    const std::string complexFirst = "(s − 1)/Q is " + levels(factor, true) + " M⁻¹ for ln s/Q";
    const std::string sphereFirst = "ln s/Q is " + levels(factor, false) + " M⁻¹ for (s − 1)/Q";
    switch (mechanism) {
    case Mechanism::Open:
        break;
    case Mechanism::Collisions:
        return "Collisions alone describe this: the static factor does not differ from 1 (ln s/Q = " +
               slopeText(factor.slope) + ", 95 %).";
    case Mechanism::Complex:
        return "The lifetimes do not change, and a complex describes this better than a sphere: " + complexFirst + ".";
    case Mechanism::Sphere:
        return "The lifetimes do not change, and a sphere describes this better than a complex: " + sphereFirst + ".";
    case Mechanism::ComplexOrSphere:
        return "The lifetimes do not change: quenching is static. The data do not tell a complex from a sphere: " +
               complexFirst + ".";
    case Mechanism::ComplexAndCollisions:
        return "Beside collisions, a complex describes this better than a sphere: " + complexFirst + kTransient;
    case Mechanism::SphereAndCollisions:
        return "Beside collisions, a sphere describes this better than a complex: " + sphereFirst + kTransient;
    case Mechanism::ComplexOrSphereAndCollisions:
        return "Beside collisions there is a static part. The data do not tell a complex from a sphere: " +
               complexFirst + kTransient;
    case Mechanism::TwoSites:
        return "Intensities and lifetimes fall together and level off: collisions with two populations of the probe, "
               "of which the quencher reaches one less or not at all.";
    case Mechanism::NotOnePopulation:
        return "The lifetimes fall more than the intensities: s is below 1 by more than its 95 % error (ln s/Q = " +
               slopeText(factor.slope) +
               "). This is not the quenching of one population, and no model here describes it.";
    }
    return {};
}

} // namespace

Finding findingOf(const Measurements& measurements, const std::vector<CombinedFit>& fits, const StaticFactor& factor)
{
    if (factor.rows.empty())
        return {Mechanism::Open, withoutPairs(measurements)};
    if (factor.isBelowOne())
        return {Mechanism::NotOnePopulation, sentence(Mechanism::NotOnePopulation, factor)};
    Fits counted = describing(measurements, fits);
    std::erase_if(counted, [best = counted.empty() ? nullptr : counted.front()](const CombinedFit* fit) {
        return *fit->AICc > *best->AICc + kEquallyWell;
    });
    Mechanism mechanism = counted.empty() ? Mechanism::Open : mechanismOf(counted.front()->model);
    for (const CombinedFit* fit : counted)
        mechanism = common(mechanism, mechanismOf(fit->model));
    if (mechanism == Mechanism::Open)
        return {mechanism, undecided(counted)};
    if (const std::string hidden = hiddenBehind(mechanism, measurements, factor); !hidden.empty())
        return {Mechanism::Open, hidden};
    return {mechanism, sentence(mechanism, factor)};
}

} // namespace lifetimes
