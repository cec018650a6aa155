#pragma once

#include "decay/sampletable.h"
#include "plot/canvas.h"
#include "plot/tablesink.h"

#include <functional>
#include <span>
#include <vector>

/// Chart and table of a Stern-Volmer analysis. Fitted values are calculated first, so that nothing is drawn if a value
/// is not finite.
namespace plot
{

/// Quencher concentration in M and the ratio F0/F at this concentration.
struct CurvePoint {
    double x = 0;
    double y = 0;
};

using RatioCurve = std::function<double(double Q)>; // fitted F0/F; Q in M

/// The fitted curve in steps of Xmax/20, up to one step beyond Xmax; empty if Xmax is 0.
std::vector<CurvePoint> ratioCurve(double Xmax, const RatioCurve& fitted);
/// The rows of the fitting table, in round steps from 0 to Xmax; only the row of x = 0 if Xmax is 0.
std::vector<CurvePoint> ratioTable(double Xmax, const RatioCurve& fitted);
bool allFinite(std::span<const CurvePoint> points);

/// Draws the measured ratios as red dots. Xmax in M and Ymax are the largest values shown.
void PlotSternVolmer(Canvas& canvas, const decay::SampleTable& samples, double Xmax, double Ymax);
/// Draws the fitted curve over the measured ratios.
void PlotSternVolmerFit(Canvas& canvas, std::span<const CurvePoint> curve);
/// Concentrations in column 0, ratios in column 1, from row 1 on.
void ShowSternVolmerFittingTable(TableSink& table, std::span<const CurvePoint> rows);

} // namespace plot
