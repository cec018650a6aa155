#include "plot/curvecolor.h"
#include "plot/decaycharts.h"
#include "plot/sternvolmercharts.h"
#include "tests/support/plotrecorders.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace
{

double linear(double x) { return 1 + 100 * x; }

constexpr double kTau = 1e-8;         // s
constexpr double kGridStep = 1e-9;    // s
constexpr double kLogRounding = 1e-9; // the logarithm's divisor has ten digits
constexpr double kPercentRounding = 1e-6;

decay::SampleTable twoSamples()
{
    decay::SampleTable samples;
    samples.SampleCount = 2;
    samples.TimeMax = 50 * kGridStep;
    samples.FitRegionLevel = 0.01;
    samples.SampleData[2].Conc = 0.0125;
    for (std::size_t i : {1u, 2u})
        for (std::size_t j = 0; j < decay::kGridSize; ++j) {
            samples.SampleData[i].T[j] = static_cast<double>(j) * kGridStep;
            samples.SampleData[i].observedLog[j] = -static_cast<double>(j) * 0.05;
        }
    return samples;
}

double exponential(double t, double) { return std::exp(-t / kTau); }

} // namespace

class TestCharts : public QObject
{
    Q_OBJECT

private slots:
    void drawsMeasuredRatios();
    void ratioCurveRunsOneStepBeyondTheData();
    void ratioTableStopsAtTheLargestConcentration();
    void noRatioRangeRunsAway();
    void drawsObservedDecays();
    void fittedDecaysFollowTheGrid();
    void decayDeviationsAreInPercent();
    void decayFaultsAndEmptyLogarithms();
    void decayTablesFollowTheScales();
};

void TestCharts::drawsMeasuredRatios()
{
    decay::SampleTable samples;
    samples.SampleCount = 2;
    samples.SampleData[1].SVRatio = 1;
    samples.SampleData[2].Conc = 0.02;
    samples.SampleData[2].SVRatio = 3;
    support::RecordingCanvas canvas;
    plot::PlotSternVolmer(canvas, samples, 0.02, 3);
    QCOMPARE(canvas.order, (std::vector<std::string>{"SetTitle", "View", "Axis", "VCircle"}));
    QCOMPARE(canvas.title, std::string("Stern-Volmer Plot"));
    QCOMPARE(canvas.view.x1, -0.004);
    QCOMPARE(canvas.view.y1, 3.3);
    QCOMPARE(canvas.view.x2, 0.022);
    QCOMPARE(canvas.view.y2, -1.5);
    QCOMPARE(canvas.xt, 0.01);
    QCOMPARE(canvas.yt, 1.0);
    QCOMPARE(canvas.islog, 0);
    QCOMPARE(canvas.circles.size(), 2u);
    const support::Circle& last = canvas.circles.back();
    QCOMPARE(last.x, 0.02);
    QCOMPARE(last.y, 3.0);
    QCOMPARE(last.R, 50.0);
    QCOMPARE(last.c, plot::rgb(255, 0, 0));
    QCOMPARE(last.f, plot::Fill::Solid);
    QCOMPARE(canvas.legend.entries().size(), 2u);
    QCOMPARE(canvas.legend.entries()[1].markers.front().x, 0.02);
}

void TestCharts::ratioCurveRunsOneStepBeyondTheData()
{
    for (const double Xmax : {0.01, 0.02, 0.03, 0.5, 0.8, 16.0}) { // steps of most of them round when they add up
        const std::vector<plot::CurvePoint> curve = plot::ratioCurve(Xmax, linear);
        QCOMPARE(curve.size(), 22u);
        QCOMPARE(curve.front().y, 1.0);
    }
    support::RecordingCanvas canvas;
    plot::PlotSternVolmerFit(canvas, plot::ratioCurve(20, linear)); // steps of 1 have no rounding
    QCOMPARE(canvas.order, std::vector<std::string>{"VLine"});
    QCOMPARE(canvas.lines.size(), 21u);
    QCOMPARE(canvas.lines.back().x1, 20.0);
    QCOMPARE(canvas.lines.back().x2, 21.0);
    QCOMPARE(canvas.lines.back().y2, 2101.0);
    QCOMPARE(canvas.lines.back().c, plot::kBrightRed);
}

