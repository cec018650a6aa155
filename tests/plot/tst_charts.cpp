#include "plot/curvecolor.h"
#include "plot/decaycharts.h"
#include "plot/sternvolmercharts.h"
#include "tests/support/plotrecorders.h"
#include "tests/support/recordingcanvas.h"

#include <QTest>

#include <cmath>
#include <limits>

using support::RecordingCanvas;

namespace
{

double linear(double x) { return 1 + 100 * x; }

constexpr double kTau = 1e-8;      // s
constexpr double kGridStep = 1e-9; // s

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

QString hex(plot::Color color) { return RecordingCanvas::hex(color); }

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
    void decayTablesFollowTheUnits();
};

void TestCharts::drawsMeasuredRatios()
{
    decay::SampleTable samples;
    samples.SampleCount = 2;
    samples.SampleData[1].SVRatio = 1;
    samples.SampleData[2].Conc = 0.02;
    samples.SampleData[2].SVRatio = 3;
    RecordingCanvas canvas;
    plot::PlotSternVolmer(canvas, samples, 0.02, 5);
    QCOMPARE(canvas.calls,
             QStringList({"title Stern-Volmer Plot", "view -0.004 5.5 0.022 -2.5", "axis 0.01 2 0", "sample 1 0",
                          "circle 0 1 50 #ff0000 solid", "sample 2 0.02", "circle 0.02 3 50 #ff0000 solid"}));
}

void TestCharts::ratioCurveRunsOneStepBeyondTheData()
{
    for (const double Xmax : {0.01, 0.02, 0.03, 0.5, 0.8, 16.0}) { // the sums of most of these steps round
        const std::vector<plot::CurvePoint> curve = plot::ratioCurve(Xmax, linear);
        QCOMPARE(curve.size(), 22u);
        QCOMPARE(curve.front().y, 1.0);
    }
    RecordingCanvas canvas;
    plot::PlotSternVolmerFit(canvas, plot::ratioCurve(20, linear)); // steps of 1 have no rounding
    QCOMPARE(canvas.calls.size(), 21);
    QCOMPARE(canvas.calls.back(), "line 20 2001 21 2101 #ff0000");
}

void TestCharts::ratioTableStopsAtTheLargestConcentration()
{
    support::RecordingTable table;
    plot::ShowSternVolmerFittingTable(table, plot::ratioTable(20, linear)); // steps of AxisStep(2, 0) = 1
    QCOMPARE(table.title, "Stern-Volmer (Fitting)");
    QCOMPARE(table.redraws, (std::vector<bool>{false, true}));
    QCOMPARE(table.cells.size(), 2u * 21u);
    QCOMPARE((table.cells[{1, 0}]), "0.e+0");
    QCOMPARE((table.cells[{21, 1}]), "2.001e+3");
    QCOMPARE(plot::ratioTable(0.01, linear).size(), 11u);  // ten steps of 0.001 add up to a little more than 0.01
    QCOMPARE(plot::ratioTable(0.065, linear).size(), 33u); // steps of 0.002: 0.064 is the last one within the data
}

void TestCharts::noRatioRangeRunsAway()
{
    QVERIFY(plot::ratioCurve(0, linear).empty()); // only the reference
    QCOMPARE(plot::ratioTable(0, linear).size(), 1u);
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
    RecordingCanvas canvas;
    decay::SampleTable samples = twoSamples();
    plot::PlotDecayCurves(canvas, samples);
    QCOMPARE(canvas.calls.first(5),
             QStringList({"title Decay Curves", "view -5e-09 0 5e-08 -2",
                          "axis 2e-08 1 1", // 5.5e-8 is more than five of 1e-8
                          "sample 1 0", "circle 0 0 30" + hex(plot::pointColor(1, 2)) + " solid"}));
    QCOMPARE(canvas.calls.indexOf("sample 2 0.0125"), 3 + 50);
    QCOMPARE(canvas.calls.size(), 3 + 2 * 50);
    QCOMPARE(canvas.calls.back(), "circle 4.8e-08 -2.4 30" + hex(plot::pointColor(2, 2)) + " solid");
    samples.FitRegionLevel = -1; // has no logarithm
    RecordingCanvas other;
    plot::PlotDecayCurves(other, samples);
    QCOMPARE(other.calls[1], "view -5e-09 0 5e-08 0");
}

