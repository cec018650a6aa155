#include "trust/errordetails.h"

#include "fit/vectorregisters.h"
#include "trust/requestedfit.h"

namespace trust
{

noise::RatioFit ratioFitOf(const analysis::Request& request)
{
    return {.points = std::get<sternvolmer::RatioPoints>(request.data),
            .model = request.model,
            .Cp = request.Cp,
            .free = leastsquares::freeSlots(request.options.parameterCount, request.options.fix),
            .ranges = countedRanges(request.model)};
}

std::optional<std::string> complaint(const noise::Errors& errors, const analysis::Request& request)
{
    const auto* points = std::get_if<sternvolmer::RatioPoints>(&request.data);
    return points ? noise::complaint(errors, points->count) : std::nullopt;
}

ErrorDetails errorDetails(const analysis::Request& request, const fit::Parameters& analysed,
                          const ErrorSettings& settings, double s, std::span<const fit::Parameters> otherStarts)
{
    fit::clearUpperHalves();
    ErrorDetails details{.ratioFit = ratioFitOf(request),
                         .fit = {},
                         .profiles = {},
                         .leftOut = {},
                         .typed = settings.typed,
                         .ready = {}};
    details.fit = noise::fitUnder(settings.errors, details.ratioFit, analysed, otherStarts);
    details.profiles = noise::profilesOf(details.fit, details.ratioFit);
    details.leftOut = noise::leaveOneOut(details.fit, details.ratioFit);
    details.ready = noise::readyConstants(details.fit.analysed, details.ratioFit, s, settings.typed);
    return details;
}

} // namespace trust
