#include "app/sessiontext.h"
#include "bench/jobs.h"
#include "decay/analyzerwindow.h"
#include "decay/curvefit.h"
#include "plot/decaycharts.h"
#include "plot/graphwindow.h"
#include "plot/spreadsheetwindow.h"
#include "ui/prompter.h"

#include <benchmark/benchmark.h>

#include <QCoreApplication>

namespace
{

/// One real pass of the event loop per iteration, with nothing to show.
struct EventLoopObserver final : fit::Observer {
    void letEventsRun() override { QCoreApplication::processEvents(); }
    bool keepGoing(double) override { return true; }
};

/// A job, or one that goes on for so long that the start and the end of the command no longer count.
bench::DecayJob windowJob(int number, bool endless)
{
    bench::DecayJob job = bench::decayJob(number);
    if (endless) {
        job.options.tolerance = 0;
        job.options.iterationLimit = 1000;
    }
    return job;
}

void configure(decay::frmDecayCurveAnalyzer& analyzer, const bench::DecayJob& job)
{
    analyzer.setLogMode(0);
    analyzer.setModel(job.model);
    analyzer.setConcentrationofProbe(bench::kProbe);
    analyzer.setIteration(static_cast<int>(job.options.iterationLimit));
    analyzer.setTolerance(job.options.tolerance);
    analyzer.setInitialParameter(job.options.parameterCount, job.start[1], job.start[2], job.start[3]);
    analyzer.setFixation(0, 0, 0);
    analyzer.setAboveZero(1, 1, 1);
}

void fitInWindow(benchmark::State& state, int number, bool endless)
{
    const bench::DecayJob job = windowJob(number, endless);
    ui::DialogPrompter prompter;
    decay::frmDecayCurveAnalyzer analyzer(prompter);
    analyzer.setSampleData(job.samples);
    analyzer.SetSize(0, 0, 4000, 4000);
    QCoreApplication::processEvents();
    for (auto _ : state) {
        configure(analyzer, job);
        analyzer.GAUSSNEWTON();
    }
}

/// What fitInWindow is compared with: the window stands there, but nobody writes into it.
void fitBesideWindow(benchmark::State& state, int number, bool endless)
{
    const bench::DecayJob job = windowJob(number, endless);
    ui::DialogPrompter prompter;
    decay::frmDecayCurveAnalyzer analyzer(prompter);
    analyzer.SetSize(0, 0, 4000, 4000);
    QCoreApplication::processEvents();
    decay::DecayProblem problem(job.samples, job.model, 0, bench::kProbe);
    EventLoopObserver observer;
    for (auto _ : state) {
        benchmark::DoNotOptimize(decay::fitCurves(problem, job.options, job.start, observer));
        benchmark::DoNotOptimize(problem.statistics(job.start));
    }
}

void drawDecayChart(benchmark::State& state)
{
    plot::Graph graph;
    graph.resize(333, 333);
    graph.show();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        plot::PlotDecayCurves(graph, bench::decayJob(1).samples);
        QCoreApplication::processEvents(); // paints
    }
}
BENCHMARK(drawDecayChart)->Name("draw/decay chart")->Unit(benchmark::kMillisecond);

void fillLargestTable(benchmark::State& state)
{
    plot::SpreadSheet table;
    table.show();
    QCoreApplication::processEvents();
    for (auto _ : state) {
        table.setRedraw(false);
        table.ClearSheet();
        table.Rows(plot::kTableRows);
        table.Cols(plot::kTableColumns);
        for (int row = 0; row < plot::kTableRows; ++row)
            for (int column = 0; column < plot::kTableColumns; ++column) {
                table.Locate(column, row);
                table.Value("1.234e-5");
            }
        table.setRedraw(true);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(fillLargestTable)->Name("fill/largest table")->Unit(benchmark::kMillisecond);

app::Session fullSession()
{
    app::Session session;
    session.rows = session.columns = app::kMostCount;
    session.cells.assign(app::kMostCount - 1, std::vector<std::string>(app::kMostCount - 1, "1.2345e-5"));
    return session;
}

void saveSession(benchmark::State& state)
{
    const app::Session session = fullSession();
    for (auto _ : state)
        benchmark::DoNotOptimize(app::writeSession(session));
}
BENCHMARK(saveSession)->Name("session/save")->Unit(benchmark::kMillisecond);

void openSession(benchmark::State& state)
{
    const std::string text = app::writeSession(fullSession());
    for (auto _ : state)
        benchmark::DoNotOptimize(app::readSession(text, app::Session()));
}
BENCHMARK(openSession)->Name("session/open")->Unit(benchmark::kMillisecond);

const bool registered = [] {
    for (int number : {2, 3})
        for (bool endless : {false, true}) {
            const std::string job = "window/J" + std::to_string(number) + (endless ? " endless" : "");
            benchmark::RegisterBenchmark((job + "/analyzer").c_str(), fitInWindow, number, endless);
            benchmark::RegisterBenchmark((job + "/engine").c_str(), fitBesideWindow, number, endless);
        }
    return true;
}();

} // namespace
