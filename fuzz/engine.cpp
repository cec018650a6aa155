#include "app/panelvalues.h"
#include "decay/decayproblem.h"
#include "decay/normalization.h"
#include "fit/realparameters.h"
#include "fuzz/sheet.h"
#include "plot/axis.h"
#include "plot/decaycharts.h"
#include "plot/sternvolmercharts.h"
#include "sternvolmer/ratiodata.h"
#include "sternvolmer/ratioproblem.h"
#include "tests/support/plotrecorders.h"

#include <cmath>

using fuzz::check;

namespace
{

struct Setup {
    int model, logMode, regionMode;
    double level, Cp;
    fit::Parameters start{};
    fit::Options options;
};

Setup takeSetup(fuzz::Input& input)
{
    Setup setup{};
    setup.model = input.takeUpTo(15);
    setup.logMode = input.takeUpTo(1);
    setup.regionMode = input.takeUpTo(2);
    setup.level = fuzz::takeNumber(input);
    setup.Cp = fuzz::takeNumber(input);
    setup.options.logMode = setup.logMode;
    setup.options.parameterCount = 1 + input.takeUpTo(2);
    setup.options.iterationLimit = input.takeUpTo(30);
    setup.options.tolerance = fuzz::takeNumber(input);
    for (std::size_t j = 1; j < setup.start.size(); ++j) {
        setup.start[j] = fuzz::takeNumber(input);
        setup.options.fix[j] = input.takeUpTo(1);
        setup.options.aboveZero[j] = input.takeUpTo(1);
    }
    return setup;
}

struct CountingObserver final : fit::Observer {
    int iterations = 0;
    void letEventsRun() override { ++iterations; }
    bool keepGoing(double count) override
    {
        check(count == iterations);
        return true;
    }
};

fit::Outcome checkFit(fit::Problem& problem, const Setup& setup)
{
    CountingObserver observer;
    const fit::Outcome outcome = fit::gaussNewton(problem, setup.options, setup.start, observer);
    check(observer.iterations <= setup.options.iterationLimit + 1);
    if (outcome.ending != fit::Ending::ArithmeticFault)
        for (int j = 1; j <= setup.options.parameterCount; ++j)
            check(std::isfinite(outcome.parameters[static_cast<std::size_t>(j)]));
    return outcome;
}

/// As the window draws it; no loop over ticks may run away.
void checkAxes(const support::RecordingCanvas& canvas)
{
    support::RecordingSurface surface;
    double xt = canvas.xt, yt = canvas.yt;
    const plot::WorldRect world{canvas.view.x1, canvas.view.y1, canvas.view.x2, canvas.view.y2};
    const plot::ViewMap map(world, {surface.width(), surface.height()});
    plot::drawAxis(surface, map, "##0", xt, yt, canvas.islog);
    check(surface.lines.size() < 10000);
    for (const support::Circle& circle : canvas.circles)
        check(std::abs(map.VtoWX(circle.x)) <= 32767 && std::abs(map.VtoWY(circle.y)) <= 32767);
}

void checkRatios(const decay::CellText& cell, const Setup& setup)
{
    sternvolmer::RatioData data = sternvolmer::readSternVolmerData(cell);
    if (!data.complete)
        return;
    sternvolmer::computeRatios(data);
    sternvolmer::RatioProblem problem;
    problem.setLogMode(setup.logMode);
    problem.setModel(setup.model);
    problem.setTauZero(data.tau0);
    problem.setConcentrationofProbe(setup.Cp);
    problem.setDatanumber(data.samples.SampleCount);
    for (int i = 1; i <= data.samples.SampleCount; ++i) {
        problem.setDX(data.samples.SampleData[static_cast<std::size_t>(i)].Conc, i);
        problem.setDY(data.samples.SampleData[static_cast<std::size_t>(i)].SVRatio, i);
    }
    const fit::Outcome outcome = checkFit(problem, setup);
    problem.statistics(outcome.parameters);
    const auto fitted = [&](double x) { return problem.value(x, outcome.parameters); };
    support::RecordingCanvas canvas;
    plot::PlotSternVolmer(canvas, data.samples, data.Xmax, data.Ymax);
    plot::PlotSternVolmerFit(canvas, plot::ratioCurve(data.Xmax, fitted));
    checkAxes(canvas);
    support::RecordingTable table;
    plot::ShowSternVolmerFittingTable(table, plot::ratioTable(data.Xmax, fitted));
    check(table.cells.size() < 2 * 501);
}

void checkDecays(const decay::CellText& cell, Setup setup)
{
    decay::DecayData data = decay::readDecayData(cell, setup.level, setup.model);
    if (!data.usable())
        return;
    decay::normaliseAmplitudes(data.samples);
    decay::BuildDecayCurves(data.samples, setup.regionMode);
    setup.options.unitStepForZero = true;
    decay::DecayProblem problem(data.samples, setup.model, setup.logMode, setup.Cp);
    const fit::Outcome outcome = checkFit(problem, setup);
    problem.statistics(outcome.parameters);
    const auto curves =
        plot::evaluateFitted(data.samples, [&](double t, double Q) { return problem.value(t, Q, outcome.parameters); });
    support::RecordingCanvas canvas;
    plot::PlotDecayCurves(canvas, data.samples);
    checkAxes(canvas);
    if (curves) {
        plot::PlotFittedDecayCurves(canvas, data.samples, *curves);
        plot::PlotDecayDeviation(canvas, data.samples, *curves);
        checkAxes(canvas);
    }
    support::RecordingTable table;
    plot::ShowDecayFittingTable(table, data.samples, {});
    check(table.rows == 51);
}

} // namespace

/// Any sheet, model, start and flags through both analyses: every fit ends in time, with finite parameters or with
/// its fault named, and nothing that is drawn or listed runs away.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    const Setup setup = takeSetup(input);
    const decay::CellText cell = fuzz::takeSheet(input, 20);
    checkRatios(cell, setup);
    checkDecays(cell, setup);
    return 0;
}
