#include "trust/requestedfit.h"

#include "leastsquares/spread.h"
#include "models/catalogue.h"

namespace trust
{

std::unique_ptr<fit::Problem> realProblem(analysis::Request request)
{
    request.options.logMode = 0;
    request.quick = true;
    return analysis::engineProblem(request);
}

leastsquares::Ranges sensibleRanges(int model)
{
    leastsquares::Ranges ranges = leastsquares::kAnySizes;
    std::size_t slot = 0;
    for (const models::Parameter& parameter : models::row(model).fitted())
        ranges[++slot] = {parameter.usual.low, parameter.usual.high};
    return ranges;
}

leastsquares::Ranges countedRanges(int model)
{
    constexpr double kMargin = 1000;
    leastsquares::Ranges ranges = sensibleRanges(model);
    for (std::size_t slot = 1; slot <= models::row(model).fitted().size(); ++slot)
        ranges[slot] = {ranges[slot].low / kMargin, ranges[slot].high * kMargin};
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
