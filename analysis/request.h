#pragma once

#include "decay/sampletable.h"
#include "fit/gaussnewton.h"
#include "fit/statistics.h"
#include "models/catalogue.h"
#include "sternvolmer/ratiopoints.h"

#include <functional>
#include <memory>
#include <string>
#include <variant>

/// One analysis without a window: a request goes in, a result comes out.
namespace analysis
{

/// Everything that determines the result of an analysis. The type of the data determines the method.
struct Request {
    std::variant<sternvolmer::RatioPoints, decay::SampleTable> data{};
    int model = 0;
    double Cp = 0;            // total probe, M
    fit::Options options{};   // as chosen by the user; engineOptions() adapts them to method and log mode
    fit::Parameters values{}; // starting values in their real units
    /// Parameters of an earlier run, as the engine held them; startParameters() may need them.
    fit::Parameters leftover{};
    /// Decay curves may differ by rounding errors; for fits that are only part of a search.
    bool quick = false;
};

/// The outcome of a request.
struct Result {
    fit::Parameters parameters{}; // as the engine holds them: natural logarithms in log mode
    fit::Parameters values{};     // the same in their real units
    bool fitted = false;          // false: the model was only evaluated where a fit would start
    int status = 1;               // fit::Status as a number, or any number that setStatus stored
    double iterations = 0;        // completed updates; 0 when nothing was fitted
    fit::Ending ending = fit::Ending::Converged;
    fit::Statistics statistics{};
    std::string report{}; // lines ended by CR LF
    bool fault = false;   // a parameter of the model or a figure is infinite or undefined: nothing may be shown
};

models::Analysis methodOf(const Request& request);

/// The options as the engine takes them: logarithms may cross zero, and decay fits step off a parameter of 0.
fit::Options engineOptions(const Request& request);

/// Where the engine starts. In log mode a value that is not positive has no logarithm, so its slot starts at the
/// leftover parameter.
fit::Parameters startParameters(const Request& request);

/// False when a number that the analysis starts from is infinite: a starting value, the tolerance, the iteration limit
/// or, if the law contains it, the probe concentration.
bool startsFinite(const Request& request);

/// The request, changed to start at parameters as the engine holds them.
Request startingAt(Request request, const fit::Parameters& parameters);

/// The least-squares problem of a request, with parameters as the engine holds them.
std::unique_ptr<fit::Problem> engineProblem(const Request& request);

/// Fits the data. After an arithmetic fault there are neither statistics nor a report.
Result run(const Request& request, fit::Observer& observer);

/// Evaluates the model where a fit would start. The report states the given status and number of iterations.
Result calculate(const Request& request, int status = static_cast<int>(fit::Status::Fine), double iterations = 0);

/// The model's ratio F0/F at total quencher Q, M, for parameters as the engine holds them.
std::function<double(double Q)> fittedRatio(const Request& request, const fit::Parameters& parameters);

/// The model's intensity (linear) at time t, s, and total quencher Q, M.
std::function<double(double t, double Q)> fittedDecay(const Request& request, const fit::Parameters& parameters);

/// A model's constants under the names that results use. The constants of the two sites are typed into the boxes kq1
/// and kq2, and results name them kq2 and kq22.
struct Constants {
    double K = 0, F = 0, kq1 = 0, kq2 = 0, kq22 = 0;
    bool operator==(const Constants&) const = default;
};

/// The constants of a model with given parameter values. Constants that the model lacks keep their earlier values.
Constants constantsOf(int model, const fit::Parameters& values, Constants earlier = {});

} // namespace analysis
