#pragma once

#include "decay/sampletable.h"
#include "plot/canvas.h"
#include "plot/tabletext.h"

#include <functional>
#include <span>
#include <vector>

/// Chart and table of a Stern-Volmer analysis. Fitted values are worked out first, so that nothing is drawn when one
/// of them is not finite.
namespace plot
{

/// Quencher concentration in M and the ratio F0/F there.
struct CurvePoint {
    double x = 0;
    double y = 0;
};

using RatioCurve = std::function<double(double x)>; // fitted F0/F at quencher concentration x, M

/// The fitted curve in steps of Xmax/20, one step beyond Xmax; empty when Xmax is 0.
std::vector<CurvePoint> ratioCurve(double Xmax, const RatioCurve& fitted);
/// The rows of the fitting table: round steps from 0 to Xmax; the row of x = 0 also when Xmax is 0.
std::vector<CurvePoint> ratioTable(double Xmax, const RatioCurve& fitted);
bool allFinite(std::span<const CurvePoint> points);

/// Measured ratios, each sample a red dot. Xmax in M and Ymax are the largest values to be shown.
void PlotSternVolmer(Canvas& canvas, const decay::SampleTable& samples, double Xmax, double Ymax);
/// The fitted curve over the measured ratios.
void PlotSternVolmerFit(Canvas& canvas, std::span<const CurvePoint> curve);
/// Concentrations in column 0, ratios in column 1, from row 1 on.
void ShowSternVolmerFittingTable(TableSink& table, std::span<const CurvePoint> rows);

} // namespace plot
