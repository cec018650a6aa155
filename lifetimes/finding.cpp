#include "lifetimes/finding.h"

#include "fit/numbertext.h"
#include "models/catalogue.h"
#include "noise/constanttext.h"

#include <algorithm>
#include <cmath>

namespace lifetimes
{
namespace
{

/// "1.21 1.17 1.04 1.18 against 1.08 1.00 0.84 0.83"; of samples whose static factor differs from 1, if there are any.
std::string levels(const StaticFactor& factor, bool complexFirst)
{
    const auto& rows = factor.rows;
    const bool any = std::any_of(rows.begin(), rows.end(), [](const StaticRow& row) { return row.differsFromOne(); });
    std::string complex, sphere;
    for (const StaticRow& row : rows)
        if (!any || row.differsFromOne()) {
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
std::string largestText(const Slope& slope, const StaticFactor& factor)
{
    return fit::formatNumber(std::exp(slope.largest() * factor.highestQ()), "0.00");
}

std::string withoutPairs(const Measurements& measurements)
{
    if (!measurements.has(Kind::Lifetime))
        return "There are only intensities, which alone do not tell collisions from a complex or a sphere.";
    if (!measurements.has(Kind::Intensity))
        return "There are only lifetimes: they show collisions, but not whether a complex or a sphere lowers the "
               "intensity as well.";
    return "No sample with quencher has both intensity and lifetime, so that the static factor is not known.";
}

std::string undecided(const Decision& decision, const StaticFactor& factor)
{
    const std::string beginning = "The data do not tell what quenches: ";
    if (decision.staticHidden)
        return beginning + "collisions suffice, but a static factor of up to " + largestText(factor.slope, factor) +
               " would not be noticed.";
    if (decision.collisionsHidden)
        return beginning + "a complex or a sphere suffices, but a ratio τ0/τ of up to " +
               largestText(factor.lifetimeSlope, factor) + " would not be noticed.";
    if (decision.models.empty())
        return beginning + "they determine the constants of no model.";
    std::string models;
    for (std::size_t i = 0; i < decision.models.size(); ++i)
        models += (i == 0 ? "" : i + 1 == decision.models.size() ? " and " : ", ") + std::to_string(decision.models[i]);
    return beginning + "Models " + models + " describe them about equally well.";
}

/// The sentence of a mechanism that the data tell.
std::string decided(Mechanism mechanism, const StaticFactor& factor)
{
    constexpr const char* kTransient = "; transient effects can look alike.";
    const std::string complexFirst = "(s − 1)/Q is " + levels(factor, true) + " M⁻¹ for ln s/Q";
    const std::string sphereFirst = "ln s/Q is " + levels(factor, false) + " M⁻¹ for (s − 1)/Q";
    switch (mechanism) {
    case Mechanism::Open:
        break;
    case Mechanism::Collisions:
        return "Collisions alone describe this: the static factor does not differ from 1 (ln s/Q = " +
               slopeText(factor.slope) + ", 95 %; at the highest concentration s is " +
               largestText(factor.slope, factor) + " at most).";
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
    const Decision decision = decide(measurements, fits, factor);
    if (factor.rows.empty())
        return {decision.mechanism, withoutPairs(measurements)};
    if (decision.mechanism == Mechanism::Open)
        return {decision.mechanism, undecided(decision, factor)};
    return {decision.mechanism, decided(decision.mechanism, factor)};
}

} // namespace lifetimes
