#include "trust/modelrelations.h"

#include "leastsquares/nestedtest.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace trust
{
namespace
{

using Curve = std::vector<double>;

/// The concentrations of the samples, M, with two more in every gap.
std::vector<double> placesToCompare(const sternvolmer::RatioPoints& points)
{
    std::vector<double> Q(points.Q.begin() + 1, points.Q.begin() + 1 + points.count);
    std::sort(Q.begin(), Q.end());
    std::vector<double> places = Q;
    for (std::size_t i = 1; i < Q.size(); ++i)
        for (const double share : {1.0 / 3, 2.0 / 3})
            places.push_back(Q[i - 1] + share * (Q[i] - Q[i - 1]));
    return places;
}

/// What the assumption about errors compares: ratios or their logarithms; of decays, intensities minus those observed.
Curve curveOf(const ComparedModel& compared, const analysis::Request& request)
{
    if (!compared.fitted)
        return {};
    Curve curve;
    if (const auto* points = std::get_if<sternvolmer::RatioPoints>(&request.data)) {
        const bool areRatios = compared.assumed->errors.assumption == noise::Assumption::EqualOnRatios;
        for (const double x : placesToCompare(*points)) {
            const double y =
                models::ratio(request.model, x, {points->tau0, request.Cp, compared.assumed->minimum.values});
            curve.push_back(areRatios ? y : std::log(y));
        }
        return curve;
    }
    for (const double observedMinusModel : compared.details.residuals)
        curve.push_back(-observedMinusModel);
    return curve;
}

/// The smallest error of a ratio, or of its logarithm, that a fit under the assumption tells; 0 for decay curves, which
/// carry no noise.
double scatterOf(std::span<const ComparedModel> places)
{
    double scatter = std::numeric_limits<double>::infinity(); // stays where no model has a degree of freedom
    for (const ComparedModel& compared : places)
        if (compared.fitted && compared.assumed && compared.assumed->hasErrors())
            scatter =
                std::min(scatter, std::sqrt(compared.assumed->scatter.variance) * compared.assumed->errors.smallest());
    return std::isfinite(scatter) ? scatter : 0;
}

/// The deviation below which two curves count as the same.
double visibleDeviation(double scatter, const Curve& curve)
{
    constexpr double kOfScatter = 0.1, kMillionth = 1e-6;
    double largest = 1; // a ratio or an intensity of the reference
    for (const double y : curve)
        largest = std::max(largest, std::abs(y));
    return std::max(kOfScatter * scatter, kMillionth * largest);
}

bool sameCurve(const Curve& a, const Curve& b, double visible)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [=](double y, double z) { return std::abs(y - z) <= visible; });
}

/// None if the models differ by more than one constant, or if nothing tells how far the data scatter.
std::optional<double> probabilityOf(const noise::NoiseFit& larger, const noise::NoiseFit& simpler)
{
    const int dof = larger.scatter.degreesOfFreedom;
    const double sum = larger.minimum.sumOfSquares, sumWithout = simpler.minimum.sumOfSquares;
    if (simpler.scatter.degreesOfFreedom != dof + 1)
        return std::nullopt;
    if (larger.errors.areKnown())
        return leastsquares::nestedProbabilityOfKnown(sumWithout, sum);
    if (dof < 1 || sum <= leastsquares::sumOfExactFit(dof))
        return std::nullopt;
    return leastsquares::nestedProbability(sumWithout, sum, dof);
}

} // namespace

void findSameCurves(std::span<ComparedModel> places, std::span<const analysis::Request> requests)
{
    if (places.empty())
        return;
    const double scatter = scatterOf(places);
    std::vector<Curve> curves;
    for (std::size_t i = 0; i < places.size(); ++i)
        curves.push_back(curveOf(places[i], requests[i]));
    for (std::size_t i = 0; i < places.size(); ++i) {
        const double visible = visibleDeviation(scatter, curves[i]);
        for (std::size_t better = i; better-- > 0;)
            if (places[i].fitted && sameCurve(curves[i], curves[better], visible) &&
                (models::limitBetween(places[i].model, places[better].model) ||
                 !models::limitBetween(places[i].model, places[i].sameCurveAs)))
                places[i].sameCurveAs = places[better].model;
    }
}

std::vector<NestedTest> nestedTests(std::span<const ComparedModel> places)
{
    const auto fitOf = [places](int model) -> const noise::NoiseFit* {
        const auto found = std::find_if(places.begin(), places.end(), [model](const ComparedModel& compared) {
            return compared.model == model && compared.assumed;
        });
        return found == places.end() ? nullptr : &*found->assumed;
    };
    std::vector<NestedTest> tests;
    for (int model = 1; model <= models::kModelCount; ++model)
        for (const models::Limit& limit : models::row(model).limits) {
            const noise::NoiseFit *larger = fitOf(model), *simpler = fitOf(limit.model);
            if (limit.tested && larger && simpler)
                if (const auto probability = probabilityOf(*larger, *simpler))
                    tests.push_back({model, limit.model, limit.constant, *probability});
        }
    return tests;
}

} // namespace trust
