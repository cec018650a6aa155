#pragma once

#include "decay/sampletable.h"
#include "fit/gaussnewton.h"
#include "fit/statistics.h"
#include "models/catalogue.h"
#include "sternvolmer/ratiopoints.h"

#include <functional>
#include <string>
#include <variant>

/// One analysis, from what is asked to what came out, without a window.
namespace analysis
{

/// Everything that decides how an analysis ends. The data decide on the method.
struct Request {
    std::variant<sternvolmer::RatioPoints, decay::SampleTable> data{};
    int model = 0;
    double Cp = 0;            // total probe, M
    fit::Options options{};   // as chosen by the user; engineOptions() fits them to method and log mode
    fit::Parameters values{}; // starting values in their real units
    /// Parameters of an earlier run, as the engine held them; startParameters() may need them.
    fit::Parameters leftover{};
    /// Decay curves may differ by roundings; for fits that only look for something.
    bool quick = false;
};

/// What came out of a request.
struct Result {
    fit::Parameters parameters{}; // as the engine holds them: natural logarithms in log mode
    fit::Parameters values{};     // the same in their real units
    bool fitted = false;          // false: only calculated, where a fit would start
    int status = 1;               // fit::Status as a number, or whatever a window was set to
    double iterations = 0;        // completed updates; 0 when nothing was fitted
    fit::Ending ending = fit::Ending::Converged;
    fit::Statistics statistics{};
    std::string report{}; // lines ended by CR LF
    bool fault = false;   // a parameter of the model or a figure is infinite or undefined: nothing may be shown
};

models::Analysis methodOf(const Request& request);

/// The options as the engine takes them: logarithms may cross zero, and decay fits step off a parameter of 0.
fit::Options engineOptions(const Request& request);

/// Where the engine starts. In log mode a value that is not positive has no logarithm: its slot starts from what is
/// left over.
fit::Parameters startParameters(const Request& request);

/// False when a number that the analysis starts from is infinite: a starting value, the tolerance, the iteration limit
/// or, where the law has it, the probe concentration.
bool startsFinite(const Request& request);

/// The request with its start at parameters as the engine holds them.
Request startingAt(Request request, const fit::Parameters& parameters);

/// Fits the data. After an arithmetic fault there are neither statistics nor a report.
Result run(const Request& request, fit::Observer& observer);

/// Evaluates the model where a fit would start. The report tells of a status and a number of iterations.
Result calculate(const Request& request, int status = static_cast<int>(fit::Status::Fine), double iterations = 0);

/// The model's ratio F0/F at total quencher x, M, for parameters as the engine holds them.
std::function<double(double x)> fittedRatio(const Request& request, const fit::Parameters& parameters);

/// The model's intensity (linear) at time t, s, and total quencher Q, M.
std::function<double(double t, double Q)> fittedDecay(const Request& request, const fit::Parameters& parameters);

/// A model's constants under the names by which results carry them. Two-site models type the constants of the sites as
/// kq1 and kq2 and carry them as kq2 and kq22.
struct Constants {
    double K = 0, F = 0, kq1 = 0, kq2 = 0, kq22 = 0;
    bool operator==(const Constants&) const = default;
};

/// Those of a model with given parameter values; constants that the model lacks stay as they were.
Constants constantsOf(int model, const fit::Parameters& values, Constants earlier = {});

} // namespace analysis
