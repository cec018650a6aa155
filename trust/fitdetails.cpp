#include "trust/fitdetails.h"

#include "fit/statistics.h"
#include "fit/vectorregisters.h"
#include "leastsquares/akaike.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>
#include <span>

namespace trust
{
namespace
{

/// Without slots; empty for decay curves.
std::span<const double> observedRatios(const analysis::Request& request)
{
    const auto* points = std::get_if<sternvolmer::RatioPoints>(&request.data);
    if (!points)
        return {};
    return std::span(points->ratio).subspan(1, static_cast<std::size_t>(points->count));
}

/// Observed minus model. A rounding, as the laws have it at the reference, counts as 0: it is no deviation with a sign.
std::vector<double> residuals(const RequestedFit& requested, const fit::Parameters& values)
{
    constexpr double kRounding = 1e-14; // of a ratio, some tens of units in its last place
    std::vector<double> observedMinusModel;
    for (int i = 1; i <= requested.problem.pointCount(); ++i)
        observedMinusModel.push_back(-requested.problem.residual(i, values));
    const std::span<const double> ratios = observedRatios(requested.request);
    for (std::size_t i = 0; i < ratios.size(); ++i)
        if (std::abs(observedMinusModel[i]) < kRounding * std::abs(ratios[i]))
            observedMinusModel[i] = 0;
    return observedMinusModel;
}

double determination(double sumOfSquares, std::span<const double> observed)
{
    const double mean = std::accumulate(observed.begin(), observed.end(), 0.0) / static_cast<double>(observed.size());
    double total = 0;
    for (const double y : observed)
        total += (y - mean) * (y - mean);
    return total > 0 ? fit::determination(sumOfSquares, total) : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

FitDetails fitDetails(const analysis::Request& request, const analysis::Result& result, const Judgement& judgement)
{
    fit::clearUpperHalves();
    const std::unique_ptr<fit::Problem> problem = realProblem(request);
    const RequestedFit requested{*problem, request};
    const leastsquares::FreeSlots free = requested.free();
    FitDetails details{.options = requested.request.options, .values = result.values, .fitted = result.fitted};
    details.pointCount = requested.problem.pointCount();
    details.residuals = residuals(requested, result.values);
    details.uncertainty =
        leastsquares::uncertaintyOf(requested.problem, result.values, free, requested.countedPoints());
    details.sumOfSquares = leastsquares::sumOfSquares(requested.problem, result.values);
    const int dof = details.uncertainty.degreesOfFreedom;
    details.rootMeanSquareError =
        dof > 0 ? std::sqrt(details.sumOfSquares / dof) : std::numeric_limits<double>::infinity();
    details.R2 = determination(details.sumOfSquares, observedRatios(requested.request));
    const double sum = std::max(details.sumOfSquares, leastsquares::sumOfExactFit(details.pointCount));
    const int fittedConstants = static_cast<int>(free.size()) + 1; // and the variance
    if (analysis::methodOf(requested.request) == models::Analysis::SternVolmer)
        details.AICc = leastsquares::correctedAkaike(sum, requested.countedPoints(), fittedConstants);
    details.runs = leastsquares::runsTest(details.residuals);
    details.judgement = judgement;
    if (judgement.atLeastSum()) // a fit may end where the same constants look a little better or worse known
        details.uncertainty.undetermined = judgement.undetermined;
    return details;
}

} // namespace trust
