#include "lifetimes/combinedproblem.h"

#include "models/catalogue.h"

#include <cmath>

namespace lifetimes
{
namespace
{

/// sum A tau / sum A tau / (1 + X tau / tau0) for X = ratio - 1.
double ofComponents(const Measurements& measurements, double ratio)
{
    double unquenched = 0, quenched = 0;
    for (const Component& component : measurements.components) {
        const double area = component.amplitude * component.lifetime;
        unquenched += area;
        quenched += area / (1 + (ratio - 1) * component.lifetime / measurements.tau0());
    }
    return unquenched / quenched;
}

} // namespace

std::vector<double> modelRatios(const Measurements& measurements, int model, Kind kind, const std::vector<double>& Q,
                                const fit::Parameters& values)
{
    const models::RatioArguments arguments{measurements.tau0(), measurements.Cp, values};
    const bool byComponents = measurements.components.size() > 1 && models::row(model).lifetime.ofEachComponent;
    std::vector<double> intensity(Q.size()), lifetime(Q.size());
    models::ratios(model, Q, arguments, intensity);
    if (kind == Kind::Intensity && !byComponents)
        return intensity;
    models::lifetimeRatios(model, Q, arguments, lifetime);
    if (!byComponents)
        return lifetime;
    for (std::size_t i = 0; i < Q.size(); ++i) {
        const double staticFactor = kind == Kind::Intensity ? intensity[i] / lifetime[i] : 1;
        lifetime[i] = staticFactor * ofComponents(measurements, lifetime[i]);
    }
    return lifetime;
}

CombinedProblem::CombinedProblem(const Measurements& measurements, int model, const RelativeErrors& errors)
    : m_measurements(measurements),
      m_model(model), m_series{{{Kind::Intensity, {}, {}, {}}, {Kind::Lifetime, {}, {}, {}}}}
{
    for (Series& series : m_series)
        for (const std::size_t sample : measurements.observed(series.kind)) {
            series.Q.push_back(measurements.samples[sample].Q);
            series.observed.push_back(measurements.samples[sample].observed(series.kind));
            series.errors.push_back(errors.of(series.kind));
        }
}

int CombinedProblem::referenceCount() const
{
    int count = 0;
    for (const Series& series : m_series)
        count += series.Q.empty() ? 0 : 1;
    return count;
}

std::vector<double> CombinedProblem::calculated(const fit::Parameters& values)
{
    std::vector<double> residuals;
    for (const Series& series : m_series) {
        if (series.Q.empty())
            continue;
        std::vector<double> deviations = modelRatios(m_measurements, m_model, series.kind, series.Q, values);
        for (std::size_t i = 0; i < deviations.size(); ++i)
            deviations[i] = std::log(deviations[i] * series.observed[i]);
        noise::appendCentred(residuals, deviations, series.errors);
    }
    return residuals;
}

} // namespace lifetimes
