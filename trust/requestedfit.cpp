#include "trust/requestedfit.h"

#include "decay/decayproblem.h"
#include "leastsquares/spread.h"
#include "models/catalogue.h"
#include "sternvolmer/ratioproblem.h"

namespace trust
{

std::unique_ptr<fit::Problem> realProblem(const analysis::Request& request)
{
    constexpr int kRealUnits = 0; // no logarithms
    if (const auto* points = std::get_if<sternvolmer::RatioPoints>(&request.data))
        return std::make_unique<sternvolmer::RatioProblem>(*points, request.model, kRealUnits, request.Cp);
    auto problem = std::make_unique<decay::DecayProblem>(std::get<decay::SampleTable>(request.data), request.model,
                                                         kRealUnits, request.Cp);
    problem->setEvaluation(models::Evaluation::Fast);
    return problem;
}

leastsquares::Ranges sensibleRanges(int model)
{
    leastsquares::Ranges ranges = leastsquares::kAnySizes;
    std::size_t slot = 0;
    for (const models::Parameter& parameter : models::row(model).fitted())
        ranges[++slot] = {parameter.usual.low, parameter.usual.high};
    return ranges;
}

fit::Parameters positiveStart(const RequestedFit& requested)
{
    const leastsquares::Ranges sensible = sensibleRanges(requested.request.model);
    fit::Parameters values = requested.request.values;
    for (const std::size_t slot : requested.free())
        if (!(values[slot] > 0))
            values[slot] = leastsquares::between(sensible[slot], 0.5);
    return values;
}

} // namespace trust
