#pragma once

#include "analysis/request.h"
#include "noise/leaveoneout.h"
#include "noise/readyconstants.h"

namespace trust
{

/// What the user assumes and types about errors; kept while the program runs.
struct ErrorSettings {
    noise::Errors errors{};
    noise::TypedErrors typed{};
    bool operator==(const ErrorSettings&) const = default;
};

/// A fit of ratios under an assumption about the errors of the intensities, with all that follows from it.
struct ErrorDetails {
    noise::RatioFit ratioFit;
    noise::NoiseFit fit;
    std::array<leastsquares::Profile, fit::kMaxParameters + 1> profiles; // by slot
    std::vector<noise::LeftOut> leftOut;
    noise::TypedErrors typed;
    std::vector<noise::ReadyConstant> ready; // the constants of the analysis
};

/// The ratios and the law of a Stern-Volmer request.
noise::RatioFit ratioFitOf(const analysis::Request& request);

/// What is wrong with typed errors for the data of a request; decay curves have no errors.
std::optional<std::string> complaint(const noise::Errors& errors, const analysis::Request& request);

/// analysed: the constants of the analysis. s: radius of the probe, nm. otherStarts: solutions of a search. The
/// settings must have no complaint.
ErrorDetails errorDetails(const analysis::Request& request, const fit::Parameters& analysed,
                          const ErrorSettings& settings, double s, std::span<const fit::Parameters> otherStarts = {});

} // namespace trust
