#include "lifetimes/measurements.h"

#include "decay/samplecolumn.h"
#include "fit/numbertext.h"
#include "sternvolmer/ratiodata.h"

#include <cmath>

namespace lifetimes
{
namespace
{

double positiveOrNone(double value) { return value > 0 && std::isfinite(value) ? value : 0; }

/// A text that begins with a number, as "1,5", would give a false ratio.
std::string numberOrNone(const std::string& text) { return fit::strictNumber(text) ? text : std::string(); }

/// Mean of the lifetimes, weighted by the share of each component in the intensity, A tau.
double meanByIntensity(decay::SampleRecord record)
{
    for (std::size_t k = 1; k <= static_cast<std::size_t>(record.NComp); ++k)
        record.A[k] *= record.Tau[k];
    return sternvolmer::meanLifetime(record);
}

std::vector<Component> componentsOf(const decay::SampleRecord& record)
{
    std::vector<Component> components;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(record.NComp); ++k)
        components.push_back({record.A[k], record.Tau[k]});
    return components;
}

} // namespace

std::vector<std::size_t> Measurements::observed(Kind kind) const
{
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < samples.size(); ++i)
        if (samples[i].observed(kind) > 0)
            places.push_back(i);
    const bool comparable = places.size() > 1 && places.front() == 0;
    return comparable ? places : std::vector<std::size_t>{};
}

double Measurements::ratio(Kind kind, std::size_t sample) const
{
    const double observed = samples[sample].observed(kind);
    return observed > 0 ? samples.front().observed(kind) / observed : 0;
}

Measurements readMeasurements(const decay::CellText& cell, double Cp)
{
    const decay::CellText number = [&cell](int row, int column) { return numberOrNone(cell(row, column)); };
    Measurements measurements{.samples = {}, .components = {}, .Cp = Cp};
    for (int column = 1; decay::hasSample(cell, column); ++column) {
        decay::SampleRecord record;
        const bool complete = decay::readComponents(number, column, record);
        Sample sample{.Q = fit::strictNumber(cell(decay::kConcRow, column)).value_or(NAN),
                      .intensity = positiveOrNone(fit::numberFrom(number(decay::kPhiRow, column)))};
        if (complete) {
            sample.lifetime = positiveOrNone(sternvolmer::meanLifetime(record));
            sample.lifetimeByIntensity = positiveOrNone(meanByIntensity(record));
        }
        if (column == 1 && sample.lifetime > 0)
            measurements.components = componentsOf(record);
        measurements.samples.push_back(sample);
    }
    return measurements;
}

} // namespace lifetimes
