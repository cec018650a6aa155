#include "sternvolmer/ratiodata.h"

#include "decay/samplecolumn.h"
#include "fit/numbertext.h"

#include <algorithm>
#include <cmath>

namespace sternvolmer
{
namespace
{

/// Only the reference needs components: a later column may leave its count empty.
bool readGivenComponents(const decay::CellText& cell, int column, decay::SampleRecord& record)
{
    const bool noneGiven = column > 1 && cell(decay::kComponentRow, column).empty();
    return noneGiven || decay::readComponents(cell, column, record);
}

} // namespace

RatioData readSternVolmerData(const decay::CellText& cell)
{
    RatioData data;
    decay::SampleTable& table = data.samples;
    for (int column = 1; decay::hasSample(cell, column); ++column) {
        decay::SampleRecord& record = table.SampleData[static_cast<std::size_t>(column)];
        record.Conc = fit::numberFrom(cell(decay::kConcRow, column));
        if (column == 1 && record.Conc != 0) {
            data.referenceFirst = false;
            break;
        }
        const bool hasComponents = readGivenComponents(cell, column, record);
        record.Phi = fit::numberFrom(cell(decay::kPhiRow, column));
        if (data.incompleteColumn == 0 && (!hasComponents || record.Phi <= 0))
            data.incompleteColumn = column;
        if (record.Phi <= 0)
            break;
        table.SampleCount = column;
    }
    data.complete = table.SampleCount > 0 && data.incompleteColumn == 0;
    return data;
}

void computeRatios(RatioData& data)
{
    data.Xmax = 0;
    data.Ymax = 1.0;
    auto& samples = data.samples.SampleData;
    for (std::size_t s = 1; s <= static_cast<std::size_t>(data.samples.SampleCount); ++s) {
        samples[s].SVRatio = samples[1].Phi / samples[s].Phi;
        data.Xmax = std::max(data.Xmax, samples[s].Conc);
        data.Ymax = std::max(data.Ymax, samples[s].SVRatio);
    }
    data.tau0 = meanLifetime(samples[1]);
}

bool allFinite(const RatioData& data)
{
    const auto first = data.samples.SampleData.begin() + 1;
    return std::isfinite(data.tau0) && std::isfinite(data.Xmax) && std::isfinite(data.Ymax) &&
           std::all_of(first, first + data.samples.SampleCount, [](const decay::SampleRecord& sample) {
               return std::isfinite(sample.Conc) && std::isfinite(sample.Phi) && std::isfinite(sample.SVRatio);
           });
}

RatioPoints pointsOf(const RatioData& data, const RatioPoints& earlier)
{
    RatioPoints points = earlier;
    points.count = data.samples.SampleCount;
    points.tau0 = data.tau0;
    for (std::size_t i = 1; i <= static_cast<std::size_t>(points.count); ++i) {
        points.Q[i] = data.samples.SampleData[i].Conc;
        points.ratio[i] = data.samples.SampleData[i].SVRatio;
    }
    return points;
}

double meanLifetime(const decay::SampleRecord& record)
{
    double weighted = 0;
    double weights = 0;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(record.NComp); ++k) {
        weighted += record.A[k] * record.Tau[k];
        weights += record.A[k];
    }
    return weighted / weights;
}

} // namespace sternvolmer
