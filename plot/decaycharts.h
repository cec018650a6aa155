#pragma once

#include "app/settings.h"
#include "decay/sampletable.h"
#include "plot/canvas.h"
#include "plot/tabletext.h"

#include <array>
#include <functional>
#include <optional>
#include <vector>

/// Charts and tables of decay curves. Charts show seconds and base-10 logarithms whatever the settings are.
namespace plot
{

using DecayCurve = std::function<double(double t, double Conc)>; // fitted intensity, linear; t in s, Conc in M

/// Base-10 logarithms of the fitted decays: [sample][grid point], sample 0 unused.
using FittedCurves = std::array<std::vector<double>, decay::kMaxSamples + 1>;

/// The fitted decays on each sample's time grid, up to but not including the last fitted point of sample 1.
/// nullopt when a fitted intensity is not finite; an intensity that is not positive has the logarithm 0.
std::optional<FittedCurves> evaluateFitted(const decay::SampleTable& samples, const DecayCurve& fitted);

/// Observed decays as dots.
void PlotDecayCurves(Canvas& canvas, const decay::SampleTable& samples);
/// Fitted decays as lines over the dots; writes the samples' fittedLog and point 0 of their observedLog.
void PlotFittedDecayCurves(Canvas& canvas, decay::SampleTable& samples, const FittedCurves& fitted);
/// Deviations of observed from fitted intensities in percent; writes point 0 of the samples' observedLog.
void PlotDecayDeviation(Canvas& canvas, decay::SampleTable& samples, const FittedCurves& fitted);

/// Times down, samples across: the observed decays.
void ShowExperimentalDecayTable(TableSink& table, const decay::SampleTable& samples, const app::Settings& settings);
/// The same of the fitted decays that PlotFittedDecayCurves has stored; leaves the title as it is.
void ShowDecayFittingTable(TableSink& table, const decay::SampleTable& samples, const app::Settings& settings);

} // namespace plot
