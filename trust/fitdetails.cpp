#include "trust/fitdetails.h"

#include "fit/statistics.h"
#include "fit/vectorregisters.h"

#include <cmath>
#include <limits>
#include <numeric>

namespace trust
{
namespace
{

std::vector<double> residuals(fit::Problem& problem, const fit::Parameters& values)
{
    std::vector<double> observedMinusModel;
    for (int i = 1; i <= problem.pointCount(); ++i)
        observedMinusModel.push_back(-problem.residual(i, values));
    return observedMinusModel;
}

double determination(double residualSum, std::span<const double> observed)
{
    const double mean = std::accumulate(observed.begin(), observed.end(), 0.0) / static_cast<double>(observed.size());
    double total = 0;
    for (const double y : observed)
        total += (y - mean) * (y - mean);
    return total > 0 ? fit::determination(residualSum, total) : std::numeric_limits<double>::quiet_NaN();
}

} // namespace

FitDetails fitDetails(const Task& task, const FinishedFit& finished, std::span<const double> observed)
{
    fit::clearUpperHalves();
    const leastsquares::FreeSlots free = task.free();
    FitDetails details;
    details.fit = finished;
    details.pointCount = task.problem.pointCount();
    details.residuals = residuals(task.problem, finished.values);
    details.uncertainty = leastsquares::uncertaintyOf(task.problem, finished.values, free, task.countedPoints());
    details.sumOfSquares = leastsquares::sumOfSquares(task.problem, finished.values);
    const int dof = details.uncertainty.degreesOfFreedom;
    details.rootMeanSquareError =
        dof > 0 ? std::sqrt(details.sumOfSquares / dof) : std::numeric_limits<double>::infinity();
    details.R2 = determination(details.sumOfSquares, observed);
    details.AICc = correctedAkaike(details.sumOfSquares, task.countedPoints(), static_cast<int>(free.size()));
    details.runs = leastsquares::runsTest(details.residuals);
    details.verdict = judge(task, finished, details.uncertainty.undetermined);
    return details;
}

std::optional<double> correctedAkaike(double sumOfSquares, int n, int p)
{
    const int k = p + 1;
    if (n - k - 1 <= 0 || !(sumOfSquares > 0) || !std::isfinite(sumOfSquares))
        return std::nullopt;
    return n * std::log(sumOfSquares / n) + 2.0 * k + 2.0 * k * (k + 1) / (n - k - 1);
}

} // namespace trust
