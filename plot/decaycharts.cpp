#include "plot/decaycharts.h"

#include "fit/numbertext.h"
#include "fit/safelog10.h"
#include "plot/axis.h"
#include "plot/curvecolor.h"

#include <algorithm>
#include <cmath>

namespace plot
{
namespace
{

constexpr std::size_t kPlottedPoints = 49;
constexpr int kTableTimes = 50;      // one more than the chart shows, deliberately
constexpr int kLeastColumns = 10;    // of a table
constexpr double kMarkerRadius = 30; // twips
constexpr double kPercentRange = 100;
constexpr double kPercentStep = 25;
constexpr double kNsPerS = 1e9;

std::size_t slot(int i) { return static_cast<std::size_t>(i); }

const decay::SampleRecord& reference(const decay::SampleTable& samples) { return samples.SampleData[1]; }

std::size_t fittedPoints(const decay::SampleTable& samples)
{
    return slot(std::clamp(reference(samples).LastFitIndex, 1, decay::kGridSize));
}

struct VerticalAxis {
    double top, bottom, step;
    int islog;
};

/// The time axis begins a tenth of its range before zero.
void timeAxis(Canvas& canvas, const decay::SampleTable& samples, VerticalAxis y)
{
    const double start = -samples.TimeMax / 10;
    canvas.View(start, y.top, samples.TimeMax, y.bottom);
    double xt = AxisStep(start, samples.TimeMax);
    canvas.Axis(xt, y.step, y.islog);
}

void writeCell(TableSink& table, int column, int row, std::string_view text)
{
    table.Locate(column, row);
    table.Value(text);
}

void writeTimes(TableSink& table, const decay::Grid& times, DecayTableUnits units)
{
    for (int j = 0; j < kTableTimes; ++j) {
        if (units.seconds)
            writeCell(table, 0, j + 1, fit::formatNumber(times[slot(j)], "0.00e+00"));
        else
            writeCell(table, 0, j + 1, fit::formatNumber(times[slot(j)] * kNsPerS, "####0.##"));
    }
}

void writeDecay(TableSink& table, int column, const decay::Grid& logs, DecayTableUnits units)
{
    for (int j = 0; j < kTableTimes; ++j) {
        if (units.logarithms)
            writeCell(table, column, j + 1, fit::formatNumber(logs[slot(j)], "#0.###"));
        else
            writeCell(table, column, j + 1, fit::formatNumber(std::pow(10.0, logs[slot(j)]), "0.###e+#"));
    }
}

void writeDecayTable(TableSink& table, const decay::SampleTable& samples, DecayTableUnits units,
                     decay::Grid decay::SampleRecord::*logs)
{
    table.Rows(kTableTimes + 1);
    table.Cols(std::max(kLeastColumns, samples.SampleCount + 1));
    writeTimes(table, reference(samples).T, units);
    for (int i = 1; i <= samples.SampleCount; ++i) {
        const decay::SampleRecord& sample = samples.SampleData[slot(i)];
        writeCell(table, i, 0, fit::formatNumber(sample.Conc, "0.#####"));
        writeDecay(table, i, sample.*logs, units);
    }
}

/// Difference between the observed and the fitted intensity in percent of the fitted intensity.
double deviation(double observedLog, double fittedLog) { return std::pow(10.0, observedLog - fittedLog + 2) - 100; }

} // namespace

std::optional<FittedCurves> evaluateFitted(const decay::SampleTable& samples, const DecayCurve& fitted)
{
    FittedCurves curves;
    for (int i = 1; i <= samples.SampleCount; ++i) {
        const decay::SampleRecord& sample = samples.SampleData[slot(i)];
        for (std::size_t p = 0; p < fittedPoints(samples); ++p) {
            const double intensity = fitted(sample.T[p], sample.Conc);
            const double fittedLog = fit::SafeLog10(intensity).value_or(0);
            if (!std::isfinite(intensity) || !std::isfinite(deviation(sample.observedLog[p], fittedLog)))
                return std::nullopt;
            curves[slot(i)].push_back(fittedLog);
        }
    }
    return curves;
}

void PlotDecayCurves(Canvas& canvas, const decay::SampleTable& samples)
{
    canvas.SetTitle("Decay Curves");
    timeAxis(canvas, samples, {0, fit::SafeLog10(samples.FitRegionLevel).value_or(0), 1, kPowerLabels});
    for (int i = 1; i <= samples.SampleCount; ++i) {
        const decay::SampleRecord& sample = samples.SampleData[slot(i)];
        canvas.beginSample(i, sample.Conc);
        for (std::size_t j = 0; j < kPlottedPoints; ++j)
            canvas.VCircle(sample.T[j], sample.observedLog[j], kMarkerRadius, pointColor(i, samples.SampleCount),
                           Fill::Solid);
    }
}

void PlotFittedDecayCurves(Canvas& canvas, decay::SampleTable& samples, const FittedCurves& fitted)
{
    for (int i = 1; i <= samples.SampleCount; ++i) {
        decay::SampleRecord& sample = samples.SampleData[slot(i)];
        const std::vector<double>& logs = fitted[slot(i)];
        sample.observedLog[0] = logs[0]; // the observed series on purpose; both are 0 for normalised data
        for (std::size_t p = 1; p < logs.size(); ++p) {
            canvas.VLine(sample.T[p - 1], logs[p - 1], sample.T[p], logs[p], lineColor(i, samples.SampleCount));
            sample.fittedLog[p] = logs[p];
        }
    }
}

void PlotDecayDeviation(Canvas& canvas, decay::SampleTable& samples, const FittedCurves& fitted)
{
    canvas.SetTitle("Deviation from fitting curves(%)");
    timeAxis(canvas, samples, {kPercentRange, -kPercentRange, kPercentStep, kLinearLabels});
    for (int i = 1; i <= samples.SampleCount; ++i) {
        decay::SampleRecord& sample = samples.SampleData[slot(i)];
        const std::vector<double>& logs = fitted[slot(i)];
        const auto percent = [&](std::size_t p) { return deviation(sample.observedLog[p], logs[p]); };
        sample.observedLog[0] = percent(0); // stored there instead of drawn, on purpose
        canvas.beginSample(i, sample.Conc);
        for (std::size_t p = 1; p < logs.size(); ++p)
            canvas.VCircle(reference(samples).T[p], percent(p), kMarkerRadius, pointColor(i, samples.SampleCount),
                           Fill::Solid);
    }
}

void ShowExperimentalDecayTable(TableSink& table, const decay::SampleTable& samples, DecayTableUnits units)
{
    table.ClearSheet();
    table.setRedraw(false);
    table.SetTitle("Experimental Decay");
    writeDecayTable(table, samples, units, &decay::SampleRecord::observedLog);
    table.setRedraw(true);
}

void ShowDecayFittingTable(TableSink& table, const decay::SampleTable& samples, DecayTableUnits units)
{
    table.ClearSheet();
    table.setRedraw(false);
    writeDecayTable(table, samples, units, &decay::SampleRecord::fittedLog);
    table.setRedraw(true);
}

} // namespace plot
