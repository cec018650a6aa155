#include "analysis/request.h"

#include "decay/curvefit.h"
#include "fit/realparameters.h"
#include "fit/report.h"
#include "sternvolmer/ratioproblem.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace analysis
{
namespace
{

sternvolmer::RatioProblem problemOf(const Request& request, const sternvolmer::RatioPoints& points)
{
    return {points, request.model, request.options.logMode, request.Cp};
}

decay::DecayProblem problemOf(const Request& request, const decay::SampleTable& samples)
{
    decay::DecayProblem problem(samples, request.model, request.options.logMode, request.Cp);
    if (request.quick)
        problem.setEvaluation(models::Evaluation::Fast);
    return problem;
}

fit::Outcome solve(sternvolmer::RatioProblem& problem, const Request& request, fit::Observer& observer)
{
    return fit::gaussNewton(problem, engineOptions(request), startParameters(request), observer);
}

fit::Outcome solve(decay::DecayProblem& problem, const Request& request, fit::Observer& observer)
{
    problem.modelEvaluated = [&observer] { observer.letEventsRunWithinIteration(); };
    const fit::Options options = engineOptions(request);
    const fit::Parameters start = startParameters(request);
    const fit::Outcome outcome = request.quick ? fit::gaussNewton(problem, options, start, observer)
                                               : decay::fitCurves(problem, options, start, observer);
    problem.modelEvaluated = nullptr;
    return outcome;
}

/// Slots that the model does not use may hold anything.
bool allFinite(const Result& result, int model)
{
    bool finite = std::isfinite(result.statistics.R2) && std::isfinite(result.statistics.sumOfSquares);
    for (std::size_t slot = 1; slot <= models::row(model).fitted().size(); ++slot)
        finite = finite && std::isfinite(result.values[slot]);
    return finite;
}

std::string reportOf(const Result& result, int model)
{
    std::vector<fit::ReportLine> lines;
    std::size_t slot = 0;
    for (const models::Parameter& parameter : models::row(model).fitted())
        lines.push_back({parameter.label, result.values[++slot]});
    return fit::reportText({.model = model,
                            .parameters = lines,
                            .iterations = result.iterations,
                            .statistics = result.statistics,
                            .status = result.status});
}

/// Completes a result with everything that follows from its parameters.
template <typename Problem>
Result completed(Result result, const Request& request, Problem& problem)
{
    result.values = fit::realParameters(request.options.logMode, result.parameters);
    result.fault = result.ending == fit::Ending::ArithmeticFault;
    if (result.fault)
        return result;
    result.statistics = problem.statistics(result.parameters);
    result.report = reportOf(result, request.model);
    result.fault = !allFinite(result, request.model);
    return result;
}

double& constantOf(Constants& constants, const models::Parameter& parameter)
{
    switch (parameter.reported) {
    case models::Kq1:
        return constants.kq1;
    case models::Kq2:
        return constants.kq2;
    case models::Kq22:
        return constants.kq22;
    default:
        return parameter.box == models::Box::F ? constants.F : constants.K;
    }
}

} // namespace

models::Analysis methodOf(const Request& request)
{
    return std::holds_alternative<decay::SampleTable>(request.data) ? models::Analysis::Decay
                                                                    : models::Analysis::SternVolmer;
}

fit::Options engineOptions(const Request& request)
{
    fit::Options options = request.options;
    if (options.logMode == 1)
        options.aboveZero = {};
    options.unitStepForZero = methodOf(request) == models::Analysis::Decay;
    return options;
}

fit::Parameters startParameters(const Request& request)
{
    if (request.options.logMode != 1)
        return request.values;
    fit::Parameters start = request.leftover;
    for (std::size_t slot = 1; slot < start.size(); ++slot)
        if (request.values[slot] > 0)
            start[slot] = std::log(request.values[slot]);
    return start;
}

bool startsFinite(const Request& request)
{
    const models::Model& row = models::row(request.model);
    const auto first = request.values.begin() + 1;
    return std::isfinite(request.options.tolerance) && std::isfinite(request.options.iterationLimit) &&
           (std::isfinite(request.Cp) || !row.usesProbe(methodOf(request))) &&
           std::all_of(first, first + row.parameterCount(), [](double value) { return std::isfinite(value); });
}

Request startingAt(Request request, const fit::Parameters& parameters)
{
    request.values = request.options.logMode == 1 ? fit::Parameters{} : parameters;
    request.leftover = parameters;
    return request;
}

std::unique_ptr<fit::Problem> engineProblem(const Request& request)
{
    return std::visit(
        [&](const auto& data) -> std::unique_ptr<fit::Problem> {
            auto problem = problemOf(request, data);
            return std::make_unique<decltype(problem)>(std::move(problem));
        },
        request.data);
}

Result run(const Request& request, fit::Observer& observer)
{
    return std::visit(
        [&](const auto& data) {
            auto problem = problemOf(request, data);
            const fit::Outcome outcome = solve(problem, request, observer);
            return completed({.parameters = outcome.parameters,
                              .fitted = true,
                              .status = static_cast<int>(outcome.status),
                              .iterations = outcome.iterations,
                              .ending = outcome.ending},
                             request, problem);
        },
        request.data);
}

Result calculate(const Request& request, int status, double iterations)
{
    return std::visit(
        [&](const auto& data) {
            auto problem = problemOf(request, data);
            return completed({.parameters = startParameters(request), .status = status, .iterations = iterations},
                             request, problem);
        },
        request.data);
}

std::function<double(double Q)> fittedRatio(const Request& request, const fit::Parameters& parameters)
{
    return [problem = problemOf(request, std::get<sternvolmer::RatioPoints>(request.data)),
            parameters](double Q) mutable { return problem.value(Q, parameters); };
}

std::function<double(double t, double Q)> fittedDecay(const Request& request, const fit::Parameters& parameters)
{
    return [problem = problemOf(request, std::get<decay::SampleTable>(request.data)),
            parameters](double t, double Q) mutable { return problem.value(t, Q, parameters); };
}

Constants constantsOf(int model, const fit::Parameters& values, Constants earlier)
{
    std::size_t slot = 0;
    for (const models::Parameter& parameter : models::row(model).fitted())
        constantOf(earlier, parameter) = values[++slot];
    return earlier;
}

} // namespace analysis
