#pragma once

#include "trust/fitdetails.h"
#include "trust/leastsums.h"

namespace app
{

/// A finished analysis or calculation, as Fit Details show it.
struct Analysed {
    analysis::Request request;
    analysis::Result result;
    double s = 0; // radius of the probe, nm
    trust::Judgement judgement{};
};

/// The details under an assumption about errors. Decay curves have no errors, and typed errors that cannot be used give
/// none.
trust::FitDetails detailsOf(const Analysed& analysed, const trust::ErrorSettings& errors,
                            const trust::LeastSums& known);

} // namespace app
