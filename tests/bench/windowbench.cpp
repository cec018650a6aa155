#include "analysis/decayanalyzer.h"
#include "analysis/sternvolmeranalyzer.h"
#include "app/sessiontext.h"
#include "decay/curvefit.h"
#include "plot/decaycharts.h"
#include "plot/graphwindow.h"
#include "plot/spreadsheetwindow.h"
#include "tests/bench/jobs.h"
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

/// A job, or a job that runs so long that the start and the end of the command no longer matter.
template <class Job>
Job windowJob(Job job, double endlessIterations)
{
    if (endlessIterations > 0) {
        job.options.tolerance = 0;
        job.options.iterationLimit = endlessIterations;
    }
    return job;
}

void configure(analysis::AnalyzerWindow& analyzer, const bench::Job& job)
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

void setData(analysis::frmDecayCurveAnalyzer& analyzer, const bench::DecayJob& job)
{
    analyzer.setSampleData(job.samples);
}

void setData(analysis::frmSternVolmerAnalyzer& analyzer, const bench::RatioJob& job)
{
    analyzer.setTauZero(job.tau0);
    analyzer.setDatanumber(bench::kSamples);
    for (int i = 1; i <= bench::kSamples; ++i) {
        analyzer.setDX(job.x[static_cast<std::size_t>(i)], i);
        analyzer.setDY(job.y[static_cast<std::size_t>(i)], i);
    }
}

template <class Analyzer, class Job>
void fitInWindow(benchmark::State& state, const Job& job)
{
    ui::DialogPrompter prompter;
    Analyzer analyzer(prompter);
    setData(analyzer, job);
    analyzer.SetSize(0, 0, 4000, 4000);
    QCoreApplication::processEvents();
    for (auto _ : state) {
        configure(analyzer, job);
        analyzer.GAUSSNEWTON();
    }
}

/// The reference for fitInWindow: the window is open, but nothing is written into it.
template <class Analyzer, class Problem, class Fit>
void fitBesideWindow(benchmark::State& state, const bench::Job& job, Problem problem, Fit fitted)
{
    ui::DialogPrompter prompter;
    Analyzer analyzer(prompter);
    analyzer.SetSize(0, 0, 4000, 4000);
    QCoreApplication::processEvents();
    EventLoopObserver observer;
    for (auto _ : state) {
        const fit::Outcome outcome = fitted(problem, job.options, job.start, observer);
        benchmark::DoNotOptimize(problem.statistics(outcome.parameters));
    }
}

void decayFitInWindow(benchmark::State& state, int number, double endlessIterations)
{
    fitInWindow<analysis::frmDecayCurveAnalyzer>(state, windowJob(bench::decayJob(number), endlessIterations));
}

void decayFitBesideWindow(benchmark::State& state, int number, double endlessIterations)
{
    const bench::DecayJob job = windowJob(bench::decayJob(number), endlessIterations);
    fitBesideWindow<analysis::frmDecayCurveAnalyzer>(
        state, job, decay::DecayProblem(job.samples, job.model, 0, bench::kProbe), decay::fitCurves);
}

void ratioFitInWindow(benchmark::State& state, int number, double endlessIterations)
{
    fitInWindow<analysis::frmSternVolmerAnalyzer>(state, windowJob(bench::ratioJob(number), endlessIterations));
}

void ratioFitBesideWindow(benchmark::State& state, int number, double endlessIterations)
{
    const bench::RatioJob job = windowJob(bench::ratioJob(number), endlessIterations);
    fitBesideWindow<analysis::frmSternVolmerAnalyzer>(state, job, bench::problemOf(job), fit::gaussNewton);
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
    for (int number = 1; number <= bench::kDecayJobs + bench::kRatioJobs; ++number) {
        const bool isDecay = number <= bench::kDecayJobs;
        for (double endlessIterations : {0.0, isDecay ? 1000.0 : 50000.0}) {
            const std::string job = "window/J" + std::to_string(number) + (endlessIterations > 0 ? " endless" : "");
            benchmark::RegisterBenchmark((job + "/analyzer").c_str(), isDecay ? decayFitInWindow : ratioFitInWindow,
                                         number, endlessIterations);
            benchmark::RegisterBenchmark((job + "/engine").c_str(),
                                         isDecay ? decayFitBesideWindow : ratioFitBesideWindow, number,
                                         endlessIterations);
        }
    }
    return true;
}();

} // namespace