void TestCharts::ratioTableStopsAtTheLargestConcentration()
{
    support::RecordingTable table;
    plot::ShowSternVolmerFittingTable(table, plot::ratioTable(20, linear)); // steps of AxisStep(2, 0) = 1
    QCOMPARE(table.title, std::string("Stern-Volmer (Fitting)"));
    QCOMPARE(table.redraws, (std::vector<bool>{false, true}));
    QCOMPARE(table.cells.size(), 2u * 21u);
    QCOMPARE((table.cells[{1, 0}]), std::string("0.e+0"));
    QCOMPARE((table.cells[{1, 1}]), std::string("1.e+0"));
    QCOMPARE((table.cells[{21, 0}]), std::string("2.e+1"));
    QCOMPARE((table.cells[{21, 1}]), std::string("2.001e+3"));
    QCOMPARE(plot::ratioTable(0.01, linear).size(), 11u);  // ten steps of 0.001 add up to a little more than 0.01
    QCOMPARE(plot::ratioTable(0.065, linear).size(), 33u); // steps of 0.002: 0.064 is the last one within the data
}

void TestCharts::noRatioRangeRunsAway()
{
    QVERIFY(plot::ratioCurve(0, linear).empty()); // only the reference
    QCOMPARE(plot::ratioTable(0, linear).size(), 1u);
    QCOMPARE(plot::ratioTable(0, linear).front().x, 0.0);
    using Limits = std::numeric_limits<double>;
    for (const double Xmax :
         {Limits::max(), Limits::denorm_min(), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), -1.0}) {
        QVERIFY(plot::ratioCurve(Xmax, linear).size() <= 1000);
        QVERIFY(plot::ratioTable(Xmax, linear).size() <= 1000);
    }
    QVERIFY(plot::allFinite(plot::ratioCurve(1, linear)));
    QVERIFY(!plot::allFinite(plot::ratioCurve(1, [](double x) { return std::log(0.5 - x); })));
}

void TestCharts::drawsObservedDecays()
{
    support::RecordingCanvas canvas;
    const decay::SampleTable samples = twoSamples();
    plot::PlotDecayCurves(canvas, samples);
    QCOMPARE(canvas.order, (std::vector<std::string>{"SetTitle", "View", "Axis", "VCircle"}));
    QCOMPARE(canvas.title, std::string("Decay Curves"));
    QCOMPARE(canvas.view.x1, -5e-9);
    QCOMPARE(canvas.view.y1, 0.0);
    QCOMPARE(canvas.view.x2, 5e-8);
    QVERIFY(std::abs(canvas.view.y2 + 2) < kLogRounding);
    QCOMPARE(canvas.xt, 2e-8); // 5.5e-8 is more than five of 1e-8
    QCOMPARE(canvas.yt, 1.0);
    QCOMPARE(canvas.islog, 1);
    QCOMPARE(canvas.circles.size(), 2u * 49u);
    const support::Circle& last = canvas.circles.back();
    QCOMPARE(last.x, 48 * kGridStep);
    QCOMPARE(last.y, -48 * 0.05);
    QCOMPARE(last.R, 30.0);
    QCOMPARE(last.c, plot::pointColor(2, 2));
    QCOMPARE(canvas.legend.entries().size(), 2u);
    QCOMPARE(canvas.legend.entries()[1].number, 2);
    QCOMPARE(canvas.legend.entries()[1].Conc, samples.SampleData[2].Conc);
    QCOMPARE(canvas.legend.entries()[1].markers.size(), 49u);
    QCOMPARE(last.f, plot::Fill::Solid);
    decay::SampleTable odd = twoSamples();
    odd.FitRegionLevel = -1;
    plot::PlotDecayCurves(canvas, odd);
    QCOMPARE(canvas.view.y2, 0.0);
}

void TestCharts::fittedDecaysFollowTheGrid()
{
    decay::SampleTable samples = twoSamples();
    samples.SampleData[1].LastFitIndex = 4;
    samples.SampleData[1].observedLog[0] = 0.5;
    const auto fitted = plot::evaluateFitted(samples, exponential);
    QVERIFY(fitted);
    support::RecordingCanvas canvas;
    plot::PlotFittedDecayCurves(canvas, samples, *fitted);
    QCOMPARE(canvas.order, std::vector<std::string>{"VLine"});
    QCOMPARE(canvas.lines.size(), 2u * 3u);
    const double perStep = -kGridStep / kTau / std::log(10.0);
    const support::Line& last = canvas.lines.back();
    QCOMPARE(last.x1, 2 * kGridStep);
    QVERIFY(std::abs(last.y1 - 2 * perStep) < kLogRounding);
    QCOMPARE(last.x2, 3 * kGridStep);
    QVERIFY(std::abs(last.y2 - 3 * perStep) < kLogRounding);
    QCOMPARE(last.c, plot::lineColor(2, 2));
    QCOMPARE(samples.SampleData[1].observedLog[0], 0.0); // replaced by the fitted value
    QCOMPARE(samples.SampleData[2].fittedLog[3], last.y2);
    QCOMPARE(samples.SampleData[2].fittedLog[4], 0.0);
}

