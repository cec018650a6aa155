#pragma once

#include "decay/sampletable.h"
#include "plot/canvas.h"
#include "plot/tablesink.h"

#include <array>
#include <functional>
#include <optional>
#include <vector>

/// Charts and tables of decay curves. Charts always show seconds and base-10 logarithms.
namespace plot
{

using DecayCurve = std::function<double(double t, double Q)>; // fitted intensity, linear; t in s, Q in M

/// Base-10 logarithms of the fitted decays: [sample][grid point], sample 0 unused.
using FittedCurves = std::array<std::vector<double>, decay::kMaxSamples + 1>;

/// The fitted decays on each sample's time grid, up to but not including the last fitted point of sample 1. nullopt if
/// a fitted intensity is not finite. The logarithm of an intensity that is not positive is set to 0.
std::optional<FittedCurves> evaluateFitted(const decay::SampleTable& samples, const DecayCurve& fitted);

/// Draws observed decays as dots.
void PlotDecayCurves(Canvas& canvas, const decay::SampleTable& samples);
/// Draws fitted decays as lines over the dots; writes the samples' fittedLog and point 0 of their observedLog.
void PlotFittedDecayCurves(Canvas& canvas, decay::SampleTable& samples, const FittedCurves& fitted);
/// Draws deviations of observed from fitted intensities in percent; writes point 0 of the samples' observedLog.
void PlotDecayDeviation(Canvas& canvas, decay::SampleTable& samples, const FittedCurves& fitted);

/// The units of a table of decays.
struct DecayTableUnits {
    bool seconds = false;    // instead of nanoseconds
    bool logarithms = false; // to base 10, instead of the intensities themselves
};

/// Lists the observed decays, one row per time and one column per sample.
void ShowExperimentalDecayTable(TableSink& table, const decay::SampleTable& samples, DecayTableUnits units);
/// Lists the fitted decays that PlotFittedDecayCurves stored; does not change the title.
void ShowDecayFittingTable(TableSink& table, const decay::SampleTable& samples, DecayTableUnits units);

} // namespace plot
