#include "analysis/request.h"
#include "decay/normalization.h"
#include "plot/axis.h"
#include "plot/decaycharts.h"
#include "plot/sternvolmercharts.h"
#include "sternvolmer/ratiodata.h"
#include "tests/fuzz/sheet.h"
#include "tests/support/plotrecorders.h"

#include <cmath>

using fuzz::check;

namespace
{

struct Setup {
    analysis::Request request;
    int regionMode = 0;
    double level = 0;
};

Setup takeSetup(fuzz::Input& input)
{
    Setup setup;
    fit::Options& options = setup.request.options;
    setup.request.model = input.takeUpTo(15);
    options.logMode = input.takeUpTo(1);
    setup.regionMode = input.takeUpTo(2);
    setup.level = fuzz::takeNumber(input);
    setup.request.Cp = fuzz::takeNumber(input);
    options.parameterCount = 1 + input.takeUpTo(2);
    options.iterationLimit = input.takeUpTo(30);
    options.tolerance = fuzz::takeNumber(input);
    for (std::size_t j = 1; j <= fit::kMaxParameters; ++j) {
        setup.request.leftover[j] = fuzz::takeNumber(input);
        options.fix[j] = input.takeUpTo(1);
        options.aboveZero[j] = input.takeUpTo(1);
    }
    setup.request = analysis::startingAt(setup.request, setup.request.leftover);
    return setup;
}

struct CountingObserver final : fit::Observer {
    int iterations = 0;
    double told = 0;
    void letEventsRun() override { ++iterations; }
    bool keepGoing(double count) override
    {
        check(count <= iterations && count >= told);
        told = count;
        return true;
    }
};

analysis::Result checkFit(const analysis::Request& request)
{
    CountingObserver observer;
    analysis::Result result = analysis::run(request, observer);
    // A decay fit that the fast evaluation has begun may begin again.
    check(observer.iterations <= 2 * (request.options.iterationLimit + 1));
    fuzz::fits += observer.iterations > 0;
    if (result.ending != fit::Ending::ArithmeticFault)
        for (int j = 1; j <= request.options.parameterCount; ++j)
            check(std::isfinite(result.parameters[static_cast<std::size_t>(j)]));
    return result;
}

/// Draws as the window does; every loop over ticks must end.
class CheckingCanvas final : public plot::Canvas
{
public:
    void SetTitle(std::string_view) override {}
    void View(double x1, double y1, double x2, double y2) override
    {
        m_map = plot::ViewMap({x1, y1, x2, y2}, {m_surface.width(), m_surface.height()});
    }
    void Axis(double& xt, double& yt, int islog) override
    {
        m_surface.lines.clear();
        plot::drawAxis(m_surface, m_map, {"##0", islog}, {xt, yt});
        check(m_surface.lines.size() < 10000);
    }
    void beginSample(int, double) override {}
    void VLine(double, double, double, double, plot::Color) override {}
    void VPset(double, double, plot::Color) override {}
    void VCircle(double x, double y, double, plot::Color, plot::Fill) override
    {
        check(std::abs(m_map.VtoWX(x)) <= 32767 && std::abs(m_map.VtoWY(y)) <= 32767);
    }
    void VBox(double, double, double, double, plot::Color) override {}
    void VFill(double, double, double, double, plot::Color) override {}

private:
    support::RecordingSurface m_surface;
    plot::ViewMap m_map;
};

void checkRatios(const decay::CellText& cell, Setup setup)
{
    sternvolmer::RatioData data = sternvolmer::readSternVolmerData(cell);
    if (!data.complete)
        return;
    sternvolmer::computeRatios(data);
    setup.request.data = sternvolmer::pointsOf(data);
    const auto fitted = analysis::fittedRatio(setup.request, checkFit(setup.request).parameters);
    CheckingCanvas canvas;
    plot::PlotSternVolmer(canvas, data.samples, data.Xmax, data.Ymax);
    plot::PlotSternVolmerFit(canvas, plot::ratioCurve(data.Xmax, fitted));
    support::RecordingTable table;
    plot::ShowSternVolmerFittingTable(table, plot::ratioTable(data.Xmax, fitted));
    check(table.cells.size() < 2 * 501);
}

void checkDecays(const decay::CellText& cell, Setup setup)
{
    decay::DecayData data = decay::readDecayData(cell, setup.level, setup.request.model);
    if (!data.usable())
        return;
    decay::normaliseAmplitudes(data.samples);
    decay::BuildDecayCurves(data.samples, setup.regionMode);
    setup.request.data = data.samples;
    const analysis::Result result = checkFit(setup.request);
    const auto curves = plot::evaluateFitted(data.samples, analysis::fittedDecay(setup.request, result.parameters));
    CheckingCanvas canvas;
    plot::PlotDecayCurves(canvas, data.samples);
    if (curves) {
        plot::PlotFittedDecayCurves(canvas, data.samples, *curves);
        plot::PlotDecayDeviation(canvas, data.samples, *curves);
    }
    support::RecordingTable table;
    plot::ShowDecayFittingTable(table, data.samples, {});
    check(table.rows == 51);
}

} // namespace

/// Any sheet, model, start and flags go through both analyses. Every fit must end in time, with finite parameters or
/// with an error, and every plot and table must end, too.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    const Setup setup = takeSetup(input);
    const decay::CellText cell = fuzz::takeSheet(input, 20);
    checkRatios(cell, setup);
    checkDecays(cell, setup);
    return 0;
}
