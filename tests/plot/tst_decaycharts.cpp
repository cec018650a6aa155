#include "plot/curvecolor.h"
#include "plot/decaycharts.h"
#include "tests/support/plotrecorders.h"

#include <QTest>

#include <cmath>
#include <limits>

namespace
{

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

class TestDecayCharts : public QObject
{
    Q_OBJECT

private slots:
    void drawsObservedDecays();
    void fittedCurvesFollowTheGrid();
    void deviationsAreInPercent();
    void faultsAndEmptyLogarithms();
    void tablesFollowTheScales_data();
    void tablesFollowTheScales();
    void fittingTableKeepsItsTitle();
};

void TestDecayCharts::drawsObservedDecays()
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

void TestDecayCharts::fittedCurvesFollowTheGrid()
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

void TestDecayCharts::deviationsAreInPercent()
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

void TestDecayCharts::faultsAndEmptyLogarithms()
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

void TestDecayCharts::tablesFollowTheScales_data()
{
    QTest::addColumn<int>("timeScale");
    QTest::addColumn<int>("intensityScale");
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QString>("fitted");
    QTest::newRow("sec, Normal") << 0 << 0 << "4.90e-08"
                                 << "3.548e-3"
                                 << "1.e-2";
    QTest::newRow("sec, log") << 0 << 1 << "4.90e-08"
                              << "-2.45"
                              << "-2.";
    QTest::newRow("ns, Normal") << 1 << 0 << "49."
                                << "3.548e-3"
                                << "1.e-2";
    QTest::newRow("ns, log") << 1 << 1 << "49."
                             << "-2.45"
                             << "-2.";
}

void TestDecayCharts::tablesFollowTheScales()
{
    QFETCH(int, timeScale);
    QFETCH(int, intensityScale);
    const app::Settings settings{.TimeScale = timeScale, .IntensityScale = intensityScale};
    decay::SampleTable samples = twoSamples();
    samples.SampleData[2].fittedLog[49] = -2;
    support::RecordingTable table;
    plot::ShowExperimentalDecayTable(table, samples, settings);
    QCOMPARE(table.title, std::string("Experimental Decay"));
    QCOMPARE(table.redraws, (std::vector<bool>{false, true}));
    QCOMPARE(table.rows, 51);
    QCOMPARE(table.columns, 10);
    QCOMPARE(table.cells.size(), 50u * 3u + 2u);
    QCOMPARE((table.cells[{0, 2}]), std::string("0.0125"));
    QTEST(QString::fromStdString(table.cells[{50, 0}]), "time");
    QTEST(QString::fromStdString(table.cells[{50, 2}]), "value");
    plot::ShowDecayFittingTable(table, samples, settings);
    QTEST(QString::fromStdString(table.cells[{50, 2}]), "fitted");
}

void TestDecayCharts::fittingTableKeepsItsTitle()
{
    support::RecordingTable table;
    decay::SampleTable samples = twoSamples();
    samples.SampleCount = 20;
    plot::ShowDecayFittingTable(table, samples, {});
    QCOMPARE(table.title, std::string("as it was"));
    QCOMPARE(table.columns, 21);
}

QTEST_APPLESS_MAIN(TestDecayCharts)
#include "tst_decaycharts.moc"
