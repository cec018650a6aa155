#include "tests/fuzz/sheet.h"
#include "trust/fitdetails.h"
#include "trust/ratiotask.h"
#include "trust/startsearch.h"

#include <cmath>

using fuzz::check;

namespace
{

constexpr int kSamples = 8; // a search over more samples takes so long that few inputs would run

app::PanelState takePanel(fuzz::Input& input)
{
    app::PanelState panel;
    panel.Model = 1 + input.takeUpTo(models::kModelCount - 1);
    panel.FixKq2 = input.takeUpTo(1);
    panel.FixF = input.takeUpTo(1);
    panel.iteration = std::to_string(input.takeUpTo(200));
    for (std::string* text : {&panel.kq1, &panel.kq2, &panel.K, &panel.F, &panel.Cp, &panel.tolerance})
        *text = fit::plainText(fuzz::takeNumber(input));
    return panel;
}

/// Fixed values must stay, other values must be of a size that can be typed, and the sums must be those at the values.
trust::SearchResult checkSearch(const trust::Task& task)
{
    double last = 0;
    trust::SearchResult found = trust::searchStart(task, [&](double done) {
        check(done >= last && done <= 1);
        last = done;
        return true;
    });
    for (const leastsquares::Solution& solution : found.solutions) {
        check(solution.sumOfSquares == leastsquares::sumOfSquares(task.problem, solution.values));
        check(std::isfinite(solution.sumOfSquares));
        for (std::size_t slot = 1; slot <= static_cast<std::size_t>(task.typed.count); ++slot)
            check(task.typed.fix[slot] == 1 ? solution.values[slot] == task.typed.values[slot]
                                            : std::isfinite(solution.values[slot]) && solution.values[slot] > 0);
    }
    return found;
}

void checkDetails(const trust::RatioInput& input, const trust::Task& task, const trust::FinishedFit& finished)
{
    const trust::FitDetails details = trust::fitDetails(task, finished, input.observed());
    check(details.residuals.size() == static_cast<std::size_t>(input.data.samples.SampleCount));
    for (const double error : details.uncertainty.standardError)
        check(error >= 0);
    for (const auto& row : details.uncertainty.correlation)
        for (const double correlation : row)
            check(std::abs(correlation) <= 1 + 1e-6);
    const bool defined = std::isfinite(details.sumOfSquares);
    check(defined == (details.verdict != trust::Verdict::NotDefined));
}

} // namespace

/// Any sheet and panel go through the start search. The details of a fit are taken at the typed values, at the end of
/// the engine's run from there, and at the values found.
int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input bytes(data, size);
    trust::RatioInput input;
    input.logMode = bytes.takeUpTo(1);
    input.panel = takePanel(bytes);
    input.data = sternvolmer::readSternVolmerData(fuzz::takeSheet(bytes, kSamples));
    if (!input.data.complete)
        return 0;
    sternvolmer::computeRatios(input.data);
    sternvolmer::RatioProblem problem = input.problem();
    const trust::Task task = input.task(problem);
    const trust::SearchResult found = checkSearch(task);

    trust::FinishedFit fit{.options = trust::engineOptions(input.panel, models::Analysis::SternVolmer, input.logMode)};
    fit.start = found.solutions.empty() ? task.typed.values : found.solutions.front().values;
    const trust::EngineRun run = trust::runEngine(problem, fit.options, fit.start);
    fit.values = run.values;
    fit.iterations = run.outcome.iterations;
    fuzz::fits += run.outcome.iterations > 0;
    checkDetails(input, task, fit);
    fit.values = fit.start = task.typed.values;
    fit.calculated = true;
    checkDetails(input, task, fit);
    return 0;
}
