#include "app/panelrequest.h"
#include "sternvolmer/ratiodata.h"
#include "tests/fuzz/sheet.h"
#include "trust/detailstext.h"
#include "trust/judging.h"

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
trust::SearchResult checkSearch(const trust::RequestedFit& requested)
{
    double last = 0;
    trust::LeastSums known;
    trust::SearchResult found = trust::searchStart(requested, known, [&](double done) {
        check(done >= last && done <= 1);
        last = done;
        return true;
    });
    for (const leastsquares::Solution& solution : found.solutions) {
        check(solution.sumOfSquares == leastsquares::sumOfSquares(requested.problem, solution.values));
        check(std::isfinite(solution.sumOfSquares));
        const fit::Options& options = requested.request.options;
        for (std::size_t slot = 1; slot <= static_cast<std::size_t>(options.parameterCount); ++slot)
            check(options.fix[slot] == 1 ? solution.values[slot] == requested.request.values[slot]
                                         : std::isfinite(solution.values[slot]) && solution.values[slot] > 0);
    }
    return found;
}

/// Any assumption about the errors of so many samples; typed errors that are refused leave the one that opens first.
noise::Errors takeErrors(fuzz::Input& input, int samples)
{
    noise::Errors errors{static_cast<noise::Assumption>(input.takeUpTo(2)), {}, input.takeUpTo(1) == 1};
    for (int sample = 0; sample < samples; ++sample)
        errors.typed.push_back(fuzz::takeNumber(input));
    return noise::complaint(errors, samples) ? noise::Errors{} : errors;
}

/// The fit under the assumption lies inside its intervals, and no text contains a number that is none.
void checkErrors(trust::FitDetails details, const analysis::Request& request, const noise::Errors& errors)
{
    constexpr double kRadius = 0.4; // nm
    details.errors = trust::errorDetails(request, details.values, {errors, {0.01, 0.01, 0.01}}, kRadius);
    for (const std::size_t slot : details.errors->ratioFit.free) {
        const leastsquares::Profile& profile = details.errors->profiles[slot];
        const double fitted = details.errors->fit.minimum.values[slot];
        check(!(profile.low && *profile.low > fitted) && !(profile.high && *profile.high < fitted));
        check(!(details.errors->fit.analysed.standardError[slot] < 0));
    }
    const std::string text = trust::plainText(trust::detailsText(details, trust::labelsOf(request)));
    check(text.find("nan") == std::string::npos && text.find("inf") == std::string::npos);
}

void checkDetails(const trust::RequestedFit& requested, const analysis::Result& result, const noise::Errors& errors)
{
    trust::LeastSums known;
    const trust::FitDetails details =
        trust::fitDetails(requested.request, result, trust::judged(requested.request, result, known));
    check(details.residuals.size() == static_cast<std::size_t>(requested.problem.pointCount()));
    for (const double error : details.uncertainty.standardError)
        check(error >= 0);
    for (const auto& row : details.uncertainty.correlation)
        for (const double correlation : row)
            check(std::abs(correlation) <= 1 + 1e-6);
    const bool defined = std::isfinite(details.sumOfSquares);
    check(defined == (details.judgement.verdict != trust::Verdict::NotDefined));
    checkErrors(details, requested.request, errors);
}

} // namespace

/// Any sheet and panel go through the start search. The details of a fit are taken at the typed values and at the end
/// of the run from the values found.
int LLVMFuzzerTestOneInput(const std::uint8_t* input, std::size_t size)
{
    fuzz::Input bytes(input, size);
    const int logMode = bytes.takeUpTo(1);
    const app::PanelState panel = takePanel(bytes);
    sternvolmer::RatioData data = sternvolmer::readSternVolmerData(fuzz::takeSheet(bytes, kSamples));
    if (!data.complete)
        return 0;
    sternvolmer::computeRatios(data);
    analysis::Request request = app::requestOf(app::panelValues(panel), logMode, {.data = sternvolmer::pointsOf(data)});
    const noise::Errors errors = takeErrors(bytes, sternvolmer::pointsOf(data).count);
    const std::unique_ptr<fit::Problem> problem = trust::realProblem(request);
    const trust::RequestedFit requested{*problem, request};
    const fit::Parameters typed = request.values;
    const trust::SearchResult found = checkSearch(requested);

    if (!found.solutions.empty())
        request.values = found.solutions.front().values;
    const analysis::Result result = trust::runEngine(request);
    fuzz::fits += result.iterations > 0;
    if (!result.fault) // a command shows nothing after a fault
        checkDetails(requested, result, errors);
    request.values = typed;
    checkDetails(requested, {.values = typed}, errors);
    return 0;
}