void TestCharts::decayDeviationsAreInPercent()
{
    decay::SampleTable samples = twoSamples();
    samples.SampleData[1].LastFitIndex = 3;
    samples.SampleData[2].observedLog[2] = std::log10(std::exp(-0.2) * 1.25); // a quarter above the fit
    const auto fitted = plot::evaluateFitted(samples, exponential);
    QVERIFY(fitted);
    support::RecordingCanvas canvas;
    plot::PlotFittedDecayCurves(canvas, samples, *fitted);
    plot::PlotDecayDeviation(canvas, samples, *fitted);
    QCOMPARE(canvas.title, std::string("Deviation from fitting curves(%)"));
    QCOMPARE(canvas.view.y1, 100.0);
    QCOMPARE(canvas.view.y2, -100.0);
    QCOMPARE(canvas.yt, 25.0);
    QCOMPARE(canvas.islog, 0);
    QCOMPARE(canvas.circles.size(), 2u * 2u); // point 0 is not drawn
    QCOMPARE(canvas.circles.back().x, 2 * kGridStep);
    QVERIFY(std::abs(canvas.circles.back().y - 25) < kPercentRounding);
    QCOMPARE(canvas.circles.back().c, plot::pointColor(2, 2));
    QCOMPARE(canvas.legend.entries()[1].markers.size(), 2u);
    QCOMPARE(samples.SampleData[2].observedLog[0], 0.0);
}

void TestCharts::decayFaultsAndEmptyLogarithms()
{
    decay::SampleTable samples = twoSamples();
    QVERIFY(!plot::evaluateFitted(samples, [](double t, double) { return 1 / (t - 3 * kGridStep); }));
    const auto dark = plot::evaluateFitted(samples, [](double, double) { return -1.0; });
    QVERIFY(dark);
    QCOMPARE(dark->at(2).back(), 0.0);
    for (const int last : {-1, 0, 1000}) {
        samples.SampleData[1].LastFitIndex = last;
        const auto fitted = plot::evaluateFitted(samples, exponential);
        QVERIFY(fitted);
        QCOMPARE(fitted->at(1).size(), last == 1000 ? 256u : 1u);
    }
}

void TestCharts::decayTablesFollowTheScales()
{
    const struct {
        int timeScale, intensityScale;
        const char *time, *value, *fitted;
    } cases[]{{0, 0, "4.90e-08", "3.548e-3", "1.e-2"},
              {0, 1, "4.90e-08", "-2.45", "-2."},
              {1, 0, "49.", "3.548e-3", "1.e-2"},
              {1, 1, "49.", "-2.45", "-2."}};
    for (const auto& c : cases) {
        const app::Settings settings{.TimeScale = c.timeScale, .IntensityScale = c.intensityScale};
        decay::SampleTable samples = twoSamples();
        samples.SampleData[2].fittedLog[49] = -2;
        support::RecordingTable table;
        plot::ShowDecayFittingTable(table, samples, settings);
        QCOMPARE(table.title, std::string("as it was"));
        QCOMPARE((table.cells[{50, 2}]), std::string(c.fitted));
        plot::ShowExperimentalDecayTable(table, samples, settings);
        QCOMPARE(table.title, std::string("Experimental Decay"));
        QCOMPARE(table.redraws, (std::vector<bool>{false, true, false, true}));
        QVERIFY(table.rows == 51 && table.columns == 10);
        QCOMPARE(table.cells.size(), 50u * 3u + 2u);
        QCOMPARE((table.cells[{0, 2}]), std::string("0.0125"));
        QCOMPARE((table.cells[{50, 0}]), std::string(c.time));
        QCOMPARE((table.cells[{50, 2}]), std::string(c.value));
        samples.SampleCount = 20;
        plot::ShowDecayFittingTable(table, samples, settings);
        QCOMPARE(table.columns, 21);
    }
}

QTEST_APPLESS_MAIN(TestCharts)
#include "tst_charts.moc"
