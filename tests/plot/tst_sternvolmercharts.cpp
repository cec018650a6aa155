#include "plot/sternvolmercharts.h"
#include "tests/support/plotrecorders.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace
{

double linear(double x) { return 1 + 100 * x; }

} // namespace

class TestSternVolmerCharts : public QObject
{
    Q_OBJECT

private slots:
    void drawsMeasuredRatios();
    void curveRunsOneStepBeyondTheData();
    void tableStopsAtTheLargestConcentration();
    void onlyTheReferenceGivesOneRow();
    void noRangeRunsAway();
    void faultsAreSeen();
};

void TestSternVolmerCharts::drawsMeasuredRatios()
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

void TestSternVolmerCharts::curveRunsOneStepBeyondTheData()
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

void TestSternVolmerCharts::tableStopsAtTheLargestConcentration()
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

void TestSternVolmerCharts::onlyTheReferenceGivesOneRow()
{
    QVERIFY(plot::ratioCurve(0, linear).empty());
    QCOMPARE(plot::ratioTable(0, linear).size(), 1u);
    QCOMPARE(plot::ratioTable(0, linear).front().x, 0.0);
}

void TestSternVolmerCharts::noRangeRunsAway()
{
    using Limits = std::numeric_limits<double>;
    for (const double Xmax :
         {Limits::max(), Limits::denorm_min(), Limits::infinity(), -Limits::infinity(), Limits::quiet_NaN(), -1.0}) {
        QVERIFY(plot::ratioCurve(Xmax, linear).size() <= 1000);
        QVERIFY(plot::ratioTable(Xmax, linear).size() <= 1000);
    }
}

void TestSternVolmerCharts::faultsAreSeen()
{
    QVERIFY(plot::allFinite(plot::ratioCurve(1, linear)));
    QVERIFY(!plot::allFinite(plot::ratioCurve(1, [](double x) { return std::log(0.5 - x); })));
}

QTEST_APPLESS_MAIN(TestSternVolmerCharts)
#include "tst_sternvolmercharts.moc"