void TestCharts::fittedDecaysFollowTheGrid()
{
    decay::SampleTable samples = twoSamples();
    samples.SampleData[1].LastFitIndex = 4;
    samples.SampleData[1].observedLog[0] = 0.5;
    const auto fitted = plot::evaluateFitted(samples, exponential);
    QVERIFY(fitted);
    RecordingCanvas canvas;
    plot::PlotFittedDecayCurves(canvas, samples, *fitted);
    QCOMPARE(canvas.calls.size(), 2 * 3);
    QCOMPARE(canvas.calls.front(), "line 0 0 1e-09 -0.0434294" + hex(plot::lineColor(1, 2)));
    const QString color = hex(plot::lineColor(2, 2));
    QCOMPARE(canvas.calls.back(), "line 2e-09 -0.0868589 3e-09 -0.130288" + color); // 0.1 / ln 10 each
    QCOMPARE(samples.SampleData[1].observedLog[0], 0.0);                            // replaced by the fitted value
    QCOMPARE(samples.SampleData[2].fittedLog[3], fitted->at(2)[3]);
    QCOMPARE(samples.SampleData[2].fittedLog[4], 0.0);
}

void TestCharts::decayDeviationsAreInPercent()
{
    decay::SampleTable samples = twoSamples();
    samples.SampleData[1].LastFitIndex = 3;
    samples.SampleData[2].observedLog[2] = std::log10(std::exp(-0.2) * 1.25); // a quarter above the fit
    const auto fitted = plot::evaluateFitted(samples, exponential);
    QVERIFY(fitted);
    RecordingCanvas canvas;
    plot::PlotFittedDecayCurves(canvas, samples, *fitted);
    canvas.calls.clear();
    plot::PlotDecayDeviation(canvas, samples, *fitted);
    QCOMPARE(canvas.calls.first(3),
             QStringList({"title Deviation from fitting curves(%)", "view -5e-09 100 5e-08 -100", "axis 2e-08 25 0"}));
    QCOMPARE(canvas.calls.size(), 3 + 2 * 3); // point 0 is not drawn
    QCOMPARE(canvas.calls[6], "sample 2 0.0125");
    QCOMPARE(canvas.calls.back(), "circle 2e-09 25 30" + hex(plot::pointColor(2, 2)) + " solid");
    QCOMPARE(samples.SampleData[2].observedLog[0], 0.0);
}

void TestCharts::decayFaultsAndEmptyLogarithms()
{
    decay::SampleTable samples = twoSamples();
    QVERIFY(!plot::evaluateFitted(samples, [](double t, double) { return 1 / (t - 3 * kGridStep); }));
    QVERIFY(!plot::evaluateFitted(samples, [](double, double) { return 1e-320; })); // its deviation overflows
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

void TestCharts::decayTablesFollowTheUnits()
{
    const struct {
        plot::DecayTableUnits units;
        const char *time, *value, *fitted;
    } cases[]{{{.seconds = true, .logarithms = false}, "4.90e-08", "3.548e-3", "1.e-2"},
              {{.seconds = true, .logarithms = true}, "4.90e-08", "-2.45", "-2."},
              {{.seconds = false, .logarithms = false}, "49.", "3.548e-3", "1.e-2"},
              {{.seconds = false, .logarithms = true}, "49.", "-2.45", "-2."}};
    for (const auto& c : cases) {
        decay::SampleTable samples = twoSamples();
        samples.SampleData[2].fittedLog[49] = -2;
        support::RecordingTable table;
        plot::ShowDecayFittingTable(table, samples, c.units);
        QCOMPARE(table.title, "as it was");
        QCOMPARE((table.cells[{50, 2}]), c.fitted);
        QCOMPARE(table.cells.size(), 50u * 3u + 2u);
        plot::ShowExperimentalDecayTable(table, samples, c.units);
        QCOMPARE(table.title, "Experimental Decay");
        QCOMPARE(table.redraws, (std::vector<bool>{false, true, false, true}));
        QVERIFY(table.rows == 51);
        QVERIFY(table.columns == 10);
        QCOMPARE(table.cells.size(), 50u * 3u + 2u);
        QCOMPARE((table.cells[{0, 2}]), "0.0125");
        QCOMPARE((table.cells[{50, 0}]), c.time);
        QCOMPARE((table.cells[{50, 2}]), c.value);
        samples.SampleCount = 20;
        plot::ShowDecayFittingTable(table, samples, c.units);
        QCOMPARE(table.columns, 21);
    }
}

QTEST_APPLESS_MAIN(TestCharts)
#include "tst_charts.moc"
