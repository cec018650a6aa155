#include "decay/normalization.h"

#include "decay/samplecolumn.h"
#include "fit/numbertext.h"
#include "fit/safelog10.h"
#include "fit/vectorregisters.h"
#include "models/catalogue.h"

#include <cmath>
#include <span>

namespace decay
{
namespace
{

constexpr double kLongestDecay = 1.0;   // s, upper end of the search for TEnd
constexpr double kTimeTolerance = 1e-7; // s, and of the intensity
constexpr int kSearchSteps = 500;
constexpr int kGridSteps = 50;
constexpr int kWholeGrid = 49; // last index that is fitted unless the sample ends earlier

std::span<SampleRecord> samplesOf(SampleTable& table)
{
    return {table.SampleData.data() + 1, static_cast<std::size_t>(table.SampleCount)};
}

double amplitudeSum(const SampleRecord& record)
{
    double sum = 0;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(record.NComp); ++k)
        sum += record.A[k];
    return sum;
}

/// To one significant digit, for a positive time.
double roundedTime(double time)
{
    const double decade = std::pow(10.0, std::floor(fit::SafeLog10(time).value_or(0)));
    return decade * std::floor(time / decade + 0.5);
}

void findEndTimes(SampleTable& table)
{
    table.TimeMax = 0;
    for (SampleRecord& record : samplesOf(table)) {
        bool found = false;
        record.TEnd =
            FindDecayTime(0, kLongestDecay, table.FitRegionLevel, kTimeTolerance, record, kSearchSteps, found);
        const double rounded = roundedTime(record.TEnd);
        if (rounded >= table.TimeMax)
            table.TimeMax = rounded;
    }
}

void layGrid(SampleRecord& record, double TimeMax, bool ownEnd)
{
    record.T = record.IExp = {};
    record.LastFitIndex = kWholeGrid;
    bool endFound = !ownEnd;
    // The time is a running sum, so rounding decides whether there is a point at TimeMax.
    double t = 0;
    for (std::size_t i = 0; i < kGridSize && t <= TimeMax; ++i, t += TimeMax / kGridSteps) {
        record.T[i] = t;
        record.IExp[i] = DecayIntensity(t, record);
        if (!endFound && t > record.TEnd) {
            record.LastFitIndex = static_cast<int>(i);
            endFound = true;
        }
    }
    for (std::size_t i = 0; i < kGridSize; ++i)
        record.observedLog[i] = fit::SafeLog10(record.IExp[i]).value_or(0);
}

} // namespace

DecayData readDecayData(const CellText& cell, double FitRegionLevel, int model)
{
    DecayData data;
    SampleTable& table = data.samples;
    for (int column = 1; hasSample(cell, column); ++column) {
        SampleRecord& record = table.SampleData[static_cast<std::size_t>(column)];
        record.Conc = fit::numberFrom(cell(kConcRow, column));
        const bool hasComponents = readComponents(cell, column, record);
        const double sum = amplitudeSum(record);
        const bool complete = hasComponents && sum != 0 && std::isfinite(sum);
        if (!complete && data.incompleteColumn == 0)
            data.incompleteColumn = column;
        table.SampleCount = column;
    }
    data.complete = table.SampleCount > 0 && data.incompleteColumn == 0;
    table.FitRegionLevel = FitRegionLevel;
    // Slot 0 is never filled, so this refuses nothing. The laws of two sites give 0 for three components, and the
    // report shows it.
    data.siteModelRefused =
        models::compositionOf(model) == models::Composition::Sites && table.SampleData[0].NComp == 3;
    return data;
}

void normaliseAmplitudes(SampleTable& table)
{
    for (SampleRecord& record : samplesOf(table)) {
        const double sum = amplitudeSum(record);
        for (std::size_t k = 1; k <= static_cast<std::size_t>(record.NComp); ++k)
            record.A[k] /= sum;
    }
}

double DecayIntensity(double t, const SampleRecord& record)
{
    double sum = 0;
    for (std::size_t k = 1; k <= static_cast<std::size_t>(record.NComp); ++k)
        sum += record.A[k] * std::exp(-t / record.Tau[k]);
    return sum;
}

double DecayLevelDifference(double t, double level, const SampleRecord& record)
{
    return DecayIntensity(t, record) - level;
}

double FindDecayTime(double lo, double hi, double level, double tolerance, const SampleRecord& record, int maxSteps,
                     bool& found)
{
    found = false;
    double middle = lo;
    double differenceAtLo = DecayLevelDifference(lo, level, record);
    for (int step = 1; step <= maxSteps; ++step) {
        middle = (lo + hi) / 2;
        const double difference = DecayLevelDifference(middle, level, record);
        if ((hi - lo) / 2 <= tolerance || std::abs(difference) <= tolerance) {
            found = true;
            break;
        }
        if (difference * differenceAtLo < 0) {
            hi = middle;
        } else {
            lo = middle;
            differenceAtLo = difference;
        }
    }
    return middle;
}

void BuildDecayCurves(SampleTable& table, int FitRegionMode)
{
    fit::clearUpperHalves();
    findEndTimes(table);
    for (SampleRecord& record : samplesOf(table))
        layGrid(record, table.TimeMax, FitRegionMode == kFitRegionOwn);
}

} // namespace decay
