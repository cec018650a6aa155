#include "preparation/preparation.h"

#include "fit/numbertext.h"

#include <algorithm>
#include <cmath>

namespace preparation
{
namespace
{

std::vector<Replicates> blanksOf(const Series& series)
{
    std::vector<Replicates> blanks;
    for (const std::vector<double>& readings : series.blanks)
        blanks.push_back(replicatesOf(readings));
    return blanks;
}

PreparedSample preparedSample(const Sample& sample, double blank, const Series& series, double added)
{
    PreparedSample prepared{.reading = replicatesOf(sample.readings), .blank = blank};
    prepared.absorbance = sample.Aex + sample.Aem;
    prepared.innerFactor = innerFilterFactor(sample.Aex, sample.Aem);
    prepared.dilution = (series.V0 + added) / series.V0;
    prepared.Q = series.stock * added / (series.V0 + added);
    prepared.Phi = (prepared.reading.mean - blank) * prepared.innerFactor * prepared.dilution;
    return prepared;
}

void estimateErrors(Prepared& prepared, const Series& series, const std::vector<Replicates>& blanks)
{
    std::vector<Replicates> readings;
    for (const PreparedSample& sample : prepared.samples)
        readings.push_back(sample.reading);
    prepared.scatter = pooledRelativeDeviation(readings);
    if (!prepared.scatter)
        return;
    const double relative = prepared.scatter->deviation;
    const std::optional<Pooled> ofBlanks = pooledDeviation(blanks);
    for (std::size_t i = 0; i < prepared.samples.size(); ++i) {
        PreparedSample& sample = prepared.samples[i];
        const Replicates& blank = blanks[series.samples[i].blank];
        const double ofBlank = ofBlanks ? ofBlanks->deviation : relative * blank.mean;
        sample.relativeError = std::hypot(relative * sample.reading.mean / std::sqrt(sample.reading.count),
                                          ofBlank / std::sqrt(blank.count)) /
                               (sample.reading.mean - sample.blank);
    }
}

std::variant<Prepared, Refusal> prepare(const Series& series)
{
    Prepared prepared{.steps = series.steps, .samples = {}, .scatter = {}};
    const std::vector<Replicates> blanks = blanksOf(series);
    double added = 0;
    for (const Sample& sample : series.samples) {
        added += sample.added;
        prepared.samples.push_back(preparedSample(sample, blanks[sample.blank].mean, series, added));
        const PreparedSample& last = prepared.samples.back();
        const double least = std::max(last.blank, 0.0);
        if (!(last.reading.mean > least))
            return refused(Cell{static_cast<int>(prepared.samples.size()), Entry::Reading},
                           "the mean " + fit::plainText(last.reading.mean) + " is not above " +
                               (least > 0 ? "its blank " : "") + fit::plainText(least));
    }
    estimateErrors(prepared, series, blanks);
    return prepared;
}

} // namespace

double innerFilterFactor(double Aex, double Aem) { return std::pow(10.0, (Aex + Aem) / 2); }

std::variant<Prepared, Refusal> prepare(const TypedSeries& typed, int sheetSamples)
{
    const std::variant<Series, Refusal> read = readSeries(typed);
    if (const auto* refusal = std::get_if<Refusal>(&read))
        return *refusal;
    const auto& series = std::get<Series>(read);
    if (const int count = static_cast<int>(series.samples.size()); count < sheetSamples)
        return refused(Cell{count + 1, Entry::Reading},
                       "is empty, but the sheet has " + std::to_string(sheetSamples) + " samples");
    return prepare(series);
}

} // namespace preparation
