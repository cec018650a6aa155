#include "plot/sternvolmercharts.h"

#include "fit/numbertext.h"
#include "plot/axis.h"
#include "plot/evensteps.h"

#include <algorithm>
#include <cmath>

namespace plot
{
namespace
{

constexpr double kMarkerRadius = 50; // twips
constexpr int kCurveSteps = 20;      // from 0 to Xmax
constexpr std::string_view kCellFormat = "#.###e+#";

std::vector<CurvePoint> evaluated(const std::vector<double>& xs, const RatioCurve& fitted)
{
    std::vector<CurvePoint> points;
    for (const double x : xs)
        points.push_back({x, fitted(x)});
    return points;
}

void writeCell(TableSink& table, int column, int row, double value)
{
    table.Locate(column, row);
    table.Value(fit::formatNumber(value, kCellFormat));
}

} // namespace

std::vector<CurvePoint> ratioCurve(double Xmax, const RatioCurve& fitted)
{
    const double step = Xmax / kCurveSteps;
    return evaluated(evenSteps(0, Xmax + step, step), fitted);
}

std::vector<CurvePoint> ratioTable(double Xmax, const RatioCurve& fitted)
{
    return evaluated(evenSteps(0, Xmax, AxisStep(Xmax / 10, 0)), fitted);
}

bool allFinite(std::span<const CurvePoint> points)
{
    return std::all_of(points.begin(), points.end(),
                       [](const CurvePoint& point) { return std::isfinite(point.x) && std::isfinite(point.y); });
}

void PlotSternVolmer(Canvas& canvas, const decay::SampleTable& samples, double Xmax, double Ymax)
{
    canvas.SetTitle("Stern-Volmer Plot");
    canvas.View(-Xmax / 5, 1.1 * Ymax, 1.1 * Xmax, -Ymax / 2);
    double xt = AxisStep(0, 1.1 * Xmax);
    double yt = AxisStep(0, 1.1 * Ymax);
    canvas.Axis(xt, yt, kLinearLabels);
    for (int i = 1; i <= samples.SampleCount; ++i) {
        const decay::SampleRecord& sample = samples.SampleData[static_cast<std::size_t>(i)];
        canvas.beginSample(i, sample.Conc);
        canvas.VCircle(sample.Conc, sample.SVRatio, kMarkerRadius, kBrightRed, Fill::Solid);
    }
}

void PlotSternVolmerFit(Canvas& canvas, std::span<const CurvePoint> curve)
{
    for (std::size_t i = 1; i < curve.size(); ++i)
        canvas.VLine(curve[i - 1].x, curve[i - 1].y, curve[i].x, curve[i].y, kBrightRed);
}

void ShowSternVolmerFittingTable(TableSink& table, std::span<const CurvePoint> rows)
{
    table.ClearSheet();
    table.setRedraw(false);
    table.SetTitle("Stern-Volmer (Fitting)");
    int row = 0;
    for (const CurvePoint& point : rows) {
        ++row;
        writeCell(table, 0, row, point.x);
        writeCell(table, 1, row, point.y);
    }
    table.setRedraw(true);
}

} // namespace plot
